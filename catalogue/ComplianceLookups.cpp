#include "catalogue/ComplianceLookups.h"

#include "catalogue/ComplianceTables.h"

namespace LaneTapUI {
namespace {

// How the DM group is recognised. The description and name-to-id lookups take any group that
// contains "DM" (so "DM_n" too); all other lookups want "DM" itself.
enum class DmMatch { Contains, Equals };

// The table of a signal group. The order of the tests matters: the first match wins. Control
// groups ("CS", "WE", "RAS", "CAS", "BA", "BG", "ODT", "DBI") and anything unknown have no table.
const ComplianceTable* tableFor(const QString& signalType, DmMatch dmMatch) {
    const QString dm = QStringLiteral("DM");
    const bool isDm = dmMatch == DmMatch::Contains ? signalType.contains(dm) : signalType == dm;
    if (signalType == QLatin1String("DQ")) {
        return &dqComplianceTable();
    }
    if (isDm) {
        return &dmComplianceTable();
    }
    if (signalType == QLatin1String("DQS")) {
        return &dqsComplianceTable();
    }
    if (signalType == QLatin1String("CA") || signalType == QLatin1String("A")) {
        return &caComplianceTable();
    }
    if (signalType == QLatin1String("CK")) {
        return &ckComplianceTable();
    }
    if (signalType == QLatin1String("CKE")) {
        return &ckeComplianceTable();
    }
    return nullptr;
}

bool isOffered(const ComplianceMeasurement& row, const QString& dramType, int operationMode,
               int dqsSignalMode) {
    const bool cycleMatches = row.operationMode == operationMode || row.operationMode == 2;
    const bool strobeMatches = dqsSignalMode != 0 || row.continuousAllowed;
    return cycleMatches && row.dramType == dramType && strobeMatches;
}

// The rows of the group's table that pass the filter, each inserted as a pair of two of its
// fields. Multi-insertion keeps rows that share a name.
template <typename Key, typename Value>
QMultiHash<Key, Value> offeredPairs(const QString& signalType, DmMatch dmMatch,
                                    const QString& dramType, int operationMode, int dqsSignalMode,
                                    Key ComplianceMeasurement::*key,
                                    Value ComplianceMeasurement::*value) {
    QMultiHash<Key, Value> pairs;
    const ComplianceTable* table = tableFor(signalType, dmMatch);
    if (table == nullptr) {
        return pairs;
    }
    for (const ComplianceMeasurement& row : *table) {
        if (isOffered(row, dramType, operationMode, dqsSignalMode)) {
            pairs.insert(row.*key, row.*value);
        }
    }
    return pairs;
}

}  // namespace

QMultiHash<QString, QString> complianceDescriptionsFor(const QString& signalType,
                                                       const QString& dramType, int operationMode,
                                                       int dqsSignalMode) {
    return offeredPairs(signalType, DmMatch::Contains, dramType, operationMode, dqsSignalMode,
                        &ComplianceMeasurement::name, &ComplianceMeasurement::description);
}

QMultiHash<qint32, QString> complianceNamesFor(const QString& signalType, const QString& dramType,
                                               int operationMode, int dqsSignalMode) {
    return offeredPairs(signalType, DmMatch::Equals, dramType, operationMode, dqsSignalMode,
                        &ComplianceMeasurement::id, &ComplianceMeasurement::name);
}

QMultiHash<QString, qint32> complianceIdsByNameFor(const QString& signalType,
                                                   const QString& dramType, int operationMode,
                                                   int dqsSignalMode) {
    return offeredPairs(signalType, DmMatch::Contains, dramType, operationMode, dqsSignalMode,
                        &ComplianceMeasurement::name, &ComplianceMeasurement::id);
}

QList<qint32> complianceIdsWithName(const QString& signalType, const QString& dramType,
                                    const QString& name) {
    QList<qint32> ids;
    const ComplianceTable* table = tableFor(signalType, DmMatch::Equals);
    if (table == nullptr) {
        return ids;
    }
    for (const ComplianceMeasurement& row : *table) {
        if (row.dramType == dramType && row.name == name) {
            ids.append(row.id);
        }
    }
    return ids;
}

QString complianceName(const QString& signalType, qint32 id) {
    const ComplianceTable* table = tableFor(signalType, DmMatch::Equals);
    return table == nullptr ? QString() : table->value(id).name;
}

bool hasCompliance(const QString& signalType, qint32 id) {
    const ComplianceTable* table = tableFor(signalType, DmMatch::Equals);
    return table != nullptr && table->contains(id);
}

}  // namespace LaneTapUI
