#pragma once

#include <QObject>

class PanelFaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void survivesNestedClicks_data();
    void survivesNestedClicks();
    void panelClosedInAWait_data();
    void panelClosedInAWait();
    void startWindowClosedInAWait_data();
    void startWindowClosedInAWait();
    void linkIsLost_data();
    void linkIsLost();
    void oddStatusReplies_data();
    void oddStatusReplies();
};
