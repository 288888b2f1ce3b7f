#pragma once

#include <QObject>

class SavedUnitsFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readingAloneChangesNothing();
    void keepsTheFileBefore();
    void aFailedSaveTellsAndKeepsAll_data();
    void aFailedSaveTellsAndKeepsAll();
};
