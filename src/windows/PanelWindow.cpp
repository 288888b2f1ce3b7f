#include "PanelWindow.h"

#include "FaceButton.h"
#include "Lamp.h"
#include "TextConversion.h"
#include "VolumeBox.h"
#include "start/HelpTexts.h"

#include <QApplication>
#include <QFontInfo>
#include <QHelpEvent>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QShowEvent>
#include <QToolTip>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace {

constexpr double DesignPaddingPixels = 4.0; // beside the widest caption
constexpr double PointsPerInch = 72.0;
constexpr double TipFontPixels = 13.0;

/// The groups of the slots' controls that Tab stops at, in its order.
int tabGroup(const SlotArray &array) {
    if (array.side == Side::Input)
        return 0; // what is picked for a route
    if (array.controls == &PanelView::MuteButton)
        return 4;
    if (array.controls == &PanelView::OutputVolumeValue)
        return 3;
    return array.kind == ControlKind::Box ? 2 : 1;
}
constexpr int GroupsOfSlots = 5;

/// Every other one is a group of its own, down and to the right.
constexpr std::array SinglesInTabOrder{"TakeButton",     "ClearButton",      "GoToPresets",
                                       "VolumeUpButton", "VolumeDownButton", "ExitButton"};

void styleBox(QLineEdit *box) {
    makeReadOnly(box);
    box->setAlignment(Qt::AlignCenter);
    box->setFocusPolicy(Qt::TabFocus);
    box->setContextMenuPolicy(Qt::NoContextMenu);
    box->setTextMargins(-2, 0, -2, 0);
}

/// A window of this program that is open, to learn screen and frame from; null: none yet.
const QWindow *openWindow() {
    const QWindowList all = QGuiApplication::topLevelWindows();
    const auto found = std::find_if(all.begin(), all.end(), [](const QWindow *window) {
        return window->isVisible() &&
               (window->type() == Qt::Window || window->type() == Qt::Dialog);
    });
    return found == all.end() ? nullptr : *found;
}

} // namespace

PanelWindow::PanelWindow(KVN32x32Audio &panelForm, const PanelView &panelView,
                         std::function<void(std::size_t)> openHelp)
    : Window("KVN32x32Audio", panelForm, panelView.form),
      panel(panelForm),
      view(panelView),
      sheet(new PanelSheet(this)) {
    setWindowTitle(QStringLiteral("Corvane Control Panel"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    buildMenu(std::move(openHelp));
    sheet->setAccessibleName(QStringLiteral("Inputs and outputs"));
    scroller = new QScrollArea(this);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setFocusPolicy(Qt::NoFocus);
    scroller->setWidgetResizable(true);
    scroller->setWidget(sheet);
    layout->addWidget(scroller);
    for (const SlotArray &array : SlotArrays)
        buildSlots(array);
    for (const SingleControl &single : SingleControls)
        buildSingle(single);
    buildStatus();
    sheet->installEventFilter(this);
    for (const Placed &placed : placedControls)
        placed.widget->installEventFilter(this);
    orderTabs();
    for (const QKeyCombination keys :
         {QKeyCombination(Qt::Key_F9), Qt::CTRL | Qt::Key_Return, Qt::CTRL | Qt::Key_Enter})
        whenKey(keys, [this] { panel.TakeButton_Click(); });
    whenKey(Qt::Key_Escape, [this] { panel.ClearButton_Click(); });
    sheet->resized = [this] { layOut(); };
}

void PanelWindow::fitScreen() {
    const QWindow *other = openWindow();
    setScreen(other ? other->screen() : screen());
    const QRect free = screen()->availableGeometry();
    sheet->setMinimumSize(sheetSize(smallestScale(screen()->devicePixelRatio())));
    if (fittedFor && free.contains(frameGeometry()))
        return;
    // Its own frame is known when it is open; until then that of another window has to do.
    fit(other ? other->frameMargins() : QMargins());
    windowHandle()->installEventFilter(this);
}

void PanelWindow::fit(const QMargins &frame) {
    fittedFor = frame;
    QRect free = screen()->availableGeometry().marginsRemoved(frame);
    // The frame is told in logical pixels, and may be larger by a part of one.
    if (screen()->devicePixelRatio() != 1.0)
        free.adjust(0, 0, -1, -1);
    QWidget *menu = layout()->menuBar();
    menu->ensurePolished();
    const QSize aroundSheet(0, menu->heightForWidth(free.width()));
    const double smallest = smallestScale(screen()->devicePixelRatio());
    QRect place(QPoint(), openingSize(free.size() - aroundSheet, smallest) + aroundSheet);
    place.moveCenter(free.center());
    setGeometry(place);
}

void PanelWindow::fitOwnFrame() {
    if (!windowHandle()->isExposed())
        return;
    windowHandle()->removeEventFilter(this);
    if (const QMargins frame = windowHandle()->frameMargins(); frame != fittedFor)
        fit(frame);
}

void PanelWindow::showEvent(QShowEvent *event) {
    if (!event->spontaneous())
        fitScreen();
    Window::showEvent(event);
}

void PanelWindow::buildMenu(std::function<void(std::size_t)> openHelp) {
    auto *bar = new QMenuBar(this);
    QMenu *menu = bar->addMenu(QStringLiteral("&Help Files"));
    menu->setObjectName(QStringLiteral("HlpFiles"));
    for (std::size_t topic = 0; topic < HelpTexts.size(); ++topic) {
        QAction *action = menu->addAction(QLatin1String(HelpTexts.at(topic).menuText));
        action->setObjectName(QLatin1String(HelpTexts.at(topic).menuItem));
        connect(action, &QAction::triggered, this,
                [this, openHelp, topic] { report([&] { openHelp(topic); }); });
    }
    setMenuBar(bar);
    whenKey(Qt::Key_F1, [openHelp = std::move(openHelp)] { openHelp(0); });
}

QWidget *PanelWindow::makeControl(ControlKind kind, const QString &name, const Control &control) {
    QWidget *made = nullptr;
    switch (kind) {
    case ControlKind::Button: {
        auto *button = new FaceButton(QString(), sheet);
        bind(button, control);
        made = button;
        break;
    }
    case ControlKind::Label: {
        auto *label = new QLabel(sheet);
        label->setAlignment(Qt::AlignCenter);
        bind(label, control);
        made = label;
        break;
    }
    case ControlKind::Lamp: {
        auto *lamp = new Lamp(sheet);
        bind(lamp, control);
        made = lamp;
        break;
    }
    case ControlKind::Box: {
        auto *box = new VolumeBox(sheet);
        styleBox(box);
        bind(box, control);
        made = box;
        break;
    }
    }
    made->setObjectName(name);
    return made;
}

void PanelWindow::buildSlots(const SlotArray &array) {
    auto &widgets = slotWidgets.at(static_cast<std::size_t>(&array - SlotArrays.data()));
    for (int slot = 1; slot <= SlotControls::last(); ++slot) {
        QWidget *widget = makeControl(
            array.kind, QStringLiteral("%1_%2").arg(QLatin1String(array.name)).arg(slot),
            (view.*array.controls)[slot]);
        widgets.at(static_cast<std::size_t>(slot)) = widget;
        if (auto *button = dynamic_cast<FaceButton *>(widget))
            button->setSpokenChecked(false);
        placedControls.push_back({widget, slotRect(array, slot)});
        if (!array.clicked)
            continue;
        const auto clicked = [this, &array, slot] { (panel.*array.clicked)(slot); };
        if (auto *box = dynamic_cast<VolumeBox *>(widget)) {
            box->pointedAt = [this, clicked] { report(clicked); };
            box->stepped = [this, slot](VolumeBox::Step step) {
                report([&] {
                    step == VolumeBox::Step::Up ? panel.OutputVolumeValue_StepUp(slot)
                                                : panel.OutputVolumeValue_StepDown(slot);
                });
            };
        } else
            whenClicked(qobject_cast<QAbstractButton *>(widget), clicked);
    }
}

void PanelWindow::buildSingle(const SingleControl &single) {
    QWidget *widget = makeControl(single.kind, QLatin1String(single.name), view.*single.control);
    placedControls.push_back({widget, single.place, single.growth, single.weight, {}});
    if (auto *label = qobject_cast<QLabel *>(widget)) {
        const bool centred = single.growth == Growth::ToBothSides;
        label->setAlignment((centred ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    if (single.control == &PanelView::OutputVolumeLabel)
        announceChanges(qobject_cast<QLabel *>(widget));
    if (single.clicked)
        whenClicked(qobject_cast<QAbstractButton *>(widget),
                    [this, &single] { (panel.*single.clicked)(); });
}

void PanelWindow::buildStatus() {
    const StatusWidgets status = bindStatus(sheet, view.status);
    placedControls.push_back(
        {status.ZarnConnectedLabel, StatusLabelPlace, Growth::ToTheRight, Weight::Normal, {}});
    placedControls.push_back({status.ZarnConnectedImage, LinkPicturesPlace});
    placedControls.push_back({status.ZarnNotConnectedImage, LinkPicturesPlace});
}

void PanelWindow::orderTabs() {
    stops = new GridFocus(this);
    for (std::size_t array = 0; array < SlotArrays.size(); ++array) {
        for (QWidget *control : slotWidgets.at(array)) {
            if (control && control->focusPolicy() == Qt::TabFocus)
                stops->add(control, tabGroup(SlotArrays.at(array)));
        }
    }
    int group = GroupsOfSlots;
    for (const char *const name : SinglesInTabOrder)
        stops->add(findChild<QWidget *>(QLatin1String(name)), group++);
}

void PanelWindow::nameSlots(Side side, const Table<int, 32> &shownNumbers,
                            std::array<int, 33> &named) {
    for (std::size_t slot = 1; slot < named.size(); ++slot) {
        const int number = shownNumbers[static_cast<long long>(slot)];
        if (std::exchange(named.at(slot), number) == number)
            continue;
        for (std::size_t array = 0; array < SlotArrays.size(); ++array) {
            const SlotArray &row = SlotArrays.at(array);
            if (row.side == side && *row.spoken)
                slotWidgets.at(array).at(slot)->setAccessibleName(
                    number == 0 ? QString()
                                : QStringLiteral("%1 %2 %3")
                                      .arg(QLatin1String(side == Side::Input ? "Input" : "Output"))
                                      .arg(number)
                                      .arg(QLatin1String(row.spoken)));
        }
    }
}

void PanelWindow::refreshRest() {
    nameSlots(Side::Input, view.InputShown, namedInputs);
    nameSlots(Side::Output, view.OutputShown, namedOutputs);
    showName();
    sheet->setCards({cardOf(Side::Input, view), cardOf(Side::Output, view)});
    for (Placed &placed : placedControls) {
        const auto *label = qobject_cast<QLabel *>(placed.widget);
        if (placed.growth != Growth::None && label->text() != placed.laidOutText)
            place(placed);
    }
}

void PanelWindow::showName() {
    auto *label = findChild<QLabel *>(QStringLiteral("KVNNameLabel"));
    const QString name = shown(view.KVNNameLabel.text);
    label->setText(label->fontMetrics().elidedText(name, Qt::ElideRight, label->width()));
    label->setToolTip(name.isEmpty() ? name : wrappingTip(name));
}

bool PanelWindow::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::ToolTip) {
        showTip(sheet->mapFromGlobal(static_cast<QHelpEvent *>(event)->globalPos()));
        return true;
    }
    if (event->type() == QEvent::Expose && watched == windowHandle())
        fitOwnFrame();
    return Window::eventFilter(watched, event);
}

void PanelWindow::showTip(const QPoint &pointer) {
    // By place: the pointer goes through the lamps.
    const auto under = [&pointer](const Placed &placed) {
        return placed.widget->isVisible() && !placed.widget->toolTip().isEmpty() &&
               placed.widget->geometry().contains(pointer);
    };
    const auto placed = std::find_if(placedControls.begin(), placedControls.end(), under);
    if (placed == placedControls.end()) {
        QToolTip::hideText();
        return;
    }
    QFont font = sheet->font();
    font.setPixelSize(static_cast<int>(TipFontPixels * sheetScale(sheet->size())));
    QToolTip::showText(sheet->mapToGlobal(pointer), placed->widget->toolTip(), placed->widget);
    for (QWidget *tip : QApplication::topLevelWidgets()) {
        auto *text = qobject_cast<QLabel *>(tip);
        if (!tip->inherits("QTipLabel") || !tip->isVisible() || !text)
            continue;
        tip->setFont(font);
        const int room = tipRoom(*placed).width();
        text->setWordWrap(false); // it may be the same tip again
        QSize size = tip->sizeHint();
        if (size.width() > room) {
            text->setWordWrap(true);
            size = QSize(room, text->heightForWidth(room));
        }
        tip->resize(size);
        tip->move(sheet->mapToGlobal(tipPlace(*placed, pointer, size)));
    }
}

bool PanelWindow::isOnCard(const Placed &placed) {
    return placed.place.y > InputsCard.y && placed.place.y < OutputsCard.y + OutputsCard.height;
}

QRect PanelWindow::tipRoom(const Placed &placed) const {
    return isOnCard(placed) ? onSheet(TipStrip, sheet->size()) : sheet->rect();
}

QPoint PanelWindow::tipPlace(const Placed &placed, const QPoint &pointer, const QSize &tip) const {
    const QRect room = tipRoom(placed);
    const int left = std::min(pointer.x() - tip.width() / 2, room.right() - tip.width());
    return {std::max(left, room.left()), isOnCard(placed) ? room.center().y() - tip.height() / 2
                                                          : placed.widget->geometry().bottom() + 2};
}

QFont PanelWindow::fittingFont() const {
    const double scale = sheetScale(sheet->size());
    const double room = slotRect(SlotArrays.at(3), 1).width * scale / TwipsPerPixel -
                        2 * DesignPaddingPixels * scale;
    QFont font = sheet->font();
    // In points, because pixels of a font are whole ones.
    const auto setPixels = [&font, this](double pixels) {
        font.setPointSizeF(pixels * PointsPerInch / logicalDpiY());
    };
    const double pixels = DesignFontPixels * scale;
    setPixels(pixels);
    double widest = 0.0;
    for (const char *const caption : {"Vid/Aud", "Vol -45", "MUTED"})
        widest = std::max(widest, QFontMetricsF(font).horizontalAdvance(QLatin1String(caption)));
    if (widest > room)
        setPixels(pixels * room / widest);
    return font;
}

void PanelWindow::place(Placed &placed) const {
    QRect place = onSheet(placed.place, sheet->size());
    if (placed.growth != Growth::None) {
        placed.laidOutText = qobject_cast<QLabel *>(placed.widget)->text();
        const int missing = std::max(0, placed.widget->sizeHint().width() + 6 - place.width());
        const int toTheLeft = placed.growth == Growth::ToBothSides ? missing / 2 : 0;
        place.adjust(-toTheLeft, 0, missing - toTheLeft, 0);
        const QRect card = onSheet(InputsCard, sheet->size());
        place.translate(-std::max(0, place.right() - card.right()), 0);
    }
    placed.widget->setGeometry(place);
}

void PanelWindow::layOut() {
    const QFont font = fittingFont();
    QFont bold = font;
    bold.setBold(true);
    for (Placed &placed : placedControls) {
        placed.widget->setFont(placed.weight == Weight::Bold ? bold : font);
        place(placed);
    }
    showName();
}
