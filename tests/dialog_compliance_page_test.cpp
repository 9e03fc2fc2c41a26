// The "Select Compliance Measurements" tab: the signal types it offers per cycle, what it lists,
// titles and describes, how changes of the setup page treat the choice, and what Apply stores.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>

#include "support/SelectionPages.h"

using namespace lanetap_test;

namespace {

const char* const types = "selectComplianceSelectedSignalTree";
const char* const available = "selectComplianceAvailableMeasurementTree";
const char* const selected = "selectComplianceSelectedMeasurementTree";
const QString onCompliance = R"("TabWidgetTabNumber":"4","EnableComplianceMeasurements":"1")";

// Sets a box of the setup page, if any, and enters the compliance tab again, which rebuilds it.
void setAndEnter(Pages& pages, const char* box = nullptr, const QString& text = {}) {
    if (box) {
        pages.find<QComboBox>(box)->setCurrentText(text);
    }
    pages.tab(0);
    pages.tab(4);
}

// The selected tests of each type, as picking the type shows them.
QString selectedOf(Pages& pages, const QStringList& typeNames) {
    QStringList lists;
    for (const QString& type : typeNames) {
        pages.act(types, {});
        pages.act(types, {type});
        lists << dump(pages.tree(selected));
    }
    return lists.join("|");
}

}  // namespace

// The types whose receiving side has its model in the design: data and strobe arrive at the
// controller when reading, everything at the memory when writing. Types | title | tests offered.
TEST(CompliancePage, OffersTheTypesWhoseReceivingModelIsPresent) {
    const QString title =
        "|Select Measurements for Selected Signal: %1 for DDR4 Continuous %2 mode|";
    const QString reading =
        "CK[DDR_Memory] DQ[DDR_Controller] DQS[DDR_Controller]" + title.arg("CK", "Read") + "yes";
    const QStringList cases[] = {
        {busDesign(onCompliance), reading,
         "CK[DDR_Memory] DQ[DDR_Memory] DQS[DDR_Memory]" + title.arg("CK", "Write") + "yes"},
        {busDesign(onCompliance, {"CK_t0", "CK_c0"}), reading,
         "CK[DDR_Memory]" + title.arg("CK", "Write") + "yes"},
        {busDesign(onCompliance, {}, false),
         "DQ[DDR_Controller] DQS[DDR_Controller]" + title.arg("DQ", "Read") + "yes",
         "|Select Signal ID/Signal Group from Selected Signal Tree|no"},
    };
    for (const QStringList& c : cases) {
        Pages pages(c[0].toUtf8());
        for (int mode = 0; mode < 2; ++mode) {
            setAndEnter(pages, "modeOfOperationBox", mode ? "Write" : "Read");
            EXPECT_EQ(dump(pages.tree(types)) + "|" + pages.title("complianceMeasurementsGroup") +
                          (pages.tree(available)->topLevelItemCount() > 0 ? "|yes" : "|no"),
                      c[1 + mode]);
        }
    }
}

// What the page lists, titles and describes under the settings; a change of cycle or strobe mode
// empties the data and strobe choices, keys kept, while the clock's choice stays with every id of
// its name. Compliance turned off only switches the group off; the PDF widgets follow their box.
TEST(CompliancePage, ListsTheTestsOfTheSettingsAndACycleChangeEmptiesDataChoices) {
    Pages pages(busDesign(onCompliance));
    setAndEnter(pages);
    pages.act(types, {"DQ"});
    // DDR4 data tests of the read cycle that a continuous strobe allows, sorted, each name once;
    // with none selected the first is described.
    EXPECT_EQ(dump(pages.tree(available)) + "|" + pages.text("complianceDescriptionLabel"),
              "Overshoot amplitude (DQ) Overshoot area (Max Abs Level) (DQ) Overshoot area (VDDQ "
              "to Max Abs Level) (DQ) SRQseF SRQseR Undershoot amplitude (DQ) Undershoot area "
              "(Min Abs Level) (DQ) Undershoot area (VSSQ to Min Abs Level) (DQ) VOH(AC) VOH(DC) "
              "VOL(AC) VOL(DC) tDQSQ tDQSQ_DBI tQH tQH_DBI|Description:\nPeak amplitude of AC "
              "overshoot");
    // A bursting strobe adds the tests that need one; a type picked again describes its first
    // selected test.
    setAndEnter(pages, "dqsSignalModeBox", "Burst");
    pages.act(types, {"DQ"});
    pages.act(available, {"tDQSQ"}, "addComplianceButton");
    EXPECT_EQ(pages.title("complianceMeasurementsGroup"),
              "Select Measurements for Selected Signal: DQ for DDR4 Burst Read mode");
    EXPECT_TRUE(dump(pages.tree(available)).contains("tHZDQ"));
    const QString dq = selectedOf(pages, {"DQ"});
    EXPECT_EQ(dq + "|" + pages.text("complianceDescriptionLabel"),
              "tDQSQ|Description:\nDQS-DQ skew for DQS and associated DQ signals.\nMeasurement "
              "dependent on corresponding DQS and CK signal.");
    pages.act(selected, {"tDQSQ"}, "removeComplianceButton");
    EXPECT_EQ(selectedOf(pages, {"DQ"}), "");

    setAndEnter(pages, "dqsSignalModeBox", "Continuous");
    for (const QString type : {"DQ", "DQS", "CK"}) {
        pages.act(types, {type});
        pages.act(available, {type == "CK" ? "VSEH(CK)" : "Overshoot amplitude (" + type + ")"},
                  "addComplianceButton");
    }
    pages.find<QComboBox>("modeOfOperationBox")->setCurrentText("Write");
    setAndEnter(pages, "modeOfOperationBox", "Read");
    EXPECT_EQ(selectedOf(pages, {"DQ", "DQS", "CK"}), "||VSEH(CK)");
    pages.act(types, {"DQ"});
    pages.act(available, {"Overshoot amplitude (DQ)"}, "addComplianceButton");
    setAndEnter(pages, "dqsSignalModeBox", "Burst");
    EXPECT_EQ(selectedOf(pages, {"DQ", "CK"}), "|VSEH(CK)");

    for (bool on : {true, false}) {
        pages.find<QCheckBox>("saveToPDFCheckBox")->setChecked(on);
        EXPECT_EQ(pages.find<QWidget>("pdfDirPath")->isEnabled(), on);
        EXPECT_EQ(pages.find<QWidget>("browsePDFDirButton")->isEnabled(), on);
        EXPECT_TRUE(pages.find<QWidget>("enableScreenshots")->isEnabled());
        pages.find<QCheckBox>("enableComplianceCheckBox")->setChecked(on);
        EXPECT_EQ(pages.find<QWidget>("complianceGroup")->isEnabled(), on);
    }
    pages.press("applyButton");
    EXPECT_EQ(canonical(pages.stored("SelectedGroupComplianceListMap")) + "|" +
                  pages.stored("EnableComplianceMeasurements"),
              "CK 10333 10337,DQ,DQS|0");
}
