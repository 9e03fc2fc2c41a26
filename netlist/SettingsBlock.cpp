#include "netlist/BlockSettings.h"
#include "netlist/NetlistText.h"
#include "netlist/NetlistWriter.h"
#include "parameters/ParamText.h"

namespace LaneTapUI {
namespace {

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
    for (const Setting& setting : blockSettings) {
        const QString name = QString::fromLatin1(setting.name);
        QString value;
        switch (setting.form) {
            case SettingForm::Text:
            case SettingForm::Number:
            case SettingForm::Voltage:
                // Blanks are not protected: a path with a blank goes out as it is.
                value = readParamText(parameters, setting.parameter);
                break;
            case SettingForm::Quoted:
                value = inQuotes(readParamText(parameters, setting.parameter));
                break;
            case SettingForm::Computed:
                value = computed.value(name);
                break;
        }
        text += QLatin1Char(' ') + name + QLatin1Char('=') + value;
    }
    return text + QLatin1String(NetlistText::lineContinuation);
}

}  // namespace LaneTapUI
