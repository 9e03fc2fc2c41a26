// The stand-in's design database seen through the host's declarations, the way discovery and the
// netlist writer reach it: the instance filter, parameters, terminals and nets down to their bits,
// the DDR metadata, the probe's item definition, and the script values of host calls.

#include <gtest/gtest.h>

#include <QFileInfo>
#include <cstring>
#include <functional>
#include <memory>

#include "discovery/DesignWalk.h"
#include "host/DdrMetaData.h"
#include "standin/DesignFile.h"
#include "standin/Host.h"
#include "standin/ScriptValues.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::designText;
using lanetap_test::Workspace;
using Texts = std::vector<std::string>;

std::unique_ptr<db::Design> loadDesign(const Workspace& workspace, const QByteArray& text) {
    return standin::readDesignFile(workspace.write("design.json", text));
}

// The pointer-sized word `index` of a host handle.
const void* handleWord(const void* handle, int index) {
    const void* word;
    std::memcpy(&word, static_cast<const char*>(handle) + index * sizeof(void*), sizeof word);
    return word;
}

TEST(HostSeam, WalkPassesOverFilteredInstances) {
    Workspace workspace;
    const auto design = loadDesign(
        workspace,
        designText({
            R"({"name": "Active", "cell": "DDR_Memory"})",
            R"({"name": "Status1", "cell": "DDR_Memory", "status": 1})",
            R"({"name": "Status2", "cell": "DDR_Memory", "status": 2})",
            R"({"name": "Status3", "cell": "DDR_Memory", "status": 3})",
            R"({"name": "NoModel", "cell": "DDR_Memory", "model": "none"})",
            R"({"name": "Inactive", "cell": "DDR_Memory", "model": "inactive"})",
            R"({"name": "InactiveController", "cell": "DDR_Controller", "model": "inactive"})",
            R"({"name": "Controller", "cell": "DDR_Controller", "model": "active", "status": 0})",
            R"({"name": "X1", "cell": "LaneTap"})",
        }));

    Texts visited;
    LaneTapUI::walkInstances(design.get(), [&](db::Instance* instance) {
        // The fourth word of an instance handle is its design.
        EXPECT_EQ(handleWord(instance, 3), design.get());
        visited.push_back(db::get_instance_name(instance));
        return true;
    });
    EXPECT_EQ(visited, (Texts{"Active", "Controller", "X1"}));

    Texts first;
    LaneTapUI::walkInstances(design.get(), [&](db::Instance* instance) {
        first.push_back(db::get_instance_name(instance));
        return false;
    });
    EXPECT_EQ(first, Texts{"Active"});
}

bool throwsStandardException(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception&) {
        return true;
    } catch (...) {
        ADD_FAILURE() << "an exception not derived from std::exception";
        return true;
    }
    return false;
}

TEST(HostSeam, ParametersAndTheProbeItemDefinition) {
    Workspace workspace;
    const auto design = loadDesign(
        workspace, designText({
                       R"({"name": "U1", "cell": "DDR_Memory",
                           "parameters": {"DDRIbisFile": "mem.ibs", "Blank": ""}})",
                       R"({"name": "X1", "cell": "LaneTap", "parameters": {"vddq": "1.1 V"}})",
                   }));
    standin::Instance* memory = design->findInstance("U1");
    standin::Instance* probe = design->findInstance("X1");
    ASSERT_TRUE(memory && probe);

    db::ParamIter memoryParameters(memory);
    EXPECT_EQ(memoryParameters.get_param_string_value("DDRIbisFile"), "mem.ibs");
    EXPECT_EQ(memoryParameters.get_param_string_value("Blank"), "");
    EXPECT_TRUE(throwsStandardException([&] { memoryParameters.get_param_string_value("Tdqs"); }));
    // Only a probe falls back on the item definition.
    EXPECT_TRUE(throwsStandardException([&] { memoryParameters.get_param_string_value("vdd"); }));

    memoryParameters.set_param_string_value("Tdqs", "1");
    EXPECT_EQ(db::ParamIter(memory).get_param_string_value("Tdqs"), "1");

    // An iterator that no session has filled has no parameters at all.
    db::ParamIter empty(nullptr, memory);
    EXPECT_TRUE(throwsStandardException([&] { empty.get_param_string_value("DDRIbisFile"); }));

    db::ParamIter probeParameters(probe);
    EXPECT_EQ(probeParameters.get_param_string_value("vdd"), "1.2 V");
    EXPECT_EQ(probeParameters.get_param_string_value("vddq"), "1.1 V");
    EXPECT_TRUE(throwsStandardException([&] { probeParameters.get_param_string_value("nope"); }));

    // The setup cannot be opened on a probe whose voltage parameters are blank, so the item
    // definition gives every one of them a value that starts with a number.
    const QStringList voltageKeys =
        QString(
            "AmplitudeResolution vdd vddq vdd1 vdd2 vtt "
            "vih_dq_ac vil_dq_ac vih_dq_dc vil_dq_dc vref_dq "
            "vih_ca_ac vil_ca_ac vih_ca_dc vil_ca_dc vref_ca "
            "se_high_DQS se_low_DQS se_high_CK se_low_CK voh_ac vol_ac voh_dc vol_dc "
            "vihDiff_DQS_ac vilDiff_DQS_ac vihDiff_DQS vilDiff_DQS "
            "vihDiff_CK_ac vilDiff_CK_ac vihDiff_CK vilDiff_CK voh_diff vol_diff")
            .split(' ');
    for (const QString& name : voltageKeys) {
        const std::string key = name.toStdString();
        SCOPED_TRACE(key);
        ASSERT_EQ(standin::probeItemDefinition().count(key), 1u);
        const QString value = QString::fromStdString(probeParameters.get_param_string_value(key));
        bool isNumber = false;
        value.section(' ', 0, 0).toDouble(&isNumber);
        EXPECT_TRUE(isNumber) << value.toStdString();
    }
}

struct TerminalView {
    std::string name;
    Texts bitNames;
    Texts bitNets;
};

const std::string unconnected = "<unconnected>";

// Reads every terminal of an instance down to its bits, as discovery does: the terminal's
// OpenAccess object, its bits and their database objects, and the bits of the terminal's net.
std::vector<TerminalView> readTerminals(const db::Instance* instance) {
    using namespace OpenAccess_4;
    std::vector<TerminalView> views;
    for (db::InstTermIter it(instance); db::InstTerm* term = it.get_current_data(); it.set_next()) {
        auto* oaTerm = static_cast<oaInstTerm*>(term->oaObject);
        EXPECT_EQ(handleWord(term, 2), oaTerm) << "third word of a terminal handle";
        TerminalView view;
        view.name = db::get_inst_term_name(term);
        const db::Net* net = term->get_net_of_object_only();
        const oaNet* busNet = net ? net->cast_to_oa_net() : nullptr;
        for (unsigned bit = 0; bit < oaTerm->getNumBits(); ++bit) {
            oaInstTerm* bitTerm = oaTerm->getBit(bit);
            db::MeridianObject* data = db::MeridianObject::find_oa_object_meridian_data(bitTerm);
            if (!data) {
                data = db::MeridianObject::create_oa_object_meridian_data(bitTerm);
            }
            // Asking again gives the same object, not a second one.
            EXPECT_EQ(db::MeridianObject::find_oa_object_meridian_data(bitTerm), data);
            EXPECT_EQ(db::MeridianObject::create_oa_object_meridian_data(bitTerm), data);
            view.bitNames.push_back(db::get_inst_term_name(static_cast<db::InstTerm*>(data)));

            const oaBitNet* bitNet = busNet ? busNet->getBit(bit) : nullptr;
            if (!bitNet) {
                view.bitNets.push_back(unconnected);
                continue;
            }
            oaName name;
            bitNet->getName(name);
            oaString text;
            name.get(text);
            view.bitNets.emplace_back(static_cast<const char*>(text));
        }
        views.push_back(view);
    }
    return views;
}

TEST(HostSeam, TerminalsAndNetsDownToTheirBits) {
    Workspace workspace;
    const auto design =
        loadDesign(workspace, designText({
                                  R"({"name": "U1", "cell": "DDR_Memory", "terminals": [
                           {"name": "DQS_t0", "net": "n_dqs_p"},
                           {"name": "DQ", "bits": [{"name": "DQ<0>", "net": "n_dq0"},
                                                   {"name": "DQ<1>", "net": "n_dq1"},
                                                   {"name": "DQ<2>", "net": "n_dq2"},
                                                   {"name": "DQ<3>", "net": null}]},
                           {"name": "NC"}]})",
                                  R"({"name": "U2", "cell": "DDR_Controller", "terminals": [
                           {"name": "DQ<1>", "net": "n_dq1"}]})",
                              }));
    const std::vector<TerminalView> terminals = readTerminals(design->findInstance("U1"));
    ASSERT_EQ(terminals.size(), 3u);

    EXPECT_EQ(terminals[0].name, "DQS_t0");
    EXPECT_EQ(terminals[0].bitNames, Texts{"DQS_t0"});
    EXPECT_EQ(terminals[0].bitNets, Texts{"n_dqs_p"});

    EXPECT_EQ(terminals[1].name, "DQ");
    EXPECT_EQ(terminals[1].bitNames, (Texts{"DQ<0>", "DQ<1>", "DQ<2>", "DQ<3>"}));
    EXPECT_EQ(terminals[1].bitNets, (Texts{"n_dq0", "n_dq1", "n_dq2", unconnected}));

    EXPECT_EQ(terminals[2].name, "NC");
    EXPECT_EQ(terminals[2].bitNames, Texts{"NC"});
    EXPECT_EQ(terminals[2].bitNets, Texts{unconnected});

    // A net named twice is one net: the other instance's terminal reaches the bus's bit 1.
    db::InstTermIter dqBus(design->findInstance("U1"));
    dqBus.set_next();
    db::InstTermIter other(design->findInstance("U2"));
    ASSERT_TRUE(dqBus.get_current_data() && other.get_current_data());
    const OpenAccess_4::oaNet* bit1 =
        dqBus.get_current_data()->get_net_of_object_only()->cast_to_oa_net()->getBit(1);
    EXPECT_EQ(other.get_current_data()->get_net_of_object_only()->cast_to_oa_net(), bit1);
}

TEST(HostSeam, DdrMetadataInFileOrder) {
    Workspace workspace;
    const auto design =
        loadDesign(workspace, designText({R"({"name": "U1", "cell": "DDR_Memory", "ddrPorts": [
            {"port": "DQ<3>", "pin": "DQ3", "refDes": "U1", "channel": 1, "signal": "DQ", "index": 3},
            {"port": "DQS_c0", "pin": "DQS_c0", "refDes": "U1", "channel": 0, "signal": "DQS_c"},
            {"port": "A<1>", "pin": "A1", "refDes": "U9", "channel": 2, "signal": 5, "index": 1},
            {"port": "X", "pin": "X", "refDes": "U1", "channel": 4000000000, "signal": 42}]})"}));
    db::Instance* memory = design->findInstance("U1");

    struct Port {
        std::uint32_t channel;
        std::string pin, port, refDes;
        std::int32_t index, family;
    };
    const Port expected[] = {
        {1, "DQ3", "DQ<3>", "U1", 3, DDRBusPlanner::DQ},
        {0, "DQS_c0", "DQS_c0", "U1", 0, DDRBusPlanner::DQS_c},
        {2, "A1", "A<1>", "U9", 1, DDRBusPlanner::A},
        // A number outside the families is passed on as it is.
        {4000000000u, "X", "X", "U1", 0, 42},
    };
    const DDRBusPlanner::DDRMetaData metadata(memory);
    const std::vector<DDRBusPlanner::DDRPortInfo*>& ports = metadata.get_all_meta_data();
    ASSERT_EQ(ports.size(), std::size(expected));
    for (std::size_t i = 0; i < ports.size(); ++i) {
        SCOPED_TRACE(expected[i].port);
        EXPECT_EQ(ports[i]->get_channel_id(), expected[i].channel);
        EXPECT_EQ(ports[i]->get_pin_name(), expected[i].pin);
        EXPECT_EQ(ports[i]->get_port_name(), expected[i].port);
        EXPECT_EQ(ports[i]->get_ref_des(), expected[i].refDes);
        const DDRBusPlanner::DDRSignalID id = ports[i]->get_signal_id();
        EXPECT_EQ(id.index, expected[i].index);
        EXPECT_EQ(id.get_signal_id_type(), expected[i].family);
        // Copied by value as two 32-bit words: the index, then the family.
        static_assert(sizeof(DDRBusPlanner::DDRSignalID) == 8);
        std::int32_t words[2];
        std::memcpy(words, &id, sizeof words);
        EXPECT_EQ(words[0], expected[i].index);
        EXPECT_EQ(words[1], expected[i].family);
    }
}

TEST(HostSeam, SignalFamilyTextsMapToTheirValues) {
    const std::pair<const char*, DDRBusPlanner::signalType> families[] = {
        {"DQ", DDRBusPlanner::DQ},       {"DQS_t", DDRBusPlanner::DQS_t},
        {"DQS_c", DDRBusPlanner::DQS_c}, {"CK_t", DDRBusPlanner::CK_t},
        {"CK_c", DDRBusPlanner::CK_c},   {"A", DDRBusPlanner::A},
        {"VDD", DDRBusPlanner::VDD},     {"VPP", DDRBusPlanner::VPP},
        {"VSS", DDRBusPlanner::VSS},     {"ODT", DDRBusPlanner::ODT},
        {"CS_n", DDRBusPlanner::CS_n},   {"CKE", DDRBusPlanner::CKE},
        {"RAS_n", DDRBusPlanner::RAS_n}, {"CAS_n", DDRBusPlanner::CAS_n},
        {"WE_n", DDRBusPlanner::WE_n},   {"BA", DDRBusPlanner::BA},
        {"BG", DDRBusPlanner::BG},       {"DM_n", DDRBusPlanner::DM_n},
        {"DBI_n", DDRBusPlanner::DBI_n},
    };
    QStringList ports;
    for (const auto& [text, family] : families) {
        ports << QString(R"({"port": "P%1", "pin": "P", "refDes": "U1", "signal": "%2"})")
                     .arg(int(family))
                     .arg(text);
    }
    Workspace workspace;
    const auto design = loadDesign(
        workspace, designText({QString(R"({"name": "U1", "cell": "DDR_Memory", "ddrPorts": [%1]})")
                                   .arg(ports.join(", "))}));
    const DDRBusPlanner::DDRMetaData metadata(design->findInstance("U1"));
    ASSERT_EQ(metadata.get_all_meta_data().size(), std::size(families));
    for (std::size_t i = 0; i < std::size(families); ++i) {
        EXPECT_EQ(metadata.get_all_meta_data()[i]->get_signal_id().get_signal_id_type(),
                  families[i].second)
            << families[i].first;
    }
}

TEST(HostSeam, HostScriptCallsFreeEveryValue) {
    Workspace workspace;
    standin::Host host;
    host.loadDesign(
        workspace.write("design.json", designText({R"({"name": "X1", "cell": "LaneTap"})"})));
    standin::WindowInstance window(nullptr);
    auto* editor = static_cast<ItemParametersEditInterface*>(
        host.registry()->getInterface("ItemParametersEdit"));
    ASSERT_NE(editor, nullptr);
    const long valuesBefore = standin::liveValueCount();
    {
        const ORLValue folder = CallORL("de_workspace_directory").execute(nullptr);
        ASSERT_NE(StringORLValue(folder).value_data(), nullptr);
        EXPECT_EQ(QString(StringORLValue(folder).value_data()),
                  QFileInfo(workspace.path("design.json")).absolutePath());

        const ORLValue design(create_design_orl_value(host.design()));
        CallORL("de_end_one_lapi_command_in_all_context_windows").add_arg(design).execute(nullptr);

        const ORLValue windowValue(apival_create_winInst_value(&window, nullptr, nullptr, nullptr));
        const ORLValue helped = CallORL("de_post_help_cb")
                                    .add_arg(0)
                                    .add_arg("lane_tap")
                                    .add_arg(windowValue)
                                    .execute(nullptr);
        EXPECT_EQ(StringORLValue(helped).value_data(), nullptr);

        const ORLValue session(editor->sessionValue(nullptr));
        CallORL("de_iteminfo_edit_instance")
            .add_arg(session)
            .add_arg(std::string("X1"))
            .execute(nullptr);

        EXPECT_TRUE(throwsStandardException(
            [] { CallORL("de_no_such_function").add_arg(1).add_arg("x").execute(nullptr); }));
    }
    EXPECT_EQ(standin::liveValueCount(), valuesBefore);
    EXPECT_EQ(host.commandsEnded, 1);
    EXPECT_EQ(host.helpRequests, Texts{"lane_tap"});
    EXPECT_EQ(host.editedInstanceNotices, Texts{"X1"});
}

}  // namespace
