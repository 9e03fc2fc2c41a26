#include "app/DesignGenerator.h"

#include <QJsonArray>
#include <QSet>
#include <algorithm>
#include <utility>

#include "catalogue/ComplianceLookups.h"
#include "catalogue/SpeedGradeDefaults.h"

namespace lanetap {
namespace {

const QString controllerCell = "DDR_Controller";
const QString memoryCell = "DDR_Memory";
const QString controllerName = "U1";

// One DDR port: the terminal it is known by, its package pin, its family as the host names it
// ("DQ", "DQS_t", "CS_n" ...), its index in the family, and the net on it.
struct Port {
    QString terminal;
    QString pin;
    QString family;
    int index;
    int channel;
    QString net;
};

struct Part {
    QString name;
    QString cell;
    QJsonObject parameters;
    QList<Port> ports;
};

QString netName(int channel, const QString& what) {
    return QString("ch%1_%2").arg(channel).arg(what);
}

int strobesPerDevice(const GeneratorOptions& options) {
    return options.width == 16 ? 2 : 1;
}

// The data lanes of memory `device` of a channel. The memory numbers its pins from 0; the
// controller numbers the channel's lanes straight through, so with `controllerSide` the indices
// and pins are the controller's. The nets are the same on both sides.
QList<Port> dataPorts(const GeneratorOptions& options, int channel, int device,
                      bool controllerSide) {
    QList<Port> ports;
    auto add = [&](const QString& family, const QString& pinStem, int local, int lane,
                   const QString& net) {
        const int index = controllerSide ? lane : local;
        const QString pin = pinStem + QString::number(index);
        ports.append({pin, pin, family, index, channel, net});
    };
    for (int bit = 0; bit < options.width; ++bit) {
        const int lane = device * options.width + bit;
        add("DQ", "DQ", bit, lane, netName(channel, QString("dq%1").arg(lane)));
    }
    const int strobes = strobesPerDevice(options);
    for (int strobe = 0; strobe < strobes; ++strobe) {
        const int lane = device * strobes + strobe;
        add("DQS_t", "DQS_t", strobe, lane, netName(channel, QString("dqs%1_t").arg(lane)));
        add("DQS_c", "DQS_c", strobe, lane, netName(channel, QString("dqs%1_c").arg(lane)));
    }
    // x4 parts have no data mask; LPDDR4 calls its mask pin DMI.
    for (int mask = 0; options.width != 4 && mask < strobes; ++mask) {
        const int lane = device * strobes + mask;
        add("DM_n", options.lpddr4 ? "DMI" : "DM_n", mask, lane,
            netName(channel, QString("dm%1").arg(lane)));
    }
    return ports;
}

// Clock, address and command of a channel, shared by the controller and every memory on it.
QList<Port> sharedPorts(const GeneratorOptions& options, int channel) {
    QList<Port> ports;
    auto add = [&](const QString& family, int index, const QString& pin) {
        ports.append({pin, pin, family, index, channel, netName(channel, pin.toLower())});
    };
    add("CK_t", 0, "CK_t");
    add("CK_c", 0, "CK_c");
    if (options.lpddr4) {
        for (int bit = 0; bit < 6; ++bit) {
            add("A", bit, QString("CA%1").arg(bit));
        }
        add("CKE", 0, "CKE");
        add("CS_n", 0, "CS");
        add("ODT", 0, "ODT_CA");
        return ports;
    }
    // A14 to A16 double as WE_n, CAS_n and RAS_n; they are listed under those names.
    for (int bit = 0; bit < 14; ++bit) {
        add("A", bit, QString("A%1").arg(bit));
    }
    for (int bank = 0; bank < 2; ++bank) {
        add("BA", bank, QString("BA%1").arg(bank));
    }
    // x16 parts have one bank group address pin, the others two.
    for (int group = 0; group < (options.width == 16 ? 1 : 2); ++group) {
        add("BG", group, QString("BG%1").arg(group));
    }
    add("CKE", 0, "CKE");
    add("CS_n", 0, "CS_n");
    add("ODT", 0, "ODT");
    add("RAS_n", 0, "RAS_n");
    add("CAS_n", 0, "CAS_n");
    add("WE_n", 0, "WE_n");
    return ports;
}

QString memoryName(const GeneratorOptions& options, int channel, int device) {
    return QString("U%1").arg(2 + channel * options.devices + device);
}

Part controllerPart(const GeneratorOptions& options) {
    Part part{controllerName, controllerCell, {}, {}};
    part.parameters = {{"DDRIbisFile", "controller.ibs"},
                       {"RefDesName", controllerName},
                       {"RefDesDQM", QString("x%1").arg(options.width)},
                       {"DQSIndex", "Continuous"},
                       {"DataMode", options.readMode ? "read" : "write"},
                       {"SimulationMode", options.ddrSimulation ? "DDR" : "transient"},
                       {"BurstMode", options.lpddr4 ? "LPDDR4" : "No BURST"},
                       {"DataRate", "3200"},
                       {"DataRateUnit", "Mbps"},
                       {"DataRateType", "1T"}};
    for (int channel = 0; channel < options.channels; ++channel) {
        QList<Port> ports;
        for (int device = 0; device < options.devices; ++device) {
            ports += dataPorts(options, channel, device, true);
        }
        ports += sharedPorts(options, channel);
        // One controller serves every channel: its terminals carry the channel.
        for (Port& port : ports) {
            port.terminal = QString("CH%1_%2").arg(channel).arg(port.pin);
        }
        part.ports += ports;
    }
    return part;
}

Part memoryPart(const GeneratorOptions& options, int channel, int device) {
    const QString name = memoryName(options, channel, device);
    Part part{name, memoryCell, {}, {}};
    part.ports = dataPorts(options, channel, device, false) + sharedPorts(options, channel);
    const QString model =
        QString("%1_x%2.ibs").arg(options.lpddr4 ? "lpddr4" : "ddr4").arg(options.width);
    part.parameters = {{"DDRIbisFile", options.ebdNodes > 0 ? "board.ebd" : model},
                       {"RefDesName", name},
                       {"RefDesDQM", QString("x%1").arg(options.width)},
                       {"DQSIndex", "Continuous"},
                       {"Tdqs", "no"},
                       {"DieMode", options.dieNodes ? "Yes" : "No"}};
    if (options.ebdNodes > 0) {
        QStringList ports;
        QStringList counts;
        QStringList nodes;
        for (const Port& port : part.ports) {
            ports << port.terminal;
            counts << QString::number(options.ebdNodes);
            for (int node = 1; node <= options.ebdNodes; ++node) {
                nodes << QString("N%1.%2").arg(node).arg(port.terminal);
            }
        }
        part.parameters.insert("IbisPinSelPort", ports.join(' '));
        part.parameters.insert("IbisPinSelEbdNodes", counts.join(' '));
        part.parameters.insert("IbisPinSelEbdNodesName", nodes.join(' '));
    }
    return part;
}

QJsonObject instanceJson(const Part& part) {
    QJsonArray terminals;
    QJsonArray ddrPorts;
    for (const Port& port : part.ports) {
        terminals.append(QJsonObject{{"name", port.terminal}, {"net", port.net}});
        ddrPorts.append(QJsonObject{{"port", port.terminal},
                                    {"pin", port.pin},
                                    {"refDes", part.name},
                                    {"channel", port.channel},
                                    {"signal", port.family},
                                    {"index", port.index}});
    }
    return {{"name", part.name},      {"cell", part.cell},
            {"library", "ddr"},       {"parameters", part.parameters},
            {"terminals", terminals}, {"ddrPorts", ddrPorts}};
}

bool isDataFamily(const QString& family) {
    return family == "DQ" || family.contains("DM") || family.contains("DBI") || family == "DQS_t" ||
           family == "DQS_c";
}

// The places at which discovery sees a port of the part: the node names that stand in its keys.
QStringList placesOf(const GeneratorOptions& options, const Part& part, const QString& family) {
    const bool memory = part.cell == memoryCell;
    // The receiving side: the controller for data in a read cycle, else the memory.
    const bool receiving = (isDataFamily(family) && options.readMode) ? !memory : memory;
    const bool rxOutput = options.ddrSimulation && receiving;
    const bool die = memory && options.dieNodes;
    QStringList places{part.name};
    if (!memory || options.ebdNodes == 0) {
        if (die) {
            places << part.name + "_Die";
        }
        if (rxOutput) {
            places << part.name + "_Rx.Output";
        }
        return places;
    }
    QStringList nodes;
    for (int node = 1; node <= options.ebdNodes; ++node) {
        nodes << QString("%1.N%2").arg(part.name).arg(node);
    }
    places += nodes;
    // Behind a board node: all the die nodes, then all the receiver outputs.
    for (const auto& [wanted, suffix] :
         {std::pair{die, "_Die"}, std::pair{rxOutput, "_Rx.Output"}}) {
        for (const QString& node : nodes) {
            if (wanted) {
                places << node + suffix;
            }
        }
    }
    return places;
}

// The probe's stored selection, built up signal by signal.
struct Selection {
    QStringList signalKeys;
    QStringList measurements;
    QStringList references;
    QSet<QString> types;
};

void selectPart(const GeneratorOptions& options, const Part& part, Selection& selection) {
    const int bitsPerStrobe = options.width == 4 ? 4 : 8;
    for (const Port& port : part.ports) {
        // The negative half of a pair shares the key of the positive half.
        if (port.family.endsWith("_c")) {
            continue;
        }
        const QString type = port.family.section('_', 0, 0);
        const QString channel = QString("Ch%1").arg(port.channel);
        selection.types.insert(type);
        for (const QString& place : placesOf(options, part, port.family)) {
            const QString key = QString("%1_%2_%3_%1%4").arg(type, channel, place).arg(port.index);
            selection.signalKeys << key;
            if (type != "DQ") {
                selection.measurements << key + " 3 ,";
                continue;
            }
            const int strobe = port.index / bitsPerStrobe;
            selection.measurements << key + " 3 1 ,";
            selection.references
                << QString("%1 1 DQS_%2_%3_DQS%4 ,").arg(key, channel, place).arg(strobe);
        }
    }
}

// Every test the compliance page offers each group of the bus, by group.
QString groupCompliance(const GeneratorOptions& options, const QSet<QString>& types) {
    QStringList groups = types.values();
    groups.sort();
    QString text;
    for (const QString& group : groups) {
        QList<qint32> ids =
            LaneTapUI::complianceIdsByNameFor(group, options.lpddr4 ? "LPDDR4" : "DDR4",
                                              options.readMode ? 0 : 1, options.lpddr4 ? 1 : 0)
                .values();
        if (ids.isEmpty()) {
            continue;
        }
        std::sort(ids.begin(), ids.end());
        text += group + " ";
        for (qint32 id : ids) {
            text += QString::number(id) + " ";
        }
        text += ",";
    }
    return text;
}

QJsonObject probeJson(const GeneratorOptions& options, const QList<Part>& parts) {
    Selection selection;
    for (const Part& part : parts) {
        selectPart(options, part, selection);
    }
    const QString dram = options.lpddr4 ? "LPDDR4" : "DDR4";
    QJsonObject parameters{
        {"SelectedSignalList", selection.signalKeys.join(',') + ","},
        {"SelectedMeasurementsListMap", selection.measurements.join("")},
        {"SelectedMeasurementsRefSignalListMap", selection.references.join("")},
        {"EnableComplianceMeasurements", "1"},
        {"SelectedGroupComplianceListMap", groupCompliance(options, selection.types)},
        {"modeOfOperation", options.readMode ? "0" : "1"},
        {"dqsSignalMode", options.lpddr4 ? "1" : "0"},
        {"dramType", options.lpddr4 ? "1" : "0"},
    };
    for (const char* supply : {"vdd", "vddq", "vdd1", "vdd2", "vtt"}) {
        parameters.insert(supply, LaneTapUI::supplyDefault(dram, supply));
    }
    return {
        {"name", "X1"}, {"cell", "LaneTap"}, {"library", "lanetap"}, {"parameters", parameters}};
}

QString describe(const GeneratorOptions& options) {
    QString text = QString(
                       "A generated %1 bus: controller U1, %2 channel(s) of %3 x%4 memories "
                       "each, %5 cycle, %6 simulation")
                       .arg(options.lpddr4 ? "LPDDR4" : "DDR4")
                       .arg(options.channels)
                       .arg(options.devices)
                       .arg(options.width)
                       .arg(options.readMode ? "read" : "write")
                       .arg(options.ddrSimulation ? "DDR" : "transient");
    if (options.ebdNodes > 0) {
        text += QString(", board models with %1 node(s) per port").arg(options.ebdNodes);
    }
    if (options.dieNodes) {
        text += ", die nodes";
    }
    return text + ". Probe X1 selects every signal with compliance on.";
}

}  // namespace

QJsonObject generateDesign(const GeneratorOptions& options) {
    QList<Part> parts{controllerPart(options)};
    for (int channel = 0; channel < options.channels; ++channel) {
        for (int device = 0; device < options.devices; ++device) {
            parts << memoryPart(options, channel, device);
        }
    }
    QJsonArray instances;
    for (const Part& part : parts) {
        instances.append(instanceJson(part));
    }
    instances.append(probeJson(options, parts));
    return {{"format", "lanetap-design-1"},
            {"name", QString("generated_%1_%2ch_%3x%4")
                         .arg(options.lpddr4 ? "lpddr4" : "ddr4")
                         .arg(options.channels)
                         .arg(options.devices)
                         .arg(options.width)},
            {"description", describe(options)},
            {"instances", instances}};
}

}  // namespace lanetap
