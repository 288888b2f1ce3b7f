#pragma once

#include <QObject>

class SimulatorProgramTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    static void refusesWrongOptions_data();
    static void refusesWrongOptions();
    static void namesWhatCannotBeOpened();
    static void listsTheModels();
    static void answersByTcp_data();
    static void answersByTcp();
    static void recordsWhatPasses();
    static void answersLateAndInPieces();
    static void answersByPty();
    static void forgetsThePeerThatLeft();
    static void removesItsLink_data();
    static void removesItsLink();
    static void keepsSilent();
    static void talksGarbage();
    static void hangsUpMidway();
    static void hangsUpThePty();
    static void floods();
    static void holdsBackAPeerThatNeverReads();
};
