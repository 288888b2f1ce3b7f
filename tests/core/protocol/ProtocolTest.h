#pragma once

#include <QObject>

class ProtocolTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void commands();
    void replyClasses();
    void models_data();
    void models();
    void unwrittenFactsStay();
    void statusRecords_data();
    void statusRecords();
    void wholeReportsInTime();
    void textParts();
    void numbers();
};
