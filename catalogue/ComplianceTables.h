#pragma once

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

}  // namespace LaneTapUI
