#pragma once

#include <QHash>
#include <QString>

namespace LaneTapUI {

// One compliance test as the post-processing module knows it. The id is the number that goes
// into the netlist unchanged; a default row stands for an id that no table holds.
struct ComplianceMeasurement {
    qint32 id = 0;
    qint32 operationMode = 2;        // cycle of validity: 0 read, 1 write, 2 both
    bool continuousAllowed = false;  // false: offered only with a bursting strobe
    QString dramType = QStringLiteral("DDR4");
    QString name;
    QString description;
};

// Compliance rows of one signal group, DDR4 and LPDDR4 together, keyed by id.
using ComplianceTable = QHash<qint32, ComplianceMeasurement>;

}  // namespace LaneTapUI
