#pragma once

#include <QObject>

class PanelLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsWhatTheUnitHas();
    void scalesAndHoldsTheLongestTexts();
    void showsNamesAsTheyAre();
    void tabGoesDownAndRight();
};
