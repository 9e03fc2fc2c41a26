#pragma once

#include <QList>
#include <QMultiHash>
#include <QString>

namespace LaneTapUI {

// Compliance lookups by signal group. The selectors:
//   signalType     group letters of a signal: "DQ", "DQS", "DM", "CA", "A", "CK", "CKE", ...
//   dramType       "DDR4" or "LPDDR4"
//   operationMode  0 read, 1 write; rows valid in both cycles always match
//   dqsSignalMode  0 continuous strobe, 1 bursting strobe
// A group without compliance rows, or any unknown selector, gives an empty result.

// Rows offered for the selectors: name to description.
QMultiHash<QString, QString> complianceDescriptionsFor(const QString& signalType,
                                                       const QString& dramType, int operationMode,
                                                       int dqsSignalMode);

// Rows offered for the selectors: id to name.
QMultiHash<qint32, QString> complianceNamesFor(const QString& signalType, const QString& dramType,
                                               int operationMode, int dqsSignalMode);

// Rows offered for the selectors: name to id.
QMultiHash<QString, qint32> complianceIdsByNameFor(const QString& signalType,
                                                   const QString& dramType, int operationMode,
                                                   int dqsSignalMode);

// Every id of the group and DRAM type that carries `name`, whatever the cycle or strobe mode.
QList<qint32> complianceIdsWithName(const QString& signalType, const QString& dramType,
                                    const QString& name);

// Name of a stored id within the signal's group; empty when the group doesn't hold the id.
QString complianceName(const QString& signalType, qint32 id);

// Whether the signal's group holds the id, of either DRAM type.
bool hasCompliance(const QString& signalType, qint32 id);

}  // namespace LaneTapUI
