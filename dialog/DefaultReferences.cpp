#include "dialog/DefaultReferences.h"

#include <QMultiHash>
#include <QSet>
#include <algorithm>
#include <initializer_list>

#include "discovery/DesignWalk.h"
#include "parameters/MemoryTxRxComponentParameters.h"

namespace LaneTapUI {

namespace {

// How the designators of the design's DDR parts are organised. A designator that two parts name
// holds both values; the later one answers.
struct DesignatorLayouts {
    QMultiHash<QString, QString> widths;
    QMultiHash<QString, QString> numberings;
};

DesignatorLayouts readDesignatorLayouts(db::Design* design) {
    DesignatorLayouts layouts;
    walkInstances(design, [&layouts](db::Instance* instance) {
        const std::string cell = db::get_model_cell_name(instance);
        if (cell == controllerCellName || cell == memoryCellName) {
            const MemoryTxRxComponentParameters part(instance);
            layouts.widths.unite(QMultiHash<QString, QString>(part.dqmByRefDes));
            layouts.numberings.unite(QMultiHash<QString, QString>(part.dqsIndexByRefDes));
        }
        return true;
    });
    return layouts;
}

// The strobe of number `strobe` at the record's node, counted as the designator's DQS numbering
// says: every strobe, or only the even or only the odd ones. Parts four bits wide count every one.
QString strobeKey(const SignalRecord& record, int strobe, const DesignatorLayouts& layouts) {
    const QString width = layouts.widths.value(record.refDes, QStringLiteral("x8"));
    const QString numbering = layouts.numberings.value(record.refDes, QStringLiteral("Continuous"));
    int number = strobe;
    if (width != QLatin1String("x4") &&
        (numbering == QLatin1String("Even") || numbering == QLatin1String("Odd"))) {
        number = 2 * strobe + (numbering == QLatin1String("Odd") ? 1 : 0);
    }
    return "DQS_" + record.channel + "_" + record.nodeName + "_DQS" + QString::number(number);
}

bool containsAny(const QString& text, std::initializer_list<const char*> parts) {
    return std::any_of(parts.begin(), parts.end(),
                       [&text](const char* part) { return text.contains(QLatin1String(part)); });
}

// Types that are timed against the clock of their node.
bool isClockedType(const QString& type) {
    static const QSet<QString> exact = {"A", "CA", "DQS", "BA", "BG", "ODT"};
    return exact.contains(type) || containsAny(type, {"CKE", "CAS", "RAS", "WE", "CS"});
}

QString defaultReferenceKey(const SignalRecord& record, const DesignatorLayouts& layouts,
                            const QHash<QString, QString>& clockByNode) {
    const QString& type = record.signalType;
    if (type == QLatin1String("DQ")) {
        const bool narrow = layouts.widths.value(record.refDes) == QLatin1String("x4");
        return strobeKey(record, record.signalIndex.toInt() / (narrow ? 4 : 8), layouts);
    }
    if (containsAny(type, {"DM", "DBI"})) {
        return strobeKey(record, record.signalIndex.toInt(), layouts);
    }
    if (isClockedType(type)) {
        return clockByNode.value(record.channel + "." + record.nodeName,
                                 "CK_" + record.channel + "_" + record.nodeName + "_CK0");
    }
    if (type == QLatin1String("CK")) {
        return record.key;
    }
    return QString();
}

}  // namespace

void collectClockSignals(const SignalRecordHash& records, QHash<QString, QString>& clockByNode) {
    for (const SignalRecord* record : records) {
        if (record->signalType == QLatin1String("CK")) {
            clockByNode.insert(record->channel + "." + record->nodeName, record->key);
        }
    }
}

void assignDefaultReferences(db::Design* design, const SignalRecordHash& records,
                             const QHash<QString, QString>& clockByNode) {
    const DesignatorLayouts layouts = readDesignatorLayouts(design);
    for (SignalRecord* record : records) {
        record->defaultReference =
            records.value(defaultReferenceKey(*record, layouts, clockByNode));
    }
}

}  // namespace LaneTapUI
