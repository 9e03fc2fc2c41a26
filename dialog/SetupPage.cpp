// The "Setup Probe" tab: the list of threshold subjects with its pages, the defaults that follow
// the DRAM type and the speed grade, and the two internal Vref switches.

#include "catalogue/SpeedGradeDefaults.h"
#include "dialog/LaneTapDialog.h"
#include "dialog/SetupFields.h"

namespace LaneTapUI {

namespace {

// The column a speed grade box that holds no number reads.
constexpr int fallbackDataRate = 3200;

void applyThresholds(int dataRate, const VoltageFields& fields) {
    for (const VoltageField& field : fields) {
        showVoltage(thresholdDefault(dataRate, field.key), field.value, field.unit);
    }
}

// The four thresholds of an input page, then its receiver window, which is no voltage and goes to
// its field as it stands.
void applyInputPageThresholds(int dataRate, const InputPageFields& page) {
    applyThresholds(dataRate, page.thresholds);
    page.window->setText(thresholdDefault(dataRate, page.windowKey));
}

}  // namespace

void LaneTapDialog::onThresholdRowChanged(int row) {
    ui.thresholdStackedWidget->setCurrentIndex(row);
    setThresholdGroupTitle();
}

void LaneTapDialog::setThresholdGroupTitle() {
    const QListWidgetItem* current = ui.thresholdListWidget->currentItem();
    ui.signalThresholdGroup->setTitle((current ? current->text() : QString()) +
                                      QStringLiteral(" Setting"));
}

void LaneTapDialog::onDramTypeChanged(const QString& text) {
    applySupplyDefaults(text);
}

void LaneTapDialog::onSpeedGradeChanged(const QString& text) {
    bool isNumber = false;
    const int dataRate = text.toInt(&isNumber, 10);
    applyThresholdDefaults(isNumber ? dataRate : fallbackDataRate);
}

void LaneTapDialog::onInternalVrefDQChanged(int state) {
    applyInternalVrefRule(dqInputFields(ui), state);
}

void LaneTapDialog::onInternalVrefCAChanged(int state) {
    applyInternalVrefRule(caInputFields(ui), state);
}

void LaneTapDialog::applySupplyDefaults(const QString& dramTypeText) {
    for (const VoltageField& field : supplyFields(ui)) {
        showVoltage(supplyDefault(dramTypeText, field.key), field.value, field.unit);
    }
}

// The Vrefs, the supplies and the test environment don't follow the speed grade.
void LaneTapDialog::applyThresholdDefaults(int dataRate) {
    applyInputPageThresholds(dataRate, dqInputFields(ui));
    applyInputPageThresholds(dataRate, caInputFields(ui));
    applyThresholds(dataRate, signalThresholdFields(ui));
}

}  // namespace LaneTapUI
