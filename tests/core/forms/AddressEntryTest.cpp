#include "forms/AddressEntry.h"
#include "support/rows.h"

#include <sstream>

namespace {

/// A keyboard before the four boxes, the cursor behind the number of the first.
struct Keyboard {
    std::array<std::string, 5> quads;
    AddressView view;
    AddressEntry entry{view, quads};
    AddressPlace &cursor = view.cursor;

    explicit Keyboard(const std::string &address) {
        std::array<std::string, 5> numbers;
        std::istringstream stream(address);
        for (std::string &number : numbers)
            std::getline(stream, number, '.');
        entry.fill(numbers);
        cursor.from = cursor.to = static_cast<int>(numbers[0].size());
    }

    /// Puts `piece` in the place of what is between `from` and the end of the selection.
    void put(int from, const std::string &piece) {
        const AddressPlace before = cursor;
        const std::string was = entry.text(cursor.box);
        const std::string now =
            std::string(was).replace(size_t(from), size_t(cursor.to - from), piece);
        if (piece.empty())
            cursor.from = cursor.to = from;
        if (now != was)
            entry.change(before, now);
    }

    /// "<" is Backspace, "^" goes to the start of the box, ">" to the end of what is selected, "#"
    /// selects all of it, "{...}" is pasted.
    void type(const std::string &keys) {
        std::istringstream stream(keys);
        for (std::string key(1, ' '); stream.get(key[0]); key.resize(1)) {
            const int end = static_cast<int>(entry.text(cursor.box).size());
            if (key == "{")
                std::getline(stream, key, '}'), put(cursor.from, key);
            else if (key == "<" && end == 0)
                entry.backspace(cursor.box);
            else if (key == "<")
                put(cursor.from == cursor.to ? std::max(cursor.from - 1, 0) : cursor.from, "");
            else if (key == "^" || key == ">" || key == "#")
                cursor = {cursor.box, key == ">" ? cursor.to : 0,
                          key == "#"   ? end
                          : key == ">" ? cursor.to
                                       : 0};
            else
                put(cursor.from, key);
        }
    }

    /// The address, and where the cursor is.
    [[nodiscard]] std::string shown() const {
        return joinAddress({entry.text(0), entry.text(1), entry.text(2), entry.text(3), ""}) + " " +
               std::to_string(cursor.box) + ":" + std::to_string(cursor.from) +
               (cursor.from == cursor.to ? " " : "-" + std::to_string(cursor.to) + " ");
    }
};

} // namespace

// clang-format off
class AddressEntryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The address before, "|" and the keys; what is shown, the cursor and what is stored.
    void typing() {
        const std::string a = "192.168.1.20", seven = "7... 0:1 ...";
        checkRows({
            {"|" + a, a + " 3:2 " + a}, {"|192168111222", "192.168.111.222 3:3 192.168.111.222"},
            {"10.200.30.4|#" + a, a + " 3:2 " + a}, {"|1.2.3.4..5", "1.2.3.45 3:2 1.2.3.45"},
            {"12.3|^.", "12.3.. 1:0-1 ..."}, {"123.4|5", "123.4.. 0:3 ..."}, {"1|a-+,: \xE9", "1... 0:1 ..."},
            {"3|^1", "13... 0:1 13..."}, {"|256", "... 0:0 ..."}, {"|010", "010... 1:0 10..."},
            {"10.20|#12.<<<3", "13... 0:2 13.0.."}, {"12|<<", "... 0:0 0..."},
            {"|{\t 10.0.0.5 \r\n}", "10.0.0.5 3:1 10.0.0.5"}, {"1.2.3.4|{" + a + "}", a + " 3:2 " + a},
            {"1.2.3.4|.5.6", "1.5.6.4 2:1 .5.6."}, {"1.2.3.4|#{92.168.1.1}", "92.168.1.1 3:1 92.168.1.1"},
            {"1.2.3.4|{10.256.0.5}", "10..0.5 3:1 10..0.5"}, {"|{1234}", "123... 1:0 123..."}, {"7|{10.0.0}", seven},
            {"7|{10.0.0.5.6}", seven}, {"7|{10.0..5}", seven}, {"7|{10. 0.0.5}", seven}, {"7|{1a}", seven}},
                  [](const std::string &given) {
            Keyboard keyboard(given.substr(0, given.find('|')));
            keyboard.type(given.substr(given.find('|') + 1));
            return keyboard.shown() + joinAddress(keyboard.quads);
        });
        const std::string padded = "  "; // comes back where the user typed nothing else
        checkRows({
            {"", a + " 0:3 " + a + padded}, {"#10.", "10.168.1.20 1:0-3 10.168.1.20" + padded}},
                  [&](const std::string &keys) {
            Keyboard keyboard(a + padded);
            keyboard.type(keys);
            return keyboard.shown() + joinAddress(keyboard.entry.numbers());
        });
    }

    // As an input method or an accessibility tool does: the last box has another text at once.
    void whatWasNotTypedIsTakenToo() {
        Keyboard keyboard("192.168.1.20");
        checkRows({
            {"25", "25"}, {"7", "7"}, {"ab", "7"}, {"a", "7"}, {"31", "31"}, {"310", ""}, {"10.0.0.5", "5"}},
                  [&](const std::string &text) {
                      const int end = static_cast<int>(keyboard.entry.text(3).size());
                      keyboard.entry.change({3, end, end}, text);
                      return keyboard.entry.text(3);
                  });
        QCOMPARE(joinAddress(keyboard.quads), std::string("10.0.0.5"));
    }
};
// clang-format on

QTEST_GUILESS_MAIN(AddressEntryTest)
#include "AddressEntryTest.moc"
