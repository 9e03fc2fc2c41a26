#include "standin/ItemDefinition.h"

namespace standin {

const char* const probeCellName = "LaneTap";

// What a newly placed LaneTap probe carries before its setup dialog has been opened: a DDR4 probe
// at 3200 MT/s on the measurement route, nothing selected, compliance off. Every voltage key has a
// non-blank value, since an empty voltage cannot be opened.
const ParameterValues& probeItemDefinition() {
    static const ParameterValues definition = {
        {"StackWidgetPageNumber", "2"},
        {"EnableWriteLeveling", "0"},
        {"TabWidgetTabNumber", "0"},
        {"SelectedSignalList", ""},
        {"dqsSignalMode", "0"},
        {"modeOfOperation", "0"},
        {"dramType", "0"},
        {"speedGradeList", "1600,1866,2133,2400,2666,2933,3200,"},
        {"speedGradeIndex", "6"},
        {"targetBER", "1e-12"},
        {"InterpolationTimeResolution", "10"},
        {"TimeResolution", "10"},
        {"AmplitudeResolution", "1 mV"},
        {"ResultsPDFPath", ""},
        {"SaveToPDF", "0"},
        // Not a field of the setup dialog: the post-processing keeps its data set unless a
        // probe is told otherwise.
        {"SaveToDataset", "1"},
        {"EnableScreenshots", "0"},
        {"vdd", "1.2 V"},
        {"vddq", "1.2 V"},
        {"vdd1", "1.2 V"},
        {"vdd2", "1.2 V"},
        {"vtt", "0.6 V"},
        {"UseInternalVrefDQ", "1"},
        {"GroupDQBox", "Nibble"},
        {"vih_dq_ac", "0.07 V"},
        {"vil_dq_ac", "0.07 V"},
        {"vih_dq_dc", "0.055 V"},
        {"vil_dq_dc", "0.055 V"},
        {"vref_dq", "0.84 V"},
        {"tdivwDQ", "0.23"},
        {"UseInternalVrefCA", "1"},
        {"GroupCABox", "All"},
        {"vih_ca_ac", "0.09 V"},
        {"vil_ca_ac", "0.09 V"},
        {"vih_ca_dc", "0.065 V"},
        {"vil_ca_dc", "0.065 V"},
        {"vref_ca", "0.6 V"},
        {"tcivwCA", "0.3"},
        {"se_high_DQS", "0.69"},
        {"se_low_DQS", "0.51"},
        {"se_high_CK", "0.69"},
        {"se_low_CK", "0.51"},
        {"voh_ac", "0.9"},
        {"vol_ac", "0.7"},
        {"voh_dc", "0.9"},
        {"vol_dc", "0.7"},
        {"vihDiff_DQS_ac", "0.140 V"},
        {"vilDiff_DQS_ac", "-0.140 V"},
        {"vihDiff_DQS", "0.11 V"},
        {"vilDiff_DQS", "-0.11 V"},
        {"vihDiff_CK_ac", "0.18 V"},
        {"vilDiff_CK_ac", "-0.18 V"},
        {"vihDiff_CK", "0.12 V"},
        {"vilDiff_CK", "-0.12 V"},
        {"voh_diff", "0.3"},
        {"vol_diff", "-0.3"},
        {"SelectedMeasurementsListMap", ""},
        {"SelectedGroupMeasurementsListMap", ""},
        {"SelectedMeasurementsRefSignalListMap", ""},
        {"EnableComplianceMeasurements", "0"},
        {"SelectedComplianceListMap", ""},
        {"SelectedGroupComplianceListMap", ""},
        {"WritelevelingSelectedSignalList", ""},
        {"WriteLevelingSelectedRefSignalListMap", ""},
    };
    return definition;
}

}  // namespace standin
