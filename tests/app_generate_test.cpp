// lanetap generate: every variant's probe selects exactly the keys discovery gives its signals,
// and the netlist takes it. Its option checks stand with those of the other commands.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::runProgram;

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
        const bool compliance = !options.contains("--ddr-simulation");
        EXPECT_EQ(block.contains("EnableCompliance=1"), compliance);
        EXPECT_EQ(block.contains("ComplianceMeasMap[1]"), compliance);
    }
}

}  // namespace
