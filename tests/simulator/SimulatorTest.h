#pragma once

#include <QObject>

class SimulatorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void answers_data();
    static void answers();
    static void refusals_data();
    static void refusals();
    static void models();
    static void lines_data();
    static void lines();
    static void overlongLines();
    static void wrongOptions_data();
    static void wrongOptions();
    static void answersByTcp_data();
    static void answersByTcp();
    static void answersByPty();
    static void foreignLinks();
    static void outputThatNobodyReads();
    static void faults();
    static void faultsInMidSession();
};
