#include "support/ProgramFixture.h"

#include "ProgramLook.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QtTest/QtTest>

ProgramFixture::ProgramFixture(UnitOptions options) : FakeMachine(std::move(options)) {
    applyProgramLook();
    pump.eachTurn = [] { QCoreApplication::processEvents(); };
    program.start();
    windows.refresh();
}

QWidget *ProgramFixture::window(const std::string &name) {
    for (QWidget *candidate : QApplication::topLevelWidgets()) {
        if (candidate->objectName().toStdString() == name)
            return candidate;
    }
    return nullptr;
}

std::string ProgramFixture::visibleWindows() {
    QStringList names;
    for (const QWidget *candidate : QApplication::topLevelWidgets())
        names += candidate->isVisible() ? candidate->objectName() : QString();
    names.sort();
    return names.join(QLatin1Char(' ')).trimmed().toStdString();
}

void ProgramFixture::click(const char *windowName, const std::string &name) {
    const auto *button = part<QAbstractButton>(windowName, name);
    QVERIFY2(button && button->isVisible() && button->isEnabled(), name.c_str());
    clickAnything(windowName, name);
}

void ProgramFixture::clickAnything(const char *windowName, const std::string &name) {
    QTest::mouseClick(part(windowName, name), Qt::LeftButton);
}

void ProgramFixture::answerMessages() {
    pump.eachTurn = [this] {
        QCoreApplication::processEvents();
        if (const QWidget *box = window("dlgOK"); !box || !box->isVisible())
            return;
        const QString text = part<QLabel>("dlgOK", "OKLabel")->text();
        messages += (messages.empty() ? "" : " | ") + text.toStdString();
        click("dlgOK", "OKButton");
    };
}

void ProgramFixture::connectInDialog(bool overNetwork) {
    pump.in(0.1, [this, overNetwork] {
        clickAnything("dlgConnect", overNetwork ? "ConnectIPOption" : "ConnectSerialOption");
        if (overNetwork) {
            part<QLineEdit>("dlgConnect", "IPAddressQuadConnect_0")
                ->setText(QStringLiteral("10.11.12.13"));
        } else {
            auto *ports = part<QComboBox>("dlgConnect", "SerialPortsCombo");
            QTest::keyClick(ports, Qt::Key_Down);
            QTest::keyClick(ports->view(), Qt::Key_Return);
        }
        const char *const button = overNetwork ? "Connect2IPButton" : "Connect2SerialButton";
        pump.in(0.1, [button] { click("dlgConnect", button); });
    });
}

void ProgramFixture::openPanel(bool overNetwork) {
    answerMessages();
    connectInDialog(overNetwork);
    click("frmMain", "MainControlButton_0");
}
