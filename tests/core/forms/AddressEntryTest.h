#pragma once

#include <QObject>

class AddressEntryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void typing_data();
    void typing();
    void whatWasNotTypedIsTakenToo();
    void paddingComesBack();
};
