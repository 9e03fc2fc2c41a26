// The selection of a setup document: signals by key or glob pattern, their measurements by name,
// the references of those that need one, and the compliance tests of each signal type.

#include <QJsonArray>
#include <QRegularExpression>
#include <algorithm>

#include "app/Cli.h"
#include "app/Nearest.h"
#include "app/SetupDocument.h"
#include "app/SignalOrder.h"
#include "app/ValueForms.h"
#include "catalogue/ComplianceLookups.h"
#include "catalogue/MeasurementTypes.h"
#include "parameters/ParamText.h"
#include "parameters/ReferenceRules.h"
#include "standin/DesignFile.h"

namespace lanetap {

using namespace LaneTapUI;

namespace {

const char automatic[] = "auto";
const char everyOffered[] = "offered";

bool isPattern(const QString& word) {
    return std::any_of(word.cbegin(), word.cend(),
                       [](QChar c) { return c == '*' || c == '?' || c == '['; });
}

// The keys of `records` that `word` names: the key itself, or every key a glob pattern matches.
QStringList matching(const QString& word, const SignalRecordHash& records) {
    if (!isPattern(word)) {
        return records.contains(word) ? QStringList{word} : QStringList();
    }
    const QRegularExpression pattern(QRegularExpression::wildcardToRegularExpression(word));
    QStringList keys;
    for (auto it = records.cbegin(); it != records.cend(); ++it) {
        if (pattern.match(it.key()).hasMatch()) {
            keys << it.key();
        }
    }
    return naturallySorted(keys);
}

// The selected signals a key or pattern names; one that names none is refused.
QStringList selectedSignals(const ProbeSetup& setup, const QString& path, const QString& word) {
    const QStringList keys = matching(word, setup.selected);
    if (!keys.isEmpty()) {
        return keys;
    }
    if (!matching(word, setup.all).isEmpty()) {
        refuse(path, QString("%1 names no selected signal; add it to 'signals' first")
                         .arg(standin::quoted(word)));
    }
    refuse(path, QString("the design has no signal %1%2")
                     .arg(standin::quoted(word), nearestHint(word, setup.all.keys())));
}

// The words of a value that is a text or a list of texts.
QStringList wordsOf(const QString& path, const QJsonValue& value) {
    if (value.isString()) {
        return {value.toString()};
    }
    QStringList words;
    if (value.isArray()) {
        for (const QJsonValue item : value.toArray()) {
            if (!item.isString() && !item.isDouble()) {
                refuse(path, "expected a list of texts");
            }
            words << wordText(item);
        }
        return words;
    }
    refuse(path, "expected a text or a list of texts");
}

QJsonObject objectAt(const QString& path, const QJsonValue& value) {
    if (!value.isObject()) {
        refuse(path, "expected an object");
    }
    return value.toObject();
}

// A measurement by the name the dialog shows, whatever its case.
QString measurementName(const QString& path, const QString& word) {
    const QStringList names = measurementTypesByDisplayName().keys();
    for (const QString& name : names) {
        if (name.compare(word, Qt::CaseInsensitive) == 0) {
            return name;
        }
    }
    refuse(path, QString("%1 is no measurement (%2)%3")
                     .arg(standin::quoted(word), names.join(", "), nearestHint(word, names)));
}

// The measurements in the order of their codes.
QStringList byCode(QStringList names) {
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        return measurementTypesByDisplayName().value(a) < measurementTypesByDisplayName().value(b);
    });
    return names;
}

// The references a measurement gets when it is chosen: the automatic one, if the signal has one.
SignalRecordHash automaticReferences(const SignalRecord& record) {
    SignalRecordHash references;
    if (record.defaultReference) {
        references.insert(record.defaultReference->key, record.defaultReference);
    }
    return references;
}

QString modesText(const TestModes& modes) {
    return QString("%1, %2 cycle, %3 strobe")
        .arg(modes.dramTypeText(), QString(cycleItems[modes.cycle()]).toLower(),
             modes.dqsSignalMode == 0 ? "continuous" : "bursting");
}

// ---- signals ----

void applySignals(ProbeSetup& setup, const QJsonValue& value) {
    if (!value.isArray()) {
        refuse("signals", "expected a list of signal keys or patterns");
    }
    QSet<QString> wanted;
    const QJsonArray items = value.toArray();
    for (int i = 0; i < items.size(); ++i) {
        const QString path = QString("signals[%1]").arg(i);
        const QString word = wordsOf(path, items[i]).value(0);
        const QStringList keys = matching(word, setup.all);
        if (keys.isEmpty()) {
            refuse(path, QString("the design has no signal %1%2")
                             .arg(standin::quoted(word), nearestHint(word, setup.all.keys())));
        }
        wanted.unite(QSet<QString>(keys.cbegin(), keys.cend()));
    }
    QStringList removed;
    for (auto it = setup.selected.cbegin(); it != setup.selected.cend(); ++it) {
        if (!wanted.contains(it.key())) {
            removed << it.key();
        }
    }
    QStringList added;
    for (const QString& key : qAsConst(wanted)) {
        if (!setup.selected.contains(key)) {
            added << key;
        }
    }
    added = naturallySorted(added);
    moveKeys(naturallySorted(removed), setup.selected, setup.available);
    moveKeys(added, setup.available, setup.selected);
    // A signal added on the signal page takes the measurements of its type or channel.
    for (const QString& key : qAsConst(added)) {
        SignalRecord& record = *setup.selected.value(key);
        if (inheritsGroupMeasurements(setup.groupMeasurements, record)) {
            applyGroupMeasurements(setup.groupMeasurements, record);
        }
    }
}

// ---- measurements ----

void applyMeasurements(ProbeSetup& setup, const QJsonValue& value) {
    const QJsonObject entries = objectAt("measurements", value);
    QHash<QString, QSet<QString>> wanted;
    for (auto entry = entries.constBegin(); entry != entries.constEnd(); ++entry) {
        const QString path = "measurements." + entry.key();
        QSet<QString> names;
        for (const QString& word : wordsOf(path, entry.value())) {
            names.insert(measurementName(path, word));
        }
        for (const QString& key : selectedSignals(setup, path, entry.key())) {
            wanted[key].unite(names);
        }
    }
    for (const SignalRecord* constRecord : inTreeOrder(setup.selected)) {
        SignalRecord& record = *setup.selected.value(constRecord->key);
        const QSet<QString> names = wanted.value(record.key);
        for (const QString& name : record.measurements.keys()) {
            if (!names.contains(name)) {
                record.removeMeasurement(name);
            }
        }
        for (const QString& name : byCode(names.values())) {
            record.addMeasurement(name);
        }
    }
}

// ---- references ----

// The references one word gives a signal: "auto", or the signals a key or pattern names.
void addReferences(const ProbeSetup& setup, const QString& path, const QString& word,
                   const SignalRecord& record, SignalRecordHash& references) {
    if (word == automatic) {
        if (!record.defaultReference) {
            refuse(path, QString("%1 has no automatic reference; name one").arg(record.key));
        }
        references.insert(record.defaultReference->key, record.defaultReference);
        return;
    }
    const QStringList keys = matching(word, setup.all);
    if (keys.isEmpty()) {
        refuse(path, QString("the design has no signal %1%2")
                         .arg(standin::quoted(word), nearestHint(word, setup.all.keys())));
    }
    const QSet<QString> excluded = excludedReferenceTypes(record.signalType);
    for (const QString& key : keys) {
        SignalRecord* reference = setup.all.value(key);
        if (excluded.contains(reference->signalType)) {
            refuse(path, QString("%1 is of type %2, which a %3 signal does not take as reference")
                             .arg(key, reference->signalType, record.signalType));
        }
        references.insert(key, reference);
    }
}

void applyReferences(ProbeSetup& setup, const QJsonValue& value) {
    const QJsonObject entries = objectAt("references", value);
    // Signal key to measurement to its references, for the pairs the document names.
    QHash<QString, QHash<QString, SignalRecordHash>> named;
    for (auto entry = entries.constBegin(); entry != entries.constEnd(); ++entry) {
        const QString entryPath = "references." + entry.key();
        const QStringList keys = selectedSignals(setup, entryPath, entry.key());
        const QJsonObject measurements = objectAt(entryPath, entry.value());
        for (auto pair = measurements.constBegin(); pair != measurements.constEnd(); ++pair) {
            const QString path = entryPath + "." + pair.key();
            const QString name = measurementName(path, pair.key());
            if (!needsReference(name)) {
                refuse(path, name + " needs no reference signal");
            }
            int holders = 0;
            for (const QString& key : keys) {
                const SignalRecord& record = *setup.selected.value(key);
                if (!record.measurements.contains(name)) {
                    continue;
                }
                ++holders;
                SignalRecordHash& references = named[key][name];
                for (const QString& word : wordsOf(path, pair.value())) {
                    addReferences(setup, path, word, record, references);
                }
            }
            if (holders == 0) {
                refuse(path, QString("%1 has no %2 measurement").arg(entry.key(), name));
            }
        }
    }
    // Every pair the document does not name takes the automatic reference, as a measurement
    // chosen in the dialog does.
    for (SignalRecord* record : qAsConst(setup.selected)) {
        for (const QString& name : record->measurements.keys()) {
            const auto references = named.value(record->key);
            const SignalRecordHash wanted =
                references.contains(name) ? references.value(name) : automaticReferences(*record);
            if (needsReference(name) && record->referencesOf(name) != wanted) {
                record->setReferences(name, wanted);
            }
        }
    }
}

// ---- compliance ----

QMultiHash<QString, qint32> offeredTests(const QString& type, const TestModes& modes) {
    return complianceIdsByNameFor(type, modes.dramTypeText(), modes.cycle(), modes.dqsSignalMode);
}

// The tests of one group that the document names: "offered", or names and ids.
QMultiHash<QString, int> chosenTests(const QString& path, const QString& type,
                                     const QJsonValue& value, const TestModes& modes) {
    const QMultiHash<QString, qint32> offered = offeredTests(type, modes);
    QMultiHash<QString, int> chosen;
    const auto choose = [&chosen](const QString& name, int id) {
        if (!chosen.contains(name, id)) {
            chosen.insert(name, id);
        }
    };
    if (value.isString() && value.toString() == everyOffered) {
        for (auto it = offered.cbegin(); it != offered.cend(); ++it) {
            choose(it.key(), it.value());
        }
        return chosen;
    }
    if (!value.isArray()) {
        refuse(path, "expected \"offered\" or a list of test names and ids");
    }
    const QStringList names = offered.uniqueKeys();
    for (const QString& word : wordsOf(path, value)) {
        const QString name = offered.key(word.toInt(), QString());
        if (isInteger(word) && !name.isEmpty()) {
            choose(name, word.toInt());
            continue;
        }
        const auto found = std::find_if(names.cbegin(), names.cend(), [&word](const QString& n) {
            return n.compare(word, Qt::CaseInsensitive) == 0;
        });
        if (found == names.cend()) {
            refuse(path, QString("%1 is not a test the compliance page offers %2 under %3%4")
                             .arg(standin::quoted(word), type, modesText(modes),
                                  isInteger(word) ? QString() : nearestHint(word, names)));
        }
        for (const qint32 id : offered.values(*found)) {
            choose(*found, id);
        }
    }
    return chosen;
}

void applyCompliance(ProbeSetup& setup, const QJsonValue& value, const TestModes& modes) {
    const QJsonObject groups = objectAt("compliance.tests", value);
    const QHash<QString, QString> offered =
        complianceGroups(modelsByType(setup.all), modes.readCycle());
    for (auto group = groups.constBegin(); group != groups.constEnd(); ++group) {
        const QString path = "compliance.tests." + group.key();
        if (!offered.contains(group.key())) {
            refuse(path, QString("the compliance page offers no group %1 here (it offers %2)%3")
                             .arg(standin::quoted(group.key()),
                                  naturallySorted(offered.keys()).join(", "),
                                  nearestHint(group.key(), offered.keys())));
        }
        setup.groupCompliance.insert(group.key(),
                                     chosenTests(path, group.key(), group.value(), modes));
    }
    for (auto type = offered.cbegin(); type != offered.cend(); ++type) {
        if (!groups.contains(type.key())) {
            setup.groupCompliance.remove(type.key());
        }
    }
}

// Two texts of one selection key alike but for the order of records and of the words after each
// record's head (the signal key, and for references its measurement code).
bool sameRecords(const QString& a, const QString& b, int headWords) {
    const auto normalised = [headWords](const QString& text) {
        QStringList records;
        for (const QString& record : text.split(',', Qt::SkipEmptyParts)) {
            QStringList words = record.split(' ', Qt::SkipEmptyParts);
            std::sort(words.begin() + std::min(headWords, int(words.size())), words.end());
            records << words.join(' ');
        }
        records.sort();
        return records;
    };
    return normalised(a) == normalised(b);
}

}  // namespace

void applyChoices(ProbeSetup& setup, const QJsonObject& document, const TestModes& modes,
                  QMap<QString, QString>& changes) {
    const QHash<QString, QString> before = setup.selectionTexts();
    if (modes.dramType != setup.modes.dramType || modes.cycle() != setup.modes.cycle() ||
        modes.dqsSignalMode != setup.modes.dqsSignalMode) {
        // Under other modes the compliance page keeps of the stored tests what it offers.
        const db::ParamIter in(setup.probeInstance());
        setup.groupCompliance.clear();
        restoreGroupCompliance(readParamIntListMap(in, "SelectedGroupComplianceListMap"), modes,
                               setup.groupCompliance);
    }
    if (document.contains("signals")) {
        applySignals(setup, document.value("signals"));
    }
    if (document.contains("measurements")) {
        applyMeasurements(setup, document.value("measurements"));
    }
    if (document.contains("references")) {
        applyReferences(setup, document.value("references"));
    }
    const QJsonObject compliance = document.value("compliance").toObject();
    if (compliance.contains("tests")) {
        applyCompliance(setup, compliance.value("tests"), modes);
    }
    const QHash<QString, QString> after = setup.selectionTexts();
    for (auto it = after.cbegin(); it != after.cend(); ++it) {
        const int headWords = it.key() == "SelectedMeasurementsRefSignalListMap" ? 2 : 1;
        if (!sameRecords(before.value(it.key()), it.value(), headWords)) {
            changes.insert(it.key(), it.value());
        }
    }
}

void exportChoices(const ProbeSetup& setup, QJsonObject& document, int& leftOut) {
    const QList<const SignalRecord*> selected = inTreeOrder(setup.selected);
    QJsonArray signalKeys;
    QJsonObject measurements;
    QJsonObject references;
    for (const SignalRecord* record : selected) {
        signalKeys.append(record->key);
        if (!record->measurements.isEmpty()) {
            measurements.insert(record->key,
                                QJsonArray::fromStringList(byCode(record->measurements.keys())));
        }
        QJsonObject named;
        for (const QString& name : byCode(record->measurements.keys())) {
            const SignalRecordHash references = record->referencesOf(name);
            if (needsReference(name) && references != automaticReferences(*record)) {
                named.insert(name, QJsonArray::fromStringList(naturallySorted(references.keys())));
            }
        }
        // A reference entry the reference page cannot reach is not a choice of words.
        for (auto entry = record->refSignals.cbegin(); entry != record->refSignals.cend();
             ++entry) {
            if (!record->measurements.contains(entry.key()) || !needsReference(entry.key())) {
                ++leftOut;
            }
        }
        if (!named.isEmpty()) {
            references.insert(record->key, named);
        }
    }
    document.insert("signals", signalKeys);
    document.insert("measurements", measurements);
    document.insert("references", references);

    QJsonObject tests;
    const QHash<QString, QString> offered =
        complianceGroups(modelsByType(setup.all), setup.modes.readCycle());
    for (auto group = setup.groupCompliance.cbegin(); group != setup.groupCompliance.cend();
         ++group) {
        if (group.value().isEmpty()) {
            continue;
        }
        if (!offered.contains(group.key())) {
            ++leftOut;
            continue;
        }
        const QMultiHash<QString, qint32> all = offeredTests(group.key(), setup.modes);
        QList<int> chosenIds = group.value().values();
        QList<int> offeredIds = all.values();
        std::sort(chosenIds.begin(), chosenIds.end());
        std::sort(offeredIds.begin(), offeredIds.end());
        if (chosenIds == offeredIds) {
            tests.insert(group.key(), everyOffered);
            continue;
        }
        QJsonArray words;
        for (const QString& name : naturallySorted(group.value().uniqueKeys())) {
            QList<int> ids = group.value().values(name);
            QList<int> ofName = all.values(name);
            std::sort(ids.begin(), ids.end());
            std::sort(ofName.begin(), ofName.end());
            if (ids == ofName) {
                words.append(name);
            } else {
                for (const int id : ids) {
                    words.append(QString::number(id));
                }
            }
        }
        tests.insert(group.key(), words);
    }
    QJsonObject compliance = document.value("compliance").toObject();
    compliance.insert("tests", tests);
    document.insert("compliance", compliance);
}

}  // namespace lanetap
