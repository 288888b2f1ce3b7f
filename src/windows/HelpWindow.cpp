#include "HelpWindow.h"

#include "FaceButton.h"
#include "ProgramLook.h"

#include <QVBoxLayout>

HelpWindow::HelpWindow(const HelpText &texts, Form &helpForm, const FormView &helpView)
    : Window(texts.window, helpForm, helpView) {
    setWindowTitle(QLatin1String(texts.caption));
    setWindowFlag(Qt::Dialog);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(grown(QMargins(24, 22, 24, 18)));
    layout->setSpacing(grown(14));
    for (std::size_t number = 0; number < texts.paragraphs.size(); ++number) {
        auto *label = new QLabel(QLatin1String(texts.paragraphs.at(number)), this);
        label->setObjectName(QStringLiteral("Label%1").arg(number + 1));
        label->setWordWrap(true);
        label->setFixedWidth(grown(420));
        layout->addWidget(label);
        if (number == 0) {
            QFont bold = label->font();
            bold.setBold(true);
            label->setFont(bold);
        }
    }
    auto *OKButton = named(new FaceButton(QStringLiteral("OK"), this), "OKButton");
    OKButton->setMinimumWidth(grown(110));
    layout->addWidget(OKButton, 0, Qt::AlignRight);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    whenClicked(OKButton, [this] { form.unload(); });
    whenKey(Qt::Key_Escape, [this] { form.unload(); });
    OKButton->setFocus();
}
