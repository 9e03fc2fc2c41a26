// lanetap check: the probe's stored setup read against the design with the plug-in's own rules,
// and every way in which the dialog or the block would not take it as stored.

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <algorithm>
#include <memory>

#include "app/Commands.h"
#include "catalogue/ComplianceLookups.h"
#include "catalogue/MeasurementTypes.h"
#include "discovery/SignalDiscovery.h"
#include "netlist/BlockSettings.h"
#include "parameters/ParamText.h"
#include "parameters/VoltageAmplitude.h"
#include "standin/DesignFile.h"

namespace lanetap {
namespace {

using namespace LaneTapUI;

struct Finding {
    QString severity;
    QString code;
    // Null where they do not apply.
    QString key;
    QString item;
    QString message;
};

const QStringList signalLists{"SelectedSignalList", "WritelevelingSelectedSignalList"};
const QStringList idMaps{"SelectedMeasurementsListMap", "SelectedComplianceListMap"};
const QStringList referenceMaps{"SelectedMeasurementsRefSignalListMap",
                                "WriteLevelingSelectedRefSignalListMap"};
const QStringList complianceGroups{"CKE", "CA", "CK", "DM", "DQS", "DQ"};
// Stored numbers that are no setting of the block.
const QStringList indexKeys{"dramType",
                            "dqsSignalMode",
                            "modeOfOperation",
                            "speedGradeIndex",
                            "TabWidgetTabNumber",
                            "StackWidgetPageNumber",
                            "EnableComplianceMeasurements",
                            "EnableWriteLeveling"};

QString groupOf(const QString& key) {
    return key.section('_', 0, 0);
}

// A text that is a number and zero.
bool isZero(const QString& text) {
    bool number = false;
    const double value = text.trimmed().toDouble(&number);
    return number && value == 0;
}

// What the settings line can carry as it stands: a text in double quotes with none inside, or a
// text without blanks, quotes and backslashes.
bool isSafe(const QString& text, bool blanksAllowed) {
    const bool enclosed = text.size() >= 2 && text.startsWith('"') && text.endsWith('"');
    const QString inner = enclosed ? text.mid(1, text.size() - 2) : text;
    for (const QChar c : inner) {
        if (c == '"' || c == '\\' || (c.isSpace() && !enclosed && !blanksAllowed)) {
            return false;
        }
    }
    return true;
}

class Checker {
public:
    Checker(standin::Host& host, standin::Instance* probe)
        : parameters(probe), controller(findControllerParameters(host.design())) {
        DiscoveredSignals discovered;
        discoverSignals(host.design(), *controller, DiscoveryKind::Netlist, discovered.records);
        host.takeWarnings();  // the netlist run reports them again
        for (auto it = discovered.records.cbegin(); it != discovered.records.cend(); ++it) {
            signalKeys.insert(it.key());
        }
    }

    QList<Finding> run() {
        checkSignalKeys();
        checkReferences();
        checkMeasurementIds();
        checkCompliance();
        checkModes();
        checkNumbers();
        checkSettingsLine();
        if (readParamStringList(parameters, "SelectedSignalList").isEmpty()) {
            add("note", "nothing-selected", "SelectedSignalList", {},
                "no signal is selected: the block watches nothing");
        }
        return findings;
    }

private:
    void add(const char* severity, const char* code, const QString& key, const QString& item,
             const QString& message) {
        findings.append({severity, code, key, item, message});
    }

    void staleSignal(const QString& key, const QString& signal) {
        if (!signalKeys.contains(signal)) {
            add("warning", "stale-signal", key, signal,
                "the design has no such signal; the dialog drops it and the block leaves it out");
        }
    }

    void checkSignalKeys() {
        for (const QString& key : signalLists) {
            for (const QString& signal : readParamStringList(parameters, key.toStdString())) {
                staleSignal(key, signal);
            }
        }
        for (const QString& key : idMaps) {
            for (const QString& signal :
                 readParamIntListMap(parameters, key.toStdString()).keys()) {
                staleSignal(key, signal);
            }
        }
        for (const QString& key : referenceMaps) {
            for (const QString& signal :
                 readParamStringListMap(parameters, key.toStdString()).keys()) {
                staleSignal(key, signal);
            }
        }
    }

    void staleReference(const QString& key, const QString& signal, const QString& reference) {
        if (signalKeys.contains(signal) && !signalKeys.contains(reference)) {
            add("warning", "stale-reference", key, signal + " " + reference,
                "the design has no reference signal " + standin::quoted(reference) +
                    "; the dialog drops it");
        }
    }

    void checkReferences() {
        const ReferenceMap references =
            readParamReferenceMap(parameters, "SelectedMeasurementsRefSignalListMap");
        for (auto signal = references.cbegin(); signal != references.cend(); ++signal) {
            for (const QStringList& names : signal.value()) {
                for (const QString& name : names) {
                    staleReference(referenceMaps[0], signal.key(), name);
                }
            }
        }
        const StringListMap leveling =
            readParamStringListMap(parameters, referenceMaps[1].toStdString());
        for (auto signal = leveling.cbegin(); signal != leveling.cend(); ++signal) {
            for (const QString& name : signal.value()) {
                staleReference(referenceMaps[1], signal.key(), name);
            }
        }
        // A selected signal's measurement that needs a reference and has none.
        const IntListMap measurements = readParamIntListMap(parameters, idMaps[0].toStdString());
        for (const QString& signal : readParamStringList(parameters, "SelectedSignalList")) {
            for (const int id : measurements.value(signal)) {
                const QString name = measurementKeys().value(MeasurementType(id));
                if (signalKeys.contains(signal) && !name.isEmpty() &&
                    !referenceFreeTypesByKey().contains(name) &&
                    references.value(signal).value(id).isEmpty()) {
                    add("warning", "missing-reference", referenceMaps[0], signal + " " + name,
                        name + " needs a reference signal and has none; the block leaves it out");
                }
            }
        }
    }

    void unknownMeasurements(const QString& key) {
        const IntListMap ids = readParamIntListMap(parameters, key.toStdString());
        for (auto entry = ids.cbegin(); entry != ids.cend(); ++entry) {
            for (const int id : entry.value()) {
                if (!measurementKeys().contains(MeasurementType(id))) {
                    add("warning", "unknown-id", key, entry.key() + " " + QString::number(id),
                        "no measurement has this id; the dialog drops it");
                }
            }
        }
    }

    void checkMeasurementIds() {
        unknownMeasurements(idMaps[0]);
        unknownMeasurements("SelectedGroupMeasurementsListMap");
    }

    // The DRAM type, cycle and strobe mode in force: the controller's where it decides.
    struct Modes {
        QString dram;
        int operation;
        int strobe;
    };

    Modes modesInForce() const {
        Modes modes{readParamInt(parameters, "dramType") == 1 ? "LPDDR4" : "DDR4",
                    readParamInt(parameters, "modeOfOperation"),
                    readParamInt(parameters, "dqsSignalMode") != 0 ? 1 : 0};
        if (controller->parametersRead) {
            modes.operation = controller->isReadMode() ? 0 : 1;
            modes.strobe = controller->isNoBurst() ? 0 : 1;
            if (!controller->isNoBurst()) {
                modes.dram = controller->isDDR4() ? "DDR4" : "LPDDR4";
            }
        }
        return modes;
    }

    void checkCompliance() {
        const Modes modes = modesInForce();
        const QString inForce = QString("%1, %2 cycle, %3 strobe")
                                    .arg(modes.dram, modes.operation == 0 ? "read" : "write",
                                         modes.strobe == 0 ? "continuous" : "bursting");
        for (const QString& key :
             QStringList{"SelectedGroupComplianceListMap", "SelectedComplianceListMap"}) {
            const IntListMap ids = readParamIntListMap(parameters, key.toStdString());
            for (auto entry = ids.cbegin(); entry != ids.cend(); ++entry) {
                const QString group = groupOf(entry.key());
                const QList<qint32> offered =
                    complianceIdsByNameFor(group, modes.dram, modes.operation, modes.strobe)
                        .values();
                for (const int id : entry.value()) {
                    const QString item = entry.key() + " " + QString::number(id);
                    if (std::none_of(complianceGroups.cbegin(), complianceGroups.cend(),
                                     [id](const QString& g) { return hasCompliance(g, id); })) {
                        add("warning", "unknown-id", key, item,
                            "no compliance test has this id; the dialog drops it");
                    } else if (!offered.contains(id)) {
                        add("warning", "compliance-not-offered", key, item,
                            "the compliance page does not offer this test for " + group +
                                " under " + inForce + "; the dialog drops it");
                    }
                }
            }
        }
        if (readParamInt(parameters, "EnableComplianceMeasurements") != 0 &&
            controller->isDDRSimulation()) {
            add("note", "compliance-inactive", "EnableComplianceMeasurements", {},
                "compliance is on, but a DDR simulation has none: the block carries no tests");
        }
    }

    void overridden(const char* key, int stored, int decided, const QString& what) {
        if (stored != decided) {
            add("note", "controller-override", key, {},
                QString("the controller decides %1; the stored %2 is not used")
                    .arg(what)
                    .arg(stored));
        }
    }

    void badIndex(const char* key, int count) {
        const int stored = readParamInt(parameters, key);
        if (stored < 0 || stored >= count) {
            add("warning", "bad-index", key, {},
                QString("%1 names no item of its box (0 to %2)").arg(stored).arg(count - 1));
        }
    }

    void checkModes() {
        badIndex("dramType", 2);
        badIndex("dqsSignalMode", 2);
        badIndex("modeOfOperation", 2);
        badIndex("speedGradeIndex", readParamStringList(parameters, "speedGradeList").size());
        if (!controller->parametersRead) {
            return;
        }
        const Modes modes = modesInForce();
        overridden("dqsSignalMode", readParamInt(parameters, "dqsSignalMode"), modes.strobe,
                   modes.strobe == 0 ? "a continuous strobe (0)" : "a bursting strobe (1)");
        overridden("modeOfOperation", readParamInt(parameters, "modeOfOperation"), modes.operation,
                   modes.operation == 0 ? "the read cycle (0)" : "the write cycle (1)");
        if (!controller->isNoBurst()) {
            overridden("dramType", readParamInt(parameters, "dramType"),
                       modes.dram == "DDR4" ? 0 : 1,
                       modes.dram + (modes.dram == "DDR4" ? " (0)" : " (1)"));
        }
    }

    void badNumber(const QString& key) {
        const QString text = readParamText(parameters, key.toStdString());
        if (readParamDouble(parameters, key.toStdString()) == 0 && !isZero(text)) {
            add("warning", "bad-number", key, {},
                standin::quoted(text) + " is no number and reads as 0");
        }
    }

    void checkNumbers() {
        for (const QString& key : indexKeys) {
            badNumber(key);
        }
        for (const Setting& setting : blockSettings) {
            if (setting.form == SettingForm::Number) {
                badNumber(setting.parameter);
            } else if (setting.form == SettingForm::Voltage) {
                badVoltage(setting.parameter);
            }
        }
    }

    void badVoltage(const char* key) {
        const QString text = readParamText(parameters, key);
        if (text.trimmed().isEmpty()) {
            add("error", "bad-voltage", key, {}, "the voltage is blank; the dialog cannot open");
            return;
        }
        bool number = false;
        VoltageAmplitude(text).amplitude.toDouble(&number);
        if (!number) {
            add("error", "bad-voltage", key, {},
                standin::quoted(text) + " holds no number; the block carries it as it stands");
        }
    }

    void unsafe(const QString& key, const QString& value, bool blanksAllowed) {
        if (!isSafe(value, blanksAllowed)) {
            add("warning", "unsafe-value", key, value,
                "the settings line carries it as it stands: blanks outside double quotes, or a "
                "quote or backslash within, break the line");
        }
    }

    void checkSettingsLine() {
        for (const Setting& setting : blockSettings) {
            if (setting.parameter) {
                // A voltage's blank before its unit is the form the module reads; a quoted
                // setting has its quotes already.
                unsafe(setting.parameter, readParamText(parameters, setting.parameter),
                       setting.form == SettingForm::Voltage || setting.form == SettingForm::Quoted);
            }
        }
        const QString speedGrade = readParamStringList(parameters, "speedGradeList")
                                       .value(readParamInt(parameters, "speedGradeIndex"));
        unsafe("speedGradeList", speedGrade, false);
    }

    db::ParamIter parameters;
    std::unique_ptr<ControllerParameters> controller;
    QSet<QString> signalKeys;
    QList<Finding> findings;
};

QJsonValue orNull(const QString& text) {
    return text.isNull() ? QJsonValue() : QJsonValue(text);
}

QString orDash(const QString& text) {
    return text.isNull() ? QString("-") : text;
}

void report(const Arguments& arguments, const QString& probe, const QList<Finding>& findings) {
    if (arguments.has("json")) {
        QJsonArray array;
        for (const Finding& f : findings) {
            array.append(QJsonObject{{"severity", f.severity},
                                     {"code", f.code},
                                     {"key", orNull(f.key)},
                                     {"item", orNull(f.item)},
                                     {"message", f.message}});
        }
        writeOut(QJsonDocument(QJsonObject{{"design", arguments.positional.front()},
                                           {"probe", probe},
                                           {"findings", array}})
                     .toJson(QJsonDocument::Indented));
        return;
    }
    QString text;
    QMap<QString, int> counts;
    for (const Finding& f : findings) {
        text += QString("%1 %2 %3 %4: %5\n")
                    .arg(f.severity, f.code, orDash(f.key), orDash(f.item), f.message);
        ++counts[f.severity];
    }
    text += QString("%1 error(s), %2 warning(s), %3 note(s)\n")
                .arg(counts.value("error"))
                .arg(counts.value("warning"))
                .arg(counts.value("note"));
    writeOut(text);
}

}  // namespace

int runCheck(const Arguments& arguments) {
    const QString& designFile = designFileOf(arguments, "check");
    const QString probeName = arguments.required("probe");
    standin::Host host;
    loadDesign(host, designFile);
    standin::Instance* probe = findProbe(host, probeName);
    QList<Finding> findings = Checker(host, probe).run();
    // The warnings the block would carry, as the netlist run gives them.
    loadPlugin(host, arguments);
    const standin::CallResult result = host.netlistProbe(probeName.toStdString());
    checkCall(result, "LaneTap_netlist_probe");
    for (const std::string& warning : host.takeWarnings()) {
        findings.append(
            {"warning", "netlist-warning", {}, {}, QString::fromStdString(warning).trimmed()});
    }
    report(arguments, probeName, findings);
    const bool clean = std::all_of(findings.cbegin(), findings.cend(),
                                   [](const Finding& f) { return f.severity == "note"; });
    return clean ? ExitOk : ExitFindings;
}

}  // namespace lanetap
