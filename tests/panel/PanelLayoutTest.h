#pragma once

#include <QObject>

class PanelLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsWhatTheUnitHas_data();
    void showsWhatTheUnitHas();
    void scales();
    void textsFit_data();
    void textsFit();
    void tabGoesDownAndRight_data();
    void tabGoesDownAndRight();
    void clicksLeaveTheFocus();
    void showsTheSavedName();
};
