#include "Window.h"

#include "Colours.h"
#include "FaceButton.h"
#include "FocusRing.h"
#include "LinkPicture.h"
#include "ProgramLook.h"
#include "TextConversion.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <QShortcut>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace {

void showButton(QWidget &widget, const Control &control) {
    auto &button = static_cast<QAbstractButton &>(widget);
    button.setText(shown(control.text));
    button.setChecked(control.lit);
    if (auto *face = dynamic_cast<FaceButton *>(&widget)) {
        face->setFace(colour::of(control.face));
        face->setPicked(control.picked || control.face == Face::Chosen);
        if (face->spokenChecked())
            face->setSpokenChecked(control.picked || control.face == Face::Muted ||
                                   control.face == Face::Chosen);
    }
}

void showLabel(QWidget &widget, const Control &control) {
    static_cast<QLabel &>(widget).setText(shown(control.text));
}

void showBox(QWidget &widget, const Control &control) {
    auto &box = static_cast<QLineEdit &>(widget);
    // The cursor stays where it is when the text comes back as it was typed.
    if (const QString text = shown(control.text); box.text() != text)
        box.setText(text);
}

void showLamp(QWidget &widget, const Control &control) {
    static_cast<Lamp &>(widget).setLit(control.lit);
}

void showFrame(QWidget &widget, const Control &control) {
    const QString title = shown(control.text);
    static_cast<QGroupBox &>(widget).setTitle(title);
    // A frame within another one would be spoken by the other's title.
    widget.setAccessibleName(title);
}

void showNothing(QWidget &, const Control &) {}

/// Lets Esc in a menu leave the menu bar as well, which would have the keys otherwise.
class LeavesMenuBar : public QObject {
public:
    explicit LeavesMenuBar(QMenuBar *ofMenus) : QObject(ofMenus), bar(ofMenus) {}

protected:
    bool eventFilter(QObject *menu, QEvent *event) override {
        if (event->type() != QEvent::KeyPress ||
            !static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel))
            return false;
        // Not sent: the shortcuts of the window would be asked for it first.
        static_cast<QObject *>(bar)->event(event);
        static_cast<QMenu *>(menu)->close();
        return true;
    }

private:
    QMenuBar *bar;
};

/// Without the dots that only show that something goes on.
QStringView sense(const QString &text) {
    QStringView part(text);
    while (part.endsWith(u'.') || part.endsWith(u' '))
        part.chop(1);
    return part;
}

} // namespace

Window::Window(const char *name, Form &shownForm, const FormView &shownView)
    : form(shownForm), formView(shownView) {
    setObjectName(QLatin1String(name));
    setAttribute(Qt::WA_QuitOnClose, false);
    new FocusRing(this);
}

void Window::report(const std::function<void()> &action) {
    action();
    reported();
}

void Window::whenClicked(QAbstractButton *button, std::function<void()> action) {
    connect(button, &QAbstractButton::clicked, this,
            [this, action = std::move(action)] { report(action); });
}

void Window::whenKey(const QKeySequence &keys, std::function<void()> action) {
    auto *shortcut = new QShortcut(keys, this);
    connect(shortcut, &QShortcut::activated, this,
            [this, action = std::move(action)] { report(action); });
}

void Window::setMenuBar(QMenuBar *bar) {
    layout()->setMenuBar(bar);
    bar->setAccessibleName(QStringLiteral("Menu"));
    auto *leaves = new LeavesMenuBar(bar);
    for (QAction *title : bar->actions()) {
        title->menu()->setAccessibleName(title->iconText()); // without the mark of the key
        title->menu()->installEventFilter(leaves);
    }
    whenKey(Qt::Key_F10, [bar] {
        QAction *first = bar->actions().constFirst();
        bar->setActiveAction(first);
        first->menu()->setActiveAction(first->menu()->actions().constFirst());
    });
}

void Window::leadByArrows() {
    auto *arrows = new GridFocus(this);
    for (auto *control : findChildren<QWidget *>()) {
        if ((control->focusPolicy() & Qt::TabFocus) != 0 && control->window() == this)
            arrows->add(control, 0);
    }
}

void Window::bindAs(QWidget *widget, const Control &control,
                    void (*showText)(QWidget &, const Control &)) {
    bound.push_back({widget, &control, showText, std::nullopt});
}

void Window::bind(QAbstractButton *button, const Control &control) {
    bindAs(button, control, showButton);
}

void Window::bind(QLabel *label, const Control &control) {
    label->setTextFormat(Qt::PlainText);
    bindAs(label, control, showLabel);
}

void Window::bind(QLineEdit *box, const Control &control) { bindAs(box, control, showBox); }

void Window::bind(Lamp *lamp, const Control &control) { bindAs(lamp, control, showLamp); }

void Window::bind(QGroupBox *frame, const Control &control) { bindAs(frame, control, showFrame); }

void Window::bindPresence(QWidget *widget, const Control &control) {
    bindAs(widget, control, showNothing);
}

void Window::announceChanges(const QLabel *label, const std::string &idle) {
    const auto found = std::find_if(bound.begin(), bound.end(), [label](const Bound &binding) {
        return binding.widget == label;
    });
    found->announced = true;
    found->idle = idle;
}

Window::StatusWidgets Window::bindStatus(QWidget *parent, const LinkStatusView &status) {
    linkStatus = &status;
    statusWidgets = {
        named(new PressLabel(parent), "ZarnConnectedLabel"),
        named(new LinkPicture(LinkPicture::Shows::LinkUp, parent), "ZarnConnectedImage"),
        named(new LinkPicture(LinkPicture::Shows::LinkDown, parent), "ZarnNotConnectedImage")};
    statusWidgets.ZarnConnectedLabel->setTextFormat(Qt::PlainText);
    statusWidgets.ZarnConnectedLabel->setAutoFillBackground(true);
    statusWidgets.ZarnConnectedLabel->setAlignment(Qt::AlignCenter);
    return statusWidgets;
}

PressLabel *Window::addLinkRow(QVBoxLayout *layout, const LinkStatusView &status, int height) {
    bindStatus(this, status);
    auto *row = new QHBoxLayout;
    row->setSpacing(layout->spacing());
    row->addWidget(statusWidgets.ZarnConnectedImage);
    row->addWidget(statusWidgets.ZarnNotConnectedImage);
    row->addWidget(statusWidgets.ZarnConnectedLabel, 1);
    statusWidgets.ZarnConnectedLabel->setMinimumHeight(height);
    layout->addLayout(row);
    return statusWidgets.ZarnConnectedLabel;
}

void Window::refresh() {
    const QPointer<QWidget> focus = focusWidget();
    refreshBound();
    refreshStatus();
    refreshRest();
    // A control that is disabled for a while gets the focus back that it lost by that.
    if (focus && !focus->isEnabled()) {
        parkedFocus = focus;
        parkedAt = focusWidget();
    } else if (parkedFocus && parkedFocus->isEnabled()) {
        if (focusWidget() == parkedAt && parkedFocus->isVisible())
            parkedFocus->setFocus();
        parkedFocus.clear();
    }
    refreshForm();
}

void Window::refreshBound() {
    // What goes leaves before anything comes: a layout that holds both makes the window larger.
    for (const Bound &binding : bound) {
        if (!binding.control->visible)
            binding.widget->hide();
    }
    for (Bound &binding : bound) {
        const Control &control = *binding.control;
        if (binding.shown == control)
            continue;
        showHints(*binding.widget, binding.shown.value_or(Control{}), control);
        tellChange(binding);
        binding.shown = control;
        binding.showText(*binding.widget, control);
        binding.widget->setEnabled(control.enabled);
        binding.widget->setVisible(control.visible);
    }
}

void Window::tellChange(const Bound &binding) {
    if (!shownLoaded || !binding.shown)
        return;
    const Control &before = *binding.shown;
    const Control &now = *binding.control;
    const QString text = shown(now.text);
    if (binding.announced && now.visible && now.text != binding.idle &&
        (!before.visible || sense(shown(before.text)) != sense(text)))
        changedUnseen(text);
    if (before.face == Face::Busy && now.face != Face::Busy)
        changedUnseen(text + QStringLiteral(" finished"));
}

void Window::refreshStatus() {
    if (!linkStatus || shownStatus == *linkStatus)
        return;
    if (shownLoaded && shownStatus && linkStatus->labelVisible &&
        shownStatus->caption != linkStatus->caption)
        changedUnseen(shown(linkStatus->caption));
    shownStatus = *linkStatus;
    showStatusColours();
    PressLabel *label = statusWidgets.ZarnConnectedLabel;
    label->setText(shown(linkStatus->caption));
    label->setVisible(linkStatus->labelVisible);
    statusWidgets.ZarnConnectedImage->setVisible(linkStatus->linkUp);
    statusWidgets.ZarnNotConnectedImage->setVisible(!linkStatus->linkUp);
}

void Window::showStatusColours() {
    if (!shownStatus)
        return;
    const QColor background = colour::of(shownStatus->colour, palette());
    QPalette colours;
    colours.setColor(QPalette::Window, background);
    colours.setColor(QPalette::WindowText, colour::textOn(background));
    statusWidgets.ZarnConnectedLabel->setPalette(colours);
}

void Window::refreshForm() {
    if (std::exchange(shownMinimised, formView.minimised) != formView.minimised &&
        formView.minimised)
        setWindowState(windowState() | Qt::WindowMinimized);
    else if (!formView.minimised && isMinimized())
        setWindowState(windowState() & ~Qt::WindowMinimized);
    if (std::exchange(shownLoaded, formView.loaded) != formView.loaded)
        setVisible(formView.loaded);
    if (std::exchange(shownRaised, formView.raised) != formView.raised && formView.loaded) {
        raise();
        activateWindow();
    }
    if (std::exchange(shownFocus, formView.focusMoved) != formView.focusMoved) {
        if (auto *widget = findChild<QWidget *>(QString::fromStdString(formView.focus)))
            widget->setFocus();
    }
}

void Window::closeEvent(QCloseEvent *event) {
    event->ignore();
    report([this] { form.unload(); });
}

bool Window::event(QEvent *event) {
    const bool known = QWidget::event(event);
    if (event->type() == QEvent::ThemeChange)
        QApplication::setPalette(QPalette()); // the desktop's, which the program's own hides
    if (event->type() == QEvent::ApplicationPaletteChange)
        followDesktop();
    return known;
}

void Window::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        showStatusColours();
        for (auto *box : findChildren<QLineEdit *>()) {
            if (box->isReadOnly())
                makeReadOnly(box);
        }
    }
    // Minimised or restored by the user: that is what is shown from now on.
    if (event->type() == QEvent::WindowStateChange && formView.loaded)
        form.minimise(shownMinimised = isMinimized());
}

void Window::keyPressEvent(QKeyEvent *event) {
    auto *button = qobject_cast<QAbstractButton *>(focusWidget());
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && button)
        button->click();
    else
        QWidget::keyPressEvent(event);
}

void Window::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    // The styles draw the focus of a window only after a first Tab otherwise.
    setAttribute(Qt::WA_KeyboardFocusChange);
    for (auto *bar : findChildren<QScrollBar *>())
        bar->setAccessibleName(bar->orientation() == Qt::Vertical
                                   ? QStringLiteral("Scroll up and down")
                                   : QStringLiteral("Scroll left and right"));
}

bool Window::focusNextPrevChild(bool next) {
    return stops ? stops->toNextGroup(next) : QWidget::focusNextPrevChild(next);
}

void showHints(QWidget &widget, const Control &before, const Control &now) {
    if (before.toolTip != now.toolTip)
        widget.setToolTip(tipOf(now.toolTip));
    if (before.description != now.description)
        widget.setAccessibleDescription(QString::fromStdString(now.description));
}

void makeReadOnly(QLineEdit *box) {
    box->setReadOnly(true);
    QPalette colours; // the rest stays as the window has it
    colours.setColor(QPalette::Base, colour::ground(QApplication::palette()).window);
    box->setPalette(colours);
}

void keepPlaceWhenHidden(QWidget *widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

void placeOverModalWindow(QWidget &window) {
    const QWidget *modal = QApplication::activeModalWidget();
    if (modal == &window)
        return;
    // A window that is open already may belong to nobody, or to one below the modal one.
    const bool isOpen = window.isVisible();
    window.hide();
    window.winId();
    window.windowHandle()->setTransientParent(modal ? modal->windowHandle() : nullptr);
    window.setVisible(isOpen);
}
