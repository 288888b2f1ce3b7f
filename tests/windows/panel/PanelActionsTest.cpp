#include "PanelActionsTest.h"

#include "PanelFixture.h"
#include "support/checkRows.h"

#include <QMouseEvent>

#include <sstream>

namespace {

const std::string Queries = "\rSTA O A\rSTA O A\r";

/// The moment within a take when so many of its waits are over.
double after(double waits, bool overNetwork) { return waits * (overNetwork ? 0.8 : 0.3); }

/// Reports output 1 with these fields from now on, and lets the panel show them.
void report(PanelFixture &kvn, const std::string &fields) {
    kvn.answer("STA", "\r\nSTA O A\r\n  Output 1 (A," + fields + ")\r\n");
    kvn.clicks(kvn.isShown("KVN32x32Audio") ? "take" : "open");
    kvn.takeWritten();
}

void pointAt(const std::string &name, const std::string &how) {
    auto *box = PanelFixture::on(name);
    if (how == "click")
        QTest::mouseClick(box, Qt::LeftButton);
    else if (how == "Space" || how == "Enter")
        QTest::keyClick(box, how == "Space" ? Qt::Key_Space : Qt::Key_Return);
    else if (how == "Tab")
        box->setFocus(Qt::TabFocusReason);
    QMouseEvent moved(QEvent::MouseMove, {3, 3}, box->mapToGlobal(QPointF(3, 3)), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    if (how == "move")
        QCoreApplication::sendEvent(box, &moved);
}

/// The volume controls and the hint that are seen, and the label's text.
std::string volumeControls() {
    std::string shown;
    for (const char *const name :
         {"VolumeUpButton", "VolumeDownButton", "OutputVolumeLabel", "Label1"})
        shown += PanelFixture::on(name)->isVisible() ? name[name[0] == 'V' ? 6 : 0] : '-';
    return shown + " " + PanelFixture::textOf("OutputVolumeLabel");
}

/// The buttons of the presets that are not neutral.
std::string presets() {
    std::string marks;
    for (const auto *button :
         PanelFixture::window("dlgPresets")->findChildren<QAbstractButton *>()) {
        if (PanelFixture::face(button) != "grey")
            marks += button->text().toStdString() + " " + PanelFixture::face(button) + ", ";
    }
    return marks;
}

} // namespace

void PanelActionsTest::picks() {
    checkRows({{"iB3", "B-- B-- iV3 iA3 oV3 oA3 ||3 3F"},
               {"iV3", "-V- -V- iV3 oV3 ||3 3F"},
               {"iA3 iA12", "--A --A iA12 oA12 ||12 12F"},
               {"iB3 oB1 iB3", "BVA BVA ||"},
               {"iV3 oV1 iV3", "BVA BVA ||"},
               {"iA3 oA1 iA3", "BVA BVA ||"},
               {"oB2 oB1", "B-- B-- oV1 oV2 oA1 oA2 1,2|1F,2F|"},
               {"oV2 oV1", "-V- -V- oV1 oV2 1,2||"},
               {"oA2", "--A --A oA2 2|2F|"},
               {"oB1 oB2 oB1", "BVA BVA oV2 oA2 2|2F|"},
               {"oV1 oV1", "BV- BV- ||"},
               {"oA1 oA1", "BVA BVA ||"},
               {"iB3 oB1 oB1", "B-- B-- iV3 iA3 oV3 oA3 ||3 3F"},
               {"iV3 oV1 oV1", "BV- BV- iV3 oV3 ||3 3F"},
               {"iA3 oA1 oA1", "BVA BVA iA3 oA3 ||3 3F"},
               {"iA3 oA1 oA1 iV4", "-V- -V- iV4 iA3 oV4 ||4 4F"},
               {"iA3 oA1 oA2 oA2 oV4", "-V- -V- iA3 oV4 oA1 oA3 1,4|1F,4F|3 3F"},
               {"oB1 oB2 iB3", "B-- B-- iV3 iA3 oV3 oA3 1,2|1F,2F|3 3F"},
               {"iV3 oV1 oV1 escape", "BVA BVA ||"},
               {"iV4 oV2 take iA4 oA9 take iB4", "B-- B-- iV4 iA4 oV2 oV4 oA4 oA9 ||4 4F"},
               {"iB1 oB10 take iB10", "B-- B-- iV10 iA10 ||10 10F"}},
              [](const std::string &clicks) {
                  PanelFixture kvn;
                  kvn.clicks(clicks);
                  return kvn.picked();
              });
}

void PanelActionsTest::takes() {
    for (const bool overNetwork : {false, true}) {
        const auto takes = [=](const std::string &given) {
            const std::string model = given.substr(0, given.find(' '));
            PanelFixture kvn("KVN-" + model, overNetwork);
            kvn.clicks(given.substr(model.size()));
            std::string result;
            kvn.pump.in(0.2, [&] { result = " " + kvn.face(kvn.on("TakeButton")); });
            kvn.clicks("take");
            std::string outputs[4];
            const auto source = [](int input) {
                return (input == Unit::NotConnected ? "NC" : std::to_string(input)) + " ";
            };
            for (int output = 1; output <= kvn.unit.outputs(); ++output) {
                outputs[0] += "Out" + std::to_string(output) + " ";
                outputs[1] += source(kvn.unit.videoInput(output));
                outputs[2] += source(kvn.unit.audioInput(output));
                outputs[3] += kvn.unit.muted(output) ? "MUTED " : "MUTE ";
            }
            const bool shown =
                kvn.textsOf("OutputNumberLabel") == outputs[0] &&
                (!model.ends_with('A') || (kvn.textsOf("InputVideoConnected") == outputs[1] &&
                                           kvn.textsOf("InputAudioConnected") == outputs[2] &&
                                           kvn.textsOf("MuteButton") == outputs[3]));
            result.insert(0, kvn.takeWritten()).append(shown ? "" : " shown wrongly");
            const auto queries = result.rfind(Queries);
            return queries == std::string::npos
                       ? "not asked: " + result
                       : result.erase(queries, Queries.size()).append(kvn.pending());
        };
        checkRows({{"16x16-RGBA iB3 oB1 oB2", "Con 3(1,2)3F (1,2) busy"},
                   {"16x16-RGBA iV3 oV9 oV10 oV2", "Con 3(2,9,10) busy"},
                   {"16x16-RGBA iA16 oA2 oA5", "Con 16F (2,5) busy"},
                   {"16x16-RGBA oB5 oB4", "DIS 4,5,4F,5F busy"},
                   {"16x16-RGBA oV5 oV4", "DIS 4,5 busy"},
                   {"16x16-RGBA oA5 oA4", "DIS 4F,5F busy"},
                   {"32x32-RGBA iB32 oB31 oB10", "Con 32(10,31)32F (10,31) busy"},
                   {"16x16-RGBA iB3 oB1 oB1", "Con 3()3F () busy"},
                   {"16x16-RGBA iB3 oB1 iB3", "DIS , busy"},
                   {"16x16-RGBA oB1 oB2 iB3 oB4", "Con 3(4)3F (4) busy"},
                   {"16x16-RGBA iB3 oB1 escape", "Con 3()3F () busy"},
                   {"16x16-RGBA iB3 oB1 oB2 exit open", "DIS , busy"},
                   {"16x16-RGBA oA1 take", "DIS 1F" + Queries + "DIS  busy"},
                   {"8x4-RGBA iB5 oB7 oB10", "Con 1(1,4)1F (1,4) busy"},
                   {"8x4-RGB iB12 oB7 oB8", "Con 8(1,2) busy"},
                   {"8x4-RGB oB9", "DIS 3 busy"},
                   {"8x4-RGBA m8", "MUT M 2" + Queries + "DIS , busy"},
                   {"32x32-RGBA m17", "MUT M 17" + Queries + "DIS , busy"}},
                  takes);
    }
}

void PanelActionsTest::showsWhatTheUnitReports() {
    checkRows({{"U,0,V,-20,3,D,7", "7|3|MUTE|Vol -20|green MUT M 1" + Queries},
               {"M,0,V,5,255,D,7", "7|NC|MUTED|Vol 5|red MUT U 1" + Queries},
               {"U,0,V,0,3,D,255", "NC|3|MUTE|Vol 0|green MUT M 1" + Queries},
               {"U,0,V,2.5,3,D,xy", "xy|3|MUTE|Vol 2.5|green MUT M 1" + Queries},
               {"X,0,V,-2,3,D,7", "7|3|Mute|Vol -2|grey MUT U 1" + Queries},
               {"M,0,V,-1,4,D,4;X,0,V,-2,3,D,7", "7|3|MUTED|Vol -2|red MUT U 1" + Queries}},
              [](const std::string &reports) {
                  PanelFixture kvn;
                  kvn.clicks("exit");
                  for (const QString &fields :
                       QString::fromStdString(reports).split(QLatin1Char(';')))
                      report(kvn, fields.toStdString());
                  std::string shown;
                  for (const char *const name : {"InputVideoConnected_1", "InputAudioConnected_1",
                                                 "MuteButton_1", "OutputVolumeValue_1"})
                      shown += kvn.textOf(name) + "|";
                  shown += kvn.face(kvn.on("MuteButton_1")) + " ";
                  kvn.clicks("m1");
                  return shown + kvn.takeWritten();
              });
}

void PanelActionsTest::stepsTheVolume() {
    const std::string untouched = " UDOL Output Out1 volume";
    const std::string asked = "\rVOL L 1?\r UDOL Output 1 volume";
    checkRows({{"5 up VOL L 1 -17", "Vol 5" + untouched},
               {"5 down VOL L 1 -17", "Vol -17 VOL L 1 4" + asked},
               {"-45 down VOL L 1 -17", "Vol -45" + untouched},
               {"-45 up VOL L 1 -17", "Vol -17 VOL L 1 -44" + asked},
               {"-46 down VOL L 1 -17", "Vol -17 VOL L 1 -47" + asked},
               {"6 up VOL L 1 -17", "Vol -17 VOL L 1 7" + asked},
               {"2.5 up VOL L 1 -17", "Vol -17 VOL L 1 3" + asked},
               {"2.5 down VOL L 1 -09.0", "Vol -9 VOL L 1 1.5" + asked},
               {"-20 up VOL L 1", "Vol 0 VOL L 1 -19" + asked},
               {"-20 up VOL L 1 loud", "Vol 0 VOL L 1 -19" + asked}},
              [](const std::string &given) {
                  std::string level;
                  std::string button;
                  std::string reply;
                  std::getline(std::istringstream(given) >> level >> button >> std::ws, reply);
                  PanelFixture kvn;
                  report(kvn, "U,0,V," + level + ",1,D,1");
                  kvn.answer("VOL L 1?", "\r\n" + reply + "\r\n");
                  pointAt("OutputVolumeValue_1", "move");
                  kvn.pump.in(0.1, [&] { // another click meanwhile does nothing
                      QCOMPARE(volumeControls(), std::string("UDOL Wait..."));
                      kvn.clicks("up down");
                  });
                  kvn.clicks(button);
                  const std::string sent = kvn.takeWritten();
                  return kvn.textOf("OutputVolumeValue_1") + " " + sent +
                         (sent.empty() ? "" : " ") + volumeControls();
              });
}

void PanelActionsTest::choosesAVolume() {
    checkRows({{"move", "UDOL Output 2 volume"},
               {"click", "UDOL Output 2 volume"},
               {"Space", "UDOL Output 2 volume"},
               {"Enter", "UDOL Output 2 volume"},
               {"Tab", "---L Output volume"},
               {"move iV8", "UDOL Output 2 volume"},
               {"move oV8", "---L Output 2 volume"}, // the hint of the kind before
               {"move oV8 oV9", "---- Output 2 volume"},
               {"move oA8 oA9", "---- Output 2 volume"},
               {"move m8", "---L Output 2 volume"},
               {"click escape", "---L Output 2 volume"}},
              [](const std::string &given) {
                  const std::string how = given.substr(0, given.find(' '));
                  PanelFixture kvn("KVN-8x4-RGBA");
                  pointAt("OutputVolumeValue_8", how);
                  kvn.clicks(given.substr(how.size()));
                  const std::string controls = volumeControls();
                  if (controls[0] == 'U')
                      kvn.clicks("up");
                  return kvn.unit.volume(2) == (controls[0] == 'U' ? "-19" : "-20") ? controls : "";
              });
}

void PanelActionsTest::choosesNoVolumeAtRest() {
    PanelFixture kvn;
    auto *box = kvn.on("OutputVolumeValue_3");
    const QPointF rest = box->mapToGlobal(QPointF(box->rect().center()));
    const auto enter = [&](const QPointF &at) {
        QMouseEvent moved(QEvent::MouseMove, box->mapFromGlobal(at), at, Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(box, &moved);
        return volumeControls();
    };
    // The box comes up where the pointer rests.
    box->hide();
    QCursor::setPos(rest.toPoint());
    QCoreApplication::processEvents();
    box->show();
    QCoreApplication::processEvents();
    QCOMPARE(enter(rest), std::string("---L Output volume"));
    QCOMPARE(enter(rest + QPointF(1, 0)), std::string("UDOL Output 3 volume"));
    kvn.clicks("escape");
    QCOMPARE(enter(rest + QPointF(1, 0)), std::string("---L Output 3 volume"));
    QCOMPARE(enter(rest), std::string("UDOL Output Out3 volume"));
}

void PanelActionsTest::keepsTheLevelApart() {
    // Happens in the wait for the level of output 1; then the levels that are shown.
    checkRows({{"", "Vol -19 Vol -20"},
               {"mute", "Vol -19 Vol -20"},
               {"step the other", "Vol -19 Vol -19"},
               {"lose", "Vol -20 Vol -20"}},
              [](const std::string &meanwhile) {
                  PanelFixture kvn;
                  pointAt("OutputVolumeValue_1", "move");
                  kvn.pump.in(meanwhile == "lose" ? 0.1 : 0.4, [&] {
                      if (meanwhile == "mute")
                          kvn.clicks("m2");
                      if (meanwhile == "lose")
                          kvn.serialPort.vanish();
                      if (meanwhile == "step the other") {
                          pointAt("OutputVolumeValue_2", "move");
                          kvn.clicks("up");
                      }
                  });
                  kvn.clicks("up");
                  return kvn.textOf("OutputVolumeValue_1") + " " +
                         kvn.textOf("OutputVolumeValue_2");
              });
}

void PanelActionsTest::recallsPresets() {
    checkRows({{"go", ""},
               {"p1 go", "Preset 1 green, EXECUTE busy, PST X 1\r"},
               {"p3 p32 p32 go go", "Preset 32 green, EXECUTE busy, PST X 32\r"},
               {"p7 p7", "Preset 7 green, "},
               {"p5 again", "Preset 5 green, "},
               {"p5 close presets", ""},
               {"p5 frame presets go", "EXECUTE busy, PST X 5\r"},
               {"p5 Esc presets p6 go", "Preset 6 green, EXECUTE busy, PST X 6\r"}},
              [](const std::string &given) {
                  PanelFixture kvn;
                  pointAt("OutputVolumeValue_1", "click");
                  kvn.clicks("presets");
                  std::string shown;
                  std::istringstream words(given);
                  for (std::string word; words >> word;) {
                      QCoreApplication::processEvents(); // the window becomes the active one
                      if (word == "go")
                          kvn.pump.in(0.1, [&] { shown += presets(); });
                      if (word == "again")
                          kvn.clickAnything("KVN32x32Audio", "GoToPresets");
                      else
                          kvn.clicks(word);
                      const bool panel = !kvn.isShown("dlgPresets");
                      if (kvn.window("KVN32x32Audio")->isMinimized() == panel ||
                          (panel && volumeControls() != "---L Output 1 volume"))
                          shown += "wrong windows";
                  }
                  kvn.pump.runFor(0.2, [] { return false; });
                  return shown + presets() + kvn.takeWritten();
              });
}

void PanelActionsTest::survivesNestedClicks() {
    for (const bool overNetwork : {false, true}) {
        PanelFixture kvn("KVN-16x16-RGBA", overNetwork);
        kvn.clicks("iB3 oB1 oB2");
        for (std::size_t nested = 0; nested < 100; ++nested)
            kvn.pump.in(0.01 + 0.02 * static_cast<double>(nested), [nested] {
                const std::array buttons{"TakeButton", "MuteButton_2", "ClearButton"};
                PanelFixture::on<QAbstractButton>(buttons.at(nested % 3))->click();
            });
        kvn.clicks("take");
        kvn.pump.runFor(5.0, [] { return false; });
        QVERIFY(kvn.takeWritten().starts_with("Con 3(1,2)3F (1,2)\r"));
        QCOMPARE(kvn.pending(), std::string());
        kvn.clicks("iV4 oV1 take");
        QCOMPARE(kvn.takeWritten(), "Con 4(1)" + Queries);
    }
}

void PanelActionsTest::twoClicksReopenThePort() {
    PanelFixture kvn;
    kvn.clicks("iB3 oB1 oB2");
    kvn.serialPort.vanish();
    kvn.serialPort.present = {7};
    kvn.pump.in(0.0, [] { PanelFixture::on<QAbstractButton>("MuteButton_3")->click(); });
    kvn.clicks("take");
    QCOMPARE(kvn.takeWritten(), "MUT M 3" + Queries + "Con 3(1,2)3F (1,2)" + Queries);
    QCOMPARE(kvn.pending() + kvn.textOf("InputVideoConnected_2"), std::string("3"));
    QVERIFY(kvn.unit.muted(3));
}

void PanelActionsTest::windowsClosedInAWait() {
    const auto closes = [](bool overNetwork, const std::string &what, const std::string &clicks,
                           double waits) {
        PanelFixture kvn("KVN-16x16-RGBA", overNetwork);
        kvn.pump.in(after(waits, overNetwork), [&] {
            what == "exit" ? kvn.clicks(what) : (void)kvn.window(what)->close();
            kvn.takeWritten();
        });
        if (clicks.empty())
            kvn.click("frmMain", "MainControlButton_0");
        kvn.clicks(clicks);
        kvn.pump.runFor(5.0, [] { return false; });
        QVERIFY(!kvn.serialPort.isOpen() && kvn.socket.state() == SocketState::Closed);
        QCOMPARE(kvn.takeWritten() + kvn.messages, std::string());
        QCOMPARE(kvn.visibleWindows(), what == "frmMain" ? "" : "frmMain");
        QCOMPARE(kvn.pump.ended(), what == "frmMain");
        if (what == "frmMain")
            return;
        QCOMPARE(kvn.text("frmMain", "ZarnConnectedLabel"), std::string("Not Connected"));
        kvn.open();
        QCOMPARE(kvn.pending(), std::string());
        kvn.clicks("iB3 oB1 take");
        QCOMPARE(kvn.takeWritten(), "Con 3(1)3F (1)" + Queries);
    };
    for (const bool overNetwork : {false, true}) {
        for (const double waits : {0.5, 1.5, 2.5}) {
            for (const char *const clicks : {"iB3 oB1 take", "m1", ""}) { // "": the panel opens
                closes(overNetwork, "frmMain", clicks, waits);
                if (*clicks || waits > 1.0) // the first wait of opening is the start window's
                    closes(overNetwork, "KVN32x32Audio", clicks, waits);
            }
            closes(overNetwork, "exit", "iB3 oB1 take", waits);
        }
    }
}

void PanelActionsTest::reopenedInAWait() {
    for (const bool overNetwork : {false, true}) {
        for (const char *const first : {"take", "m1"}) {
            PanelFixture kvn("KVN-16x16-RGBA", overNetwork);
            kvn.clicks("iB3 oB1");
            kvn.pump.in(0.1, [&] { kvn.clicks("exit open iB4 oB2"); });
            kvn.clicks(first);
            QCOMPARE(kvn.takeWritten() + kvn.messages, std::string());
            QVERIFY(kvn.textsOf("InputNumberLabel").starts_with("1 2 "));
            kvn.clicks("take");
            QCOMPARE(kvn.takeWritten(), "Con 4(2)4F (2)" + Queries);
        }
    }
}

void PanelActionsTest::linkIsLost() {
    const auto loses = [](bool overNetwork, const std::string &clicks, double waits,
                          const std::string &sent) {
        PanelFixture kvn("KVN-16x16-RGBA", overNetwork);
        kvn.clicks("iB3 oB1");
        pointAt("OutputVolumeValue_1", "click");
        kvn.pump.in(after(waits, overNetwork),
                    [&] { overNetwork ? kvn.socket.peerCloses() : kvn.serialPort.vanish(); });
        kvn.pump.runQueued();
        const char *const told = waits > 0.0 ? "Connected" : "Not Connected";
        QVERIFY(kvn.program.views.units.status.caption.starts_with(told));
        for (const char *const window : {"frmMain", "KVN32x32Audio"})
            QVERIFY(kvn.text(window, "ZarnConnectedLabel").starts_with(told));
        kvn.clicks(clicks);
        QCOMPARE(kvn.takeWritten(), sent);
        const std::string message = std::exchange(kvn.messages, {});
        QVERIFY2(message.find(overNetwork ? "10.11.12.13" : "COM7") < message.find(" | ") &&
                     message.find(" | ") == message.npos,
                 message.c_str());
        for (const char *const window : {"frmMain", "KVN32x32Audio"})
            QCOMPARE(kvn.text(window, "ZarnConnectedLabel"), std::string("Not Connected"));
        QCOMPARE(clicks == "take" ? kvn.pending() : "", std::string());

        kvn.serialPort.present = {7};
        kvn.clicks((overNetwork ? "exit open escape " : "escape ") +
                   std::string("iB4 iB4 iB5 oB2 take"));
        QCOMPARE(kvn.takeWritten() + kvn.messages, "Con 5(2)5F (2)" + Queries);
        QCOMPARE(kvn.textOf("InputVideoConnected_2"), std::string("5"));
    };
    for (const bool overNetwork : {false, true}) {
        for (const char *const clicks : {"take", "m1", "up", "presets p9 go close"})
            loses(overNetwork, clicks, 0.0, "");
        loses(overNetwork, "take", 0.5, "Con 3(1)3F (1)\r");
        loses(overNetwork, "take", 1.5, "Con 3(1)3F (1)\rSTA O A\r");
    }
}

void PanelActionsTest::oddStatusReplies() {
    for (const bool overNetwork : {false, true}) {
        for (const std::string &reply :
             {std::string(), std::string("\xff\x01garbage(((,,,)))"),
              std::string("\r\nSTA O A\r\n  Output 1 ("), std::string(70000, '(')}) {
            PanelFixture kvn("KVN-16x16-RGBA", overNetwork);
            const auto unitAnswer = kvn.wire.device;
            kvn.answer("STA", reply);
            kvn.clicks("iB3 oB1 take");
            QCOMPARE(std::exchange(kvn.messages, {}),
                     reply.empty() && !overNetwork
                         ? "No Response Received from CommPort 7\r\nPlease check cabling and Try "
                           "Again "
                         : "");
            QCOMPARE(kvn.pending() + kvn.textOf("InputVideoConnected_1"), std::string("1"));
            kvn.wire.device = unitAnswer;
            kvn.clicks("iB3 oB2 take");
            QCOMPARE(kvn.textOf("InputVideoConnected_1"), std::string("3"));
        }
    }
}
