#pragma once

#include <QObject>

class PanelActionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void picks();
    void takes();
    void showsWhatTheUnitReports();
    void stepsTheVolume();
    void choosesAVolume();
    void choosesNoVolumeAtRest();
    void keepsTheLevelApart();
    void recallsPresets();
    void survivesNestedClicks();
    void twoClicksReopenThePort();
    void windowsClosedInAWait();
    void reopenedInAWait();
    void linkIsLost();
    void oddStatusReplies();
};
