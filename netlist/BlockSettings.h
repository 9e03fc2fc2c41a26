#pragma once

// The settings line of the block: every setting the post-processing module reads, in its order,
// and where its value comes from.
namespace LaneTapUI {

// How the value of a setting is made.
enum class SettingForm {
    // The stored text of the probe parameter, as it stands: a free text, a number, or a voltage
    // ("0.093 V").
    Text,
    Number,
    Voltage,
    // The stored text in double quotes.
    Quoted,
    // Worked out from the controller or from stored numbers.
    Computed,
};

struct Setting {
    const char* name;
    SettingForm form;
    // The probe parameter of a plain or quoted setting.
    const char* parameter;
};

// The settings in the order the module reads them.
inline constexpr Setting blockSettings[] = {
    {"Settings_ReadWriteOperation", SettingForm::Computed, nullptr},
    {"EnableCompliance", SettingForm::Computed, nullptr},
    {"EnableScreenshots", SettingForm::Number, "EnableScreenshots"},
    {"NEBProperties_SaveDataset", SettingForm::Number, "SaveToDataset"},
    {"NEBProperties_SaveReportPDF", SettingForm::Number, "SaveToPDF"},
    {"NEBProperties_ReportPath", SettingForm::Text, "ResultsPDFPath"},
    {"TargetBER", SettingForm::Number, "targetBER"},
    {"InterpolationTimePoints", SettingForm::Number, "InterpolationTimeResolution"},
    {"TimePoints", SettingForm::Number, "TimeResolution"},
    {"AmplitudeResolution", SettingForm::Voltage, "AmplitudeResolution"},
    {"DataRate", SettingForm::Computed, nullptr},
    {"CATopology", SettingForm::Computed, nullptr},
    {"SpeedGrade", SettingForm::Computed, nullptr},
    {"Settings_pcboCustomSG", SettingForm::Computed, nullptr},
    {"Settings_DQSSignalType", SettingForm::Computed, nullptr},
    {"Settings_chkLPDDR4", SettingForm::Computed, nullptr},
    {"Settings_chkLPDDR4X", SettingForm::Computed, nullptr},
    {"Settings_InputVDD", SettingForm::Voltage, "vdd"},
    {"Settings_InputVDDQ", SettingForm::Voltage, "vddq"},
    {"Settings_InputVDD1", SettingForm::Voltage, "vdd1"},
    {"Settings_InputVDD2", SettingForm::Voltage, "vdd2"},
    {"Settings_InputRefV_VTT", SettingForm::Voltage, "vtt"},
    {"UseInternalVrefDQ", SettingForm::Number, "UseInternalVrefDQ"},
    {"GroupDQBy", SettingForm::Quoted, "GroupDQBox"},
    {"Settings_InputThreshold_Vih_ac_DQ", SettingForm::Voltage, "vih_dq_ac"},
    {"Settings_InputThreshold_Vil_ac_DQ", SettingForm::Voltage, "vil_dq_ac"},
    {"Settings_InputThreshold_Vih_dc_DQ", SettingForm::Voltage, "vih_dq_dc"},
    {"Settings_InputThreshold_Vil_dc_DQ", SettingForm::Voltage, "vil_dq_dc"},
    {"Settings_InputRefV_VrefDQ", SettingForm::Voltage, "vref_dq"},
    {"Settings_TimingWindowDQ", SettingForm::Number, "tdivwDQ"},
    {"UseInternalVrefCA", SettingForm::Number, "UseInternalVrefCA"},
    {"GroupCABy", SettingForm::Quoted, "GroupCABox"},
    {"Settings_InputThreshold_Vih_ac_CA", SettingForm::Voltage, "vih_ca_ac"},
    {"Settings_InputThreshold_Vil_ac_CA", SettingForm::Voltage, "vil_ca_ac"},
    {"Settings_InputThreshold_Vih_dc_CA", SettingForm::Voltage, "vih_ca_dc"},
    {"Settings_InputThreshold_Vil_dc_CA", SettingForm::Voltage, "vil_ca_dc"},
    {"Settings_InputRefV_VrefCA", SettingForm::Voltage, "vref_ca"},
    {"Settings_TimingWindowCA", SettingForm::Number, "tcivwCA"},
    {"Settings_InputThreshold_DQS_SE_High", SettingForm::Voltage, "se_high_DQS"},
    {"Settings_InputThreshold_DQS_SE_Low", SettingForm::Voltage, "se_low_DQS"},
    {"Settings_InputThreshold_CLK_SE_High", SettingForm::Voltage, "se_high_CK"},
    {"Settings_InputThreshold_CLK_SE_Low", SettingForm::Voltage, "se_low_CK"},
    {"Settings_InputThreshold_Voh_ac", SettingForm::Voltage, "voh_ac"},
    {"Settings_InputThreshold_Vol_ac", SettingForm::Voltage, "vol_ac"},
    {"Settings_InputThreshold_Voh_dc", SettingForm::Voltage, "voh_dc"},
    {"Settings_InputThreshold_Vol_dc", SettingForm::Voltage, "vol_dc"},
    {"Settings_VIHdiff_ac_DQS", SettingForm::Voltage, "vihDiff_DQS_ac"},
    {"Settings_VILdiff_ac_DQS", SettingForm::Voltage, "vilDiff_DQS_ac"},
    {"Settings_VIHdiff_DQS", SettingForm::Voltage, "vihDiff_DQS"},
    {"Settings_VILdiff_DQS", SettingForm::Voltage, "vilDiff_DQS"},
    {"Settings_VIHdiff_ac_CK", SettingForm::Voltage, "vihDiff_CK_ac"},
    {"Settings_VILdiff_ac_CK", SettingForm::Voltage, "vilDiff_CK_ac"},
    {"Settings_VIHdiff_CK", SettingForm::Voltage, "vihDiff_CK"},
    {"Settings_VILdiff_CK", SettingForm::Voltage, "vilDiff_CK"},
    {"Settings_VOHdiff_ac", SettingForm::Voltage, "voh_diff"},
    {"Settings_VOLdiff_ac", SettingForm::Voltage, "vol_diff"},
};

static_assert(sizeof(blockSettings) / sizeof(blockSettings[0]) == 56,
              "the module reads 56 settings");

}  // namespace LaneTapUI
