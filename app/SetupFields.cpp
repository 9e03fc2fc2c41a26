// The fields of a setup document that each stand for one stored key: the test environment, the
// supplies, the thresholds and the compliance switches.

#include <QJsonArray>
#include <optional>
#include <vector>

#include "app/Cli.h"
#include "app/Nearest.h"
#include "app/SetupDocument.h"
#include "app/ValueForms.h"
#include "parameters/ParamText.h"
#include "standin/DesignFile.h"

namespace lanetap {

using namespace LaneTapUI;

namespace {

enum class FieldKind {
    // A box of the setup page that a controller in the design may decide.
    DramType,
    Cycle,
    StrobeMode,
    // The speed grade by its data rate, stored as its index in the probe's list.
    SpeedGrade,
    // The stored text as it stands, held to the key's form.
    Text,
    Integer,
    // A check box, stored as 0 or 1.
    Switch,
    // The compliance check box, which a DDR simulation keeps off.
    Compliance,
};

struct Field {
    QString section;
    QString name;
    QString key;
    FieldKind kind;
};

std::vector<Field> makeFields() {
    std::vector<Field> fields = {
        {"testEnvironment", "dramType", "dramType", FieldKind::DramType},
        {"testEnvironment", "cycle", "modeOfOperation", FieldKind::Cycle},
        {"testEnvironment", "strobeMode", "dqsSignalMode", FieldKind::StrobeMode},
        {"testEnvironment", "speedGrade", "speedGradeIndex", FieldKind::SpeedGrade},
        {"testEnvironment", "targetBER", "targetBER", FieldKind::Text},
        {"testEnvironment", "interpolationTimeResolution", "InterpolationTimeResolution",
         FieldKind::Integer},
        {"testEnvironment", "timeResolution", "TimeResolution", FieldKind::Integer},
        {"testEnvironment", "amplitudeResolution", "AmplitudeResolution", FieldKind::Text},
        {"compliance", "enabled", "EnableComplianceMeasurements", FieldKind::Compliance},
        {"compliance", "screenshots", "EnableScreenshots", FieldKind::Switch},
        {"compliance", "savePdf", "SaveToPDF", FieldKind::Switch},
        {"compliance", "pdfDirectory", "ResultsPDFPath", FieldKind::Text},
    };
    // Every supply and threshold under its stored key, in the order the setup stores them.
    const QStringList supplies{"vdd", "vddq", "vdd1", "vdd2", "vtt"};
    const QHash<QString, QString> switches{{"UseInternalVrefDQ", "internalVrefDQ"},
                                           {"UseInternalVrefCA", "internalVrefCA"},
                                           {"GroupDQBox", "groupDQBy"},
                                           {"GroupCABox", "groupCABy"}};
    bool inThresholds = false;
    for (const StoredKey& stored : storedKeys()) {
        inThresholds = inThresholds || stored.key == "UseInternalVrefDQ";
        if (supplies.contains(stored.key)) {
            fields.push_back({"supplies", stored.key, stored.key, FieldKind::Text});
        } else if (inThresholds && stored.form == StoredForm::Flag &&
                   switches.contains(stored.key)) {
            fields.push_back(
                {"thresholds", switches.value(stored.key), stored.key, FieldKind::Switch});
        } else if (inThresholds && switches.contains(stored.key)) {
            fields.push_back(
                {"thresholds", switches.value(stored.key), stored.key, FieldKind::Text});
        } else if (inThresholds &&
                   (stored.form == StoredForm::Voltage || stored.form == StoredForm::Number)) {
            fields.push_back({"thresholds", stored.key, stored.key, FieldKind::Text});
        }
    }
    return fields;
}

const std::vector<Field>& fields() {
    static const std::vector<Field> all = makeFields();
    return all;
}

const StoredKey& storedKeyOf(const Field& field) {
    return *findStoredKey(field.key);
}

QStringList speedGrades(const ProbeSetup& setup) {
    const ListEntries list = parseListEntries(setup.stored("speedGradeList").toStdString());
    QStringList grades;
    for (const QStringView grade : list.items) {
        grades << grade.toString();
    }
    return grades;
}

// Which box a mode field is, and the index the setup page shows in it.
int& shownIndex(TestModes& modes, FieldKind kind) {
    return kind == FieldKind::DramType ? modes.dramType
           : kind == FieldKind::Cycle  ? modes.operationMode
                                       : modes.dqsSignalMode;
}

// Whether the design's controller decides a field, whose box the dialog then locks.
bool decidedByController(const ProbeSetup& setup, FieldKind kind) {
    const DecidedModes decided = modesDecidedBy(*setup.controller);
    return (kind == FieldKind::DramType && decided.dramType) ||
           (kind == FieldKind::Cycle && decided.operationMode) ||
           (kind == FieldKind::StrobeMode && decided.dqsSignalMode);
}

// A text or integer field as export writes it: an integer as a number.
QJsonValue textWord(const QString& text, bool integer) {
    return integer && isInteger(text) ? QJsonValue(text.toInt()) : QJsonValue(text);
}

// The field's words for the stored setup, as the dialog shows it; nothing where the dialog would
// show no valid value.
std::optional<QJsonValue> exportedWord(const ProbeSetup& setup, const Field& field) {
    const QString text = setup.stored(field.key.toUtf8().constData());
    switch (field.kind) {
        case FieldKind::DramType:
        case FieldKind::Cycle:
        case FieldKind::StrobeMode: {
            TestModes modes = setup.modes;
            const int index = shownIndex(modes, field.kind);
            const QStringList& items = storedKeyOf(field).items;
            return index < 0 || index >= items.size() ? std::nullopt
                                                      : std::optional<QJsonValue>(items[index]);
        }
        case FieldKind::SpeedGrade: {
            const QStringList grades = speedGrades(setup);
            const int index = setup.storedInt("speedGradeIndex");
            return index < 0 || index >= grades.size()
                       ? std::nullopt
                       : std::optional<QJsonValue>(textWord(grades[index], true));
        }
        case FieldKind::Switch:
            return QJsonValue(setup.storedInt(field.key.toUtf8().constData()) > 0);
        case FieldKind::Compliance:
            return QJsonValue(
                isComplianceOn(setup.storedInt("EnableComplianceMeasurements"), *setup.controller));
        case FieldKind::Text:
        case FieldKind::Integer:
            if (!formProblem(storedKeyOf(field), text, {}).isEmpty()) {
                return std::nullopt;
            }
            return textWord(text, field.kind == FieldKind::Integer);
    }
    return std::nullopt;
}

// The index of `word` among `items`, whatever its case, or a refusal naming the items.
int itemIndex(const QString& path, const QString& word, const QStringList& items) {
    for (int i = 0; i < items.size(); ++i) {
        if (items[i].compare(word, Qt::CaseInsensitive) == 0) {
            return i;
        }
    }
    refuse(path, QString("%1 is none of %2%3")
                     .arg(standin::quoted(word), items.join(", "), nearestHint(word, items)));
}

// The text the dialog would store for the document's word, and the modes it leaves in force.
QString storedText(const ProbeSetup& setup, const Field& field, const QString& path,
                   const QJsonValue& value, TestModes& modes) {
    const bool isSwitch = field.kind == FieldKind::Switch || field.kind == FieldKind::Compliance;
    if (isSwitch != value.isBool() || (!isSwitch && wordText(value).isNull())) {
        refuse(path, isSwitch ? "expected true or false" : "expected a text or a number");
    }
    switch (field.kind) {
        case FieldKind::DramType:
        case FieldKind::Cycle:
        case FieldKind::StrobeMode: {
            const int index = itemIndex(path, wordText(value), storedKeyOf(field).items);
            shownIndex(modes, field.kind) = index;
            return QString::number(index);
        }
        case FieldKind::SpeedGrade: {
            const QStringList grades = speedGrades(setup);
            if (!grades.contains(wordText(value))) {
                refuse(path, QString("the probe's speed grades are %1; %2 is not one of them%3")
                                 .arg(grades.join(", "), standin::quoted(wordText(value)),
                                      nearestHint(wordText(value), grades)));
            }
            return QString::number(grades.indexOf(wordText(value)));
        }
        case FieldKind::Switch:
        case FieldKind::Compliance:
            return value.toBool() ? "1" : "0";
        case FieldKind::Text:
        case FieldKind::Integer:
            break;
    }
    const QString problem = formProblem(storedKeyOf(field), wordText(value), {});
    if (!problem.isEmpty()) {
        refuse(path, problem);
    }
    return wordText(value);
}

// Why the document may not change a field the design decides, or an empty text.
QString lockedProblem(const ProbeSetup& setup, const Field& field, const QJsonValue& exported) {
    const QString shown =
        exported.isBool() ? (exported.toBool() ? "on" : "off") : wordText(exported);
    if (field.kind == FieldKind::Compliance && setup.controller->isDDRSimulation()) {
        return "the design's controller runs a DDR simulation, which has no compliance "
               "measurements: compliance stays off";
    }
    if (!decidedByController(setup, field.kind)) {
        return {};
    }
    return QString("the design's controller decides it: %1").arg(shown);
}

}  // namespace

void exportFields(const ProbeSetup& setup, QJsonObject& document, int& leftOut) {
    QMap<QString, QJsonObject> sections;
    for (const Field& field : fields()) {
        const std::optional<QJsonValue> word = exportedWord(setup, field);
        if (word) {
            sections[field.section].insert(field.name, *word);
        } else {
            ++leftOut;
        }
    }
    for (auto section = sections.cbegin(); section != sections.cend(); ++section) {
        document.insert(section.key(), section.value());
    }
}

void applyFields(const ProbeSetup& setup, const QJsonObject& document,
                 QMap<QString, QString>& changes, TestModes& modes) {
    modes = setup.modes;
    for (const Field& field : fields()) {
        const QJsonValue value = document.value(field.section).toObject().value(field.name);
        if (value.isUndefined()) {
            continue;
        }
        const QString path = field.section + "." + field.name;
        const QString text = storedText(setup, field, path, value, modes);
        const std::optional<QJsonValue> exported = exportedWord(setup, field);
        TestModes exportedModes = setup.modes;
        const QString before =
            exported ? storedText(setup, field, path, *exported, exportedModes) : QString();
        if (exported && before == text) {
            continue;
        }
        const QString locked = exported ? lockedProblem(setup, field, *exported) : QString();
        if (!locked.isEmpty()) {
            refuse(path, locked);
        }
        changes.insert(field.key, text);
    }
}

}  // namespace lanetap
