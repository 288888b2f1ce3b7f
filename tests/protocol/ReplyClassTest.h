#pragma once

#include <QObject>

class ReplyClassTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void classifies_data();
    void classifies();
};
