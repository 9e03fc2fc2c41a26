// The design walks on their own: what the dialog's copy and the netlist writer's copy find.

#include <gtest/gtest.h>

#include <QSet>

#include "discovery/SignalDiscovery.h"
#include "standin/Warnings.h"
#include "support/TestSupport.h"

using namespace LaneTapUI;

namespace {

QString port(const QString& name, const QString& family, int index, const QString& refDes = "U1",
             int channel = 0) {
    return QString(
               R"({"port":"%1","pin":"%1","refDes":"%4","channel":%5,"signal":"%2","index":%3})")
        .arg(name, family)
        .arg(index)
        .arg(refDes)
        .arg(channel);
}

QString instance(const QString& name, const QString& cell, const QString& parameters,
                 const QStringList& terminals, const QStringList& ports) {
    return QString(
               R"({"name":"%1","cell":"%2","parameters":{%3},"terminals":[%4],"ddrPorts":[%5]})")
        .arg(name, cell, parameters, terminals.join(","), ports.join(","));
}

QString term(const QString& name, const QString& net) {
    return net.isEmpty() ? QString(R"({"name":"%1"})").arg(name)
                         : QString(R"({"name":"%1","net":"%2"})").arg(name, net);
}

// Owns the records a walk puts in a hash.
struct Discovered {
    ~Discovered() { qDeleteAll(signals); }
    SignalRecordHash signals;
    std::vector<std::string> warnings;
};

class DiscoveryTest : public ::testing::Test {
protected:
    void load(const QStringList& instances) {
        host.loadDesign(workspace.write("design.json", lanetap_test::designText(instances)));
    }
    void discover(DiscoveryKind kind, Discovered& into) {
        const auto controller = findControllerParameters(host.design());
        discoverSignals(host.design(), *controller, kind, into.signals);
        into.warnings = standin::takeRecordedWarnings();
    }

    lanetap_test::Workspace workspace;
    standin::Host host;
};

const QStringList memoryTerms = {term("DQ3", "n_dq3"), term("DQS_t0", "n_dqs_p"),
                                 term("DQS_c0", "n_dqs_n"), term("CK_t0", "n_ck_p"),
                                 term("CK_c0", "")};
const QStringList memoryPorts = {port("DQ3", "DQ", 3), port("DQS_t0", "DQS_t", 0),
                                 port("DQS_c0", "DQS_c", 0), port("CK_t0", "CK_t", 0),
                                 port("CK_c0", "CK_c", 0)};

}  // namespace

TEST_F(DiscoveryTest, DialogAndNetlistCopiesFindTheSameKeysAndOnlyTheWriterKnowsNets) {
    const QString ebd =
        R"("DDRIbisFile":"board.EBD","DieMode":"yes","IbisPinSelPort":"DQ3 DQS_t0 DQS_c0",)"
        R"("IbisPinSelEbdNodes":"2 1 1","IbisPinSelEbdNodesName":"n1.pin .n2 n3 n3")";
    load({instance("U1", "DDR_Memory", ebd, memoryTerms, memoryPorts)});
    Discovered writer;
    Discovered dialog;
    discover(DiscoveryKind::Netlist, writer);
    discover(DiscoveryKind::Dialog, dialog);

    const QSet<QString> expected = {
        "DQ_Ch0_U1_DQ3",        "DQ_Ch0_U1.n1_DQ3", "DQ_Ch0_U1.n2_DQ3",   "DQ_Ch0_U1.n1_Die_DQ3",
        "DQ_Ch0_U1.n2_Die_DQ3", "DQS_Ch0_U1_DQS0",  "DQS_Ch0_U1.n3_DQS0", "DQS_Ch0_U1.n3_Die_DQS0"};
    EXPECT_EQ(QSet<QString>(writer.signals.keyBegin(), writer.signals.keyEnd()), expected);
    EXPECT_EQ(QSet<QString>(dialog.signals.keyBegin(), dialog.signals.keyEnd()), expected);
    // The clock's complement is unconnected and came second: the pair goes with a warning.
    EXPECT_EQ(writer.warnings, dialog.warnings);

    const InstanceNodes board = writer.signals.value("DQ_Ch0_U1.n2_DQ3")->instances.value("U1");
    EXPECT_EQ(board.pNet, "n_dq3_EBDNode_1");
    const InstanceNodes die = writer.signals.value("DQS_Ch0_U1.n3_Die_DQS0")->instances.value("U1");
    EXPECT_EQ(die.pNet, "n_dqs_p_EBDNode_0_Die");
    // The pair's pin node takes the plain net of its complement, not a board node's.
    const InstanceNodes pins = writer.signals.value("DQS_Ch0_U1_DQS0")->instances.value("U1");
    EXPECT_EQ(pins.pNet, "n_dqs_p");
    EXPECT_EQ(pins.nNet, "n_dqs_n");

    for (SignalRecord* record : qAsConst(dialog.signals)) {
        for (const InstanceNodes& nodes : qAsConst(record->instances)) {
            EXPECT_TRUE(nodes.pNet.isEmpty() && nodes.nNet.isEmpty()) << record->key.toStdString();
        }
        EXPECT_EQ(record->groupKey, record->signalType + "_Ch0_" + record->nodeName);
        EXPECT_EQ(record->channelGroupKey, record->signalType + "_Ch0");
    }
}

TEST_F(DiscoveryTest, ADiePairHasOneRealNetWhicheverPinComesFirst) {
    for (const bool trueFirst : {true, false}) {
        QStringList ports = {port("DQS_t0", "DQS_t", 0), port("DQS_c0", "DQS_c", 0)};
        if (!trueFirst) {
            std::reverse(ports.begin(), ports.end());
        }
        load({instance("U1", "DDR_Memory", R"("DieMode":"Yes")",
                       {term("DQS_t0", "n_p"), term("DQS_c0", "n_n")}, ports)});
        Discovered writer;
        discover(DiscoveryKind::Netlist, writer);
        const SignalRecord* die = writer.signals.value("DQS_Ch0_U1_Die_DQS0");
        ASSERT_NE(die, nullptr);
        EXPECT_EQ(die->polarity, trueFirst ? "t" : "c");
        EXPECT_EQ(die->displayName, "U1 (Die)");
        const InstanceNodes nodes = die->instances.value("U1");
        EXPECT_EQ(nodes.pNet, "n_p_Die") << trueFirst;
        EXPECT_EQ(nodes.nNet, "n_p_Die_Inv") << trueFirst;
        EXPECT_FALSE(nodes.single);
    }
}

TEST_F(DiscoveryTest, TheFirstControllerDecidesAndFilteredInstancesContributeNothing) {
    const QString readDdr = R"("DataMode":"read","SimulationMode":"DDR","BurstMode":"No BURST")";
    const QString writeTransient = R"("DataMode":"write","SimulationMode":"transient")";
    const QString hidden = instance("C0", "DDR_Controller", writeTransient, {}, {});
    load({hidden.left(hidden.size() - 1) + R"(,"status":1})",
          instance("C1", "DDR_Controller", readDdr, {term("DQ3", "n_dq3")},
                   {port("DQ3", "DQ", 3, "U9")}),
          instance("C2", "DDR_Controller", writeTransient, {}, {}),
          instance("U1", "DDR_Memory", "", memoryTerms, memoryPorts)});
    const auto controller = findControllerParameters(host.design());
    EXPECT_TRUE(controller->parametersRead);
    EXPECT_TRUE(controller->isReadMode());
    EXPECT_TRUE(controller->isDDRSimulation());

    Discovered writer;
    discover(DiscoveryKind::Netlist, writer);
    // Read cycle of a DDR simulation: data is seen at the controller's receiver, the clock at
    // the memory's.
    const SignalRecord* rx = writer.signals.value("DQ_Ch0_U9_Rx.Output_DQ3");
    ASSERT_NE(rx, nullptr);
    EXPECT_EQ(rx->instances.value("C1").pNet, "n_dq3_DQRxOut");
    EXPECT_FALSE(writer.signals.contains("DQ_Ch0_U1_Rx.Output_DQ3"));
    EXPECT_FALSE(writer.signals.contains("CK_Ch0_U1_Rx.Output_CK0"));  // the pair went
    EXPECT_TRUE(writer.signals.contains("DQS_Ch0_U1_DQS0"));
    EXPECT_FALSE(writer.signals.contains("DQS_Ch0_U1_Rx.Output_DQS0"));
}
