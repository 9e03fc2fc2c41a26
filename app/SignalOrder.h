#pragma once

#include <QList>
#include <QStringList>

#include "discovery/SignalRecord.h"

// The orders in which the program shows signals and names: as people count, "DQ2" before "DQ10".
namespace lanetap {

// Names (instances, models, keys, tests) in the trees' collation (dialog/NaturalOrder.h), texts it
// finds alike by their code points.
QStringList naturallySorted(QStringList texts);

// The records in the order of the dialog's signal trees, by the trees' own comparison
// (dialog/NaturalOrder.h): type, channel, node, then index.
QList<const LaneTapUI::SignalRecord*> inTreeOrder(const LaneTapUI::SignalRecordHash& records);

}  // namespace lanetap
