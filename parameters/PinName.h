#pragma once

#include <QString>

namespace LaneTapUI {

// A pin name taken apart: "DQS0_t" is group "DQS", index "0", polarity "t".
struct PinNameParts {
    QString group;
    QString index;
    // "s" single-ended (active-low signals included), "t" true pin, "c" complement pin.
    QString polarity = QStringLiteral("s");
};

// Letters go to the group, except a letter behind "_", which sets the polarity ("n" gives "s",
// any other letter itself in lower case). Digits go to the index wherever they stand; anything
// else is skipped.
PinNameParts splitPinName(const QString& pin);

}  // namespace LaneTapUI
