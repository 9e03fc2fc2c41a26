// The netlist block of a probe whose stored setup comes from the input. The design is fixed: a
// DDR4 controller U1 and a memory U2 sharing two data bits, a strobe pair, a clock pair, a data
// mask and an address bit, and the probe X1. The input is read as lines KEY=VALUE that set the
// probe's parameters; "U1.KEY=VALUE" and "U2.KEY=VALUE" set those of the controller and the memory.
// Values are cleaned of control characters as the design loader demands.
//
// The block is asked for through the built plug-in on the stand-in host, as the host asks. It must
// come, keep the shape the post-processing module reads, leave the parameters as they were, and
// every warning must be one line.

#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/FuzzCheck.h"
#include "host/DdrMetaData.h"
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

const QString header = QStringLiteral("\n;Lane_Tap\n#load \"python\",\"TDM_LaneTap\"\n");
const QStringList sections = {"NodeData", "NodeMeasMap", "NodeRefMap", "ComplianceMeasMap"};

// The shape of the block, as docs/netlist-block.md gives it. The map lines name only signals that
// have node lines, or that a warning named.
void checkBlock(const QString& block, const std::vector<std::string>& warnings) {
    const auto problem = [&](const QString& what) {
        fail(what.toStdString() + "\nin the block " + shown(block));
    };
    if (!block.startsWith(header)) {
        problem("the block does not start with its header");
    }
    if (!block.endsWith(QLatin1String(" \n\n")) || block.endsWith(QLatin1String("\n\n\n"))) {
        problem("the block does not end in one blank, a line end and one empty line");
    }
    const QStringList lines = block.mid(header.size()).chopped(2).split(QLatin1Char('\n'));
    if (lines.size() < 2) {
        problem("the block has no settings line");
    }

    // One statement: every line but the last continues with " \", the last keeps its blank.
    QStringList bodies;
    for (int i = 0; i < lines.size(); ++i) {
        const bool last = i == lines.size() - 1;
        const QString ending = last ? QStringLiteral(" ") : QStringLiteral(" \\");
        if (!lines[i].endsWith(ending)) {
            problem(QString("line %1 does not end in %2").arg(i + 1).arg(ending));
        }
        bodies << lines[i].chopped(ending.size());
    }

    const QString componentStart = QStringLiteral("ComponentWithNodes:X1 ");
    const QString componentEnd = QStringLiteral("Type=\"ModelExtractor\" Module=\"LaneTap\"");
    if (!bodies[0].startsWith(componentStart) || !bodies[0].endsWith(componentEnd)) {
        problem("the component line is not ComponentWithNodes:X1 NETS Type=... Module=...");
    }
    // Every net is followed by one blank.
    const int nets = bodies[0].mid(componentStart.size()).chopped(componentEnd.size()).count(' ');
    if (!bodies[1].startsWith(QLatin1String(" Settings_ReadWriteOperation="))) {
        problem("the second line is not the settings line");
    }

    static const QRegularExpression listLine(
        QStringLiteral(R"re(^([A-Za-z]+)\[([0-9]+)\] = list\(("[^"]*"(, "[^"]*")*)\)$)re"));
    static const QRegularExpression field(QStringLiteral(R"re("([^"]*)")re"));
    int section = 0;
    int counter = 0;
    int nodeLines = 0;
    QSet<QString> watched;
    const auto known = [&](const QString& key) {
        if (watched.contains(key)) {
            return true;
        }
        const std::string quoted = "'" + key.toStdString() + "'";
        for (const std::string& warning : warnings) {
            if (warning.find(quoted) != std::string::npos) {
                return true;
            }
        }
        return false;
    };
    for (int i = 2; i < bodies.size(); ++i) {
        const QRegularExpressionMatch match = listLine.match(bodies[i]);
        if (!match.hasMatch()) {
            problem(QString("line %1 is no NAME[N] = list(\"...\", ...) line").arg(i + 1));
        }
        const int at = sections.indexOf(match.captured(1));
        if (at < section) {
            problem(QString("line %1 is of an unknown section or out of order").arg(i + 1));
        }
        if (at > section) {
            section = at;
            counter = 0;
        }
        if (match.captured(2).toInt() != ++counter) {
            problem(QString("line %1 is not number %2 of its section").arg(i + 1).arg(counter));
        }
        QStringList fields;
        for (auto it = field.globalMatch(match.captured(3)); it.hasNext();) {
            fields << it.next().captured(1);
        }
        const QString& name = sections[section];
        if (name == QLatin1String("NodeData")) {
            if (fields.size() != 7 || !QStringList({"s", "p", "n"}).contains(fields[6])) {
                problem(QString("line %1 is no node line of seven fields").arg(i + 1));
            }
            watched.insert(fields[0]);
            ++nodeLines;
        } else if (name == QLatin1String("NodeMeasMap")) {
            // A measured signal and a reference other than "Unreferenced" are watched.
            if (fields.size() < 3 || !known(fields[0]) ||
                (fields[1] != QLatin1String("Unreferenced") && !known(fields[1]))) {
                problem(QString("line %1 measures a signal the block does not watch").arg(i + 1));
            }
        } else if (name == QLatin1String("NodeRefMap")) {
            if (fields.size() != 2 || !known(fields[0]) || !known(fields[1])) {
                problem(QString("line %1 pairs signals the block does not watch").arg(i + 1));
            }
        } else if (fields.size() < 2) {
            problem(QString("line %1 is a compliance line without tests").arg(i + 1));
        }
    }
    // The i-th net and the i-th node line are the same node.
    if (nodeLines != nets) {
        problem(QString("%1 nets but %2 node lines").arg(nets).arg(nodeLines));
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
