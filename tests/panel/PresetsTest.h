#pragma once

#include <QObject>

class PresetsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recallsTheChosen_data();
    void recallsTheChosen();
    void minimisesThePanel_data();
    void minimisesThePanel();
};
