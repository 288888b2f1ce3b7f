#include "SavedUnitsDialogTest.h"

#include "support/DataTable.h"
#include "support/ProgramFixture.h"
#include "support/toString.h"

#include <QListWidget>

namespace {

constexpr const char *Units = "dlgControlExisting";
const std::string Path = "program/KVNConfigurator.ini";
const std::string Serial = "KVN NAME = A\r\nKVN TYPE = SERIAL\r\n";
const std::string Network = "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 192.168.1.20  \r\n";
const std::string New = "KVN NAME = New\r\nKVN TYPE = ";

/// The program with its saved-units dialog open.
class UnitsFixture : public ProgramFixture {
public:
    explicit UnitsFixture(const std::string &file = Serial + Network) {
        files.contentsOf[Path] = file;
        answerMessages();
        click("frmMain", "MainControlButton_2");
    }
    void choose(int operation) { click(Units, "OptionsCommand_" + std::to_string(operation)); }
    [[nodiscard]] int listed() const {
        return part<QListWidget>(Units, "AvailCorvanesList")->count();
    }
    void pick(int row, const char *list = "AvailCorvanesList",
              Qt::KeyboardModifiers modifiers = {}) {
        auto *widget = part<QListWidget>(Units, list);
        const QPoint at = widget->visualItemRect(widget->item(row)).center();
        QTest::mouseClick(widget->viewport(), Qt::LeftButton, modifiers, at);
    }
    /// Types into what has the focus, wherever that goes.
    static void type(const char *keys) {
        for (const char *key = keys; *key != 0; ++key)
            QTest::keyClick(window(Units)->focusWidget(), *key);
    }
    void type(const std::string &box, const char *text) {
        part<QLineEdit>(Units, box)->clear();
        QTest::keyClicks(part(Units, box), QLatin1String(text));
    }
    /// Fills in a new unit, and if it has an address its kind too.
    void fillIn(const std::vector<const char *> &address = {}) {
        choose(0);
        type("Text3", "New");
        if (!address.empty())
            pick(1, "ConnectChoiceList");
        for (std::size_t box = 0; box < address.size(); ++box)
            type("CntrlIPAddressQuad_" + std::to_string(box), address[box]);
    }
    void carryOut() { click(Units, "AddCorvaneCommand"); }
    [[nodiscard]] std::string file() const { return files.contentsOf.at(Path); }
    [[nodiscard]] std::string status() const {
        return part(Units, "StatusLabel")->isVisible() ? text(Units, "StatusLabel") : "";
    }
};

} // namespace

void SavedUnitsDialogTest::setsUpEachOperation() {
    for (int saved : {0, 1, 24, 25}) {
        std::string file;
        for (int unit = 0; unit < saved; ++unit)
            file += Serial;
        UnitsFixture kvn(file);
        std::string available;
        for (int operation = 0; operation < 4; ++operation) {
            kvn.choose(operation);
            QVERIFY(!kvn.part(Units, "OptionsFrame")->isVisible());
            QVERIFY(!kvn.part(Units, "IPAddressFrame")->isVisible());
            available +=
                kvn.part(Units, "AddCorvaneFrame")->property("title").toString().toStdString();
            for (const char *name :
                 {"Text3", "AvailCorvanesList", "ConnectChoiceList", "AddCorvaneCommand"})
                available += kvn.part(Units, name)->isEnabled() ? std::string(" ") + name : "";
            available += ' ';
            available += std::to_string(kvn.listed());
            available += '\n';
            kvn.click(Units, "CancelCommand");
        }
        const std::string list = " Corvane AvailCorvanesList " + std::to_string(saved) + "\n";
        QCOMPARE(available, "Add Corvane Text3 ConnectChoiceList AddCorvaneCommand " +
                                std::to_string(saved) + "\nEdit" + list + "Control" + list +
                                "Delete" + list);
        kvn.click(Units, "OKButton");
        QCOMPARE(kvn.visibleWindows() + kvn.messages, std::string("frmMain"));
        QCOMPARE(kvn.file(), file);
    }
}

void SavedUnitsDialogTest::addsUnits_data() {
    const DataTable<int, bool, std::string, std::string> row("before", "network", "added", "told");
    const std::string ether = New + "ETHER\r\nKVN IP = 10.0.0.5\r\n";
    row("first, no kind", 0, false, New + "SERIAL\r\n", "Added Corvane to Disk");
    row("network", 1, true, ether, "Added Corvane to Disk");
    row("the 25th", 24, true, ether, "Added Corvane to Disk");
    row("the 26th", 25, false, "", "Maximum number of corvanes saved!");
}

void SavedUnitsDialogTest::addsUnits() {
    QFETCH(int, before);
    QFETCH(bool, network);
    QFETCH(std::string, added);
    std::string file;
    for (int unit = 0; unit < before; ++unit)
        file += Serial;
    UnitsFixture kvn(file);
    kvn.fillIn();
    if (network) {
        kvn.pick(1, "ConnectChoiceList");
        kvn.part(Units, "CntrlIPAddressQuad_0")->setFocus();
        kvn.type("10.0.0.5");
    }
    QTest::keyClick(kvn.part(Units, "Text3"), Qt::Key_Return);
    QCOMPARE(kvn.file(), file + added);
    QTEST(kvn.status() + kvn.messages, "told");
}

void SavedUnitsDialogTest::editsAUnit() {
    UnitsFixture kvn;
    kvn.choose(1);
    kvn.pick(1);
    QCOMPARE(kvn.text(Units, "ControlledbyText"), std::string("ETHER"));
    QCOMPARE(kvn.text(Units, "CntrlIPAddressQuad_3"), std::string("20"));
    kvn.type("CntrlIPAddressQuad_0", "10");
    const double start = kvn.pump.now();
    kvn.carryOut();
    QCOMPARE(kvn.pump.now() - start, 3.0);
    QCOMPARE(kvn.file(), Serial + "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 10.168.1.20  \r\n");
    QCOMPARE(kvn.messages, std::string("Saved Changes to Disk"));
    kvn.choose(1);
    kvn.pick(1);
    auto *last = kvn.part(Units, "CntrlIPAddressQuad_3");
    last->setFocus();
    for (const int key : {Qt::Key_End, Qt::Key_Backspace, Qt::Key_5})
        QTest::keyClick(last, static_cast<Qt::Key>(key));
    kvn.carryOut();
    QCOMPARE(kvn.file(), Serial + "KVN NAME = B\r\nKVN TYPE = ETHER\r\nKVN IP = 10.168.1.25\r\n");
}

// What the dialog shows of the picked unit: kind, address, and whether it can be acted upon.
void SavedUnitsDialogTest::showsThePickedUnitOnly() {
    UnitsFixture kvn;
    const auto shown = [&] {
        std::string all = kvn.text(Units, "ControlledbyText");
        for (int box = 0; kvn.part(Units, "IPAddressFrame")->isVisible() && box < 4; ++box)
            all += " " + kvn.text(Units, "CntrlIPAddressQuad_" + std::to_string(box));
        for (const char *name : {"ConnectChoiceList", "AddCorvaneCommand"})
            all += kvn.part(Units, name)->isEnabled() ? " on" : " off";
        return all + " " + std::to_string(kvn.program.savedUnits.SelectedBlockIndex);
    };
    kvn.choose(1);
    QCOMPARE(shown(), std::string(" off off 0"));
    kvn.pick(1);
    QCOMPARE(shown(), std::string("ETHER 192 168 1 20 on on 2"));
    QWidget *viewport = kvn.part<QListWidget>(Units, "AvailCorvanesList")->viewport();
    QTest::mouseClick(viewport, Qt::LeftButton, {}, viewport->rect().bottomRight());
    QCOMPARE(shown(), std::string(" off off 0"));
    kvn.pick(1);
    kvn.pick(0);
    QCOMPARE(shown(), std::string("SERIAL on on 1"));
    kvn.pick(1, "ConnectChoiceList");
    QCOMPARE(shown(), std::string("ETHER     on on 1")); // not the address of the unit before
    kvn.pick(1);
    kvn.pick(0, "ConnectChoiceList");
    kvn.pick(1, "ConnectChoiceList");
    QCOMPARE(shown(), std::string("ETHER 192 168 1 20 on on 2"));
    kvn.pick(1, "ConnectChoiceList", Qt::ControlModifier); // takes a choice back elsewhere
    QCOMPARE(shown(), std::string("ETHER 192 168 1 20 on on 2"));
}

void SavedUnitsDialogTest::keysPickTheFirstUnitFirst() {
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_Space}) {
        UnitsFixture kvn;
        for (int opened = 0; opened < 2; ++opened) { // also when another one was picked before
            kvn.choose(3);
            auto *list = kvn.part<QListWidget>(Units, "AvailCorvanesList");
            QCOMPARE(list->currentRow(), 0);
            QCOMPARE(kvn.window(Units)->focusWidget(), list);
            QVERIFY(list->selectedItems().isEmpty());
            QTest::keyClick(list, key);
            QCOMPARE(list->selectedItems().value(0), list->item(0));
            QCOMPARE(kvn.program.savedUnits.SelectedBlockIndex, 1);
            QTest::keyClick(list, Qt::Key_Down);
            QCOMPARE(kvn.program.savedUnits.SelectedBlockIndex, 2);
            kvn.click(Units, "CancelCommand");
        }
        kvn.choose(3);
        QTest::keyClick(kvn.part(Units, "AvailCorvanesList"), key);
        kvn.pump.in(0.1, [&] { kvn.click("dlgYesNo", "YesButton"); });
        QTest::keyClick(kvn.part(Units, "AvailCorvanesList"), Qt::Key_Return);
        QCOMPARE(kvn.file(), Network);
        kvn.choose(0);
        auto *kinds = kvn.part<QListWidget>(Units, "ConnectChoiceList");
        kinds->setFocus();
        QTest::keyClick(kinds, key);
        QCOMPARE(kinds->selectedItems().value(0), kinds->item(0));
    }
}

void SavedUnitsDialogTest::deletesWhenAnswered() {
    for (const std::string button : {"YesButton", "NoButton", ""}) {
        const bool deleted = button == "YesButton";
        UnitsFixture kvn;
        kvn.choose(3);
        kvn.pick(0);
        kvn.pump.in(0.1, [&] {
            QCOMPARE(kvn.text("dlgYesNo", "YesNoText"),
                     std::string("Are you sure you want to delete A ?"));
            if (button.empty())
                kvn.window("dlgYesNo")->close();
            else
                kvn.click("dlgYesNo", button);
        });
        kvn.pump.in(3.0,
                    [&] { QCOMPARE(kvn.status(), deleted ? "Deleted Corvane from Disk" : ""); });
        kvn.carryOut();
        QCOMPARE(kvn.file(), deleted ? Network : Serial + Network);
        QCOMPARE(kvn.listed(), deleted ? 1 : 2);
    }
}

void SavedUnitsDialogTest::controlsUnits() {
    for (const std::string way : {"serial", "network", "double click"}) {
        const int unit = way == "serial" ? 0 : 1;
        UnitsFixture kvn;
        kvn.choose(2);
        if (unit == 0)
            kvn.connectInDialog(false);
        std::string seen;
        kvn.pump.in(10.0, [&] {
            seen = kvn.visibleWindows() + " " + kvn.text("KVN32x32Audio", "KVNNameLabel");
            kvn.window("KVN32x32Audio")->close();
        });
        kvn.pick(unit);
        auto *list = kvn.part<QListWidget>(Units, "AvailCorvanesList");
        if (way == "double click")
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {},
                               list->visualItemRect(list->item(unit)).center());
        else
            kvn.carryOut();
        QCOMPARE(seen, "KVN32x32Audio dlgControlExisting frmMain " + std::string(unit ? "B" : "A"));
        QCOMPARE(kvn.takeWritten(), std::string("CFG ?\r\nSTA O A\rSTA O A\r"));
        QCOMPARE(kvn.visibleWindows() + " " + kvn.text("frmMain", "ZarnConnectedLabel"),
                 std::string("frmMain Not Connected"));
        QVERIFY(!kvn.program.panel.PanelFromSavedUnits);
        QCOMPARE(
            std::count(kvn.socket.log.begin(), kvn.socket.log.end(), "connect 192.168.1.20:23"),
            unit);
    }
}

void SavedUnitsDialogTest::leavesNothingWaiting() {
    const std::map<std::string, std::string> messages{
        {"silent", "Unable to get Corvane Configuration"},
        {"garbage", "Unable to get Corvane Configuration"},
        {"closes", "Unable to get Corvane Configuration"},
        {"refused", "Unable to connect using that IP address, check the address and try again."},
        {"cancelled", ""},
        {"left", ""}};
    for (const auto &[fault, message] : messages) {
        UnitsFixture kvn;
        if (fault == "silent" || fault == "garbage")
            kvn.socket.wire.device = [answer = fault == "silent" ? "" : "?????"](std::string_view) {
                return std::string(answer);
            };
        kvn.socket.host = fault == "refused"                        ? FakeTcpSocket::Host::Refuses
                          : fault == "cancelled" || fault == "left" ? FakeTcpSocket::Host::Silent
                                                                    : FakeTcpSocket::Host::Answers;
        if (fault == "closes")
            kvn.pump.in(0.3, [&] { kvn.socket.peerCloses(); });
        kvn.pump.in(5.0, [&, window = fault == "left" ? "frmMain" : "dlgConnect"] {
            kvn.window(window)->close();
        });
        kvn.socket.wire.delay = 0.5;
        kvn.choose(2);
        kvn.pick(1);
        kvn.carryOut();
        QCOMPARE(fault + kvn.messages, fault + message);
        QCOMPARE(kvn.visibleWindows(), fault == "left" ? "" : "frmMain");
        QVERIFY(!kvn.program.link.IPConnectingFlag || fault == "left");
        QVERIFY(!kvn.program.panel.PanelFromSavedUnits);
    }
}

void SavedUnitsDialogTest::aFailedSaveKeepsTheNewUnit() {
    UnitsFixture kvn(Serial);
    kvn.files.failure = "Writing program/KVNConfigurator.ini failed: disk full.";
    kvn.fillIn();
    kvn.carryOut();
    QCOMPARE(kvn.messages, kvn.files.failure);
    QCOMPARE(kvn.file(), Serial);
    kvn.files.failure.clear();
    // An address that is not complete is kept as well, and saved with the next.
    kvn.fillIn({"10", "0", "", "5"});
    kvn.pump.in(0.1, [&] {
        QCOMPARE(kvn.text("plainBox", "OKLabel"),
                 std::string("incomplete ip address can't save to block."));
        kvn.click("plainBox", "OKButton");
    });
    kvn.carryOut();
    QCOMPARE(kvn.file(), Serial);
    kvn.type("CntrlIPAddressQuad_2", "7");
    kvn.carryOut();
    QCOMPARE(kvn.file(), Serial + New + "SERIAL\r\n" + New + "ETHER\r\nKVN IP = \r\n" + New +
                             "ETHER\r\nKVN IP = 10.0.7.5\r\n");
}

void SavedUnitsDialogTest::aHalfUnitGoesWithTheNextRead() {
    for (const bool fileExists : {true, false}) {
        UnitsFixture kvn(Network);
        if (!fileExists)
            kvn.files.contentsOf.clear();
        kvn.fillIn({"10", "0", "", "5"});
        kvn.pump.in(0.1, [&] { kvn.click("plainBox", "OKButton"); });
        kvn.carryOut();
        kvn.click(Units, "CancelCommand");
        kvn.choose(1);
        QCOMPARE(kvn.listed(), fileExists ? 1 : 2);
        kvn.pick(0);
        kvn.carryOut();
        QCOMPARE(kvn.file(), Network + (fileExists ? "" : New + "ETHER\r\nKVN IP = \r\n"));
    }
}
