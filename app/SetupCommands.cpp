// `lanetap export` and `lanetap apply`: a probe's setup as a document in words, and back.

#include <QFile>
#include <QJsonDocument>

#include "app/Commands.h"
#include "app/Nearest.h"
#include "app/SettingsLine.h"
#include "app/SetupDocument.h"
#include "app/ValueForms.h"
#include "standin/DesignFile.h"

namespace lanetap {

namespace {

const char documentFormat[] = "lanetap-setup-1";
const QStringList sections{"format",  "testEnvironment", "supplies",   "thresholds",
                           "signals", "measurements",    "references", "compliance"};

QJsonObject readDocument(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Failure(ExitUsage, QString("%1: cannot read: %2").arg(path, file.errorString()));
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (error.error != QJsonParseError::NoError) {
        throw Failure(ExitUsage, QString("%1: not a JSON document: %2 at byte %3")
                                     .arg(path, error.errorString())
                                     .arg(error.offset));
    }
    if (!document.isObject()) {
        throw Failure(ExitUsage, QString("%1: the setup is a JSON object").arg(path));
    }
    return document.object();
}

// Every text applying writes must pass the doors a text passes to the design file: what the
// loader takes, and what the block's settings line can carry.
void checkStorable(const QMap<QString, QString>& changes, const standin::Instance& probe) {
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        const std::string problem = standin::valueProblem(it.key().toStdString(), it.value());
        if (!problem.empty()) {
            refuse(it.key(), QString::fromStdString(problem));
        }
        const QString lineProblem = settingsLineProblem(probe, it.key(), it.value());
        if (!lineProblem.isEmpty()) {
            refuse(it.key(), lineProblem);
        }
    }
}

}  // namespace

void refuse(const QString& path, const QString& message) {
    throw Failure(ExitUsage, path.isEmpty() ? message : path + ": " + message);
}

QString wordText(const QJsonValue& value) {
    if (value.isString()) {
        return value.toString();
    }
    if (value.isDouble()) {
        return QString::number(value.toDouble(), 'g', 15);
    }
    return QString();
}

void refuseUnknownFields(const QString& path, const QJsonObject& object, const QStringList& known) {
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        if (!known.contains(it.key())) {
            refuse(path, QString("unknown field %1%2")
                             .arg(standin::quoted(it.key()), nearestHint(it.key(), known)));
        }
    }
}

QJsonObject exportSetup(const ProbeSetup& setup, int& leftOut) {
    QJsonObject document{{"format", documentFormat}};
    exportFields(setup, document, leftOut);
    exportChoices(setup, document, leftOut);
    return document;
}

QMap<QString, QString> applySetup(ProbeSetup& setup, const QJsonObject& document) {
    const auto* probe = static_cast<const standin::Instance*>(setup.probeInstance());
    refuseUnknownFields(QString(), document, sections);
    if (document.contains("format") && document.value("format").toString() != documentFormat) {
        refuse("format", QString("this program reads \"%1\" documents").arg(documentFormat));
    }
    QMap<QString, QString> changes;
    LaneTapUI::TestModes modes;
    applyFields(setup, document, changes, modes);
    applyChoices(setup, document, modes, changes);
    checkStorable(changes, *probe);
    return changes;
}

namespace {

int runExport(const Arguments& arguments) {
    const QString& designFile = designFileOf(arguments, "export");
    standin::Host host;
    loadDesign(host, designFile);
    standin::Instance* probe = findProbe(host, arguments.value("probe"));
    const ProbeSetup setup(host.design(), probe);
    int leftOut = 0;
    const QByteArray text =
        QJsonDocument(exportSetup(setup, leftOut)).toJson(QJsonDocument::Indented);
    if (leftOut > 0) {
        std::fprintf(stderr,
                     "note: %d stored entries that the dialog drops or cannot show are left out; "
                     "'lanetap check' names them\n",
                     leftOut);
    }
    writeOutput(arguments.value("output"), text);
    return ExitOk;
}

int runApply(const Arguments& arguments) {
    if (arguments.positional.size() != 2) {
        throw Failure(ExitUsage, "apply needs a design file and a setup file");
    }
    const QString& setupFile = arguments.positional[1];
    // Held from the read to the write, so that a writer at the same time is not lost.
    const auto lock = lockDesign(arguments.positional[0]);
    standin::Host host;
    loadDesign(host, arguments.positional[0]);
    standin::Instance* probe = findProbe(host, arguments.value("probe"));
    const QJsonObject document = readDocument(setupFile);
    QMap<QString, QString> changes;
    {
        ProbeSetup setup(host.design(), probe);
        try {
            changes = applySetup(setup, document);
        } catch (const Failure& failure) {
            throw Failure(failure.code, setupFile + ": " + failure.what());
        }
    }
    if (arguments.has("dry-run")) {
        QString text;
        for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
            const std::string* old = probe->parameters.find(it.key().toStdString());
            text += QString("%1: \"%2\" -> \"%3\"\n")
                        .arg(it.key(), old ? QString::fromStdString(*old) : QString(), it.value());
        }
        writeOut(changes.isEmpty() ? QString("no change\n") : text);
        return ExitOk;
    }
    if (changes.isEmpty()) {
        return ExitOk;
    }
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        probe->parameters.values[it.key().toStdString()] = it.value().toStdString();
    }
    saveDesign(host);
    return ExitOk;
}

}  // namespace

const Command& exportCommand() {
    static const Command command{
        "export",
        "DESIGN",
        {{"Writes the setup that the probe NAME stores as a JSON document in words, as the setup "
          "dialog shows it: test environment, supplies and thresholds, the selected signals, "
          "their measurements, the references that are not the automatic ones, and the "
          "compliance tests by name ('offered' for all a group is offered). What the dialog "
          "would drop or cannot show is left out, with a note on stderr. 'lanetap apply' reads "
          "the document back; docs/setup-parameters.md describes it."}},
        {{{"probe"}, "NAME", "the probe instance, an instance of the LaneTap cell", {}, true},
         {{"o", "output"},
          "FILE",
          "write the document to FILE (replaced in one step), not to stdout"}},
        &runExport};
    return command;
}

const Command& applyCommand() {
    static const Command command{
        "apply",
        "DESIGN SETUP",
        {{"Applies a setup document (as 'lanetap export' writes it) to the probe NAME and saves "
          "the design file. Each section or field the document has replaces what is stored; "
          "what it leaves out stays. Signals are keys or glob patterns ('DQ_Ch0_U2_DQ[0-7]', as "
          "'lanetap signals' lists them), measurements and compliance tests are names as the "
          "dialog shows them, references are keys or 'auto' for the automatic reference. The "
          "parameters become what the dialog would store for the same choices; a key whose "
          "words do not change keeps its text. A name, pattern or id that names nothing, a "
          "measurement the signal does not have, a reference of a type the signal may not take, "
          "or a field the design's controller decides otherwise is refused with one line and "
          "exit code 2, and nothing is written."}},
        {{{"probe"}, "NAME", "the probe instance, an instance of the LaneTap cell", {}, true},
         {{"dry-run"},
          QString(),
          "print each parameter that would change, as KEY: \"OLD\" -> \"NEW\", and write "
          "nothing"}},
        &runApply};
    return command;
}

}  // namespace lanetap
