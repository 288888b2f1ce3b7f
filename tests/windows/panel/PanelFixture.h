#pragma once

#include "support/ProgramFixture.h"
#include "support/toString.h"

/// A program whose panel is driven and read by short marks: a side (i, o), a kind (B, V, A) and a
/// slot, so "iB3" is the video-and-audio button of input slot 3 and "oV12" the video lamp or button
/// of output slot 12; "m3" is a mute button.
class PanelFixture : public ProgramFixture {
public:
    /// The panel is open; what that sent and said is forgotten.
    explicit PanelFixture(const std::string &model = "KVN-16x16-RGBA", bool network = false);
    void open();

    /// Clicks marks with blanks between them, or the words take, escape, presets, exit, up, down;
    /// "open" opens the panel again. In the presets: "p5", go, and close, frame or Esc to leave.
    void clicks(const std::string &marks);
    /// From now on the unit answers commands that start so with `reply`.
    void answer(const std::string &command, const std::string &reply);

    template <class Control = QWidget> [[nodiscard]] static Control *on(const std::string &name) {
        return part<Control>("KVN32x32Audio", name);
    }
    [[nodiscard]] static std::string textOf(const std::string &name) {
        return text("KVN32x32Audio", name);
    }
    /// The texts of the controls of an array that are seen, a blank after each.
    [[nodiscard]] static std::string textsOf(const std::string &array);
    /// "grey", "green" and so on.
    [[nodiscard]] static std::string face(const QWidget *button);

    /// What is picked: "BVA BVA" for the groups of inputs and outputs, with "-" for a disabled one
    /// and "?" for one that is neither; then the marks of the lamps that are seen lit, "oV2!" where
    /// a screen reader is told otherwise; then the three list holders.
    [[nodiscard]] static std::string picked();
    /// All that is left of a selection, a take or a fault; empty when all is ready for the next.
    [[nodiscard]] std::string pending() const;

    bool overNetwork;
    FakeWire &wire = overNetwork ? socket.wire : serialPort.wire;
};
