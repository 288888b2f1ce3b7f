#include "support/ProgramFixture.h"

#include "support/LinkFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QtTest/QtTest>

ProgramFixture::ProgramFixture(UnitOptions options)
    : unit(std::move(options)), program({pump, serialPort, socket, files, "program"}) {
    serialPort.present = {7};
    serialPort.wire.device = LinkFixture::answerOf(serialUnitPort);
    socket.wire.device = LinkFixture::answerOf(networkUnitPort);
    pump.eachTurn = [] { QCoreApplication::processEvents(); };
    program.start();
}

QWidget *ProgramFixture::window(const char *name) {
    for (QWidget *candidate : QApplication::topLevelWidgets()) {
        if (candidate->objectName() == QLatin1String(name))
            return candidate;
    }
    return nullptr;
}

void ProgramFixture::click(const char *windowName, const QString &name) {
    auto *button = control<>(windowName, name);
    QVERIFY2(button, qPrintable(name));
    QVERIFY2(button->isVisible() && button->isEnabled(), qPrintable(name));
    QTest::mouseClick(button, Qt::LeftButton);
}

bool ProgramFixture::isShown(const char *windowName) { return window(windowName)->isVisible(); }

QString ProgramFixture::labelText(const char *windowName, const QString &name) {
    return control<QLabel>(windowName, name)->text();
}

void ProgramFixture::answerMessages() {
    pump.eachTurn = [this] {
        QCoreApplication::processEvents();
        if (isShown("dlgOK")) {
            messages.push_back(labelText("dlgOK", QStringLiteral("OKLabel")));
            click("dlgOK", QStringLiteral("OKButton"));
        }
    };
}

void ProgramFixture::clickAnything(const char *windowName, const char *name) {
    QTest::mouseClick(part(windowName, name), Qt::LeftButton);
}

std::string ProgramFixture::messageTexts() const {
    return QStringList(messages.begin(), messages.end()).join(QLatin1String(" | ")).toStdString();
}

std::string ProgramFixture::visibleWindows() {
    QStringList names;
    for (const QWidget *candidate : QApplication::topLevelWidgets()) {
        if (candidate->isVisible())
            names.push_back(candidate->objectName());
    }
    names.sort();
    return names.join(QLatin1Char(' ')).toStdString();
}

void ProgramFixture::connectInDialog(bool overNetwork) {
    const auto onSerial = [this] {
        QTest::mouseClick(control<>("dlgConnect", QStringLiteral("ConnectSerialOption")),
                          Qt::LeftButton);
        auto *ports = control<QComboBox>("dlgConnect", QStringLiteral("SerialPortsCombo"));
        QTest::keyClick(ports, Qt::Key_Down);
        pump.in(0.1, [] { click("dlgConnect", QStringLiteral("Connect2SerialButton")); });
    };
    const auto onNetwork = [] {
        QTest::mouseClick(control<>("dlgConnect", QStringLiteral("ConnectIPOption")),
                          Qt::LeftButton);
        for (int box = 0; box < 4; ++box)
            QTest::keyClicks(control<QLineEdit>("dlgConnect",
                                                QStringLiteral("IPAddressQuadConnect_%1").arg(box)),
                             QStringLiteral("%1").arg(10 + box));
        click("dlgConnect", QStringLiteral("Connect2IPButton"));
    };
    pump.in(0.1, overNetwork ? std::function<void()>(onNetwork) : onSerial);
}

void ProgramFixture::openPanelOverSerial() {
    answerMessages();
    connectInDialog(false);
    click("frmMain", QStringLiteral("MainControlButton_0"));
}

void ProgramFixture::openPanelOverNetwork() {
    answerMessages();
    connectInDialog(true);
    click("frmMain", QStringLiteral("MainControlButton_0"));
}

std::string ProgramFixture::takeWritten() {
    return std::exchange(serialPort.wire.written, {}) + std::exchange(socket.wire.written, {});
}
