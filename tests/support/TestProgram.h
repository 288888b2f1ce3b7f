#pragma once

#include "Program.h"
#include "support/FakeMachine.h"

/// The whole program on a fake machine, without a window. A test does what a window would report.
class TestProgram : public FakeMachine {
public:
    TestProgram() { program.start(); }

    Program program{services()};
    Views &views = program.views;
    std::string messages; ///< the texts of those that were closed, " | " between them

    /// Every message that comes from now on is noted and closed with OK.
    void answerMessages() {
        pump.eachTurn = [this] {
            if (!views.messages.dlgOK.form.loaded)
                return;
            messages += (messages.empty() ? "" : " | ") + views.messages.dlgOK.OKLabel.text;
            program.messages.dlgOK().unload();
        };
    }
};
