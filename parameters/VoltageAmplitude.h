#pragma once

#include <QString>

#include "catalogue/VoltageUnits.h"

namespace LaneTapUI {

// A voltage as the setup stores it: the number as the user typed it and a unit text, from a
// value such as "0.093 V". No number is converted; the amplitude keeps its spelling.
struct VoltageAmplitude {
    VoltageAmplitude() = default;
    // Parses `text` as setVoltageAmplitudeAndUnits does, and throws as it does.
    explicit VoltageAmplitude(const QString& text);

    // The last word becomes the unit when it is a known unit text (case matters), otherwise the
    // unit is "None"; the other words, joined without blanks, become the amplitude. Throws
    // std::runtime_error for a text with no words: callers must not pass an empty or blank text.
    void setVoltageAmplitudeAndUnits(const QString& text);

    // The code of `units`; UnitNone for a text that is no unit.
    VoltageUnit unitCode() const;
    // `units` becomes the unit's text, or "None" for a code that has none.
    void setUnitCode(int code);

    QString amplitude = QStringLiteral("0.0");
    QString units = QStringLiteral("V");
};

}  // namespace LaneTapUI
