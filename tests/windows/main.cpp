#include "DialogsTest.h"
#include "PanelWindowTest.h"
#include "ProgramLook.h"
#include "support/runTests.h"

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    applyProgramLook();
    return runTests<PanelWindowTest, DialogsTest>(argc, argv);
}
