#include "TakeTest.h"

#include "support/ProgramFixture.h"

#include <QtTest/QtTest>

void TakeTest::routesWhatWasPicked_data() {
    QTest::addColumn<QStringList>("clicks");
    QTest::addColumn<QByteArray>("command");

    QTest::newRow("video and audio") << QStringList{QStringLiteral("InputVideoAudioButtons_3"),
                                                    QStringLiteral("OutputVidAudButtons_1"),
                                                    QStringLiteral("OutputVidAudButtons_2")}
                                     << QByteArray("Con 3(1,2)3F (1,2)\r");
}

void TakeTest::routesWhatWasPicked() {
    QFETCH(QStringList, clicks);
    QFETCH(QByteArray, command);
    ProgramFixture kvn;
    kvn.openPanelOverSerial();
    QVERIFY(ProgramFixture::isShown("KVN32x32Audio"));
    kvn.takeWritten();

    for (const QString &name : clicks)
        ProgramFixture::click("KVN32x32Audio", name);
    ProgramFixture::click("KVN32x32Audio", QStringLiteral("TakeButton"));

    QCOMPARE(QByteArray::fromStdString(kvn.takeWritten()), command + "STA O A\rSTA O A\r");
}
