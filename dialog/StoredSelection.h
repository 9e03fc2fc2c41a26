#pragma once

#include <QHash>
#include <QMultiHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include "discovery/SignalRecord.h"
#include "parameters/ParamText.h"
#include "parameters/TestModes.h"

// The selection of a setup as the probe stores it: how the stored maps are loaded onto the signal
// records, how the records and the group choices are written back, and the few rules of choosing
// that follow from them. The dialog keeps the selection in its hashes and calls these; a setup
// made without the dialog calls the same, so that it stores what the dialog would.
namespace LaneTapUI {

// Tree key of a group item to the measurements chosen for it: display name to code.
using GroupMeasurements = QHash<QString, QHash<QString, int>>;
// Signal type to the compliance tests chosen for it: name to ids.
using GroupCompliance = QHash<QString, QMultiHash<QString, int>>;

// ---- The stored text ----

// "KEY id id ,": a record per signal of `signals`, with the codes of its measurements or the ids
// of its compliance tests. A signal without any is its key, a blank and ",".
QString measurementMapText(const SignalRecordHash& signals);
QString complianceMapText(const SignalRecordHash& signals);
QString groupMeasurementMapText(const GroupMeasurements& groups);
QString groupComplianceMapText(const GroupCompliance& groups);
// "KEY code REF REF ,": a record per measurement with a reference entry; a signal without any
// gives no record.
QString referenceMapText(const SignalRecordHash& signals);
// "KEY REF REF ,": a record per signal, with its write-leveling references.
QString writeLevelingReferenceMapText(const SignalRecordHash& signals);

// ---- Loading ----

// Moves the records of the listed keys from one hash to the other; a key `from` lacks is ignored.
void moveKeys(const QStringList& keys, SignalRecordHash& from, SignalRecordHash& to);
// Each selected signal's measurements become the known codes of its entry; unknown codes go.
void restoreMeasurements(const IntListMap& stored, const SignalRecordHash& selected);
// Each stored group entry goes into `groups` as stored: an unknown code keeps an entry with an
// empty name.
void restoreGroupMeasurements(const IntListMap& stored, GroupMeasurements& groups);
// Each stored list replaces the reference entry of its measurement on a selected signal; names of
// signals gone from the design are dropped.
void restoreReferences(const ReferenceMap& stored, const SignalRecordHash& selected,
                       const SignalRecordHash& all);
// Each selected signal keeps the ids of its group, one per name.
void restoreSignalCompliance(const IntListMap& stored, const SignalRecordHash& selected);
// Each stored group entry goes into `groups` with only the ids the catalogue offers its signal type
// (the text before the key's first "_") under the modes.
void restoreGroupCompliance(const IntListMap& stored, const TestModes& modes,
                            GroupCompliance& groups);
// A write-leveling reference must still be in the design; its record comes from `wlAll`.
void restoreWriteLevelingReferences(const StringListMap& stored, const SignalRecordHash& selected,
                                    const SignalRecordHash& all, const SignalRecordHash& wlAll);

// ---- Choosing ----

// Whether a signal added to the selection takes a group's measurements: its type or its channel
// has an entry. An entry under its node's key alone does not reach it.
bool inheritsGroupMeasurements(const GroupMeasurements& groups, const SignalRecord& record);
// Gives the signal the measurements of its node's entry, copying the channel's or the type's entry
// down to the node first where the node has none. A signal with no entry above it is left alone.
void applyGroupMeasurements(GroupMeasurements& groups, SignalRecord& record);

// Signal type to the cells of the instances its records reach.
QHash<QString, QSet<QString>> modelsByType(const SignalRecordHash& records);
// The signal types the compliance page offers, each with the cell its tests are judged on: the
// types whose receiving cell in the cycle is among their cells.
QHash<QString, QString> complianceGroups(const QHash<QString, QSet<QString>>& models,
                                         bool readCycle);

}  // namespace LaneTapUI
