#include "AboutWindow.h"

#include "FaceButton.h"
#include "ProgramLook.h"
#include "start/ProgramTitle.h"

#include <QFontInfo>
#include <QGridLayout>
#include <QLabel>

AboutWindow::AboutWindow(Form &aboutForm, const FormView &aboutView)
    : Window("frmAbout", aboutForm, aboutView) {
    const QString title = QLatin1String(ProgramTitle);
    setWindowTitle(QStringLiteral("About ") + title);
    setWindowFlag(Qt::Dialog);
    const auto label = [this](const char *name, const QString &text) {
        auto *made = new QLabel(text, this);
        made->setObjectName(QLatin1String(name));
        return made;
    };
    QLabel *picIcon = label("picIcon", QString());
    picIcon->setPixmap(programIcon().pixmap(grown(QSize(56, 56)), devicePixelRatio()));
    picIcon->setAccessibleName(title);
    QLabel *lblTitle = label("lblTitle", title);
    QFont bold = lblTitle->font();
    bold.setBold(true);
    bold.setPixelSize(lblTitle->fontInfo().pixelSize() * 13 / 10);
    lblTitle->setFont(bold);
    QLabel *lblVersion =
        label("lblVersion", QStringLiteral("Version ") + QLatin1String(ProgramVersion));
    QLabel *lblDescription =
        label("lblDescription", QStringLiteral("Controls Corvane audio/video matrix switchers\n"
                                               "over a serial port or TCP/IP."));
    auto *cmdOK = new FaceButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setMinimumWidth(grown(110));
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(grown(QMargins(24, 22, 24, 18)));
    grid->setHorizontalSpacing(grown(20));
    grid->setVerticalSpacing(grown(8));
    grid->addWidget(picIcon, 0, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(lblTitle, 0, 1);
    grid->addWidget(lblVersion, 1, 1);
    grid->addWidget(lblDescription, 2, 1);
    grid->setRowMinimumHeight(3, grown(10));
    grid->addWidget(cmdOK, 4, 1, Qt::AlignRight);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    whenClicked(cmdOK, [this] { form.unload(); });
    whenKey(Qt::Key_Escape, [this] { form.unload(); });
    cmdOK->setFocus();
}
