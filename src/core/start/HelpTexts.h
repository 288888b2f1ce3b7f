#pragma once

#include <array>

/// The texts of a help window.
struct HelpText {
    const char *window;   ///< object name
    const char *menuItem; ///< object name of the panel's menu item
    const char *menuText;
    const char *caption;
    std::array<const char *, 3> paragraphs; ///< `Label1` to `Label3`
};

/// The three help windows. The wording is kept as the system's users know it.
inline constexpr std::array<HelpText, 3> HelpTexts{{
    {"dlgInputConnect",
     "ConnectionHelp",
     "How to Connect",
     "How to Connect Inputs to Outputs",
     {"To Connect inputs to Outputs:",
      "You can connect inputs to outputs by clicking the input's Vid/Aud, Vid, or Aud button. Then "
      "click the same button on the output to be connected to, multiple outputs may be connected. "
      "Then click the TAKE button.",
      "The Escape button clears all selections."}},
    {"dlgDisconnect",
     "disconnectHelp",
     "How to Disconnect",
     "Disconnecting Outputs",
     {"To Disconnect Outputs:",
      "Disconnecting outputs are a simple as selecting the output using the Aud, Vid or Vid/Aud "
      "button for the output to disconnect, then click the Take button.",
      "The Escape button clears all selections."}},
    {"VolumeHelpDialog",
     "AdjustingVolumes",
     "Adjusting Volumes (if applicable)",
     "Adjusting Volumes",
     {"To Adjust Ouput Volumes:",
      "You can adjust the volume of an output by clicking on the VOL XX area of the output status. "
      "The volume up and volume down buttons will appear at the bottom of the screen.",
      "The Escape button clears all selections from the screen."}},
}};
