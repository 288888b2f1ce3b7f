#include "CommandTextsTest.h"

#include "protocol/CommandTexts.h"
#include "support/DataTable.h"
#include "support/toString.h"

void CommandTextsTest::everyCommand_data() {
    const DataTable<std::string, std::string> row("text", "bytes");
    row("configuration", std::string(command::Configuration), "CFG ?\r\n");
    row("echo off", std::string(command::EchoOff), "ECHO OFF\r");
    row("status of all", std::string(command::StatusOfAllOutputs), "STA O A\r");
    row("status of one", command::statusOfOutput(12), "STA O 12\r");
    row("video", command::connectVideo(3, "12"), "Con 3(12)\r");
    row("audio", command::connectAudio(32, "1,2,7"), "Con 32F (1,2,7)\r");
    row("video and audio", command::connectBoth(10, "1,2"), "Con 10(1,2)10F (1,2)\r");
    row("disconnect video", command::disconnectVideo("1,2,7"), "DIS 1,2,7\r");
    row("disconnect audio", command::disconnectAudio("1F,2F"), "DIS 1F,2F\r");
    row("disconnect both", command::disconnectBoth("4,5", "4F,5F"), "DIS 4,5,4F,5F\r");
    row("mute", command::mute(1), "MUT M 1\r");
    row("unmute", command::unmute(32), "MUT U 32\r");
    row("set volume", command::setVolume("5", "-20"), "VOL L 5 -20\r");
    row("query volume", command::queryVolume("12"), "VOL L 12?\r");
    row("preset", command::executePreset(7), "PST X 7\r");
}

void CommandTextsTest::everyCommand() {
    QFETCH(std::string, text);
    QTEST(text, "bytes");
}
