#include "dialog/StoredSelection.h"

#include "catalogue/ComplianceLookups.h"
#include "catalogue/MeasurementTypes.h"

namespace LaneTapUI {

namespace {

// "key id id ,": a key without ids is the key, a blank and ",".
template <class Ids>
QString idRecord(const QString& key, const Ids& ids) {
    QString text = key + QLatin1Char(' ');
    for (int id : ids) {
        text += QString::number(id) + QLatin1Char(' ');
    }
    return text + QLatin1Char(',');
}

template <class Ids>
QString signalIdMap(const SignalRecordHash& signals, Ids SignalRecord::*ids) {
    QString text;
    for (auto it = signals.cbegin(); it != signals.cend(); ++it) {
        text += it.value() ? idRecord(it.key(), it.value()->*ids) : idRecord(it.key(), Ids());
    }
    return text;
}

template <class Ids>
QString groupIdMap(const QHash<QString, Ids>& groups) {
    QString text;
    for (auto it = groups.cbegin(); it != groups.cend(); ++it) {
        text += idRecord(it.key(), it.value());
    }
    return text;
}

// "key name name ,".
QString nameRecord(const QString& key, const QString& head, const SignalRecordHash& names) {
    QString text = key + QLatin1Char(' ') + head;
    for (auto it = names.cbegin(); it != names.cend(); ++it) {
        text += it.key() + QLatin1Char(' ');
    }
    return text + QLatin1Char(',');
}

// The records of `all` under the stored names; names of signals no longer in the design go.
SignalRecordHash knownRecords(const QStringList& names, const SignalRecordHash& all) {
    SignalRecordHash records;
    for (const QString& name : names) {
        if (SignalRecord* record = all.value(name)) {
            records.insert(name, record);
        }
    }
    return records;
}

// Calls `apply` with the record and the stored entry of each stored signal that is selected;
// entries of other signals go.
template <class Map, class Apply>
void forEachSelected(const Map& stored, const SignalRecordHash& selected, Apply apply) {
    for (auto it = stored.cbegin(); it != stored.cend(); ++it) {
        if (SignalRecord* record = selected.value(it.key())) {
            apply(*record, it.value());
        }
    }
}

}  // namespace

QString measurementMapText(const SignalRecordHash& signals) {
    return signalIdMap(signals, &SignalRecord::measurements);
}

QString complianceMapText(const SignalRecordHash& signals) {
    return signalIdMap(signals, &SignalRecord::compliance);
}

QString groupMeasurementMapText(const GroupMeasurements& groups) {
    return groupIdMap(groups);
}

QString groupComplianceMapText(const GroupCompliance& groups) {
    return groupIdMap(groups);
}

QString referenceMapText(const SignalRecordHash& signals) {
    QString text;
    for (auto it = signals.cbegin(); it != signals.cend(); ++it) {
        if (!it.value()) {
            continue;
        }
        const QHash<QString, SignalRecordHash>& entries = it.value()->refSignals;
        for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
            const int id = measurementTypesByDisplayName().value(entry.key(), StrobedEye);
            text += nameRecord(it.key(), QString::number(id) + QLatin1Char(' '), entry.value());
        }
    }
    return text;
}

QString writeLevelingReferenceMapText(const SignalRecordHash& signals) {
    QString text;
    for (auto it = signals.cbegin(); it != signals.cend(); ++it) {
        text += nameRecord(it.key(), QString(),
                           it.value() ? it.value()->wlRefSignals : SignalRecordHash());
    }
    return text;
}

void moveKeys(const QStringList& keys, SignalRecordHash& from, SignalRecordHash& to) {
    for (const QString& key : keys) {
        auto found = from.find(key);
        if (found != from.end()) {
            to.insert(key, found.value());
            from.erase(found);
        }
    }
}

void restoreMeasurements(const IntListMap& stored, const SignalRecordHash& selected) {
    forEachSelected(stored, selected, [](SignalRecord& record, const QList<int>& codes) {
        record.setMeasurements(codes);
    });
}

void restoreGroupMeasurements(const IntListMap& stored, GroupMeasurements& groups) {
    for (auto it = stored.cbegin(); it != stored.cend(); ++it) {
        QHash<QString, int> entry;
        for (int code : it.value()) {
            entry.insert(measurementDisplayNames().value(static_cast<MeasurementType>(code)), code);
        }
        groups.insert(it.key(), entry);
    }
}

void restoreReferences(const ReferenceMap& stored, const SignalRecordHash& selected,
                       const SignalRecordHash& all) {
    forEachSelected(stored, selected,
                    [&all](SignalRecord& record, const QHash<int, QStringList>& lists) {
                        for (auto list = lists.cbegin(); list != lists.cend(); ++list) {
                            const auto type = static_cast<MeasurementType>(list.key());
                            record.setReferences(measurementDisplayNames().value(type),
                                                 knownRecords(list.value(), all));
                        }
                    });
}

void restoreSignalCompliance(const IntListMap& stored, const SignalRecordHash& selected) {
    forEachSelected(stored, selected,
                    [](SignalRecord& record, const QList<int>& ids) { record.setCompliance(ids); });
}

void restoreGroupCompliance(const IntListMap& stored, const TestModes& modes,
                            GroupCompliance& groups) {
    for (auto it = stored.cbegin(); it != stored.cend(); ++it) {
        const QMultiHash<qint32, QString> offered =
            complianceNamesFor(it.key().section(QLatin1Char('_'), 0, 0), modes.dramTypeText(),
                               modes.cycle(), modes.dqsSignalMode);
        QMultiHash<QString, int> entry;
        for (int id : it.value()) {
            if (offered.contains(id)) {
                entry.insert(offered.value(id), id);
            }
        }
        groups.insert(it.key(), entry);
    }
}

void restoreWriteLevelingReferences(const StringListMap& stored, const SignalRecordHash& selected,
                                    const SignalRecordHash& all, const SignalRecordHash& wlAll) {
    forEachSelected(stored, selected, [&](SignalRecord& record, const QStringList& names) {
        for (const QString& name : names) {
            if (all.contains(name)) {
                record.wlRefSignals.insert(name, wlAll.value(name));
            }
        }
    });
}

bool inheritsGroupMeasurements(const GroupMeasurements& groups, const SignalRecord& record) {
    return groups.contains(record.signalType) || groups.contains(record.channelGroupKey);
}

void applyGroupMeasurements(GroupMeasurements& groups, SignalRecord& record) {
    if (!groups.contains(record.groupKey)) {
        if (groups.contains(record.channelGroupKey)) {
            groups.insert(record.groupKey, groups.value(record.channelGroupKey));
        } else if (groups.contains(record.signalType)) {
            const QHash<QString, int> entry = groups.value(record.signalType);
            groups.insert(record.channelGroupKey, entry);
            groups.insert(record.groupKey, entry);
        } else {
            return;
        }
    }
    record.setMeasurementsWithReferences(groups.value(record.groupKey).values());
}

QHash<QString, QSet<QString>> modelsByType(const SignalRecordHash& records) {
    QHash<QString, QSet<QString>> models;
    for (const SignalRecord* record : records) {
        QSet<QString>& cells = models[record->signalType];
        for (auto cell = record->models.cbegin(); cell != record->models.cend(); ++cell) {
            cells.insert(cell.key());
        }
    }
    return models;
}

QHash<QString, QString> complianceGroups(const QHash<QString, QSet<QString>>& models,
                                         bool readCycle) {
    QHash<QString, QString> groups;
    for (auto type = models.cbegin(); type != models.cend(); ++type) {
        const QString& cell = receivingCell(type.key(), readCycle);
        if (type.value().contains(cell)) {
            groups.insert(type.key(), cell);
        }
    }
    return groups;
}

}  // namespace LaneTapUI
