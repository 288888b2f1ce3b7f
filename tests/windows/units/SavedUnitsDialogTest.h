#pragma once

#include <QObject>

class SavedUnitsDialogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void setsUpEachOperation();
    void addsUnits_data();
    void addsUnits();
    void editsAUnit();
    void showsThePickedUnitOnly();
    void keysPickTheFirstUnitFirst();
    void deletesWhenAnswered();
    void controlsUnits();
    void leavesNothingWaiting();
    void aFailedSaveKeepsTheNewUnit();
    void aHalfUnitGoesWithTheNextRead();
};
