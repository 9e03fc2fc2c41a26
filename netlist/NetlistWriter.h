#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <deque>
#include <memory>

#include "discovery/SignalRecord.h"
#include "host/Database.h"
#include "parameters/ControllerParameters.h"
#include "parameters/ParamText.h"

namespace LaneTapUI {

// Writes the netlist block of one probe instance: the nets the post-processing module watches and
// what it is to do with them. Made for one netlist call and destroyed after it; construction
// already finds the controller, discovers every signal of the design and reads the stored
// selection.
class NetlistWriter {
public:
    NetlistWriter(db::ParamIter* parameterIterator, db::Instance* probeInstance);
    ~NetlistWriter();
    NetlistWriter(const NetlistWriter&) = delete;
    NetlistWriter& operator=(const NetlistWriter&) = delete;

    // The block: its first line ";Lane_Tap" behind a line end, the load line, one statement
    // continued over lines, and an empty line. Cuts the signals down to the selection, so it is
    // called once.
    QByteArray writeBlock();

    // Compliance is on when the probe stores it and the simulation is transient.
    bool isComplianceEnabled() const;
    // The receiving side of a signal type, on which compliance is judged.
    const QString& measurementCellForType(const QString& signalType) const;
    // Whether an instance of that side reaches the signal: compliance judges it there.
    bool isReceiving(const SignalRecord& record) const;

    // Signals that expect the same companions and describe the missing ones alike: the data
    // bits of one byte, or the address and command signals at one place; a signal of no group is
    // searched alone. The texts are views into the records.
    struct CompanionGroup {
        enum Kind { Alone, DataByte, Address } kind = Alone;
        QStringView channel;
        QStringView refDes;
        int byte = 0;
        bool operator==(const CompanionGroup& other) const {
            return kind == other.kind && byte == other.byte && channel == other.channel &&
                   refDes == other.refDes;
        }
    };
    // What the search finds for every signal of a companion group: the companions, and the
    // descriptions of those missing, in the order the warning gives them.
    struct CompanionSearch {
        QList<SignalRecord*> companions;
        QStringList missing;
    };

private:
    void findControllerParameters();
    void discoverSignals();
    void collectSelectedSignals();

    // The sections of the block, each appended to `text` where it stands.
    // Node list and node data: the same walk, so that the i-th net and the i-th line agree.
    void writeNodeList(QByteArray& text) const;
    void writeNodeData(QByteArray& text) const;
    QString writeSettingsBlock() const;
    void writeNodeMeasMap(QByteArray& text) const;
    void writeNodeRefMap(QByteArray& text) const;
    void writeComplianceMap(QByteArray& text) const;
    bool isComplianceGroupApplicable(const QString& group, const QList<int>& ids) const;

    // Companions of a receiving signal for its compliance tests, after the warning for those
    // missing; null for a signal that is not receiving. The selection and the reference map ask
    // for the same signals and warn alike; the search is made once, by diagnoseReceivingSignals.
    const QList<SignalRecord*>* connectionDiagnostics(const SignalRecord* record) const;
    // Makes the search of every receiving signal without a word.
    void diagnoseReceivingSignals();
    const CompanionSearch* diagnose(const SignalRecord* record);
    CompanionSearch searchCompanions(const SignalRecord* record) const;
    QStringList expectedReferenceKeys(const SignalRecord* record) const;
    SignalRecordHash connectedReferences(const SignalRecord* record) const;
    QHash<QString, int> requiredReferenceTypes(const SignalRecord* record) const;
    QString describeMissingReference(const SignalRecord* record, const QString& requiredType) const;

    // What the probe stores of the selection, read once.
    struct StoredSelection {
        ListEntries signalKeys;
        ReferenceMap references;
        IntListViews measurements;
    };
    StoredSelection stored;
    // What searchCompanions found, each search once; they stay where they were made. The search of
    // each companion group, and of each receiving record.
    std::deque<CompanionSearch> searches;
    // The search of a signal that needs no companion: it finds none and misses none.
    const CompanionSearch nothingToSearch{};
    QHash<CompanionGroup, const CompanionSearch*> searchesByGroup;
    QHash<const SignalRecord*, const CompanionSearch*> diagnoses;
    // The records of the design's signals.
    SignalStore store;
    // The discovered signals; after the selection only the selected ones, in the order every
    // section walks them.
    SignalRecordHash signals;
    db::ParamIter* parameterIterator;
    db::Instance* probeInstance;
    std::unique_ptr<ControllerParameters> controllerParameters;
};

uint qHash(const NetlistWriter::CompanionGroup& group, uint seed = 0);

}  // namespace LaneTapUI
