#include "catalogue/VoltageUnits.h"

namespace LaneTapUI {
namespace {

struct UnitRow {
    VoltageUnit unit;
    const char* text;
};

const UnitRow unitRows[] = {
    {UnitNone, "None"},    {UnitFemtoVolt, "fV"}, {UnitPicoVolt, "pV"}, {UnitNanoVolt, "nV"},
    {UnitMicroVolt, "uV"}, {UnitMilliVolt, "mV"}, {UnitVolt, "V"},      {UnitKiloVolt, "kV"},
};

}  // namespace

const QHash<VoltageUnit, QString>& voltageUnitNames() {
    static const QHash<VoltageUnit, QString> names = [] {
        QHash<VoltageUnit, QString> texts;
        for (const UnitRow& row : unitRows) {
            texts.insert(row.unit, QString::fromLatin1(row.text));
        }
        return texts;
    }();
    return names;
}

const QHash<QString, VoltageUnit>& voltageUnitsByName() {
    static const QHash<QString, VoltageUnit> units = [] {
        QHash<QString, VoltageUnit> codes;
        for (const UnitRow& row : unitRows) {
            codes.insert(QString::fromLatin1(row.text), row.unit);
        }
        return codes;
    }();
    return units;
}

}  // namespace LaneTapUI
