#include "app/dlgYesNo.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

dlgYesNo::dlgYesNo(EventPump &eventPump, MessageState &messageState)
    : Form("dlgYesNo", eventPump, nullptr),
      messages(messageState),
      YesNoText(new QLabel(QStringLiteral("Do You Want to Switch to the New Project?\r\n"), this)),
      YesButton(new FaceButton(QStringLiteral("Yes"), this)),
      NoButton(new FaceButton(QStringLiteral("No"), this)) {
    setWindowFlag(Qt::Dialog);
    // The dialog has no caption; a blank keeps the desktop from showing the program's name instead.
    setWindowTitle(QStringLiteral(" "));
    YesNoText->setObjectName(QStringLiteral("YesNoText"));
    YesNoText->setTextFormat(Qt::PlainText);
    YesNoText->setWordWrap(true);
    YesNoText->setMinimumWidth(380);
    YesButton->setObjectName(QStringLiteral("YesButton"));
    NoButton->setObjectName(QStringLiteral("NoButton"));
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (FaceButton *button : {YesButton, NoButton}) {
        button->setMinimumWidth(96);
        buttons->addWidget(button);
    }
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 22, 24, 18);
    layout->setSpacing(18);
    layout->addWidget(YesNoText);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    whenClicked(YesButton, [this] { answer(true); });
    whenClicked(NoButton, [this] { answer(false); });
    whenKey(Qt::Key_Escape, [this] { answer(false); });
}

void dlgYesNo::LoadForm() {
    YesNoText->setText(QString::fromStdString(messages.ConfirmText));
    NoButton->setFocus();
    present();
}

void dlgYesNo::answer(bool yes) {
    messages.YesNoAnswer = yes;
    unload();
}

void dlgYesNo::unload() {
    messages.YesNoShowing = false;
    Form::unload();
}
