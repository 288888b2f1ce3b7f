#include "link/LinkStatusDisplay.h"

#include <initializer_list>

namespace {

constexpr int LastAttempt = 6;

constexpr std::initializer_list<StatusWindow> DialogWindows{
    StatusWindow::Start, StatusWindow::SavedUnits, StatusWindow::Connect};

} // namespace

LinkStatusDisplay::LinkStatusDisplay(LinkState &linkState, const Places &statusPlaces)
    : link(linkState),
      places(statusPlaces),
      views{&places.Start, &places.SavedUnits, &places.Connect, &places.Panel} {}

bool LinkStatusDisplay::networkIsUp() const {
    return link.LinkKind == NetworkLinkKind && link.IPLinkOpenFlag;
}

bool LinkStatusDisplay::serialIsUp() const {
    return link.LinkKind == SerialLinkKind && link.SerialPortOpen;
}

void LinkStatusDisplay::show(StatusWindow window, const std::string &caption, LinkColour colour) {
    LinkStatusView &view = *views.at(static_cast<std::size_t>(window));
    view.caption = caption;
    view.colour = colour;
    view.linkUp = colour != LinkColour::NotConnected && colour != LinkColour::SerialDown;
    if (window == StatusWindow::Start)
        places.ToDisconnectPortLabel.visible = view.linkUp;
}

void LinkStatusDisplay::showLink(StatusWindow window) {
    if (networkIsUp()) {
        show(window, "Connected to " + link.RemoteIPAddress, LinkColour::NetworkUp);
    } else if (serialIsUp()) {
        show(window, "Connected on COM" + std::to_string(link.SelectedCommPort),
             LinkColour::ButtonFace);
        views.at(static_cast<std::size_t>(window))->labelVisible = true;
    } else {
        show(window, "Not Connected", LinkColour::NotConnected);
    }
}

void LinkStatusDisplay::ShowConnectingProgress() {
    if (link.ConnectAttemptCount < 0 || link.ConnectAttemptCount > LastAttempt)
        return;
    const auto dots = static_cast<std::size_t>(link.ConnectAttemptCount) + 1;
    places.ConnectProgress.text =
        "Connecting to " + link.RemoteIPAddress + " " + std::string(dots, '.');
}

void LinkStatusDisplay::showConnectDone() {
    places.ConnectProgress.text = "Connected to " + link.RemoteIPAddress;
}

void LinkStatusDisplay::ConnecthandleConnectionStatus() {
    link.LinkShownFlag = networkIsUp() || serialIsUp();
    for (const StatusWindow window : DialogWindows)
        showLink(window);
}

void LinkStatusDisplay::HandleConnectionsStatus() { showLink(StatusWindow::Panel); }

void LinkStatusDisplay::handleZarnConnectedFlag() {
    for (const StatusWindow window : {StatusWindow::Start, StatusWindow::Panel}) {
        if (networkIsUp())
            show(window, "Ethernet Port Opened", LinkColour::NetworkUp);
        else if (serialIsUp())
            show(window, "Connected", LinkColour::SerialUp);
        else if (link.LinkKind == NetworkLinkKind)
            show(window, "Not Connected", LinkColour::NotConnected);
        else if (link.LinkKind == SerialLinkKind)
            show(window, "Not Connected", LinkColour::SerialDown);
    }
}

void LinkStatusDisplay::IPhandleConnectionStatus() {
    link.LinkShownFlag = serialIsUp() || networkIsUp();
    showLink(StatusWindow::Start);
    if (!link.LinkShownFlag && link.LinkKind != SerialLinkKind)
        showLink(StatusWindow::Connect);
}

void LinkStatusDisplay::refreshAll() {
    ConnecthandleConnectionStatus();
    HandleConnectionsStatus();
}
