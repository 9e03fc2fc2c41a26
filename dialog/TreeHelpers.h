#pragma once

#include <QHash>
#include <QList>
#include <QStack>
#include <QString>
#include <QTreeWidget>
#include <QTreeWidgetItem>
#include <QVector>

// What the selection pages share about their trees. Column 2 of every item holds its key and is
// never shown; a leaf is an item below the top level without children.
namespace LaneTapUI {

constexpr int keyColumn = 2;

// A signal tree being built apart from its widget, so that the view does not follow every item
// made; its top level joins the widget in one step. Group items are found under their parent
// (null for the top level) by their column 0 text: a channel holds hundreds of nodes on a big
// board, too many to scan for each signal.
struct TreeBuild {
    QList<QTreeWidgetItem*> topLevel;
    QHash<const QTreeWidgetItem*, QHash<QString, QTreeWidgetItem*>> groups;
};

// What a build of a signal tree reads of one record. Builds of the same sources in the same order
// make the same tree: a record's key, its place (type, channel, node) and its instances.
struct LeafSource {
    QString signalType;
    QString channel;
    QString displayName;
    QString groupKey;
    QString signalIndex;
    QString key;
    QString instanceNames;

    bool operator==(const LeafSource& other) const {
        return key == other.key && instanceNames == other.instanceNames &&
               displayName == other.displayName && groupKey == other.groupKey &&
               signalType == other.signalType && channel == other.channel &&
               signalIndex == other.signalIndex;
    }
};
using TreeSources = QVector<LeafSource>;

inline bool isLeaf(const QTreeWidgetItem* item) {
    return item->childCount() == 0 && item->parent();
}

// Visits `item` and everything below it, last pushed first: `atGroup` with every item that is not
// a leaf, `atLeaf` with every leaf.
template <class AtGroup, class AtLeaf>
void walkTree(QTreeWidgetItem* item, AtGroup atGroup, AtLeaf atLeaf) {
    QStack<QTreeWidgetItem*> pending;
    pending.push(item);
    while (!pending.isEmpty()) {
        QTreeWidgetItem* current = pending.pop();
        if (isLeaf(current)) {
            atLeaf(current);
            continue;
        }
        atGroup(current);
        for (int i = 0; i < current->childCount(); ++i) {
            pending.push(current->child(i));
        }
    }
}

}  // namespace LaneTapUI
