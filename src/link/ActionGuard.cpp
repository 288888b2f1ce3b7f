#include "link/ActionGuard.h"

#include "platform/LinkError.h"
#include "protocol/RangeError.h"

ActionGuard::ActionGuard(LinkDispatch &linkDispatch, LinkStatusDisplay &statusDisplay,
                         Messages &messages)
    : dispatch(linkDispatch), display(statusDisplay), user(messages) {}

void ActionGuard::run(const std::function<void()> &action,
                      const std::function<bool()> &stillWanted) {
    // The message is shown after the exception is gone: its wait may run further actions.
    std::string failure;
    try {
        action();
        return;
    } catch (const LinkError &error) {
        failure = error.what();
        dispatch.markFailed();
        display.refreshAll();
    } catch (const RangeError &error) {
        failure = error.what();
    }
    if (stillWanted())
        user.ShowMessage(failure);
}
