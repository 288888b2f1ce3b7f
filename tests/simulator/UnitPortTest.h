#pragma once

#include <QObject>

class UnitPortTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    static void makesCommands_data();
    static void makesCommands();
    static void echoesWhatTheUnitWasTold();
    static void overlongLineIsRefusedOnce_data();
    static void overlongLineIsRefusedOnce();
    static void portsShareTheUnit();
};
