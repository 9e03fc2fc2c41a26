#pragma once

#include <QHash>
#include <QList>
#include <QMultiHash>
#include <QString>
#include <QStringList>
#include <deque>

namespace LaneTapUI {

// The positive and negative node of one instance on a signal.
struct InstanceNodes {
    // The record was single-ended when the entry was made.
    bool single = false;
    QString pPort;
    QString pNet;
    QString nPort;
    QString nNet;
};

// Instance name to its nodes on one signal, walked in the order a QHash of them gives. Almost
// every signal reaches one instance, and a board has tens of thousands of signals: the one entry
// is held in place, and a QHash is made, in the same order of insertion, for a second.
class InstanceNodesHash {
public:
    int size() const { return hashed.isEmpty() ? int(hasOnly) : hashed.size(); }
    bool isEmpty() const { return size() == 0; }
    bool contains(const QString& name) const { return find(name) != nullptr; }
    // The entry of an instance, or null.
    const InstanceNodes* find(const QString& name) const;
    InstanceNodes* find(const QString& name);
    // Adds the entry of an instance not in the hash yet.
    void insert(const QString& name, const InstanceNodes& nodes);
    // The names and the first entry, in the hash's order; an empty hash's first entry has no
    // nodes.
    QStringList keys() const;
    const InstanceNodes& first() const;
    const QString& firstKey() const;

private:
    bool hasOnly = false;
    QString onlyName;
    InstanceNodes onlyNodes;
    // Every entry once there are two.
    QHash<QString, InstanceNodes> hashed;
};

struct SignalRecord;
using SignalRecordHash = QHash<QString, SignalRecord*>;

// One logical signal at one place of the design; a differential pair is one record. Records live
// in the store of the walk that made them and are shared by pointer with every hash.
struct SignalRecord {
    // "DQ_Ch0_U1_DQ3", "DQ_Ch0_U1_Die_DQ3", "DQ_Ch0_U1_Rx.Output_DQ3", "DQ_Ch0_U1.node_DQ3".
    QString key;
    // "Ch0".
    QString channel;
    // Designator, or designator "." node for a node of a board description.
    QString refDes;
    // Family and index: "DQ3", "DQS_t0", "DM_n1".
    QString signalId;
    // Letters of the signal id before any "_": "DQ", "DQS", "CKE".
    QString signalType;
    // Digits of the signal id.
    QString signalIndex;
    // "s" single-ended, "t" or "c" for the halves of a pair.
    QString polarity = QStringLiteral("s");
    // Pin name of the first port seen.
    QString pinName;
    // Place on the signal: empty for the pin, "Die" or "Rx Output".
    QString nodeLabel;
    // The label with blanks made dots: "Rx.Output".
    QString nodeLabelDotted;
    // refDes, then "_" and the dotted label when there is a label.
    QString nodeName;
    // refDes, then " (label)" when there is a label. Empty in a netlist's records.
    QString displayName;
    // Instance name to its nodes on this signal.
    InstanceNodesHash instances;
    // Cell name to the names of its instances on this signal.
    QHash<QString, QStringList> models;

    // signalType "_" channel "_" nodeName: the key of the node level of the signal trees. Empty in
    // a netlist's records.
    QString groupKey;
    // signalType "_" channel.
    QString channelGroupKey;
    // Chosen measurement, display name to MeasurementType.
    QHash<QString, int> measurements;
    // Chosen compliance measurement name to its ids; a name may stand for several ids.
    QMultiHash<QString, int> compliance;
    // Display name of a measurement that needs a reference to its references, by their keys.
    QHash<QString, SignalRecordHash> refSignals;
    // Write-leveling references, by their keys.
    SignalRecordHash wlRefSignals;
    // The reference a measurement gets when it is chosen; may be null.
    SignalRecord* defaultReference = nullptr;

    // Chooses a measurement by display name (an unknown name counts as code 0) and gives it the
    // default reference. A measurement already chosen keeps its references.
    void addMeasurement(const QString& name);
    void removeMeasurement(const QString& name);
    // Replaces the measurements by the known codes of the list; references stay as they are.
    void setMeasurements(const QList<int>& codes);
    // The same, and every measurement that needs a reference gets the default one; references
    // held before are not cleared.
    void setMeasurementsWithReferences(const QList<int>& codes);

    // Replaces the compliance selection by the ids of this signal's group, one id per name; ids of
    // other groups are dropped.
    void setCompliance(const QList<int>& ids);
    // Adds every id of `name` for this signal's group and the DRAM type.
    void addCompliance(const QString& name, const QString& dramType);
    void removeCompliance(const QString& name);

    // Adds a reference to a measurement that needs one; a null reference resets the measurement
    // to an empty entry, which stands for "needs a reference and has none".
    void addReference(const QString& name, SignalRecord* reference);
    // Removes one reference; the measurement's entry stays, possibly empty.
    void removeReference(const QString& name, const SignalRecord* reference);
    void setReferences(const QString& name, const SignalRecordHash& references);
    SignalRecordHash referencesOf(const QString& name) const;
    // True when some measurement has a reference entry and every entry holds a reference.
    bool allMeasurementsReferenced() const;

    // Adds the port and net of an instance. A new instance gets an entry whose slot follows the
    // record's polarity; a known one completes its pair: the record's polarity, not the arriving
    // pin's, decides, and a die-level pair takes its negative node from the positive net + "_Inv".
    void addInstanceNode(const QString& instance, const QString& cell, const QString& port,
                         const QString& net);
    // The entry an instance gets when it first reaches this record.
    InstanceNodes firstNodes(const QString& port, const QString& net) const;

    // The instance names, in the hash's order, joined with ", ".
    QString instanceNames() const;

    void addWlRefSignal(SignalRecord* reference);
    void removeWlRefSignal(const SignalRecord* reference);
};

// The records of one walk of the design. Each stays where it was made until the store goes, so
// hashes may point into it; a record that the walk or a later cut drops from its hash stays here
// unused.
using SignalStore = std::deque<SignalRecord>;

}  // namespace LaneTapUI
