#include "link/ActionGuard.h"

#include "machine/LinkError.h"
#include "protocol/RangeError.h"

ActionGuard::ActionGuard(UnitTalk &unitTalk, LinkStatusDisplay &statusDisplay, Messages &messages)
    : talk(unitTalk), display(statusDisplay), user(messages) {}

void ActionGuard::run(const Form &form, const std::function<void()> &action) {
    const int showing = form.showing();
    // The message is shown after the exception is gone: its wait may run further actions.
    std::string failure;
    try {
        action();
        return;
    } catch (const LinkError &error) {
        failure = error.what();
        talk.markFailed();
        display.refreshAll();
    } catch (const RangeError &error) {
        failure = error.what();
    }
    if (form.isShowing(showing))
        user.ShowMessage(failure);
}
