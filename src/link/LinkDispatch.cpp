#include "link/LinkDispatch.h"

#include <utility>

LinkDispatch::LinkDispatch(LinkState &linkState, ExchangeState &exchangeState,
                           SerialLink &serialLink, NetworkLink &networkLink, EventPump &eventPump)
    : link(linkState),
      exchange(exchangeState),
      serial(serialLink),
      network(networkLink),
      pump(eventPump) {}

void LinkDispatch::OpenLink() {
    if (pump.ended())
        return;
    if (link.LinkKind == SerialLinkKind)
        serial.OpenSerialPort();
    else if (link.LinkKind == NetworkLinkKind)
        network.SetupConnectIP();
}

void LinkDispatch::CloseLink() {
    if (link.LinkKind == SerialLinkKind)
        serial.CloseSerialPort();
    else if (link.LinkKind == NetworkLinkKind)
        network.IPCheckifPortOpenwithClose();
}

void LinkDispatch::DisconnectLink() {
    if (link.LinkKind == SerialLinkKind) {
        serial.closePort();
        link.SerialPortOpen = false;
    } else if (link.LinkKind == NetworkLinkKind) {
        network.IPCheckifPortOpenwithClose();
    }
    link.LinkKind = NoLinkKind;
}

void LinkDispatch::SendCommand(std::string text) {
    if (pump.ended())
        return;
    if (link.LinkKind == SerialLinkKind)
        serial.SerialWrite(std::move(text));
    else if (link.LinkKind == NetworkLinkKind)
        network.SendIPOutputBuffer(text);
}

void LinkDispatch::SendCommandGetResponse(std::string text) {
    if (pump.ended())
        return;
    if (link.LinkKind == SerialLinkKind)
        serial.SerialWriteGetResponse(std::move(text));
    else if (link.LinkKind == NetworkLinkKind)
        network.SendIPBufferGetResponse(text);
}

void LinkDispatch::exchangeCommand(std::string text) {
    exchange.CommandText = text;
    SendCommandGetResponse(std::move(text));
}

void LinkDispatch::markFailed() {
    if (link.LinkKind == NetworkLinkKind) {
        link.IPLinkOpenFlag = false;
        link.IPConnectedFlag = false;
    } else if (link.LinkKind == SerialLinkKind) {
        link.SerialPortOpen = serial.portIsOpen();
    }
}
