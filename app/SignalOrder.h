#pragma once

#include <QList>
#include <QStringList>

#include "discovery/SignalRecord.h"

// The order in which the program shows signals and names: as people count, "DQ2" before "DQ10".
namespace lanetap {

QStringList naturallySorted(QStringList texts);

// The records in the order of the dialog's signal trees: type, channel, node, then index.
QList<const LaneTapUI::SignalRecord*> inTreeOrder(const LaneTapUI::SignalRecordHash& records);

}  // namespace lanetap
