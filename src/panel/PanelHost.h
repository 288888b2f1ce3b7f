#pragma once

/// The panel's help windows.
enum class HelpTopic { Connecting, Disconnecting, Volume };

/// What the panel needs of the program around it.
class PanelHost {
public:
    /// The splash while the panel gets ready.
    virtual void showSetup() = 0;
    virtual void hideSetup() = 0;
    virtual void showHelp(HelpTopic topic) = 0;
    virtual void restoreStartWindow() = 0;

protected:
    PanelHost() = default;
    PanelHost(const PanelHost &) = default;
    PanelHost &operator=(const PanelHost &) = default;
    ~PanelHost() = default;
};
