#pragma once

#include <QObject>

class SavedUnitsFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsAndWritesBack_data();
    void readsAndWritesBack();
    void aSlotKeepsWhatItHeld();
    void whatIsLeftOutStaysInTheFile();
    void savesWithABackup();
    void aFailedSaveTellsAndKeepsAll();
};
