#include "app/SettingsLine.h"

#include "netlist/BlockGrammar.h"
#include "netlist/BlockSettings.h"
#include "parameters/MemoryTxRxComponentParameters.h"
#include "standin/DesignFile.h"
#include "standin/ItemDefinition.h"

namespace lanetap {
namespace {

using LaneTapUI::SettingForm;

// The form in which the settings line takes the stored `key` of an instance of `cell`, or false
// for a key that does not reach it.
bool settingFormOf(const std::string& cell, const QString& key, SettingForm& form) {
    if (cell == standin::probeCellName) {
        for (const LaneTapUI::Setting& setting : LaneTapUI::blockSettings) {
            if (setting.parameter && key == QLatin1String(setting.parameter)) {
                form = setting.form;
                return true;
            }
        }
        // The speed grade is an item of this list.
        form = SettingForm::Computed;
        return key == QLatin1String("speedGradeList");
    }
    // The controller's data rate goes onto the line as "RATE UNIT", one blank between.
    form = SettingForm::Computed;
    return cell == LaneTapUI::controllerCellName &&
           (key == QLatin1String("DataRate") || key == QLatin1String("DataRateUnit"));
}

}  // namespace

QString settingsLineProblem(const standin::Instance& instance, const QString& key,
                            const QString& value) {
    SettingForm form;
    if (!settingFormOf(instance.cell, key, form)) {
        return QString();
    }
    QString problem;
    if (key == QLatin1String("speedGradeList")) {
        for (const QString& item : value.split(QLatin1Char(','))) {
            problem = LaneTapUI::BlockGrammar::valueProblem(form, item);
            if (!problem.isEmpty()) {
                problem = QString("names the speed grade %1, which %2")
                              .arg(standin::quoted(item), problem);
                break;
            }
        }
    } else {
        problem = LaneTapUI::BlockGrammar::valueProblem(form, value);
    }
    if (problem.isEmpty()) {
        return QString();
    }
    return QString(
               "the value of %1 of instance %2 %3, which the settings line of the block "
               "cannot carry")
        .arg(key, standin::quoted(QString::fromStdString(instance.name)), problem);
}

}  // namespace lanetap
