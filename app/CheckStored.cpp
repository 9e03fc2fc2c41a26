// The stored text of a probe's setup, read as the plug-in reads it: numbers by its readers, modes
// by its two readings, measurements against their own descriptions, and the controller's data
// rate against the speed grade.

#include <QRegularExpression>
#include <algorithm>

#include "app/Check.h"
#include "app/ValueForms.h"
#include "catalogue/MeasurementTypes.h"
#include "catalogue/SpeedGradeDefaults.h"
#include "parameters/ParamText.h"
#include "parameters/StoredKeys.h"
#include "standin/DesignFile.h"

namespace lanetap {

using namespace LaneTapUI;

namespace {

QString modesText(const TestModes& modes) {
    return QString("%1, %2 cycle, %3 strobe")
        .arg(modes.dramTypeText().isEmpty() ? "no DRAM type" : modes.dramTypeText(),
             modes.cycle() == 0 ? "read" : "write",
             modes.dqsSignalMode == 0 ? "continuous" : "bursting");
}

TestModes storedModes(const ProbeSetup& setup, bool dialog) {
    const int dram = setup.storedInt("dramType");
    const int dqs = setup.storedInt("dqsSignalMode");
    const int operation = setup.storedInt("modeOfOperation");
    return dialog ? dialogTestModes(dram, dqs, operation, *setup.controller)
                  : blockTestModes(dram, dqs, operation, *setup.controller);
}

// Voltages: a blank one stops the dialog; one that is no voltage reaches the block as it stands.
void checkVoltages(const ProbeSetup& setup, Findings& findings) {
    for (const StoredKey& key : storedKeys()) {
        if (key.form != StoredForm::Voltage) {
            continue;
        }
        const QString text = setup.stored(key.key.toUtf8().constData());
        if (text.trimmed().isEmpty()) {
            findings.error("bad-voltage", key.key, {},
                           "the voltage is blank; the dialog cannot open");
        } else if (!isStoredVoltage(text)) {
            findings.error("bad-voltage", key.key, {},
                           standin::quoted(text) +
                               " is not a number with a blank and a unit; the block carries it "
                               "as it stands");
        }
    }
}

// Numbers as the plug-in reads them: the longest numeric prefix, 0 for none or out of range.
void checkNumbers(const ProbeSetup& setup, Findings& findings) {
    for (const StoredKey& key : storedKeys()) {
        const QByteArray name = key.key.toUtf8();
        const QString text = setup.stored(name.constData());
        const QString trimmed = text.trimmed();
        QString read;
        if (key.form == StoredForm::Int || key.form == StoredForm::Flag ||
            key.form == StoredForm::Index) {
            const int value = setup.storedInt(name.constData());
            read =
                isInteger(trimmed) && trimmed.toInt() == value ? QString() : QString::number(value);
        } else if (key.form == StoredForm::Number) {
            const double value =
                readParamDouble(db::ParamIter(setup.probeInstance()), name.constData());
            read = isDecimalNumber(trimmed) ? QString() : QString::number(value, 'g', 15);
        }
        if (!read.isEmpty()) {
            findings.warning("bad-number", key.key, {},
                             QString("%1 is no %2; the plug-in reads it as %3")
                                 .arg(standin::quoted(text),
                                      key.form == StoredForm::Number ? "number" : "integer", read));
        }
    }
}

void checkIndices(const ProbeSetup& setup, Findings& findings) {
    const ListEntries grades = parseListEntries(setup.stored("speedGradeList").toStdString());
    for (const StoredKey& key : storedKeys()) {
        if (key.form != StoredForm::Index || key.key == "StackWidgetPageNumber") {
            continue;
        }
        const int count =
            key.key == "speedGradeIndex" ? int(grades.items.size()) : int(key.items.size());
        const int index = setup.storedInt(key.key.toUtf8().constData());
        if (index < 0 || index >= count) {
            findings.warning(
                "bad-index", key.key, {},
                QString("%1 names no item of its box (0 to %2)").arg(index).arg(count - 1));
        }
    }
}

// Codes, ids and references that stand twice where the plug-in takes each as it comes.
template <class Values>
void duplicates(const QString& key, const QString& record, const Values& values, const char* what,
                Findings& findings) {
    QList<typename Values::value_type> seen;
    for (const auto& value : values) {
        const int count = int(std::count(values.begin(), values.end(), value));
        if (count > 1 && !seen.contains(value)) {
            seen << value;
            findings.warning("duplicate", key, record + " " + QVariant(value).toString(),
                             QString("the %1 stands %2 times; the block writes it as often")
                                 .arg(what)
                                 .arg(count));
        }
    }
}

void checkDuplicates(const ProbeSetup& setup, Findings& findings) {
    const db::ParamIter stored(setup.probeInstance());
    duplicates("SelectedSignalList", {}, readParamStringList(stored, "SelectedSignalList"),
               "signal", findings);
    const IntListMap measurements = readParamIntListMap(stored, "SelectedMeasurementsListMap");
    for (auto it = measurements.cbegin(); it != measurements.cend(); ++it) {
        duplicates("SelectedMeasurementsListMap", it.key(), it.value(), "code", findings);
    }
    const ReferenceMap references =
        readParamReferenceMap(stored, "SelectedMeasurementsRefSignalListMap");
    for (auto it = references.cbegin(); it != references.cend(); ++it) {
        for (auto code = it.value().cbegin(); code != it.value().cend(); ++code) {
            duplicates("SelectedMeasurementsRefSignalListMap",
                       it.key() + " " + QString::number(code.key()), code.value(), "reference",
                       findings);
        }
    }
    const IntListMap tests = readParamIntListMap(stored, "SelectedGroupComplianceListMap");
    for (auto it = tests.cbegin(); it != tests.cend(); ++it) {
        duplicates("SelectedGroupComplianceListMap", it.key(), it.value(), "id", findings);
    }
}

void checkModes(const ProbeSetup& setup, Findings& findings) {
    const TestModes shown = storedModes(setup, true);
    const TestModes judged = storedModes(setup, false);
    const ControllerParameters& controller = *setup.controller;
    if (controller.parametersRead) {
        const struct {
            const char* key;
            int decided;
            QString what;
        } decided[] = {
            {"dqsSignalMode", shown.dqsSignalMode,
             shown.dqsSignalMode == 0 ? "a continuous strobe (0)" : "a bursting strobe (1)"},
            {"modeOfOperation", shown.operationMode,
             shown.operationMode == 0 ? "the read cycle (0)" : "the write cycle (1)"},
            {"dramType", controller.isNoBurst() ? -1 : shown.dramType,
             QString("%1 (%2)").arg(shown.dramTypeText()).arg(shown.dramType)},
        };
        for (const auto& mode : decided) {
            const int stored = setup.storedInt(mode.key);
            if (mode.decided >= 0 && stored != mode.decided) {
                findings.note("controller-override", mode.key, {},
                              QString("the controller decides %1; the stored %2 is not used")
                                  .arg(mode.what)
                                  .arg(stored));
            }
        }
    }
    const bool sameModes = shown.dramTypeText() == judged.dramTypeText() &&
                           shown.cycle() == judged.cycle() &&
                           (shown.dqsSignalMode != 0) == (judged.dqsSignalMode != 0);
    if (!sameModes && isComplianceOn(setup.storedInt("EnableComplianceMeasurements"), controller)) {
        findings.warning("modes-differ", "dramType", {},
                         QString("the dialog offers and keeps compliance tests for %1, while the "
                                 "block judges them for %2")
                             .arg(modesText(shown), modesText(judged)));
    }
    if (setup.storedInt("EnableComplianceMeasurements") != 0 && controller.isDDRSimulation()) {
        findings.note("compliance-inactive", "EnableComplianceMeasurements", {},
                      "compliance is on, but a DDR simulation has none: the block carries no "
                      "tests");
    }
}

// A data rate in MT/s from the controller's text, 0 when its unit is not one of a data rate.
double megaTransfers(const QString& rate) {
    const QStringList words = rate.split(' ', Qt::SkipEmptyParts);
    bool number = false;
    const double value = words.value(0).toDouble(&number);
    const QString unit = words.value(1).toLower();
    if (!number || words.size() > 2) {
        return 0;
    }
    if (unit.isEmpty() || unit == "mbps" || unit == "mt/s" || unit == "mb/s") {
        return value;
    }
    return unit == "gbps" || unit == "gt/s" || unit == "gb/s" ? value * 1000 : 0;
}

void checkRate(const ProbeSetup& setup, Findings& findings) {
    const ListEntries grades = parseListEntries(setup.stored("speedGradeList").toStdString());
    const int index = setup.storedInt("speedGradeIndex");
    const QString grade =
        index >= 0 && index < int(grades.items.size()) ? grades.items[index].toString() : QString();
    QList<int> known = thresholdDefaultsBySpeedGrade().keys();
    std::sort(known.begin(), known.end());
    QStringList knownText;
    for (const int rate : known) {
        knownText << QString::number(rate);
    }
    if (!setup.controller->parametersRead) {
        return;
    }
    const double rate = megaTransfers(setup.controller->dataRate());
    if (rate <= 0) {
        return;
    }
    if (!known.contains(int(rate)) || rate != int(rate)) {
        findings.warning("rate-mismatch", "DataRate", setup.controller->dataRate(),
                         QString("the controller's data rate is no speed grade of the thresholds "
                                 "(%1 MT/s)")
                             .arg(knownText.join(", ")));
    } else if (isInteger(grade) && grade.toInt() != int(rate)) {
        findings.warning("rate-mismatch", "speedGradeIndex", grade,
                         QString("the controller runs at %1 MT/s, but the speed grade is %2: the "
                                 "thresholds are those of %2")
                             .arg(rate)
                             .arg(grade));
    }
}

// The conditions under which a measurement's own description says it cannot be made, as
// "Cannot be measured for DQS/CK signal type or Transient simulation." puts them.
bool ruledOut(const QString& description, const QString& signalType, bool ddrSimulation,
              QString& sentence) {
    static const QRegularExpression cannot(R"((Cannot be [^.]* for ([^.]*))\.)");
    const QRegularExpressionMatch match = cannot.match(description);
    if (!match.hasMatch()) {
        return false;
    }
    sentence = match.captured(1);
    for (const QString& condition : match.captured(2).split(" or ")) {
        if (condition.endsWith(" signal type") &&
            condition.chopped(12).split('/').contains(signalType)) {
            return true;
        }
        if (condition == (ddrSimulation ? "DDR simulation" : "Transient simulation")) {
            return true;
        }
    }
    return false;
}

void checkMeasurable(const ProbeSetup& setup, Findings& findings) {
    const bool ddr = setup.controller->isDDRSimulation();
    for (const SignalRecord* record : qAsConst(setup.selected)) {
        for (const QString& name : record->measurements.keys()) {
            QString sentence;
            if (ruledOut(measurementDescriptions().value(name), record->signalType, ddr,
                         sentence)) {
                findings.warning("not-measurable", "SelectedMeasurementsListMap",
                                 record->key + " " + name,
                                 QString("its description says: %1; this is a %2 signal in a %3 "
                                         "simulation")
                                     .arg(sentence, record->signalType, ddr ? "DDR" : "transient"));
            }
        }
    }
}

}  // namespace

void Findings::error(const char* code, const QString& key, const QString& item,
                     const QString& message) {
    list.append({"error", code, key, item, message});
}

void Findings::warning(const char* code, const QString& key, const QString& item,
                       const QString& message) {
    list.append({"warning", code, key, item, message});
}

void Findings::note(const char* code, const QString& key, const QString& item,
                    const QString& message) {
    list.append({"note", code, key, item, message});
}

void checkStoredText(const ProbeSetup& setup, Findings& findings) {
    checkVoltages(setup, findings);
    checkNumbers(setup, findings);
    checkIndices(setup, findings);
    checkDuplicates(setup, findings);
    checkModes(setup, findings);
    checkRate(setup, findings);
    checkMeasurable(setup, findings);
    if (setup.selected.isEmpty()) {
        findings.note("nothing-selected", "SelectedSignalList", {},
                      "no signal of the design is selected: the block watches nothing of its own");
    }
}

}  // namespace lanetap
