#pragma once

#include <QHash>
#include <QString>

#include "discovery/SignalRecord.h"
#include "host/Database.h"

namespace LaneTapUI {

// The automatic reference every signal gets when the setup is opened: the strobe of a data or mask
// signal's byte, the clock of a command signal's node, a clock's own record. A measurement that
// needs a reference is given it the moment it is chosen.

// Enters the clock of every node ("Ch0.U1" to the key of its CK record) into `clockByNode`. With
// several clocks at a node, the last in hash order wins.
void collectClockSignals(const SignalRecordHash& records, QHash<QString, QString>& clockByNode);

// Sets `defaultReference` on every record: the record of the key the rules give, or null. The
// widths and strobe numberings of the design's DDR parts are read from `design`.
void assignDefaultReferences(db::Design* design, const SignalRecordHash& records,
                             const QHash<QString, QString>& clockByNode);

}  // namespace LaneTapUI
