#pragma once

#include <QList>

#include "catalogue/ComplianceMeasurement.h"

namespace LaneTapUI {

// The six compliance tables, one per signal group. Each is built on first use and never changes;
// callers copy what they need.
const ComplianceTable& ckeComplianceTable();
const ComplianceTable& caComplianceTable();
const ComplianceTable& ckComplianceTable();
const ComplianceTable& dmComplianceTable();
const ComplianceTable& dqsComplianceTable();
const ComplianceTable& dqComplianceTable();

// The ids of one of the six tables in the order its rows were entered: its DDR4 rows, then its
// LPDDR4 rows. A table is a hash and keeps no order; this is for showing the rows to people.
// Pass the table that an accessor above returns; any other table, a copy too, gives an empty list.
QList<qint32> complianceEntryOrder(const ComplianceTable& table);

}  // namespace LaneTapUI
