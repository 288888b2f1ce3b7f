#include "SavedUnitsDialogTest.h"

#include "support/DataTable.h"
#include "support/ProgramFixture.h"
#include "support/toString.h"

#include <QListWidget>

Q_DECLARE_METATYPE(std::string)

namespace {

constexpr const char *Units = "dlgControlExisting";
const std::string Path = "program/KVNConfigurator.ini";
const std::string Serial = "KVN NAME = A\r\nKVN TYPE = SERIAL\r\n";
const std::string Network = "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 192.168.1.20  \r\n";

/// The program with its saved-units dialog open.
class UnitsFixture : public ProgramFixture {
public:
    explicit UnitsFixture(const std::string &file = Serial + Network) {
        files.contentsOf[Path] = file;
        answerMessages();
        click("frmMain", "MainControlButton_2");
    }
    static void choose(int operation) {
        click(Units, QStringLiteral("OptionsCommand_%1").arg(operation));
    }
    static void pick(const char *list, int row) {
        auto *widget = part<QListWidget>(Units, list);
        QTest::mouseClick(widget->viewport(), Qt::LeftButton, {},
                          widget->visualItemRect(widget->item(row)).center());
    }
    static void type(const char *box, const char *text) {
        part<QLineEdit>(Units, box)->clear();
        QTest::keyClicks(part(Units, box), QLatin1String(text));
    }
    static void typeAddress(const std::array<const char *, 4> &numbers) {
        for (int box = 0; box < 4; ++box)
            type(qPrintable(QStringLiteral("CntrlIPAddressQuad_%1").arg(box)),
                 numbers.at(static_cast<std::size_t>(box)));
    }
    static void carryOut() { click(Units, "AddCorvaneCommand"); }
    [[nodiscard]] std::string file() const { return files.contentsOf.at(Path); }
    [[nodiscard]] static std::string shownStatus() {
        return part(Units, "StatusLabel")->isVisible() ? text(Units, "StatusLabel") : std::string();
    }
};

std::string unitLines(int count) {
    std::string all;
    for (int number = 1; number <= count; ++number)
        all += "KVN NAME = " + std::to_string(number) + "\r\nKVN TYPE = SERIAL\r\n";
    return all;
}

} // namespace

void SavedUnitsDialogTest::setsUpEachOperation_data() {
    const DataTable<int, std::string, std::string> row("operation", "caption", "available");
    row("add", 0, "Add Corvane", "Text3 ConnectChoiceList AddCorvaneCommand");
    row("edit", 1, "Edit Corvane", "AvailCorvanesList");
    row("control", 2, "Control Corvane", "AvailCorvanesList");
    row("delete", 3, "Delete Corvane", "AvailCorvanesList");
}

void SavedUnitsDialogTest::setsUpEachOperation() {
    QFETCH(int, operation);
    QFETCH(std::string, caption);
    QFETCH(std::string, available);
    UnitsFixture kvn;
    UnitsFixture::choose(operation);
    QCOMPARE(
        UnitsFixture::part(Units, "AddCorvaneFrame")->property("title").toString().toStdString(),
        caption);
    QVERIFY(!UnitsFixture::part(Units, "OptionsFrame")->isVisible());
    QVERIFY(!UnitsFixture::part(Units, "IPAddressFrame")->isVisible());
    std::string enabled;
    for (const char *name :
         {"Text3", "AvailCorvanesList", "ConnectChoiceList", "AddCorvaneCommand"})
        if (UnitsFixture::part(Units, name)->isEnabled())
            enabled += (enabled.empty() ? "" : " ") + std::string(name);
    QCOMPARE(enabled, available);
    UnitsFixture::click(Units, "CancelCommand");
    QVERIFY(UnitsFixture::part(Units, "OptionsFrame")->isVisible());
    UnitsFixture::click(Units, "OKButton");
    QCOMPARE(UnitsFixture::visibleWindows(), std::string("frmMain"));
}

void SavedUnitsDialogTest::addsUnits_data() {
    const DataTable<int, int, std::string, std::string> row("before", "kind", "added", "message");
    const std::string ether = "KVN NAME = New\r\nKVN TYPE = ETHER\r\nKVN IP = 10.0.0.5\r\n";
    const std::string serial = "KVN NAME = New\r\nKVN TYPE = SERIAL\r\n";
    row("first, no kind", 0, -1, serial, "");
    row("serial", 1, 0, serial, "");
    row("network", 1, 1, ether, "");
    row("the 25th", 24, 1, ether, "");
    row("the 26th", 25, 0, "", "Maximum number of corvanes saved!");
}

void SavedUnitsDialogTest::addsUnits() {
    QFETCH(int, before);
    QFETCH(int, kind);
    QFETCH(std::string, added);
    QFETCH(std::string, message);
    UnitsFixture kvn(unitLines(before));
    UnitsFixture::choose(0);
    UnitsFixture::type("Text3", "New");
    if (kind >= 0)
        UnitsFixture::pick("ConnectChoiceList", kind);
    if (kind == 1)
        UnitsFixture::typeAddress({"10", "0", "0", "5"});
    QTest::keyClick(UnitsFixture::part(Units, "Text3"), Qt::Key_Return);
    QCOMPARE(kvn.file(), unitLines(before) + added);
    QCOMPARE(kvn.messageTexts(), message);
    QCOMPARE(UnitsFixture::shownStatus(), message.empty() ? "Added Corvane to Disk" : "");
}

void SavedUnitsDialogTest::anIncompleteAddressIsSavedWithTheNext() {
    UnitsFixture kvn("");
    UnitsFixture::choose(0);
    UnitsFixture::type("Text3", "New");
    UnitsFixture::pick("ConnectChoiceList", 1);
    UnitsFixture::typeAddress({"10", "0", "", "5"});
    kvn.pump.in(0.1, [] {
        QCOMPARE(UnitsFixture::text("plainBox", "OKLabel"),
                 std::string("incomplete ip address can't save to block."));
        UnitsFixture::click("plainBox", "OKButton");
    });
    UnitsFixture::carryOut();
    QCOMPARE(kvn.file(), std::string());
    QCOMPARE(kvn.program.savedUnits.ControlBlockCount, 1);
    UnitsFixture::type("CntrlIPAddressQuad_2", "7");
    UnitsFixture::carryOut();
    QCOMPARE(kvn.file(),
             std::string("KVN NAME = New\r\nKVN TYPE = ETHER\r\nKVN IP = \r\n"
                         "KVN NAME = New\r\nKVN TYPE = ETHER\r\nKVN IP = 10.0.7.5\r\n"));
}

void SavedUnitsDialogTest::editsAUnit() {
    UnitsFixture kvn;
    UnitsFixture::choose(1);
    UnitsFixture::pick("AvailCorvanesList", 1);
    QCOMPARE(UnitsFixture::text(Units, "ControlledbyText"), std::string("ETHER"));
    QCOMPARE(UnitsFixture::text(Units, "CntrlIPAddressQuad_3"), std::string("20  "));
    UnitsFixture::type("CntrlIPAddressQuad_0", "10");
    const double start = kvn.pump.now();
    UnitsFixture::carryOut();
    QCOMPARE(kvn.pump.now() - start, 3.0);
    QCOMPARE(kvn.file(), Serial + "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 10.168.1.20  \r\n");
    QCOMPARE(kvn.messageTexts(), std::string("Saved Changes to Disk"));
}

void SavedUnitsDialogTest::deletesWhenAnswered_data() {
    const DataTable<std::string, std::string> row("button", "left");
    row("yes", "YesButton", Network);
    row("no", "NoButton", Serial + Network);
    row("closed", "", Serial + Network);
}

void SavedUnitsDialogTest::deletesWhenAnswered() {
    QFETCH(std::string, button);
    QFETCH(std::string, left);
    UnitsFixture kvn;
    UnitsFixture::choose(3);
    UnitsFixture::pick("AvailCorvanesList", 0);
    kvn.pump.in(0.1, [&] {
        QCOMPARE(UnitsFixture::text("dlgYesNo", "YesNoText"),
                 std::string("Are you sure you want to delete A ?"));
        if (button.empty())
            UnitsFixture::window("dlgYesNo")->close();
        else
            UnitsFixture::click("dlgYesNo", button.c_str());
        kvn.pump.in(2.9, [&] {
            QCOMPARE(UnitsFixture::shownStatus(),
                     left == Network ? "Deleted Corvane from Disk" : "");
        });
    });
    UnitsFixture::carryOut();
    QCOMPARE(kvn.file(), left);
    QCOMPARE(UnitsFixture::part<QListWidget>(Units, "AvailCorvanesList")->count(),
             left == Network ? 1 : 2);
}

void SavedUnitsDialogTest::controlsUnits_data() {
    const DataTable<int, bool, std::string> row("unit", "doubleClick", "wire");
    const std::string panel = "CFG ?\r\nSTA O A\rSTA O A\r";
    row("serial", 0, false, panel);
    row("network", 1, false, panel);
    row("network by double click", 1, true, panel);
}

void SavedUnitsDialogTest::controlsUnits() {
    QFETCH(int, unit);
    QFETCH(bool, doubleClick);
    QFETCH(std::string, wire);
    UnitsFixture kvn;
    UnitsFixture::choose(2);
    UnitsFixture::pick("AvailCorvanesList", unit);
    if (unit == 0)
        kvn.connectInDialog(false);
    bool looked = false;
    kvn.pump.in(10.0, [&] {
        looked = true;
        QCOMPARE(UnitsFixture::visibleWindows(),
                 std::string("KVN32x32Audio dlgControlExisting frmMain"));
        QCOMPARE(UnitsFixture::text("KVN32x32Audio", "KVNNameLabel"),
                 std::string(unit == 0 ? "A" : "B"));
        UnitsFixture::window("KVN32x32Audio")->close();
    });
    if (doubleClick) {
        auto *list = UnitsFixture::part<QListWidget>(Units, "AvailCorvanesList");
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {},
                           list->visualItemRect(list->item(unit)).center());
    } else {
        UnitsFixture::carryOut();
    }
    QVERIFY(looked);
    QCOMPARE(kvn.takeWritten(), wire);
    QCOMPARE(UnitsFixture::visibleWindows(), std::string("frmMain"));
    QCOMPARE(UnitsFixture::text("frmMain", "ZarnConnectedLabel"), std::string("Not Connected"));
    QVERIFY(!kvn.program.panelState.PanelFromSavedUnits);
    if (unit == 1)
        QVERIFY(kvn.socket.log.front() == "connect 192.168.1.20:23" ||
                kvn.socket.log.at(1) == "connect 192.168.1.20:23");
}

void SavedUnitsDialogTest::leavesNothingWaiting_data() {
    const DataTable<std::string, std::string, std::string> row("fault", "messages", "windows");
    const std::string unable = "Unable to get Corvane Configuration";
    const std::string address =
        "Unable to connect using that IP address, check the address and try again.";
    row("no configuration", "silent", unable, "frmMain");
    row("unknown configuration", "garbage", unable, "frmMain");
    row("refused", "refused", address, "frmMain");
    row("cancelled", "cancelled", "", "frmMain");
    row("peer closes", "closes", unable, "frmMain");
    row("program left", "left", "", "");
}

void SavedUnitsDialogTest::leavesNothingWaiting() {
    QFETCH(std::string, fault);
    QFETCH(std::string, messages);
    QFETCH(std::string, windows);
    UnitsFixture kvn;
    if (fault == "silent")
        kvn.socket.wire.device = [](std::string_view) { return std::string(); };
    if (fault == "garbage")
        kvn.socket.wire.device = [](std::string_view) { return std::string("?????"); };
    if (fault == "refused")
        kvn.socket.host = FakeTcpSocket::Host::Refuses;
    if (fault == "cancelled" || fault == "left")
        kvn.socket.host = FakeTcpSocket::Host::Silent;
    if (fault == "closes")
        kvn.pump.in(0.3, [&] { kvn.socket.peerCloses(); });
    kvn.pump.in(5.0,
                [&] { UnitsFixture::window(fault == "left" ? "frmMain" : "dlgConnect")->close(); });
    kvn.socket.wire.delay = 0.5;
    UnitsFixture::choose(2);
    UnitsFixture::pick("AvailCorvanesList", 1);
    UnitsFixture::carryOut();
    QCOMPARE(kvn.messageTexts(), messages);
    QCOMPARE(UnitsFixture::visibleWindows(), windows);
    QVERIFY(!kvn.program.linkState.IPConnectingFlag || fault == "left");
    QVERIFY(!kvn.program.panelState.PanelFromSavedUnits);
}

void SavedUnitsDialogTest::aFailedSaveKeepsTheNewUnit() {
    UnitsFixture kvn(Serial);
    kvn.files.failure = "Writing program/KVNConfigurator.ini failed: disk full.";
    UnitsFixture::choose(0);
    UnitsFixture::type("Text3", "New");
    UnitsFixture::carryOut();
    QCOMPARE(kvn.messageTexts(), kvn.files.failure);
    QCOMPARE(kvn.file(), Serial);

    kvn.files.failure.clear();
    UnitsFixture::choose(3);
    QCOMPARE(UnitsFixture::part<QListWidget>(Units, "AvailCorvanesList")->count(), 2);
    UnitsFixture::click(Units, "CancelCommand");
    UnitsFixture::choose(0);
    UnitsFixture::type("Text3", "Next");
    UnitsFixture::carryOut();
    QCOMPARE(kvn.file(), Serial + "KVN NAME = New\r\nKVN TYPE = SERIAL\r\n"
                                  "KVN NAME = Next\r\nKVN TYPE = SERIAL\r\n");
}
