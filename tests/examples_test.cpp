// The design files of examples/, through runs of the lanetap program: each is listed in the
// README and gives the block and the warnings that its description promises.

#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>

#include "netlist/BlockReader.h"
#include "support/BlockSettingNames.h"
#include "support/TestSupport.h"

namespace {

struct Example {
    const char* file;
    // Facts of its block: "Nn Mm Rr Cc" for the number of lines of each section, lines of
    // NetlistBlock::sortedLines(), "S name=value" for a setting, "W text" for every line that
    // the program writes to its error output, and "P text" for every part of the block that its
    // reader cannot read.
    QStringList facts;
};

TEST(Examples, EachDesignGivesTheBlockItDescribes) {
    const std::vector<Example> examples = {
        {"ddr4_x8_write.json",
         {"N5 M2 R5 C1", "M DQ_Ch0_U2_DQ0 DQS_Ch0_U2_DQS0 Skew", "C DQ 103000 103003",
          "S Settings_ReadWriteOperation=\"write\"", "S DataRate=3200 Mbps"}},
        {"ddr4_x4_dqs_numbering.json",
         {"N16 M4 R28 C2", "M DQ_Ch0_U3_DQ1 DQS_Ch0_U3_DQS0 Skew",
          "R DQS_Ch0_U3_DQS0 DQ_Ch0_U3_DQ3", "C DQS 10382 30107 30108"}},
        {"lpddr4_two_channel.json",
         {"N22 M5 R24 C3", "M DQ_Ch1_U2_DQ0 DQS_Ch1_U2_DQS0 Skew",
          "R CKE_Ch1_U2_CKE0 CK_Ch1_U2_CK0", "C A 50351 50361", "S Settings_chkLPDDR4=1",
          "S Settings_DQSSignalType=\"burst\""}},
        {"ebd_board_nodes.json",
         {"N14 M3 R17 C1", "N n_dq0_EBDNode_0 DQ_Ch0_J1.D1_DQ0 s",
          "N n_ck_t_EBDNode_1 CK_Ch0_J1.D2_CK0 p", "N n_ck_c CK_Ch0_J1.D2_CK0 n"}},
        {"die_mode.json",
         {"N14 M4 R18 C2", "N n_dqs_t_Die_Inv DQS_Ch0_U2_Die_DQS0 n",
          "M DQ_Ch0_U2_Die_DQ0 DQS_Ch0_U2_Die_DQS0 Skew", "R DQ_Ch0_U2_Die_DQ0 DQS_Ch0_U2_DQS0"}},
        {"ddr_read_rx_output.json",
         {"N4 M4 R0 C0", "N n_dq0_DQRxOut DQ_Ch0_U1_Rx.Output_DQ0 s",
          "N n_dqs_t_DQRxOut DQS_Ch0_U1_Rx.Output_DQS0 s",
          "M DQ_Ch0_U1_Rx.Output_DQ0 Unreferenced Eye MaskMargin BERContour",
          "S Settings_ReadWriteOperation=\"read\"", "S EnableCompliance=0"}},
        {"stale_setup.json",
         {"N3 M1 R0 C0", "M DQ_Ch0_U2_DQ0 Unreferenced Eye", "S TargetBER=abc",
          "W warning: Only one node of differential signal 'DQS_Ch0_U2_DQS1' for instance U2 is "
          "connected. Ignoring it.",
          "W warning: Only one node of differential signal 'DQS_Ch0_U2_Rx.Output_DQS1' for "
          "instance U2 is connected. Ignoring it.",
          "P NEBProperties_ReportPath: the value /tmp/compliance results holds white space"}},
        {"ddr4_byte_lane.json",
         {"N74 M86 R42 C6", "M DQ_Ch0_U2_DQ3 DQS_Ch0_U2_DQS0 Skew",
          "S Settings_ReadWriteOperation=\"write\""}},
        {"half_connected_pairs.json",
         {"N2 M2 R0 C0", "N n_dqs1_t DQS_Ch0_U2_DQS1 p",
          "W warning: Only one node of differential signal 'DQS_Ch0_U2_DQS0' for instance U2 is "
          "connected. Ignoring it.",
          "W warning: 'n' node of differential signal 'DQS_Ch0_U2_DQS1', connected for instances "
          "'U2', is absent."}},
    };
    const QString folder = LANETAP_SOURCE_DIR "/examples/";
    // Setup documents sit beside the designs; they are applied elsewhere.
    QStringList files = QDir(folder)
                            .entryList({"*.json"}, QDir::Files)
                            .filter(QRegularExpression("(?<!\\.setup)\\.json$"));
    const QString readme = lanetap_test::readBytes(LANETAP_SOURCE_DIR "/README.md");
    for (const Example& example : examples) {
        SCOPED_TRACE(example.file);
        EXPECT_TRUE(files.removeOne(example.file));
        EXPECT_TRUE(readme.contains(QString("examples/") + example.file));
        const QString path = folder + example.file;

        const lanetap_test::ProgramRun run =
            lanetap_test::runProgram({"netlist", path, "--probe", "X1"});
        EXPECT_EQ(run.exitCode, 0);
        const LaneTapUI::NetlistBlock block = LaneTapUI::readBlock(QString::fromUtf8(run.out));
        QStringList facts = block.sortedLines();
        const auto count = [](const QList<QStringList>& lines) {
            return QString::number(lines.size());
        };
        facts << "N" + count(block.nodeData) + " M" + count(block.nodeMeasMap) + " R" +
                     count(block.nodeRefMap) + " C" + count(block.complianceMeasMap);
        for (const QString& name : lanetap_test::blockSettingNames()) {
            facts << "S " + name + "=" + block.settings.value(name);
        }
        for (const QString& line : QString::fromUtf8(run.err).split('\n', Qt::SkipEmptyParts)) {
            facts << "W " + line;
        }
        for (const QString& problem : block.problemTexts()) {
            facts << "P " + problem;
        }
        for (const QString& fact : example.facts) {
            EXPECT_TRUE(facts.contains(fact)) << fact.toStdString();
        }
        // Warnings and what the block's reader cannot read come exactly as listed.
        const QRegularExpression exact("^[WP] ");
        EXPECT_EQ(facts.filter(exact).join('\n').toStdString(),
                  example.facts.filter(exact).join('\n').toStdString());
    }
    EXPECT_TRUE(files.isEmpty()) << files.join(' ').toStdString() << " not in the table";
}

}  // namespace
