#include "app/HelpWindow.h"

#include "app/HelpTexts.h"
#include "widgets/FaceButton.h"

#include <QLabel>
#include <QVBoxLayout>

HelpWindow::HelpWindow(HelpTopic topic, EventPump &eventPump)
    : Form(HelpTexts.at(static_cast<std::size_t>(topic)).window, eventPump, nullptr) {
    const HelpText &texts = HelpTexts.at(static_cast<std::size_t>(topic));
    setWindowTitle(QLatin1String(texts.caption));
    setWindowFlag(Qt::Dialog);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 22, 24, 18);
    layout->setSpacing(14);
    for (std::size_t number = 0; number < texts.paragraphs.size(); ++number) {
        auto *label = new QLabel(QLatin1String(texts.paragraphs.at(number)), this);
        label->setObjectName(QStringLiteral("Label%1").arg(number + 1));
        label->setWordWrap(true);
        label->setFixedWidth(420);
        layout->addWidget(label);
    }
    auto *heading = findChild<QLabel *>(QStringLiteral("Label1"));
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    auto *OKButton = new FaceButton(QStringLiteral("OK"), this);
    OKButton->setObjectName(QStringLiteral("OKButton"));
    OKButton->setMinimumWidth(110);
    layout->addWidget(OKButton, 0, Qt::AlignRight);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    whenClicked(OKButton, [this] { unload(); });
    whenKey(Qt::Key_Escape, [this] { unload(); });
    OKButton->setFocus();
}
