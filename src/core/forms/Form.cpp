#include "forms/Form.h"

#include <utility>

void Form::present() {
    if (pump.ended())
        return;
    if (!view.loaded)
        beginShowing();
    view.loaded = true;
    view.minimised = false;
    ++view.raised;
}

void Form::unload() {
    ++token;
    view.loaded = false;
}

void Form::focusOn(std::string name) {
    view.focus = std::move(name);
    ++view.focusMoved;
}
