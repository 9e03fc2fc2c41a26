#include "netlist/NetlistWriter.h"

#include <string>

#include "discovery/SignalDiscovery.h"
#include "netlist/NetlistText.h"
#include "parameters/ParamText.h"
#include "parameters/TestModes.h"

namespace LaneTapUI {

namespace {

// More than a signal's share of the block usually is: the block is reserved once, so that it does
// not grow by copies. The node data and measurement map take the most, the node list a net or
// two, the reference map a line or so for each signal.
constexpr int blockBytesPerSignal = 512;

// The design that holds the probe; the walks see the whole of it.
db::Design* designOf(const db::Instance* instance) {
    return instance ? instance->design : nullptr;
}

}  // namespace

NetlistWriter::NetlistWriter(db::ParamIter* parameters, db::Instance* instance)
    : parameterIterator(parameters), probeInstance(instance) {
    findControllerParameters();
    discoverSignals();
    stored = StoredSelection{
        parseListEntries(readParamString(*parameters, "SelectedSignalList")),
        parseReferenceMap(readParamString(*parameters, "SelectedMeasurementsRefSignalListMap")),
        parseIntListViews(readParamString(*parameters, "SelectedMeasurementsListMap"))};
}

NetlistWriter::~NetlistWriter() = default;

void NetlistWriter::findControllerParameters() {
    controllerParameters = LaneTapUI::findControllerParameters(designOf(probeInstance));
}

void NetlistWriter::discoverSignals() {
    LaneTapUI::discoverSignals(designOf(probeInstance), *controllerParameters,
                               DiscoveryKind::Netlist, store, signals);
}

QByteArray NetlistWriter::writeBlock() {
    const QString probeName = QString::fromStdString(db::get_instance_name(probeInstance));
    collectSelectedSignals();
    if (signals.isEmpty()) {
        // Not a reason to stop: the block still carries the settings.
        NetlistText::reportWarning(QStringLiteral("No signals selected for '") + probeName +
                                   QStringLiteral("' component.\n"));
    }

    QByteArray block;
    block.reserve(signals.size() * blockBytesPerSignal);
    block += "\n;Lane_Tap\n#load \"python\",\"TDM_LaneTap\"\nComponentWithNodes:";
    NetlistText::appendText(block, probeName);
    block += ' ';
    // The node list ends in a blank, so the type continues the first line.
    writeNodeList(block);
    block += "Type=\"ModelExtractor\" Module=\"LaneTap\"";
    block += NetlistText::lineContinuation;
    NetlistText::appendText(block, writeSettingsBlock());
    writeNodeData(block);
    writeNodeMeasMap(block);
    if (isComplianceEnabled()) {
        writeNodeRefMap(block);
        writeComplianceMap(block);
    }

    // The last line keeps its blank and loses its continuation.
    block.chop(2);
    block += "\n\n";
    return block;
}

bool NetlistWriter::isComplianceEnabled() const {
    return isComplianceOn(readParamInt(*parameterIterator, "EnableComplianceMeasurements"),
                          *controllerParameters);
}

const QString& NetlistWriter::measurementCellForType(const QString& signalType) const {
    return receivingCell(signalType, controllerParameters->isReadMode());
}

bool NetlistWriter::isReceiving(const SignalRecord& record) const {
    return record.models.contains(measurementCellForType(record.signalType));
}

void NetlistWriter::collectSelectedSignals() {
    // The wanted signals by key, each once, in the order of first mention.
    SignalRecordHash wanted;
    const auto want = [&](SignalRecord* record) { wanted.insert(record->key, record); };
    const auto take = [&](const QString& key) {
        const auto found = signals.constFind(key);
        if (found != signals.constEnd()) {
            want(found.value());
        }
    };

    // A stored key whose signal has gone from the design is passed over without a word. One
    // string over the stored text is pointed at each key in turn.
    QString storedKey;
    for (QStringView key : stored.signalKeys.items) {
        take(storedKey.setRawData(key.data(), int(key.size())));
    }

    // A reference is watched also when it was not selected for itself.
    for (const QHash<int, QStringList>& byMeasurement : qAsConst(stored.references)) {
        for (const QStringList& keys : byMeasurement) {
            for (const QString& key : keys) {
                take(key);
            }
        }
    }

    // Compliance is judged on the receiving side: all of its signals take part, with their
    // companions, selected or not. Each receiving signal warns of its missing companions here,
    // also when every signal is wanted already and none is left to add.
    if (isComplianceEnabled()) {
        diagnoseReceivingSignals();
        for (SignalRecord* record : qAsConst(signals)) {
            const QList<SignalRecord*>* companions = connectionDiagnostics(record);
            if (!companions || wanted.size() == signals.size()) {
                continue;
            }
            want(record);
            for (SignalRecord* companion : *companions) {
                want(companion);
            }
        }
    }

    // Every section walks the selection as the module has always had it: a hash of the selected
    // keys filled from the walk of the wanted ones. The records left out stay in the store.
    SignalRecordHash selected;
    for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
        selected.insert(it.key(), it.value());
    }
    signals.swap(selected);
}

}  // namespace LaneTapUI
