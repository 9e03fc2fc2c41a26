// The setup as the probe instance's parameters keep it: what Apply and the opening write, and the
// load that restores the dialog from it. Every value is text; the page that is showing decides
// which half of the setup is written.

#include "catalogue/ComplianceLookups.h"
#include "catalogue/MeasurementTypes.h"
#include "dialog/LaneTapDialog.h"
#include "dialog/SetupFields.h"
#include "parameters/ParamText.h"

namespace LaneTapUI {

namespace {

// ---- writing ----

void storeVoltage(db::ParamIter& out, const VoltageField& field) {
    const QString unit = field.unit->currentText();
    const QString suffix = unit == QLatin1String("None") ? QString() : QLatin1Char(' ') + unit;
    writeParamString(out, field.key, field.value->text() + suffix);
}

void storeVoltages(db::ParamIter& out, const VoltageFields& fields) {
    for (const VoltageField& field : fields) {
        storeVoltage(out, field);
    }
}

QStringList itemTexts(const QComboBox* box) {
    QStringList texts;
    for (int i = 0; i < box->count(); ++i) {
        texts.append(box->itemText(i));
    }
    return texts;
}

void storeTestEnvironment(db::ParamIter& out, const Ui::LaneTapQtDialog& form) {
    writeParamInt(out, "dqsSignalMode", form.dqsSignalModeBox->currentIndex());
    writeParamInt(out, "modeOfOperation", form.modeOfOperationBox->currentIndex());
    writeParamInt(out, "dramType", form.dramTypeBox->currentIndex());
    writeParamStringList(out, "speedGradeList", itemTexts(form.speedGradeBox));
    writeParamInt(out, "speedGradeIndex", form.speedGradeBox->currentIndex());
    writeParamString(out, "targetBER", form.targetBERBox->text());
    writeParamString(out, "InterpolationTimeResolution",
                     form.interpolationTimeResolutionBox->text());
    writeParamString(out, "TimeResolution", form.timeResolutionBox->text());
    storeVoltage(
        out, {"AmplitudeResolution", form.amplitudeResolutionBox, form.amplitudeResolutionVBox});
    writeParamString(out, "ResultsPDFPath", form.pdfDirPath->text());
    writeParamInt(out, "SaveToPDF", form.saveToPDFCheckBox->isChecked());
    writeParamInt(out, "EnableScreenshots", form.enableScreenshots->isChecked());
}

void storeInputPage(db::ParamIter& out, const InputPageFields& page) {
    writeParamInt(out, page.internalVrefKey, page.internalVref->isChecked());
    writeParamString(out, page.groupKey, page.group->currentText());
    storeVoltages(out, page.thresholds);
    storeVoltage(out, page.vref);
    writeParamString(out, page.windowKey, page.window->text());
}

// "key id id ,": a key without ids is the key, a blank and ",".
template <class Ids>
QString idRecord(const QString& key, const Ids& ids) {
    QString text = key + QLatin1Char(' ');
    for (int id : ids) {
        text += QString::number(id) + QLatin1Char(' ');
    }
    return text + QLatin1Char(',');
}

template <class Ids>
QString signalIdMap(const SignalRecordHash& signals, Ids SignalRecord::*ids) {
    QString text;
    for (auto it = signals.cbegin(); it != signals.cend(); ++it) {
        text += it.value() ? idRecord(it.key(), it.value()->*ids) : idRecord(it.key(), Ids());
    }
    return text;
}

template <class Ids>
QString groupIdMap(const QHash<QString, Ids>& groups) {
    QString text;
    for (auto it = groups.cbegin(); it != groups.cend(); ++it) {
        text += idRecord(it.key(), it.value());
    }
    return text;
}

// "key name name ,".
QString nameRecord(const QString& key, const QString& head, const SignalRecordHash& names) {
    QString text = key + QLatin1Char(' ') + head;
    for (auto it = names.cbegin(); it != names.cend(); ++it) {
        text += it.key() + QLatin1Char(' ');
    }
    return text + QLatin1Char(',');
}

// One record per measurement with a reference entry: "key id name name ,". A signal without any
// gives no record.
QString referenceMap(const SignalRecordHash& signals) {
    QString text;
    for (auto it = signals.cbegin(); it != signals.cend(); ++it) {
        if (!it.value()) {
            continue;
        }
        const QHash<QString, SignalRecordHash>& entries = it.value()->refSignals;
        for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
            const int id = measurementTypesByDisplayName().value(entry.key(), StrobedEye);
            text += nameRecord(it.key(), QString::number(id) + QLatin1Char(' '), entry.value());
        }
    }
    return text;
}

QString writeLevelingReferenceMap(const SignalRecordHash& signals) {
    QString text;
    for (auto it = signals.cbegin(); it != signals.cend(); ++it) {
        text += nameRecord(it.key(), QString(),
                           it.value() ? it.value()->wlRefSignals : SignalRecordHash());
    }
    return text;
}

// ---- reading ----

void restoreVoltage(const db::ParamIter& in, const VoltageField& field) {
    showVoltage(readParamText(in, field.key), field.value, field.unit);
}

void restoreVoltages(const db::ParamIter& in, const VoltageFields& fields) {
    for (const VoltageField& field : fields) {
        restoreVoltage(in, field);
    }
}

// A number as the post-processing reads it back: "0.000001" shows as "1e-06".
QString doubleText(const db::ParamIter& in, const char* key) {
    return QString::number(readParamDouble(in, key), 'g', 6);
}

// With a controller in the design its settings decide strobe mode and cycle, and, for a bursting
// controller, the DRAM type too; the stored values of those are not used.
void restoreTestModes(const db::ParamIter& in, const Ui::LaneTapQtDialog& form,
                      const ControllerParameters& controller) {
    // A stored DRAM type that names no item leaves the box as it is.
    const int dramType = readParamInt(in, "dramType");
    if (dramType >= 0 && dramType < form.dramTypeBox->count()) {
        form.dramTypeBox->setCurrentIndex(dramType);
    }
    if (!controller.parametersRead) {
        form.dqsSignalModeBox->setCurrentIndex(readParamInt(in, "dqsSignalMode"));
        form.modeOfOperationBox->setCurrentIndex(readParamInt(in, "modeOfOperation"));
        return;
    }
    if (!controller.isNoBurst()) {
        form.dramTypeBox->setCurrentIndex(controller.isDDR4() ? 0 : 1);
    }
    form.dqsSignalModeBox->setCurrentIndex(controller.isNoBurst() ? 0 : 1);
    form.modeOfOperationBox->setCurrentIndex(controller.isReadMode() ? 0 : 1);
}

// The stored list joins what the box holds already: a reused dialog adds it once more. The
// thresholds that the index change resets are read after this.
void restoreSpeedGrade(const db::ParamIter& in, const Ui::LaneTapQtDialog& form) {
    form.speedGradeBox->insertItems(form.speedGradeBox->count(),
                                    readParamStringList(in, "speedGradeList"));
    form.speedGradeBox->setCurrentIndex(readParamInt(in, "speedGradeIndex"));
}

void restoreTestEnvironment(const db::ParamIter& in, const Ui::LaneTapQtDialog& form) {
    form.targetBERBox->setText(doubleText(in, "targetBER"));
    form.interpolationTimeResolutionBox->setText(
        QString::number(readParamInt(in, "InterpolationTimeResolution")));
    form.timeResolutionBox->setText(QString::number(readParamInt(in, "TimeResolution")));
    restoreVoltage(
        in, {"AmplitudeResolution", form.amplitudeResolutionBox, form.amplitudeResolutionVBox});
    form.pdfDirPath->setText(readParamText(in, "ResultsPDFPath"));
    const bool savesPdf = readParamInt(in, "SaveToPDF") != 0;
    form.saveToPDFCheckBox->setChecked(savesPdf);
    form.pdfDirPath->setEnabled(savesPdf);
    form.browsePDFDirButton->setEnabled(savesPdf);
    form.enableScreenshots->setChecked(readParamInt(in, "EnableScreenshots") != 0);
}

// The Vref rule is applied whether or not the check state changed.
void restoreInputPage(const db::ParamIter& in, const InputPageFields& page) {
    page.internalVref->setChecked(readParamInt(in, page.internalVrefKey) > 0);
    applyInternalVrefRule(page, page.internalVref->checkState());
    page.group->setCurrentText(readParamText(in, page.groupKey));
    restoreVoltages(in, page.thresholds);
    restoreVoltage(in, page.vref);
    page.window->setText(doubleText(in, page.windowKey));
}

// The records of `all` under the stored names; names of signals no longer in the design go.
SignalRecordHash knownRecords(const QStringList& names, const SignalRecordHash& all) {
    SignalRecordHash records;
    for (const QString& name : names) {
        if (SignalRecord* record = all.value(name)) {
            records.insert(name, record);
        }
    }
    return records;
}

// Calls `apply` with the record and the stored entry of each stored signal that is selected;
// entries of other signals go.
template <class Map, class Apply>
void forEachSelected(const Map& stored, const SignalRecordHash& selected, Apply apply) {
    for (auto it = stored.cbegin(); it != stored.cend(); ++it) {
        if (SignalRecord* record = selected.value(it.key())) {
            apply(*record, it.value());
        }
    }
}

// The ids of each selected signal, resolved to names; unknown ids go. A group entry is taken as
// stored: an unknown id keeps an entry with an empty name.
void restoreMeasurements(const db::ParamIter& in, const SignalRecordHash& selected,
                         QHash<QString, QHash<QString, int>>& groups) {
    forEachSelected(
        readParamIntListMap(in, "SelectedMeasurementsListMap"), selected,
        [](SignalRecord& record, const QList<int>& ids) { record.setMeasurements(ids); });
    const IntListMap groupIds = readParamIntListMap(in, "SelectedGroupMeasurementsListMap");
    for (auto it = groupIds.cbegin(); it != groupIds.cend(); ++it) {
        QHash<QString, int> entry;
        for (int id : it.value()) {
            entry.insert(measurementDisplayNames().value(static_cast<MeasurementType>(id)), id);
        }
        groups.insert(it.key(), entry);
    }
}

// Each stored list replaces the reference entry of its measurement on a selected signal.
void restoreReferences(const db::ParamIter& in, const SignalRecordHash& selected,
                       const SignalRecordHash& all) {
    forEachSelected(readParamReferenceMap(in, "SelectedMeasurementsRefSignalListMap"), selected,
                    [&all](SignalRecord& record, const QHash<int, QStringList>& lists) {
                        for (auto list = lists.cbegin(); list != lists.cend(); ++list) {
                            const auto type = static_cast<MeasurementType>(list.key());
                            record.setReferences(measurementDisplayNames().value(type),
                                                 knownRecords(list.value(), all));
                        }
                    });
}

// A group keeps only the ids that the catalogue offers its signal type, the text before the
// key's first "_", under the settings that the boxes show.
QMultiHash<QString, int> offeredCompliance(const QString& groupKey, const QList<int>& ids,
                                           const Ui::LaneTapQtDialog& form) {
    const QMultiHash<qint32, QString> offered = complianceNamesFor(
        groupKey.section(QLatin1Char('_'), 0, 0), form.dramTypeBox->currentText(),
        form.modeOfOperationBox->currentIndex() != 0, form.dqsSignalModeBox->currentIndex());
    QMultiHash<QString, int> entry;
    for (int id : ids) {
        if (offered.contains(id)) {
            entry.insert(offered.value(id), id);
        }
    }
    return entry;
}

// Compliance is on only when stored so and the controller runs no DDR simulation.
void restoreCompliance(const db::ParamIter& in, const Ui::LaneTapQtDialog& form,
                       const ControllerParameters& controller, const SignalRecordHash& selected,
                       QHash<QString, QMultiHash<QString, int>>& groups) {
    const bool off = readParamInt(in, "EnableComplianceMeasurements") == 0 ||
                     (controller.parametersRead && controller.isDDRSimulation());
    form.enableComplianceCheckBox->setChecked(!off);
    form.complianceGroup->setEnabled(!off);
    forEachSelected(readParamIntListMap(in, "SelectedComplianceListMap"), selected,
                    [](SignalRecord& record, const QList<int>& ids) { record.setCompliance(ids); });
    const IntListMap groupIds = readParamIntListMap(in, "SelectedGroupComplianceListMap");
    for (auto it = groupIds.cbegin(); it != groupIds.cend(); ++it) {
        groups.insert(it.key(), offeredCompliance(it.key(), it.value(), form));
    }
}

// A reference must still be in the design; its record comes from the write-leveling copy.
void restoreWriteLevelingReferences(const db::ParamIter& in, const SignalRecordHash& selected,
                                    const SignalRecordHash& all, const SignalRecordHash& wlAll) {
    forEachSelected(readParamStringListMap(in, "WriteLevelingSelectedRefSignalListMap"), selected,
                    [&](SignalRecord& record, const QStringList& names) {
                        for (const QString& name : names) {
                            if (all.contains(name)) {
                                record.wlRefSignals.insert(name, wlAll.value(name));
                            }
                        }
                    });
}

}  // namespace

void LaneTapDialog::saveToInstance(db::ParamIter& out) {
    const int page = ui.stackedWidget->currentIndex();
    writeParamInt(out, "StackWidgetPageNumber", page);
    stackPage = page;
    writeParamInt(out, "EnableWriteLeveling", writeLevelingEnabled);
    session->setInstanceName(ui.instanceNameEdit->text().toStdString().c_str());
    if (stackPage == writeLevelingRoute) {
        saveWriteLevelingGroup(out);
    } else if (stackPage == measurementRoute) {
        saveMeasurementGroup(out);
    }
}

void LaneTapDialog::saveWriteLevelingGroup(db::ParamIter& out) {
    writeParamInt(out, "TabWidgetTabNumber", furthestTab);
    writeParamStringList(out, "WritelevelingSelectedSignalList", wlSelectedSignals.keys());
    writeParamString(out, "WriteLevelingSelectedRefSignalListMap",
                     writeLevelingReferenceMap(wlSelectedSignals));
}

void LaneTapDialog::saveMeasurementGroup(db::ParamIter& out) {
    writeParamInt(out, "TabWidgetTabNumber", furthestTab);
    writeParamStringList(out, "SelectedSignalList", selectedSignals.keys());
    storeTestEnvironment(out, ui);
    storeVoltages(out, supplyFields(ui));
    storeInputPage(out, dqInputFields(ui));
    storeInputPage(out, caInputFields(ui));
    storeVoltages(out, signalThresholdFields(ui));
    writeParamString(out, "SelectedMeasurementsListMap",
                     signalIdMap(selectedSignals, &SignalRecord::measurements));
    writeParamString(out, "SelectedGroupMeasurementsListMap", groupIdMap(groupMeasurements));
    writeParamString(out, "SelectedMeasurementsRefSignalListMap", referenceMap(selectedSignals));
    writeParamInt(out, "EnableComplianceMeasurements", ui.enableComplianceCheckBox->isChecked());
    writeParamString(out, "SelectedComplianceListMap",
                     signalIdMap(selectedSignals, &SignalRecord::compliance));
    writeParamString(out, "SelectedGroupComplianceListMap", groupIdMap(groupCompliance));
}

void LaneTapDialog::loadSettings(const db::ParamIter& in) {
    setThresholdGroupTitle();
    restoreTestModes(in, ui, *parameters);
    restoreSpeedGrade(in, ui);
    restoreTestEnvironment(in, ui);
    // Under a controller the supplies follow its DRAM family whenever the stored type is the
    // other one; the comparison is with the stored index, not with what the box shows.
    const int controllerDramType = parameters->isDDR4() ? 0 : 1;
    if (parameters->parametersRead && readParamInt(in, "dramType") != controllerDramType) {
        applySupplyDefaults(controllerDramType == 0 ? QStringLiteral("DDR4")
                                                    : QStringLiteral("LPDDR4"));
    } else {
        restoreVoltages(in, supplyFields(ui));
    }
    restoreInputPage(in, dqInputFields(ui));
    restoreInputPage(in, caInputFields(ui));
    restoreVoltages(in, signalThresholdFields(ui));
}

// Only the trees that can be seen before they are next rebuilt are built here: the signal
// selection, which Back reaches without a rebuild, and the page of the current measurement tab.
// The other measurement pages are built when their tab becomes current, and the write-leveling
// route when Next enters it; the dialog always opens on the measurement route.
void LaneTapDialog::loadSelections(const db::ParamIter& in) {
    moveKeys(readParamStringList(in, "SelectedSignalList"), availableSignals, selectedSignals);
    refreshSignalSelectionTrees();
    restoreMeasurements(in, selectedSignals, groupMeasurements);
    restoreReferences(in, selectedSignals, allSignals);
    restoreCompliance(in, ui, *parameters, selectedSignals, groupCompliance);
    refreshMeasurementTab(ui.measurementTabs->currentIndex());
    moveKeys(readParamStringList(in, "WritelevelingSelectedSignalList"), wlAvailableSignals,
             wlSelectedSignals);
    restoreWriteLevelingReferences(in, wlSelectedSignals, allSignals, wlAllSignals);
}

}  // namespace LaneTapUI
