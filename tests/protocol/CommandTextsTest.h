#pragma once

#include <QObject>

class CommandTextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyCommand_data();
    void everyCommand();
};
