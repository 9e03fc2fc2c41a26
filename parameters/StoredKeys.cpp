#include "parameters/StoredKeys.h"

#include <algorithm>

#include "parameters/TestModes.h"

namespace LaneTapUI {

namespace {

template <std::size_t count>
QStringList itemsOf(const char* const (&items)[count]) {
    QStringList texts;
    for (const char* item : items) {
        texts << QString::fromLatin1(item);
    }
    return texts;
}

std::vector<StoredKey> makeStoredKeys() {
    using F = StoredForm;
    std::vector<StoredKey> keys = {
        {"StackWidgetPageNumber",
         F::Index,
         {"the first page", "the write-leveling route", "the measurement route"}},
        {"EnableWriteLeveling", F::Flag, {}},
        {"TabWidgetTabNumber",
         F::Index,
         {"Setup Probe", "Select Signals", "Select Measurements", "Select Reference Signal",
          "Select Compliance Measurements"}},
        {"SelectedSignalList", F::SignalList, {}},
        {"dqsSignalMode", F::Index, itemsOf(strobeModeItems)},
        {"modeOfOperation", F::Index, itemsOf(cycleItems)},
        {"dramType", F::Index, itemsOf(dramTypeItems)},
        {"speedGradeList", F::SpeedGrades, {}},
        {"speedGradeIndex", F::Index, {}},
        {"targetBER", F::Number, {}},
        {"InterpolationTimeResolution", F::Int, {}},
        {"TimeResolution", F::Int, {}},
        {"AmplitudeResolution", F::Voltage, {}},
        {"ResultsPDFPath", F::Text, {}},
        {"SaveToPDF", F::Flag, {}},
        {"SaveToDataset", F::Flag, {}},
        {"EnableScreenshots", F::Flag, {}},
    };
    for (const char* supply : {"vdd", "vddq", "vdd1", "vdd2", "vtt"}) {
        keys.push_back({supply, F::Voltage, {}});
    }
    const struct {
        const char* vref;
        const char* group;
        QStringList groupItems;
        const char* suffix;
        const char* window;
    } inputs[] = {{"UseInternalVrefDQ", "GroupDQBox", {"Bit", "Nibble", "Byte"}, "dq", "tdivwDQ"},
                  {"UseInternalVrefCA", "GroupCABox", {"Individual", "All"}, "ca", "tcivwCA"}};
    for (const auto& input : inputs) {
        keys.push_back({input.vref, F::Flag, {}});
        keys.push_back({input.group, F::Choice, input.groupItems});
        for (const char* threshold :
             {"vih_%1_ac", "vil_%1_ac", "vih_%1_dc", "vil_%1_dc", "vref_%1"}) {
            keys.push_back({QString::fromLatin1(threshold).arg(input.suffix), F::Voltage, {}});
        }
        keys.push_back({input.window, F::Number, {}});
    }
    for (const char* threshold :
         {"se_high_DQS", "se_low_DQS", "se_high_CK", "se_low_CK", "voh_ac", "vol_ac", "voh_dc",
          "vol_dc", "vihDiff_DQS_ac", "vilDiff_DQS_ac", "vihDiff_DQS", "vilDiff_DQS",
          "vihDiff_CK_ac", "vilDiff_CK_ac", "vihDiff_CK", "vilDiff_CK", "voh_diff", "vol_diff"}) {
        keys.push_back({threshold, F::Voltage, {}});
    }
    const std::vector<StoredKey> selections = {
        {"SelectedMeasurementsListMap", F::MeasurementMap, {}},
        {"SelectedGroupMeasurementsListMap", F::GroupMeasurementMap, {}},
        {"SelectedMeasurementsRefSignalListMap", F::ReferenceMap, {}},
        {"EnableComplianceMeasurements", F::Flag, {}},
        {"SelectedComplianceListMap", F::ComplianceMap, {}},
        {"SelectedGroupComplianceListMap", F::GroupComplianceMap, {}},
        {"WritelevelingSelectedSignalList", F::SignalList, {}},
        {"WriteLevelingSelectedRefSignalListMap", F::WriteLevelingMap, {}},
    };
    keys.insert(keys.end(), selections.begin(), selections.end());
    return keys;
}

}  // namespace

const std::vector<StoredKey>& storedKeys() {
    static const std::vector<StoredKey> keys = makeStoredKeys();
    return keys;
}

const StoredKey* findStoredKey(const QString& key) {
    const std::vector<StoredKey>& keys = storedKeys();
    const auto found = std::find_if(keys.begin(), keys.end(),
                                    [&key](const StoredKey& stored) { return stored.key == key; });
    return found == keys.end() ? nullptr : &*found;
}

}  // namespace LaneTapUI
