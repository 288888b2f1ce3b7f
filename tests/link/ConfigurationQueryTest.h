#pragma once

#include <QObject>

class ConfigurationQueryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsTheModel_data();
    void findsTheModel();
    void silenceStops();
    void buttonsThatDoNotFit();
};
