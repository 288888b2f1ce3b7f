#include "FileStoreTest.h"
#include "PlatformTest.h"
#include "support/runTests.h"

#include <QCoreApplication>

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    return runTests<FileStoreTest, PlatformTest>(argc, argv);
}
