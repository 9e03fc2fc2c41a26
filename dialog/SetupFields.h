#pragma once

// The fields of the "Setup Probe" tab as the setup stores them: each voltage is a line edit and a
// unit box under one key, the key being the line edit's name without its "Box". The lists keep
// the order in which the fields are stored and loaded.

#include <vector>

#include "parameters/VoltageAmplitude.h"
#include "ui_LaneTapQtDialog.h"

namespace LaneTapUI {

struct VoltageField {
    const char* key;
    QLineEdit* value;
    QComboBox* unit;
};
using VoltageFields = std::vector<VoltageField>;

// The DQ or the CA input page: the Vref switch and grouping, four thresholds, the Vref and the
// receiver window.
struct InputPageFields {
    const char* internalVrefKey;
    QCheckBox* internalVref;
    const char* groupKey;
    QComboBox* group;
    VoltageFields thresholds;
    VoltageField vref;
    const char* windowKey;
    QLineEdit* window;
};

// The field of `name` in the form that the enclosing function calls `form`: key "name", line
// edit "nameBox", unit box "nameVBox".
// clang-format off
#define LANETAP_VOLTAGE_FIELD(name) VoltageField{#name, form.name##Box, form.name##VBox}
// clang-format on

inline VoltageFields supplyFields(const Ui::LaneTapQtDialog& form) {
    return {LANETAP_VOLTAGE_FIELD(vdd), LANETAP_VOLTAGE_FIELD(vddq), LANETAP_VOLTAGE_FIELD(vdd1),
            LANETAP_VOLTAGE_FIELD(vdd2), LANETAP_VOLTAGE_FIELD(vtt)};
}

inline InputPageFields dqInputFields(const Ui::LaneTapQtDialog& form) {
    return {"UseInternalVrefDQ",
            form.internalVrefDQCheckBox,
            "GroupDQBox",
            form.groupDQSignalBox,
            {LANETAP_VOLTAGE_FIELD(vih_dq_ac), LANETAP_VOLTAGE_FIELD(vil_dq_ac),
             LANETAP_VOLTAGE_FIELD(vih_dq_dc), LANETAP_VOLTAGE_FIELD(vil_dq_dc)},
            LANETAP_VOLTAGE_FIELD(vref_dq),
            "tdivwDQ",
            form.tdivwDQBox};
}

inline InputPageFields caInputFields(const Ui::LaneTapQtDialog& form) {
    return {"UseInternalVrefCA",
            form.internalVrefCACheckBox,
            "GroupCABox",
            form.groupCASignalBox,
            {LANETAP_VOLTAGE_FIELD(vih_ca_ac), LANETAP_VOLTAGE_FIELD(vil_ca_ac),
             LANETAP_VOLTAGE_FIELD(vih_ca_dc), LANETAP_VOLTAGE_FIELD(vil_ca_dc)},
            LANETAP_VOLTAGE_FIELD(vref_ca),
            "tcivwCA",
            form.tcivwCABox};
}

// The thresholds of the single-ended strobe and clock inputs, of the outputs and of the
// differential inputs and outputs.
inline VoltageFields signalThresholdFields(const Ui::LaneTapQtDialog& form) {
    return {LANETAP_VOLTAGE_FIELD(se_high_DQS),    LANETAP_VOLTAGE_FIELD(se_low_DQS),
            LANETAP_VOLTAGE_FIELD(se_high_CK),     LANETAP_VOLTAGE_FIELD(se_low_CK),
            LANETAP_VOLTAGE_FIELD(voh_ac),         LANETAP_VOLTAGE_FIELD(vol_ac),
            LANETAP_VOLTAGE_FIELD(voh_dc),         LANETAP_VOLTAGE_FIELD(vol_dc),
            LANETAP_VOLTAGE_FIELD(vihDiff_DQS_ac), LANETAP_VOLTAGE_FIELD(vilDiff_DQS_ac),
            LANETAP_VOLTAGE_FIELD(vihDiff_DQS),    LANETAP_VOLTAGE_FIELD(vilDiff_DQS),
            LANETAP_VOLTAGE_FIELD(vihDiff_CK_ac),  LANETAP_VOLTAGE_FIELD(vilDiff_CK_ac),
            LANETAP_VOLTAGE_FIELD(vihDiff_CK),     LANETAP_VOLTAGE_FIELD(vilDiff_CK),
            LANETAP_VOLTAGE_FIELD(voh_diff),       LANETAP_VOLTAGE_FIELD(vol_diff)};
}

#undef LANETAP_VOLTAGE_FIELD

// Splits a voltage text into the field's amplitude and unit. A blank text throws, as the parse
// does; a text without a unit shows "None".
inline void showVoltage(const QString& text, QLineEdit* value, QComboBox* unit) {
    const VoltageAmplitude voltage(text);
    value->setText(voltage.amplitude);
    unit->setCurrentText(voltage.units);
}

// With the internal Vref on, the Vref is computed per group: the grouping is enabled and the Vref
// field is not. Off, it is the other way round.
inline void applyInternalVrefRule(const InputPageFields& page, int state) {
    const bool internal = state != Qt::Unchecked;
    page.group->setEnabled(internal);
    page.vref.value->setEnabled(!internal);
    page.vref.unit->setEnabled(!internal);
}

}  // namespace LaneTapUI
