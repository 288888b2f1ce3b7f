#pragma once

#include <QObject>

class PanelLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsAsManyAsTheUnitHas_data();
    void showsAsManyAsTheUnitHas();
    void placesTheSingleControls_data();
    void placesTheSingleControls();
    void scales();
    void textsFit();
    void tabGoesDownAndRight_data();
    void tabGoesDownAndRight();
    void speaksItsControls_data();
    void speaksItsControls();
    void clicksLeaveTheFocus();
    void showsTheSavedName();
};
