#include "widgets/Form.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QShortcut>

#include <utility>

Form::Form(const char *name, EventPump &eventPump, ActionGuard *guard)
    : pump(eventPump), actionGuard(guard) {
    setObjectName(QLatin1String(name));
    setAttribute(Qt::WA_QuitOnClose, false);
}

void Form::present() {
    if (pump.ended())
        return;
    loaded = true;
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void Form::unload() {
    loaded = false;
    hide();
}

void Form::act(const std::function<void()> &action) {
    if (actionGuard)
        actionGuard->run(action, [this] { return loaded; });
    else
        action();
}

void Form::whenClicked(QAbstractButton *button, std::function<void()> action) {
    connect(button, &QAbstractButton::clicked, this,
            [this, action = std::move(action)] { act(action); });
}

void Form::whenKey(const QKeySequence &keys, std::function<void()> action) {
    auto *shortcut = new QShortcut(keys, this);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, this,
            [this, action = std::move(action)] { act(action); });
}

void Form::closeEvent(QCloseEvent *event) {
    event->ignore();
    act([this] { unload(); });
}

void Form::keyPressEvent(QKeyEvent *event) {
    auto *button = qobject_cast<QAbstractButton *>(focusWidget());
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && button && !event->isAutoRepeat())
        button->click();
    else
        QWidget::keyPressEvent(event);
}
