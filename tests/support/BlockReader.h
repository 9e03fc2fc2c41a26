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
    // The nets of the node list, in order; an empty net is an empty entry.
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

    // The i-th net followed by the fields of the i-th "NodeData" line: the two belong together.
    QList<QStringList> nodes() const;
};

// Reads "\n;Lane_Tap" and the block behind it.
NetlistBlock readBlock(const QString& netlistText);

}  // namespace lanetap_test
