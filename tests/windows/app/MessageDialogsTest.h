#pragma once

#include <QObject>

class MessageDialogsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void holdsItsCaller();
    void boxAndMessageAreApart();
    void canBeAnsweredOverAModalDialog();
    void asks();
    void textsOfTheSmallWindows_data();
    void textsOfTheSmallWindows();
    void panelKeys();
};
