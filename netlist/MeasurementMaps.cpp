#include <QVarLengthArray>

#include "catalogue/MeasurementTypes.h"
#include "netlist/NetlistText.h"
#include "netlist/NetlistWriter.h"
#include "parameters/ParamText.h"

namespace LaneTapUI {
namespace {

const char* const measMapSection = "NodeMeasMap";
const QString unreferenced = QStringLiteral("Unreferenced");

using Fields = QVarLengthArray<QStringView, 8>;

// The key a measurement has in the netlist, as "Eye"; an unknown code has an empty one.
const QString& measurementKey(int code) {
    static const QString none;
    const QHash<MeasurementType, QString>& keys = measurementKeys();
    const auto known = keys.constFind(static_cast<MeasurementType>(code));
    return known == keys.constEnd() ? none : *known;
}

bool needsNoReference(int code) {
    return referenceFreeTypesByKey().contains(measurementKey(code));
}

// needsNoReference for the few codes of a map, each looked up once.
class ReferenceFreeCodes {
public:
    bool contains(int code) {
        auto known = answers.constFind(code);
        if (known == answers.constEnd()) {
            known = answers.insert(code, needsNoReference(code));
        }
        return *known;
    }

private:
    QHash<int, bool> answers;
};

// The measurements of a signal against one of its references, in the order they were found.
struct ReferenceCodes {
    QString reference;
    QVarLengthArray<int, 4> codes;
};
// The references of one signal. Most signals have one: its entry is kept inline. A signal with
// many gets an index, so that no stored text makes the search quadratic.
struct CodesByReference {
    QVarLengthArray<ReferenceCodes, 1> entries;
    QHash<QString, int> index;

    void add(const QString& reference, int code) {
        constexpr int scanned = 8;
        int found = -1;
        if (entries.size() <= scanned) {
            for (int i = 0; i < entries.size() && found < 0; ++i) {
                found = entries[i].reference == reference ? i : -1;
            }
        } else {
            found = index.value(reference, -1);
        }
        if (found < 0) {
            found = entries.size();
            entries.append({reference, {}});
            if (entries.size() > scanned) {
                indexFrom(index.isEmpty() ? 0 : found);
            }
        }
        entries[found].codes.append(code);
    }

    void indexFrom(int first) {
        for (int i = first; i < entries.size(); ++i) {
            index.insert(entries[i].reference, i);
        }
    }
};

}  // namespace

void NetlistWriter::writeNodeMeasMap(QByteArray& text) const {
    int n = 1;

    // Measurements that need no reference, one "Unreferenced" line per signal. Those that need
    // one are left to the referenced lines.
    const auto& measurements = stored.measurements.lists;
    ReferenceFreeCodes referenceFree;
    // One string over the stored text is pointed at each key in turn.
    QString storedKey;
    for (auto entry = measurements.cbegin(); entry != measurements.cend(); ++entry) {
        if (!signals.contains(storedKey.setRawData(entry.key().data(), int(entry.key().size())))) {
            continue;
        }
        Fields fields{entry.key(), unreferenced};
        for (int code : entry.value()) {
            if (referenceFree.contains(code)) {
                fields.append(measurementKey(code));
            }
        }
        // A signal whose measurements all need a reference writes no line here.
        if (fields.size() > 2) {
            NetlistText::appendListLine(text, measMapSection, n++, fields);
        }
    }

    // The setup keeps the references of each measurement; the module wants the measurements of
    // each reference. References that have gone from the design are dropped here. A signal's
    // references come out in the order a hash of them gives, as the module has always had them.
    QHash<QString, CodesByReference> byReference;
    const ReferenceMap& references = stored.references;
    for (auto entry = references.cbegin(); entry != references.cend(); ++entry) {
        if (!signals.contains(entry.key())) {
            continue;
        }
        for (auto byCode = entry->cbegin(); byCode != entry->cend(); ++byCode) {
            for (const QString& reference : byCode.value()) {
                if (signals.contains(reference)) {
                    byReference[entry.key()].add(reference, byCode.key());
                }
            }
        }
    }

    // One line per signal and reference. A stored reference always counts, also for a
    // measurement that needs none, which then stands on an "Unreferenced" line as well.
    for (auto signal = byReference.cbegin(); signal != byReference.cend(); ++signal) {
        const auto writeLine = [&](const QString& reference, const auto& codes) {
            Fields fields{signal.key(), reference};
            for (int code : codes) {
                fields.append(measurementKey(code));
            }
            NetlistText::appendListLine(text, measMapSection, n++, fields);
        };
        const auto& entries = signal.value().entries;
        if (entries.size() == 1) {
            writeLine(entries[0].reference, entries[0].codes);
            continue;
        }
        QHash<QString, QVarLengthArray<int, 4>> ordered;
        for (const ReferenceCodes& entry : entries) {
            ordered.insert(entry.reference, entry.codes);
        }
        for (auto it = ordered.cbegin(); it != ordered.cend(); ++it) {
            writeLine(it.key(), it.value());
        }
    }
}

void NetlistWriter::writeNodeRefMap(QByteArray& text) const {
    int n = 1;
    for (const SignalRecord* record : signals) {
        const QList<SignalRecord*>* companions = connectionDiagnostics(record);
        if (!companions) {
            continue;
        }
        // The selection took every companion of a receiving signal. A clock or a data mask is
        // its own companion: its line holds its key twice.
        for (const SignalRecord* companion : *companions) {
            NetlistText::appendListLine(text, "NodeRefMap", n++, {record->key, companion->key});
        }
    }
}

}  // namespace LaneTapUI
