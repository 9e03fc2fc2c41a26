#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <ostream>

class QTreeWidget;
class QTreeWidgetItem;

// Texts in the messages of failed expectations.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

// Designs with DDR signals on two channels, and readers of the selection trees and of the stored
// selection text, for the tests of the selection pages.
namespace lanetap_test {

// Controller U1 (transient simulation, read cycle) and x8 memory U2, each with DQ2, DQ10, the
// strobe pairs DQS0 and DQS1 and the clock pair CK0 on channels 0 and 1; the memory also has DQ17,
// whose strobe DQS2 does not exist. Every pin has a net of its own. The probe X1 gets
// `probeParameters` ({"key":"value",...} without braces).
QByteArray busDesign(const QString& probeParameters = QString());
// The keys of every signal of busDesign.
QStringList busSignalKeys();

// The item reached from the top level by the column 0 texts of `path`; null if there is none.
QTreeWidgetItem* itemAt(QTreeWidget* tree, const QStringList& path);
// Column 0 of the children of the item at `path` (of the top-level items for an empty path), in
// the tree's order.
QStringList childTexts(QTreeWidget* tree, const QStringList& path = {});
// Column 2 of every leaf of the tree.
QSet<QString> leafKeys(QTreeWidget* tree);
// Makes the item at `path` current; false if there is no such item.
bool choose(QTreeWidget* tree, const QStringList& path);
// A left click on the item, as the user makes it; the tree must be showing.
void clickItem(QTreeWidget* tree, QTreeWidgetItem* item);

// A stored string list as a set of its items.
QSet<QString> storedList(const QString& text);
// A stored map of "key id id ," records, ids as sets.
QHash<QString, QSet<int>> storedIdMap(const QString& text);
// A stored map of "key id name name ," records.
QHash<QString, QHash<int, QSet<QString>>> storedReferenceMap(const QString& text);

}  // namespace lanetap_test
