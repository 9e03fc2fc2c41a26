// The "Select Reference Signal" tab: for each pair of a selected signal and one of its
// measurements, the signals it is measured against. Also the automatic reference every signal
// gets when the dialog opens, and the red marking of pairs that still lack a reference.

#include <QSignalBlocker>

#include "catalogue/MeasurementTypes.h"
#include "dialog/DefaultReferences.h"
#include "dialog/LaneTapDialog.h"
#include "dialog/TreeHelpers.h"
#include "parameters/ReferenceRules.h"

namespace LaneTapUI {

namespace {

// Some measurement of the record needs a reference and has none.
bool lacksReference(const SignalRecord& record) {
    for (auto chosen = record.measurements.cbegin(); chosen != record.measurements.cend();
         ++chosen) {
        if (needsReference(chosen.key())) {
            const auto references = record.refSignals.constFind(chosen.key());
            if (references == record.refSignals.cend() || references->isEmpty()) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace

void LaneTapDialog::collectClockSignals() {
    LaneTapUI::collectClockSignals(allSignals, clockByNode);
}

void LaneTapDialog::assignDefaultReferences() {
    LaneTapUI::assignDefaultReferences(session->design(), allSignals, clockByNode);
}

void LaneTapDialog::refreshRefSignalPage() {
    QTreeWidget* signalTree = ui.selectRefSignalSelectedSignalTree;
    ui.selectRefSignalSelectedMeasurementTree->clear();
    {
        // The pairs are shown for the first signal below: the type item that the build makes
        // current on the way would only empty the reference trees, unseen, to be built again.
        const QSignalBlocker quiet(signalTree);
        populateSignalTree(signalTree, selectedSignals, {});
    }
    colourUnreferenced(signalTree->invisibleRootItem());
    QTreeWidgetItem* first = signalTree->topLevelItem(0);
    while (first && first->childCount() > 0) {
        first = first->child(0);
    }
    if (first) {
        signalTree->setCurrentItem(first);
    }
}

void LaneTapDialog::onRefSignalChanged(QTreeWidgetItem* current) {
    if (!current) {
        return;
    }
    QStringList names;
    if (isLeaf(current)) {
        if (const SignalRecord* record = selectedSignals.value(current->text(keyColumn))) {
            names = record->measurements.keys();
        }
    }
    QTreeWidget* measurementTree = ui.selectRefSignalSelectedMeasurementTree;
    // A list that isn't empty makes its first measurement current, which shows the pair.
    fillFlatTree(measurementTree, names);
    colourPairs(current, measurementTree);
    if (names.isEmpty()) {
        showRefPair(current, measurementTree->currentItem());
    }
}

void LaneTapDialog::onRefMeasurementChanged(QTreeWidgetItem* current) {
    if (current) {
        showRefPair(ui.selectRefSignalSelectedSignalTree->currentItem(), current);
    }
}

void LaneTapDialog::showRefPair(QTreeWidgetItem* signal, QTreeWidgetItem* measurement) {
    SignalRecordHash selected;
    SignalRecordHash available;
    QSet<QString> excluded;
    const SignalRecord* record =
        signal && measurement ? selectedSignals.value(signal->text(keyColumn)) : nullptr;
    if (record) {
        const QString name = measurement->text(0);
        const bool wanted = needsReference(name);
        ui.RefSignalSelectionGroup->setEnabled(wanted);
        if (wanted) {
            excluded = excludedReferenceTypes(record->signalType);
            selected = record->referencesOf(name);
            available = allSignals;
            for (const QString& key : selected.keys()) {
                available.remove(key);
            }
        }
    }
    populateSignalTree(ui.selectRefSignalAvailableRefSignalTree, available, excluded);
    populateSignalTree(ui.selectRefSignalSelectedRefSignalTree, selected, excluded);
    updateRefGroupTitle(signal, measurement);
    colourPair(signal, measurement);
}

void LaneTapDialog::updateRefGroupTitle(QTreeWidgetItem* signal, QTreeWidgetItem* measurement) {
    QString title;
    if (!signal || (!measurement && !isLeaf(signal))) {
        title = QStringLiteral("Select Signal ID from Selected Signal Tree");
    } else if (!measurement) {
        title = "Select a Measurement from Selected Measurement Tree for Selected Signal ID: " +
                signal->text(keyColumn);
    } else if (!needsReference(measurement->text(0))) {
        // The two pair titles join key and measurement differently; both stand as they are.
        title = "No Reference Signal required for Selected Signal ID-Measurement Pair: " +
                signal->text(keyColumn) + "-" + measurement->text(0);
    } else {
        title = "Select Reference Signal for Selected Signal ID-Measurement Pair: " +
                signal->text(keyColumn) + " - " + measurement->text(0);
    }
    ui.RefSignalSelectionGroup->setTitle(title);
}

void LaneTapDialog::colourPair(QTreeWidgetItem* signal, QTreeWidgetItem* measurement) {
    const SignalRecord* record =
        signal && measurement ? selectedSignals.value(signal->text(keyColumn)) : nullptr;
    if (!record) {
        return;
    }
    const QString name = measurement->text(0);
    if (needsReference(name)) {
        if (!record->referencesOf(name).isEmpty()) {
            paint(measurement, 0, Qt::black);
        } else {
            paint(signal, 0, Qt::red);
            paint(signal, 1, Qt::red);
            paint(measurement, 0, Qt::red);
        }
    }
    if (record->allMeasurementsReferenced()) {
        paint(signal, 0, Qt::black);
        paint(signal, 1, Qt::darkGreen);
    }
}

void LaneTapDialog::colourPairs(QTreeWidgetItem* signal, QTreeWidget* measurementTree) {
    for (int i = 0; i < measurementTree->topLevelItemCount(); ++i) {
        colourPair(signal, measurementTree->topLevelItem(i));
    }
}

void LaneTapDialog::paint(QTreeWidgetItem* item, int column, Qt::GlobalColor colour) {
    const auto built = builtTrees.find(item->treeWidget());
    if (built != builtTrees.end()) {
        built->painted.insert(item);
    }
    item->setForeground(column, colour);
}

void LaneTapDialog::colourUnreferenced(QTreeWidgetItem* item) {
    walkTree(
        item, [](QTreeWidgetItem*) {},
        [this](QTreeWidgetItem* leaf) {
            const SignalRecord* record = selectedSignals.value(leaf->text(keyColumn));
            if (record && lacksReference(*record)) {
                paint(leaf, 0, Qt::red);
                paint(leaf, 1, Qt::red);
            }
        });
}

// A reference moved between the trees stays in every signal hash: only the pair's references
// change.
void LaneTapDialog::onAddRefSignalClicked() {
    QTreeWidgetItem* signal = ui.selectRefSignalSelectedSignalTree->currentItem();
    QTreeWidgetItem* measurement = ui.selectRefSignalSelectedMeasurementTree->currentItem();
    if (moveCurrentItem(ui.selectRefSignalAvailableRefSignalTree,
                        ui.selectRefSignalSelectedRefSignalTree, Placement::SignalTree,
                        [&](QTreeWidgetItem* reference) {
                            recordRefSignalAdded(reference, signal, measurement);
                        })) {
        colourPair(signal, measurement);
    }
}

void LaneTapDialog::onRemoveRefSignalClicked() {
    QTreeWidgetItem* signal = ui.selectRefSignalSelectedSignalTree->currentItem();
    QTreeWidgetItem* measurement = ui.selectRefSignalSelectedMeasurementTree->currentItem();
    if (moveCurrentItem(ui.selectRefSignalSelectedRefSignalTree,
                        ui.selectRefSignalAvailableRefSignalTree, Placement::SignalTree,
                        [&](QTreeWidgetItem* reference) {
                            recordRefSignalRemoved(reference, signal, measurement);
                        })) {
        colourPair(signal, measurement);
    }
}

void LaneTapDialog::recordRefSignalAdded(QTreeWidgetItem* reference, QTreeWidgetItem* signal,
                                         QTreeWidgetItem* measurement) {
    SignalRecord* record =
        signal && measurement ? allSignals.value(signal->text(keyColumn)) : nullptr;
    for (SignalRecord* leaf : record ? recordsUnder(reference, allSignals) : SignalRecordHash()) {
        record->addReference(measurement->text(0), leaf);
    }
}

void LaneTapDialog::recordRefSignalRemoved(QTreeWidgetItem* reference, QTreeWidgetItem* signal,
                                           QTreeWidgetItem* measurement) {
    SignalRecord* record =
        signal && measurement ? allSignals.value(signal->text(keyColumn)) : nullptr;
    for (SignalRecord* leaf : record ? recordsUnder(reference, allSignals) : SignalRecordHash()) {
        record->removeReference(measurement->text(0), leaf);
    }
}

SignalRecordHash LaneTapDialog::recordsUnder(QTreeWidgetItem* item, SignalRecordHash records) {
    SignalRecordHash leaves;
    moveRecords(item, leaves, records);
    return leaves;
}

}  // namespace LaneTapUI
