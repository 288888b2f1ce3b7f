#pragma once

#include <QObject>

class ButtonGroupsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followEveryPick_data();
    void followEveryPick();
};
