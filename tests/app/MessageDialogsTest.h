#pragma once

#include <QObject>

class MessageDialogsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void holdsItsCaller_data();
    void holdsItsCaller();
    void twoMessagesShareADialog();
    void canBeAnsweredOverAModalDialog();
    void asks_data();
    void asks();
    void textsOfTheSmallWindows_data();
    void textsOfTheSmallWindows();
    void panelKeys_data();
    void panelKeys();
};
