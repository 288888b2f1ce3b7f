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

std::string replaced(std::string text, const std::string &old, const std::string &by);

/// The program and a user who plays words: what is clicked, typed or closed, what happens to the
/// machine, and what is looked at. Player.cpp and Looks.cpp list them. A word may end in a number,
/// or in "=" and a text: "iB3", "unit=-1". Each one is through before the next begins, but for
/// these:
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
    void act(const std::string &text);
    [[nodiscard]] std::string look(const std::string &what);

    /// Whether a user could do so now: what it needs is seen and enabled, and no window that blocks
    /// the others lies over it. What the machine does is possible at any time.
    [[nodiscard]] bool can(const std::string &text);
    bool careful = false; ///< words that the user cannot play are passed over

    /// The faults end, the user waits and closes what is open: all of that lies ahead, 250 s of it.
    void calmDown();
    /// The start window is closed.
    void leave();
    /// Plays all that lies ahead, connects anew on that link and leaves.
    /// @return what is not as it must be then, a line for each, and what was thrown
    [[nodiscard]] std::string troubles(bool overTheNetwork);
    std::string onMessage = "-message"; ///< what the user does then
    std::string onQuestion = "yes";

protected:
    /// What the user does in each turn of a wait.
    void turn();
    bool overNetwork;

private:
    struct Shown {
        std::string name;
        FormView &view;
        Form &form;
    };
    /// What a word does, and what a user needs for it: the window, none for what the machine does,
    /// and the controls.
    struct Word {
        std::function<void()> act;
        std::string window{};
        std::vector<const Control *> controls{};
    };
    void hear(std::size_t from, const FormView &form, const std::string &text,
              const std::string &reaction);
    void noteStatus();
    void see(const std::string &text);
    [[nodiscard]] std::string troublesAnew(bool overTheNetwork);
    [[nodiscard]] std::string state(); ///< what must stay as it is after the end
    void learnWords();
    void learnLooks();
    [[nodiscard]] Word meaning(const std::string &text);
    [[nodiscard]] Word onPanel(const std::string &name, const std::string &slot);
    [[nodiscard]] bool isFree(const std::string &name) const;

    PanelView &panel = views.panel;
    std::vector<Shown> forms;
    std::map<std::string, Word> words; ///< but for those of the panel
    std::map<std::string, std::function<std::string()>> looks;
    std::string rest; ///< of the word that is played: "=" and what follows, or its number
    int number = 0;
    std::string atTheEnd;
    std::multimap<std::string, std::function<void()>> onceSeen; ///< by form
    std::map<std::string, std::string> replies; ///< to commands that begin so, not the unit's
    double start = pump.now();                  ///< of the time that is told
    std::array<int, 3> said{}; ///< messages, plain boxes and questions that are in the log
    std::string status;
};

/// Plays each row between the two scripts and compares the log.
void checkPlays(const Rows &rows, const std::string &before = "", const std::string &after = "",
                bool overNetwork = false, double second = 1.0);

/// The same on the serial and on the network link, with the wait of an exchange for a second; a row
/// with "S:" or "E:" before it only on that one.
void checkOnBothLinks(const Rows &rows, const std::string &before, const std::string &after = "");
