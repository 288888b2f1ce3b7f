#include "UnitsWindow.h"

#include "FaceButton.h"
#include "ProgramLook.h"
#include "TextConversion.h"

#include <QGridLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QVBoxLayout>

namespace {

/// Names are kept as single bytes: the printable characters of Latin-1.
QValidator *nameValidator(QObject *parent) {
    static const QRegularExpression printable(QStringLiteral("[\\x20-\\x7E\\xA0-\\xFF]*"));
    return new QRegularExpressionValidator(printable, parent);
}

/// Entries are as wide as their list, whatever they hold. One that is cut by that is whole in its
/// tool tip.
class FittedEntries : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const override {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
    }

    bool helpEvent(QHelpEvent *event, QAbstractItemView *list, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override {
        if (event->type() != QEvent::ToolTip || !index.isValid())
            return QStyledItemDelegate::helpEvent(event, list, option, index);
        const bool cut = QStyledItemDelegate::sizeHint(option, index).width() > option.rect.width();
        const QString name = index.data().toString();
        QToolTip::showText(event->globalPos(), cut ? wrappingTip(name) : QString(), list,
                           option.rect);
        return true;
    }
};

/// A list with a frame in whole pixels of the screen, which its entries keep off. The style's own
/// is cut where a pixel of the screen is a part of a logical one.
class FramedList : public QListWidget {
public:
    explicit FramedList(QWidget *parent) : QListWidget(parent) {
        setViewportMargins(1, 1, 1, 1);
        setBackgroundRole(QPalette::Base);
        setAutoFillBackground(true);
    }

protected:
    bool event(QEvent *event) override {
        if (event->type() != QEvent::Paint)
            return QListWidget::event(event);
        const double line = ::lineWidth(*this);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Window).darker(130), line, Qt::SolidLine,
                            Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2));
        return true;
    }
};

int chosenRow(const QListWidget &list) {
    return list.selectedItems().isEmpty() ? -1 : list.currentRow();
}

void refreshList(QListWidget &list, const ListControl &control, ListControl &shownList) {
    if (shownList == control && chosenRow(list) == control.chosen)
        return;
    const QSignalBlocker silent(list);
    if (shownList.entries != control.entries) {
        list.clear();
        for (const std::string &entry : control.entries)
            list.addItem(shown(entry));
    }
    // Where nothing is picked the keys begin at the first entry.
    if (control.chosen < 0) {
        list.clearSelection();
        list.setCurrentRow(0, QItemSelectionModel::NoUpdate);
    } else {
        list.setCurrentRow(control.chosen);
    }
    shownList = control;
}

} // namespace

UnitsWindow::UnitsWindow(dlgControlExisting &unitsForm, const UnitsView &unitsView)
    : Window("dlgControlExisting", unitsForm, unitsView.form), dialog(unitsForm), view(unitsView) {
    setWindowTitle(QStringLiteral("Control Existing Corvane"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(grown(QMargins(18, 16, 18, 16)));
    layout->setSpacing(grown(12));
    layout->addWidget(buildOptions(), 1);
    layout->addWidget(buildWorkArea(), 1);
    auto *StatusLabel = named(new QLabel(this), "StatusLabel");
    StatusLabel->setAlignment(Qt::AlignCenter);
    keepPlaceWhenHidden(StatusLabel);
    bind(StatusLabel, view.StatusLabel);
    announceChanges(StatusLabel);
    layout->addWidget(StatusLabel);
    addLinkRow(layout, view.status, grown(28));
    resize(grown(QSize(820, 480)).boundedTo(screen()->availableSize() * 9 / 10));
    whenKey(Qt::Key_Escape, [this] { dialog.Escape(); });
    leadByArrows();
}

QGroupBox *UnitsWindow::buildOptions() {
    auto *frame = named(new QGroupBox(this), "OptionsFrame");
    bind(frame, view.OptionsFrame);
    auto *options = new QVBoxLayout(frame);
    options->setSpacing(grown(10));
    for (std::size_t index = 0; index < view.OptionsCommand.size(); ++index) {
        auto *button = new FaceButton(QString(), frame);
        button->setObjectName(QStringLiteral("OptionsCommand_%1").arg(index));
        button->setMinimumHeight(grown(36));
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        bind(button, view.OptionsCommand.at(index));
        whenClicked(button,
                    [this, index] { dialog.OptionsCommand_Click(static_cast<Operation>(index)); });
        options->addWidget(button);
    }
    options->addSpacing(grown(8));
    auto *OKButton = named(new FaceButton(QString(), frame), "OKButton");
    OKButton->setMinimumHeight(grown(32));
    bind(OKButton, view.OKButton);
    whenClicked(OKButton, [this] { dialog.OKButton_Click(); });
    options->addWidget(OKButton);
    return frame;
}

QGroupBox *UnitsWindow::buildWorkArea() {
    auto *frame = named(new QGroupBox(this), "AddCorvaneFrame");
    bind(frame, view.AddCorvaneFrame);
    const auto label = [&](const char *name, const Control &control) {
        auto *made = named(new QLabel(frame), name);
        bind(made, control);
        return made;
    };
    const auto button = [&](const char *name, const Control &control, auto clicked) {
        auto *made = named(new FaceButton(QString(), frame), name);
        made->setMinimumWidth(grown(120));
        bind(made, control);
        whenClicked(made, [this, clicked] { (dialog.*clicked)(); });
        return made;
    };
    auto *Text3 = named(new QLineEdit(frame), "Text3");
    Text3->setAccessibleName(QStringLiteral("Unit name"));
    Text3->setValidator(nameValidator(Text3));
    bind(Text3, view.Text3);
    connect(Text3, &QLineEdit::textChanged, this, [this](const QString &text) {
        // Not what the view itself put there.
        if (typed(text) != view.Text3.text)
            report([&] { dialog.Text3_Change(typed(text)); });
    });
    AvailCorvanesList =
        buildList("AvailCorvanesList", QStringLiteral("Saved units"), view.AvailCorvanesList,
                  &dlgControlExisting::AvailCorvanesList_Click, frame);
    AvailCorvanesList->setItemDelegate(new FittedEntries(AvailCorvanesList));
    // The handler waits, so it must not run inside the list's own handling of the click.
    connect(
        AvailCorvanesList, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem *item) {
            const int row = AvailCorvanesList->row(item);
            QMetaObject::invokeMethod(
                this, [this, row] { report([&] { dialog.AvailCorvanesList_DoubleClick(row); }); },
                Qt::QueuedConnection);
        });
    auto *ControlledbyText = named(new QLineEdit(frame), "ControlledbyText");
    ControlledbyText->setAccessibleName(QStringLiteral("Controlled via"));
    makeReadOnly(ControlledbyText);
    bind(ControlledbyText, view.ControlledbyText);
    ConnectChoiceList =
        buildList("ConnectChoiceList", QStringLiteral("Connection kind"), view.ConnectChoiceList,
                  &dlgControlExisting::ConnectChoiceList_Click, frame);
    ConnectChoiceList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(grown(10));
    buttons->addStretch();
    auto *grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(grown(18));
    grid->setVerticalSpacing(grown(8));
    grid->addWidget(label("Label2_0", view.Label2_0), 0, 0);
    grid->addWidget(Text3, 1, 0);
    grid->addWidget(label("Label2_1", view.Label2_1), 2, 0);
    grid->addWidget(AvailCorvanesList, 3, 0, 4, 1);
    grid->addWidget(label("Label3", view.Label3), 0, 1);
    grid->addWidget(ControlledbyText, 1, 1);
    grid->addWidget(ConnectChoiceList, 2, 1, 2, 1);
    grid->addWidget(buildAddress(frame), 4, 1);
    grid->setRowStretch(5, 1);
    buttons->addWidget(button("AddCorvaneCommand", view.AddCorvaneCommand,
                              &dlgControlExisting::AddCorvaneCommand_Click));
    buttons->addWidget(
        button("CancelCommand", view.CancelCommand, &dlgControlExisting::CancelCommand_Click));
    grid->addLayout(buttons, 7, 0, 1, 2);
    // All the room there is goes to the names.
    grid->setColumnStretch(0, 1);
    return frame;
}

QGroupBox *UnitsWindow::buildAddress(QWidget *parent) {
    auto *frame = named(new QGroupBox(parent), "IPAddressFrame");
    bind(frame, view.IPAddressFrame);
    keepPlaceWhenHidden(frame);
    address = new AddressBoxes("CntrlIPAddressQuad", "Label1", view.CntrlIPAddressQuad, frame);
    address->changed = [this](const AddressPlace &before, const std::string &now) {
        report([&] { dialog.CntrlIPAddressQuad_Change(before, now); });
    };
    address->backspaceInEmpty = [this](int box) {
        report([&] { dialog.CntrlIPAddressQuad_Backspace(box); });
    };
    auto *row = new QHBoxLayout(frame);
    row->addWidget(address);
    return frame;
}

QListWidget *UnitsWindow::buildList(const char *name, const QString &spoken,
                                    const ListControl &control, PickRow picked, QWidget *parent) {
    auto *list = named(new FramedList(parent), name);
    list->setAccessibleName(spoken);
    list->installEventFilter(this);
    list->viewport()->installEventFilter(this);
    bindPresence(list, control.control);
    const auto pick = [this, list, picked] { report([&] { (dialog.*picked)(chosenRow(*list)); }); };
    connect(list, &QListWidget::itemSelectionChanged, this, pick);
    connect(list, &QListWidget::itemClicked, this, pick);
    return list;
}

bool UnitsWindow::eventFilter(QObject *watched, QEvent *event) {
    for (QListWidget *list : {AvailCorvanesList, ConnectChoiceList}) {
        if (!list || !list->isEnabled())
            continue;
        // Where nothing is picked the first key picks what is current and does not pass it over.
        if (watched == list && event->type() == QEvent::KeyPress && chosenRow(*list) < 0) {
            const int key = static_cast<QKeyEvent *>(event)->key();
            if (key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_Home) {
                list->setCurrentRow(list->currentRow());
                return true;
            }
        }
        // A click beside the entries picks none of them.
        if (watched == list->viewport() && event->type() == QEvent::MouseButtonPress &&
            !list->itemAt(static_cast<QMouseEvent *>(event)->position().toPoint())) {
            list->clearSelection();
            return true;
        }
    }
    return Window::eventFilter(watched, event);
}

void UnitsWindow::refreshRest() {
    refreshList(*AvailCorvanesList, view.AvailCorvanesList, shownUnits);
    refreshList(*ConnectChoiceList, view.ConnectChoiceList, shownKinds);
    // As high as its few entries.
    const int around = ConnectChoiceList->height() - ConnectChoiceList->viewport()->height();
    ConnectChoiceList->setFixedHeight(
        ConnectChoiceList->count() * ConnectChoiceList->sizeHintForRow(0) + around);
    address->refresh();
}

void UnitsWindow::keyPressEvent(QKeyEvent *event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool onButton = qobject_cast<QAbstractButton *>(focusWidget()) != nullptr;
    if (enter && !onButton)
        report([this] { dialog.AddCorvaneCommand_Click(); });
    else
        Window::keyPressEvent(event);
}
