#include "SavedUnitsDialogTest.h"
#include "SavedUnitsFileTest.h"
#include "SavedUnitsTextTest.h"
#include "support/runTests.h"

#include <QApplication>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    return runTests<SavedUnitsTextTest, SavedUnitsFileTest, SavedUnitsDialogTest>(argc, argv);
}
