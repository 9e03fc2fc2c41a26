// The netlist block of the probe X1, through LaneTap_netlist_probe on the stand-in host. Each
// scenario is a small design and the whole block it gives: every node and map line, read back
// and sorted so that hash order does not matter, the settings it names and every warning.

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <cstring>
#include <map>

#include "netlist/BlockReader.h"
#include "support/BlockSettingNames.h"
#include "support/TestSupport.h"

namespace {

// An instance whose ports, on channel 0 of `refDes`, read "FAMILY INDEX NET, ...", with "-" for
// an open port. Port and pin are named FAMILY INDEX, as "DQS_t0"; a numeric family is the host's
// number for one. Its parameters are written "KEY=VALUE|KEY=VALUE".
QString ddr(const QString& name, const QString& cell, const QString& refDes, const QString& ports,
            const QString& values = {}) {
    QStringList pairs;
    for (const QString& pair : values.split('|', Qt::SkipEmptyParts)) {
        pairs << QString(R"("%1":"%2")").arg(pair.section('=', 0, 0), pair.section('=', 1));
    }
    QStringList terminals;
    QStringList ddrPorts;
    for (const QString& port : ports.split(", ", Qt::SkipEmptyParts)) {
        const QStringList part = port.split(' ');
        bool numeric = false;
        part[0].toInt(&numeric);
        const auto quoted = [](const QString& text) { return '"' + text + '"'; };
        terminals << QString(R"({"name":"%1","net":%2})")
                         .arg(part[0] + part[1], part[2] == "-" ? "null" : quoted(part[2]));
        ddrPorts << QString(R"({"port":"%1","pin":"%1","refDes":"%2","channel":0,"signal":%3,)"
                            R"("index":%4})")
                        .arg(part[0] + part[1], refDes, numeric ? part[0] : quoted(part[0]),
                             part[1]);
    }
    return QString(
               R"({"name":"%1","cell":"%2","parameters":{%3},"terminals":[%4],"ddrPorts":[%5]})")
        .arg(name, cell, pairs.join(','), terminals.join(','), ddrPorts.join(','));
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
    return "DataMode=" + mode + "|SimulationMode=" + simulation + "|BurstMode=" + burst +
           "|DataRate=3200|DataRateUnit=Mbps|DataRateType=1T";
}

const QString busPorts =
    "DQ 0 n_dq0, DQS_t 0 n_dqs_p, DQS_c 0 n_dqs_n, CK_t 0 n_ck_p, CK_c 0 n_ck_n";

// Controller U1 and memory U2 on the same nets: one bit, its strobe and the clock.
QStringList bus(const QString& controllerSetup) {
    return {controller("C1", controllerSetup, busPorts), memory("M2", "U2", busPorts)};
}

// What U2 of the bus gives when its side receives and compliance is on.
const QStringList u2Block = {"N n_dq0 DQ_Ch0_U2_DQ0 s",         "N n_dqs_p DQS_Ch0_U2_DQS0 p",
                             "N n_dqs_n DQS_Ch0_U2_DQS0 n",     "N n_ck_p CK_Ch0_U2_CK0 p",
                             "N n_ck_n CK_Ch0_U2_CK0 n",        "R DQ_Ch0_U2_DQ0 DQS_Ch0_U2_DQS0",
                             "R DQ_Ch0_U2_DQ0 CK_Ch0_U2_CK0",   "R DQS_Ch0_U2_DQS0 DQ_Ch0_U2_DQ0",
                             "R DQS_Ch0_U2_DQS0 CK_Ch0_U2_CK0", "R CK_Ch0_U2_CK0 CK_Ch0_U2_CK0"};

// Memory U2 with data bits 0 to 10, each on net qN.
const QString manyBits = [] {
    QStringList ports;
    for (int bit = 0; bit <= 10; ++bit) {
        ports << QString("DQ %1 q%1").arg(bit);
    }
    return ports.join(", ");
}();

QStringList bitKeys(int first, int last) {
    QStringList keys;
    for (int bit = first; bit <= last; ++bit) {
        keys << QString("DQ_Ch0_U2_DQ%1").arg(bit);
    }
    return keys;
}

// DQ0 against DQ1 to DQ10 by Skew, and against DQ2 and DQ9 by Eye as well.
QStringList manyReferenceLines() {
    QStringList lines;
    for (int bit = 0; bit <= 10; ++bit) {
        lines << QString("N q%1 DQ_Ch0_U2_DQ%1 s").arg(bit);
    }
    for (const QString& key : bitKeys(1, 10)) {
        const bool both = key.endsWith("DQ2") || key.endsWith("DQ9");
        lines << "M DQ_Ch0_U2_DQ0 " + key + (both ? " Eye Skew" : " Skew");
    }
    return lines;
}

struct Scenario {
    const char* label;
    QStringList design;  // the instances besides the probe
    QString probe;       // the probe's parameters; what it lacks comes from its item definition
    // The lines of sortedLines(), "S name=value" for a setting, "W text" for a warning, or
    // "W2 text" for one that comes twice, and "P text" for what the block's reader cannot read.
    QStringList expected;
};

class Netlist : public testing::Test {
protected:
    // The block of X1 as sortedLines() with the settings that `expected` names and every
    // warning, sorted.
    // The block of X1 in `instances` and a probe with these parameters, as it was read back.
    LaneTapUI::NetlistBlock netlistBlock(const QStringList& instances, const QString& probe) {
        const QStringList design = QStringList(instances) << ddr("X1", "LaneTap", "", "", probe);
        loaded.host.loadDesign(
            loaded.workspace.write("run.json", lanetap_test::designText(design)));
        loaded.host.takeWarnings();
        const standin::CallResult result = loaded.host.netlistProbe("X1");
        EXPECT_TRUE(result.ok) << result.error;
        return LaneTapUI::readBlock(QString::fromStdString(result.text));
    }

    QStringList blockOf(const Scenario& scenario) {
        const LaneTapUI::NetlistBlock block = netlistBlock(scenario.design, scenario.probe);
        QStringList lines = block.sortedLines();
        for (const QString& problem : block.problemTexts()) {
            lines << "P " + problem;
        }
        for (const QString& line : scenario.expected) {
            const QString name = line.mid(2).section('=', 0, 0);
            if (line.startsWith("S ")) {
                lines << "S " + name + "=" + block.settings.value(name, "(none)");
            }
        }
        std::map<std::string, int> warnings;
        for (const std::string& warning : loaded.host.takeWarnings()) {
            ++warnings[warning];
        }
        for (const auto& [text, count] : warnings) {
            lines << (count > 1 ? "W" + QString::number(count) : "W") + " " + text.c_str();
        }
        lines.sort();
        return lines;
    }

    void expectBlocks(const std::vector<Scenario>& scenarios, bool onlySettings = false) {
        for (const Scenario& scenario : scenarios) {
            SCOPED_TRACE(scenario.label);
            const QStringList block = blockOf(scenario);
            QStringList expected = scenario.expected;
            expected.sort();
            EXPECT_EQ((onlySettings ? block.filter(QRegularExpression("^[SP] ")) : block)
                          .join('\n')
                          .toStdString(),
                      expected.join('\n').toStdString());
        }
    }

    lanetap_test::HostWithPlugin loaded{lanetap_test::designText({})};
};

TEST_F(Netlist, NodesOfPinsDiesBoardsAndPairs) {
    expectBlocks({
        {"pin, die and board nodes; power, unknown and open ports make no signal",
         {memory("M2", "U2",
                 "DQ 3 n_dq3, DQS_t 0 n_p, DQS_c 0 n_n, CKE 0 n_cke, A 12 n_a12, DQ 7 -, "
                 "VDD 0 n_vdd, VSS 0 n_vss, 99 0 n_x",
                 "DieMode=yes"),
          // The complement comes first; the die pair still takes its one net from the true pin.
          memory("M3", "U3", "DQS_c 0 n3_n, DQS_t 0 n3_p", "DieMode=Yes"),
          // Board nodes are named up to a dot, and a die pair of a board node works alike. The
          // node pair's complement keeps the plain net.
          memory("M4", "U4", "DQ 1 n4, DQS_t 0 s4p, DQS_c 0 s4n",
                 "DDRIbisFile=board.EBD|DieMode=Yes|IbisPinSelPort=DQ1 DQS_t0 DQS_c0|"
                 "IbisPinSelEbdNodes=2 1 1|IbisPinSelEbdNodesName=a.1 .b c c")},
         "SelectedSignalList=DQ_Ch0_U2_DQ3,DQ_Ch0_U2_Die_DQ3,DQS_Ch0_U2_Die_DQS0,CKE_Ch0_U2_CKE0,"
         "A_Ch0_U2_A12,DQ_Ch0_U2_DQ7,VDD_Ch0_U2_VDD0,VSS_Ch0_U2_VSS0,UNKNOWN_Ch0_U2_UNKNOWN0,"
         "DQS_Ch0_U3_Die_DQS0,DQ_Ch0_U4_DQ1,DQ_Ch0_U4.a_DQ1,DQ_Ch0_U4.b_DQ1,DQ_Ch0_U4_Die_DQ1,"
         "DQ_Ch0_U4.a_Die_DQ1,DQS_Ch0_U4.c_DQS0,DQS_Ch0_U4.c_Die_DQS0,",
         {"N n_dq3 DQ_Ch0_U2_DQ3 s", "N n_dq3_Die DQ_Ch0_U2_Die_DQ3 s",
          "N n_p_Die DQS_Ch0_U2_Die_DQS0 p", "N n_p_Die_Inv DQS_Ch0_U2_Die_DQS0 n",
          "N n_cke CKE_Ch0_U2_CKE0 s", "N n_a12 A_Ch0_U2_A12 s", "N n3_p_Die DQS_Ch0_U3_Die_DQS0 p",
          "N n3_p_Die_Inv DQS_Ch0_U3_Die_DQS0 n", "N n4 DQ_Ch0_U4_DQ1 s",
          "N n4_EBDNode_0 DQ_Ch0_U4.a_DQ1 s", "N n4_EBDNode_1 DQ_Ch0_U4.b_DQ1 s",
          "N n4_EBDNode_0_Die DQ_Ch0_U4.a_Die_DQ1 s", "N s4p_EBDNode_0 DQS_Ch0_U4.c_DQS0 p",
          "N s4n DQS_Ch0_U4.c_DQS0 n", "N s4p_EBDNode_0_Die DQS_Ch0_U4.c_Die_DQS0 p",
          "N s4p_EBDNode_0_Die_Inv DQS_Ch0_U4.c_Die_DQS0 n"}},
        {"pairs merge in either order, on one or two instances; half pairs are reported",
         {memory("M2", "U2", "DQS_t 0 a_p, DQS_c 0 a_n"),
          memory("M9", "U2", "DQS_t 0 a_p, DQS_c 0 a_n"),
          memory("M3", "U3", "DQS_c 0 b_n, DQS_t 0 b_p"),
          // The connected half first: the open half removes the signal at discovery.
          memory("M4", "U4", "DQS_t 0 c_p, DQS_c 0 -"), memory("M7", "U7", "CK_c 0 f_n, CK_t 0 -"),
          // The open half first: it is dropped silently and the writer misses a node.
          memory("M5", "U5", "DQS_c 0 -, DQS_t 0 d_p"), memory("M6", "U6", "CK_t 0 -, CK_c 0 e_n")},
         "SelectedSignalList=DQS_Ch0_U2_DQS0,DQS_Ch0_U3_DQS0,DQS_Ch0_U4_DQS0,CK_Ch0_U7_CK0,"
         "DQS_Ch0_U5_DQS0,CK_Ch0_U6_CK0,",
         {"N a_p DQS_Ch0_U2_DQS0 p", "N a_n DQS_Ch0_U2_DQS0 n", "N b_p DQS_Ch0_U3_DQS0 p",
          "N b_n DQS_Ch0_U3_DQS0 n", "N d_p DQS_Ch0_U5_DQS0 p", "N e_n CK_Ch0_U6_CK0 n",
          "W Only one node of differential signal 'DQS_Ch0_U4_DQS0' for instance M4 is "
          "connected. Ignoring it.\n",
          "W Only one node of differential signal 'CK_Ch0_U7_CK0' for instance M7 is "
          "connected. Ignoring it.\n",
          "W 'n' node of differential signal 'DQS_Ch0_U5_DQS0', connected for instances 'M5', "
          "is absent.\n",
          "W 'p' node of differential signal 'CK_Ch0_U6_CK0', connected for instances 'M6', "
          "is absent.\n"}},
        {"a designator beyond ASCII",
         {memory("M2", "Ué2", "DQ 0 n0")},
         "SelectedSignalList=DQ_Ch0_Ué2_DQ0,",
         {"N n0 DQ_Ch0_Ué2_DQ0 s"}},
        {"nothing selected",
         {memory("M2", "U2", "DQ 0 n0")},
         "",
         {"W No signals selected for 'X1' component.\n"}},
    });
}

TEST_F(Netlist, MeasurementsReferencesAndCompliance) {
    const QString groups = "|SelectedGroupComplianceListMap=DQ 51311 ,DQS 10331 ,CK 10333 ,";
    expectBlocks({
        // The controller's write cycle and continuous strobe override the probe's read and
        // LPDDR4. One applicable id lets its whole group through; a group without signals and
        // a key of a deeper tree level write nothing. A stale selected key is passed over.
        {"write cycle: the memory receives", bus(setup("write")),
         "SelectedSignalList=DQ_Ch0_U2_DQ0,DQ_Ch0_U9_DQ0,|SelectedMeasurementsListMap="
         "DQ_Ch0_U2_DQ0 3 1 ,|SelectedMeasurementsRefSignalListMap=DQ_Ch0_U2_DQ0 1 DQS_Ch0_U2_DQS0 "
         ",|"
         "EnableComplianceMeasurements=1|dramType=1|modeOfOperation=0|"
         "SelectedGroupComplianceListMap=DQ 103000 101 ,DQS 10331 11411 ,A 10311 ,"
         "DQ_Ch0_U2 103000 ,CK 10333 ,",
         u2Block + QStringList{"M DQ_Ch0_U2_DQ0 Unreferenced Eye",
                               "M DQ_Ch0_U2_DQ0 DQS_Ch0_U2_DQS0 Skew", "C DQ 103000 101",
                               "C DQS 10331 11411", "C CK 10333",
                               "S Settings_ReadWriteOperation=\"write\"", "S EnableCompliance=1",
                               "S DataRate=3200 Mbps", "S CATopology=1"}},
        // The clock is judged at the memory; the controller's clock comes in as a companion of
        // its data, with no reference line of its own. A burst lets in a read id that a
        // continuous strobe keeps out.
        {"read cycle: the controller receives data",
         bus(setup("read", "transient", "DDR4")),
         "EnableComplianceMeasurements=1|modeOfOperation=1|"
         "SelectedGroupComplianceListMap=DQ 30101 ,DQS 10331 ,",
         {"N n_dq0 DQ_Ch0_U1_DQ0 s", "N n_dqs_p DQS_Ch0_U1_DQS0 p", "N n_dqs_n DQS_Ch0_U1_DQS0 n",
          "N n_ck_p CK_Ch0_U1_CK0 p", "N n_ck_n CK_Ch0_U1_CK0 n", "N n_ck_p CK_Ch0_U2_CK0 p",
          "N n_ck_n CK_Ch0_U2_CK0 n", "R DQ_Ch0_U1_DQ0 DQS_Ch0_U1_DQS0",
          "R DQ_Ch0_U1_DQ0 CK_Ch0_U1_CK0", "R DQS_Ch0_U1_DQS0 DQ_Ch0_U1_DQ0",
          "R DQS_Ch0_U1_DQS0 CK_Ch0_U1_CK0", "R CK_Ch0_U2_CK0 CK_Ch0_U2_CK0", "C DQ 30101",
          "S Settings_ReadWriteOperation=\"read\""}},
        // Without a controller the probe's stored cycle, strobe and DRAM type decide; a stored
        // type of 2 counts as LPDDR4.
        {"no controller, LPDDR4 read burst",
         {memory("M2", "U2", busPorts)},
         "EnableComplianceMeasurements=1|dramType=2|modeOfOperation=0|dqsSignalMode=1" + groups,
         u2Block + QStringList{"C DQ 51311"}},
        {"no controller, DDR4 write continuous",
         {memory("M2", "U2", busPorts)},
         "EnableComplianceMeasurements=1|dramType=0|modeOfOperation=1|dqsSignalMode=0" + groups,
         u2Block + QStringList{"C DQS 10331", "C CK 10333"}},
        // Compliance stored on is off in a DDR simulation. The receiver outputs are the
        // memory's in the write cycle; a strobe's is one node. A reference joins the block
        // unselected; a measurement that needs a reference and has none writes nothing, and one
        // that needs none can stand on both kinds of line. A signal named only by its
        // measurements stays out.
        {"DDR simulation",
         bus(setup("write", "DDR")),
         "EnableComplianceMeasurements=1|SelectedSignalList=DQ_Ch0_U2_Rx.Output_DQ0,"
         "DQS_Ch0_U2_Rx.Output_DQS0,CK_Ch0_U1_CK0,DQ_Ch0_U1_Rx.Output_DQ0,|"
         "SelectedMeasurementsListMap=DQ_Ch0_U2_Rx.Output_DQ0 3 1 ,DQ_Ch0_U2_DQ0 1 ,"
         "DQS_Ch0_U2_DQS0 3 ,|SelectedMeasurementsRefSignalListMap=DQ_Ch0_U2_Rx.Output_DQ0 1 "
         "DQ_Ch0_U2_DQ0 ,DQ_Ch0_U2_Rx.Output_DQ0 3 DQ_Ch0_U2_DQ0 ,",
         {"N n_dq0_DQRxOut DQ_Ch0_U2_Rx.Output_DQ0 s",
          "N n_dqs_p_DQRxOut DQS_Ch0_U2_Rx.Output_DQS0 s", "N n_ck_p CK_Ch0_U1_CK0 p",
          "N n_ck_n CK_Ch0_U1_CK0 n", "N n_dq0 DQ_Ch0_U2_DQ0 s",
          "M DQ_Ch0_U2_Rx.Output_DQ0 Unreferenced Eye",
          "M DQ_Ch0_U2_Rx.Output_DQ0 DQ_Ch0_U2_DQ0 Eye Skew", "S EnableCompliance=0"}},
        // One signal measured against many references, two of them by two measurements: one
        // line for each reference, with its measurements.
        {"many references",
         {memory("M2", "U2", manyBits)},
         "SelectedSignalList=DQ_Ch0_U2_DQ0,|SelectedMeasurementsRefSignalListMap=DQ_Ch0_U2_DQ0 1 " +
             bitKeys(1, 10).join(' ') + " ,DQ_Ch0_U2_DQ0 3 DQ_Ch0_U2_DQ9 DQ_Ch0_U2_DQ2 ,",
         manyReferenceLines()},
        // References stored for signals gone from the design are passed over with their
        // signals, and so is a stale reference of a signal that is there.
        {"references of signals gone from the design",
         {memory("M2", "U2", "DQ 0 a0, DQ 1 a1")},
         "SelectedSignalList=DQ_Ch0_U2_DQ0,|SelectedMeasurementsRefSignalListMap="
         "DQ_Ch0_U5_DQ0 1 DQ_Ch0_U2_DQ1 ,DQ_Ch0_U6_DQ0 1 DQ_Ch0_U2_DQ1 ,"
         "DQ_Ch0_U7_DQ0 1 DQ_Ch0_U2_DQ1 ,DQ_Ch0_U8_DQ0 1 DQ_Ch0_U2_DQ1 ,"
         "DQ_Ch0_U9_DQ0 1 DQ_Ch0_U2_DQ1 ,DQ_Ch0_U2_DQ0 1 DQ_Ch0_U3_DQ5 DQ_Ch0_U2_DQ1 ,",
         {"N a0 DQ_Ch0_U2_DQ0 s", "N a1 DQ_Ch0_U2_DQ1 s", "M DQ_Ch0_U2_DQ0 DQ_Ch0_U2_DQ1 Skew"}},
        // A data mask and a clock are their own companions; a chip select has none. The strobe
        // of DQ11 is DQS1, and DQ11 is a bit of DQS1's byte. Each warning comes from the
        // selection and again from the reference map, without a line end.
        {"compliance companions",
         {memory("M2", "U2",
                 "DM_n 0 dm0, CS_n 0 cs0, DQ 11 q11, DQ 12 q12, DQS_t 1 s_p, DQS_c 1 s_n"),
          memory("M6", "U6", "DQS_t 1 t_p, DQS_c 1 t_n, CK_t 0 k_p, CK_c 0 k_n"),
          // Families the host has no name for make no signal.
          memory("M8", "U8", "A 3 a3, 19 0 n_y, -1 0 n_z"),
          // The last bit of a strobe's byte is enough for the strobe.
          memory("M7", "U7", "DQ 15 u15, DQS_t 1 u_p, DQS_c 1 u_n, CK_t 0 c_p, CK_c 0 c_n")},
         "EnableComplianceMeasurements=1",
         {"N dm0 DM_Ch0_U2_DM0 s",
          "N cs0 CS_Ch0_U2_CS0 s",
          "N q11 DQ_Ch0_U2_DQ11 s",
          "N q12 DQ_Ch0_U2_DQ12 s",
          "R DQ_Ch0_U2_DQ12 DQS_Ch0_U2_DQS1",
          "R DQS_Ch0_U2_DQS1 DQ_Ch0_U2_DQ12",
          "W2 For DQ_Ch0_U2_DQ12, reference signal ID(s) CK0 of Reference Designator 'U2' of "
          "Channel ID 'Ch0' are not connected. Some compliance test would not run for it.",
          "N s_p DQS_Ch0_U2_DQS1 p",
          "N s_n DQS_Ch0_U2_DQS1 n",
          "N t_p DQS_Ch0_U6_DQS1 p",
          "N t_n DQS_Ch0_U6_DQS1 n",
          "N k_p CK_Ch0_U6_CK0 p",
          "N k_n CK_Ch0_U6_CK0 n",
          "N a3 A_Ch0_U8_A3 s",
          "N u15 DQ_Ch0_U7_DQ15 s",
          "N u_p DQS_Ch0_U7_DQS1 p",
          "N u_n DQS_Ch0_U7_DQS1 n",
          "N c_p CK_Ch0_U7_CK0 p",
          "N c_n CK_Ch0_U7_CK0 n",
          "R DQ_Ch0_U7_DQ15 DQS_Ch0_U7_DQS1",
          "R DQ_Ch0_U7_DQ15 CK_Ch0_U7_CK0",
          "R DQS_Ch0_U7_DQS1 DQ_Ch0_U7_DQ15",
          "R DQS_Ch0_U7_DQS1 CK_Ch0_U7_CK0",
          "R CK_Ch0_U7_CK0 CK_Ch0_U7_CK0",
          "R DM_Ch0_U2_DM0 DM_Ch0_U2_DM0",
          "R DQ_Ch0_U2_DQ11 DQS_Ch0_U2_DQS1",
          "R DQS_Ch0_U2_DQS1 DQ_Ch0_U2_DQ11",
          "R DQS_Ch0_U6_DQS1 CK_Ch0_U6_CK0",
          "R CK_Ch0_U6_CK0 CK_Ch0_U6_CK0",
          "W2 For DQ_Ch0_U2_DQ11, reference signal ID(s) CK0 of Reference Designator 'U2' of "
          "Channel ID 'Ch0' are not connected. Some compliance test would not run for it.",
          "W2 For DQS_Ch0_U2_DQS1, reference signal ID(s) CK0 of Reference Designator 'U2' of "
          "Channel ID 'Ch0' are not connected. Some compliance test would not run for it.",
          "W2 For DQS_Ch0_U6_DQS1, reference signal ID(s) (at least one of) DQ8-DQ16 of "
          "Reference Designator 'U6' of Channel ID 'Ch0' are not connected. Some compliance "
          "test would not run for it.",
          "W2 For A_Ch0_U8_A3, reference signal ID(s) CK0 of Reference Designator 'U8' of "
          "Channel ID 'Ch0' are not connected. Some compliance test would not run for it."}},
    });
}

// The nodes come in the order of a hash of the selected keys filled from the walk of a hash
// filled in the order of the stored list, and the measurements in the walk of a hash of the stored
// map: the orders the module has always had them in. Small designs cannot show them; the hashes
// here grow several times.
TEST_F(Netlist, NodesAndMeasurementsComeInTheWalksOfTheirHashes) {
    QStringList ports;
    QStringList stored;
    QStringList measured;
    for (int bit = 0; bit < 90; ++bit) {
        ports << QString("DQ %1 q%1").arg(bit);
        stored << QString("DQ_Ch0_U2_DQ%1").arg(bit * 37 % 90);
        measured << QString("DQ_Ch0_U2_DQ%1 3").arg(bit * 53 % 90);
    }
    // A key stored twice keeps its first place; a key of no signal writes no line.
    measured << "DQ_Ch0_U2_DQ7 3"
             << "DQ_Ch0_U7_DQ0 3";
    const LaneTapUI::NetlistBlock block =
        netlistBlock({memory("M2", "U2", ports.join(", "))},
                     "SelectedSignalList=" + stored.join(',') +
                         ",|SelectedMeasurementsListMap=" + measured.join(',') + ",");
    QHash<QString, int> measuredMap;
    for (const QString& entry : qAsConst(measured)) {
        measuredMap.insert(entry.section(' ', 0, 0), 0);
    }
    QStringList measuredKeys = measuredMap.keys();
    measuredKeys.removeOne("DQ_Ch0_U7_DQ0");
    QStringList measuredLines;
    for (const QStringList& line : block.nodeMeasMap) {
        measuredLines << line.value(0);
    }
    EXPECT_EQ(measuredLines, measuredKeys);

    QHash<QString, int> filledFromList;
    for (const QString& key : qAsConst(stored)) {
        filledFromList.insert(key, 0);
    }
    QHash<QString, int> filledFromWalk;
    for (auto it = filledFromList.cbegin(); it != filledFromList.cend(); ++it) {
        filledFromWalk.insert(it.key(), 0);
    }
    QStringList written;
    for (const QStringList& line : block.nodeData) {
        written << line.value(0);
    }
    EXPECT_EQ(written, filledFromWalk.keys());
}

// The settings line alone: which source decides each computed value, and values with blanks
// going out as they stand.
TEST_F(Netlist, SettingsLine) {
    const auto hidden = [](const QString& instance, const char* field) {
        return instance.chopped(1) + "," + field + "}";
    };
    const std::vector<Scenario> scenarios = {
        // The probe as placed stores the read cycle, but the cycle is the controller's to say.
        {"no controller, the probe as placed",
         {},
         "",
         {"S Settings_ReadWriteOperation=\"write\"", "S EnableCompliance=0", "S DataRate=1.0 Gbps",
          "S CATopology=1", "S SpeedGrade=3200", "S Settings_pcboCustomSG=3200",
          "S Settings_DQSSignalType=\"continuous\"", "S Settings_chkLPDDR4=0",
          "S Settings_chkLPDDR4X=0", "S GroupDQBy=\"Nibble\"", "S GroupCABy=\"All\"",
          "S NEBProperties_ReportPath=", "S AmplitudeResolution=1 mV"}},
        // Controllers that the host filters out are not seen; of the rest the first decides.
        // A unit of None is left out, and any topology but "1T" is 2.
        {"first of the controllers seen",
         {hidden(controller("C0", setup("write")), "\"status\":1"),
          hidden(controller("C9", setup("write")), "\"model\":\"none\""),
          controller("C1",
                     "DataMode=READ|SimulationMode=Transient|DataRate=2400|"
                     "DataRateUnit=None|DataRateType=1t"),
          controller("C2", setup("write"))},
         "",
         {"S Settings_ReadWriteOperation=\"read\"", "S CATopology=2", "S DataRate=2400"}},
        // The strobe mode and DRAM type are the probe's, whatever the controller says.
        {"LPDDR4, burst, first speed grade",
         {controller("C1", setup("write"))},
         "dramType=1|dqsSignalMode=5|speedGradeList=2400,2666,3200,|speedGradeIndex=0|"
         "GroupDQBox=Byte|ResultsPDFPath=/tmp/my results",
         {"S Settings_chkLPDDR4=1", "S Settings_chkLPDDR4X=0", "S Settings_DQSSignalType=\"burst\"",
          "S SpeedGrade=2400", "S Settings_pcboCustomSG=2400", "S GroupDQBy=\"Byte\"",
          "S NEBProperties_ReportPath=/tmp/my results",
          "P NEBProperties_ReportPath: the value /tmp/my results holds white space"}},
        // A speed grade index past the list gives an empty speed grade; a value that is no
        // number reads 0.
        {"LPDDR4X, unreadable strobe mode, index past the list",
         {},
         "dramType=2|dqsSignalMode=x|speedGradeList=2400,2666,3200,|speedGradeIndex=3",
         {"S Settings_chkLPDDR4=0", "S Settings_chkLPDDR4X=1",
          "S Settings_DQSSignalType=\"continuous\"", "S SpeedGrade=", "S Settings_pcboCustomSG="}},
    };
    expectBlocks(scenarios, true);
}

// The block's reader names the place it cannot read: a name of the component line, a pair of the
// settings line, a line of a section, or the block as a whole. The worked example's block, with
// one fault put in at a time.
TEST(BlockReader, NamesEachPlaceItCannotRead) {
    const QString good = QString::fromUtf8(
        lanetap_test::runProgram(
            {"netlist", LANETAP_SOURCE_DIR "/examples/ddr4_x8_write.json", "--probe", "X1"})
            .out);
    ASSERT_TRUE(LaneTapUI::readBlock(good).problems.isEmpty());
    const struct {
        const char* from;
        const char* to;
        const char* problem;  // the first problem the reader gives
        int count = 1;        // how many it gives
    } cases[] = {
        {"ComponentWithNodes:X1 ", "ComponentWithNodes:X;1 ", "X;1: holds the character ;"},
        {" n_dq0 ", " n=dq0 ", "n=dq0: holds the character ="},
        {"TargetBER=1e-12", "TargetBER=1e-12;x",
         "TargetBER: the value 1e-12;x holds the character ;"},
        {"GroupDQBy=\"Nibble\"", "GroupDQBy=\"Nib\"ble\"",
         "GroupDQBy: the value \"Nib\"ble\" holds the character \" within its double quotes"},
        {"Settings_InputVDD=1.2 V", "Settings_InputVDD=1 2 V",
         "Settings_InputVDD: the value 1 2 V is no voltage"},
        {"DataRate=3200 Mbps", "DataRate=3200 Mbps x",
         "DataRate: the value 3200 Mbps x is not a rate"},
        {" CATopology=", " CATopolgy=", "CATopology: the settings line lacks its pair"},
        {"NodeData[5]", "NodeData[6]", "is out of its place or count", 2},
        {"NodeRefMap[1] = list(\"", "NodeRefMap[1] = list(\"\", \"", "has 3 fields"},
        {" \n\n", "\n\n", "the block does not start with the load line or end in one blank"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.to);
        QString text = good;
        ASSERT_TRUE(text.contains(c.from));
        text.replace(text.indexOf(c.from), int(strlen(c.from)), c.to);
        const QStringList problems = LaneTapUI::readBlock(text).problemTexts();
        ASSERT_EQ(problems.size(), c.count) << problems.join('\n').toStdString();
        EXPECT_TRUE(problems[0].contains(c.problem)) << problems[0].toStdString();
    }
}

}  // namespace
