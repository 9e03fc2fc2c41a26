#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <ostream>

#include "support/DialogFixture.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

// Designs with DDR parts, and readers of the selection trees and of stored selections, for the
// tests of the selection pages.
namespace lanetap_test {

// Controller U1 (transient simulation, read cycle) and x8 memory U2 on channels 0 and 1, each with
// DQ2, DQ10, the strobe pairs DQS0 and DQS1 and the clock pair CK0; the memory also has DQ17, whose
// strobe DQS2 does not exist. `memoryPins` replaces the memory's pins, `withMemory` leaves it out.
// The probe X1 gets `probeParameters` ({"key":"value",...} without braces).
QByteArray busDesign(const QString& probeParameters = {}, const QStringList& memoryPins = {},
                     bool withMemory = true);

// The tree, or the subtree at `path`, as one text: each item's column 0, then "[column 1]" when
// that is not its parent's column 0, "=column 2" when that is not the key its path gives (the type
// and channel as they are, "type_channel_node" and "type_channel_node_signal" below; not in a flat
// tree, whose lists carry no keys), and "!" with
// the colours of columns 0 and 1 (r red, k black, g dark green, - none) when they are not none and
// dark green (none without a column 1); children follow in parentheses, in the tree's order.
QString dump(QTreeWidget* tree, const QStringList& path = {});
// The column 0 path of the current item, "/"-joined; empty without one.
QString currentPath(QTreeWidget* tree);
// The records of a stored list or map in one order: records sorted, the words behind each record's
// first (and, with `fixed` 2, second) word sorted.
QString canonical(const QString& stored, int fixed = 1);

// The dialog opened on X1, driven through its widgets.
struct Pages : OpenDialog {
    using OpenDialog::OpenDialog;
    QTreeWidget* tree(const QString& name) const { return find<QTreeWidget>(name); }
    void tab(int index) const { find<QTabWidget>("measurementTabs")->setCurrentIndex(index); }
    // Makes the item at `path` of the tree current, none for an empty path, then presses `button`
    // unless it is empty.
    void act(const QString& treeName, const QStringList& path, const QString& button = {});
    void press(const QString& button) const { find<QPushButton>(button)->click(); }
    QString title(const char* group) const { return find<QGroupBox>(group)->title(); }
    QString text(const char* label) const { return find<QLabel>(label)->text(); }
};

}  // namespace lanetap_test
