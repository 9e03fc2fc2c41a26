// Parameter text forms, voltages, pin names, component parameters and reference rules, read and
// written through the stand-in host's database.

#include <gtest/gtest.h>

#include <QSet>
#include <algorithm>
#include <memory>
#include <stdexcept>
#include <tuple>
#include <vector>

#include "discovery/SignalDiscovery.h"
#include "parameters/ControllerParameters.h"
#include "parameters/ParamText.h"
#include "parameters/PinName.h"
#include "parameters/ReferenceRules.h"
#include "parameters/VoltageAmplitude.h"
#include "standin/Design.h"

using namespace LaneTapUI;

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace {

// A new instance of `cell` with the given parameters, in a design kept for the whole run.
standin::Instance* instanceOf(const char* cell, const standin::ParameterValues& parameters) {
    static db::Design design;
    standin::Instance* made = design.addInstance();
    made->cell = cell;
    made->parameters.values = parameters;
    return made;
}

// An instance whose parameter "p" holds `text`; a null text leaves it out.
db::ParamIter holding(const char* text) {
    return db::ParamIter(instanceOf(
        "Plain", text ? standin::ParameterValues{{"p", text}} : standin::ParameterValues{}));
}

}  // namespace

TEST(ParamText, NumbersFollowStoiAndStodAndNeverFail) {
    // clang-format off
    const std::tuple<const char*, int, double> rows[] = {
        {nullptr, 0, 0.0}, {"   7", 7, 7.0}, {"12abc", 12, 12.0}, {"abc", 0, 0.0}, {"-3", -3, -3.0},
        {"1e-3x", 1, 0.001}, {"1e999", 1, 0.0}, {"99999999999", 0, 99999999999.0}};
    // clang-format on
    for (const auto& [text, asInt, asDouble] : rows) {
        SCOPED_TRACE(text ? text : "(missing)");
        EXPECT_EQ(readParamInt(holding(text), "p"), asInt);
        EXPECT_DOUBLE_EQ(readParamDouble(holding(text), "p"), asDouble);
        EXPECT_EQ(readParamString(holding(text), "p"), text ? text : "");
    }
}

TEST(ParamText, ListsAndMapsFollowTheirTokenRules) {
    // clang-format off
    const std::tuple<const char*, QStringList, IntListMap, ReferenceMap, StringListMap> rows[] = {
        {nullptr, {}, {}, {}, {}},
        {"", {}, {}, {}, {}},
        {"DQ0", {"DQ0"}, {{"DQ0", {}}}, {}, {{"DQ0", {}}}},
        {"DQ0 x 2", {"DQ0 x 2"}, {{"DQ0", {0, 2}}}, {{"DQ0", {{0, {"2"}}}}}, {{"DQ0", {"x", "2"}}}},
        {"DQ0 1", {"DQ0 1"}, {{"DQ0", {1}}}, {{"DQ0", {{1, {}}}}}, {{"DQ0", {"1"}}}},
        {"S1 0 R1 ,S1 5 R3 ,S1 0 R2,", {"S1 0 R1 ", "S1 5 R3 ", "S1 0 R2"}, {{"S1", {0, 0}}},
         {{"S1", {{0, {"R1", "R2"}}, {5, {"R3"}}}}}, {{"S1", {"0", "R1", "5", "R3", "0", "R2"}}}},
        {"a,,b, ,", {"a", "", "b", " "}, {{"a", {}}, {"b", {}}}, {}, {{"a", {}}, {"b", {}}}},
        {"S1 99999999999", {"S1 99999999999"}, {{"S1", {0}}}, {{"S1", {{0, {}}}}}, {{"S1", {"99999999999"}}}},
        {"S1 +7 -07 1234567890 7x", {"S1 +7 -07 1234567890 7x"}, {{"S1", {7, -7, 1234567890, 0}}},
         {{"S1", {{7, {"-07", "1234567890", "7x"}}}}}, {{"S1", {"+7", "-07", "1234567890", "7x"}}}},
        // A byte-order mark is dropped where it opens an entry, and kept elsewhere.
        {"S1 2,\xEF\xBB\xBFS2 3,S3 \xEF\xBB\xBF", {"S1 2", "S2 3", "S3 \uFEFF"},
         {{"S1", {2}}, {"S2", {3}}, {"S3", {0}}}, {{"S1", {{2, {}}}}, {"S2", {{3, {}}}}, {"S3", {{0, {}}}}},
         {{"S1", {"2"}}, {"S2", {"3"}}, {"S3", {QString(QChar(0xFEFF))}}}},
    };
    // clang-format on
    for (const auto& [text, list, ids, references, names] : rows) {
        SCOPED_TRACE(text ? text : "(missing)");
        EXPECT_EQ(readParamStringList(holding(text), "p"), list);
        EXPECT_EQ(readParamIntListMap(holding(text), "p"), ids);
        EXPECT_EQ(readParamReferenceMap(holding(text), "p"), references);
        EXPECT_EQ(readParamStringListMap(holding(text), "p"), names);
    }
}

TEST(VoltageAmplitude, ParseSplitsAmplitudeFromAKnownUnit) {
    // clang-format off
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"0.7", "0.7", "None"}, {"V", "", "V"}, {"1 000 mV", "1000", "mV"}, {"0.1 Volt", "0.1Volt", "None"},
        {"1.5 None", "1.5", "None"}, {" 140\tmv ", "140mv", "None"}, {"-2 kV", "-2", "kV"}};
    // clang-format on
    for (const auto& [text, amplitude, units] : rows) {
        const VoltageAmplitude voltage(text);
        EXPECT_EQ(voltage.amplitude + "|" + voltage.units, QString(amplitude) + "|" + units);
        EXPECT_EQ(voltage.unitCode(), voltageUnitsByName().value(units)) << text;
    }
    VoltageAmplitude coded;
    EXPECT_EQ(coded.amplitude + " " + coded.units, "0.0 V");
    for (const auto& [code, units] :
         {std::pair(0, "None"), std::pair(7, "kV"), std::pair(8, "None")}) {
        coded.setUnitCode(code);
        EXPECT_EQ(coded.units, units) << code;
    }
    for (const char* blank : {"", " \t "}) {
        try {
            VoltageAmplitude{blank};
            ADD_FAILURE() << "no error for '" << blank << "'";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "setVoltageAmplitudeAndUnits LaneTapVoltage failed");
        }
    }
}

TEST(PinName, SplitsGroupIndexAndPolarity) {
    // Pin, then its group, index and polarity.
    const std::pair<const char*, QStringList> rows[] = {
        {"A10", {"A", "10", "s"}},   {"DQ12", {"DQ", "12", "s"}}, {"DQS0_t", {"DQS", "0", "t"}},
        {"DQS_c", {"DQS", "", "c"}}, {"CS_n", {"CS", "", "s"}},   {"BG0_x", {"BG", "0", "x"}},
        {"DM_n1", {"DM", "1", "s"}}, {"CK_T0", {"CK", "0", "t"}}, {"A-1.B", {"AB", "1", "s"}}};
    for (const auto& [pin, parts] : rows) {
        const PinNameParts split = splitPinName(pin);
        EXPECT_EQ(QStringList({split.group, split.index, split.polarity}), parts) << pin;
    }
}

TEST(ReferenceRules, DataAndCommandSignalsExcludeEachOther) {
    const QSet<QString> commands{"A",     "CA",  "CTRL",  "CA_CKE", "CKE",  "CS", "CS_n", "RAS",
                                 "RAS_n", "CAS", "CAS_n", "WE",     "WE_n", "BA", "BG"};
    const QSet<QString> data{"DQ", "DQS"}, none;
    const std::pair<const char*, const QSet<QString>*> rows[] = {
        {"DQ", &commands}, {"DQS", &commands}, {"DM", &commands}, {"xDBIx", &commands},
        {"A", &data},      {"CA_CKE", &data},  {"ODT", &data},    {"xWEx", &data},
        {"CS_n", &data},   {"CK", &none},      {"DQS_t", &none},  {"", &none}};
    for (const auto& [type, excluded] : rows) {
        EXPECT_EQ(excludedReferenceTypes(type), *excluded) << type;
    }
}

TEST(ComponentParameters, DesignatorsFollowTheRulesOfTheirCell) {
    using Hash = QHash<QString, QString>;
    const Hash continuous{{"U1", "Continuous"}, {"U2", "Continuous"}},
        x8{{"U1", "x8"}, {"U2", "x8"}};
    // Cell, parameters, IBIS model, die mode, width and strobe numbering by designator.
    // clang-format off
    const std::tuple<const char*, standin::ParameterValues, bool, bool, Hash, Hash> rows[] = {
        {"Plain", {{"DDRIbisFile", "b.ebd"}, {"DieMode", "Yes"}, {"RefDesName", "U1"}}, true, false, {}, {}},
        {"DDR_Memory", {{"DDRIbisFile", "BOARD.EBD"}, {"DieMode", "yes"}, {"RefDesName", " U1  U2"}},
         false, true, x8, continuous},
        {"DDR_Memory", {{"DDRIbisFile", "b.ebd.ibs"}, {"RefDesName", "U1 U2"}, {"Tdqs", "Yes"},
                        {"DQSIndex", "Even Odd"}}, true, false, x8, continuous},
        {"DDR_Memory", {{"RefDesName", "U1 U2"}, {"Tdqs", "yes"}, {"DQSIndex", "Even Odd"}, {"RefDesDQM", "x4"}},
         true, false, {{"U1", "x4"}, {"U2", "x4"}}, {{"U1", "Even"}, {"U2", "Odd"}}},
        {"DDR_Memory", {{"RefDesName", "U1 U2"}, {"Tdqs", "yes"}, {"DQSIndex", "Even"}}, true, false, x8,
         {{"U1", "Even"}, {"U2", ""}}},
        {"DDR_Controller", {{"RefDesName", "U1 U2"}, {"RefDesDQM", "x8"}, {"DieMode", "Yes"}}, true, true, {}, {}},
        {"DDR_Controller", {{"RefDesName", "U1 U2"}, {"RefDesDQM", "x4 x8"}}, true, false,
         {{"U1", "x4"}, {"U2", "x8"}}, continuous},
        {"DDR_Controller", {{"RefDesName", "U1"}, {"RefDesDQM", "x4"}, {"DQSIndex", "Odd Even"}}, true, false,
         {{"U1", "x4"}}, {{"U1", "Odd Even"}}},
    };
    // clang-format on
    int row = 0;
    for (const auto& [cell, parameters, ibisModel, dieMode, dqm, dqsIndex] : rows) {
        SCOPED_TRACE(::testing::Message() << "row " << row++);
        standin::Instance* instance = instanceOf(cell, parameters);
        const MemoryTxRxComponentParameters read(instance);
        EXPECT_TRUE(read.parametersRead);
        EXPECT_EQ(
            QList<bool>({read.ibisModel, read.dieMode, isPinMode(instance), isDieMode(instance)}),
            QList<bool>({ibisModel, dieMode, ibisModel, dieMode}));
        EXPECT_EQ(read.dqmByRefDes, dqm);
        EXPECT_EQ(read.dqsIndexByRefDes, dqsIndex);
    }
    EXPECT_FALSE(MemoryTxRxComponentParameters(nullptr).parametersRead);
}

TEST(BoardNodes, AreNamedUpToTheirDotAndRunOutQuietly) {
    // A board description's ports, node counts and node names, and the nodes each port gets.
    const std::tuple<const char*, const char*, const char*, EbdNodes> rows[] = {
        {"DQ1 DQS_t0", "2 1", "a.1 .b c", {{"DQ1", {"a", "b"}}, {"DQS_t0", {"c"}}}},
        {"DQ1 DQ2", "1 2", "a", {{"DQ1", {"a"}}, {"DQ2", {}}}},
        {"DQ1 DQ2", "1", "a b", {{"DQ1", {"a"}}, {"DQ2", {}}}},
    };
    for (const auto& [ports, counts, names, nodes] : rows) {
        SCOPED_TRACE(std::string(ports) + " / " + counts + " / " + names);
        EXPECT_EQ(readEbdNodes(instanceOf("DDR_Memory", {{"IbisPinSelPort", ports},
                                                         {"IbisPinSelEbdNodes", counts},
                                                         {"IbisPinSelEbdNodesName", names}})),
                  nodes);
    }
}

// Two names that a QHash walks in the order they were inserted, whichever comes first: only then
// does the order of insertion show.
QStringList namesInOneChain() {
    for (int i = 1;; ++i) {
        const QString first = "M" + QString::number(i);
        const QString second = "M" + QString::number(i + 1);
        QHash<QString, int> forward{{first, 0}};
        forward.insert(second, 0);
        QHash<QString, int> backward{{second, 0}};
        backward.insert(first, 0);
        if (forward.keys() != backward.keys()) {
            return {first, second};
        }
    }
}

TEST(InstanceNodesHash, WalksAndFindsLikeAQHashOfTheSameEntries) {
    // Names in the order they reach a signal; the netlist writes through the first in hash order.
    const QStringList chain = namesInOneChain();
    const QStringList rows[] = {
        {},
        {"M1"},
        chain,
        {chain[1], chain[0]},
        {chain[1], chain[0], "X"},
        {"U7", "M1", "X", "M10", "M2", "AB", "M11", "Q3", "M0", "Z9", "M5", "M4"},
    };
    for (const QStringList& names : rows) {
        SCOPED_TRACE(names.join(' ').toStdString());
        InstanceNodesHash hash;
        QHash<QString, InstanceNodes> reference;
        for (const QString& name : names) {
            const InstanceNodes nodes{false, name + "_port", name + "_net", {}, {}};
            hash.insert(name, nodes);
            reference.insert(name, nodes);
        }
        EXPECT_EQ(hash.size(), reference.size());
        EXPECT_EQ(hash.keys(), reference.keys());
        EXPECT_EQ(hash.first().pNet, reference.isEmpty() ? QString() : reference.cbegin()->pNet);
        EXPECT_EQ(hash.firstKey(), reference.isEmpty() ? QString() : reference.cbegin().key());
        for (const QString& name : names) {
            ASSERT_TRUE(hash.contains(name));
            EXPECT_EQ(hash.find(name)->pNet, name + "_net");
        }
        EXPECT_FALSE(hash.contains("absent"));
    }
}

TEST(ControllerParameters, SimulationSettingsIgnoreCaseAndOnlyAControllerHasThem) {
    const standin::ParameterValues ddrRead{{"DataMode", "Read"},
                                           {"SimulationMode", "DDR"},
                                           {"BurstMode", "LPDDR4"},
                                           {"DataRate", "3200"}};
    // Read by a ControllerParameters (else by the base class), the cell and its parameters, then
    // read mode, DDR simulation, no burst, DDR4, and the data rate and its type.
    // clang-format off
    const std::tuple<bool, const char*, standin::ParameterValues, QList<bool>, QString> rows[] = {
        {true, "DDR_Controller", {{"DataMode", "READ"}, {"SimulationMode", "Transient"}, {"BurstMode", "lpddr4"},
          {"DataRate", "3200"}, {"DataRateUnit", "Mbps"}, {"DataRateType", "2T"}}, {true, false, false, false}, "3200 Mbps|2T"},
        {true, "DDR_Controller", {{"DataMode", "write"}, {"SimulationMode", "tRANSIENT "}, {"BurstMode", "no burst"},
          {"DataRate", "3.2"}, {"DataRateUnit", "None"}, {"DataRateType", "1T"}}, {false, true, true, true}, "3.2|1T"},
        {true, "DDR_Controller", {}, {false, true, false, true}, " |"},
        // Neither a memory nor the base class answers for the controller.
        {true, "DDR_Memory", ddrRead, {false, false, true, true}, "1.0 Gbps|1T"},
        {false, "DDR_Controller", ddrRead, {false, false, true, true}, "1.0 Gbps|1T"},
    };
    // clang-format on
    for (const auto& [controller, cell, parameters, answers, rate] : rows) {
        std::unique_ptr<MemoryTxRxComponentParameters> read =
            controller ? std::make_unique<ControllerParameters>()
                       : std::make_unique<MemoryTxRxComponentParameters>();
        read->readParameters(instanceOf(cell, parameters));
        EXPECT_TRUE(read->parametersRead);
        EXPECT_EQ(QList<bool>({read->isReadMode(), read->isDDRSimulation(), read->isNoBurst(),
                               read->isDDR4()}),
                  answers)
            << rate.toStdString();
        EXPECT_EQ(read->dataRate() + "|" + read->dataRateType(), rate);
    }
}
