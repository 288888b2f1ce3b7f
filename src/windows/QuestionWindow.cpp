#include "QuestionWindow.h"

#include "FaceButton.h"
#include "ProgramLook.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <utility>

QuestionWindow::QuestionWindow(Messages &questions, const QuestionView &questionView)
    : Window("dlgYesNo", questions.dlgYesNo(), questionView.form),
      view(questionView),
      YesNoText(named(new QLabel(this), "YesNoText")),
      NoButton(named(new FaceButton(QString(), this), "NoButton")) {
    setWindowFlag(Qt::Dialog);
    // The dialog has no caption; a blank keeps the desktop from showing the program's name instead.
    setWindowTitle(QStringLiteral(" "));
    setAccessibleName(QStringLiteral("Question"));
    YesNoText->setTextFormat(Qt::PlainText);
    YesNoText->setWordWrap(true);
    YesNoText->setMinimumWidth(grown(380));
    auto *YesButton = named(new FaceButton(QString(), this), "YesButton");
    setTabOrder(YesButton, NoButton);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QAbstractButton *button : {static_cast<QAbstractButton *>(YesButton), NoButton}) {
        button->setMinimumWidth(grown(96));
        buttons->addWidget(button);
    }
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(grown(QMargins(24, 22, 24, 18)));
    layout->setSpacing(grown(18));
    layout->addWidget(YesNoText);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    bind(YesButton, view.YesButton);
    bind(NoButton, view.NoButton);
    whenClicked(YesButton, [&questions] { questions.answer(true); });
    whenClicked(NoButton, [&questions] { questions.answer(false); });
    whenKey(Qt::Key_Escape, [&questions] { questions.answer(false); });
}

void QuestionWindow::refreshRest() {
    YesNoText->setText(QString::fromStdString(view.YesNoText.text));
    if (std::exchange(shownRaised, view.form.raised) == view.form.raised)
        return;
    NoButton->setFocus();
    placeOverModalWindow(*this);
}
