#include "catalogue/MeasurementTypes.h"

namespace LaneTapUI {
namespace {

struct MeasurementRow {
    MeasurementType type;
    const char* displayName;
    const char* key;
    bool needsReference;
    const char* description;
};

// The blank after the line break of "Eye" and the wording "Cannot be plot" are the texts users
// know; keep them.
// clang-format off
const MeasurementRow measurementRows[] = {
    {StrobedEye, "Strobed Eye", "StrobedEye", true,
     "Description:\nMeasures an eye density, with a reference strobe/clock signal as trigger.\n"
     "Cannot be performed for DDR simulation."},
    {Skew, "Skew", "Skew", true,
     "Description:\nMeasures minimum and maximum skew between a signal and a reference signal."},
    {SlewRate, "Slew Rate", "SlewRate", false,
     "Description:\nMeasures minimum and maximum slew rate of a signal in V/ns."},
    {Eye, "Eye", "Eye", false,
     "Description:\n Measures an ideal clock triggered eye density."},
    {Waveform, "Waveform", "Waveform", false,
     "Description:\nSaves the transient waveform to dataset.\nCannot be saved for DDR simulation."},
    {MaskMargin, "Mask Margin", "MaskMargin", false,
     "Description:\nMeasures the mask margin at target BER, with mask height as DC input HIGH/LOW "
     "voltage and mask width as Rx timing window.\n"
     "Cannot be measured for DQS/CK signal type or Transient simulation."},
    {BERContour, "BER Contour", "BERContour", false,
     "Description:\nPlots the contour at target BER.\n"
     "Cannot be plot for DQS/CK signal type or Transient simulation."},
};
// clang-format on

QString displayNameOf(const MeasurementRow& row) {
    return QString::fromLatin1(row.displayName);
}
QString keyOf(const MeasurementRow& row) {
    return QString::fromLatin1(row.key);
}

// Code to one of the row's names.
QHash<MeasurementType, QString> namesByType(QString (*nameOf)(const MeasurementRow&)) {
    QHash<MeasurementType, QString> names;
    for (const MeasurementRow& row : measurementRows) {
        names.insert(row.type, nameOf(row));
    }
    return names;
}

// One of the row's names to code, for every measurement or only for those needing no reference.
QHash<QString, MeasurementType> typesByName(QString (*nameOf)(const MeasurementRow&),
                                            bool referenceFreeOnly) {
    QHash<QString, MeasurementType> types;
    for (const MeasurementRow& row : measurementRows) {
        if (!referenceFreeOnly || !row.needsReference) {
            types.insert(nameOf(row), row.type);
        }
    }
    return types;
}

}  // namespace

const QHash<MeasurementType, QString>& measurementDisplayNames() {
    static const QHash<MeasurementType, QString> names = namesByType(displayNameOf);
    return names;
}

const QHash<MeasurementType, QString>& measurementKeys() {
    static const QHash<MeasurementType, QString> keys = namesByType(keyOf);
    return keys;
}

const QHash<QString, QString>& measurementDescriptions() {
    static const QHash<QString, QString> descriptions = [] {
        QHash<QString, QString> texts;
        for (const MeasurementRow& row : measurementRows) {
            texts.insert(displayNameOf(row), QString::fromLatin1(row.description));
        }
        return texts;
    }();
    return descriptions;
}

const QHash<QString, MeasurementType>& measurementTypesByDisplayName() {
    static const QHash<QString, MeasurementType> types = typesByName(displayNameOf, false);
    return types;
}

const QHash<QString, MeasurementType>& referenceFreeTypesByDisplayName() {
    static const QHash<QString, MeasurementType> types = typesByName(displayNameOf, true);
    return types;
}

bool needsReference(const QString& displayName) {
    return !referenceFreeTypesByDisplayName().contains(displayName);
}

const QHash<QString, MeasurementType>& referenceFreeTypesByKey() {
    static const QHash<QString, MeasurementType> types = typesByName(keyOf, true);
    return types;
}

}  // namespace LaneTapUI
