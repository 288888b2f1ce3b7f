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
    void recallsPresets();
    void survivesNestedClicks();
    void windowsClosedInAWait();
    void linkIsLost();
    void oddStatusReplies();
};
