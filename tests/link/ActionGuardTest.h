#pragma once

#include <QObject>

class ActionGuardTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void failures_data();
    void failures();
};
