#pragma once

#include <QObject>

class LinkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void exchanges_data();
    void exchanges();
    void usesTheLinkOfTheKind();
    void sendsNothingAfterTheEnd();
    void opensPorts();
    void cutReplyPollutesTheNext();
    void healsAClosedPort();
    void nestedExchangeTakesOver();
    void connects();
    void onlyTheFirstSendWaits();
    void guardTellsWhyItFails();
    void statusDisplays_data();
    void statusDisplays();
    void statusQuery_data();
    void statusQuery();
    void configuration_data();
    void configuration();
};
