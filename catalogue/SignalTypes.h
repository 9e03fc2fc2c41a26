#pragma once

#include <QString>

namespace LaneTapUI {

// Text of the host's DDR signal family (the value of its signal type enumeration): 0 "DQ",
// 1 "DQS_t", ... 18 "DBI_n"; "UNKNOWN" for anything else.
QString signalTypeName(int signalFamily);

// The group letters of a signal type or a stored key: the text before the first "_", empty parts
// skipped ("DQS_Ch0_U1" gives "DQS", "_x" gives "x").
QString signalBaseName(const QString& text);

}  // namespace LaneTapUI
