#include <QMap>

#include "app/Commands.h"
#include "app/SettingsLine.h"
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

int runSet(const Arguments& arguments) {
    // Held from the read to the write, so that two writers at once both land.
    const auto lock = lockDesign(arguments.positional.value(0));
    ProbeInDesign opened;
    openProbe(opened, arguments, "set");
    const QStringList assignments = arguments.positional.mid(1);
    if (assignments.isEmpty()) {
        throw Failure(ExitUsage, "set needs at least one KEY=VALUE");
    }
    standin::ParameterValues changed = opened.probe->parameters.values;
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
        changed[key.toStdString()] = value.toStdString();
    }
    opened.probe->parameters.values = changed;
    try {
        opened.host.saveDesign();
    } catch (const standin::DesignError& error) {
        throw Failure(ExitUsage, error.what());
    }
    return ExitOk;
}

}  // namespace lanetap
