#include "parameters/PinName.h"

namespace LaneTapUI {

PinNameParts splitPinName(const QString& pin) {
    PinNameParts parts;
    for (int i = 0; i < pin.size(); ++i) {
        const QChar c = pin.at(i);
        if (c.isDigit()) {
            parts.index += c;
        } else if (!c.isLetter()) {
            continue;
        } else if (i > 0 && pin.at(i - 1) == QLatin1Char('_')) {
            parts.polarity = c == QLatin1Char('n') ? QStringLiteral("s") : QString(c.toLower());
        } else {
            parts.group += c;
        }
    }
    return parts;
}

}  // namespace LaneTapUI
