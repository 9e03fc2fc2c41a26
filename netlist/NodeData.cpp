#include <QVarLengthArray>

#include "netlist/NetlistText.h"
#include "netlist/NetlistWriter.h"

namespace LaneTapUI {
namespace {

// One net that the probe watches, with the polarity its data line carries. The net is the
// record's own; both sections read it while the record lives.
struct WatchedNode {
    QStringView net;
    QStringView polarity;
};

const QString singleEnded = QStringLiteral("s");
const QString positive = QStringLiteral("p");
const QString negativeHalf = QStringLiteral("n");
using WatchedNodes = QVarLengthArray<WatchedNode, 2>;

// The nets of one record, in the order they are written. The node list and the node data both
// come from here, so that the i-th net and the i-th data line are the same node. Only the node
// list reports absent nodes; the data lines would otherwise repeat every warning.
WatchedNodes watchedNodes(const SignalRecord& record, bool reportAbsent) {
    WatchedNodes nodes;
    // A signal that two instances reach is written through whichever the hash gives first.
    const InstanceNodes& entry = record.instances.first();
    const bool differential = record.polarity != QLatin1String("s");

    // The receiver output of a pair is one single-ended node, whichever slot holds its net. A
    // pair without any net still takes its place, empty, and is not reported.
    if (differential && record.nodeLabel.endsWith(QLatin1String("Rx Output"))) {
        const QString& otherSlot = entry.single ? entry.pNet : entry.nNet;
        nodes.append({entry.pNet.isEmpty() ? otherSlot : entry.pNet, singleEnded});
        return nodes;
    }

    const auto reportMissing = [&](const QString& which) {
        if (reportAbsent) {
            // "differential" stands also for a single-ended signal.
            NetlistText::reportWarning(QLatin1Char('\'') + which +
                                       QStringLiteral("' node of differential signal '") +
                                       record.key + QStringLiteral("', connected for instances '") +
                                       record.instanceNames() + QStringLiteral("', is absent.\n"));
        }
    };

    if (!entry.pNet.isEmpty()) {
        nodes.append({entry.pNet, differential ? positive : singleEnded});
    } else {
        reportMissing(QStringLiteral("p"));
    }
    if (differential) {
        // Half of a pair with no negative node: the positive node is still written.
        const QString& negative = entry.single ? entry.pNet : entry.nNet;
        if (!negative.isEmpty()) {
            nodes.append({negative, negativeHalf});
        } else {
            reportMissing(QStringLiteral("n"));
        }
    }
    return nodes;
}

}  // namespace

void NetlistWriter::writeNodeList(QByteArray& text) const {
    for (const SignalRecord* record : signals) {
        for (const WatchedNode& node : watchedNodes(*record, true)) {
            NetlistText::appendText(text, node.net);
            text += ' ';
        }
    }
}

void NetlistWriter::writeNodeData(QByteArray& text) const {
    int n = 1;
    for (const SignalRecord* record : signals) {
        for (const WatchedNode& node : watchedNodes(*record, false)) {
            NetlistText::appendListLine(
                text, "NodeData", n++,
                {record->key, record->signalIndex, record->signalType, record->refDes,
                 record->channel, record->nodeLabelDotted, node.polarity});
        }
    }
}

}  // namespace LaneTapUI
