#include "catalogue/MeasurementTypes.h"
#include "netlist/NetlistText.h"
#include "netlist/NetlistWriter.h"
#include "parameters/ParamText.h"

namespace LaneTapUI {
namespace {

const char* const measMapSection = "NodeMeasMap";
const QString unreferenced = QStringLiteral("Unreferenced");

// The key a measurement has in the netlist, as "Eye"; an unknown code has an empty one.
QString measurementKey(int code) {
    return measurementKeys().value(static_cast<MeasurementType>(code));
}

}  // namespace

void NetlistWriter::writeNodeMeasMap(QByteArray& text) const {
    int n = 1;

    // Measurements that need no reference, one "Unreferenced" line per signal. Those that need
    // one are left to the referenced lines.
    const IntListMap measurements =
        readParamIntListMap(*parameterIterator, "SelectedMeasurementsListMap");
    const QStringList measuredKeys = measurements.keys();
    for (const QString& key : measuredKeys) {
        if (!signals.contains(key)) {
            continue;
        }
        QStringList fields{key, unreferenced};
        for (int code : measurements.value(key)) {
            const QString name = measurementKey(code);
            if (referenceFreeTypesByKey().contains(name)) {
                fields << name;
            }
        }
        // A signal whose measurements all need a reference writes no line here.
        if (fields.size() > 2) {
            NetlistText::appendListLine(text, measMapSection, n++, fields);
        }
    }

    // The setup keeps the references of each measurement; the module wants the measurements of
    // each reference. References that have gone from the design are dropped here.
    QHash<QString, QHash<QString, QList<int>>> byReference;
    const ReferenceMap& references = storedReferences;
    const QStringList referencingKeys = references.keys();
    for (const QString& key : referencingKeys) {
        if (!signals.contains(key)) {
            continue;
        }
        const QHash<int, QStringList> referencesByCode = references.value(key);
        const QList<int> codes = referencesByCode.keys();
        for (int code : codes) {
            for (const QString& reference : referencesByCode.value(code)) {
                if (signals.contains(reference)) {
                    byReference[key][reference].append(code);
                }
            }
        }
    }

    // One line per signal and reference. A stored reference always counts, also for a
    // measurement that needs none, which then stands on an "Unreferenced" line as well.
    const QStringList keys = byReference.keys();
    for (const QString& key : keys) {
        if (!signals.contains(key)) {
            continue;
        }
        const QHash<QString, QList<int>> codesByReference = byReference.value(key);
        const QStringList referenceKeys = codesByReference.keys();
        for (const QString& reference : referenceKeys) {
            QStringList fields{key, reference};
            for (int code : codesByReference.value(reference)) {
                fields << measurementKey(code);
            }
            NetlistText::appendListLine(text, measMapSection, n++, fields);
        }
    }
}

void NetlistWriter::writeNodeRefMap(QByteArray& text) const {
    int n = 1;
    for (const SignalRecord* record : signals) {
        if (!record->models.contains(measurementCellForType(record->signalType))) {
            continue;
        }
        // A clock or a data mask is its own companion: its line holds its key twice.
        for (const QString& reference : connectionDiagnostics(record)) {
            if (signals.contains(reference)) {
                NetlistText::appendListLine(text, "NodeRefMap", n++, {record->key, reference});
            }
        }
    }
}

}  // namespace LaneTapUI
