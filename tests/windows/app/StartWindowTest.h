#pragma once

#include <QObject>

class StartWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void connectsAndCloses();
    void configurationReplies();
    void modelsThatDoNotFit();
    void endsWithOtherWindowsOpen();
};
