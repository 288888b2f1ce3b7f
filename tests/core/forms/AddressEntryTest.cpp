#include "AddressEntryTest.h"

#include "forms/AddressEntry.h"
#include "support/DataTable.h"
#include "support/checkRows.h"
#include "support/toString.h"

#include <sstream>

namespace {

std::array<std::string, 5> split(const std::string &address) {
    std::array<std::string, 5> numbers;
    std::istringstream stream(address);
    for (std::string &number : numbers)
        std::getline(stream, number, '.');
    return numbers;
}

/// A keyboard before the four boxes, the cursor behind the number of the first.
struct Keyboard {
    std::array<std::string, 5> quads;
    AddressView view;
    AddressEntry entry{view, quads};
    AddressPlace &cursor = view.cursor;

    explicit Keyboard(const std::string &address) {
        entry.fill(split(address));
        cursor.from = cursor.to = static_cast<int>(entry.text(0).size());
    }
    void put(const std::string &piece) {
        std::string now = entry.text(cursor.box);
        now.replace(static_cast<std::size_t>(cursor.from),
                    static_cast<std::size_t>(cursor.to - cursor.from), piece);
        entry.change(cursor, now);
    }
    void backspace() {
        if (entry.text(cursor.box).empty()) {
            entry.backspace(cursor.box);
            return;
        }
        const AddressPlace before = cursor;
        if (cursor.from == cursor.to && cursor.from > 0)
            --cursor.from;
        std::string now = entry.text(cursor.box);
        now.erase(static_cast<std::size_t>(cursor.from),
                  static_cast<std::size_t>(cursor.to - cursor.from));
        cursor.to = cursor.from;
        if (now != entry.text(cursor.box))
            entry.change(before, now);
    }
    /// "<" is Backspace, "^" goes to the start of the box, ">" to the end of what is selected, "#"
    /// selects all of it, "{...}" is pasted.
    void type(const std::string &keys) {
        for (std::size_t at = 0; at < keys.size(); ++at) {
            if (keys[at] == '{') {
                const std::size_t end = keys.find('}', at);
                put(keys.substr(at + 1, end - at - 1));
                at = end;
            } else if (keys[at] == '<') {
                backspace();
            } else if (keys[at] == '^') {
                cursor.from = cursor.to = 0;
            } else if (keys[at] == '>') {
                cursor.from = cursor.to;
            } else if (keys[at] == '#') {
                cursor = {cursor.box, 0, static_cast<int>(entry.text(cursor.box).size())};
            } else {
                put(std::string(1, keys[at]));
            }
        }
    }
    [[nodiscard]] std::string shown() const {
        std::string all = entry.text(0);
        for (int box = 1; box < AddressEntry::BoxCount; ++box)
            all += "." + entry.text(box);
        return all;
    }
    [[nodiscard]] std::string place() const {
        return std::to_string(cursor.box) + ":" + std::to_string(cursor.from) +
               (cursor.from == cursor.to ? "" : "-" + std::to_string(cursor.to));
    }
    [[nodiscard]] std::string stored() const {
        return quads[0] + "." + quads[1] + "." + quads[2] + "." + quads[3];
    }
};

} // namespace

void AddressEntryTest::typing_data() {
    // The address before, the keys, what the boxes show, where the cursor is, what is stored.
    const DataTable<std::string, std::string, std::string, std::string, std::string> row(
        "before", "keys", "shown", "place", "stored");
    const std::string a = "192.168.1.20";
    row("key by key", "", a, a, "3:2", a);
    row("short numbers", "", "10.0.0.5", "10.0.0.5", "3:1", "10.0.0.5");
    row("full numbers without dots", "", "192168111222", "192.168.111.222", "3:3",
        "192.168.111.222");
    row("over another", "10.200.30.4", "#" + a, a, "3:2", a);
    row("dots in empty boxes", "", "..1..2", "1.2..", "1:1", "1.2..");
    row("dots in the last box", "", "1.2.3.4..5", "1.2.3.45", "3:2", "1.2.3.45");
    row("dot before the cursor", "12.3", "^.", "12.3..", "1:0-1", "...");
    row("no room", "1.2.3.123", "{1.2.3.123}4", "1.2.3.123", "3:3", "1.2.3.123");
    row("no room in between", "123.4", "5", "123.4..", "0:3", "...");
    row("letters and signs", "1", "a-+,: \xE9", "1...", "0:1", "...");
    row("letter over a selected number", "123.4", "#x", "123.4..", "0:0-3", "...");
    row("before another digit", "3", "^1", "13...", "0:1", "13...");
    row("too large", "", "256", "...", "0:0", "...");
    row("too large at the end", "", "10.0.0.300", "10.0.0.", "3:0", "10.0.0.");
    row("leading zeros", "", "010", "010...", "1:0", "10...");
    row("back over empty boxes", "10.20", "#12.<<<3", "13...", "0:2", "13.0..");
    row("back in the first box", "", "<1", "1...", "0:1", "1...");
    row("emptied", "12", "<<", "...", "0:0", "0...");
    row("pasted", "", "{" + a + "}", a, "3:2", a);
    row("pasted with blanks around", "", "{\t 10.0.0.5 \r\n}", "10.0.0.5", "3:1", "10.0.0.5");
    row("pasted behind a number", "1.2.3.4", "{" + a + "}", a, "3:2", a);
    row("pasted in the third box", "1.2.3.4", ".5.6", "1.5.6.4", "2:1", ".5.6.");
    row("pasted over all", "1.2.3.4", "#{92.168.1.1}", "92.168.1.1", "3:1", "92.168.1.1");
    row("pasted, one too large", "1.2.3.4", "{10.256.0.5}", "10..0.5", "3:1", "10..0.5");
    row("pasted digits", "", "{12}", "12...", "0:2", "12...");
    row("pasted digits without room", "9", "{12345}", "...", "0:0", "...");
    row("pasted digits that fill", "", "{1234}", "123...", "1:0", "123...");
    for (const std::string other : {"10.0.0", "10.0.0.5.6", "10.0..5", "10.0.0.", "10.0.0.5:23",
                                    "1000.0.0.5", "10. 0.0.5", "1a", "-1", "unit"})
        row(("pasted " + other).c_str(), "7", "{" + other + "}", "7...", "0:1", "...");
    row("no number, deleted", "abcd", "<<<<10", "10...", "0:2", "10...");
}

void AddressEntryTest::typing() {
    QFETCH(std::string, before);
    QFETCH(std::string, keys);
    Keyboard keyboard(before);
    keyboard.type(keys);
    QTEST(keyboard.shown(), "shown");
    QTEST(keyboard.place(), "place");
    QTEST(keyboard.stored(), "stored");
}

void AddressEntryTest::whatWasNotTypedIsTakenToo() {
    Keyboard keyboard("192.168.1.20");
    for (const auto &[text, shown] : {std::pair("25", "25"),
                                      {"7", "7"},
                                      {"ab", "7"},
                                      {"a", "7"},
                                      {"31", "31"},
                                      {"310", ""},
                                      {"10.0.0.5", "5"}}) {
        const int end = static_cast<int>(keyboard.entry.text(3).size());
        keyboard.entry.change({3, end, end}, text);
        QCOMPARE(keyboard.entry.text(3), std::string(shown));
    }
    QCOMPARE(keyboard.stored(), std::string("10.0.0.5"));
}

void AddressEntryTest::paddingComesBack() {
    checkRows({{"", "192.168.1.20 kept as 192.168.1.20  "},
               {"#10.", "10.168.1.20 kept as 10.168.1.20  "},
               {"#1.2.3.><5", "1.2.3.25 kept as 1.2.3.25"}},
              [](const std::string &keys) {
                  Keyboard keyboard("192.168.1.20  ");
                  keyboard.type(keys);
                  const auto kept = keyboard.entry.numbers();
                  return keyboard.shown() + " kept as " + kept[0] + "." + kept[1] + "." + kept[2] +
                         "." + kept[3];
              });
}

QTEST_GUILESS_MAIN(AddressEntryTest)
