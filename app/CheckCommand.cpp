// lanetap check: the probe's stored setup against what the plug-in's two roads make of it, the
// block and the dialog, and the findings in words or as JSON.

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "app/Check.h"
#include "app/Commands.h"
#include "standin/DesignFile.h"

namespace lanetap {
namespace {

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
    loadPlugin(host, arguments);
    Findings findings;
    QStringList block;
    {
        const ProbeSetup setup(host.design(), probe);
        checkStoredText(setup, findings);
        // The block road, once, as the host's netlist call takes it.
        host.takeWarnings();
        const standin::CallResult result = host.netlistProbe(probeName.toStdString());
        checkCall(result, "LaneTap_netlist_probe");
        checkBlock(setup, QString::fromStdString(result.text), host.takeWarnings(), findings);
        block = canonicalBlock(host, probeName);
    }
    // The dialog road last: its opening stores the setup back into the loaded design.
    checkDialog(host, probeName, block, findings);
    report(arguments, probeName, findings.all());
    const bool clean = std::all_of(findings.all().cbegin(), findings.all().cend(),
                                   [](const Finding& f) { return f.severity == "note"; });
    return clean ? ExitOk : ExitFindings;
}

}  // namespace lanetap
