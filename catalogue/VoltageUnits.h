#pragma once

#include <QHash>
#include <QString>

namespace LaneTapUI {

// Unit of a voltage field. A stored voltage holds the unit's text, never the code.
enum VoltageUnit : int {
    UnitNone = 0,
    UnitFemtoVolt = 1,
    UnitPicoVolt = 2,
    UnitNanoVolt = 3,
    UnitMicroVolt = 4,
    UnitMilliVolt = 5,
    UnitVolt = 6,
    UnitKiloVolt = 7,
};

// Code to text: "None", "fV", "pV", "nV", "uV", "mV", "V", "kV". Unit combo boxes list the texts
// in code order.
const QHash<VoltageUnit, QString>& voltageUnitNames();
// Text to code.
const QHash<QString, VoltageUnit>& voltageUnitsByName();

}  // namespace LaneTapUI
