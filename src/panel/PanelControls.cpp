#include "panel/PanelControls.h"

#include "widgets/Colours.h"

#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double DesignFontPixels = 11.0;
constexpr int SmallestFontPixels = 6;
constexpr int TabRowTwips = 180;

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
    placedControls.push_back({control, rect});
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
                                 Growth growth) {
    auto *label = make<QLabel>(QLatin1String(name), rect, text);
    label->setTextFormat(Qt::PlainText);
    const bool centred = growth == Growth::ToBothSides;
    label->setAlignment((centred ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter);
    placedControls.back().growth = growth;
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
    makeArray(OutputVolumeValue, "OutputVolumeValue", place::OutputVolumeValue, pointer);
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
    makeLabel("Label2_0", place::InputsHeading, QStringLiteral("Inputs"), Growth::ToTheRight);
    emphasize();
    makeLabel("Label2_1", place::OutputsHeading, QStringLiteral("Outputs"), Growth::ToTheRight);
    emphasize();
    KVNNameLabel = makeLabel("KVNNameLabel", place::KVNNameLabel, QString(), Growth::None);
    emphasize();
    CorvaneTypeLabel =
        makeLabel("CorvaneTypeLabel", place::CorvaneTypeLabel, QString(), Growth::ToBothSides);
    emphasize();
    Label1 = makeLabel("Label1", place::Label1,
                       QStringLiteral("Click on an Output Volume to adjust it's volume."),
                       Growth::ToBothSides);
    OutputVolumeLabel = makeLabel("OutputVolumeLabel", place::OutputVolumeLabel,
                                  QStringLiteral("Output volume"), Growth::ToBothSides);
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

    placedControls.push_back(
        {status.ZarnConnectedLabel, place::ZarnConnectedLabel, Growth::ToTheRight});
    placedControls.push_back({status.ZarnConnectedImage, place::LinkPictures});
    placedControls.push_back({status.ZarnNotConnectedImage, place::LinkPictures});
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

QRect PanelControls::onSheet(const TwipRect &twips) const {
    const double scale = sheetScale(sheet.width(), sheet.height()) / TwipsPerPixel;
    const double left = (sheet.width() - PanelArea.width * scale) / 2.0;
    // Sizes are rounded apart from places, so that equal controls stay equal.
    return {static_cast<int>(std::lround(left + twips.x * scale)),
            static_cast<int>(std::lround(twips.y * scale)),
            static_cast<int>(std::lround(twips.width * scale)),
            static_cast<int>(std::lround(twips.height * scale))};
}

QFont PanelControls::fittingFont() const {
    const int room = onSheet(slotRect(place::OutputVidAudButtons, 1)).width() - 4;
    QFont font = sheet.font();
    int pixels = static_cast<int>(DesignFontPixels * sheetScale(sheet.width(), sheet.height()));
    for (; pixels > SmallestFontPixels; --pixels) {
        font.setPixelSize(pixels);
        const QFontMetrics metrics(font);
        if (std::max(metrics.horizontalAdvance(QStringLiteral("Vid/Aud")),
                     metrics.horizontalAdvance(QStringLiteral("Vol -45"))) <= room)
            break;
    }
    font.setPixelSize(std::max(pixels, SmallestFontPixels));
    return font;
}

void PanelControls::placeLabel(const Placed &placed) const {
    QRect place = onSheet(placed.rect);
    const int missing = placed.control->sizeHint().width() + 6 - place.width();
    if (missing > 0) {
        const int toTheLeft = placed.growth == Growth::ToBothSides ? missing / 2 : 0;
        place.adjust(-toTheLeft, 0, missing - toTheLeft, 0);
    }
    const int overhang = place.right() + 1 - sheet.width();
    if (overhang > 0)
        place.translate(-overhang, 0);
    placed.control->setGeometry(place);
}

void PanelControls::showName(const QString &name) {
    unitName = name;
    // A tool tip may take a text for markup.
    KVNNameLabel->setToolTip(name.isEmpty() ? QString()
                                            : Qt::convertFromPlainText(name, Qt::WhiteSpaceNormal));
    KVNNameLabel->setVisible(!name.isEmpty());
    elideName();
}

void PanelControls::elideName() const {
    KVNNameLabel->setText(
        KVNNameLabel->fontMetrics().elidedText(unitName, Qt::ElideRight, KVNNameLabel->width()));
}

void PanelControls::setLabel(QLabel *label, const QString &text) {
    label->setText(text);
    for (const Placed &placed : placedControls) {
        if (placed.control == label)
            placeLabel(placed);
    }
}

void PanelControls::layOut() {
    const QFont font = fittingFont();
    QFont bold = font;
    bold.setBold(true);
    for (const Placed &placed : placedControls) {
        placed.control->setFont(placed.bold ? bold : font);
        if (placed.growth == Growth::None)
            placed.control->setGeometry(onSheet(placed.rect));
        else
            placeLabel(placed);
    }
    elideName();
}
