#include "PanelActionsTest.h"
#include "PanelLayoutTest.h"
#include "ProgramLook.h"
#include "support/runTests.h"

#include <QApplication>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    applyProgramLook();
    return runTests<PanelLayoutTest, PanelActionsTest>(argc, argv);
}
