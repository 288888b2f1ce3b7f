#include "simulator/SimulatorProgramTest.h"
#include "simulator/UnitPortTest.h"
#include "simulator/UnitTest.h"
#include "support/runTests.h"

#include <QCoreApplication>

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    return runTests<UnitTest, UnitPortTest, SimulatorProgramTest>(argc, argv);
}
