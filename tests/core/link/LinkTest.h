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
    void reopensTheDeviceThatWasOpen();
    void testLeavesAPortInUse();
    void cutReplyPollutesTheNext();
    void healsAClosedPort();
    void reopeningKeepsCommandsApart();
    void lostLinksTellThemselves();
    void nestedExchangeTakesOver();
    void connects();
    void laterConnectTakesOver();
    void onlyTheFirstSendWaits();
    void guardTellsWhyItFails();
    void statusDisplays_data();
    void statusDisplays();
    void statusQuery_data();
    void statusQuery();
    void configuration_data();
    void configuration();
};
