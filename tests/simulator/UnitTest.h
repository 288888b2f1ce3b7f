#pragma once

#include <QObject>

class UnitTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    static void answers_data();
    static void answers();
    static void refusesWithoutChange_data();
    static void refusesWithoutChange();
    static void changes_data();
    static void changes();
    static void everyModelHasTheSizesOfItsName();
    static void refusesNamesWithoutSizes();
    static void statusRecordsStandWhereReadersLook();
    static void longCommandIsRefused();
};
