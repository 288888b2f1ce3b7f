#pragma once

#include "Program.h"
#include "support/FakeMachine.h"

/// The whole program on a fake machine, without a window. A test does what a window would report.
class TestProgram : public FakeMachine {
public:
    explicit TestProgram(UnitOptions options = {}) : FakeMachine(std::move(options)) {
        program.start();
    }

    Program program{services()};
    Views &views = program.views;
    std::string messages; ///< the texts of those that were closed, " | " between them

    /// Every message that comes from now on is noted and closed with OK.
    void answerMessages();

    /// Chooses COM7, or types 10.11.12.13, in the connection dialog that is about to open.
    void connectInDialog(bool overNetwork = false);

    /// From the start window through the connection dialog to an open panel; what that sent and
    /// said is forgotten.
    void openPanel(bool overNetwork = false);

    /// Types an address into boxes, a dot between the numbers.
    void typeAddress(const std::string &address);

    /// The names of all forms that are loaded, in alphabetical order, with a blank between them.
    [[nodiscard]] std::string loaded() const;
};
