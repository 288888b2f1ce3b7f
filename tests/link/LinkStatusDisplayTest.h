#pragma once

#include <QObject>

class LinkStatusDisplayTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void countsDots();
    void shortWords_data();
    void shortWords();
    void refreshes_data();
    void refreshes();
};
