// The "Select Signals" and "Select Measurements" tabs and the signal tab of the write-leveling
// route: the four-level signal trees and moves between them, measurements chosen for signals and
// groups, and the group lists that a signal added later takes over. Rows are texts of fields split
// at "|", paths split at "/".

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QTreeWidgetItemIterator>

#include "support/SelectionPages.h"

using namespace lanetap_test;

namespace {

const char* const availableSignals = "selectSignalAvailableSignalTree";
const char* const selectedSignals = "selectSignalSelectedSignalTree";
const char* const availableMeasurements = "selectMeasurementAvailableMeasurementTree";
const char* const selectedMeasurements = "selectMeasurementSelectedMeasurementTree";

}  // namespace

TEST(SignalTrees, MovesAppendMergeAndPruneWhileRebuildsSortAndRestoreKeys) {
    Pages pages(
        busDesign(R"("TabWidgetTabNumber":"4",)"
                  R"("SelectedSignalList":"DQ_Ch0_U2_DQ17,DQ_Ch0_U2_DQ10,DQ_Ch0_U2_DQ2,")"));
    pages.tab(1);
    ASSERT_EQ(dump(pages.tree(selectedSignals)), "DQ(Ch0(U2(DQ2 DQ10 DQ17)))");
    EXPECT_EQ(currentPath(pages.tree(availableSignals)), "CK");
    // Added (+) or removed path | selected tree | the moved type on the available side | the
    // current item of the side moved to. Moved items stand last, under new ancestors without keys.
    const QString dq =
        "DQ(Ch0(U2(DQ2 DQ10 DQ17) U1(DQ2 DQ10)) Ch1=(U2=(DQ10 DQ2 DQ17) U1(DQ2 DQ10)))";
    const QStringList moves{
        "+DQ/Ch1/U2/DQ10|DQ(Ch0(U2(DQ2 DQ10 DQ17)) Ch1=(U2=(DQ10)))|"
        "DQ(Ch0(U1(DQ2 DQ10)) Ch1(U1(DQ2 DQ10) U2(DQ2 DQ17)))|DQ/Ch1/U2/DQ10",
        "+DQ/Ch1/U2/DQ2|DQ(Ch0(U2(DQ2 DQ10 DQ17)) Ch1=(U2=(DQ10 DQ2)))|"
        "DQ(Ch0(U1(DQ2 DQ10)) Ch1(U1(DQ2 DQ10) U2(DQ17)))|DQ/Ch1/U2/DQ2",
        "+DQ/Ch1/U1|DQ(Ch0(U2(DQ2 DQ10 DQ17)) Ch1=(U2=(DQ10 DQ2) U1(DQ2 DQ10)))|"
        "DQ(Ch0(U1(DQ2 DQ10)) Ch1(U2(DQ17)))|DQ/Ch1/U1",
        "+DQ|" + dq + "|(none)|DQ",
        "+CK/Ch1|" + dq + " CK=(Ch1(U1(CK0) U2(CK0)))|CK(Ch0(U1(CK0) U2(CK0)))|CK/Ch1",
        "-DQ|CK=(Ch1(U1(CK0) U2(CK0)))|" + dq + "|DQ",
    };
    for (const QString& move : moves) {
        const bool add = move.startsWith('+');
        const QStringList path = move.section('|', 0, 0).mid(1).split('/');
        pages.act(add ? availableSignals : selectedSignals, path,
                  add ? "addSignalButton" : "removeSignalButton");
        EXPECT_EQ(move.section('|', 0, 0) + "|" + dump(pages.tree(selectedSignals)) + "|" +
                      dump(pages.tree(availableSignals), path.mid(0, 1)) + "|" +
                      currentPath(pages.tree(add ? selectedSignals : availableSignals)),
                  move);
    }
    // Without a current item neither button moves anything.
    pages.act(availableSignals, {}, "addSignalButton");
    pages.act(selectedSignals, {}, "removeSignalButton");
    EXPECT_EQ(dump(pages.tree(availableSignals)),
              "CK(Ch0(U1(CK0) U2(CK0))) DQS(Ch0(U1(DQS0 DQS1) U2(DQS0 DQS1)) "
              "Ch1(U1(DQS0 DQS1) U2(DQS0 DQS1))) " +
                  dq);
    // The measurement tab rebuilds from the moved records; coming back leaves this tab as it was.
    pages.tab(2);
    EXPECT_EQ(dump(pages.tree("selectMeasurementSelectedSignalTree")), "CK(Ch1(U1(CK0) U2(CK0)))");
    pages.tab(1);
    EXPECT_EQ(dump(pages.tree(selectedSignals)), "CK=(Ch1(U1(CK0) U2(CK0)))");
}

// The write-leveling route's signal tab moves as the other route's does, into a selection of its
// own. Added (+) or removed path | selected tree | the moved type on the available side | the
// current item of the side moved to | the stored write-leveling list.
TEST(SignalTrees, WriteLevelingMovesKeepTheirOwnSelection) {
    Pages pages(busDesign(R"("WritelevelingSelectedSignalList":"DQ_Ch0_U2_DQ2,")"));
    pages.press("backButton");
    pages.find<QCheckBox>("writeLevelingCheckBox")->setChecked(true);
    pages.press("nextButton");
    const QString available = "wlSelectSignalAvailableSignalTree";
    const QString selected = "wlSelectSignalSelectedSignalTree";
    const QStringList moves{
        "+DQ/Ch1/U2/DQ10|DQ(Ch0(U2(DQ2)) Ch1=(U2=(DQ10)))|"
        "DQ(Ch0(U1(DQ2 DQ10) U2(DQ10 DQ17)) Ch1(U1(DQ2 DQ10) U2(DQ2 DQ17)))|DQ/Ch1/U2/DQ10|"
        "DQ_Ch0_U2_DQ2,DQ_Ch1_U2_DQ10",
        "+DQS/Ch0/U1|DQ(Ch0(U2(DQ2)) Ch1=(U2=(DQ10))) DQS=(Ch0=(U1(DQS0 DQS1)))|"
        "DQS(Ch0(U2(DQS0 DQS1)) Ch1(U1(DQS0 DQS1) U2(DQS0 DQS1)))|DQS/Ch0/U1|"
        "DQS_Ch0_U1_DQS0,DQS_Ch0_U1_DQS1,DQ_Ch0_U2_DQ2,DQ_Ch1_U2_DQ10",
        "-DQ|DQS=(Ch0=(U1(DQS0 DQS1)))|"
        "DQ(Ch0(U1(DQ2 DQ10) U2(DQ10 DQ17 DQ2)) Ch1(U1(DQ2 DQ10) U2(DQ2 DQ17 DQ10)))|DQ|"
        "DQS_Ch0_U1_DQS0,DQS_Ch0_U1_DQS1",
    };
    for (const QString& move : moves) {
        const bool add = move.startsWith('+');
        const QStringList path = move.section('|', 0, 0).mid(1).split('/');
        pages.act(add ? available : selected, path,
                  add ? "wlAddSignalButton" : "wlRemoveSignalButton");
        pages.press("applyButton");
        EXPECT_EQ(QStringList({move.section('|', 0, 0), dump(pages.tree(selected)),
                               dump(pages.tree(available), path.mid(0, 1)),
                               currentPath(pages.tree(add ? selected : available)),
                               canonical(pages.stored("WritelevelingSelectedSignalList"))})
                      .join("|"),
                  move);
    }
    // Without a current item neither button moves anything.
    pages.act(available, {}, "wlAddSignalButton");
    pages.act(selected, {}, "wlRemoveSignalButton");
    pages.press("applyButton");
    EXPECT_EQ(dump(pages.tree(selected)) + "|" +
                  canonical(pages.stored("WritelevelingSelectedSignalList")),
              "DQS=(Ch0=(U1(DQS0 DQS1)))|DQS_Ch0_U1_DQS0,DQS_Ch0_U1_DQS1");
}

namespace {

// What a build leaves in a tree: its items, the current one, those collapsed, column 0's width.
QString viewState(QTreeWidget* tree) {
    QStringList collapsed;
    for (QTreeWidgetItemIterator it(tree); *it; ++it) {
        collapsed << ((*it)->isExpanded() ? "" : (*it)->text(0));
    }
    return dump(tree) + "|" + currentPath(tree) + "|" + collapsed.join("").trimmed() + "|" +
           QString::number(tree->columnWidth(0));
}

}  // namespace

// A tab shown again looks as its last build left it, whatever was collapsed or made current since.
// A signal taken out and put back stands last until the next build sorts it in again, and a
// signal taken out is gone from the measurement tab.
TEST(SignalTrees, ATabShownAgainLooksAsItsBuildLeftIt) {
    Pages pages(busDesign(R"("TabWidgetTabNumber":"4","SelectedSignalList":)"
                          R"("DQ_Ch0_U2_DQ2,DQ_Ch1_U1_DQ10,CK_Ch0_U2_CK0,",)"
                          R"("SelectedMeasurementsListMap":"DQ_Ch1_U1_DQ10 1 ,CK_Ch0_U2_CK0 1 ,",)"
                          R"("SelectedMeasurementsRefSignalListMap":"CK_Ch0_U2_CK0 1 ,")"));
    // The colours of the reference tab's pairs are painted again on the tree as built.
    for (const auto& [tab, name] : {std::pair(2, "selectMeasurementSelectedSignalTree"),
                                    std::pair(3, "selectRefSignalSelectedSignalTree")}) {
        pages.tab(tab);
        QTreeWidget* tree = pages.tree(name);
        const QString built = viewState(tree);
        tree->topLevelItem(0)->setExpanded(false);
        tree->setCurrentItem(tree->topLevelItem(1)->child(1)->child(0)->child(0));
        pages.tab(5 - tab);
        pages.tab(tab);
        EXPECT_EQ(viewState(tree), built) << name;
    }
    // A signal painted red for its Skew without a reference loses the red with its Skew.
    EXPECT_EQ(dump(pages.tree("selectRefSignalSelectedSignalTree")),
              "CK(Ch0(U2(CK0!rr))) DQ(Ch0(U2(DQ2)) Ch1(U1(DQ10!rr)))");
    pages.tab(2);
    pages.act("selectMeasurementSelectedSignalTree", {"DQ", "Ch1", "U1", "DQ10"});
    pages.act(selectedMeasurements, {"Skew"}, "removeMeasurementButton");
    pages.tab(3);
    EXPECT_EQ(dump(pages.tree("selectRefSignalSelectedSignalTree")),
              "CK(Ch0(U2(CK0!rr))) DQ(Ch0(U2(DQ2)) Ch1(U1(DQ10)))");
    QTreeWidget* measured = pages.tree("selectMeasurementSelectedSignalTree");

    pages.tab(1);
    const QString selected = dump(pages.tree(selectedSignals));
    pages.act(selectedSignals, {"CK"}, "removeSignalButton");
    pages.act(availableSignals, {"CK", "Ch0", "U2"}, "addSignalButton");
    EXPECT_NE(dump(pages.tree(selectedSignals)), selected);
    pages.tab(0);
    pages.press("backButton");
    pages.press("nextButton");
    EXPECT_EQ(dump(pages.tree(selectedSignals)), selected);

    // The same number of other signals, then the same signals of an instance renamed.
    pages.act(selectedSignals, {"CK"}, "removeSignalButton");
    pages.act(availableSignals, {"DQ", "Ch0", "U1", "DQ2"}, "addSignalButton");
    pages.tab(2);
    EXPECT_EQ(dump(measured), "DQ(Ch0(U1(DQ2) U2(DQ2)) Ch1(U1(DQ10)))");
    pages.press("applyButton");
    // Opened again on the same design, a tree that reads as before stays, and looks as built.
    QTreeWidget* referenced = pages.tree("selectRefSignalSelectedSignalTree");
    pages.show("X1");
    pages.tab(3);
    const QString reopened = viewState(referenced);
    EXPECT_EQ(reopened.section('|', 0, 0), "DQ(Ch0(U1(DQ2) U2(DQ2)) Ch1(U1(DQ10)))");
    referenced->topLevelItem(0)->setExpanded(false);
    referenced->setCurrentItem(referenced->topLevelItem(0)->child(1));
    pages.show("X1");
    pages.tab(3);
    EXPECT_EQ(viewState(referenced), reopened);
    pages.host().host.design()->findInstance("U2")->name = "M2";
    pages.show("X1");
    pages.tab(2);
    EXPECT_EQ(dump(measured), "DQ(Ch0(U1(DQ2) U2(DQ2[M2])) Ch1(U1(DQ10)))");
}

// A tree built from the records another tree shows is copied from it, but never with the red of
// the reference tab's unreferenced signals.
TEST(SignalTrees, ATreeIsNotCopiedWithTheColoursPaintedOnIt) {
    Pages pages(busDesign(R"("TabWidgetTabNumber":"4","SelectedSignalList":)"
                          R"("DQ_Ch1_U1_DQ10,CK_Ch0_U2_CK0,",)"
                          R"("SelectedMeasurementsListMap":"CK_Ch0_U2_CK0 1 ,")"));
    pages.tab(3);
    EXPECT_EQ(dump(pages.tree("selectRefSignalSelectedSignalTree")),
              "CK(Ch0(U2(CK0!rr))) DQ(Ch1(U1(DQ10)))");
    // Out and back in: the signal tab's tree is no longer as built, the red one is.
    pages.tab(1);
    pages.act(selectedSignals, {"CK"}, "removeSignalButton");
    pages.act(availableSignals, {"CK", "Ch0", "U2"}, "addSignalButton");
    pages.tab(2);
    EXPECT_EQ(dump(pages.tree("selectMeasurementSelectedSignalTree")),
              "CK(Ch0(U2(CK0))) DQ(Ch1(U1(DQ10)))");
}

// A signal added on the signal tab takes the list of its node, channel or type, in that order of
// precedence, but only when its type or its type's channel has an entry; what it takes is copied
// down to the levels below. Codes: 1 Skew, 3 Eye, 4 Waveform. Stored groups | the members after
// removing and adding back DQ_Ch1_U1, whose DQ10 had Skew | the groups after.
TEST(SignalTrees, ASignalAddedLaterTakesItsGroupsListOnlyThroughItsTypeOrChannel) {
    const QString own = "DQ_Ch1_U1_DQ10 1,DQ_Ch1_U1_DQ2";
    const QStringList cases{
        "|" + own + "|",
        "DQ_Ch1_U1 3 ,|" + own + "|DQ_Ch1_U1 3",
        "Ch1 3 ,CK 3 ,DQ_Ch0 3 ,|" + own + "|CK 3,Ch1 3,DQ_Ch0 3",
        "DQ 3 ,|DQ_Ch1_U1_DQ10 3,DQ_Ch1_U1_DQ2 3|DQ 3,DQ_Ch1 3,DQ_Ch1_U1 3",
        "DQ_Ch1 4 ,|DQ_Ch1_U1_DQ10 4,DQ_Ch1_U1_DQ2 4|DQ_Ch1 4,DQ_Ch1_U1 4",
        "DQ 1 ,DQ_Ch1 3 4 ,|DQ_Ch1_U1_DQ10 3 4,DQ_Ch1_U1_DQ2 3 4|DQ 1,DQ_Ch1 3 4,DQ_Ch1_U1 3 4",
        "DQ_Ch1 3 ,DQ_Ch1_U1 4 ,|DQ_Ch1_U1_DQ10 4,DQ_Ch1_U1_DQ2 4|DQ_Ch1 3,DQ_Ch1_U1 4",
        "DQ 3 ,DQ_Ch1_U1 4 ,|DQ_Ch1_U1_DQ10 4,DQ_Ch1_U1_DQ2 4|DQ 3,DQ_Ch1_U1 4",
    };
    for (const QString& c : cases) {
        Pages pages(busDesign(QString(R"("TabWidgetTabNumber":"4",)"
                                      R"("SelectedSignalList":"DQ_Ch1_U1_DQ10,DQ_Ch1_U1_DQ2,",)"
                                      R"("SelectedMeasurementsListMap":"DQ_Ch1_U1_DQ10 1 ,",)"
                                      R"("SelectedGroupMeasurementsListMap":"%1")")
                                  .arg(c.section('|', 0, 0))));
        pages.tab(1);
        pages.act(selectedSignals, {"DQ", "Ch1", "U1"}, "removeSignalButton");
        pages.act(availableSignals, {"DQ", "Ch1", "U1"}, "addSignalButton");
        pages.press("applyButton");
        EXPECT_EQ(c.section('|', 0, 0) + "|" +
                      canonical(pages.stored("SelectedMeasurementsListMap")) + "|" +
                      canonical(pages.stored("SelectedGroupMeasurementsListMap")),
                  c);
    }
}

// Signal picked | measurement added (+) or removed (-) | title key | selected list | a phrase of
// the description shown. The selected list is sorted, its first item current; the available list is
// the rest of the catalogue.
TEST(MeasurementPage, GroupChoicesReachEveryItemBelowAndTheTitleShowsTheItemsKey) {
    Pages pages(busDesign(R"("TabWidgetTabNumber":"4",)"
                          R"("SelectedSignalList":"DQ_Ch0_U2_DQ2,DQ_Ch0_U2_DQ10,CK_Ch0_U2_CK0,")"));
    pages.tab(2);
    const QStringList steps{
        "||CK||contour at target BER",
        "DQ|+Skew|DQ|Skew|contour at target BER",
        "DQ/Ch0||Ch0|Skew|skew between",
        "CK/Ch0||Ch0|Skew|skew between",
        "CK/Ch0/U2/CK0||CK_Ch0_U2_CK0||contour at target BER",
        "DQ/Ch0/U2/DQ10|+Waveform|DQ_Ch0_U2_DQ10|Skew,Waveform|skew between",
        "DQ/Ch0/U2/DQ10|-Skew|DQ_Ch0_U2_DQ10|Waveform|skew between",
        "DQ/Ch0/U2||DQ_Ch0_U2|Skew|skew between",
        "CK/Ch0|-Skew|Ch0||skew between",
        "DQ/Ch0||Ch0||contour at target BER",
        "DQ/Ch0/U2/DQ2||DQ_Ch0_U2_DQ2|Skew|skew between",
    };
    const QStringList catalogue{"BER Contour", "Eye",         "Mask Margin", "Skew",
                                "Slew Rate",   "Strobed Eye", "Waveform"};
    for (const QString& step : steps) {
        const QStringList field = step.split('|');
        if (!field[0].isEmpty()) {
            pages.act("selectMeasurementSelectedSignalTree", field[0].split('/'));
        }
        if (!field[1].isEmpty()) {
            const bool add = field[1].startsWith('+');
            pages.act(add ? availableMeasurements : selectedMeasurements, {field[1].mid(1)},
                      add ? "addMeasurementButton" : "removeMeasurementButton");
        }
        QStringList offered = catalogue;
        for (const QString& name : field[3].split(',', Qt::SkipEmptyParts)) {
            offered.removeAll(name);
        }
        const QString description = pages.text("measurementDescriptionLabel");
        EXPECT_EQ(QStringList({field[0], field[1],
                               pages.title("measurementSelectionGroup")
                                   .remove("Select Measurements for Selected Signal: "),
                               dump(pages.tree(selectedMeasurements)).replace(' ', ','),
                               description.contains(field[4]) ? field[4] : description})
                      .join("|"),
                  step);
        EXPECT_EQ(dump(pages.tree(availableMeasurements)), offered.join(" "));
        EXPECT_EQ(currentPath(pages.tree(selectedMeasurements)), field[3].section(',', 0, 0));
    }
    pages.press("applyButton");
    EXPECT_EQ(canonical(pages.stored("SelectedGroupMeasurementsListMap")), "Ch0,DQ 1,DQ_Ch0_U2 1");
    EXPECT_EQ(canonical(pages.stored("SelectedMeasurementsListMap")),
              "CK_Ch0_U2_CK0,DQ_Ch0_U2_DQ10 4,DQ_Ch0_U2_DQ2 1");
}
