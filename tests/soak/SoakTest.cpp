#include "../../bench/Takes.h"
#include "support/FakeMachine.h"
#include "support/rows.h"

/// Takes all day long, in test time. KVNBench plays them in real time.
class SoakTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void takes() {
        for (const char link : {SerialLinkKind, NetworkLinkKind}) {
            FakeMachine machine({.model = "KVN-8x4-RGBA"});
            Program program(machine.services());
            program.link.LinkKind = link;
            program.link.RemoteIPAddress = "127.0.0.1";
            link == SerialLinkKind ? program.serial.OpenSerialPort(7)
                                   : program.network.SetupConnectIP();
            const Takes played =
                playTakes(program, 50'000, [&] { std::ignore = machine.takeWritten(); });
            QVERIFY(played.least > 1.0 - 1e-9 && played.most < 1.0 + 1e-9);
            QCOMPARE(played.descriptors, 0);
#ifndef __SANITIZE_ADDRESS__ // which keeps what was freed
            QVERIFY(played.kilobytes < 512);
#endif
        }
    }
};

QTEST_GUILESS_MAIN(SoakTest)
#include "SoakTest.moc"
