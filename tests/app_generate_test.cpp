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

// Family to the number of its ports on an instance.
QHash<QString, int> familyCounts(const QJsonObject& instance) {
    QHash<QString, int> counts;
    for (const QJsonValue& port : instance["ddrPorts"].toArray()) {
        ++counts[port["signal"].toString()];
    }
    return counts;
}

QSet<QString> netsOf(const QJsonObject& instance) {
    QSet<QString> nets;
    for (const QJsonValue& terminal : instance["terminals"].toArray()) {
        nets.insert(terminal["net"].toString());
    }
    return nets;
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

TEST(GenerateCommand, BuildsTheBusTheOptionsDescribe) {
    Workspace workspace;
    const QJsonObject x4 =
        generate(workspace, {"--channels", "2", "--devices", "3", "--width", "x4"}).design;
    // Controller U1, memories U2 to U7 (three per channel), probe X1.
    ASSERT_EQ(x4["instances"].toArray().size(), 8);
    const QJsonObject controller = instanceNamed(x4, "U1");
    EXPECT_EQ(controller["cell"].toString(), "DDR_Controller");
    EXPECT_EQ(familyCounts(controller)["DQ"], 2 * 12);
    EXPECT_EQ(familyCounts(controller)["DQS_t"], 2 * 3);
    const QSet<QString> controllerNets = netsOf(controller);
    QSet<QString> dataNets;
    for (int memory = 2; memory <= 7; ++memory) {
        const QJsonObject part = instanceNamed(x4, QString("U%1").arg(memory));
        const QHash<QString, int> counts = familyCounts(part);
        EXPECT_EQ(part["cell"].toString(), "DDR_Memory");
        EXPECT_EQ(part["parameters"]["RefDesName"].toString(), part["name"].toString());
        EXPECT_EQ(counts["DQ"], 4);
        EXPECT_EQ(counts["DQS_t"], 1);
        EXPECT_EQ(counts["DQS_c"], 1);
        EXPECT_EQ(counts["DM_n"], 0) << "x4 parts have no mask";
        EXPECT_EQ(counts["A"], 14);
        EXPECT_EQ(counts["CK_t"], 1);
        for (const QJsonValue& port : part["ddrPorts"].toArray()) {
            EXPECT_EQ(port["channel"].toInt(), (memory - 2) / 3);
            EXPECT_EQ(port["refDes"].toString(), part["name"].toString());
        }
        // Every net of a memory reaches the controller; data nets belong to one memory only.
        const QSet<QString> nets = netsOf(part);
        EXPECT_TRUE(controllerNets.contains(nets)) << part["name"].toString().toStdString();
        for (const QJsonValue& terminal : part["terminals"].toArray()) {
            if (terminal["name"].toString().startsWith("DQ")) {
                EXPECT_FALSE(dataNets.contains(terminal["net"].toString()));
                dataNets.insert(terminal["net"].toString());
            }
        }
        EXPECT_TRUE(nets.contains(QString("ch%1_ck_t").arg((memory - 2) / 3)));
    }
    // The controller's DQ5 lies in the second memory's nibble, whose strobe is its DQS1.
    EXPECT_TRUE(probeParameter(x4, "SelectedMeasurementsRefSignalListMap")
                    .contains("DQ_Ch0_U1_DQ5 1 DQS_Ch0_U1_DQS1 ,"));

    const QJsonObject lpddr4 =
        generate(workspace, {"--dram", "lpddr4", "--ebd-nodes", "2", "--die", "--read"}).design;
    const QJsonObject memory = instanceNamed(lpddr4, "U2");
    const QHash<QString, int> counts = familyCounts(memory);
    EXPECT_EQ(counts["DQ"], 16);
    EXPECT_EQ(counts["DQS_t"], 2);
    EXPECT_EQ(counts["DM_n"], 2);
    EXPECT_EQ(counts["A"], 6);
    EXPECT_EQ(counts["BA"] + counts["BG"] + counts["RAS_n"], 0);
    const int ports = memory["ddrPorts"].toArray().size();
    EXPECT_TRUE(memory["parameters"]["DDRIbisFile"].toString().endsWith(".ebd"));
    EXPECT_EQ(memory["parameters"]["IbisPinSelPort"].toString().split(' ').size(), ports);
    EXPECT_EQ(memory["parameters"]["IbisPinSelEbdNodesName"].toString().split(' ').size(),
              2 * ports);
    EXPECT_EQ(memory["parameters"]["DieMode"].toString(), "Yes");
    EXPECT_EQ(instanceNamed(lpddr4, "U1")["parameters"]["DataMode"].toString(), "read");
    EXPECT_EQ(instanceNamed(lpddr4, "U1")["parameters"]["BurstMode"].toString(), "LPDDR4");
    EXPECT_EQ(probeParameter(lpddr4, "dramType"), "1");
}

TEST(GenerateCommand, StoresOnlyComplianceTestsThatApplyToTheBus) {
    const QHash<QString, const LaneTapUI::ComplianceTable*> tables{
        {"DQ", &LaneTapUI::dqComplianceTable()}, {"DQS", &LaneTapUI::dqsComplianceTable()},
        {"DM", &LaneTapUI::dmComplianceTable()}, {"A", &LaneTapUI::caComplianceTable()},
        {"CK", &LaneTapUI::ckComplianceTable()}, {"CKE", &LaneTapUI::ckeComplianceTable()}};
    Workspace workspace;
    struct Case {
        QStringList options;
        QString dram;
        int mode;
        bool burst;
        QStringList groups;
    };
    for (const Case& c : QList<Case>{
             {{}, "DDR4", 1, false, {"A", "CK", "CKE", "DM", "DQ", "DQS"}},
             {{"--dram", "lpddr4", "--read"}, "LPDDR4", 0, true, {"A", "CK", "DM", "DQ", "DQS"}}}) {
        const QJsonObject design = generate(workspace, c.options).design;
        QStringList groups;
        for (const QString& record :
             listItems(probeParameter(design, "SelectedGroupComplianceListMap"))) {
            const QStringList parts = record.split(' ', Qt::SkipEmptyParts);
            groups << parts[0];
            ASSERT_TRUE(tables.contains(parts[0])) << record.toStdString();
            for (const QString& id : parts.mid(1)) {
                const LaneTapUI::ComplianceMeasurement row = tables[parts[0]]->value(id.toInt());
                EXPECT_EQ(row.id, id.toInt()) << parts[0].toStdString() << " " << id.toStdString();
                EXPECT_EQ(row.dramType, c.dram) << id.toStdString();
                EXPECT_TRUE(row.operationMode == c.mode || row.operationMode == 2)
                    << id.toStdString();
                EXPECT_TRUE(c.burst || row.continuousAllowed) << id.toStdString();
            }
        }
        EXPECT_EQ(groups, c.groups);
    }
}

TEST(GenerateCommand, SameOptionsGiveTheSameBytes) {
    const QStringList options{"--dram", "lpddr4", "--channels", "3", "--ebd-nodes", "1"};
    const ProgramRun first = runProgram(QStringList{"generate"} + options);
    const ProgramRun second = runProgram(QStringList{"generate"} + options);
    ASSERT_EQ(first.exitCode, 0);
    EXPECT_EQ(first.out, second.out);
}

TEST(GenerateCommand, AnOutputThatCannotBeWrittenIsAnError) {
    QProcess process;
    process.setStandardOutputFile("/dev/full");
    process.start(lanetap_test::programPath(), {"generate", "--devices", "4"});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 2);
    const QByteArray err = process.readAllStandardError();
    EXPECT_TRUE(err.startsWith("lanetap: error: cannot write the output: ")) << err.toStdString();
    EXPECT_EQ(err.count('\n'), 1) << err.toStdString();
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
    }
}

}  // namespace
