#pragma once

#include <QObject>

class ConnectionDisplayTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsWhatTheUnitReports_data();
    void showsWhatTheUnitReports();
    void lightsWhatTheInputFeeds_data();
    void lightsWhatTheInputFeeds();
};
