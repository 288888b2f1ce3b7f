#pragma once

#include <QObject>

class OutputStatusQueryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void parsesTheSecondReply_data();
    void parsesTheSecondReply();
    void silence();
};
