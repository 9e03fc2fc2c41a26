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

int runCheck(const Arguments& arguments) {
    const QString& designFile = designFileOf(arguments, "check");
    const QString probeName = arguments.value("probe");
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

}  // namespace

const Command& checkCommand() {
    static const Command command{
        "check",
        "DESIGN",
        {{"Reads the setup that the probe NAME stores and learns what the plug-in does with it by "
          "running its roads: the block is written once and read back by its grammar, and the "
          "dialog opens unseen and stores the setup back. Reports every finding as 'SEVERITY CODE "
          "KEY ITEM: MESSAGE' ('-' for a key or item that does not apply), then a summary line. "
          "It never changes the file. Exit code 0 when nothing is above a note, 1 when there is "
          "a warning or an error, 2 for bad usage or a design that cannot be read."},
         {"Errors: the dialog or the block cannot work as stored.",
          {{"bad-voltage", "a voltage that is blank or no number with a blank and a unit"},
           {"dialog-fails", "the dialog cannot open for another reason"}}},
         {"Warnings: the plug-in will drop or change what is stored, or the block carries a "
          "warning.",
          {{"bad-number", "a number, code or id the plug-in reads otherwise than it reads"},
           {"bad-index", "an index that names no item of its box"},
           {"duplicate", "a signal, code, reference or id stored twice in one entry"},
           {"modes-differ", "the dialog offers tests for other modes than the block judges by"},
           {"rate-mismatch", "the controller's data rate and the speed grade disagree"},
           {"not-measurable", "a measurement its own description rules out for the signal"},
           {"unsafe-value", "a value or name the block's reader cannot read back"},
           {"netlist-warning", "each warning that 'lanetap netlist' prints for the probe"},
           {"not-written", "a stored entry the block does not carry, with the reason"},
           {"missing-reference", "a measurement that needs a reference and has none"},
           {"unknown-id", "a measurement code that no measurement has"},
           {"dialog-changes",
            "a key the dialog stores with another meaning (a note when the block stays the "
            "same)"}}},
         {"Notes: worth knowing.",
          {{"compliance-adds", "how many signals compliance adds beyond the selection"},
           {"compliance-inactive",
            "compliance stored on in a DDR simulation: the block carries "
            "none"},
           {"controller-override", "a stored mode that the controller decides otherwise"},
           {"nothing-selected", "no signal is selected"}}},
         {"docs/check.md explains every code."}},
        {{{"probe"}, "NAME", "the probe instance, an instance of the LaneTap cell", {}, true},
         {{"json"},
          QString(),
          "print {\"design\", \"probe\", \"findings\": [{\"severity\", \"code\", \"key\", "
          "\"item\", \"message\"}]}, with null for a key or item that does not apply"},
         {{"plugin"}, "PATH", "the plug-in library, as for netlist"}},
        &runCheck,
        Widgets::Unseen};
    return command;
}

}  // namespace lanetap
