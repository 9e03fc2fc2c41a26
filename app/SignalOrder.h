#pragma once

#include <QList>
#include <QStringList>

#include "discovery/SignalRecord.h"

// The orders in which the program shows signals and names: as people count, "DQ2" before "DQ10".
namespace lanetap {

// Names (instances, models, keys, tests): runs of digits compare as numbers, the rest as code
// points. Setups depend on this order, since `apply` moves the signals it names in it and
// `export` lists references and tests in it; it is not the trees' collation, which ignores case
// and puts punctuation before letters.
QStringList naturallySorted(QStringList texts);

// The records in the order of the dialog's signal trees, by the trees' own comparison
// (dialog/NaturalOrder.h): type, channel, node, then index.
QList<const LaneTapUI::SignalRecord*> inTreeOrder(const LaneTapUI::SignalRecordHash& records);

}  // namespace lanetap
