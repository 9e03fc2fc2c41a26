// The netlist block of a probe, through LaneTap_netlist_probe on the stand-in host: which nodes
// it watches and how, what it measures against what, the compliance groups, the settings line and
// the warnings. Hash order is not fixed, so blocks are read back and compared as sets.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <ostream>

#include "support/BlockReader.h"
#include "support/TestSupport.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace {

using lanetap_test::NetlistBlock;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;
using Rows = QList<QStringList>;
using Texts = std::vector<std::string>;

// Parameters written "KEY=VALUE|KEY=VALUE".
QJsonObject parameters(const QString& text) {
    QJsonObject object;
    for (const QString& pair : text.split('|', Qt::SkipEmptyParts)) {
        object.insert(pair.section('=', 0, 0), pair.section('=', 1));
    }
    return object;
}

QString compact(const QJsonObject& object) {
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

// A DDR instance on channel 0. Ports read "FAMILY INDEX NET, ...", with "-" for an open port;
// port and pin are named FAMILY INDEX, as "DQS_t0". A numeric family is the host's number.
QString ddr(const QString& name, const QString& cell, const QString& refDes, const QString& ports,
            const QString& values = {}) {
    QJsonArray terminals;
    QJsonArray ddrPorts;
    for (const QString& port : ports.split(", ", Qt::SkipEmptyParts)) {
        const QStringList part = port.split(' ');
        bool numeric = false;
        const int family = part[0].toInt(&numeric);
        terminals.append(QJsonObject{{"name", part[0] + part[1]},
                                     {"net", part[2] == "-" ? QJsonValue() : part[2]}});
        ddrPorts.append(QJsonObject{{"port", part[0] + part[1]},
                                    {"pin", part[0] + part[1]},
                                    {"refDes", refDes},
                                    {"channel", 0},
                                    {"signal", numeric ? QJsonValue(family) : part[0]},
                                    {"index", part[1].toInt()}});
    }
    return compact(QJsonObject{{"name", name},
                               {"cell", cell},
                               {"parameters", parameters(values)},
                               {"terminals", terminals},
                               {"ddrPorts", ddrPorts}});
}

QString memory(const QString& name, const QString& refDes, const QString& ports,
               const QString& values = {}) {
    return ddr(name, "DDR_Memory", refDes, ports, values);
}

QString controller(const QString& name, const QString& values, const QString& ports = {}) {
    return ddr(name, "DDR_Controller", "U1", ports, values);
}

QString setup(const QString& mode, const QString& simulation = "transient",
              const QString& burst = "No BURST") {
    return QString(
               "DataMode=%1|SimulationMode=%2|BurstMode=%3|DataRate=3200|DataRateUnit=Mbps|"
               "DataRateType=1T")
        .arg(mode, simulation, burst);
}

// The probe X1; what it does not hold it reads from the probe's item definition.
QString probe(const QString& values) {
    return compact(
        QJsonObject{{"name", "X1"}, {"cell", "LaneTap"}, {"parameters", parameters(values)}});
}

// Lines of blank-separated fields, "-" for an empty field.
Rows rows(std::initializer_list<const char*> lines) {
    Rows result;
    for (const char* line : lines) {
        QStringList fields = QString(line).split(' ');
        std::replace(fields.begin(), fields.end(), QString("-"), QString());
        result << fields;
    }
    return result;
}

QStringList keysOf(const NetlistBlock& block) {
    QStringList keys;
    for (const QStringList& line : block.nodeData) {
        if (!keys.contains(line[0])) {
            keys << line[0];
        }
    }
    return keys;
}

// Memory U2 and controller U1 on the same nets, each with one bit, its strobe and the clock.
QStringList busWith(const QString& controllerSetup) {
    const QString ports =
        "DQ 0 n_dq0, DQS_t 0 n_dqs_p, DQS_c 0 n_dqs_n, CK_t 0 n_ck_p, CK_c 0 n_ck_n";
    return {controller("C1", controllerSetup, ports), memory("M2", "U2", ports)};
}

class Netlist : public testing::Test {
protected:
    void SetUp() override { ASSERT_THAT(loaded.registrationFailures, IsEmpty()); }

    NetlistBlock netlist(const QStringList& instances) {
        return netlistOf(lanetap_test::designText(instances));
    }

    // The block of X1 in this design, checked for its shape, with the warnings it gave.
    NetlistBlock netlistOf(const QByteArray& design) {
        loaded.host.loadDesign(loaded.workspace.write("run.json", design));
        loaded.host.takeWarnings();
        const standin::CallResult result = loaded.host.netlistProbe("X1");
        warnings = loaded.host.takeWarnings();
        EXPECT_TRUE(result.ok) << result.error;
        text = QString::fromStdString(result.text);
        NetlistBlock block = lanetap_test::readBlock(text);
        EXPECT_THAT(block.problems, IsEmpty()) << result.text;
        EXPECT_EQ(block.probe, "X1");
        EXPECT_EQ(block.settingNames, lanetap_test::blockSettingNames());
        return block;
    }

    lanetap_test::HostWithPlugin loaded{lanetap_test::designText({probe({})})};
    Texts warnings;
    QString text;
};

TEST_F(Netlist, WorkedExampleOfAWriteCycle) {
    QJsonObject design =
        QJsonDocument::fromJson(lanetap_test::readBytes(LANETAP_EXAMPLES_DIR "/ddr4_x8_write.json"))
            .object();
    // The example's probe with its compliance group replaced: 101 is no DQ row, but one applicable
    // id lets the whole group through.
    QJsonArray instances = design["instances"].toArray();
    for (QJsonValueRef value : instances) {
        QJsonObject instance = value.toObject();
        if (instance["name"] == "X1") {
            QJsonObject values = instance["parameters"].toObject();
            values["SelectedGroupComplianceListMap"] = "DQ 103000 101 ,";
            instance["parameters"] = values;
            value = instance;
        }
    }
    design["instances"] = instances;
    const NetlistBlock block = netlistOf(QJsonDocument(design).toJson());

    EXPECT_TRUE(
        text.startsWith("\n;Lane_Tap\n#load \"python\",\"TDM_LaneTap\"\nComponentWithNodes:X1 n_"));
    // A write cycle: the memory U2 receives, so its signals are netlisted and U1's are not.
    EXPECT_THAT(block.nodes(), UnorderedElementsAreArray(rows({
                                   "n_dq0 DQ_Ch0_U2_DQ0 0 DQ U2 Ch0 - s",
                                   "n_dqs_p DQS_Ch0_U2_DQS0 0 DQS U2 Ch0 - p",
                                   "n_dqs_n DQS_Ch0_U2_DQS0 0 DQS U2 Ch0 - n",
                                   "n_ck_p CK_Ch0_U2_CK0 0 CK U2 Ch0 - p",
                                   "n_ck_n CK_Ch0_U2_CK0 0 CK U2 Ch0 - n",
                               })));
    // The halves of a pair stand next to each other, positive first.
    for (int i = 0; i < block.nodeData.size(); ++i) {
        if (block.nodeData[i][6] == "p") {
            ASSERT_LT(i + 1, block.nodeData.size());
            EXPECT_EQ(block.nodeData[i + 1][0], block.nodeData[i][0]);
            EXPECT_EQ(block.nodeData[i + 1][6], "n");
        }
    }
    EXPECT_EQ(block.settings["Settings_ReadWriteOperation"], "\"write\"");
    EXPECT_EQ(block.settings["EnableCompliance"], "1");
    EXPECT_EQ(block.settings["DataRate"], "3200 Mbps");
    EXPECT_THAT(block.nodeMeasMap, UnorderedElementsAreArray(rows({
                                       "DQ_Ch0_U2_DQ0 Unreferenced Eye",
                                       "DQ_Ch0_U2_DQ0 DQS_Ch0_U2_DQS0 Skew",
                                   })));
    EXPECT_THAT(block.nodeRefMap, UnorderedElementsAreArray(rows({
                                      "DQ_Ch0_U2_DQ0 DQS_Ch0_U2_DQS0",
                                      "DQ_Ch0_U2_DQ0 CK_Ch0_U2_CK0",
                                      "DQS_Ch0_U2_DQS0 DQ_Ch0_U2_DQ0",
                                      "DQS_Ch0_U2_DQS0 CK_Ch0_U2_CK0",
                                      "CK_Ch0_U2_CK0 CK_Ch0_U2_CK0",
                                  })));
    EXPECT_EQ(block.complianceMeasMap, rows({"DQ 103000 101"}));
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(Netlist, PinDieAndBoardNodes) {
    const NetlistBlock block = netlist({
        memory("M2", "U2", "DQ 3 n_dq3, DQS_t 0 n_p, DQS_c 0 n_n", "DieMode=yes"),
        // The complement comes first; the die pair still takes its one net from the true pin.
        memory("M3", "U3", "DQS_c 0 n3_n, DQS_t 0 n3_p", "DieMode=Yes"),
        memory("M4", "U4", "DQ 1 n4",
               "DDRIbisFile=board.EBD|IbisPinSelPort=DQ1|IbisPinSelEbdNodes=2|"
               "IbisPinSelEbdNodesName=a.1 b.2"),
        probe("SelectedSignalList=DQ_Ch0_U2_DQ3,DQ_Ch0_U2_Die_DQ3,DQS_Ch0_U2_Die_DQS0,"
              "DQS_Ch0_U3_Die_DQS0,DQ_Ch0_U4_DQ1,DQ_Ch0_U4.a_DQ1,DQ_Ch0_U4.b_DQ1,"),
    });
    EXPECT_THAT(block.nodes(), UnorderedElementsAreArray(rows({
                                   "n_dq3 DQ_Ch0_U2_DQ3 3 DQ U2 Ch0 - s",
                                   "n_dq3_Die DQ_Ch0_U2_Die_DQ3 3 DQ U2 Ch0 Die s",
                                   "n_p_Die DQS_Ch0_U2_Die_DQS0 0 DQS U2 Ch0 Die p",
                                   "n_p_Die_Inv DQS_Ch0_U2_Die_DQS0 0 DQS U2 Ch0 Die n",
                                   "n3_p_Die DQS_Ch0_U3_Die_DQS0 0 DQS U3 Ch0 Die p",
                                   "n3_p_Die_Inv DQS_Ch0_U3_Die_DQS0 0 DQS U3 Ch0 Die n",
                                   "n4 DQ_Ch0_U4_DQ1 1 DQ U4 Ch0 - s",
                                   "n4_EBDNode_0 DQ_Ch0_U4.a_DQ1 1 DQ U4.a Ch0 - s",
                                   "n4_EBDNode_1 DQ_Ch0_U4.b_DQ1 1 DQ U4.b Ch0 - s",
                               })));
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(Netlist, PairsMergeInEitherOrderAndHalfPairsAreReported) {
    const NetlistBlock block = netlist({
        memory("M2", "U2", "DQS_t 0 a_p, DQS_c 0 a_n"),
        memory("M3", "U3", "DQS_c 0 b_n, DQS_t 0 b_p"),
        // The connected half first: the open half removes the signal at discovery.
        memory("M4", "U4", "DQS_t 0 c_p, DQS_c 0 -"),
        memory("M7", "U7", "CK_c 0 f_n, CK_t 0 -"),
        // The open half first: it is dropped silently and the writer misses a node.
        memory("M5", "U5", "DQS_c 0 -, DQS_t 0 d_p"),
        memory("M6", "U6", "CK_t 0 -, CK_c 0 e_n"),
        probe("SelectedSignalList=DQS_Ch0_U2_DQS0,DQS_Ch0_U3_DQS0,DQS_Ch0_U4_DQS0,CK_Ch0_U7_CK0,"
              "DQS_Ch0_U5_DQS0,CK_Ch0_U6_CK0,"),
    });
    EXPECT_THAT(block.nodes(), UnorderedElementsAreArray(rows({
                                   "a_p DQS_Ch0_U2_DQS0 0 DQS U2 Ch0 - p",
                                   "a_n DQS_Ch0_U2_DQS0 0 DQS U2 Ch0 - n",
                                   "b_p DQS_Ch0_U3_DQS0 0 DQS U3 Ch0 - p",
                                   "b_n DQS_Ch0_U3_DQS0 0 DQS U3 Ch0 - n",
                                   "d_p DQS_Ch0_U5_DQS0 0 DQS U5 Ch0 - p",
                                   "e_n CK_Ch0_U6_CK0 0 CK U6 Ch0 - n",
                               })));
    EXPECT_THAT(warnings,
                UnorderedElementsAre(
                    "Only one node of differential signal 'DQS_Ch0_U4_DQS0' for instance M4 is "
                    "connected. Ignoring it.\n",
                    "Only one node of differential signal 'CK_Ch0_U7_CK0' for instance M7 is "
                    "connected. Ignoring it.\n",
                    "'n' node of differential signal 'DQS_Ch0_U5_DQS0', connected for instances "
                    "'M5', is absent.\n",
                    "'p' node of differential signal 'CK_Ch0_U6_CK0', connected for instances "
                    "'M6', is absent.\n"));
}

TEST_F(Netlist, ComplianceNetlistsTheReceivingSide) {
    const QString compliance =
        "EnableComplianceMeasurements=1|SelectedGroupComplianceListMap=DQ "
        "103000 ,";

    // Nothing selected: in a write cycle the memory's signals come in by themselves.
    NetlistBlock block = netlist(busWith(setup("write")) << probe(compliance));
    EXPECT_THAT(keysOf(block),
                UnorderedElementsAre("DQ_Ch0_U2_DQ0", "DQS_Ch0_U2_DQS0", "CK_Ch0_U2_CK0"));
    EXPECT_EQ(block.complianceMeasMap, rows({"DQ 103000"}));
    EXPECT_THAT(warnings, IsEmpty());

    // In a read cycle the controller receives data. The clock is judged at the memory; the
    // controller's clock comes in as a companion of its data, with no reference line of its own.
    block = netlist(busWith(setup("read")) << probe(compliance));
    EXPECT_THAT(keysOf(block), UnorderedElementsAre("DQ_Ch0_U1_DQ0", "DQS_Ch0_U1_DQS0",
                                                    "CK_Ch0_U1_CK0", "CK_Ch0_U2_CK0"));
    EXPECT_EQ(block.settings["Settings_ReadWriteOperation"], "\"read\"");
    EXPECT_THAT(block.nodeRefMap, UnorderedElementsAreArray(rows({
                                      "DQ_Ch0_U1_DQ0 DQS_Ch0_U1_DQS0",
                                      "DQ_Ch0_U1_DQ0 CK_Ch0_U1_CK0",
                                      "DQS_Ch0_U1_DQS0 DQ_Ch0_U1_DQ0",
                                      "DQS_Ch0_U1_DQS0 CK_Ch0_U1_CK0",
                                      "CK_Ch0_U2_CK0 CK_Ch0_U2_CK0",
                                  })));
    EXPECT_THAT(warnings, IsEmpty());

    // Stored on, but a DDR simulation: no compliance at all and no extra signals.
    block = netlist(busWith(setup("write", "DDR"))
                    << probe(compliance + "|SelectedSignalList=DQ_Ch0_U2_DQ0,"));
    EXPECT_THAT(keysOf(block), ElementsAre("DQ_Ch0_U2_DQ0"));
    EXPECT_EQ(block.settings["EnableCompliance"], "0");
    EXPECT_THAT(block.nodeRefMap, IsEmpty());
    EXPECT_THAT(block.complianceMeasMap, IsEmpty());
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(Netlist, ComplianceReferencesAndMissingCompanions) {
    const NetlistBlock block = netlist({
        controller("C1", setup("write")),
        memory("M2", "U2",
               "DM_n 0 dm0, CK_t 0 ck_p, CK_c 0 ck_n, CS_n 0 cs0, DQ 0 q0, DQS_t 0 s_p, "
               "DQS_c 0 s_n"),
        memory("M5", "U5", "DQ 5 r5"),
        memory("M6", "U6", "DQS_t 1 t_p, DQS_c 1 t_n, CK_t 0 k_p, CK_c 0 k_n"),
        memory("M7", "U7", "DQ 11 u11, DQS_t 1 v_p, DQS_c 1 v_n"),
        memory("M8", "U8", "A 3 a3"),
        // Die nodes find their companions among the pins of their designator.
        memory("M9", "U9", "DQ 0 w0, DQS_t 0 w_p, DQS_c 0 w_n, CK_t 0 c_p, CK_c 0 c_n",
               "DieMode=Yes"),
        probe("EnableComplianceMeasurements=1"),
    });
    EXPECT_THAT(block.nodeRefMap,
                UnorderedElementsAreArray(rows({
                    // A data mask and a clock are their own companions.
                    "DM_Ch0_U2_DM0 DM_Ch0_U2_DM0",
                    "CK_Ch0_U2_CK0 CK_Ch0_U2_CK0",
                    "DQ_Ch0_U2_DQ0 DQS_Ch0_U2_DQS0",
                    "DQ_Ch0_U2_DQ0 CK_Ch0_U2_CK0",
                    "DQS_Ch0_U2_DQS0 DQ_Ch0_U2_DQ0",
                    "DQS_Ch0_U2_DQS0 CK_Ch0_U2_CK0",
                    "DQS_Ch0_U6_DQS1 CK_Ch0_U6_CK0",
                    "CK_Ch0_U6_CK0 CK_Ch0_U6_CK0",
                    // The strobe of DQ11 is DQS1, and DQ11 is a bit of DQS1's byte.
                    "DQ_Ch0_U7_DQ11 DQS_Ch0_U7_DQS1",
                    "DQS_Ch0_U7_DQS1 DQ_Ch0_U7_DQ11",
                    "DQ_Ch0_U9_DQ0 DQS_Ch0_U9_DQS0",
                    "DQ_Ch0_U9_DQ0 CK_Ch0_U9_CK0",
                    "DQ_Ch0_U9_Die_DQ0 DQS_Ch0_U9_DQS0",
                    "DQ_Ch0_U9_Die_DQ0 CK_Ch0_U9_CK0",
                    "DQS_Ch0_U9_DQS0 DQ_Ch0_U9_DQ0",
                    "DQS_Ch0_U9_DQS0 CK_Ch0_U9_CK0",
                    "DQS_Ch0_U9_Die_DQS0 DQ_Ch0_U9_DQ0",
                    "DQS_Ch0_U9_Die_DQS0 CK_Ch0_U9_CK0",
                    "CK_Ch0_U9_CK0 CK_Ch0_U9_CK0",
                    "CK_Ch0_U9_Die_CK0 CK_Ch0_U9_Die_CK0",
                })));
    // A chip select has no companions; an address without its clock is still netlisted.
    EXPECT_TRUE(keysOf(block).contains("CS_Ch0_U2_CS0"));
    EXPECT_TRUE(keysOf(block).contains("A_Ch0_U8_A3"));

    // Each warning comes once from the selection and once from the reference map, without a
    // line end. The two missing companions of DQ5 come in the order of a hash.
    const auto missing = [](const QString& key, const QStringList& items) {
        return "For " + key + ", reference signal ID(s) " + items.join(", ") +
               " are not connected. Some compliance test would not run for it.";
    };
    const auto at = [](const char* refDes) {
        return QString(" of Reference Designator '%1' of Channel ID 'Ch0'").arg(refDes);
    };
    QString dq5 = missing("DQ_Ch0_U5_DQ5", {"DQS0" + at("U5"), "CK0" + at("U5")});
    if (std::count(warnings.begin(), warnings.end(), dq5.toStdString()) == 0) {
        dq5 = missing("DQ_Ch0_U5_DQ5", {"CK0" + at("U5"), "DQS0" + at("U5")});
    }
    Texts expected;
    for (const QString& warning :
         {dq5, missing("DQS_Ch0_U6_DQS1", {"(at least one of) DQ8-DQ16" + at("U6")}),
          missing("DQ_Ch0_U7_DQ11", {"CK0" + at("U7")}),
          missing("DQS_Ch0_U7_DQS1", {"CK0" + at("U7")}),
          missing("A_Ch0_U8_A3", {"CK0" + at("U8")})}) {
        expected.insert(expected.end(), 2, warning.toStdString());
    }
    EXPECT_THAT(warnings, UnorderedElementsAreArray(expected));
}

TEST_F(Netlist, ComplianceGroupsFollowTheCycleOfTheDesign) {
    const QStringList memoryOnly = {
        memory("M2", "U2", "DQ 0 n0, DQS_t 0 n_p, DQS_c 0 n_n, CK_t 0 k_p, CK_c 0 k_n")};
    const QString groups = "|SelectedGroupComplianceListMap=DQ 51311 ,DQS 10331 ,CK 10333 ,";
    struct Case {
        const char* label;
        QStringList design;
        QString probe;
        Rows lines;
    };
    const Case cases[] = {
        // The controller's write cycle and continuous strobe override the probe's read and
        // LPDDR4. A read-only id shuts its group out; a deeper tree key and a group without
        // signals write nothing.
        {"controller, write", busWith(setup("write")),
         "dramType=1|modeOfOperation=0|SelectedGroupComplianceListMap=DQ 11311 ,DQS 10331 11411 ,"
         "A 10311 ,DQ_Ch0_U2 103000 ,CK 10333 ,",
         rows({"DQS 10331 11411", "CK 10333"})},
        // A burst lets in the read id that a continuous strobe keeps out.
        {"controller, read, burst", busWith(setup("read", "transient", "DDR4")),
         "modeOfOperation=1|SelectedGroupComplianceListMap=DQ 30101 ,DQS 10331 ,",
         rows({"DQ 30101"})},
        // Without a controller the probe decides; "dramType" 2 counts as LPDDR4.
        {"no controller, LPDDR4 read burst", memoryOnly,
         "dramType=2|modeOfOperation=0|dqsSignalMode=1" + groups, rows({"DQ 51311"})},
        {"no controller, DDR4 write continuous", memoryOnly,
         "dramType=0|modeOfOperation=1|dqsSignalMode=0" + groups, rows({"DQS 10331", "CK 10333"})},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const NetlistBlock block =
            netlist(QStringList(c.design) << probe("EnableComplianceMeasurements=1|" + c.probe));
        EXPECT_THAT(block.complianceMeasMap, UnorderedElementsAreArray(c.lines));
        EXPECT_THAT(warnings, IsEmpty());
    }
}

TEST_F(Netlist, SettingsLine) {
    struct Case {
        const char* label;
        QStringList design;
        QString probe;
        // Setting=value pairs, as rows of two fields.
        Rows settings;
    };
    const Case cases[] = {
        // The probe as placed stores the read cycle, but the cycle is the controller's to say.
        {"no controller, the probe as placed",
         {},
         {},
         rows({"Settings_ReadWriteOperation \"write\"", "EnableCompliance 0", "CATopology 1",
               "SpeedGrade 3200", "Settings_pcboCustomSG 3200",
               "Settings_DQSSignalType \"continuous\"", "Settings_chkLPDDR4 0",
               "Settings_chkLPDDR4X 0", "GroupDQBy \"Nibble\"", "GroupCABy \"All\"",
               "NEBProperties_SaveDataset 1", "NEBProperties_ReportPath -"})},
        {"first of two controllers",
         {controller("C1",
                     "DataMode=READ|SimulationMode=Transient|DataRate=2400|"
                     "DataRateUnit=Mbps|DataRateType=2T"),
          controller("C2", setup("write"))},
         {},
         rows({"Settings_ReadWriteOperation \"read\"", "CATopology 2"})},
        {"unit None, no topology",
         {controller("C1",
                     "DataMode=write|SimulationMode=transient|DataRate=3200|"
                     "DataRateUnit=None|DataRateType=")},
         {},
         rows({"DataRate 3200", "CATopology 2"})},
        {"topology in lower case",
         {controller("C1",
                     "DataMode=write|SimulationMode=transient|DataRate=3.2|"
                     "DataRateUnit=Gbps|DataRateType=1t")},
         {},
         rows({"CATopology 2"})},
        // The strobe mode and DRAM type are the probe's, whatever the controller says.
        {"LPDDR4, burst, second speed grade",
         {controller("C1", setup("write"))},
         "dramType=1|dqsSignalMode=5|speedGradeList=2400,2666,3200,|speedGradeIndex=1|"
         "SaveToDataset=1|GroupDQBox=Byte",
         rows({"Settings_chkLPDDR4 1", "Settings_chkLPDDR4X 0", "Settings_DQSSignalType \"burst\"",
               "SpeedGrade 2666", "Settings_pcboCustomSG 2666", "NEBProperties_SaveDataset 1",
               "GroupDQBy \"Byte\""})},
        // A speed grade index outside the list gives an empty speed grade.
        {"LPDDR4X, empty speed grade box",
         {},
         "dramType=2|dqsSignalMode=0|speedGradeIndex=-1",
         rows({"Settings_chkLPDDR4 0", "Settings_chkLPDDR4X 1",
               "Settings_DQSSignalType \"continuous\"", "SpeedGrade -",
               "Settings_pcboCustomSG -"})},
        {"unreadable numbers, index past the list",
         {},
         "dramType=abc|dqsSignalMode=x|speedGradeList=2400,2666,3200,|speedGradeIndex=3",
         rows({"Settings_chkLPDDR4 0", "Settings_chkLPDDR4X 0",
               "Settings_DQSSignalType \"continuous\"", "SpeedGrade -",
               "Settings_pcboCustomSG -"})},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const NetlistBlock block = netlist(QStringList(c.design) << probe(c.probe));
        for (const QStringList& setting : c.settings) {
            EXPECT_EQ(block.settings.value(setting[0]), setting[1]) << setting[0].toStdString();
        }
    }

    // Values with blanks go out as they stand, unquoted: the rate with its unit, a path, a
    // voltage.
    netlist({probe("ResultsPDFPath=/tmp/my results")});
    EXPECT_TRUE(text.contains(" DataRate=1.0 Gbps CATopology=1 "));
    EXPECT_TRUE(text.contains(" NEBProperties_ReportPath=/tmp/my results TargetBER=1e-12 "));
    EXPECT_TRUE(text.contains(" AmplitudeResolution=1 mV DataRate="));
    netlist({controller("C1",
                        "DataMode=write|SimulationMode=transient|DataRate=3.2|"
                        "DataRateUnit=Gbps|DataRateType=1T"),
             probe({})});
    EXPECT_TRUE(text.contains(" DataRate=3.2 Gbps CATopology=1 "));
}

}  // namespace
