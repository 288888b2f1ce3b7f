#pragma once

#include "support/ProgramFixture.h"

/// The panel's window, on a unit with 32 inputs and outputs, each in the slot of its number.
class PanelWindowTest : public QObject {
    Q_OBJECT

    ProgramFixture kvn{{.model = "KVN-32x32-RGBA"}};
    PanelView &view = kvn.program.views.panel;

private Q_SLOTS:
    void initTestCase() { kvn.openPanel(); }
    void init();
    void showsItsView();
    void standsWhereItWasDesigned();
    void showsNamesAsTheyAre();
    void tabGoesDownAndRight();
    void reportsClicks();
    void reportsKeys();
    void choosesAVolumeByMovementOnly();
    void opensHelp();
};
