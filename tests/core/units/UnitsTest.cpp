#include "support/Player.h"
#include "units/SavedUnitsText.h"

namespace {

const std::string Serial = "KVN NAME = A\r\nKVN TYPE = SERIAL\r\n";
const std::string B = "KVN NAME = B\r\nKVN TYPE = ETHER\r\n";
const std::string Network = B + "KVN IP = 192.168.1.20  \r\n";

std::string times(int count, const std::string &text) {
    return count == 0 ? "" : text + times(count - 1, text);
}

} // namespace

// The words are listed in support/Player.cpp.
// clang-format off
class UnitsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsAndWritesBack() {
        const auto unit = [](const std::string &ip) { return B + "KVN IP = " + ip + "\r\n"; };
        checkRows({
            {"", "0:"}, {Serial + unit("192.168.1.20"), "2:" + Serial + Network},
            {B + "KVN IP = 10.0.0.5", "1:" + unit("10.0.0.5   ")}, {unit("1234.5.6.7"), "1:" + unit("1234.5.6.7   ")},
            {unit("12345.6.7"), "1:" + unit("1234..6.7   ")},
            {"KVN NAME = A\rKVN TYPE = SERIAL\nKVN NAME = B\r\n\r\rKVN TYPE = ETHER\n\n", "2:" + Serial + unit("")},
            {"KVN TYPE = X\nKVN IP = 1\n\n;\nZARN IP = 1\nKVN NAME =A\nkvn name = A\n" + B, "1:" + unit("9.9.9.9")},
            {"KVN NAME = \nKVN TYPE = SERIAL\n" + Serial, "2:" + Serial},
            {Network + "KVN IP = 1.2.3.4\n", "1:" + unit("1.2.3.4   ")},
            {Network + "KVN TYPE = ether\n", "1:KVN NAME = B\r\nKVN TYPE = ether\r\n"},
            {"KVN NAME =  A \n", "1:KVN NAME =  A \r\nKVN TYPE = \r\n"}, {"\xEF\xBB\xBF" + Serial, "1:" + Serial},
            {std::string("\0\xff\x80", 3) + std::string(1 << 20, 'x'), "0:"}},
            [](const std::string &text) {
                SavedUnits units;
                units.KVNControlBlocks[1].IPAddress = "9.9.9.9"; // a slot keeps what it held
                std::array<std::string, 5> quads;
                ReadSavedUnitsText(units, text, quads);
                return std::to_string(units.ControlBlockCount) + ":" + writeSavedUnitsText(units);
            });
    }

    void whatIsLeftOutStaysInTheFile() {
        const std::string z = "KVN NAME = Z\nKVN TYPE = ETHER\r\n; mine\rKVN IP = 10.0.0.5\n";
        const std::string tail = "KVN NAME = Y\r" + z;
        const std::string notice =
            "{program/KVNConfigurator.ini holds more than 25 units; those after the 25th are left "
            "out. They stay at the end of that file and come in when others are deleted.}";
        Player user;
        std::string &file = user.files.contentsOf["program/KVNConfigurator.ini"];
        file = times(25, Serial) + tail;
        user.play("units edit unit24 kind1 quad0=1.2.3.4 go back units");
        QCOMPARE(user.log, notice + " {saved}");
        QCOMPARE(file, times(24, Serial) + "KVN NAME = A\r\nKVN TYPE = ETHER\r\nKVN IP = 1.2.3.4\r\n" + tail);
        for (const std::string last : {"Y", "Z"}) {
            user.play("delete unit24 go");
            QCOMPARE(user.look("list"), times(24, "A ") + last);
        }
        QCOMPARE(file, times(24, Serial) + z);
        file = times(25, Serial) + z; // it was whole meanwhile
        user.log.clear();
        user.play("add edit");
        QCOMPARE(user.log, notice);
    }

    void showsTheOperation() {
        const std::string add = "Add Text3 +++--++ ";
        const std::string edit = "Edit list +--++";
        const std::string list = " list +--++-- //-1/-1";
        const std::string saved = "options +++--++ X//-1/-1";
        checkPlays({
            {"", "options +++++++ //-1/-1"}, {"add", add + "//-1/-1"}, {"edit unit1 unit2 go", edit + "-- //-1/-1"},
            {"delete", "Delete" + list}, {"edit unit0 kind2 kind=-1", edit + "++ /SERIAL/0/0"},
            {"edit unit1 unit=-1 unit1", edit + "++ /ETHER/1/1 192.168.1.20"},
            {"edit unit1 unit0 kind1", edit + "++ /ETHER/0/1 ..."},
            {"edit unit1 kind0 go edit unit1 kind1", "{saved} " + edit + "++ /ETHER/1/1 ..."},
            {"edit unit1 units", edit + "++ /ETHER/1/1 192.168.1.20"},
            {"edit unit1 esc", "options 1 +--++++ /ETHER/1/1 192.168.1.20"}, {"add name=X go", saved + " added"},
            {"add name=X kind1 quad0=1.2.3.4 cancel add kind1", add + "//-1/1 ..."},
            // While an operation is under way, nothing is picked and nothing begins.
            {"delete unit0 @1:unit1 @1:kind1 @1:double1 @1:add @1:cancel @2:?operation go", "<delete A ?> deleted* "
             "Delete list ---++++ /SERIAL/0/0 deleted options 3 +--++++ /SERIAL/-1/0"},
            // Opened anew meanwhile: usable at once, and the old one leaves it alone.
            {"delete unit0 @1:-units @1:units @2:add/name=N/go go wait", "<delete A ?> deleted* deleted added "
             "options +++--++ N//-1/-1 added"}},
            "file units", "?operation");
    }

    void saves() {
        const std::string both = "A:SERIAL B:ETHER:192.168.1.20   ";
        checkPlays({
            {"add name=N kind1 quad0=10.0.0.5 quad2= go quad2=7 go", "saving* [incomplete] " + both + "N:ETHER: "
             "N:ETHER:10.0.7.5  A B"},
            {"add name=N kind1 go edit unit0 go", "saving* [incomplete] {saved} " + both + " A B"},
            {"holds24 add name=N go", times(24, "A:SERIAL ") + "N:SERIAL " + times(24, " A")},
            {"holds25 add go", "{full} " + times(25, "A:SERIAL ") + times(25, " A")},
            {"save=Full. add name=" + times(61, "\xE9") + " go delete question=no unit2 go", "{unsaved} <delete " +
             times(60, "\xC3\xA9") + "... ?> " + both + " A B " + times(61, "\xE9")},
            {"save=Full. add name=N go back units save= add name=N go", "{unsaved} " + both + "N:SERIAL N:SERIAL  A "
             "B N"}, {"edit unit1 quad3=25 go", "{saved} A:SERIAL B:ETHER:192.168.1.25  A B"},
            {"add name=N go edit unit2 kind1 quad0=1.2.3.4 @2.9:?operation @3.1:?operation go", "{saved} options 1 "
             "+--++++ /ETHER/2/1 1.2.3.4 " + both + "N:ETHER:1.2.3.4  A B N"},
            {"delete unit0 @2.9:?operation @3.1:?operation go ?backup", "<delete A ?> deleted* Delete list ---++++ "
             "/SERIAL/0/0 deleted " + both + " B:ETHER:192.168.1.20    B"},
            {"save=Full. delete unit0 go holds2 edit", "<delete A ?> {unsaved} A:SERIAL A:SERIAL  A A"},
            {"delete unit0 question= @1:esc @2:units @3:yes go ?forms", "<delete A ?> main " + both + " A B"},
            {"save=Full. delete unit0 go save= add name=N go", "<delete A ?> {unsaved} " + both + "N:SERIAL  A B"}},
            "file units", "?file ?list");
    }

    void controls() {
        const std::string panel = "connecting* asking* loading* main panel units B to 192.168.1.20 main # x";
        checkPlays({
            {"control unit1 go", panel + "1"}, {"control unit1 @0:go @0:double1 @0:add @0:units go", panel + "1"},
            {"control unit1 quad0=010 go", "connecting* asking* loading* main panel units B to 10.168.1.20 main # x1"},
            {"control unit0 @1:port7 @2:-connect go", "connecting* {!7} asking* loading* main panel units A on COM7 "
             "main # 7 x0"}, {"network open control unit1 go", panel + "2"},
            {"open host=1 control unit1 @0:?link @1:-connect go", "connecting* ---- main panel 7 x1"},
            {"host=2 control unit1 @5:-connect go", "connecting* {no answer} main x2"},
            {"host=2 control unit1 @5:serial/port7/done go", "connecting* {no answer} {!7} main 7 x2"},
            {"CFG= control unit1 go", "connecting* asking* {no config} main CFG; x1"},
            {"CFG=????? control unit1 go", "connecting* asking* main CFG; x1"}},
            "file units @8:?forms/?name/?caption @9:exit", "?forms ?flags ?sent ?used");
    }
};
// clang-format on

QTEST_GUILESS_MAIN(UnitsTest)
#include "UnitsTest.moc"
