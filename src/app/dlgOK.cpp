#include "app/dlgOK.h"

#include <QKeyEvent>
#include <QVBoxLayout>

dlgOK::dlgOK(const char *name, const char *caption, EventPump &eventPump, bool &messageShowing)
    : Form(name, eventPump, nullptr),
      showing(messageShowing),
      OKLabel(new QLabel(QStringLiteral("Are You Sure You Want to"), this)),
      OKButton(new FaceButton(QStringLiteral("OK"), this)) {
    setWindowTitle(QLatin1String(caption));
    setWindowFlag(Qt::Dialog);
    OKLabel->setObjectName(QStringLiteral("OKLabel"));
    OKLabel->setTextFormat(Qt::PlainText);
    OKLabel->setWordWrap(true);
    OKLabel->setMinimumWidth(380);
    OKButton->setObjectName(QStringLiteral("OKButton"));
    OKButton->setMinimumWidth(110);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 22, 24, 18);
    layout->setSpacing(18);
    layout->addWidget(OKLabel);
    layout->addWidget(OKButton, 0, Qt::AlignRight);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    whenClicked(OKButton, [this] { unload(); });
}

void dlgOK::LoadForm(const std::string &text) {
    showing = true;
    OKLabel->setText(QString::fromStdString(text));
    OKButton->setFocus();
    present();
}

void dlgOK::unload() {
    showing = false;
    Form::unload();
}

void dlgOK::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape)
        unload();
    else
        Form::keyPressEvent(event);
}
