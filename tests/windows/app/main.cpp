#include "ConnectDialogTest.h"
#include "MessageDialogsTest.h"
#include "ProgramLook.h"
#include "StartWindowTest.h"
#include "support/runTests.h"

#include <QApplication>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    applyProgramLook();
    return runTests<StartWindowTest, ConnectDialogTest, MessageDialogsTest>(argc, argv);
}
