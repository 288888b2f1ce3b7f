#pragma once

#include <QObject>

class SavedUnitsDialogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void setsUpEachOperation_data();
    void setsUpEachOperation();
    void addsUnits_data();
    void addsUnits();
    void anIncompleteAddressIsSavedWithTheNext();
    void editsAUnit();
    void deletesWhenAnswered_data();
    void deletesWhenAnswered();
    void controlsUnits_data();
    void controlsUnits();
    void leavesNothingWaiting_data();
    void leavesNothingWaiting();
    void aFailedSaveKeepsTheNewUnit();
};
