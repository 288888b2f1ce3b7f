#pragma once

#include <QObject>

class StartWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsNotConnected();
    void connectsAndCloses_data();
    void connectsAndCloses();
    void configurationReplies_data();
    void configurationReplies();
    void dialogClosedWithoutALink();
    void modelsThatDoNotFit();
    void endsWithOtherWindowsOpen();
};
