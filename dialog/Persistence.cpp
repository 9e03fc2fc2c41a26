// The setup as the probe instance's parameters keep it: what Apply and the opening write, and the
// load that restores the dialog from it. Every value is text; the page that is showing decides
// which half of the setup is written.

#include "catalogue/ComplianceLookups.h"
#include "catalogue/MeasurementTypes.h"
#include "dialog/LaneTapDialog.h"
#include "dialog/SetupFields.h"
#include "dialog/StoredSelection.h"
#include "parameters/ParamText.h"
#include "parameters/TestModes.h"

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
// controller, the DRAM type too. The stored DRAM type is shown first, so that a controller's type
// changes the box as a user's choice would.
void restoreTestModes(const db::ParamIter& in, const Ui::LaneTapQtDialog& form,
                      const ControllerParameters& controller) {
    const int storedDramType = readParamInt(in, "dramType");
    // A stored DRAM type that names no item leaves the box as it is.
    if (storedDramType >= 0 && storedDramType < form.dramTypeBox->count()) {
        form.dramTypeBox->setCurrentIndex(storedDramType);
    }
    const TestModes modes = dialogTestModes(storedDramType, readParamInt(in, "dqsSignalMode"),
                                            readParamInt(in, "modeOfOperation"), controller,
                                            form.dramTypeBox->currentIndex());
    form.dramTypeBox->setCurrentIndex(modes.dramType);
    form.dqsSignalModeBox->setCurrentIndex(modes.dqsSignalMode);
    form.modeOfOperationBox->setCurrentIndex(modes.operationMode);
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

// What the boxes of the setup page show, as the compliance lookups take it.
TestModes shownTestModes(const Ui::LaneTapQtDialog& form) {
    TestModes modes;
    modes.dramType = form.dramTypeBox->currentIndex();
    modes.operationMode = form.modeOfOperationBox->currentIndex();
    modes.dqsSignalMode = form.dqsSignalModeBox->currentIndex();
    return modes;
}

// Compliance is on only when stored so and the controller runs no DDR simulation.
void restoreComplianceSwitch(const db::ParamIter& in, const Ui::LaneTapQtDialog& form,
                             const ControllerParameters& controller) {
    const bool off = !isComplianceOn(readParamInt(in, "EnableComplianceMeasurements"), controller);
    form.enableComplianceCheckBox->setChecked(!off);
    form.complianceGroup->setEnabled(!off);
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
                     writeLevelingReferenceMapText(wlSelectedSignals));
}

void LaneTapDialog::saveMeasurementGroup(db::ParamIter& out) {
    writeParamInt(out, "TabWidgetTabNumber", furthestTab);
    writeParamStringList(out, "SelectedSignalList", selectedSignals.keys());
    storeTestEnvironment(out, ui);
    storeVoltages(out, supplyFields(ui));
    storeInputPage(out, dqInputFields(ui));
    storeInputPage(out, caInputFields(ui));
    storeVoltages(out, signalThresholdFields(ui));
    writeParamString(out, "SelectedMeasurementsListMap", measurementMapText(selectedSignals));
    writeParamString(out, "SelectedGroupMeasurementsListMap",
                     groupMeasurementMapText(groupMeasurements));
    writeParamString(out, "SelectedMeasurementsRefSignalListMap",
                     referenceMapText(selectedSignals));
    writeParamInt(out, "EnableComplianceMeasurements", ui.enableComplianceCheckBox->isChecked());
    writeParamString(out, "SelectedComplianceListMap", complianceMapText(selectedSignals));
    writeParamString(out, "SelectedGroupComplianceListMap",
                     groupComplianceMapText(groupCompliance));
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
    restoreMeasurements(readParamIntListMap(in, "SelectedMeasurementsListMap"), selectedSignals);
    restoreGroupMeasurements(readParamIntListMap(in, "SelectedGroupMeasurementsListMap"),
                             groupMeasurements);
    restoreReferences(readParamReferenceMap(in, "SelectedMeasurementsRefSignalListMap"),
                      selectedSignals, allSignals);
    restoreComplianceSwitch(in, ui, *parameters);
    restoreSignalCompliance(readParamIntListMap(in, "SelectedComplianceListMap"), selectedSignals);
    restoreGroupCompliance(readParamIntListMap(in, "SelectedGroupComplianceListMap"),
                           shownTestModes(ui), groupCompliance);
    refreshMeasurementTab(ui.measurementTabs->currentIndex());
    moveKeys(readParamStringList(in, "WritelevelingSelectedSignalList"), wlAvailableSignals,
             wlSelectedSignals);
    restoreWriteLevelingReferences(
        readParamStringListMap(in, "WriteLevelingSelectedRefSignalListMap"), wlSelectedSignals,
        allSignals, wlAllSignals);
}

}  // namespace LaneTapUI
