// lanetap signals: the discovered signals of a design, their keys, nodes and order; and lanetap
// generate, whose every variant's probe selects exactly the keys discovery gives its signals, and
// the netlist takes it. Its option checks stand with those of the other commands.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <clocale>

#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::runProgram;

const QString examples = QStringLiteral(LANETAP_SOURCE_DIR "/examples/");

QHash<QString, QJsonObject> signalsByKey(const ProgramRun& run) {
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    QHash<QString, QJsonObject> byKey;
    for (const QJsonValue& record : QJsonDocument::fromJson(run.out)["signals"].toArray()) {
        byKey.insert(record["key"].toString(), record.toObject());
    }
    return byKey;
}

TEST(SignalsCommand, ListsEachSignalOfTheWorkedExampleUnderItsKey) {
    // Controller U1 and memory U2 each bring DQ0, the strobe pair and the clock pair, each on its
    // own designator: six signals, by type, channel, node and index.
    const QString design = examples + "ddr4_x8_write.json";
    const ProgramRun text = runProgram({"signals", design});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_EQ(
        text.out.toStdString(),
        R"(KEY              TYPE  INDEX  CHANNEL  DESIGNATOR  NODE  POLARITY  INSTANCES                         MODELS
CK_Ch0_U1_CK0    CK    0      Ch0      U1          pin   t         U1 CK_t0=n_ck_p CK_c0=n_ck_n      DDR_Controller:U1
CK_Ch0_U2_CK0    CK    0      Ch0      U2          pin   t         U2 CK_t0=n_ck_p CK_c0=n_ck_n      DDR_Memory:U2
DQ_Ch0_U1_DQ0    DQ    0      Ch0      U1          pin   s         U1 DQ0=n_dq0                      DDR_Controller:U1
DQ_Ch0_U2_DQ0    DQ    0      Ch0      U2          pin   s         U2 DQ0=n_dq0                      DDR_Memory:U2
DQS_Ch0_U1_DQS0  DQS   0      Ch0      U1          pin   t         U1 DQS_t0=n_dqs_p DQS_c0=n_dqs_n  DDR_Controller:U1
DQS_Ch0_U2_DQS0  DQS   0      Ch0      U2          pin   t         U2 DQS_t0=n_dqs_p DQS_c0=n_dqs_n  DDR_Memory:U2
)");
    const QHash<QString, QJsonObject> byKey =
        signalsByKey(runProgram({"signals", design, "--json", "--probe", "X1"}));
    EXPECT_EQ(byKey.size(), 6);
    EXPECT_EQ(byKey.value("DQS_Ch0_U2_DQS0"), QJsonDocument::fromJson(R"({"channel": "Ch0",
        "designator": "U2", "index": "0", "key": "DQS_Ch0_U2_DQS0", "models": {"DDR_Memory": ["U2"]},
        "instances": [{"cell": "DDR_Memory", "name": "U2", "single": false,
                       "negative": {"net": "n_dqs_n", "port": "DQS_c0"},
                       "positive": {"net": "n_dqs_p", "port": "DQS_t0"}}],
        "nodeLabel": "", "nodeName": "U2", "pin": "DQS_t0", "polarity": "t", "signalId": "DQS_t0",
        "type": "DQS"})")
                                                  .object());
    EXPECT_EQ(byKey.value("DQ_Ch0_U1_DQ0")["instances"][0]["negative"].toObject(),
              (QJsonObject{{"port", ""}, {"net", ""}}));
    EXPECT_TRUE(byKey.value("DQ_Ch0_U1_DQ0")["instances"][0]["single"].toBool());
}

TEST(GenerateCommand, EveryVariantSelectsWhatDiscoveryFindsAndTheNetlistWatchesIt) {
    // clang-format off
    const QList<QStringList> variants{
        {}, {"--dram", "lpddr4", "--channels", "2", "--devices", "2"}, {"--ddr-simulation", "--read", "--devices", "2"},
        {"--width", "x4", "--devices", "3", "--ebd-nodes", "2", "--die"},
        {"--dram", "lpddr4", "--width", "x8", "--ebd-nodes", "1", "--die", "--ddr-simulation"},
        {"--width", "x16", "--read", "--channels", "2", "--dram", "DDR4"}};
    // clang-format on
    lanetap_test::Workspace workspace;
    for (const QStringList& options : variants) {
        SCOPED_TRACE(options.join(' ').toStdString());
        const ProgramRun run = runProgram(QStringList{"generate"} + options);
        ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
        const QString path = workspace.write("design.json", run.out);
        QJsonObject probe;
        for (const QJsonValue& instance : QJsonDocument::fromJson(run.out)["instances"].toArray()) {
            probe = instance["name"] == "X1" ? instance["parameters"].toObject() : probe;
        }
        const auto items = [&](const char* key) {
            return probe[key].toString().split(',', Qt::SkipEmptyParts);
        };
        const QStringList selected = items("SelectedSignalList");
        QSet<QString> discovered;
        const ProgramRun signalList = runProgram({"signals", path, "--json"});
        for (const QJsonValue& record :
             QJsonDocument::fromJson(signalList.out)["signals"].toArray()) {
            discovered.insert(record["key"].toString());
        }
        EXPECT_EQ(QSet<QString>(selected.begin(), selected.end()), discovered);
        EXPECT_EQ(discovered.size(), selected.size()) << "a key is listed twice";
        // A DDR4 part's address pins are A0 to A13; A14 to A16 go as WE_n, CAS_n and RAS_n.
        const QStringList address =
            QStringList(discovered.values()).filter(QRegularExpression("^A_Ch0_U1_A\\d+$"));
        if (!options.contains("lpddr4")) {
            EXPECT_EQ(address.size(), 14);
            EXPECT_TRUE(address.contains("A_Ch0_U1_A0") && address.contains("A_Ch0_U1_A13"));
        }
        // Every reference, of a Skew, is a signal of the design.
        for (const QString& record : items("SelectedMeasurementsRefSignalListMap")) {
            const QStringList parts = record.split(' ', Qt::SkipEmptyParts);
            ASSERT_EQ(parts.size(), 3) << record.toStdString();
            EXPECT_EQ(parts[1], "1");
            EXPECT_TRUE(discovered.contains(parts[2])) << record.toStdString();
        }
        const ProgramRun netlist = runProgram({"netlist", path, "--probe", "X1"});
        ASSERT_EQ(netlist.exitCode, 0) << netlist.err.toStdString();
        EXPECT_TRUE(netlist.err.isEmpty()) << netlist.err.toStdString();
        const QString block = QString::fromUtf8(netlist.out);
        for (const QString& key : selected) {
            EXPECT_TRUE(block.contains(QString("= list(\"%1\", ").arg(key))) << key.toStdString();
        }
        EXPECT_EQ(runProgram({"check", path, "--probe", "X1"}).exitCode, 0);
        const bool compliance = !options.contains("--ddr-simulation");
        EXPECT_EQ(block.contains("EnableCompliance=1"), compliance);
        EXPECT_EQ(QJsonDocument::fromJson(run.out)["description"].toString().contains("board"),
                  options.contains("--ebd-nodes"));
        EXPECT_EQ(block.contains("ComplianceMeasMap[1]"), compliance);
        EXPECT_EQ(block.contains("ReadWriteOperation=\"read\""), options.contains("--read"));
        EXPECT_EQ(run.out.contains("IbisPinSelPort"), options.contains("--ebd-nodes"));
    }
}

// Every run gives the same bytes, whatever seed Qt's hashes are given and whatever the locale:
// numbers keep their decimal point under a decimal comma, in the dialog, in what it stores and
// in the block.
TEST(Reproducibility, EveryCommandGivesTheSameBytesUnderAnySeedAndLocale) {
    ASSERT_TRUE(std::setlocale(LC_ALL, "de_DE.UTF-8")) << "make deps generates de_DE.UTF-8";
    std::setlocale(LC_ALL, "C");
    QByteArray first;
    for (const auto& [variable, value] : {std::pair("QT_HASH_SEED", ""),
                                          {"QT_HASH_SEED", "1"},
                                          {"QT_HASH_SEED", "12345"},
                                          {"LC_ALL", "de_DE.UTF-8"}}) {
        lanetap_test::Workspace workspace;
        const QString design = workspace.write(
            "design.json", runProgram({"generate", "--channels", "2", "--devices", "3"}).out);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(variable, value);
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("XDG_RUNTIME_DIR", workspace.path(""));
        QByteArray output;
        for (const QStringList& command :
             {QStringList{"setup", design, "--probe", "X1", "--screenshot",
                          workspace.path("tab.png")},
              {"get", design, "--probe", "X1"},
              {"netlist", design, "--probe", "X1"},
              {"signals", design, "--json"},
              {"check", examples + "stale_setup.json", "--probe", "X1"},
              {"catalogue", "--json"}}) {
            output += runProgram(command, environment).out;
        }
        first = first.isEmpty() ? output : first;
        EXPECT_TRUE(output == first) << variable << "=" << value;
    }
    EXPECT_TRUE(first.contains("targetBER=1e-"));
}

}  // namespace
