#pragma once

#include "support/ProgramFixture.h"

/// All windows but the panel.
class DialogsTest : public QObject {
    Q_OBJECT

    void connectOverSerial();
    void openUnits(Operation operation);

    ProgramFixture kvn;
    Views &views = kvn.program.views;

private Q_SLOTS:
    void init();
    void areMadeWhenShownFirst();
    void showListsAndAddresses();
    void showTheirViews();
    void showTheLink();
    void closeInEveryWay();
    void startWindowReports();
    void aMessageOverAModalDialogIsAnswered();
    void connectDialogReports();
    void unitsReport();
    void keysPickTheFirstUnitFirst();
    void presetsReport();
    void endInTheRealEventLoop();
};
