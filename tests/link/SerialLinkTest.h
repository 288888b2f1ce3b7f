#pragma once

#include <QObject>

class SerialLinkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void testsAPort_data();
    void testsAPort();
    void opensForUse();
    void replyCutByThePeriodPollutesTheNext();
    void healsAfterThePortWasClosed();
    void nestedExchangeInAReopenIsNotMixedIn();
    void exchangeFromAnEventTakesOver();
    void portThatVanished();
    void writeThatFails();
    void closesForGoodOnlyWhenOpen();
};
