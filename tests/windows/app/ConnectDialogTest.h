#pragma once

#include <QObject>

class ConnectDialogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsPorts_data();
    void findsPorts();
    void choosesAPort_data();
    void choosesAPort();
    void namesThePortThatIsOpen();
    void takesAnAddress_data();
    void takesAnAddress();
    void takesAWholeAddress();
    void offersAReadAddressWithoutItsPadding();
    void hostsThatDoNotAnswer_data();
    void hostsThatDoNotAnswer();
    void closingCancels();
    void otherOptionEndsAConnect();
    void openedAgainIsAlive();
};
