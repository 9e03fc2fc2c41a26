#include "parameters/VoltageAmplitude.h"

#include <stdexcept>

#include "parameters/ParamText.h"

namespace LaneTapUI {

VoltageAmplitude::VoltageAmplitude(const QString& text) {
    setVoltageAmplitudeAndUnits(text);
}

void VoltageAmplitude::setVoltageAmplitudeAndUnits(const QString& text) {
    QStringList words = splitOnWhiteSpace(text);
    if (words.isEmpty()) {
        throw std::runtime_error("setVoltageAmplitudeAndUnits LaneTapVoltage failed");
    }
    units = QStringLiteral("None");
    if (voltageUnitsByName().contains(words.last())) {
        units = words.takeLast();
    }
    amplitude = words.join(QString());
}

VoltageUnit VoltageAmplitude::unitCode() const {
    return voltageUnitsByName().value(units, UnitNone);
}

void VoltageAmplitude::setUnitCode(int code) {
    units = voltageUnitNames().value(static_cast<VoltageUnit>(code), QStringLiteral("None"));
}

}  // namespace LaneTapUI
