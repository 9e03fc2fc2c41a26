// The two tabs of the write-leveling route: the signals to level and, for each, its reference
// signals. The selection is kept apart from the measurement route's, on the same records.

#include "dialog/LaneTapDialog.h"
#include "dialog/TreeHelpers.h"
#include "parameters/ReferenceRules.h"

namespace LaneTapUI {

void LaneTapDialog::onWlAddSignalClicked() {
    moveCurrentItem(ui.wlSelectSignalAvailableSignalTree, ui.wlSelectSignalSelectedSignalTree,
                    Placement::SignalTree, [this](QTreeWidgetItem* item) {
                        moveRecords(item, wlSelectedSignals, wlAvailableSignals);
                    });
}

void LaneTapDialog::onWlRemoveSignalClicked() {
    moveCurrentItem(ui.wlSelectSignalSelectedSignalTree, ui.wlSelectSignalAvailableSignalTree,
                    Placement::SignalTree, [this](QTreeWidgetItem* item) {
                        moveRecords(item, wlAvailableSignals, wlSelectedSignals);
                    });
}

void LaneTapDialog::refreshWlSignalTrees() {
    populateSignalTree(ui.wlSelectSignalAvailableSignalTree, wlAvailableSignals, {});
    populateSignalTree(ui.wlSelectSignalSelectedSignalTree, wlSelectedSignals, {});
}

void LaneTapDialog::refreshWlRefPage() {
    populateSignalTree(ui.wlSelectRefSignalSelectedSignalTree, wlSelectedSignals, {});
    showWlRefSignals(ui.wlSelectRefSignalSelectedSignalTree->currentItem());
}

void LaneTapDialog::onWlRefSignalChanged(QTreeWidgetItem* current) {
    if (current) {
        showWlRefSignals(current);
    }
}

void LaneTapDialog::showWlRefSignals(QTreeWidgetItem* item) {
    SignalRecordHash selected;
    SignalRecordHash available;
    QSet<QString> excluded;
    const QString key = item && isLeaf(item) ? item->text(keyColumn) : QString();
    if (const SignalRecord* record = key.isEmpty() ? nullptr : wlSelectedSignals.value(key)) {
        // The numbered type (DQ3, not DQ) is what is asked, so only the types found by what they
        // contain lose candidates here.
        excluded = excludedReferenceTypes(record->signalType + record->signalIndex);
        ensureWlDefaultRef(key);
        selected = record->wlRefSignals;
        available = wlAllSignals;
        for (const QString& chosen : selected.keys()) {
            available.remove(chosen);
        }
    }
    populateSignalTree(ui.wlSelectRefSignalAvailableRefSignalTree, available, excluded);
    populateSignalTree(ui.wlSelectRefSignalSelectedRefSignalTree, selected, excluded);
    ui.wlRefSignalSelectionGroup->setTitle(
        key.isEmpty() ? QStringLiteral("Select Signal ID from Selected Signal Tree")
                      : "Select Reference Signal for Selected Signal: " + key);
}

void LaneTapDialog::ensureWlDefaultRef(const QString& key) {
    // Asked for an empty list, not a first showing: a default removed by the user comes back the
    // next time the signal is shown.
    SignalRecord* record = wlSelectedSignals.value(key);
    if (record && record->wlRefSignals.isEmpty() && record->defaultReference) {
        record->wlRefSignals.insert(record->defaultReference->key, record->defaultReference);
    }
}

void LaneTapDialog::onWlAddRefSignalClicked() {
    moveCurrentItem(
        ui.wlSelectRefSignalAvailableRefSignalTree, ui.wlSelectRefSignalSelectedRefSignalTree,
        Placement::SignalTree, [this](QTreeWidgetItem* reference) {
            recordWlRefAdded(reference, ui.wlSelectRefSignalSelectedSignalTree->currentItem());
        });
}

void LaneTapDialog::onWlRemoveRefSignalClicked() {
    moveCurrentItem(
        ui.wlSelectRefSignalSelectedRefSignalTree, ui.wlSelectRefSignalAvailableRefSignalTree,
        Placement::SignalTree, [this](QTreeWidgetItem* reference) {
            recordWlRefRemoved(reference, ui.wlSelectRefSignalSelectedSignalTree->currentItem());
        });
}

void LaneTapDialog::recordWlRefAdded(QTreeWidgetItem* reference, QTreeWidgetItem* signal) {
    SignalRecord* record = signal ? wlAllSignals.value(signal->text(keyColumn)) : nullptr;
    for (SignalRecord* leaf : record ? recordsUnder(reference, wlAllSignals) : SignalRecordHash()) {
        record->addWlRefSignal(leaf);
    }
}

void LaneTapDialog::recordWlRefRemoved(QTreeWidgetItem* reference, QTreeWidgetItem* signal) {
    SignalRecord* record = signal ? wlAllSignals.value(signal->text(keyColumn)) : nullptr;
    for (SignalRecord* leaf : record ? recordsUnder(reference, allSignals) : SignalRecordHash()) {
        record->removeWlRefSignal(leaf);
    }
}

}  // namespace LaneTapUI
