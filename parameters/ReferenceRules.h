#pragma once

#include <QSet>
#include <QString>

namespace LaneTapUI {

// The signal types that may not serve as reference of a signal of `signalType` (its group
// letters, "DQ", "CKE", ...). A data signal takes no command signal as reference, a command
// signal no DQ or DQS; a clock, an unknown or an empty type may take any.
QSet<QString> excludedReferenceTypes(const QString& signalType);

}  // namespace LaneTapUI
