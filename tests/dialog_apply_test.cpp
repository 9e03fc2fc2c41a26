// The same choices made in the dialog and written as a setup document: `lanetap apply` stores what
// the dialog's Finish stores.

#include <gtest/gtest.h>

#include <QCheckBox>

#include "parameters/StoredKeys.h"
#include "support/SelectionPages.h"

using namespace lanetap_test;

namespace {

// KEY=VALUE lines of `lanetap get` as a hash.
QHash<QString, QString> storedOf(const QString& design) {
    QHash<QString, QString> values;
    const ProgramRun get = runProgram({"get", design, "--probe", "X1"});
    for (const QString& line : QString::fromUtf8(get.out).split('\n', Qt::SkipEmptyParts)) {
        values.insert(line.section('=', 0, 0), line.section('=', 1));
    }
    return values;
}

}  // namespace

TEST(ApplyAndDialog, StoreTheSameChoicesAlike) {
    Pages pages(busDesign());
    // Both roads start from the setup as the dialog's opening stored it.
    pages.host().host.saveDesign();
    const QString applied = pages.host().workspace.write(
        "applied.json", readBytes(pages.host().workspace.path("design.json")));

    pages.press("nextButton");
    pages.act("selectSignalAvailableSignalTree", {"DQ", "Ch0", "U1"}, "addSignalButton");
    pages.act("selectSignalAvailableSignalTree", {"DQS", "Ch0", "U1", "DQS1"}, "addSignalButton");
    pages.press("nextButton");
    const auto measure = [&pages](const QStringList& signal, const QStringList& names) {
        pages.act("selectMeasurementSelectedSignalTree", signal);
        for (const QString& name : names) {
            pages.act("selectMeasurementAvailableMeasurementTree", {name}, "addMeasurementButton");
        }
    };
    measure({"DQ", "Ch0", "U1", "DQ2"}, {"Eye", "Skew"});
    measure({"DQ", "Ch0", "U1", "DQ10"}, {"Skew"});
    measure({"DQS", "Ch0", "U1", "DQS1"}, {"Slew Rate"});
    pages.press("nextButton");
    // DQ10's skew takes the clock beside its automatic strobe; DQ2's the other channel's strobe
    // instead of its own.
    pages.act("selectRefSignalSelectedSignalTree", {"DQ", "Ch0", "U1", "DQ10"});
    pages.act("selectRefSignalSelectedMeasurementTree", {"Skew"});
    pages.act("selectRefSignalAvailableRefSignalTree", {"CK", "Ch0", "U1", "CK0"},
              "addRefSignalButton");
    pages.act("selectRefSignalSelectedSignalTree", {"DQ", "Ch0", "U1", "DQ2"});
    pages.act("selectRefSignalSelectedMeasurementTree", {"Skew"});
    pages.act("selectRefSignalSelectedRefSignalTree", {"DQS", "Ch0", "U1", "DQS0"},
              "removeRefSignalButton");
    pages.act("selectRefSignalAvailableRefSignalTree", {"DQS", "Ch1", "U1", "DQS0"},
              "addRefSignalButton");
    pages.press("nextButton");
    pages.find<QCheckBox>("enableComplianceCheckBox")->setChecked(true);
    pages.act("selectComplianceSelectedSignalTree", {"CK"});
    pages.act("selectComplianceAvailableMeasurementTree", {"VSEH(CK)"}, "addComplianceButton");
    pages.act("selectComplianceSelectedSignalTree", {"DQ"});
    QTreeWidget* available = pages.tree("selectComplianceAvailableMeasurementTree");
    ASSERT_GT(available->topLevelItemCount(), 0);
    const QString dqTest = available->topLevelItem(0)->text(0);
    pages.act("selectComplianceAvailableMeasurementTree", {dqTest}, "addComplianceButton");
    pages.press("finishButton");

    const QString document = QString(R"j({
        "signals": ["DQ_Ch0_U1_DQ*", "DQS_Ch0_U1_DQS1"],
        "measurements": {"DQ_Ch0_U1_DQ2": ["Eye", "Skew"], "DQ_Ch0_U1_DQ10": ["Skew"],
                         "DQS_Ch0_U1_DQS1": ["Slew Rate"]},
        "references": {"DQ_Ch0_U1_DQ10": {"Skew": ["auto", "CK_Ch0_U1_CK0"]},
                       "DQ_Ch0_U1_DQ2": {"Skew": ["DQS_Ch1_U1_DQS0"]}},
        "compliance": {"enabled": true, "tests": {"CK": ["VSEH(CK)"], "DQ": ["%1"]}}})j")
                                 .arg(dqTest);
    const ProgramRun run =
        runProgram({"apply", applied, "--probe", "X1",
                    pages.host().workspace.write("setup.json", document.toUtf8())});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QHash<QString, QString> byApply = storedOf(applied);
    for (const LaneTapUI::StoredKey& key : LaneTapUI::storedKeys()) {
        if (key.key == "TabWidgetTabNumber") {
            continue;  // how far the wizard was walked
        }
        const int fixed = key.key == "SelectedMeasurementsRefSignalListMap" ? 2 : 1;
        EXPECT_EQ(canonical(byApply.value(key.key), fixed), canonical(pages.stored(key.key), fixed))
            << key.key.toStdString();
    }
    EXPECT_TRUE(pages.stored("SelectedMeasurementsRefSignalListMap").contains("DQS_Ch1_U1_DQS0"));
}

// What the dialog has saved holds together: check finds nothing above a note in it.
TEST(ApplyAndDialog, CheckFindsNothingAboveANoteInWhatTheDialogSaved) {
    const QList<QStringList> variants{{}, {"--dram", "lpddr4", "--read"}, {"--width", "x4"}};
    QList<QByteArray> designs{readBytes(LANETAP_SOURCE_DIR "/examples/ddr4_x8_write.json"),
                              readBytes(LANETAP_SOURCE_DIR "/examples/lpddr4_two_channel.json")};
    for (const QStringList& options : variants) {
        designs << runProgram(QStringList{"generate"} + options).out;
    }
    for (const QByteArray& design : designs) {
        OpenDialog opened(design);
        ASSERT_NE(opened.dialog(), nullptr);
        opened.host().host.saveDesign();
        const QString file = opened.host().workspace.path("design.json");
        const ProgramRun run = runProgram({"check", file, "--probe", "X1"});
        EXPECT_EQ(run.exitCode, 0) << run.out.toStdString();
    }
}
