#pragma once

#include <QCollatorSortKey>
#include <QString>

// The order of the dialog's signal trees, in which the lanetap program lists signals too: text
// collated as the default locale collates it, with runs of digits read as numbers, so that DQ2
// comes before DQ10. Used from one thread at a time.
namespace LaneTapUI {

// Makes the collator follow the default locale as it is now, and gives its generation, which
// changes with each new collator. Call it before a sort.
int prepareNaturalOrder();
// The generation of the current collator, without following the locale.
int naturalOrderGeneration();
// The collation key of `text` under the current collator. A board has tens of thousands of signals
// but few distinct texts ("DQ3", "Ch0", "U12"); the key of each text is made once per collator.
QCollatorSortKey naturalSortKey(const QString& text);
// Negative, zero or positive as `a` collates before, with or after `b`.
int naturalCompare(const QString& a, const QString& b);

}  // namespace LaneTapUI
