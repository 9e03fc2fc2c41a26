// lanetap generate: the bus it builds, the probe's selection against what discovery finds, the
// netlist of every variant, and its option checks.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSet>
#include <QStringList>

#include "catalogue/ComplianceTables.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::runProgram;
using lanetap_test::Workspace;

const QList<QStringList> variants{
    {},
    {"--dram", "lpddr4", "--channels", "2", "--devices", "2"},
    {"--width", "x4", "--devices", "3", "--ebd-nodes", "2", "--die"},
    {"--ddr-simulation", "--read", "--devices", "2"},
    {"--dram", "lpddr4", "--width", "x8", "--ebd-nodes", "1", "--die", "--ddr-simulation"},
    {"--width", "x16", "--read", "--channels", "2", "--dram", "DDR4"},
};

struct Generated {
    QString path;
    QJsonObject design;
};

Generated generate(const Workspace& workspace, const QStringList& options) {
    const ProgramRun run = runProgram(QStringList{"generate"} + options);
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.err.isEmpty()) << run.err.toStdString();
    const QString name = QString("design%1.json").arg(workspace.files().size());
    return {workspace.write(name, run.out), QJsonDocument::fromJson(run.out).object()};
}

const QJsonObject instanceNamed(const QJsonObject& design, const QString& name) {
    for (const QJsonValue& instance : design["instances"].toArray()) {
        if (instance["name"].toString() == name) {
            return instance.toObject();
        }
    }
    ADD_FAILURE() << "no instance " << name.toStdString();
    return {};
}

QString probeParameter(const QJsonObject& design, const QString& key) {
    return instanceNamed(design, "X1")["parameters"][key].toString();
}

QStringList listItems(const QString& list) {
    return list.split(',', Qt::SkipEmptyParts);
}

QSet<QString> discoveredKeys(const QString& path) {
    const ProgramRun run = runProgram({"signals", path, "--json"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    QSet<QString> keys;
    for (const QJsonValue& record : QJsonDocument::fromJson(run.out)["signals"].toArray()) {
        keys.insert(record["key"].toString());
    }
    return keys;
}

TEST(GenerateCommand, SelectsExactlyTheKeysDiscoveryGivesTheSignals) {
    Workspace workspace;
    for (const QStringList& options : variants) {
        const std::string label = options.join(' ').toStdString();
        const Generated generated = generate(workspace, options);
        const QStringList selected =
            listItems(probeParameter(generated.design, "SelectedSignalList"));
        const QSet<QString> selectedSet(selected.begin(), selected.end());
        EXPECT_EQ(selectedSet.size(), selected.size()) << label << ": a key is listed twice";
        const QSet<QString> discovered = discoveredKeys(generated.path);
        EXPECT_EQ(selectedSet, discovered) << label;

        // Every measured signal is selected and every reference is a signal of the design.
        for (const QString& record :
             listItems(probeParameter(generated.design, "SelectedMeasurementsListMap"))) {
            EXPECT_TRUE(selectedSet.contains(record.section(' ', 0, 0))) << label;
        }
        for (const QString& record :
             listItems(probeParameter(generated.design, "SelectedMeasurementsRefSignalListMap"))) {
            const QStringList parts = record.split(' ', Qt::SkipEmptyParts);
            ASSERT_EQ(parts.size(), 3) << record.toStdString();
            EXPECT_EQ(parts[1], "1") << "Skew";
            EXPECT_TRUE(discovered.contains(parts[2])) << label << " " << record.toStdString();
        }
    }
}

TEST(GenerateCommand, NetlistTakesEveryVariantAndWatchesEverySelectedSignal) {
    Workspace workspace;
    for (const QStringList& options : variants) {
        const std::string label = options.join(' ').toStdString();
        const Generated generated = generate(workspace, options);
        const ProgramRun netlist = runProgram({"netlist", generated.path, "--probe", "X1"});
        ASSERT_EQ(netlist.exitCode, 0) << label << ": " << netlist.err.toStdString();
        EXPECT_TRUE(netlist.err.isEmpty()) << label << ": " << netlist.err.toStdString();
        const QString block = QString::fromUtf8(netlist.out);
        EXPECT_TRUE(block.contains("ComponentWithNodes:X1 ")) << label;
        for (const QString& key :
             listItems(probeParameter(generated.design, "SelectedSignalList"))) {
            EXPECT_TRUE(block.contains("NodeData[") &&
                        block.contains(QString("= list(\"%1\", ").arg(key)))
                << label << ": " << key.toStdString();
        }
        const bool ddrSimulation = options.contains("--ddr-simulation");
        EXPECT_EQ(block.contains("EnableCompliance=1"), !ddrSimulation) << label;
        EXPECT_EQ(block.contains("ComplianceMeasMap[1]"), !ddrSimulation) << label;
    }
}

TEST(GenerateCommand, BadOptionsFailWithOneLineAndWriteNothing) {
    const QList<QStringList> cases{
        {"--channels", "0"},   {"--channels", "17"},
        {"--channels", "two"}, {"--channels"},
        {"--devices", "33"},   {"--devices", ""},
        {"--devices", "1.5"},  {"--width", "x32"},
        {"--width", "8"},      {"--dram", "lpddr4", "--width", "x4"},
        {"--dram", "ddr5"},    {"--ebd-nodes", "-1"},
        {"--ebd-nodes", "9"},  {"--die=yes"},
        {"design.json"},       {"--probe", "X1"},
    };
    for (const QStringList& options : cases) {
        const ProgramRun run = runProgram(QStringList{"generate"} + options);
        const std::string label = options.join(' ').toStdString();
        EXPECT_EQ(run.exitCode, 2) << label;
        EXPECT_TRUE(run.out.isEmpty()) << label;
        EXPECT_TRUE(run.err.startsWith("lanetap: error: ")) << run.err.toStdString();
        EXPECT_EQ(run.err.count('\n'), 1) << run.err.toStdString();
        // A refused value is quoted, so that the user sees which one it was.
        if (options.size() == 2 && options.first() != "--probe" && !options.last().isEmpty()) {
            EXPECT_TRUE(run.err.contains(options.last().toUtf8())) << run.err.toStdString();
        }
    }
}

}  // namespace
