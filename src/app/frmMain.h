#pragma once

#include "link/LinkTools.h"
#include "link/dlgConnect.h"
#include "widgets/FaceButton.h"
#include "widgets/Form.h"
#include "widgets/LinkStatusWidgets.h"

#include <QLabel>

/// What the start window needs of the program around it.
class StartHost {
public:
    StartHost() = default;
    StartHost(const StartHost &) = delete;
    StartHost &operator=(const StartHost &) = delete;
    virtual ~StartHost() = default;

    /// @throws RangeError if the model does not fit the panel
    virtual void openPanel() = 0;
    virtual void openSavedUnits(const std::string &modeWord) = 0;
    virtual void openAbout() = 0;
    virtual void forgetUnitName() = 0;
    virtual void endProgram() = 0;
};

/// The start window. Closing it closes the link and ends the program, from any depth.
class frmMain : public Form {
public:
    frmMain(const LinkTools &linkTools, dlgConnect &dialog, StartHost &startHost);

    /// Finds and connects a unit unless one is connected, reads what it is and opens its panel.
    void Connect2CorvaneGetConfiguration();

    void unload() override;

private:
    void buildMenu();
    void buildLayout();
    void closeLinkClicked();
    bool eventFilter(QObject *watched, QEvent *event) override;
    [[nodiscard]] bool showsConnected() const;

    LinkTools link;
    dlgConnect &connectDialog;
    StartHost &host;
    FaceButton *findButton;
    FaceButton *savedUnitsButton;
    QLabel *ToDisconnectPortLabel;
    LinkStatusWidgets status;
    int connects = 0; ///< counts them, so that one finds that a later one has taken over
};
