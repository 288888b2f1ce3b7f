#include "MessageWindow.h"

#include "FaceButton.h"
#include "ProgramLook.h"

#include <QVBoxLayout>

#include <utility>

MessageWindow::MessageWindow(const char *name, const char *caption, Form &messageForm,
                             const MessageView &messageView)
    : Window(name, messageForm, messageView.form),
      view(messageView),
      OKLabel(named(new QLabel(this), "OKLabel")),
      OKButton(named(new FaceButton(QString(), this), "OKButton")) {
    setWindowTitle(QLatin1String(caption));
    setWindowFlag(Qt::Dialog);
    OKLabel->setTextFormat(Qt::PlainText);
    OKLabel->setWordWrap(true);
    OKLabel->setMinimumWidth(grown(380));
    OKButton->setMinimumWidth(grown(110));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(grown(QMargins(24, 22, 24, 18)));
    layout->setSpacing(grown(18));
    layout->addWidget(OKLabel);
    layout->addWidget(OKButton, 0, Qt::AlignRight);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    bind(OKButton, view.OKButton);
    whenClicked(OKButton, [this] { form.unload(); });
    whenKey(Qt::Key_Escape, [this] { form.unload(); });
}

void MessageWindow::refreshRest() {
    OKLabel->setText(QString::fromStdString(view.OKLabel.text));
    showHints(*this, shownLabel, view.OKLabel);
    shownLabel = view.OKLabel;
    if (std::exchange(shownRaised, view.form.raised) == view.form.raised)
        return;
    OKButton->setFocus();
    placeOverModalWindow(*this);
}
