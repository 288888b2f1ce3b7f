#pragma once

#include "Program.h"
#include "Window.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

/// All windows of a program. A window is made when its form is shown first.
class Windows {
public:
    explicit Windows(Program &shownProgram);
    ~Windows();
    Windows(const Windows &) = delete;
    Windows &operator=(const Windows &) = delete;

    /// Brings all windows up to date; ends the event loop once the program has ended.
    void refresh();

private:
    struct Entry {
        const FormView *view;
        std::function<std::unique_ptr<Window>()> make;
        std::unique_ptr<Window> window;
    };

    void refreshAll();

    Program &program;
    std::vector<Entry> entries;
    std::map<QString, Window *> news; ///< to be spoken, each text once
    bool refreshing = false;
    bool changedMeanwhile = false;
};
