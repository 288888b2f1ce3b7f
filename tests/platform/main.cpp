#include "QtEventPumpTest.h"
#include "QtSerialPortTest.h"
#include "QtTcpSocketTest.h"
#include "support/runTests.h"

#include <QCoreApplication>

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    return runTests<QtEventPumpTest, QtSerialPortTest, QtTcpSocketTest>(argc, argv);
}
