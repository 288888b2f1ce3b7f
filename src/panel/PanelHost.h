#pragma once

/// The panel's help windows.
enum class HelpTopic { Connecting, Disconnecting, Volume };

/// What the panel needs of the program around it.
class PanelHost {
public:
    PanelHost() = default;
    PanelHost(const PanelHost &) = delete;
    PanelHost &operator=(const PanelHost &) = delete;
    virtual ~PanelHost() = default;

    /// The splash while the panel gets ready.
    virtual void showSetup() = 0;
    virtual void hideSetup() = 0;
    virtual void showHelp(HelpTopic topic) = 0;
    virtual void restoreStartWindow() = 0;
};
