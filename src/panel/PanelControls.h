#pragma once

#include "panel/PanelLayout.h"
#include "panel/VolumeBox.h"
#include "protocol/Table.h"
#include "widgets/FaceButton.h"
#include "widgets/Lamp.h"
#include "widgets/LinkStatusWidgets.h"

#include <QLabel>
#include <QLineEdit>

#include <vector>

/// A row of controls, one per slot. Slot 0 exists but has no place on screen and is never seen.
template <class Control> using ControlArray = Table<Control *, 32>;

/// All controls of the panel, by their designed names, and where they stand. The sheet scales as a
/// whole, text included.
class PanelControls {
public:
    /// Makes the controls as children of `sheetWidget`.
    explicit PanelControls(QWidget &sheetWidget);

    /// Lays all controls out for the sheet's present size.
    void layOut();

    /// Shows the unit's saved name, shortened where it is too long; an empty name hides the label.
    void showName(const QString &name);

    /// Sets the text of a single label and gives it the room that it needs.
    void setLabel(QLabel *label, const QString &text);

    /// Gives the controls of a slot the names that a screen reader speaks, by the number that the
    /// slot shows.
    void nameInput(int slot, int number);
    void nameOutput(int slot, int number);

    ControlArray<FaceButton> InputVideoAudioButtons{"InputVideoAudioButtons"};
    ControlArray<FaceButton> InputVideoButtons{"InputVideoButtons"};
    ControlArray<FaceButton> InputAudioButtons{"InputAudioButtons"};
    ControlArray<QLabel> InputNumberLabel{"InputNumberLabel"};
    ControlArray<Lamp> InputVideoLamp{"InputVideoLamp"};
    ControlArray<Lamp> InputAudioLamp{"InputAudioLamp"};
    ControlArray<FaceButton> OutputVidAudButtons{"OutputVidAudButtons"};
    ControlArray<FaceButton> OutputVideoButtons{"OutputVideoButtons"};
    ControlArray<FaceButton> OutputAudioButtons{"OutputAudioButtons"};
    ControlArray<QLabel> OutputNumberLabel{"OutputNumberLabel"};
    ControlArray<Lamp> OutputVideoIndicator{"OutputVideoIndicator"};
    ControlArray<Lamp> OutputAudioIndicator{"OutputAudioIndicator"};
    ControlArray<QLineEdit> InputVideoConnected{"InputVideoConnected"};
    ControlArray<QLineEdit> InputAudioConnected{"InputAudioConnected"};
    ControlArray<VolumeBox> OutputVolumeValue{"OutputVolumeValue"};
    ControlArray<FaceButton> MuteButton{"MuteButton"};

    FaceButton *TakeButton = nullptr;
    FaceButton *ClearButton = nullptr;
    FaceButton *GoToPresets = nullptr;
    FaceButton *ExitButton = nullptr;
    FaceButton *VolumeUpButton = nullptr;
    FaceButton *VolumeDownButton = nullptr;
    QLabel *OutputVolumeLabel = nullptr;
    QLabel *Label1 = nullptr;
    QLabel *KVNNameLabel = nullptr;
    QLabel *CorvaneTypeLabel = nullptr;
    QLineEdit *SelectedOutputsHolder = nullptr;
    QLineEdit *SelectedAudioOutputsHolder = nullptr;
    QLineEdit *CurrentInputHolder = nullptr;
    LinkStatusWidgets status;

private:
    /// How a label takes more room when its text needs it.
    enum class Growth { None, ToTheRight, ToBothSides };
    struct Placed {
        QWidget *control;
        TwipRect rect;
        Growth growth = Growth::None;
        bool bold = false;
    };

    template <class Control, class... Arguments>
    Control *make(const QString &name, const TwipRect &rect, Arguments &&...arguments);
    template <class Control, class... Arguments>
    void makeArray(ControlArray<Control> &array, const char *name, const SlotPlace &slots,
                   Arguments &&...arguments);
    QLabel *makeLabel(const char *name, const TwipRect &rect, const QString &text, Growth growth);
    void makeInputs();
    void makeOutputs();
    void makeSingles();
    void orderTabs();
    [[nodiscard]] QFont fittingFont() const;
    [[nodiscard]] QRect onSheet(const TwipRect &twips) const;
    void placeLabel(const Placed &placed) const;
    void elideName() const;

    QWidget &sheet;
    PointerWatch pointer;
    QString unitName; ///< whole; the label may show less of it
    QWidget *nowhere; ///< the hidden parent of every slot 0
    std::vector<Placed> placedControls;
};
