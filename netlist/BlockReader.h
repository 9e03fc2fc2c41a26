#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

// The block read back as the post-processing module reads it: the load line, one statement
// continued over lines, the component line of plain names, the settings line of NAME=VALUE pairs
// in their order, and the list sections. What it cannot read so is a problem, at the setting, net
// or line it stands at. The one reader of blocks in the tree: the program's check, the tests and
// the netlist fuzz target read with it.
namespace LaneTapUI {

struct BlockProblem {
    enum class Place { Block, Probe, Net, Setting, Line };
    Place place;
    // The setting's name, the net or probe name, or the text of the line.
    QString at;
    QString what;

    QString text() const;
};

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
    // Every way in which the text departs from the grammar of a block; none for a good block.
    QList<BlockProblem> problems;

    QStringList problemTexts() const;
    // The lines of the block, sorted, as blank-separated fields behind a tag: "N net key
    // polarity" for a node (the other fields of a node line are the parts of its key), and "M",
    // "R" and "C" with the fields of the map lines, "-" for an empty field. The names of a
    // referenced "M" line are sorted too: they come in the order of a hash.
    QStringList sortedLines() const;
};

// Reads "\n;Lane_Tap" and the block behind it, as the netlist call returns them.
NetlistBlock readBlock(const QString& netlistText);

}  // namespace LaneTapUI
