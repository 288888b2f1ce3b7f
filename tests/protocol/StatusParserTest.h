#pragma once

#include <QObject>

class StatusParserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsTheStart_data();
    void findsTheStart();
    void readsRecords_data();
    void readsRecords();
    void readsWholeReports_data();
    void readsWholeReports();
    void isFast();
};
