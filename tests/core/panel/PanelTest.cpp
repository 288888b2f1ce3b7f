#include "support/Player.h"

// The words are listed in support/Player.cpp.
// clang-format off
class PanelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsTheUnitsSlots() {
        const std::string group = " o o Vid/Aud V A", audio = " Vol -20 MUTE";
        const std::string group16 = "1-16 1..16" + group + ", 1-16 1..16" + group + " 1..16 1..16";
        const std::string first = " InputVideoAudioButtons_1 ---";
        const std::string first5 = " InputVideoAudioButtons_5 ---";
        checkOnBothLinks({
            {"", group16 + audio + " RGB 16x16 with Audio" + first + "L"},
            {"model=32x32-RGBA iB5 oB7 m17 oB9 model=8x4-RGBA", "5-12 1..8" + group + ", 7-10 1..4" + group + " 1..4 "
             "1..4" + audio + " RGB 8 x 4 with Audio" + first5 + "L"},
            {"iV9 oV7 model=8x4-RGB", "5-12 1..8 o Video, 7-10 1..4 o Video o RGB 8 x 4 No Audio" + first5 + "-"},
            {"v9 iA3 model=32x32-RGB", "1-32 1..32 o Video, 1-32 1..32 o Video o RGB 32x32 No Audio" + first + "-"}},
            "open", "?slots ?type ?volume ?left");
        checkOnBothLinks({
            {"escape", "1-16 In1..In16" + group + ", 1-16 Out1..Out16" + group + " 1..16 1..16" + audio},
            {"model=8x4-RGB iB6 oB7 take", "5-12 In1..In8 o Video, 7-10 Out1..Out4 o Video o"}}, "open", "?slots");
    }

    void picks() {
        checkOnBothLinks({
            {"iB3", "B-- B-- iV3 iA3 oV3 oA3 ||3 3F"}, {"iA3 iA12", "--A --A iA12 oA12 ||12 12F"},
            {"iB3 oB1 iB3", "BVA BVA ||"}, {"oV2 oV1", "-V- -V- oV1 oV2 1,2||"},
            {"oB2 oB1", "B-- B-- oV1 oV2 oA1 oA2 1,2|1F,2F|"}, {"oB1 oB2 oB1", "BVA BVA oV2 oA2 2|2F|"},
            {"oV1 oV1", "BV- BV- ||"}, {"iB3 oB1 oB1", "B-- B-- iV3 iA3 oV3 oA3 ||3 3F"},
            {"iA3 oA1 oA1 iV4", "-V- -V- iV4 iA3 oV4 ||4 4F"},
            {"iA3 oA1 oA2 oA2 oV4", "-V- -V- iA3 oV4 oA1 oA3 1,4|1F,4F|3 3F"},
            {"iV4 oV2 take iA4 oA9 take iB4", "B-- B-- iV4 iA4 oV2 oV4 oA4 oA9 ||4 4F"},
            {"model=8x4-RGBA iB6", "B-- B-- iV6 iA6 oV8 oA8 ||2 2F"},
            {"model=8x4-RGBA oA7 oA10 oA7", "BVA BVA oA10 4|4F|"}}, "open", "?picked");
    }

    // Lists outlive what they were built from.
    void takes() {
        checkOnBothLinks({
            {"iB3 oB1 oB2", "busy Con 3(1,2)3F (1,2);Q"}, {"iV3 oV9 oV10 oV2", "busy Con 3(2,9,10);Q"},
            {"oB5 oB4", "busy DIS 4,5,4F,5F;Q"}, {"iB3 oB1 oB1", "busy Con 3()3F ();Q"},
            {"oB1 oB2 iB3 oB4", "busy Con 3(4)3F (4);Q"}, {"m2 m2", "busy MUT M 2;QMUT U 2;QDIS ,;Q"},
            {"model=32x32-RGBA iB32 oB31 oB10", "busy Con 32(10,31)32F (10,31);Q"},
            {"model=8x4-RGB iB12 oB7 oB8", "busy Con 8(1,2);Q"}, {"model=8x4-RGBA m8", "busy MUT M 2;QDIS ,;Q"},
            {"model=32x32-RGBA m17", "busy MUT M 17;QDIS ,;Q"}},
            "open", "@0.5:?take take ?sent ?left");
        // What the unit reports, and what its mute button does then.
        const std::string two = ", 2|2|MUTE green|Vol -20 MUT ";
        checkOnBothLinks({
            {"STA=U,0,V,-20,3,D,7", "7|3|MUTE green|Vol -20" + two + "M 1;Q"},
            {"STA=M,0,V,5,255,D,7", "7|NC|MUTED red|Vol 5" + two + "U 1;Q"},
            {"STA=M,0,V,0,3,D,xy take STA=U,0,V,0,3,D,xy", "xy|3|MUTE green|Vol 0" + two + "M 1;Q"},
            {"STA=M,0,V,-1,4,D,4 take STA=X,0,V,-2,3,D,7", "7|3|MUTED red|Vol -2" + two + "U 1;Q"}},
            "open", "take ?outputs note m1 ?sent");
    }

    void stepsTheVolume() {
        // Another click in a step does nothing. Then the level reported, the one told, the step.
        checkOnBothLinks({
            {"@0.5:?volume/up @1.5:?volume/down up ?sent", "UDOL Wait... UDOL Wait... VOL L 1 -19;VOL L 1?; "
             "-19,-20,-19"}, {"level=5 VOL=-17 down ?sent", "VOL L 1 4;VOL L 1?; -17,-20,-17"},
            {"level=-45 VOL=-17 up ?sent", "VOL L 1 -44;VOL L 1?; -17,-20,-17"},
            {"level=-46 VOL=-17 down ?sent", "VOL L 1 -47;VOL L 1?; -17,-20,-17"},
            {"level=6 VOL=-17 up ?sent", "VOL L 1 7;VOL L 1?; -17,-20,-17"},
            {"level=4.5 VOL=5 up ?sent", "VOL L 1 5;VOL L 1?; 5,-20,5"},
            {"level=2.5 VOL=-09.0 down ?sent", "VOL L 1 1.5;VOL L 1?; -9,-20,-9"},
            {"VOL= up ?sent", "VOL L 1 -19;VOL L 1?; 0,-20,0"}}, "open v1", "?levels");
        // Choosing an output, and what takes the controls away.
        checkOnBothLinks({
            {"v1 v2 iV8", "UDOL Output 2 volume"}, {"v2 oV2", "---L"}, {"v2 oA8 oA9", "----"}, {"v2 m8", "---L"},
            {"v2 escape", "---L"}, {"escape v2", "UDOL Output Out2 volume"}, {"v2 presets", "---L"},
            {"step ?sent", "---L"}, {"model=8x4-RGB v8", "----"},
            {"model=8x4-RGBA v8 up ?sent ?left", "VOL L 2 -19;VOL L 2?; UDOL Output 2 volume"}}, "open", "?volume");
        // What happens in the wait for the set or for the level of output 1.
        checkOnBothLinks({
            {"@1.5:m2 up", "-19,-20,-19 ---L"}, {"@0.5:v2/up up", "-19,-19,-19 UDOL Output 2 volume"},
            {"@1.5:lose up", "-19,-20,-19 UDOL Output 1 volume"}}, "open v1", "?levels ?volume");
    }

    void recallsPresets() {
        checkOnBothLinks({
            {"@0.5:?presets execute", ""}, {"p1 @0.5:?presets execute", "Preset 1! PST X 1;"},
            {"p3 p32 p32 @0.5:?presets execute execute", "Preset 32! PST X 32;"},
            {"p3 p7 ?presets p7", "Preset 7 Preset 7"}, {"p5 presets", "Preset 5"}, {"p5 close presets", ""}},
            "open presets", "?presets ?sent");
    }

    void opens() {
        const std::string hd = "HD 8 x 4 No Audio InputVideoAudioButtons_1";
        checkOnBothLinks({
            {"S:exit min file units @4:port7/-connect @9:?forms/?name/?flags/exit double0 ?forms open ?forms ?name",
             "connecting* {!7} asking* loading* min-main panel units A WP min-main min-main panel nameless"},
            {"exit @0.5:?forms @1.5:?forms @2.5:?forms open ?forms ?link", "main main splash main splash main panel "
             "++++o"}, {"@0.5:-panel find ?forms", "main panel"}, {"exit ?link ?kind", "---- -"},
            {"-panel ?link ?forms", "---- main"}, {"note m1 ?time", "3"},
            {"raw=^CFG_?|^KVN-8x4-HD exit open ?type", hd},
            {"raw=^RTQ-KVN-8x4-HD exit open ?type", "RGB 16x16 with Audio InputVideoAudioButtons_1"},
            {"model=32x32-RGBA model=8x4-C ?forms", "{The buttons of KVN-8x4-C do not fit the panel: ButtonInput has "
             "no index 33 (0 to 32).} main"},
            // Begun in a wait of the showing before.
            {"iB3 oB1 @0.5:exit/open/iV4/oV2 take note take ?sent ?left", "Con 4(2);Q"}}, "open");
        // The link is lost in the wait for the configuration.
        checkOnBothLinks({
            {"S:@0.5:ports=7 @1.5:?forms find ?forms ?link", "main panel splash main panel ++++o"},
            {"E:@1.5:?forms find ?forms ?link", "main panel splash main panel ++++o"},
            {"E:host=1 @4:?forms find wait host=0 wait wait ?forms ?link", "main panel splash {failed} main panel "
             "----"},
            {"E:slow2.5 @2.5:~connect:-connect/find find wait slow0 open ?forms ?link", "main panel ++++o"},
            {"E:slow2.5 @2.5:-splash find wait ?forms ?link", "{failed} main panel ----"}}, "open @0.5:lose");
    }

    void linkIsLost() {
        const std::string works = "---- Con 5(2)5F (2);Q";
        checkOnBothLinks({
            {"lose ?link take", "---- {failed} " + works},
            {"lose presets p9 execute close", "{failed} " + works},
            {"@0.5:lose ?link take", "++++o {failed} Con 3(1)3F (1); " + works},
            {"@1.5:lose take", "{failed} Con 3(1)3F (1);STA O A; " + works}},
            "open iB3 oB1", "?sent ?link ?presets ports=7 exit open presets execute close iB4 iB4 iB5 oB2 take "
             "?sent ?left");
    }

    void oddReplies() {
        const std::string two = ", 2|2|MUTE green|Vol -20", old = "1|1|MUTE green|Vol -20" + two;
        checkOnBothLinks({
            {"S:raw=", "{no response} " + old}, {"E:raw=", old},
            {"late1.15", "3|3|MUTE green|Vol -20" + two}},
            "open iB3 oB1", "take ?outputs well iB3 oB2 take ?left");
    }

    // What it says it will do, and the buttons that are marked, are what goes out then. Marks go by
    // the list: no lamp tells of output 1 before input 3, and ESCAPE leaves input and kind.
    void takeSaysWhatItSends() {
        const std::string hint =
            "Pick an input and its outputs to connect them, or outputs alone to disconnect them";
        checkPlays({
            {"", hint + " DIS ,;Q"},
            {"iB4 oB8 oB7", "Input 4 to outputs 7 and 8, video and audio iB4 oB7 oB8 Con 4(7,8)4F (7,8);Q"},
            {"iV4 oV1 oV2 oV3 oV5 oV6 oV8 oV9 oV10", "Input 4 to outputs 1 to 3, 5, 6 and 8 to 10, video iV4 oV1 oV2 "
             "oV3 oV5 oV6 oV8 oV9 oV10 Con 4(1,2,3,5,6,8,9,10);Q"},
            {"oB2 oB1", "Disconnect outputs 1 and 2, video and audio oB1 oB2 DIS 1,2,1F,2F;Q"},
            {"iA3 oA1 oA2 oA2 oV4", "Input 3 to outputs 1 and 4, audio iA3 oA1 oA4 Con 3F (1,4);Q"},
            {"iV4 oV1 escape", "Input 4, video: pick its outputs iV4 Con 4();Q"},
            {"iB3 escape oV1", "Input 3 to output 1, video and audio iB3 oB1 Con 3(1)3F (1);Q"},
            {"iB3 oB1 take note", hint + " DIS ,;Q"}},
            "open", "?tip=TakeButton ?marked take ?sent");
    }

    // What the pointer shows and what is spoken, where that is something else.
    void slotsSayTheirState() {
        const std::string two = "video from input 2, audio from input 2, volume -20, not muted";
        const std::string input4 = "video to outputs 4, 7 and 8, audio to output 4";
        checkPlays({
            {"open ?tip=OutputNumberLabel_2", "Output 2: " + two + "|" + two},
            {"open ?tip=OutputVideoIndicator_2", "Output 2: " + two + "|"},
            {"open model=32x32-RGBA v17 up m17 ?tip=MuteButton_17", "Output 17: video from input 17, audio from "
             "input 17, volume -19, muted|video from input 17, audio from input 17, volume -19, muted"},
            // Its box shows the level of output 5 then.
            {"open model=8x8-RGBA v5 up exit note open ?tip=OutputVideoIndicator_5", "Output 1: video from input 1, "
             "audio from input 1, volume -19, not muted|"},
            {"silent open ?tip=InputVideoConnected_9", "{no response} Output 9: video not known, audio not known, "
             "volume not known, mute not known|video not known, audio not known, volume not known, mute not known"},
            {"open model=8x4-RGB oB8 take ?tip=OutputVidAudButtons_8", "Output 2: no video|no video"},
            {"open iV4 oV7 oV8 take ?tip=InputAudioButtons_4", "Input 4: " + input4 + "|" + input4},
            {"open oB1 take ?tip=InputVideoLamp_1", "Input 1: video to no output, audio to no output|"}});
    }
};
// clang-format on

QTEST_GUILESS_MAIN(PanelTest)
#include "PanelTest.moc"
