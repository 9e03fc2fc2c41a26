#include <QMap>

#include "app/Commands.h"
#include "app/Nearest.h"
#include "app/SettingsLine.h"
#include "app/ValueForms.h"
#include "discovery/SignalDiscovery.h"
#include "parameters/ParamText.h"
#include "standin/DesignFile.h"

namespace lanetap {
namespace {

struct ProbeInDesign {
    standin::Host host;
    standin::Instance* probe = nullptr;
};

void openProbe(ProbeInDesign& opened, const Arguments& arguments, const char* command) {
    if (arguments.positional.isEmpty()) {
        throw Failure(ExitUsage, QString("%1 needs a design file").arg(command));
    }
    const QString probeName = arguments.required("probe");
    loadDesign(opened.host, arguments.positional.front());
    opened.probe = findProbe(opened.host, probeName);
}

// The parameters an instance shows: its own values over what its item definition supplies.
QMap<QString, QString> effectiveParameters(const standin::Instance& instance) {
    QMap<QString, QString> parameters;
    if (instance.parameters.defaults) {
        for (const auto& [key, value] : *instance.parameters.defaults) {
            parameters.insert(QString::fromStdString(key), QString::fromStdString(value));
        }
    }
    for (const auto& [key, value] : instance.parameters.values) {
        parameters.insert(QString::fromStdString(key), QString::fromStdString(value));
    }
    return parameters;
}

}  // namespace

int runGet(const Arguments& arguments) {
    ProbeInDesign opened;
    openProbe(opened, arguments, "get");
    const QMap<QString, QString> parameters = effectiveParameters(*opened.probe);
    const QStringList asked = arguments.positional.mid(1);
    const QStringList keys = asked.isEmpty() ? QStringList(parameters.keys()) : asked;
    QString out;
    for (const QString& key : keys) {
        if (!parameters.contains(key)) {
            throw Failure(ExitUsage, QString("%1: instance %2 has no parameter %3")
                                         .arg(arguments.positional.front(),
                                              QString::fromStdString(opened.probe->name),
                                              standin::quoted(key)));
        }
        out += key + "=" + parameters.value(key) + "\n";
    }
    writeOut(out);
    return ExitOk;
}

namespace {

// What the checks of a probe's values need: the design's signals and the speed grades the probe
// will hold once `changed` is stored.
ValueContext probeContext(db::Design* design, const standin::ParameterStore& changed) {
    ValueContext context;
    DiscoveredSignals discovered;
    const auto controller = LaneTapUI::findControllerParameters(design);
    LaneTapUI::discoverSignals(design, *controller, LaneTapUI::DiscoveryKind::Dialog,
                               discovered.store, discovered.records);
    for (const LaneTapUI::SignalRecord* record : qAsConst(discovered.records)) {
        context.signalTypes.insert(record->key, record->signalType);
    }
    const std::string* grades = changed.find("speedGradeList");
    const LaneTapUI::ListEntries list = LaneTapUI::parseListEntries(grades ? *grades : "");
    for (const QStringView grade : list.items) {
        context.speedGrades << grade.toString();
    }
    return context;
}

// A probe stores only the keys of its item definition, each in its form.
void checkProbeValues(db::Design* design, const standin::Instance& probe,
                      const standin::ParameterStore& changed, const QStringList& keys) {
    QStringList known;
    for (const LaneTapUI::StoredKey& stored : LaneTapUI::storedKeys()) {
        known << stored.key;
    }
    const ValueContext context = probeContext(design, changed);
    for (const QString& key : keys) {
        const LaneTapUI::StoredKey* stored = LaneTapUI::findStoredKey(key);
        if (!stored) {
            throw Failure(ExitUsage, QString("probe %1 has no parameter %2%3")
                                         .arg(QString::fromStdString(probe.name),
                                              standin::quoted(key), nearestHint(key, known)));
        }
        const QString problem =
            formProblem(*stored, QString::fromStdString(*changed.find(key.toStdString())), context);
        if (!problem.isEmpty()) {
            throw Failure(ExitUsage, QString("%1: %2").arg(key, problem));
        }
    }
}

}  // namespace

int runSet(const Arguments& arguments) {
    // Held from the read to the write, so that two writers at once both land.
    const auto lock = lockDesign(arguments.positional.value(0));
    ProbeInDesign opened;
    openProbe(opened, arguments, "set");
    const QStringList assignments = arguments.positional.mid(1);
    if (assignments.isEmpty()) {
        throw Failure(ExitUsage, "set needs at least one KEY=VALUE");
    }
    standin::ParameterStore changed = opened.probe->parameters;
    QStringList keys;
    for (const QString& assignment : assignments) {
        const int equals = assignment.indexOf('=');
        const QString key = assignment.left(equals);
        const QString value = assignment.mid(equals + 1);
        if (equals <= 0 || !standin::nameProblem(key.toStdString()).empty()) {
            throw Failure(
                ExitUsage,
                QString("%1 is not KEY=VALUE with a plain key").arg(standin::quoted(assignment)));
        }
        // What the loader would refuse is not written.
        const std::string problem = standin::valueProblem(key.toStdString(), value);
        if (!problem.empty()) {
            throw Failure(ExitUsage,
                          QString("the value of %1 %2").arg(key, QString::fromStdString(problem)));
        }
        // Nor what the block, which carries it unescaped, cannot.
        const QString lineProblem = settingsLineProblem(*opened.probe, key, value);
        if (!lineProblem.isEmpty()) {
            throw Failure(ExitUsage, lineProblem);
        }
        changed.values[key.toStdString()] = value.toStdString();
        keys << key;
    }
    if (opened.probe->cell == standin::probeCellName && !arguments.has("raw")) {
        checkProbeValues(opened.host.design(), *opened.probe, changed, keys);
    }
    opened.probe->parameters.values = changed.values;
    try {
        opened.host.saveDesign();
    } catch (const standin::DesignError& error) {
        throw Failure(ExitUsage, error.what());
    }
    return ExitOk;
}

}  // namespace lanetap
