#include "panel/PanelControls.h"

#include "widgets/Colours.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double DesignFontPixels = 11.0;
constexpr double SmallestFontPixels = 6.0;
constexpr int TabRowTwips = 180;

QRect scaled(const TwipRect &twips, double scale) {
    const auto pixels = [scale](int length) {
        return static_cast<int>(std::lround(length * scale / TwipsPerPixel));
    };
    const QPoint topLeft(pixels(twips.x), pixels(twips.y));
    const QPoint bottomRight(pixels(twips.x + twips.width), pixels(twips.y + twips.height));
    return {topLeft, bottomRight - QPoint(1, 1)};
}

QString slotName(const char *array, int slot) {
    return QStringLiteral("%1_%2").arg(QLatin1String(array)).arg(slot);
}

template <class Box> void styleBox(Box *box) {
    box->setReadOnly(true);
    box->setFrame(true);
    box->setAlignment(Qt::AlignCenter);
    box->setFocusPolicy(Qt::TabFocus);
    box->setContextMenuPolicy(Qt::NoContextMenu);
    box->setTextMargins(-2, 0, -2, 0);
}

} // namespace

PanelControls::PanelControls(QWidget &sheetWidget)
    : status(&sheetWidget), sheet(sheetWidget), nowhere(new QWidget(&sheetWidget)) {
    nowhere->hide();
    makeInputs();
    makeOutputs();
    makeSingles();
    orderTabs();
}

template <class Control, class... Arguments>
Control *PanelControls::make(const QString &name, const TwipRect &rect, Arguments &&...arguments) {
    auto *control = new Control(std::forward<Arguments>(arguments)..., &sheet);
    control->setObjectName(name);
    placedControls.push_back({control, rect, false, false});
    return control;
}

template <class Control, class... Arguments>
void PanelControls::makeArray(ControlArray<Control> &array, const char *name,
                              const SlotPlace &slots, Arguments &&...arguments) {
    const bool isMute = &slots == &place::MuteButton;
    for (int slot = 1; slot <= array.last(); ++slot) {
        const TwipRect rect = isMute ? muteRect(slot) : slotRect(slots, slot);
        array[slot] = make<Control>(slotName(name, slot), rect, arguments...);
    }
    array[0] = new Control(arguments..., nowhere);
    array[0]->setObjectName(slotName(name, 0));
}

QLabel *PanelControls::makeLabel(const char *name, const TwipRect &rect, const QString &text,
                                 Qt::Alignment alignment) {
    auto *label = make<QLabel>(QLatin1String(name), rect, text);
    label->setAlignment(alignment | Qt::AlignVCenter);
    placedControls.back().growsWithText = true;
    return label;
}

void PanelControls::makeInputs() {
    makeArray(InputNumberLabel, "InputNumberLabel", place::InputNumberLabel,
              QStringLiteral("Input1"));
    makeArray(InputVideoLamp, "InputVideoLamp", place::InputVideoLamp);
    makeArray(InputAudioLamp, "InputAudioLamp", place::InputAudioLamp);
    makeArray(InputVideoAudioButtons, "InputVideoAudioButtons", place::InputVideoAudioButtons,
              QStringLiteral("Vid/Aud"));
    makeArray(InputVideoButtons, "InputVideoButtons", place::InputVideoButtons,
              QStringLiteral("V"));
    makeArray(InputAudioButtons, "InputAudioButtons", place::InputAudioButtons,
              QStringLiteral("A"));
    for (QLabel *label : InputNumberLabel)
        label->setAlignment(Qt::AlignCenter);
}

void PanelControls::makeOutputs() {
    makeArray(OutputNumberLabel, "OutputNumberLabel", place::OutputNumberLabel,
              QStringLiteral("Output 1"));
    makeArray(OutputVideoIndicator, "OutputVideoIndicator", place::OutputVideoIndicator);
    makeArray(OutputAudioIndicator, "OutputAudioIndicator", place::OutputAudioIndicator);
    makeArray(OutputVidAudButtons, "OutputVidAudButtons", place::OutputVidAudButtons,
              QStringLiteral("Vid/Aud"));
    makeArray(OutputVideoButtons, "OutputVideoButtons", place::OutputVideoButtons,
              QStringLiteral("V"));
    makeArray(OutputAudioButtons, "OutputAudioButtons", place::OutputAudioButtons,
              QStringLiteral("A"));
    makeArray(InputVideoConnected, "InputVideoConnected", place::InputVideoConnected, QString());
    makeArray(InputAudioConnected, "InputAudioConnected", place::InputAudioConnected, QString());
    makeArray(OutputVolumeValue, "OutputVolumeValue", place::OutputVolumeValue, QString());
    makeArray(MuteButton, "MuteButton", place::MuteButton, QStringLiteral("Mute"));
    for (int slot = 0; slot <= OutputNumberLabel.last(); ++slot) {
        OutputNumberLabel[slot]->setAlignment(Qt::AlignCenter);
        styleBox(InputVideoConnected[slot]);
        styleBox(InputAudioConnected[slot]);
        styleBox(OutputVolumeValue[slot]);
    }
}

void PanelControls::makeSingles() {
    const auto button = [this](const char *name, const TwipRect &rect, const char *caption) {
        return make<FaceButton>(QLatin1String(name), rect, QString::fromLatin1(caption));
    };
    const auto holder = [this](const char *name, const TwipRect &rect) {
        auto *box = make<QLineEdit>(QLatin1String(name), rect, QString());
        box->hide();
        return box;
    };
    const auto emphasize = [this] { placedControls.back().bold = true; };
    makeLabel("Label2_0", place::InputsHeading, QStringLiteral("Inputs"), Qt::AlignLeft);
    emphasize();
    makeLabel("Label2_1", place::OutputsHeading, QStringLiteral("Outputs"), Qt::AlignLeft);
    emphasize();
    KVNNameLabel = makeLabel("KVNNameLabel", place::KVNNameLabel, QString(), Qt::AlignLeft);
    emphasize();
    CorvaneTypeLabel =
        makeLabel("CorvaneTypeLabel", place::CorvaneTypeLabel, QString(), Qt::AlignHCenter);
    emphasize();
    Label1 = makeLabel("Label1", place::Label1,
                       QStringLiteral("Click on an Output Volume to adjust it's volume."),
                       Qt::AlignHCenter);
    OutputVolumeLabel = makeLabel("OutputVolumeLabel", place::OutputVolumeLabel,
                                  QStringLiteral("Output volume"), Qt::AlignHCenter);
    TakeButton = button("TakeButton", place::TakeButton, "TAKE");
    emphasize();
    ClearButton = button("ClearButton", place::ClearButton, "ESCAPE");
    GoToPresets = button("GoToPresets", place::GoToPresets, "Execute Presets");
    ExitButton = button("ExitButton", place::ExitButton, "Exit");
    VolumeUpButton = button("VolumeUpButton", place::VolumeUpButton, "Volume Up");
    VolumeDownButton = button("VolumeDownButton", place::VolumeDownButton, "Volume Down");
    SelectedOutputsHolder = holder("SelectedOutputsHolder", place::SelectedOutputsHolder);
    SelectedAudioOutputsHolder =
        holder("SelectedAudioOutputsHolder", place::SelectedAudioOutputsHolder);
    CurrentInputHolder = holder("CurrentInputHolder", place::CurrentInputHolder);

    placedControls.push_back({status.ZarnConnectedLabel, place::ZarnConnectedLabel, true, false});
    placedControls.push_back({status.ZarnConnectedImage, place::LinkPictures, false, false});
    placedControls.push_back({status.ZarnNotConnectedImage, place::LinkPictures, false, false});
}

void PanelControls::orderTabs() {
    std::vector<Placed> order;
    std::copy_if(
        placedControls.begin(), placedControls.end(), std::back_inserter(order),
        [](const Placed &placed) { return (placed.control->focusPolicy() & Qt::TabFocus) != 0; });
    // Controls of one row may differ a little in height and place.
    const auto rowAndColumn = [](const Placed &placed) {
        const int middle = placed.rect.y + placed.rect.height / 2;
        return std::pair((middle + TabRowTwips / 2) / TabRowTwips, placed.rect.x);
    };
    std::stable_sort(order.begin(), order.end(),
                     [rowAndColumn](const Placed &one, const Placed &other) {
                         return rowAndColumn(one) < rowAndColumn(other);
                     });
    for (std::size_t next = 1; next < order.size(); ++next)
        QWidget::setTabOrder(order[next - 1].control, order[next].control);
}

void PanelControls::nameInput(int slot, int number) {
    const QString name = QStringLiteral("Input %1 ").arg(number);
    InputVideoAudioButtons[slot]->setAccessibleName(name + QStringLiteral("video and audio"));
    InputVideoButtons[slot]->setAccessibleName(name + QStringLiteral("video"));
    InputAudioButtons[slot]->setAccessibleName(name + QStringLiteral("audio"));
    InputVideoLamp[slot]->setAccessibleName(name + QStringLiteral("video lamp"));
    InputAudioLamp[slot]->setAccessibleName(name + QStringLiteral("audio lamp"));
}

void PanelControls::nameOutput(int slot, int number) {
    const QString name = QStringLiteral("Output %1 ").arg(number);
    OutputVidAudButtons[slot]->setAccessibleName(name + QStringLiteral("video and audio"));
    OutputVideoButtons[slot]->setAccessibleName(name + QStringLiteral("video"));
    OutputAudioButtons[slot]->setAccessibleName(name + QStringLiteral("audio"));
    OutputVideoIndicator[slot]->setAccessibleName(name + QStringLiteral("video lamp"));
    OutputAudioIndicator[slot]->setAccessibleName(name + QStringLiteral("audio lamp"));
    InputVideoConnected[slot]->setAccessibleName(name + QStringLiteral("video source"));
    InputAudioConnected[slot]->setAccessibleName(name + QStringLiteral("audio source"));
    OutputVolumeValue[slot]->setAccessibleName(name + QStringLiteral("volume"));
    MuteButton[slot]->setAccessibleName(name + QStringLiteral("mute"));
}

QFont PanelControls::fittingFont(double scale) const {
    QFont font = sheet.font();
    const int room = scaled(slotRect(place::OutputVidAudButtons, 1), scale).width() - 4;
    double pixels = std::max(SmallestFontPixels, DesignFontPixels * scale);
    for (; pixels > SmallestFontPixels; pixels -= 0.5) {
        font.setPixelSize(static_cast<int>(pixels));
        const QFontMetrics metrics(font);
        if (std::max(metrics.horizontalAdvance(QStringLiteral("Vid/Aud")),
                     metrics.horizontalAdvance(QStringLiteral("Vol -45"))) <= room)
            break;
    }
    return font;
}

void PanelControls::placeLabel(const Placed &placed, double scale) const {
    const auto *label = static_cast<QLabel *>(placed.control);
    QRect place = scaled(placed.rect, scale);
    const int missing = label->sizeHint().width() + 6 - place.width();
    if (missing > 0) {
        if (label->alignment() & Qt::AlignHCenter && place.right() + missing / 2 < sheet.width())
            place.adjust(-missing / 2, 0, missing - missing / 2, 0);
        else
            place.adjust(0, 0, missing, 0);
    }
    const int overhang = place.right() + 1 - sheet.width();
    if (overhang > 0)
        place.translate(-overhang, 0);
    placed.control->setGeometry(place);
}

void PanelControls::setLabel(QLabel *label, const QString &text) {
    label->setText(text);
    const double scale = sheetScale(sheet.width(), sheet.height());
    for (const Placed &placed : placedControls) {
        if (placed.control == label)
            placeLabel(placed, scale);
    }
}

void PanelControls::layOut() {
    const double scale = sheetScale(sheet.width(), sheet.height());
    const QFont font = fittingFont(scale);
    QFont bold = font;
    bold.setBold(true);
    for (const Placed &placed : placedControls) {
        placed.control->setFont(placed.bold ? bold : font);
        if (placed.growsWithText)
            placeLabel(placed, scale);
        else
            placed.control->setGeometry(scaled(placed.rect, scale));
    }
}
