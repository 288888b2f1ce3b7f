#pragma once

#include <QObject>

class SavedUnitsTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsAndWritesBack_data();
    void readsAndWritesBack();
    void stopsAfterTheLastSlot();
    void keepsWhatASlotHeldBefore();
};
