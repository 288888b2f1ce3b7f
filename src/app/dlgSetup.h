#pragma once

#include "link/LinkState.h"
#include "widgets/Form.h"

/// The splash while the panel gets ready. Closing it gives up a connect that the panel waits for.
class dlgSetup : public Form {
public:
    dlgSetup(EventPump &eventPump, LinkState &linkState);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    LinkState &link;
};
