#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include "parameters/StoredKeys.h"

namespace lanetap {

// What the checks of a stored value need to know of the probe's design: its signals, by key with
// their type, and the speed grades the probe's box will hold.
struct ValueContext {
    QHash<QString, QString> signalTypes;
    QStringList speedGrades;
};

// Why `value` cannot be stored under `key`, in words that name the offending part, or an empty
// text when it has the key's form: an int is an integer, an index names an item of its box, a
// voltage is a number with a blank and a unit where it has one, and the lists and maps name
// signals of the design and known measurement codes and compliance ids.
QString formProblem(const LaneTapUI::StoredKey& key, const QString& value,
                    const ValueContext& context);

// Whether the whole text is a decimal integer or a decimal number ("0.5", "-1e-12").
bool isInteger(const QString& text);
bool isDecimalNumber(const QString& text);
// Whether the whole text is a voltage as the setup stores it: "0.7", "0.07 V".
bool isStoredVoltage(const QString& text);

}  // namespace lanetap
