#include "widgets/LinkStatusWidgets.h"

#include "widgets/Colours.h"
#include "widgets/LinkPicture.h"
#include "widgets/TextConversion.h"

LinkStatusWidgets::LinkStatusWidgets(QWidget *parent)
    : ZarnConnectedLabel(new QLabel(QStringLiteral("Zarn Connected"), parent)),
      ZarnConnectedImage(new LinkPicture(true, parent)),
      ZarnNotConnectedImage(new LinkPicture(false, parent)) {
    ZarnConnectedLabel->setObjectName(QStringLiteral("ZarnConnectedLabel"));
    ZarnConnectedLabel->setTextFormat(Qt::PlainText);
    ZarnConnectedLabel->setAutoFillBackground(true);
    ZarnConnectedLabel->setAlignment(Qt::AlignCenter);
    ZarnConnectedImage->setObjectName(QStringLiteral("ZarnConnectedImage"));
    ZarnConnectedImage->hide();
    ZarnNotConnectedImage->setObjectName(QStringLiteral("ZarnNotConnectedImage"));
}

void LinkStatusWidgets::showLinkStatus(const LinkStatusLook &look) {
    if (look.showLabel)
        ZarnConnectedLabel->setVisible(true);
    ZarnConnectedImage->setVisible(look.linkUp);
    ZarnNotConnectedImage->setVisible(!look.linkUp);

    QPalette colours = ZarnConnectedLabel->parentWidget()->palette();
    const QColor background =
        look.background ? colour::of(*look.background) : colours.color(QPalette::Button);
    colours.setColor(QPalette::Window, background);
    colours.setColor(QPalette::WindowText, colour::textOn(background));
    ZarnConnectedLabel->setPalette(colours);
    ZarnConnectedLabel->setText(shown(look.caption));
    changed();
}

bool LinkStatusWidgets::showsLinkUp() const { return !ZarnConnectedImage->isHidden(); }
