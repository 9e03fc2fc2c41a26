// lanetap signals: every signal that the netlist writer finds in a design, with its key.

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <memory>

#include "app/Commands.h"
#include "app/SignalOrder.h"
#include "app/TextTable.h"
#include "discovery/SignalDiscovery.h"

namespace lanetap {
namespace {

using LaneTapUI::InstanceNodes;
using LaneTapUI::SignalRecord;

// Instance name to the cell it is an instance of, from the record's models.
QHash<QString, QString> cellsOf(const SignalRecord& record) {
    QHash<QString, QString> cells;
    for (auto it = record.models.cbegin(); it != record.models.cend(); ++it) {
        for (const QString& instance : it.value()) {
            cells.insert(instance, it.key());
        }
    }
    return cells;
}

QJsonObject nodeJson(const QString& port, const QString& net) {
    return {{"port", port}, {"net", net}};
}

QJsonObject recordJson(const SignalRecord& record) {
    const QHash<QString, QString> cells = cellsOf(record);
    QJsonArray instances;
    for (const QString& name : naturallySorted(record.instances.keys())) {
        const InstanceNodes& nodes = *record.instances.find(name);
        instances.append(QJsonObject{{"name", name},
                                     {"cell", cells.value(name)},
                                     {"single", nodes.single},
                                     {"positive", nodeJson(nodes.pPort, nodes.pNet)},
                                     {"negative", nodeJson(nodes.nPort, nodes.nNet)}});
    }
    QJsonObject models;
    for (auto it = record.models.cbegin(); it != record.models.cend(); ++it) {
        models.insert(it.key(), QJsonArray::fromStringList(naturallySorted(it.value())));
    }
    return {{"key", record.key},
            {"type", record.signalType},
            {"index", record.signalIndex},
            {"signalId", record.signalId},
            {"channel", record.channel},
            {"designator", record.refDes},
            {"nodeLabel", record.nodeLabel},
            {"nodeName", record.nodeName},
            {"polarity", record.polarity},
            {"pin", record.pinName},
            {"instances", instances},
            {"models", models}};
}

// "DQS_t0=n_dqs_p"; a node the record lacks shows as "-".
QString nodeText(const QString& port, const QString& net) {
    if (port.isEmpty() && net.isEmpty()) {
        return "-";
    }
    return port + "=" + (net.isEmpty() ? QString("(no net)") : net);
}

// "U2 DQS_t0=n_dqs_p DQS_c0=n_dqs_n"; a single-ended entry shows its one node.
QString instancesText(const SignalRecord& record) {
    QStringList parts;
    for (const QString& name : naturallySorted(record.instances.keys())) {
        const InstanceNodes& nodes = *record.instances.find(name);
        QString part = name + " " + nodeText(nodes.pPort, nodes.pNet);
        if (!nodes.single) {
            part += " " + nodeText(nodes.nPort, nodes.nNet);
        }
        parts << part;
    }
    return parts.join("; ");
}

QString modelsText(const SignalRecord& record) {
    QStringList parts;
    for (const QString& cell : naturallySorted(record.models.keys())) {
        parts << cell + ":" + naturallySorted(record.models.value(cell)).join(",");
    }
    return parts.join(" ");
}

QString signalsText(const QList<const SignalRecord*>& records) {
    TextTable table({"KEY", "TYPE", "INDEX", "CHANNEL", "DESIGNATOR", "NODE", "POLARITY",
                     "INSTANCES", "MODELS"});
    for (const SignalRecord* record : records) {
        table.addRow({record->key, record->signalType, record->signalIndex, record->channel,
                      record->refDes, record->nodeLabel.isEmpty() ? "pin" : record->nodeLabel,
                      record->polarity, instancesText(*record), modelsText(*record)});
    }
    return table.text();
}

int runSignals(const Arguments& arguments) {
    const QString& designFile = designFileOf(arguments, "signals");
    standin::Host host;
    loadDesign(host, designFile);
    if (arguments.values.contains("probe")) {
        findInstance(host, arguments.value("probe"));
    }
    const std::unique_ptr<LaneTapUI::ControllerParameters> controller =
        LaneTapUI::findControllerParameters(host.design());
    DiscoveredSignals discovered;
    LaneTapUI::discoverSignals(host.design(), *controller, LaneTapUI::DiscoveryKind::Netlist,
                               discovered.store, discovered.records);
    printWarnings(host);

    const QList<const SignalRecord*> records = inTreeOrder(discovered.records);
    if (arguments.has("json")) {
        QJsonArray array;
        for (const SignalRecord* record : records) {
            array.append(recordJson(*record));
        }
        writeOut(QString::fromUtf8(
            QJsonDocument(QJsonObject{{"signals", array}}).toJson(QJsonDocument::Indented)));
    } else {
        writeOut(signalsText(records));
    }
    return ExitOk;
}

}  // namespace

const Command& signalsCommand() {
    static const Command command{
        "signals",
        "DESIGN",
        {{"Lists every signal that the netlist writer finds in the design, by type, channel, node "
          "and index: the key a probe's setup names it by, its type, index, channel, designator, "
          "node (pin, Die or Rx Output), polarity (s single-ended, t a differential pair), each "
          "instance on it with its positive and, for a pair, negative port and net, and the "
          "cells of those instances. Warnings of the walk, such as a half-connected pair, go to "
          "stderr."}},
        {{{"probe"}, "NAME", "check that the design has the instance NAME"},
         {{"json"}, QString(), "print {\"signals\": [...]} with the same facts"}},
        &runSignals};
    return command;
}

}  // namespace lanetap
