#include "ButtonGroupsTest.h"
#include "ConnectionDisplayTest.h"
#include "PanelFaultsTest.h"
#include "PanelLayoutTest.h"
#include "PresetsTest.h"
#include "TakeTest.h"
#include "VolumeTest.h"
#include "app/ProgramLook.h"
#include "support/runTests.h"

#include <QApplication>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    applyProgramLook();
    return runTests<PanelLayoutTest, TakeTest, ButtonGroupsTest, ConnectionDisplayTest, VolumeTest,
                    PresetsTest, PanelFaultsTest>(argc, argv);
}
