#include "AddressEntryTest.h"
#include "LinkTest.h"
#include "support/runTests.h"

#include <QCoreApplication>

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    return runTests<LinkTest, AddressEntryTest>(argc, argv);
}
