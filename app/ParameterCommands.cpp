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
    loadDesign(opened.host, arguments.positional.front());
    opened.probe = findInstance(opened.host, arguments.value("probe"));
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
    saveDesign(opened.host);
    return ExitOk;
}

}  // namespace

const Command& getCommand() {
    static const Command command{
        "get",
        "DESIGN [KEY...]",
        {{"Prints parameters of the instance NAME as KEY=VALUE lines: the given keys, or all of "
          "them. A probe shows the values of its item definition for the keys its design file "
          "lacks."}},
        {{{"probe"}, "NAME", "the instance", {}, true}},
        &runGet};
    return command;
}

const Command& setCommand() {
    static const Command command{
        "set",
        "DESIGN KEY=VALUE...",
        {{"Sets parameters of the instance NAME and saves the design file. The file is replaced "
          "in one step, so it is either fully written or left as it was, and only the values set "
          "change in it. The design's lock is held from the read to the write. A value that the "
          "block's settings line cannot carry (white space outside double quotes, ; = \" or \\ "
          "in a plain value, a voltage that is not NUMBER or NUMBER UNIT) is refused. A probe "
          "takes only the keys of its setup, each in its stored form (an int is an integer, an "
          "index names an item of its box, a voltage is a number with a blank and a unit where "
          "it has one, lists and maps name signals of the design, measurement codes and "
          "compliance ids); docs/setup-parameters.md lists them. Anything else is refused, and "
          "nothing is written."}},
        {{{"probe"}, "NAME", "the instance", {}, true},
         {{"raw"}, QString(), "store a probe's values as given, without the check of their form"}},
        &runSet};
    return command;
}

}  // namespace lanetap
