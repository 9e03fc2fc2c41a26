// The "Select Compliance Measurements" tab: compliance tests are chosen per signal type, from the
// catalogue rows that the DRAM type, the cycle and the strobe mode of the setup page allow. The
// left tree is flat, one item per signal type, and shows the model whose instances are measured.

#include <QFileDialog>

#include "catalogue/ComplianceLookups.h"
#include "dialog/LaneTapDialog.h"
#include "dialog/StoredSelection.h"
#include "dialog/TreeHelpers.h"
#include "dialog/TreeWidgetItem.h"

namespace LaneTapUI {

namespace {

// The selectors of the compliance lookups, always as the setup page's widgets show them.
struct ComplianceSettings {
    QString dramType;
    int operationMode;
    int dqsSignalMode;
};

ComplianceSettings currentSettings(const Ui::LaneTapQtDialog& ui) {
    return {ui.dramTypeBox->currentText(), ui.modeOfOperationBox->currentIndex() != 0 ? 1 : 0,
            ui.dqsSignalModeBox->currentIndex()};
}

QMultiHash<QString, qint32> idsByName(const QString& type, const ComplianceSettings& settings) {
    return complianceIdsByNameFor(type, settings.dramType, settings.operationMode,
                                  settings.dqsSignalMode);
}

const QTreeWidgetItem* topMost(const QTreeWidgetItem* item) {
    while (item->parent()) {
        item = item->parent();
    }
    return item;
}

QString signalTypeOf(const QTreeWidgetItem* item) {
    return topMost(item)->text(0);
}

// Walks the subtree of `item`: a group item goes to `group`, the record of a leaf, when `records`
// holds it, to `leaf`.
template <class Group, class Leaf>
void walkSubtree(QTreeWidgetItem* item, const SignalRecordHash& records, Group group, Leaf leaf) {
    walkTree(item, group, [&](QTreeWidgetItem* current) {
        if (SignalRecord* record = records.value(current->text(keyColumn))) {
            leaf(record);
        }
    });
}

QStringList withoutNames(QStringList names, const QStringList& removed) {
    for (const QString& name : removed) {
        names.removeAll(name);
    }
    return names;
}

}  // namespace

void LaneTapDialog::onEnableComplianceToggled(int state) {
    ui.complianceGroup->setEnabled(state != Qt::Unchecked);
}

void LaneTapDialog::onSaveToPdfToggled(int state) {
    ui.pdfDirPath->setEnabled(state != Qt::Unchecked);
    ui.browsePDFDirButton->setEnabled(state != Qt::Unchecked);
}

void LaneTapDialog::onBrowsePdfDirClicked() {
    const QString directory = QFileDialog::getExistingDirectory(
        this, "Save Compliance Results PDF To", workspaceDirectory,
        QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks);
    // The quotes are part of the stored text, also around the empty result of a cancel.
    ui.pdfDirPath->setText("\"" + directory + "\"");
}

void LaneTapDialog::refreshCompliancePage() {
    QTreeWidget* tree = ui.selectComplianceSelectedSignalTree;
    fillComplianceSignalTree(tree, collectModelsByType(allSignals));
    finishTree(tree);
    onComplianceSignalChanged(tree->currentItem());
}

QHash<QString, QSet<QString>> LaneTapDialog::collectModelsByType(
    const SignalRecordHash& records) const {
    return modelsByType(records);
}

void LaneTapDialog::fillComplianceSignalTree(QTreeWidget* tree,
                                             const QHash<QString, QSet<QString>>& models) {
    tree->clear();
    // The cycle as the box names it: the receiving side of a type follows the text "Read".
    const QHash<QString, QString> groups =
        complianceGroups(models, ui.modeOfOperationBox->currentText() == QLatin1String("Read"));
    for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
        auto* item = new TreeWidgetItem();
        item->setText(0, group.key());
        item->setText(1, group.value());
        item->setForeground(1, Qt::darkGreen);
        item->setText(keyColumn, group.key());
        tree->addTopLevelItem(item);
    }
}

void LaneTapDialog::onComplianceSignalChanged(QTreeWidgetItem* current) {
    QStringList available;
    QStringList selected;
    if (current) {
        const QString key = current->text(keyColumn);
        QString type = signalTypeOf(current);
        if (!isLeaf(current)) {
            selected = groupCompliance.value(key).uniqueKeys();
        } else if (const SignalRecord* record = allSignals.value(key)) {
            type = record->signalType;
            selected = record->compliance.uniqueKeys();
        }
        // A selected name that the catalogue no longer offers stays selected all the same.
        available = withoutNames(idsByName(type, currentSettings(ui)).uniqueKeys(), selected);
    }
    fillFlatTree(ui.selectComplianceAvailableMeasurementTree, available);
    fillFlatTree(ui.selectComplianceSelectedMeasurementTree, selected);
    updateComplianceGroupTitle(current);
    QTreeWidget* described = selected.isEmpty() ? ui.selectComplianceAvailableMeasurementTree
                                                : ui.selectComplianceSelectedMeasurementTree;
    showComplianceDescription(described->topLevelItem(0));
}

void LaneTapDialog::updateComplianceGroupTitle(QTreeWidgetItem* item) {
    if (!item) {
        ui.complianceMeasurementsGroup->setTitle(
            "Select Signal ID/Signal Group from Selected Signal Tree");
        return;
    }
    ui.complianceMeasurementsGroup->setTitle(
        "Select Measurements for Selected Signal: " + item->text(keyColumn) + " for " +
        ui.dramTypeBox->currentText() + " " + ui.dqsSignalModeBox->currentText() + " " +
        ui.modeOfOperationBox->currentText() + " mode");
}

void LaneTapDialog::showComplianceDescription(QTreeWidgetItem* item) {
    if (!item) {
        return;
    }
    const QTreeWidgetItem* signal = ui.selectComplianceSelectedSignalTree->currentItem();
    const QString type = signal ? signalTypeOf(signal) : QStringLiteral("ERROR");
    const ComplianceSettings settings = currentSettings(ui);
    const QMultiHash<QString, QString> descriptions = complianceDescriptionsFor(
        type, settings.dramType, settings.operationMode, settings.dqsSignalMode);
    const QString name = item->text(0);
    if (descriptions.contains(name)) {
        ui.complianceDescriptionLabel->setText(
            descriptions.value(name, QStringLiteral("Description unknown.")));
    }
}

void LaneTapDialog::onAddComplianceClicked() {
    moveCurrentItem(ui.selectComplianceAvailableMeasurementTree,
                    ui.selectComplianceSelectedMeasurementTree, Placement::SortedList,
                    [this](QTreeWidgetItem* measurement) {
                        recordComplianceAdded(measurement,
                                              ui.selectComplianceSelectedSignalTree->currentItem());
                    });
}

void LaneTapDialog::onRemoveComplianceClicked() {
    moveCurrentItem(ui.selectComplianceSelectedMeasurementTree,
                    ui.selectComplianceAvailableMeasurementTree, Placement::SortedList,
                    [this](QTreeWidgetItem* measurement) {
                        recordComplianceRemoved(
                            measurement, ui.selectComplianceSelectedSignalTree->currentItem());
                    });
}

void LaneTapDialog::recordComplianceAdded(QTreeWidgetItem* measurement, QTreeWidgetItem* signal) {
    if (!measurement || !signal) {
        return;
    }
    const QString name = measurement->text(0);
    const QString dramType = ui.dramTypeBox->currentText();
    walkSubtree(
        signal, selectedSignals,
        [&](QTreeWidgetItem* group) { recordGroupComplianceAdded(measurement, group); },
        [&](SignalRecord* record) { record->addCompliance(name, dramType); });
}

void LaneTapDialog::recordGroupComplianceAdded(QTreeWidgetItem* measurement,
                                               QTreeWidgetItem* signal) {
    const QString name = measurement->text(0);
    const QList<qint32> ids = idsByName(signalTypeOf(signal), currentSettings(ui)).values(name);
    // A name added twice would double its ids; the trees prevent it, since the name has left the
    // available list.
    QMultiHash<QString, int>& entry = groupCompliance[signal->text(keyColumn)];
    for (const qint32 id : ids) {
        entry.insert(name, id);
    }
}

void LaneTapDialog::recordComplianceRemoved(QTreeWidgetItem* measurement, QTreeWidgetItem* signal) {
    if (!measurement || !signal) {
        return;
    }
    const QString name = measurement->text(0);
    walkSubtree(
        signal, selectedSignals,
        [&](QTreeWidgetItem* group) {
            auto entry = groupCompliance.find(group->text(keyColumn));
            if (entry != groupCompliance.end()) {
                entry->remove(name);
            }
        },
        [&](SignalRecord* record) { record->removeCompliance(name); });
}

void LaneTapDialog::purgeDqCompliance() {
    QTreeWidget* tree = ui.selectComplianceSelectedSignalTree;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem* type = tree->topLevelItem(i);
        if (type->text(0) != QLatin1String("DQ") && type->text(0) != QLatin1String("DQS")) {
            continue;
        }
        // Entries are emptied, not removed: the keys stay.
        walkSubtree(
            type, allSignals,
            [this](QTreeWidgetItem* group) {
                auto entry = groupCompliance.find(group->text(keyColumn));
                if (entry != groupCompliance.end()) {
                    entry->clear();
                }
            },
            [](SignalRecord* record) { record->compliance.clear(); });
    }
}

}  // namespace LaneTapUI
