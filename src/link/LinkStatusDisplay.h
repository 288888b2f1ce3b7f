#pragma once

#include "link/LinkState.h"
#include "link/LinkStatusView.h"

#include <array>

/// The windows that show the link.
enum class StatusWindow { Start, SavedUnits, Connect, Panel };

/// Shows the state of the link, in the same words and colours, on every window that has a place for
/// it. A window that is not attached is passed over.
class LinkStatusDisplay {
public:
    explicit LinkStatusDisplay(LinkState &state);

    void attach(StatusWindow window, LinkStatusView &view);
    void attachProgress(ConnectProgressView &view);

    void showConnectedOnCom(StatusWindow window);
    void showConnectedTo(StatusWindow window);
    void showNotConnected(StatusWindow window);

    /// "Connecting to ", the address and a run of dots for the current attempt, 0 to 6; any other
    /// attempt leaves the last text.
    void ShowConnectingProgress();
    /// "Connected to " and the address, in the place of the progress text.
    void showConnectDone();

    /// Refreshes the start window, the saved-units window and the connection dialog.
    void ConnecthandleConnectionStatus();
    /// Refreshes the panel.
    void HandleConnectionsStatus();
    /// Refreshes the start window and the panel in the short words of a link that changed on its
    /// own; without a link kind nothing changes.
    void handleZarnConnectedFlag();
    /// Refreshes the start window, and the connection dialog where nothing is connected.
    void IPhandleConnectionStatus();

    void refreshAll();

private:
    void show(StatusWindow window, const LinkStatusLook &look);
    void showProgress(const std::string &text);

    LinkState &link;
    std::array<LinkStatusView *, 4> views{};
    ConnectProgressView *progressView = nullptr;
};
