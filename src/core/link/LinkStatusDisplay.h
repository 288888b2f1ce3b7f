#pragma once

#include "forms/Control.h"
#include "link/LinkState.h"

#include <array>
#include <string>

/// The background of a status label; the colours are the windows' business.
enum class LinkColour {
    ButtonFace,   ///< the platform's: connected on a COM port
    NetworkUp,    ///< connected over the network
    SerialUp,     ///< a serial link that was opened
    NotConnected, ///< no link
    SerialDown    ///< a serial port that did not open
};

/// How a window shows the link.
struct LinkStatusView {
    std::string caption = "Zarn Connected";
    LinkColour colour = LinkColour::NotConnected;
    bool linkUp = false; ///< which of the two pictures is shown
    bool labelVisible = true;
    bool operator==(const LinkStatusView &) const = default;

    /// Whether the caption begins with "Connected".
    [[nodiscard]] bool showsConnected() const { return caption.starts_with("Connected"); }
};

/// The windows that show the link.
enum class StatusWindow { Start, SavedUnits, Connect, Panel };

/// Shows the state of the link, in the same words and colours, on every window that has a place for
/// it.
class LinkStatusDisplay {
public:
    /// Where the status stands. References only.
    struct Places {
        LinkStatusView &Start;
        LinkStatusView &SavedUnits;
        LinkStatusView &Connect;
        LinkStatusView &Panel;
        Control &ToDisconnectPortLabel; ///< seen while the start window shows a link
        Control &ConnectProgress;       ///< the connection dialog's line on a network connect
    };

    LinkStatusDisplay(LinkState &linkState, const Places &statusPlaces);

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

    /// Refreshes all four.
    void refreshAll();

private:
    void show(StatusWindow window, const std::string &caption, LinkColour colour);
    void showLink(StatusWindow window);
    [[nodiscard]] bool networkIsUp() const;
    [[nodiscard]] bool serialIsUp() const;

    LinkState &link;
    Places places;
    std::array<LinkStatusView *, 4> views;
};
