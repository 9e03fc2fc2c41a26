#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

// Reads the text that LaneTap_netlist_probe returns back into its parts, so that tests can check
// the content of a block without depending on the order in which its hashes came out.
namespace lanetap_test {

// The settings of the block, in the order the block carries them.
const QStringList& blockSettingNames();

struct NetlistBlock {
    // The name behind "ComponentWithNodes:".
    QString probe;
    // The nets of the node list, in order; an empty net is an empty entry. The i-th net and the
    // i-th "NodeData" line belong together.
    QStringList nets;
    // The setting names in the order found, and their values as they stand.
    QStringList settingNames;
    QHash<QString, QString> settings;
    // The quoted fields of each line of a section, in order of the lines.
    QList<QStringList> nodeData;
    QList<QStringList> nodeMeasMap;
    QList<QStringList> nodeRefMap;
    QList<QStringList> complianceMeasMap;
    // Every way in which the text departs from the shape of a block; empty for a good block.
    QStringList problems;

    // The lines of the block, sorted, as blank-separated fields behind a tag: "N net key
    // polarity" for a node (the other fields of a node line are the parts of its key), and "M",
    // "R" and "C" with the fields of the map lines, "-" for an empty field. The names of a
    // referenced "M" line are sorted too: they come in the order of a hash.
    QStringList sortedLines() const;
};

// Reads "\n;Lane_Tap" and the block behind it.
NetlistBlock readBlock(const QString& netlistText);

}  // namespace lanetap_test
