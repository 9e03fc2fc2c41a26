// The "Select Measurements" tab: generic measurements chosen for one signal or for a whole group
// of signals. A group's choice is kept under the group item's key and passed down at once to
// every group and signal below it.

#include "catalogue/MeasurementTypes.h"
#include "dialog/LaneTapDialog.h"
#include "dialog/TreeHelpers.h"

namespace LaneTapUI {

namespace {

// Visits `item` and everything below it: `atGroup` with the key of every group item, `atLeaf` with
// the key of every signal.
template <class AtGroup, class AtLeaf>
void walkSignalItems(QTreeWidgetItem* item, AtGroup atGroup, AtLeaf atLeaf) {
    walkTree(
        item, [&](QTreeWidgetItem* group) { atGroup(group->text(keyColumn)); },
        [&](QTreeWidgetItem* leaf) { atLeaf(leaf->text(keyColumn)); });
}

}  // namespace

void LaneTapDialog::refreshMeasurementPage() {
    populateSignalTree(ui.selectMeasurementSelectedSignalTree, selectedSignals, {});
    onMeasurementSignalChanged(ui.selectMeasurementSelectedSignalTree->currentItem());
}

void LaneTapDialog::onMeasurementSignalChanged(QTreeWidgetItem* current) {
    QStringList selected;
    QStringList available;
    if (current) {
        const QString key = current->text(keyColumn);
        if (isLeaf(current)) {
            if (const SignalRecord* record = selectedSignals.value(key)) {
                selected = record->measurements.keys();
            }
        } else {
            selected = groupMeasurements.value(key).keys();
        }
        QHash<QString, MeasurementType> offered = measurementTypesByDisplayName();
        for (const QString& name : selected) {
            offered.remove(name);
        }
        available = offered.keys();
    }
    fillFlatTree(ui.selectMeasurementAvailableMeasurementTree, available);
    fillFlatTree(ui.selectMeasurementSelectedMeasurementTree, selected);
    ui.measurementSelectionGroup->setTitle(
        current ? "Select Measurements for Selected Signal: " + current->text(keyColumn)
                : QStringLiteral("Select Signal ID/Signal Group from Selected Signal Tree"));
    QTreeWidget* described = selected.isEmpty() ? ui.selectMeasurementAvailableMeasurementTree
                                                : ui.selectMeasurementSelectedMeasurementTree;
    showMeasurementDescription(described->topLevelItem(0));
}

void LaneTapDialog::fillFlatTree(QTreeWidget* tree, const QStringList& names) {
    tree->clear();
    for (const QString& name : names) {
        tree->addTopLevelItem(new QTreeWidgetItem(QStringList{name}));
    }
    tree->sortItems(0, Qt::AscendingOrder);
    tree->setCurrentItem(tree->topLevelItem(0));
}

void LaneTapDialog::onAddMeasurementClicked() {
    moveCurrentItem(ui.selectMeasurementAvailableMeasurementTree,
                    ui.selectMeasurementSelectedMeasurementTree, Placement::SortedList,
                    [this](QTreeWidgetItem* measurement) {
                        recordMeasurementAdded(
                            measurement, ui.selectMeasurementSelectedSignalTree->currentItem());
                    });
}

void LaneTapDialog::onRemoveMeasurementClicked() {
    moveCurrentItem(ui.selectMeasurementSelectedMeasurementTree,
                    ui.selectMeasurementAvailableMeasurementTree, Placement::SortedList,
                    [this](QTreeWidgetItem* measurement) {
                        recordMeasurementRemoved(
                            measurement, ui.selectMeasurementSelectedSignalTree->currentItem());
                    });
}

void LaneTapDialog::recordMeasurementAdded(QTreeWidgetItem* measurement, QTreeWidgetItem* signal) {
    if (!measurement || !signal) {
        return;
    }
    const QString name = measurement->text(0);
    const int type = measurementTypesByDisplayName().value(name, MeasurementType(0));
    walkSignalItems(
        signal, [&](const QString& key) { groupMeasurements[key].insert(name, type); },
        [&](const QString& key) {
            if (SignalRecord* record = selectedSignals.value(key)) {
                record->addMeasurement(name);
            }
        });
}

void LaneTapDialog::recordMeasurementRemoved(QTreeWidgetItem* measurement,
                                             QTreeWidgetItem* signal) {
    if (!measurement || !signal) {
        return;
    }
    const QString name = measurement->text(0);
    walkSignalItems(
        signal,
        [&](const QString& key) {
            // The group's entry stays, also when this was its last measurement.
            auto entry = groupMeasurements.find(key);
            if (entry != groupMeasurements.end()) {
                entry->remove(name);
            }
        },
        [&](const QString& key) {
            if (SignalRecord* record = selectedSignals.value(key)) {
                record->removeMeasurement(name);
            }
        });
}

void LaneTapDialog::showMeasurementDescription(QTreeWidgetItem* item) {
    if (!item) {
        return;
    }
    const QString name = item->text(0);
    if (measurementDescriptions().contains(name)) {
        ui.measurementDescriptionLabel->setText(
            measurementDescriptions().value(name, QStringLiteral("Description unknown.")));
    }
}

}  // namespace LaneTapUI
