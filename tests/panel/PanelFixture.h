#pragma once

#include "support/ProgramFixture.h"
#include "support/toString.h"

/// A program whose panel is driven and read by short marks: a side (i, o), a kind (B, V, A) and a
/// slot, so "iB3" is the video-and-audio button of input slot 3 and "oV12" the video lamp or button
/// of output slot 12; "m3" is a mute button.
class PanelFixture : public ProgramFixture {
public:
    /// The panel is open; what that sent and said is forgotten.
    explicit PanelFixture(const std::string &model = "KVN-16x16-RGBA", bool overNetwork = false);
    void open(bool overNetwork = false);

    /// Clicks marks with blanks between them, or the words take, escape, presets, exit, up, down.
    static void clicks(const std::string &marks);

    template <class Control = QWidget> [[nodiscard]] static Control *on(const std::string &name) {
        return part<Control>("KVN32x32Audio", name.c_str());
    }
    [[nodiscard]] static std::string textOf(const std::string &name);
    [[nodiscard]] static QColor face(const std::string &name);

    /// The marks of the lamps that are seen lit, "oV2!" where a screen reader is told otherwise.
    [[nodiscard]] static std::string litLamps();
    /// "BVA BVA" when all groups of inputs and outputs are enabled, "-" for a disabled one and "?"
    /// for one that is neither.
    [[nodiscard]] static std::string groups();
    /// The three list holders: "1,2|1F,2F|3 3F".
    [[nodiscard]] static std::string holders();
    /// All that is left of a selection or a take; empty when the panel is ready for the next one.
    [[nodiscard]] std::string pending() const;
};
