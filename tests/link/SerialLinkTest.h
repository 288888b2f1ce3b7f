#pragma once

#include <QObject>

class SerialLinkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void opensPorts();
    void replyCutByThePeriodPollutesTheNext();
    void healsAfterThePortWasClosed();
    void exchangeFromAnEventTakesOver();
    void exchangeInAReopenIsNotMixedIn();
    void tellsWhyItFails();
};
