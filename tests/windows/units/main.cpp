#include "SavedUnitsDialogTest.h"
#include "SavedUnitsFileTest.h"
#include "support/runTests.h"

#include <QApplication>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    return runTests<SavedUnitsFileTest, SavedUnitsDialogTest>(argc, argv);
}
