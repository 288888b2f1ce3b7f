#pragma once

#include "machine/EventPump.h"

#include <string>

/// What a window is to know of its form as a whole.
struct FormView {
    bool loaded = false;
    bool minimised = false;
    int raised = 0;     ///< counts how often the form was brought to the front
    std::string focus;  ///< object name of the control that got the focus last by the program
    int focusMoved = 0; ///< counts how often the program moved the focus
};

/// A form: shown by present(), gone by unload(). Each showing has a token. Whoever waited asks
/// once, afterwards, whether the showing that it belongs to is still the present one.
class Form {
public:
    Form(FormView &formView, EventPump &eventPump) : view(formView), pump(eventPump) {}
    Form(const Form &) = delete;
    Form &operator=(const Form &) = delete;
    virtual ~Form() = default;

    /// Brings the form to the front, which begins a showing if it was not loaded. Once the program
    /// has ended nothing is shown any more.
    void present();

    /// Ends the showing. Forms add what closing means to them; closing the frame comes here too.
    virtual void unload();

    /// The token of the present showing.
    [[nodiscard]] int showing() const { return token; }

    /// False once the showing of that token, or the program, has ended.
    [[nodiscard]] bool isShowing(int showingToken) const {
        return token == showingToken && !pump.ended();
    }

    [[nodiscard]] bool isLoaded() const { return view.loaded; }
    void minimise(bool minimised) { view.minimised = minimised; }

protected:
    /// Begins a showing anew, loaded or not: what belongs to the one before is stale from here on.
    int beginShowing() { return ++token; }

    /// Moves the focus to the control of that object name.
    void focusOn(std::string name);

private:
    FormView &view;

protected:
    EventPump &pump;

private:
    int token = 0;
};
