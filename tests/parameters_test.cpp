// Parameter text forms, voltages, pin names, component parameters and reference rules, read and
// written through the stand-in host's database.

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "parameters/ControllerParameters.h"
#include "parameters/ParamText.h"
#include "parameters/PinName.h"
#include "parameters/ReferenceRules.h"
#include "parameters/VoltageAmplitude.h"
#include "standin/Design.h"

using namespace LaneTapUI;

// Show texts, not code units, when an expectation fails.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace {

struct TestInstance {
    const char* name;
    const char* cell;
    standin::ParameterValues parameters;
};

// A design in the stand-in's in-memory database.
class TestDesign {
public:
    explicit TestDesign(const std::vector<TestInstance>& instances) {
        for (const TestInstance& made : instances) {
            standin::Instance* instance = design.addInstance();
            instance->name = made.name;
            instance->cell = made.cell;
            instance->parameters.values = made.parameters;
        }
    }

    db::Instance* instance(const char* name) const { return design.findInstance(name); }

private:
    db::Design design;
};

std::string describe(const standin::ParameterValues& parameters) {
    std::string text;
    for (const auto& [name, value] : parameters) {
        text += name + "=\"" + value + "\" ";
    }
    return text;
}

// One instance "U1" whose parameter `key` holds each text of a table.
template <class Row>
TestDesign designOfTexts(const std::vector<Row>& rows) {
    standin::ParameterValues parameters;
    for (const Row& row : rows) {
        if (row.text) {
            parameters[row.key] = row.text;
        }
    }
    return TestDesign({{"U1", "Plain", parameters}});
}

}  // namespace

TEST(ParamText, NumbersFollowStoiAndStodAndNeverFail) {
    struct Row {
        const char* key;
        const char* text;  // null: the parameter is missing
        int asInt;
        double asDouble;
    };
    const std::vector<Row> rows = {
        {"missing", nullptr, 0, 0.0},
        {"blanks", "   7", 7, 7.0},
        {"tail", "12abc", 12, 12.0},
        {"none", "abc", 0, 0.0},
        {"big", "99999999999", 0, 99999999999.0},
        {"negative", "-3", -3, -3.0},
        {"exponent", "1e-3x", 1, 0.001},
        {"huge", "1e999", 1, 0.0},
    };
    TestDesign design = designOfTexts(rows);
    const db::ParamIter params(design.instance("U1"));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(readParamInt(params, row.key), row.asInt);
        EXPECT_DOUBLE_EQ(readParamDouble(params, row.key), row.asDouble);
        EXPECT_EQ(readParamString(params, row.key), row.text ? row.text : "");
    }
}

TEST(ParamText, ListsAndMapsFollowTheirTokenRules) {
    struct Row {
        const char* key;
        const char* text;
        QStringList list;
        IntListMap ids;
        ReferenceMap references;
        StringListMap names;
    };
    const std::vector<Row> rows = {
        // clang-format off
        {"missing", nullptr, {}, {}, {}, {}},
        {"empty", "", {}, {}, {}, {}},
        {"keyOnly", "DQ0", {"DQ0"}, {{"DQ0", {}}}, {}, {{"DQ0", {}}}},
        {"badId", "DQ0 x 2", {"DQ0 x 2"}, {{"DQ0", {0, 2}}}, {{"DQ0", {{0, {"2"}}}}},
         {{"DQ0", {"x", "2"}}}},
        {"keyAndId", "DQ0 1", {"DQ0 1"}, {{"DQ0", {1}}}, {{"DQ0", {{1, {}}}}}, {{"DQ0", {"1"}}}},
        {"repeated", "S1 0 R1 ,S1 5 R3 ,S1 0 R2,", {"S1 0 R1 ", "S1 5 R3 ", "S1 0 R2"},
         {{"S1", {0, 0}}}, {{"S1", {{0, {"R1", "R2"}}, {5, {"R3"}}}}},
         {{"S1", {"0", "R1", "5", "R3", "0", "R2"}}}},
        {"commas", "a,,b, ,", {"a", "", "b", " "}, {{"a", {}}, {"b", {}}}, {},
         {{"a", {}}, {"b", {}}}},
        {"overflow", "S1 99999999999", {"S1 99999999999"}, {{"S1", {0}}}, {{"S1", {{0, {}}}}},
         {{"S1", {"99999999999"}}}},
        // clang-format on
    };
    TestDesign design = designOfTexts(rows);
    const db::ParamIter params(design.instance("U1"));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(readParamStringList(params, row.key), row.list);
        EXPECT_EQ(readParamIntListMap(params, row.key), row.ids);
        EXPECT_EQ(readParamReferenceMap(params, row.key), row.references);
        EXPECT_EQ(readParamStringListMap(params, row.key), row.names);
    }
}

TEST(VoltageAmplitude, ParseSplitsAmplitudeFromAKnownUnit) {
    const struct {
        const char* text;
        const char* amplitude;
        const char* units;
    } rows[] = {
        {"0.7", "0.7", "None"},      {"V", "", "V"},
        {"1 000 mV", "1000", "mV"},  {"0.1 Volt", "0.1Volt", "None"},
        {"1.5 None", "1.5", "None"}, {" 140\tmv ", "140mv", "None"},
        {"0.093 V", "0.093", "V"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const VoltageAmplitude voltage(row.text);
        EXPECT_EQ(voltage.amplitude, row.amplitude);
        EXPECT_EQ(voltage.units, row.units);
    }
    const VoltageAmplitude fresh;
    EXPECT_EQ(fresh.amplitude, "0.0");
    EXPECT_EQ(fresh.units, "V");

    for (const char* blank : {"", "   ", "\t"}) {
        try {
            VoltageAmplitude voltage(blank);
            ADD_FAILURE() << "no error for '" << blank << "'";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "setVoltageAmplitudeAndUnits LaneTapVoltage failed");
        }
    }
}

TEST(PinName, SplitsGroupIndexAndPolarity) {
    const struct {
        const char* pin;
        const char* group;
        const char* index;
        const char* polarity;
    } rows[] = {
        {"A10", "A", "10", "s"},   {"DQ12", "DQ", "12", "s"}, {"DQS0_t", "DQS", "0", "t"},
        {"DQS_c", "DQS", "", "c"}, {"CS_n", "CS", "", "s"},   {"CK_t", "CK", "", "t"},
        {"BG0_x", "BG", "0", "x"}, {"DM_n1", "DM", "1", "s"}, {"CK_T0", "CK", "0", "t"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pin);
        const PinNameParts parts = splitPinName(row.pin);
        EXPECT_EQ(parts.group, row.group);
        EXPECT_EQ(parts.index, row.index);
        EXPECT_EQ(parts.polarity, row.polarity);
    }
}

TEST(ComponentParameters, DesignatorsFollowTheRulesOfTheirCell) {
    using Hash = QHash<QString, QString>;
    const Hash continuous{{"U1", "Continuous"}, {"U2", "Continuous"}};
    const Hash x8{{"U1", "x8"}, {"U2", "x8"}};
    const struct {
        const char* cell;
        standin::ParameterValues parameters;
        bool ibisModel;
        bool dieMode;
        Hash dqm;
        Hash dqsIndex;
    } rows[] = {
        // clang-format off
        {"Plain", {{"DDRIbisFile", "b.ebd"}, {"DieMode", "Yes"}, {"RefDesName", "U1"}},
         true, false, {}, {}},
        {"DDR_Memory", {{"DDRIbisFile", "BOARD.EBD"}, {"DieMode", "yes"}, {"RefDesName", " U1  U2"}},
         false, true, x8, continuous},
        {"DDR_Memory", {{"RefDesName", "U1 U2"}, {"Tdqs", "Yes"}, {"DQSIndex", "Even Odd"}},
         true, false, x8, continuous},
        {"DDR_Memory", {{"RefDesName", "U1 U2"}, {"Tdqs", "yes"}, {"DQSIndex", "Even Odd"},
                        {"RefDesDQM", "x4"}},
         true, false, {{"U1", "x4"}, {"U2", "x4"}}, {{"U1", "Even"}, {"U2", "Odd"}}},
        {"DDR_Memory", {{"RefDesName", "U1 U2"}, {"Tdqs", "yes"}, {"DQSIndex", "Even"}},
         true, false, x8, {{"U1", "Even"}, {"U2", ""}}},
        {"DDR_Controller", {{"RefDesName", "U1 U2"}, {"RefDesDQM", "x8"}, {"DieMode", "Yes"}},
         true, true, {}, {}},
        {"DDR_Controller", {{"RefDesName", "U1 U2"}, {"RefDesDQM", "x4 x8"}},
         true, false, {{"U1", "x4"}, {"U2", "x8"}}, continuous},
        {"DDR_Controller", {{"RefDesName", "U1"}, {"RefDesDQM", "x4"}, {"DQSIndex", "Odd Even"}},
         true, false, {{"U1", "x4"}}, {{"U1", "Odd Even"}}},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(describe(row.parameters));
        TestDesign design({{"X1", row.cell, row.parameters}});
        const MemoryTxRxComponentParameters read(design.instance("X1"));
        EXPECT_TRUE(read.parametersRead);
        EXPECT_EQ(read.ibisModel, row.ibisModel);
        EXPECT_EQ(read.dieMode, row.dieMode);
        EXPECT_EQ(read.dqmByRefDes, row.dqm);
        EXPECT_EQ(read.dqsIndexByRefDes, row.dqsIndex);
        EXPECT_EQ(isPinMode(design.instance("X1")), row.ibisModel);
        EXPECT_EQ(isDieMode(design.instance("X1")), row.dieMode);
    }
}

TEST(ControllerParameters, SimulationSettingsIgnoreCase) {
    const struct {
        standin::ParameterValues parameters;
        bool readMode, ddrSimulation, noBurst, ddr4;
        const char* rate;
        const char* rateType;
    } rows[] = {
        // clang-format off
        {{{"DataMode", "READ"}, {"SimulationMode", "Transient"}, {"BurstMode", "lpddr4"},
          {"DataRate", "3200"}, {"DataRateUnit", "Mbps"}, {"DataRateType", "2T"}},
         true, false, false, false, "3200 Mbps", "2T"},
        {{{"DataMode", "write"}, {"SimulationMode", "DDR"}, {"BurstMode", "no burst"},
          {"DataRate", "3.2"}, {"DataRateUnit", "None"}, {"DataRateType", "1T"}},
         false, true, true, true, "3.2", "1T"},
        // Nothing set: every text reads empty.
        {{}, false, true, false, true, " ", ""},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(describe(row.parameters));
        TestDesign design({{"C1", "DDR_Controller", row.parameters}});
        std::unique_ptr<MemoryTxRxComponentParameters> controller =
            std::make_unique<ControllerParameters>();
        controller->readParameters(design.instance("C1"));
        EXPECT_TRUE(controller->parametersRead);
        EXPECT_EQ(controller->isReadMode(), row.readMode);
        EXPECT_EQ(controller->isDDRSimulation(), row.ddrSimulation);
        EXPECT_EQ(controller->isNoBurst(), row.noBurst);
        EXPECT_EQ(controller->isDDR4(), row.ddr4);
        EXPECT_EQ(controller->dataRate(), row.rate);
        EXPECT_EQ(controller->dataRateType(), row.rateType);
    }
}

TEST(ControllerParameters, ProbedInstanceIsTheReceiverInADdrSimulation) {
    const struct {
        bool ddrSimulation;
        bool readMode;
        const char* family;
        bool onController;
        bool onMemory;
    } rows[] = {
        {false, true, "DQ", false, false},  {true, true, "DQ", true, false},
        {true, false, "DQ", false, true},   {true, true, "DQS_t", true, false},
        {true, true, "DQS_c", true, false}, {true, true, "DM_n", true, false},
        {true, true, "DBI_n", true, false}, {true, true, "CK_t", false, true},
        {true, false, "A", false, true},    {true, true, "DQS", false, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.family);
        ControllerParameters controller;
        controller.ddrSimulation = row.ddrSimulation;
        controller.readMode = row.readMode;
        EXPECT_EQ(controller.isProbedInstance(row.family, controllerCellName), row.onController);
        EXPECT_EQ(controller.isProbedInstance(row.family, memoryCellName), row.onMemory);
        EXPECT_FALSE(controller.isProbedInstance(row.family, "Plain"));
    }
    EXPECT_FALSE(MemoryTxRxComponentParameters().isProbedInstance("CK_t", memoryCellName));
    EXPECT_FALSE(ControllerParameters().isProbedInstance("CK_t", memoryCellName));
}
