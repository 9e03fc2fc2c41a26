// The design files of examples/: each is described, listed in the README, names only signals
// the design has, and gives the block its description promises.

#include <gtest/gtest.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include "catalogue/ComplianceTables.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::runProgram;

const QString sourceDir = QStringLiteral(LANETAP_SOURCE_DIR);

QString examplePath(const QString& name) {
    return sourceDir + "/examples/" + name;
}

QJsonObject probeParameters(const QString& path) {
    const QJsonObject design = QJsonDocument::fromJson(lanetap_test::readBytes(path)).object();
    for (const QJsonValue& instance : design["instances"].toArray()) {
        if (instance["name"].toString() == "X1") {
            return instance["parameters"].toObject();
        }
    }
    ADD_FAILURE() << path.toStdString() << " has no probe X1";
    return {};
}

struct Block {
    int exitCode;
    QString text;
    QString warnings;
};

Block netlistOf(const QString& name) {
    const ProgramRun run = runProgram({"netlist", examplePath(name), "--probe", "X1"});
    return {run.exitCode, QString::fromUtf8(run.out), QString::fromUtf8(run.err)};
}

TEST(Examples, EveryFileIsDescribedListedAndNamesOnlySignalsOfItsDesign) {
    const QStringList files = QDir(sourceDir + "/examples").entryList({"*.json"}, QDir::Files);
    for (const QString& expected :
         QStringList{"ddr4_x8_write.json", "ddr4_x4_dqs_numbering.json", "lpddr4_two_channel.json",
                     "ebd_board_nodes.json", "die_mode.json", "ddr_read_rx_output.json",
                     "half_connected_pairs.json"}) {
        EXPECT_TRUE(files.contains(expected)) << expected.toStdString();
    }
    const QString readme = QString::fromUtf8(lanetap_test::readBytes(sourceDir + "/README.md"));
    for (const QString& file : files) {
        const std::string label = file.toStdString();
        const QString path = examplePath(file);
        const QJsonObject design = QJsonDocument::fromJson(lanetap_test::readBytes(path)).object();
        EXPECT_GT(design["description"].toString().size(), 80) << label;
        EXPECT_TRUE(readme.contains("examples/" + file)) << label << " is not in README.md";

        const ProgramRun signalRun = runProgram({"signals", path, "--json"});
        ASSERT_EQ(signalRun.exitCode, 0) << label << ": " << signalRun.err.toStdString();
        QSet<QString> keys;
        for (const QJsonValue& record :
             QJsonDocument::fromJson(signalRun.out)["signals"].toArray()) {
            keys.insert(record["key"].toString());
        }
        const QJsonObject parameters = probeParameters(path);
        QStringList named =
            parameters["SelectedSignalList"].toString().split(',', Qt::SkipEmptyParts);
        for (const QString& record :
             parameters["SelectedMeasurementsRefSignalListMap"].toString().split(
                 ',', Qt::SkipEmptyParts)) {
            named << record.split(' ', Qt::SkipEmptyParts).mid(2);
        }
        EXPECT_FALSE(named.isEmpty()) << label;
        for (const QString& key : named) {
            EXPECT_TRUE(keys.contains(key)) << label << ": " << key.toStdString();
        }

        const Block block = netlistOf(file);
        EXPECT_EQ(block.exitCode, 0) << label << ": " << block.warnings.toStdString();
        EXPECT_TRUE(block.text.contains("ComponentWithNodes:X1 ")) << label;
        EXPECT_TRUE(block.text.contains("NodeData[1] = ")) << label;
    }
}

TEST(Examples, EachBlockShowsWhatItsExampleIsAbout) {
    const Block x4 = netlistOf("ddr4_x4_dqs_numbering.json");
    EXPECT_TRUE(x4.warnings.isEmpty()) << x4.warnings.toStdString();
    EXPECT_TRUE(x4.text.contains("list(\"DQ_Ch0_U3_DQ1\", \"DQS_Ch0_U3_DQS0\", \"Skew\")"));

    const Block lpddr4 = netlistOf("lpddr4_two_channel.json");
    EXPECT_TRUE(lpddr4.warnings.isEmpty()) << lpddr4.warnings.toStdString();
    EXPECT_TRUE(lpddr4.text.contains(" Settings_chkLPDDR4=1 "));
    EXPECT_TRUE(lpddr4.text.contains(" Settings_DQSSignalType=\"burst\" "));
    EXPECT_TRUE(lpddr4.text.contains("list(\"DQ_Ch1_U2_DQ0\", \"DQS_Ch1_U2_DQS0\", \"Skew\")"));

    const Block ebd = netlistOf("ebd_board_nodes.json");
    EXPECT_TRUE(ebd.warnings.isEmpty()) << ebd.warnings.toStdString();
    EXPECT_TRUE(ebd.text.contains(" n_dq0_EBDNode_0 "));
    EXPECT_TRUE(ebd.text.contains(" n_dqs_t_EBDNode_0 n_dqs_c "));
    EXPECT_TRUE(ebd.text.contains("list(\"CK_Ch0_J1.D2_CK0\", \"0\", \"CK\", \"J1.D2\", "));

    const Block die = netlistOf("die_mode.json");
    EXPECT_TRUE(die.warnings.isEmpty()) << die.warnings.toStdString();
    EXPECT_TRUE(die.text.contains(" n_dqs_t_Die n_dqs_t_Die_Inv "));
    EXPECT_TRUE(
        die.text.contains("list(\"DQ_Ch0_U2_Die_DQ0\", \"DQS_Ch0_U2_Die_DQS0\", \"Skew\")"));

    const Block ddr = netlistOf("ddr_read_rx_output.json");
    EXPECT_TRUE(ddr.warnings.isEmpty()) << ddr.warnings.toStdString();
    EXPECT_TRUE(ddr.text.contains(" Settings_ReadWriteOperation=\"read\" EnableCompliance=0 "));
    EXPECT_FALSE(ddr.text.contains("NodeRefMap"));
    EXPECT_FALSE(ddr.text.contains("ComplianceMeasMap"));
    EXPECT_TRUE(ddr.text.contains(" n_dq0_DQRxOut "));
    EXPECT_TRUE(
        ddr.text.contains("list(\"DQS_Ch0_U1_Rx.Output_DQS0\", \"0\", \"DQS\", \"U1\", "
                          "\"Ch0\", \"Rx.Output\", \"s\")"));

    const Block half = netlistOf("half_connected_pairs.json");
    EXPECT_EQ(half.warnings,
              "warning: Only one node of differential signal 'DQS_Ch0_U2_DQS0' for instance U2 is "
              "connected. Ignoring it.\n"
              "warning: 'n' node of differential signal 'DQS_Ch0_U2_DQS1', connected for "
              "instances 'U2', is absent.\n");
    EXPECT_TRUE(half.text.contains("ComponentWithNodes:X1 n_dq0 n_dqs1_t Type=") ||
                half.text.contains("ComponentWithNodes:X1 n_dqs1_t n_dq0 Type="));
}

}  // namespace
