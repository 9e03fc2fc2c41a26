#include "netlist/NetlistWriter.h"

#include <QtAlgorithms>
#include <cstdint>
#include <future>
#include <vector>

#include "discovery/ResidentPages.h"
#include "discovery/SignalDiscovery.h"
#include "netlist/HashOrder.h"
#include "netlist/NetlistText.h"
#include "parameters/ParamText.h"
#include "parameters/ProbedTable.h"
#include "parameters/TestModes.h"

namespace LaneTapUI {

namespace {

// More than a signal's share of each text usually is: the texts are reserved once, so that they
// do not grow by copies, and made resident in one call. The node data and measurement map take
// the most, the node list a net or two, the reference map a line or so for each signal.
constexpr int blockBytesPerSignal = 384;
constexpr int nodeListBytesPerSignal = 32;
constexpr int refMapBytesPerSignal = 80;

// A text of a block is reserved and made resident in one call before it is written: a board's
// block is thousands of pages. What stays unwritten of the block is given back when it is done.
void reserveResident(QByteArray& text, int bytes) {
    text.reserve(bytes);
    makeResident(text.constData(), std::size_t(text.capacity()));
}

void releaseUnwritten(const QByteArray& text) {
    releasePages(text.constData() + text.size(), std::size_t(text.capacity() - text.size()));
}

// Records by their address.
class RecordSet {
public:
    explicit RecordSet(int count) : table(std::size_t(count)) {}

    // False when the record is in the set already.
    bool insert(const SignalRecord* record) {
        const SignalRecord*& slot = slotOf(record);
        if (slot) {
            return false;
        }
        slot = record;
        return true;
    }

    bool contains(const SignalRecord* record) { return slotOf(record) != nullptr; }

private:
    const SignalRecord*& slotOf(const SignalRecord* record) {
        return table.slot(reinterpret_cast<std::uintptr_t>(record),
                          [&](const SignalRecord* known) { return known == record; });
    }

    ProbedTable<const SignalRecord*> table;
};

// The order in which every section walks the selection. The module has always had it as the walk
// of a hash of the selected keys that was filled from the walk of a hash filled in the order of
// first mention; both walks are worked out from the keys' hash values, and neither hash is made.
std::vector<SignalRecord*> walkOfSelection(const std::vector<SignalRecord*>& wanted) {
    const uint seed = uint(qGlobalQHashSeed());
    std::vector<uint> hashes;
    hashes.reserve(wanted.size());
    for (const SignalRecord* record : wanted) {
        hashes.push_back(qHash(record->key, seed));
    }
    const std::vector<int> wantedWalk = qHashWalkOrder(hashes);
    std::vector<uint> walkedHashes;
    walkedHashes.reserve(wanted.size());
    for (int position : wantedWalk) {
        walkedHashes.push_back(hashes[position]);
    }
    std::vector<SignalRecord*> walk;
    walk.reserve(wanted.size());
    for (int position : qHashWalkOrder(walkedHashes)) {
        walk.push_back(wanted[wantedWalk[position]]);
    }
    return walk;
}

// The design that holds the probe; the walks see the whole of it.
db::Design* designOf(const db::Instance* instance) {
    return instance ? instance->design : nullptr;
}

}  // namespace

NetlistWriter::NetlistWriter(db::ParamIter* parameters, db::Instance* instance)
    : parameterIterator(parameters), probeInstance(instance) {
    // A board stores megabytes of selection. Its text is read here and taken apart on a second
    // thread while this one walks the design; only this thread talks to the host.
    auto selection = std::async(
        std::launch::async,
        [signalKeys = readParamString(*parameters, "SelectedSignalList"),
         references = readParamString(*parameters, "SelectedMeasurementsRefSignalListMap"),
         measurements = readParamString(*parameters, "SelectedMeasurementsListMap")] {
            StoredSelection selection{parseListEntries(signalKeys),
                                      parseReferenceMap(references),
                                      parseIntListEntries(measurements),
                                      {}};
            selection.measurementWalk = qHashWalkOrder(selection.measurements.hashes);
            return selection;
        });
    findControllerParameters();
    discoverSignals();
    stored = selection.get();
}

// Records that selection dropped are gone already; what is left in the hash is ours.
NetlistWriter::~NetlistWriter() {
    qDeleteAll(signals);
}

void NetlistWriter::findControllerParameters() {
    controllerParameters = LaneTapUI::findControllerParameters(designOf(probeInstance));
}

void NetlistWriter::discoverSignals() {
    LaneTapUI::discoverSignals(designOf(probeInstance), *controllerParameters,
                               DiscoveryKind::Netlist, signals);
}

QByteArray NetlistWriter::writeBlock() {
    // What comes before the node data: the load line, then the node list and the settings.
    QByteArray head = "\n#load \"python\",\"TDM_LaneTap\"\n";
    const QString probeName = QString::fromStdString(db::get_instance_name(probeInstance));
    head += "ComponentWithNodes:";
    NetlistText::appendText(head, probeName);
    head += ' ';

    collectSelectedSignals();
    if (signals.isEmpty()) {
        // Not a reason to stop: the block still carries the settings.
        NetlistText::reportWarning(QStringLiteral("No signals selected for '") + probeName +
                                   QStringLiteral("' component.\n"));
    }

    // The node data and the measurement map ask nothing of the host and warn of nothing: they
    // are written on a second thread while this one writes the sections around them. Theirs is
    // the biggest text, and it becomes the block. This thread first looks up the stored keys
    // that the measurement map needs, while the other writes the node data.
    // The promise goes first if this thread fails, so that the other one does not wait for it.
    std::future<QByteArray> dataAndMeasurements;
    std::promise<StoredAnswers> storedAnswers;
    dataAndMeasurements =
        std::async(std::launch::async, [this, answers = storedAnswers.get_future()]() mutable {
            QByteArray text;
            reserveResident(text, signals.size() * blockBytesPerSignal);
            writeNodeData(text);
            writeNodeMeasMap(text, answers.get());
            return text;
        });
    storedAnswers.set_value(lookUpStoredKeys());
    // The node list ends in a blank, so the type continues the first line.
    reserveResident(head, head.size() + signals.size() * nodeListBytesPerSignal);
    writeNodeList(head);
    head += "Type=\"ModelExtractor\" Module=\"LaneTap\"";
    head += NetlistText::lineContinuation;
    NetlistText::appendText(head, writeSettingsBlock());
    QByteArray compliance;
    if (isComplianceEnabled()) {
        reserveResident(compliance, signals.size() * refMapBytesPerSignal);
        writeNodeRefMap(compliance);
        writeComplianceMap(compliance);
    }
    QByteArray block = dataAndMeasurements.get();
    block.insert(0, head);
    block += compliance;

    // The last line keeps its blank and loses its continuation.
    block.chop(2);
    block += "\n\n";
    releaseUnwritten(block);
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
    // Each wanted record once, in the order of first mention. A board mentions most signals
    // three times over: a record is known by its address.
    std::vector<SignalRecord*> wanted;
    RecordSet mentioned(signals.size());
    const auto want = [&](SignalRecord* record) {
        if (mentioned.insert(record)) {
            wanted.push_back(record);
        }
    };
    const auto take = [&](const QString& key) {
        const auto found = signals.constFind(key);
        if (found != signals.constEnd()) {
            want(found.value());
        }
    };

    // The companion searches ask nothing of the host: they are made on a second thread while
    // this one takes the stored keys.
    const bool compliance = isComplianceEnabled();
    std::future<void> searches;
    if (compliance) {
        searches = std::async(std::launch::async, [this] { diagnoseReceivingSignals(); });
    }

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
    // companions, selected or not.
    if (compliance) {
        searches.get();
        for (SignalRecord* record : qAsConst(signals)) {
            const QList<SignalRecord*>* companions = connectionDiagnostics(record);
            if (!companions) {
                continue;
            }
            want(record);
            for (SignalRecord* companion : *companions) {
                want(companion);
            }
        }
    }

    // When every signal is wanted, no record is left to drop.
    if (int(wanted.size()) != signals.size()) {
        for (auto it = signals.begin(); it != signals.end();) {
            if (mentioned.contains(it.value())) {
                ++it;
                continue;
            }
            delete it.value();
            it = signals.erase(it);
        }
    }
    selected = walkOfSelection(wanted);
}

}  // namespace LaneTapUI
