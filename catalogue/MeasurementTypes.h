#pragma once

#include <QHash>
#include <QString>

namespace LaneTapUI {

// Code of a generic measurement, as stored in a setup and written to the netlist. Code 6 is
// unused and must stay so.
enum MeasurementType : int {
    StrobedEye = 0,
    Skew = 1,
    SlewRate = 2,
    Eye = 3,
    Waveform = 4,
    MaskMargin = 5,
    BERContour = 7,
};

// Code to the name shown in the dialog, e.g. "Slew Rate".
const QHash<MeasurementType, QString>& measurementDisplayNames();
// Code to the key used in the netlist, e.g. "SlewRate".
const QHash<MeasurementType, QString>& measurementKeys();
// Display name to the description shown under the measurement trees.
const QHash<QString, QString>& measurementDescriptions();
// Display name to code, the inverse of measurementDisplayNames().
const QHash<QString, MeasurementType>& measurementTypesByDisplayName();
// The measurements that need no reference signal, by display name and by key. A measurement
// missing here ("Strobed Eye", "Skew") needs one.
const QHash<QString, MeasurementType>& referenceFreeTypesByDisplayName();
const QHash<QString, MeasurementType>& referenceFreeTypesByKey();
// Whether the measurement of this display name is measured against a reference signal.
bool needsReference(const QString& displayName);

}  // namespace LaneTapUI
