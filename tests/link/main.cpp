#include "ActionGuardTest.h"
#include "ConfigurationQueryTest.h"
#include "LinkDispatchTest.h"
#include "LinkStatusDisplayTest.h"
#include "NetworkLinkTest.h"
#include "OutputStatusQueryTest.h"
#include "SerialLinkTest.h"
#include "support/runTests.h"

int main(int argc, char **argv) {
    return runTests<SerialLinkTest, NetworkLinkTest, LinkDispatchTest, LinkStatusDisplayTest,
                    OutputStatusQueryTest, ConfigurationQueryTest, ActionGuardTest>(argc, argv);
}
