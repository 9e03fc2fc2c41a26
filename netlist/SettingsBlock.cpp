#include "netlist/NetlistText.h"
#include "netlist/NetlistWriter.h"
#include "parameters/ParamText.h"

namespace LaneTapUI {
namespace {

// How the value of a setting is made.
enum class Form {
    // The stored text of the probe parameter, as it stands.
    Plain,
    // The same in double quotes.
    Quoted,
    // Worked out from the controller or from stored numbers.
    Computed,
};

struct Setting {
    const char* name;
    Form form;
    // The probe parameter of a plain or quoted setting.
    const char* parameter;
};

// The settings in the order the module reads them.
constexpr Setting settings[] = {
    {"Settings_ReadWriteOperation", Form::Computed, nullptr},
    {"EnableCompliance", Form::Computed, nullptr},
    {"EnableScreenshots", Form::Plain, "EnableScreenshots"},
    {"NEBProperties_SaveDataset", Form::Plain, "SaveToDataset"},
    {"NEBProperties_SaveReportPDF", Form::Plain, "SaveToPDF"},
    {"NEBProperties_ReportPath", Form::Plain, "ResultsPDFPath"},
    {"TargetBER", Form::Plain, "targetBER"},
    {"InterpolationTimePoints", Form::Plain, "InterpolationTimeResolution"},
    {"TimePoints", Form::Plain, "TimeResolution"},
    {"AmplitudeResolution", Form::Plain, "AmplitudeResolution"},
    {"DataRate", Form::Computed, nullptr},
    {"CATopology", Form::Computed, nullptr},
    {"SpeedGrade", Form::Computed, nullptr},
    {"Settings_pcboCustomSG", Form::Computed, nullptr},
    {"Settings_DQSSignalType", Form::Computed, nullptr},
    {"Settings_chkLPDDR4", Form::Computed, nullptr},
    {"Settings_chkLPDDR4X", Form::Computed, nullptr},
    {"Settings_InputVDD", Form::Plain, "vdd"},
    {"Settings_InputVDDQ", Form::Plain, "vddq"},
    {"Settings_InputVDD1", Form::Plain, "vdd1"},
    {"Settings_InputVDD2", Form::Plain, "vdd2"},
    {"Settings_InputRefV_VTT", Form::Plain, "vtt"},
    {"UseInternalVrefDQ", Form::Plain, "UseInternalVrefDQ"},
    {"GroupDQBy", Form::Quoted, "GroupDQBox"},
    {"Settings_InputThreshold_Vih_ac_DQ", Form::Plain, "vih_dq_ac"},
    {"Settings_InputThreshold_Vil_ac_DQ", Form::Plain, "vil_dq_ac"},
    {"Settings_InputThreshold_Vih_dc_DQ", Form::Plain, "vih_dq_dc"},
    {"Settings_InputThreshold_Vil_dc_DQ", Form::Plain, "vil_dq_dc"},
    {"Settings_InputRefV_VrefDQ", Form::Plain, "vref_dq"},
    {"Settings_TimingWindowDQ", Form::Plain, "tdivwDQ"},
    {"UseInternalVrefCA", Form::Plain, "UseInternalVrefCA"},
    {"GroupCABy", Form::Quoted, "GroupCABox"},
    {"Settings_InputThreshold_Vih_ac_CA", Form::Plain, "vih_ca_ac"},
    {"Settings_InputThreshold_Vil_ac_CA", Form::Plain, "vil_ca_ac"},
    {"Settings_InputThreshold_Vih_dc_CA", Form::Plain, "vih_ca_dc"},
    {"Settings_InputThreshold_Vil_dc_CA", Form::Plain, "vil_ca_dc"},
    {"Settings_InputRefV_VrefCA", Form::Plain, "vref_ca"},
    {"Settings_TimingWindowCA", Form::Plain, "tcivwCA"},
    {"Settings_InputThreshold_DQS_SE_High", Form::Plain, "se_high_DQS"},
    {"Settings_InputThreshold_DQS_SE_Low", Form::Plain, "se_low_DQS"},
    {"Settings_InputThreshold_CLK_SE_High", Form::Plain, "se_high_CK"},
    {"Settings_InputThreshold_CLK_SE_Low", Form::Plain, "se_low_CK"},
    {"Settings_InputThreshold_Voh_ac", Form::Plain, "voh_ac"},
    {"Settings_InputThreshold_Vol_ac", Form::Plain, "vol_ac"},
    {"Settings_InputThreshold_Voh_dc", Form::Plain, "voh_dc"},
    {"Settings_InputThreshold_Vol_dc", Form::Plain, "vol_dc"},
    {"Settings_VIHdiff_ac_DQS", Form::Plain, "vihDiff_DQS_ac"},
    {"Settings_VILdiff_ac_DQS", Form::Plain, "vilDiff_DQS_ac"},
    {"Settings_VIHdiff_DQS", Form::Plain, "vihDiff_DQS"},
    {"Settings_VILdiff_DQS", Form::Plain, "vilDiff_DQS"},
    {"Settings_VIHdiff_ac_CK", Form::Plain, "vihDiff_CK_ac"},
    {"Settings_VILdiff_ac_CK", Form::Plain, "vilDiff_CK_ac"},
    {"Settings_VIHdiff_CK", Form::Plain, "vihDiff_CK"},
    {"Settings_VILdiff_CK", Form::Plain, "vilDiff_CK"},
    {"Settings_VOHdiff_ac", Form::Plain, "voh_diff"},
    {"Settings_VOLdiff_ac", Form::Plain, "vol_diff"},
};

static_assert(sizeof(settings) / sizeof(settings[0]) == 56, "the module reads 56 settings");

QString inQuotes(const QString& text) {
    return QLatin1Char('"') + text + QLatin1Char('"');
}

}  // namespace

QString NetlistWriter::writeSettingsBlock() const {
    const db::ParamIterConst& parameters = *parameterIterator;

    // The cycle, the data rate and the topology are the controller's; the strobe mode and the
    // DRAM type are the probe's. Nothing reconciles the two here.
    const int dramType = readParamInt(parameters, "dramType");
    // An index outside the stored list, as the -1 of an empty speed grade box, gives an empty
    // speed grade rather than a guess.
    const QString speedGrade = readParamStringList(parameters, "speedGradeList")
                                   .value(readParamInt(parameters, "speedGradeIndex"));
    const QHash<QString, QString> computed{
        {QStringLiteral("Settings_ReadWriteOperation"),
         inQuotes(controllerParameters->isReadMode() ? QStringLiteral("read")
                                                     : QStringLiteral("write"))},
        {QStringLiteral("EnableCompliance"),
         isComplianceEnabled() ? QStringLiteral("1") : QStringLiteral("0")},
        {QStringLiteral("DataRate"), controllerParameters->dataRate()},
        {QStringLiteral("CATopology"), controllerParameters->dataRateType() == QLatin1String("1T")
                                           ? QStringLiteral("1")
                                           : QStringLiteral("2")},
        {QStringLiteral("SpeedGrade"), speedGrade},
        {QStringLiteral("Settings_pcboCustomSG"), speedGrade},
        {QStringLiteral("Settings_DQSSignalType"),
         inQuotes(readParamInt(parameters, "dqsSignalMode") != 0 ? QStringLiteral("burst")
                                                                 : QStringLiteral("continuous"))},
        {QStringLiteral("Settings_chkLPDDR4"),
         dramType == 1 ? QStringLiteral("1") : QStringLiteral("0")},
        {QStringLiteral("Settings_chkLPDDR4X"),
         dramType == 2 ? QStringLiteral("1") : QStringLiteral("0")},
    };

    QString text;
    for (const Setting& setting : settings) {
        const QString name = QString::fromLatin1(setting.name);
        QString value;
        switch (setting.form) {
            case Form::Plain:
                // Blanks are not protected: a path with a blank goes out as it is.
                value = readParamText(parameters, setting.parameter);
                break;
            case Form::Quoted:
                value = inQuotes(readParamText(parameters, setting.parameter));
                break;
            case Form::Computed:
                value = computed.value(name);
                break;
        }
        text += QLatin1Char(' ') + name + QLatin1Char('=') + value;
    }
    return text + NetlistText::lineContinuation;
}

}  // namespace LaneTapUI
