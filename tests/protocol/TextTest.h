#pragma once

#include <QObject>

class TextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesParts_data();
    void takesParts();
    void readsNumbers_data();
    void readsNumbers();
    void writesNumbers();
};
