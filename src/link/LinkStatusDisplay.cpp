#include "link/LinkStatusDisplay.h"

#include <initializer_list>

namespace {

constexpr Rgb NotConnectedRed{255, 0, 0};
constexpr Rgb NetworkOrange{255, 128, 0};
constexpr Rgb SerialGreen{0, 192, 0};
constexpr Rgb SerialDarkRed{192, 0, 0};
constexpr int LastAttempt = 6;

constexpr std::initializer_list<StatusWindow> DialogWindows{
    StatusWindow::Start, StatusWindow::SavedUnits, StatusWindow::Connect};

} // namespace

LinkStatusDisplay::LinkStatusDisplay(LinkState &state) : link(state) {}

void LinkStatusDisplay::attach(StatusWindow window, LinkStatusView &view) {
    views.at(static_cast<std::size_t>(window)) = &view;
}

void LinkStatusDisplay::attachProgress(ConnectProgressView &view) { progressView = &view; }

void LinkStatusDisplay::show(StatusWindow window, const LinkStatusLook &look) {
    if (LinkStatusView *view = views.at(static_cast<std::size_t>(window)))
        view->showLinkStatus(look);
}

void LinkStatusDisplay::showProgress(const std::string &text) {
    if (progressView)
        progressView->showConnectProgress(text);
}

void LinkStatusDisplay::showConnectedOnCom(StatusWindow window) {
    show(window, {.caption = "Connected on COM" + std::to_string(link.SelectedCommPort),
                  .background = std::nullopt,
                  .linkUp = true,
                  .showLabel = true});
}

void LinkStatusDisplay::showConnectedTo(StatusWindow window) {
    show(window, {.caption = "Connected to " + link.RemoteIPAddress,
                  .background = NetworkOrange,
                  .linkUp = true});
}

void LinkStatusDisplay::showNotConnected(StatusWindow window) {
    show(window, {.caption = "Not Connected", .background = NotConnectedRed, .linkUp = false});
}

void LinkStatusDisplay::ShowConnectingProgress() {
    if (link.ConnectAttemptCount < 0 || link.ConnectAttemptCount > LastAttempt)
        return;
    const auto dots = static_cast<std::size_t>(link.ConnectAttemptCount) + 1;
    showProgress("Connecting to " + link.RemoteIPAddress + " " + std::string(dots, '.'));
}

void LinkStatusDisplay::showConnectDone() { showProgress("Connected to " + link.RemoteIPAddress); }

void LinkStatusDisplay::ConnecthandleConnectionStatus() {
    const bool network = link.LinkKind == NetworkLinkKind && link.IPLinkOpenFlag;
    const bool serial = link.LinkKind == SerialLinkKind && link.SerialPortOpen;
    link.LinkShownFlag = network || serial;
    for (const StatusWindow window : DialogWindows) {
        if (network)
            showConnectedTo(window);
        else if (serial)
            showConnectedOnCom(window);
        else
            showNotConnected(window);
    }
}

void LinkStatusDisplay::HandleConnectionsStatus() {
    if (link.LinkKind == SerialLinkKind && link.SerialPortOpen)
        showConnectedOnCom(StatusWindow::Panel);
    else if (link.LinkKind == NetworkLinkKind && link.IPLinkOpenFlag)
        showConnectedTo(StatusWindow::Panel);
    else
        showNotConnected(StatusWindow::Panel);
}

void LinkStatusDisplay::handleZarnConnectedFlag() {
    LinkStatusLook look{.caption = "Not Connected", .background = {}};
    if (link.LinkKind == NetworkLinkKind) {
        look.linkUp = link.IPLinkOpenFlag;
        look.background = look.linkUp ? NetworkOrange : NotConnectedRed;
        if (look.linkUp)
            look.caption = "Ethernet Port Opened";
    } else if (link.LinkKind == SerialLinkKind) {
        look.linkUp = link.SerialPortOpen;
        look.background = look.linkUp ? SerialGreen : SerialDarkRed;
        if (look.linkUp)
            look.caption = "Connected";
    } else {
        return;
    }
    show(StatusWindow::Start, look);
    show(StatusWindow::Panel, look);
}

void LinkStatusDisplay::IPhandleConnectionStatus() {
    if (link.LinkKind == SerialLinkKind) {
        link.LinkShownFlag = link.SerialPortOpen;
        if (link.SerialPortOpen)
            showConnectedOnCom(StatusWindow::Start);
        else
            showNotConnected(StatusWindow::Start);
    } else if (link.LinkKind == NetworkLinkKind && link.IPLinkOpenFlag) {
        link.LinkShownFlag = true;
        showConnectedTo(StatusWindow::Start);
    } else {
        link.LinkShownFlag = false;
        showNotConnected(StatusWindow::Start);
        showNotConnected(StatusWindow::Connect);
    }
}

void LinkStatusDisplay::refreshAll() {
    ConnecthandleConnectionStatus();
    HandleConnectionsStatus();
}
