// The "Select Reference Signal" tab and the reference tab of the write-leveling route: the
// reference every signal gets when the dialog opens, what may serve as reference, moving
// references, and the red marking of pairs without one. Steps are rows "<op><path>|<state>": op
// "." does nothing, "=" picks a signal, "~" a measurement, "+" adds the reference at the path, "-"
// removes it; an empty path leaves no item current.

#include <gtest/gtest.h>

#include <QCheckBox>

#include "support/SelectionPages.h"

using namespace lanetap_test;

namespace {

// Four memories whose designators are organised in every way the strobe numbering knows. The
// controller, first in the design, makes U2 and U4 four bits wide with odd strobes; memory U2,
// read later, makes U2 eight bits wide with even strobes again. U4 is known to the controller
// alone. Clocks stand at U1 (CK0) and U2 (CK1); U3 has none.
QByteArray layoutDesign(const QString& probeParameters) {
    const QStringList strobes{"DQS_t0", "DQS_t1", "DQS_t2", "DQS_t3", "DQ13"};
    const QString memory = R"("RefDesName":"%1","RefDesDQM":"x8","Tdqs":"yes","DQSIndex":"%2")";
    return designText({ddrPart("C1", "DDR_Controller", "C1",
                               R"("RefDesName":"U4 U2","RefDesDQM":"x4 x4","DQSIndex":"Odd",)"
                               R"("SimulationMode":"transient","DataMode":"read")",
                               {}),
                       ddrPart("M1", "DDR_Memory", "U1", memory.arg("U1", "Continuous"),
                               strobes + QStringList{"A0", "CKE0", "CK_t0"}),
                       ddrPart("M2", "DDR_Memory", "U2", memory.arg("U2", "Even"),
                               strobes + QStringList{"A0", "CK_t1"}),
                       ddrPart("M3", "DDR_Memory", "U3", memory.arg("U3", "Odd"),
                               strobes + QStringList{"DM_n1", "A0"}),
                       ddrPart("M4", "DDR_Memory", "U4", R"("RefDesName":"")", strobes),
                       probeInstance("X1", probeParameters)});
}

const QString pairTitle = "Select Reference Signal for Selected Signal ID-Measurement Pair: ";
const QString noSignalTitle = "Select Signal ID from Selected Signal Tree";

// A tree of a reference tab by op, on the write-leveling route or the other.
QString refTree(bool leveling, int op) {
    const char* trees[] = {"", "SelectedSignalTree", "SelectedMeasurementTree",
                           "AvailableRefSignalTree", "SelectedRefSignalTree"};
    return (leveling ? "wlSelectRefSignal" : "selectRefSignal") + QString(trees[op]);
}

// Runs the op of a step and gives its op back.
QString run(Pages& pages, bool leveling, const QString& step) {
    const QString op = step.section('|', 0, 0);
    const int kind = QString(".=~+-").indexOf(op[0]);
    const char* buttons[] = {"", "addRefSignalButton", "removeRefSignalButton",
                             "wlAddRefSignalButton", "wlRemoveRefSignalButton"};
    if (kind > 0) {
        pages.act(refTree(leveling, kind), op.mid(1).split('/', Qt::SkipEmptyParts),
                  buttons[kind < 3 ? 0 : kind - 2 + (leveling ? 2 : 0)]);
    }
    return op;
}

QString topLevel(QTreeWidget* tree) {
    QStringList texts;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        texts << tree->topLevelItem(i)->text(0);
    }
    return texts.join(" ");
}

}  // namespace

// Every signal selected with "Skew" chosen for its type: Apply stores the default references.
TEST(DefaultReferences, StrobesFollowWidthAndNumberingAndCommandsTheirNodesClock) {
    Pages pages(layoutDesign(R"("TabWidgetTabNumber":"4")"));
    pages.tab(1);
    for (const char* type : {"A", "CK", "CKE", "DM", "DQ", "DQS"}) {
        pages.act("selectSignalAvailableSignalTree", {type}, "addSignalButton");
    }
    pages.tab(2);
    for (const char* type : {"A", "CK", "CKE", "DM", "DQ", "DQS"}) {
        pages.act("selectMeasurementSelectedSignalTree", {type});
        pages.act("selectMeasurementAvailableMeasurementTree", {"Skew"}, "addMeasurementButton");
    }
    pages.press("applyButton");
    // DQ13 is in the second byte: strobe 1 counted continuously, 2 among even and 3 among odd
    // strobes; four bits wide it is in the fourth nibble. A mask's index is its byte. Commands and
    // strobes take the clock at their node, or CK0 there, which U3 and U4 lack; a clock is its own.
    QStringList expected =
        QString(
            "DQ_Ch0_U1_DQ13 1 DQS_Ch0_U1_DQS1,DQ_Ch0_U2_DQ13 1 DQS_Ch0_U2_DQS2,"
            "DQ_Ch0_U3_DQ13 1 DQS_Ch0_U3_DQS3,DQ_Ch0_U4_DQ13 1 DQS_Ch0_U4_DQS3,"
            "DM_Ch0_U3_DM1 1 DQS_Ch0_U3_DQS3,A_Ch0_U1_A0 1 CK_Ch0_U1_CK0,A_Ch0_U2_A0 1 "
            "CK_Ch0_U2_CK1,"
            "CKE_Ch0_U1_CKE0 1 CK_Ch0_U1_CK0,A_Ch0_U3_A0 1,CK_Ch0_U1_CK0 1 CK_Ch0_U1_CK0,"
            "CK_Ch0_U2_CK1 1 CK_Ch0_U2_CK1")
            .split(',');
    for (int strobe = 0; strobe < 4; ++strobe) {
        const QString key = QString("DQS_Ch0_%2_DQS%1 1").arg(strobe);
        expected << key.arg("U1") + " CK_Ch0_U1_CK0" << key.arg("U2") + " CK_Ch0_U2_CK1"
                 << key.arg("U3") << key.arg("U4");
    }
    expected.sort();
    EXPECT_EQ(canonical(pages.stored("SelectedMeasurementsRefSignalListMap"), 2),
              expected.join(","));

    pages.tab(3);
    // Data and command signals exclude each other as references; a clock takes any type but its
    // own record, which it has selected.
    QStringList offered;
    for (const char* signal : {"=DQ/Ch0/U1/DQ13", "=CKE/Ch0/U1/CKE0", "=CK/Ch0/U1/CK0"}) {
        run(pages, false, signal);
        offered << topLevel(pages.tree(refTree(false, 3)));
    }
    EXPECT_EQ(offered.join("|") + "|" + dump(pages.tree(refTree(false, 3)), {"CK"}),
              "CK DM DQ DQS|A CK CKE DM|A CK CKE DM DQ DQS|CK(Ch0(U2(CK1[M2])))");
}

// Signals | measurements | selected references | title | group enabled | stored references.
TEST(ReferenceMoves, PairsTitlesColoursAndStoredReferencesFollowEachMove) {
    Pages pages(
        busDesign(R"("TabWidgetTabNumber":"4",)"
                  R"("SelectedSignalList":"DQ_Ch0_U2_DQ2,DQ_Ch0_U2_DQ17,DQ_Ch0_U2_DQ10,",)"
                  R"("SelectedMeasurementsListMap":"DQ_Ch0_U2_DQ2 1 3 ,DQ_Ch0_U2_DQ17 1 ,",)"
                  R"("SelectedMeasurementsRefSignalListMap":"DQ_Ch0_U2_DQ2 1 DQS_Ch0_U2_DQS0 ,")"));
    pages.tab(3);
    const QString dq2 = "DQ_Ch0_U2_DQ2 1 DQS_Ch0_U2_DQS0";
    const QString red = "|DQ(Ch0(U2(DQ2!kg DQ10 DQ17!rr)))|";
    const QString black = "|DQ(Ch0(U2(DQ2!kg DQ10 DQ17!kg)))|Skew!k-|";
    const QString dq17 = "|" + pairTitle + "DQ_Ch0_U2_DQ17 - Skew|on|DQ_Ch0_U2_DQ17 1";
    const QString clocks = "CK(Ch0(U1(CK0) U2(CK0)))" + dq17 + " CK_Ch0_U1_CK0 CK_Ch0_U2_CK0";
    const QStringList steps{
        "." + red +
            "Eye Skew!k-||No Reference Signal required for Selected Signal "
            "ID-Measurement Pair: DQ_Ch0_U2_DQ2-Eye|off|" +
            dq2,
        "~Skew" + red + "Eye Skew!k-|DQS(Ch0(U2(DQS0)))|" + pairTitle + "DQ_Ch0_U2_DQ2 - Skew|on|" +
            dq2,
        "=DQ/Ch0/U2/DQ10" + red + "||Select a Measurement from Selected Measurement Tree for " +
            "Selected Signal ID: DQ_Ch0_U2_DQ10|on|" + dq2,
        "=DQ/Ch0/U2/DQ17" + red + "Skew!r-||" + pairTitle + "DQ_Ch0_U2_DQ17 - Skew|on|" + dq2,
        "+DQS/Ch0/U2/DQS1" + black + "DQS=(Ch0=(U2=(DQS1)))" + dq17 + " DQS_Ch0_U2_DQS1," + dq2,
        "-DQS" + red + "Skew!r-|" + dq17 + "," + dq2,
        "+CK" + black + "CK(Ch0(U1(CK0) U2(CK0)) Ch1(U1(CK0) U2(CK0)))" + dq17 +
            " CK_Ch0_U1_CK0 CK_Ch0_U2_CK0 CK_Ch1_U1_CK0 CK_Ch1_U2_CK0," + dq2,
        "-CK/Ch1" + black + clocks + "," + dq2,
        "+" + black + clocks + "," + dq2,
        "=DQ|DQ(Ch0(U2(DQ2!kg DQ10 DQ17!kg)))|||" + noSignalTitle + "|on|" +
            clocks.section('|', -1) + "," + dq2,
    };
    for (const QString& step : steps) {
        const QString op = run(pages, false, step);
        pages.press("applyButton");
        EXPECT_EQ(QStringList(
                      {op, dump(pages.tree(refTree(false, 1))), dump(pages.tree(refTree(false, 2))),
                       dump(pages.tree(refTree(false, 4))), pages.title("RefSignalSelectionGroup"),
                       pages.find<QWidget>("RefSignalSelectionGroup")->isEnabled() ? "on" : "off",
                       canonical(pages.stored("SelectedMeasurementsRefSignalListMap"), 2)})
                      .join("|"),
                  step);
    }
}

// The default reference comes back whenever a signal's write-leveling list is empty; only the
// types found by what they contain (DM, CS, ...) lose candidates. Op | types offered | selected
// references | title.
TEST(WriteLeveling, DefaultReferenceReturnsToAnEmptyListAndOnlyMasksExcludeCandidates) {
    Pages pages(layoutDesign(R"("WritelevelingSelectedSignalList":)"
                             R"("DQ_Ch0_U1_DQ13,DM_Ch0_U3_DM1,A_Ch0_U3_A0,CKE_Ch0_U1_CKE0,")"));
    pages.press("backButton");
    pages.find<QCheckBox>("writeLevelingCheckBox")->setChecked(true);
    pages.press("nextButton");
    pages.press("nextButton");
    const QString all = "|A CK CKE DM DQ DQS|";
    const QString title = "|Select Reference Signal for Selected Signal: ";
    const QString ck1 = "CK=(Ch0=(U2=(CK1[M2])))";
    const QStringList steps{
        ".|||" + noSignalTitle,
        "=DQ/Ch0/U1/DQ13" + all + "DQS(Ch0(U1(DQS1[M1])))" + title + "DQ_Ch0_U1_DQ13",
        "-DQS/Ch0/U1/DQS1" + all + title + "DQ_Ch0_U1_DQ13",
        "=DM/Ch0/U3/DM1|CK DM DQ DQS|DQS(Ch0(U3(DQS3[M3])))" + title + "DM_Ch0_U3_DM1",
        "=DQ/Ch0/U1/DQ13" + all + "DQS(Ch0(U1(DQS1[M1])))" + title + "DQ_Ch0_U1_DQ13",
        "+CK/Ch0/U2/CK1" + all + "DQS(Ch0(U1(DQS1[M1]))) " + ck1 + title + "DQ_Ch0_U1_DQ13",
        "-DQS" + all + ck1 + title + "DQ_Ch0_U1_DQ13",
        "=A/Ch0/U3/A0" + all + title + "A_Ch0_U3_A0",
        "=DQ/Ch0/U1/DQ13" + all + "CK(Ch0(U2(CK1[M2])))" + title + "DQ_Ch0_U1_DQ13",
        "=DQ|||" + noSignalTitle,
    };
    for (const QString& step : steps) {
        const QString op = run(pages, true, step);
        EXPECT_EQ(op + "|" + topLevel(pages.tree(refTree(true, 3))) + "|" +
                      dump(pages.tree(refTree(true, 4))) + "|" +
                      pages.title("wlRefSignalSelectionGroup"),
                  step);
    }
    pages.press("applyButton");
    EXPECT_EQ(canonical(pages.stored("WriteLevelingSelectedRefSignalListMap")),
              "A_Ch0_U3_A0,CKE_Ch0_U1_CKE0,DM_Ch0_U3_DM1 DQS_Ch0_U3_DQS3,DQ_Ch0_U1_DQ13 "
              "CK_Ch0_U2_CK1");
}
