#include "CommandTextsTest.h"
#include "ModelCatalogueTest.h"
#include "ReplyClassTest.h"
#include "StatusParserTest.h"
#include "TextTest.h"
#include "support/runTests.h"

int main(int argc, char **argv) {
    return runTests<TextTest, CommandTextsTest, ReplyClassTest, ModelCatalogueTest,
                    StatusParserTest>(argc, argv);
}
