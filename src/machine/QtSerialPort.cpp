#include "QtSerialPort.h"

#include "ComPortNames.h"
#include "DeviceLook.h"
#include "LinkLog.h"
#include "protocol/ReplyClass.h"

#include <QStringList>

#include <cerrno>
#include <system_error>
#include <utility>

namespace {

LinkFailure failureOf(QSerialPort::SerialPortError error) {
    switch (error) {
    case QSerialPort::PermissionError:
        return LinkFailure::NotPermitted;
    case QSerialPort::DeviceNotFoundError:
        return LinkFailure::NoDevice;
    default:
        return LinkFailure::Other;
    }
}

/// The system's reason, but for what it calls by names of its own.
std::string reasonOf(const QSerialPort &port) {
    const std::string reason = port.errorString().toStdString();
    const bool noTerminal = reason == std::generic_category().message(ENOTTY);
    return noTerminal ? "it is no serial device" : reason;
}

} // namespace

QtSerialPort::QtSerialPort(std::string appPath) : programFolder(std::move(appPath)) {
    port.setReadBufferSize(MaximumReplyBytes);
    QObject::connect(&port, &QSerialPort::errorOccurred, &port,
                     [this](QSerialPort::SerialPortError error) { noteError(error); });
}

void QtSerialPort::noteError(QSerialPort::SerialPortError error) {
    // A device that is gone reports one of these, over and over until it is closed.
    const bool gone = error == QSerialPort::ResourceError || error == QSerialPort::ReadError ||
                      error == QSerialPort::WriteError;
    if (!gone || !port.isOpen())
        return;
    // Not from within the port's own work, and not any more when it was opened anew by then.
    QMetaObject::invokeMethod(
        &port,
        [this, mine = opening] {
            if (mine != opening || !port.isOpen())
                return;
            port.close();
            // A read at its end leaves no reason but the one of some earlier call.
            failure = "the device is gone";
            qCDebug(linkLog).noquote() << linkLine(place() + " is gone");
            lost();
        },
        Qt::QueuedConnection);
}

std::string QtSerialPort::place() const {
    if (current.number == 0)
        return "the serial port";
    return number() + " (" + current.name + ")";
}

void QtSerialPort::fail(const char *tried, const std::string &reason, LinkFailure kind) const {
    const LinkError error(tried, place(), reason, kind);
    qCDebug(linkLog).noquote() << linkLine(error.what());
    throw error;
}

SerialDevice QtSerialPort::device(int number) const {
    return {number, comPortDevice(programFolder, number)};
}

std::vector<SerialDeviceFacts> QtSerialPort::look(const std::vector<SerialDevice> &devices) const {
    return factsOf(devices);
}

std::string QtSerialPort::holder(const SerialDevice &device) const { return holderOf(device.name); }

void QtSerialPort::configure(std::string_view settings) {
    const QStringList fields =
        QString::fromLatin1(settings.data(), static_cast<qsizetype>(settings.size()))
            .split(QLatin1Char(','));
    if (fields.size() != 4)
        fail("Setting", "unknown port settings");
    const QString &parity = fields[1];
    port.setBaudRate(fields[0].toInt());
    port.setParity(parity == QLatin1String("E")   ? QSerialPort::EvenParity
                   : parity == QLatin1String("O") ? QSerialPort::OddParity
                                                  : QSerialPort::NoParity);
    port.setDataBits(static_cast<QSerialPort::DataBits>(fields[2].toInt()));
    port.setStopBits(fields[3] == QLatin1String("2") ? QSerialPort::TwoStop : QSerialPort::OneStop);
    port.setFlowControl(QSerialPort::NoFlowControl);
}

void QtSerialPort::open(const SerialDevice &device, std::string_view settings) {
    close();
    ++opening;
    current = device;
    port.setPortName(QString::fromStdString(device.name));
    configure(settings);
    if (!port.open(QIODevice::ReadWrite)) {
        failure = reasonOf(port);
        fail("Opening", failure, failureOf(port.error()));
    }
    qCDebug(linkLog).noquote() << linkLine(place() + " opened with " + std::string(settings));
}

void QtSerialPort::close() {
    if (port.isOpen()) {
        port.close();
        qCDebug(linkLog).noquote() << linkLine(place() + " closed");
    }
    failure = "the port is not open";
}

bool QtSerialPort::isOpen() const { return port.isOpen(); }

void QtSerialPort::discardBuffers() { port.clear(QSerialPort::AllDirections); }

void QtSerialPort::write(std::string_view text) {
    if (!port.isOpen())
        fail("Writing to", failure);
    const auto length = static_cast<qint64>(text.size());
    if (port.write(text.data(), length) != length)
        fail("Writing to", port.errorString().toStdString());
    qCDebug(wireLog).noquote() << wireLine(number(), Way::ToUnit, text);
}

std::string QtSerialPort::readAll() {
    if (!port.isOpen())
        return {};
    std::string text = port.readAll().toStdString();
    if (!text.empty())
        qCDebug(wireLog).noquote() << wireLine(number(), Way::FromUnit, text);
    return text;
}
