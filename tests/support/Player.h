#pragma once

#include "Program.h"
#include "panel/PanelControls.h"
#include "support/FakeMachine.h"
#include "support/rows.h"

/// The row of a table that bears that name.
template <class Table> auto rowNamed(const Table &rows, const std::string &name) {
    return std::find_if(rows.begin(), rows.end(), [&](auto &row) { return row.name == name; });
}

inline const std::string FileOfUnits = "program/KVNConfigurator.ini";

/// The letters of the flags that are set, "-" for the others.
std::string marks(std::initializer_list<std::pair<char, bool>> flags);

/// The slots of an array that are seen.
std::map<int, Control> seen(const SlotControls &controls);

/// The program and a user who plays words: what is clicked, typed or closed, what happens to the
/// machine, and what is looked at. Player.cpp lists them. A word may end in a number, or in "=" and
/// a text: "iB3", "unit=-1". Each one is through before the next begins, but for these:
///     @1.5:lose/take       at that time, in `second`s, as when all before was begun
///     ~splash:again        as soon as that form is seen; ~search when the first port is found
///     & find @3 serial ok  all words from here on, 0.1 s after each other, even in each other's
///                          waits; "@3" moves the time on; then 200 s pass
class Player : public FakeMachine {
public:
    explicit Player(bool network = false, UnitOptions options = {});

    Program program{services()};
    Views &views = program.views;

    /// What was said, as it came - {message}, [plain box], <question>, the status of the saved
    /// units with "*" in a grey frame - and what was looked at. What is long there is shortened.
    std::string log;
    double second = 1.0;

    void play(const std::string &script, bool through = true); ///< false: without those 200 s
    void act(const std::string &word);
    [[nodiscard]] std::string look(const std::string &what);

    /// Whether a user could do so now: what it needs is seen and enabled, and no window that blocks
    /// the others lies over it. What the machine does is possible at any time.
    [[nodiscard]] bool can(const std::string &word);
    bool careful = false; ///< words that the user cannot play are passed over

    /// The faults end, the user waits and closes what is open: all of that lies ahead, 400 s of it.
    void calmDown();
    /// The start window is closed.
    void leave();
    /// What is not as it must be then, a line for each; connects anew on that link and leaves.
    [[nodiscard]] std::string troubles(bool overTheNetwork);
    std::string onMessage = "-message"; ///< what the user does then
    std::string onQuestion = "yes";

private:
    struct Window {
        std::string name;
        FormView &view;
        Form &form;
    };
    void turn();
    void hear(std::size_t from, const FormView &form, const std::array<std::string_view, 3> &text,
              const std::string &reaction);
    void noteStatus();
    void see(const std::string &text) { log += (log.empty() || text.empty() ? "" : " ") + text; }
    [[nodiscard]] std::string afterTheEnd();
    [[nodiscard]] std::string state(); ///< what must stay as it is after the end
    void learnWords();
    void learnLooks();
    std::string split(const std::string &word);
    [[nodiscard]] bool isFree(const std::string &name) const;
    [[nodiscard]] const Control &marked(const std::string &name, const std::string &slot) const;
    void click(const std::string &name, const std::string &slot);
    [[nodiscard]] std::string dialog() const;
    [[nodiscard]] std::string why() const;
    [[nodiscard]] std::string operation() const;
    [[nodiscard]] std::string tip(const std::string &name);
    [[nodiscard]] std::string picked() const;
    [[nodiscard]] std::string outputIn(int slot) const;
    [[nodiscard]] std::string left() const;
    [[nodiscard]] std::string slotsOf(Side side) const;

    bool overNetwork;
    PanelView &panel = views.panel;
    std::vector<Window> windows;
    /// What a word does, and what a user needs for it: the window, none for what the machine does,
    /// and the controls.
    struct Word {
        std::function<void()> act;
        std::string window{};
        std::vector<const Control *> controls{};
    };
    std::map<std::string, Word> words; ///< but for those of the panel
    std::map<std::string, std::function<std::string()>> looks;
    std::string rest; ///< of the word that is played: "=" and what follows, or its number
    int number = 0;
    std::string told; ///< by the look
    std::string atTheEnd;
    bool portOpen = false, connected = false;
    std::multimap<std::string, std::function<void()>> onceSeen; ///< by form
    std::map<std::string, std::string> replies; ///< to commands that begin so, not the unit's
    double start = pump.now();                  ///< of the time that is told
    std::array<int, 3> said{}; ///< messages, plain boxes and questions that are in the log
    std::string status;
};

/// Plays each row between the two scripts and compares the log.
void checkPlays(const Rows &rows, const std::string &before = "", const std::string &after = "");

/// The same on the serial and on the network link, with the wait of an exchange for a second; a row
/// with "S:" or "E:" before it only on that one.
void checkOnBothLinks(const Rows &rows, const std::string &before, const std::string &after = "");
