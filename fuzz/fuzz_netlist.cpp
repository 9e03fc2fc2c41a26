// The netlist block of a probe whose stored setup comes from the input. The design is fixed: a
// DDR4 controller U1 and a memory U2 sharing two data bits, a strobe pair, a clock pair, a data
// mask and an address bit, and the probe X1. The input is read as lines KEY=VALUE that set the
// probe's parameters; "U1.KEY=VALUE" and "U2.KEY=VALUE" set those of the controller and the memory.
// Values are cleaned of control characters as the design loader demands.
//
// The block is asked for through the built plug-in on the stand-in host, as the host asks. It must
// come, keep the shape the post-processing module reads, leave the parameters as they were, and
// every warning must be one line.

#include <QSet>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/FuzzCheck.h"
#include "host/DdrMetaData.h"
#include "netlist/BlockReader.h"
#include "standin/Design.h"
#include "standin/Host.h"
#include "standin/ItemDefinition.h"

using lanetap_fuzz::check;
using lanetap_fuzz::fail;
using lanetap_fuzz::shown;
using namespace DDRBusPlanner;

namespace {

struct Port {
    const char* name;
    const char* net;
    signalType family;
    int index;
};

const Port busPorts[] = {
    {"DQ0", "n_dq0", DQ, 0},         {"DQ1", "n_dq1", DQ, 1},      {"DQS_t0", "n_dqs_p", DQS_t, 0},
    {"DQS_c0", "n_dqs_n", DQS_c, 0}, {"CK_t0", "n_ck_p", CK_t, 0}, {"CK_c0", "n_ck_n", CK_c, 0},
    {"DM_n0", "n_dm0", DM_n, 0},     {"A0", "n_a0", A, 0},
};

standin::Instance* addDdrInstance(db::Design& design, const char* name, const char* cell,
                                  const standin::ParameterValues& parameters) {
    standin::Instance* instance = design.addInstance();
    instance->name = name;
    instance->cell = cell;
    instance->library = "ddr";
    instance->model = std::make_unique<standin::ModelDef>(true);
    instance->parameters.values = parameters;
    for (const Port& port : busPorts) {
        design.addScalarTerm(instance, port.name, design.netNamed(port.net));
        standin::DdrPort ddr;
        ddr.port = ddr.pin = port.name;
        ddr.refDes = name;
        ddr.signal = port.family;
        ddr.index = port.index;
        instance->ddrPorts.push_back(ddr);
    }
    return instance;
}

// A parameter text as the design loader would let it through: UTF-8, without control characters.
std::string cleaned(const QString& text) {
    QString kept;
    for (const QChar c : text) {
        if (c.category() != QChar::Other_Control) {
            kept += c;
        }
    }
    return kept.toStdString();
}

std::unique_ptr<db::Design> designFrom(const QString& input) {
    standin::ParameterValues controller = {{"DDRIbisFile", "controller.ibs"},
                                           {"RefDesName", "U1"},
                                           {"RefDesDQM", "x8"},
                                           {"DQSIndex", "Continuous"},
                                           {"DataMode", "write"},
                                           {"SimulationMode", "transient"},
                                           {"BurstMode", "No BURST"},
                                           {"DataRate", "3200"},
                                           {"DataRateUnit", "Mbps"},
                                           {"DataRateType", "1T"}};
    standin::ParameterValues memory = {{"DDRIbisFile", "memory.ibs"},
                                       {"RefDesName", "U2"},
                                       {"RefDesDQM", "x8"},
                                       {"DieMode", "No"},
                                       {"Tdqs", "no"}};
    standin::ParameterValues probe;
    for (const QString& line : input.split(QLatin1Char('\n'))) {
        const int equals = line.indexOf(QLatin1Char('='));
        if (equals < 0) {
            continue;
        }
        std::string key = cleaned(line.left(equals));
        const std::string value = cleaned(line.mid(equals + 1));
        standin::ParameterValues* target = &probe;
        if (key.rfind("U1.", 0) == 0 || key.rfind("U2.", 0) == 0) {
            target = key[1] == '1' ? &controller : &memory;
            key.erase(0, 3);
        }
        if (!key.empty()) {
            (*target)[key] = value;
        }
    }

    auto design = std::make_unique<db::Design>();
    design->name = "fuzz";
    addDdrInstance(*design, "U1", "DDR_Controller", controller);
    addDdrInstance(*design, "U2", "DDR_Memory", memory);
    standin::Instance* x1 = design->addInstance();
    x1->name = "X1";
    x1->cell = standin::probeCellName;
    x1->library = "lanetap";
    x1->model = std::make_unique<standin::ModelDef>(true);
    x1->parameters.defaults = &standin::probeItemDefinition();
    x1->parameters.values = probe;
    return design;
}

standin::Host& host() {
    static standin::Host* loaded = [] {
        auto* made = new standin::Host();
        try {
            const std::vector<std::string> failures = made->loadPlugin(LANETAP_PLUGIN_PATH);
            check(failures.empty(), "the plug-in did not register: " +
                                        (failures.empty() ? std::string() : failures.front()));
        } catch (const std::exception& error) {
            fail(std::string("cannot load the plug-in: ") + error.what());
        }
        return made;
    }();
    return *loaded;
}

// The block as its reader reads it. Stored values reach the settings line as they stand, so a
// value the doors would refuse may break its pair; nothing else may break: the statement, the
// component line, the sections and their counts hold whatever is stored. The map lines name only
// signals that have node lines, or that a warning named.
void checkBlock(const QString& text, const std::vector<std::string>& warnings) {
    const LaneTapUI::NetlistBlock block = LaneTapUI::readBlock(text);
    for (const LaneTapUI::BlockProblem& problem : block.problems) {
        if (problem.place != LaneTapUI::BlockProblem::Place::Setting) {
            fail("the block cannot be read: " + problem.text().toStdString() + "\nin the block " +
                 shown(text));
        }
    }
    QSet<QString> watched;
    for (const QStringList& node : block.nodeData) {
        watched.insert(node.value(0));
    }
    const auto known = [&](const QString& key) {
        const std::string quoted = "'" + key.toStdString() + "'";
        return watched.contains(key) ||
               std::any_of(warnings.begin(), warnings.end(), [&](const std::string& warning) {
                   return warning.find(quoted) != std::string::npos;
               });
    };
    for (const QStringList& line : block.nodeMeasMap) {
        check(known(line[0]) && (line[1] == QLatin1String("Unreferenced") || known(line[1])),
              "a measurement line names a signal the block does not watch: " +
                  shown(line.join(", ")));
    }
    for (const QStringList& line : block.nodeRefMap) {
        check(known(line[0]) && known(line[1]),
              "a reference line pairs signals the block does not watch: " + shown(line.join(", ")));
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    host();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString input =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    standin::Host& theHost = host();
    theHost.adoptDesign(designFrom(input));
    const standin::ParameterValues before = theHost.design()->findInstance("X1")->parameters.values;

    const standin::CallResult result = theHost.netlistProbe("X1");
    const std::vector<std::string> warnings = theHost.takeWarnings();
    check(result.ok, "the netlist call failed: " + result.error);
    check(theHost.design()->findInstance("X1")->parameters.values == before,
          "netlisting changed the probe's parameters");
    for (const std::string& warning : warnings) {
        // Most warnings carry their line end, one does not; none runs over more than a line.
        const std::size_t lineEnd = warning.find('\n');
        check(!warning.empty() && (lineEnd == std::string::npos || lineEnd == warning.size() - 1),
              "a warning is not one line: " + shown(warning));
    }
    checkBlock(QString::fromStdString(result.text), warnings);
    return 0;
}
