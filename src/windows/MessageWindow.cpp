#include "MessageWindow.h"

#include "FaceButton.h"
#include "ProgramLook.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <utility>

MessageWindow::MessageWindow(const char *name, Form &messageForm, const FormView &messageView,
                             const char *textName, const Control &messageText,
                             const std::vector<Button> &buttons)
    : Window(name, messageForm, messageView),
      view(messageView),
      text(messageText),
      label(named(new QLabel(this), textName)) {
    setWindowFlag(Qt::Dialog);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(grown(380));
    auto *row = new QHBoxLayout;
    row->addStretch();
    for (const Button &button : buttons) {
        last = named(new FaceButton(QString(), this), button.name);
        last->setMinimumWidth(grown(buttons.size() == 1 ? 110 : 96));
        bind(last, button.control);
        whenClicked(last, button.clicked);
        row->addWidget(last);
    }
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(grown(QMargins(24, 22, 24, 18)));
    layout->setSpacing(grown(18));
    layout->addWidget(label);
    layout->addLayout(row);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    whenKey(Qt::Key_Escape, buttons.back().clicked);
}

void MessageWindow::refreshRest() {
    label->setText(QString::fromStdString(text.text));
    showHints(*this, shownText, text);
    shownText = text;
    if (std::exchange(shownRaised, view.raised) == view.raised)
        return;
    last->setFocus();
    placeOverModalWindow(*this);
}
