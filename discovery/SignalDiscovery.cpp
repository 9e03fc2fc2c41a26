#include "discovery/SignalDiscovery.h"

#include <QPair>
#include <QStringBuilder>
#include <QVarLengthArray>
#include <string>
#include <unordered_map>

#include "catalogue/SignalTypes.h"
#include "discovery/DesignWalk.h"
#include "host/OpenAccess.h"
#include "parameters/ParamText.h"
#include "parameters/PinName.h"

namespace LaneTapUI {
namespace {

const QString dieLabel = QStringLiteral("Die");
const QString rxLabel = QStringLiteral("Rx Output");

// The entry of `cache` for `key`, made by `make` the first time it is asked for.
template <typename Cache, typename Key, typename Make>
const typename Cache::mapped_type& madeOnce(Cache& cache, const Key& key, const Make& make) {
    auto known = cache.constFind(key);
    if (known == cache.constEnd()) {
        known = cache.insert(key, make());
    }
    return *known;
}

// A net with a suffix for a place behind the pin; an empty net stays empty.
QString suffixed(const QString& net, const QString& suffix) {
    return net.isEmpty() ? net : net + suffix;
}

QString ebdNodeSuffix(int position, const QString& label) {
    QString suffix = QStringLiteral("_EBDNode_") + QString::number(position);
    if (label == dieLabel) {
        suffix += QStringLiteral("_Die");
    } else if (label == rxLabel) {
        suffix += QStringLiteral("_DQRxOut");
    }
    return suffix;
}

// What the walk knows of the instance whose ports it is turning into records.
struct InstanceScan {
    db::Instance* instance;
    QString name;
    QString cell;
    bool pinMode;
    bool dieMode;
    NetsByTerminal nets;
    EbdNodes ebdNodes;
    // The cell entry every record of the instance starts with; the records share it until one
    // of them changes.
    QHash<QString, QStringList> models;
};

// One place on one port, from which a record is made.
struct PortPlace {
    QString channel;
    QString refDes;
    QString signalId;
    QString pin;
    QString port;
    // The signal id split once for every record of the port.
    PinNameParts parts;
    QString channelGroupKey;
};

// Fills a new record of a place. Only the dialog's records carry the texts of the signal trees:
// the group key and the display name.
void fillRecord(SignalRecord& record, const InstanceScan& scan, const PortPlace& place,
                const QString& refDes, const QString& label, const QString& net,
                bool withTreeTexts) {
    record.channel = place.channel;
    record.refDes = refDes;
    record.signalId = place.signalId;
    record.pinName = place.pin;
    record.nodeLabel = label;
    record.signalType = place.parts.group;
    record.signalIndex = place.parts.index;
    record.polarity = place.parts.polarity;
    record.instances.insert(scan.name, record.firstNodes(place.port, net));
    record.models = scan.models;
    record.nodeLabelDotted = QString(label).replace(' ', '.');
    record.nodeName = label.isEmpty() ? refDes : refDes % QLatin1Char('_') % record.nodeLabelDotted;
    record.channelGroupKey = place.channelGroupKey;
    record.key = record.channelGroupKey % QLatin1Char('_') % record.nodeName % QLatin1Char('_') %
                 record.signalType % record.signalIndex;
    if (withTreeTexts) {
        record.groupKey = record.channelGroupKey % QLatin1Char('_') % record.nodeName;
        record.displayName =
            label.isEmpty() ? refDes : refDes % QLatin1String(" (") % label % QLatin1Char(')');
    }
}

class Discovery {
public:
    Discovery(const MemoryTxRxComponentParameters& controller, DiscoveryKind kind,
              SignalStore& store, SignalRecordHash& signals)
        : controller(controller),
          withNets(kind == DiscoveryKind::Netlist),
          store(store),
          signals(signals) {}

    void scanInstance(db::Instance* instance) {
        // The instance's own parameters are read once, for both of its modes.
        const MemoryTxRxComponentParameters described(instance);
        InstanceScan scan{instance,
                          QString::fromStdString(db::get_instance_name(instance)),
                          QString::fromStdString(db::get_model_cell_name(instance)),
                          described.ibisModel,
                          described.dieMode,
                          {},
                          {},
                          {}};
        scan.models[scan.cell].append(scan.name);
        if (!scan.pinMode) {
            scan.ebdNodes = readEbdNodes(instance);
        }
        scan.nets = collectNets(instance);
        const DDRBusPlanner::DDRMetaData metaData(instance);
        const std::vector<DDRBusPlanner::DDRPortInfo*> ports = metaData.get_all_meta_data();
        for (const DDRBusPlanner::DDRPortInfo* port : ports) {
            const SignalName& signal = signalName(port->get_signal_id());
            if (signal.skipped) {
                continue;
            }
            const QString& portName = hostText(port->get_port_name());
            addPortRecords(scan, *port, signal, portName);
        }
    }

private:
    // What a signal id of the metadata stands for. A board repeats the same few hundred ids on
    // every instance: each is named and taken apart once.
    struct SignalName {
        QString family;
        // Power, ground and unknown families make no signal.
        bool skipped;
        QString id;
        PinNameParts parts;
    };

    const SignalName& signalName(const DDRBusPlanner::DDRSignalID& id) {
        const int type = id.get_signal_id_type();
        const quint64 code = quint64(quint32(type)) << 32 | quint32(id.index);
        return madeOnce(signalNames, code, [&] {
            const QString family = signalTypeName(type);
            const QString signalId = family + QString::number(id.index);
            return SignalName{family, isPowerOrUnknown(family), signalId, splitPinName(signalId)};
        });
    }

    // A designator, pin or port name of the metadata: a board repeats them on every part, and
    // each is made once.
    const QString& hostText(const std::string& text) {
        auto known = hostTexts.find(text);
        if (known == hostTexts.end()) {
            known = hostTexts.emplace(text, QString::fromStdString(text)).first;
        }
        return known->second;
    }

    // "U2.N1": a node of a board description behind a designator, made once for each.
    const QString& boardNodeDesignator(const QString& refDes, const QString& node) {
        return madeOnce(boardNodeDesignators, qMakePair(refDes, node),
                        [&]() -> QString { return refDes % QLatin1Char('.') % node; });
    }

    // "DQ_Ch0": a family on a channel, the key of a channel level of the signal trees.
    const QString& channelGroupKey(const QString& group, std::uint32_t channel) {
        return madeOnce(channelGroupKeys, qMakePair(group, channel), [&]() -> QString {
            return group % QLatin1Char('_') % channelName(channel);
        });
    }

    // "Ch0" for channel 0, made once for each channel.
    const QString& channelName(std::uint32_t channel) {
        return madeOnce(channelNames, channel, [&]() -> QString {
            return QStringLiteral("Ch") + QString::number(channel);
        });
    }

    static bool isPowerOrUnknown(const QString& family) {
        if (family == QLatin1String("UNKNOWN")) {
            return true;
        }
        for (const char* power : {"VDD", "VSS", "VTT", "VPP"}) {
            if (family.contains(QLatin1String(power))) {
                return true;
            }
        }
        return false;
    }

    // Makes the records of one port and adds each to the hash as it is made.
    void addPortRecords(const InstanceScan& scan, const DDRBusPlanner::DDRPortInfo& port,
                        const SignalName& signal, const QString& portName) {
        const std::uint32_t channel = port.get_channel_id();
        PortPlace place{channelName(channel),
                        hostText(port.get_ref_des()),
                        signal.id,
                        hostText(port.get_pin_name()),
                        portName,
                        signal.parts,
                        channelGroupKey(signal.parts.group, channel)};
        const bool probed = controller.isProbedInstance(signal.family, scan.cell);
        const bool connected = scan.nets.contains(place.port);
        const QString net = withNets ? scan.nets.value(place.port) : QString();
        auto add = [&](const QString& refDes, const QString& label, const QString& recordNet) {
            SignalRecord& record = store.emplace_back();
            fillRecord(record, scan, place, refDes, label, recordNet, !withNets);
            addRecord(record, scan, place.port, connected, net);
        };
        if (scan.pinMode) {
            add(place.refDes, QString(), net);
            if (scan.dieMode) {
                add(place.refDes, dieLabel, suffixed(net, QStringLiteral("_Die")));
            }
            if (probed) {
                add(place.refDes, rxLabel, suffixed(net, QStringLiteral("_DQRxOut")));
            }
            return;
        }
        QVarLengthArray<QString, 4> nodeRefDes;
        for (const QString& node : scan.ebdNodes.value(place.port)) {
            nodeRefDes.append(boardNodeDesignator(place.refDes, node));
        }
        add(place.refDes, QString(), net);
        for (int i = 0; i < nodeRefDes.size(); ++i) {
            add(nodeRefDes[i], QString(), ebdNodeNet(net, i, QString()));
        }
        for (const QString& label : {dieLabel, rxLabel}) {
            if (label == dieLabel ? scan.dieMode : probed) {
                for (int i = 0; i < nodeRefDes.size(); ++i) {
                    add(nodeRefDes[i], label, ebdNodeNet(net, i, label));
                }
            }
        }
    }

    // The record just made at the end of the store. A record of a connected port is new and
    // stays there, or adds its node to the record of its key and goes; any other goes too.
    void addRecord(SignalRecord& record, const InstanceScan& scan, const QString& port,
                   bool connected, const QString& net) {
        if (connected) {
            // One look-up: a new key gets its place in the hash here.
            SignalRecord*& known = signals[record.key];
            if (!known) {
                known = &record;
                return;
            }
            addNodes(*known, record, scan, port, net);
            store.pop_back();
            return;
        }
        const auto existing = signals.find(record.key);
        store.pop_back();
        if (existing == signals.end()) {
            return;
        }
        SignalRecord* known = existing.value();
        if (known->instances.contains(scan.name)) {
            // The other half of this pair was connected, this one is not: drop the pair.
            meridian_report_warning("Only one node of differential signal '" +
                                    known->key.toStdString() + "' for instance " +
                                    scan.name.toStdString() + " is connected. Ignoring it.\n");
            signals.erase(existing);
        }
    }

    // A connected port reaching a signal that is already known adds its node to it.
    void addNodes(SignalRecord& known, const SignalRecord& arriving, const InstanceScan& scan,
                  const QString& port, const QString& net) const {
        const QString& label = arriving.nodeLabel;
        if (!withNets) {
            known.addInstanceNode(scan.name, scan.cell, port, QString());
            return;
        }
        if (label.isEmpty()) {
            known.addInstanceNode(scan.name, scan.cell, port, net);
        }
        if (!scan.pinMode) {
            // Each board node overwrites the last; the last node's net stands.
            const QStringList nodes = scan.ebdNodes.value(port);
            for (int i = 0; i < nodes.size() && (label == dieLabel || label == rxLabel); ++i) {
                known.addInstanceNode(scan.name, scan.cell, port, ebdNodeNet(net, i, label));
            }
        } else if (label == dieLabel) {
            known.addInstanceNode(scan.name, scan.cell, port, suffixed(net, "_Die"));
        } else if (label == rxLabel) {
            known.addInstanceNode(scan.name, scan.cell, port, suffixed(net, "_DQRxOut"));
        }
    }

    // The net of board node `position` for a place; the suffixes are made once for every port.
    QString ebdNodeNet(const QString& net, int position, const QString& label) const {
        QStringList& known = ebdSuffixes[label == dieLabel ? 1 : label == rxLabel ? 2 : 0];
        while (known.size() <= position) {
            known.append(ebdNodeSuffix(known.size(), label));
        }
        return suffixed(net, known.at(position));
    }

    const MemoryTxRxComponentParameters& controller;
    const bool withNets;
    SignalStore& store;
    SignalRecordHash& signals;
    mutable QStringList ebdSuffixes[3];
    QHash<quint64, SignalName> signalNames;
    QHash<std::uint32_t, QString> channelNames;
    std::unordered_map<std::string, QString> hostTexts;
    QHash<QPair<QString, QString>, QString> boardNodeDesignators;
    QHash<QPair<QString, std::uint32_t>, QString> channelGroupKeys;
};

// The node is the name up to its first dot, leading dots passed over.
QStringView nodeOfName(QStringView name) {
    int start = 0;
    while (start < name.size() && name[start] == QLatin1Char('.')) {
        ++start;
    }
    int end = start;
    while (end < name.size() && name[end] != QLatin1Char('.')) {
        ++end;
    }
    return name.mid(start, end - start);
}

QString oaNetName(OpenAccess_4::oaBitNet* net) {
    OpenAccess_4::oaName name;
    net->getName(name);
    OpenAccess_4::oaString text;
    name.get(text);
    return QString::fromUtf8(static_cast<const char*>(text));
}

QString terminalName(OpenAccess_4::oaInstTerm* bit) {
    db::MeridianObject* object = db::MeridianObject::find_oa_object_meridian_data(bit);
    if (!object) {
        object = db::MeridianObject::create_oa_object_meridian_data(bit);
    }
    return QString::fromStdString(db::get_inst_term_name(static_cast<db::InstTerm*>(object)));
}

}  // namespace

std::unique_ptr<ControllerParameters> findControllerParameters(db::Design* design) {
    auto parameters = std::make_unique<ControllerParameters>();
    walkInstances(design, [&](db::Instance* instance) {
        if (db::get_model_cell_name(instance) != controllerCellName) {
            return true;
        }
        parameters->readParameters(instance);
        return false;
    });
    return parameters;
}

void discoverSignals(db::Design* design, const MemoryTxRxComponentParameters& controller,
                     DiscoveryKind kind, SignalStore& store, SignalRecordHash& signals) {
    Discovery discovery(controller, kind, store, signals);
    walkInstances(design, [&](db::Instance* instance) {
        discovery.scanInstance(instance);
        return true;
    });
}

EbdNodes readEbdNodes(db::Instance* instance) {
    EbdNodes nodes;
    const db::ParamIter parameters(instance);
    const QString portText = readParamText(parameters, "IbisPinSelPort");
    const QString countText = readParamText(parameters, "IbisPinSelEbdNodes");
    const QString nameText = readParamText(parameters, "IbisPinSelEbdNodesName");
    WordViews ports;
    WordViews counts;
    WordViews names;
    splitOnWhiteSpace(portText, ports);
    splitOnWhiteSpace(countText, counts);
    splitOnWhiteSpace(nameText, names);
    // Every port of a part names the same few nodes: each is made once.
    QHash<QStringView, QString> nodeNames;
    int next = 0;
    for (int i = 0; i < ports.size(); ++i) {
        // The three lists are trusted to match; a short list simply runs out here.
        const int count = i < counts.size() ? wordToInt(counts[i]) : 0;
        QStringList portNodes;
        portNodes.reserve(qBound(0, count, names.size() - next));
        for (int n = 0; n < count && next < names.size(); ++n) {
            const QStringView node = nodeOfName(names[next++]);
            portNodes << madeOnce(nodeNames, node, [&] { return node.toString(); });
        }
        nodes.insert(ports[i].toString(), portNodes);
    }
    return nodes;
}

NetsByTerminal collectNets(db::Instance* instance) {
    NetsByTerminal nets;
    if (!instance) {
        return nets;
    }
    for (db::InstTermIter terms(instance); db::InstTerm* term = terms.get_current_data();
         terms.set_next()) {
        auto* oaTerm = static_cast<OpenAccess_4::oaInstTerm*>(term->oaObject);
        db::Net* net = term->get_net_of_object_only();
        OpenAccess_4::oaNet* oaNet = net ? net->cast_to_oa_net() : nullptr;
        for (unsigned bit = 0; bit < oaTerm->getNumBits(); ++bit) {
            const QString name = terminalName(oaTerm->getBit(bit));
            OpenAccess_4::oaBitNet* bitNet = oaNet ? oaNet->getBit(bit) : nullptr;
            if (bitNet) {
                nets.insert(name, oaNetName(bitNet));
            }
        }
    }
    return nets;
}

}  // namespace LaneTapUI
