#include "parameters/ControllerParameters.h"

#include "host/Database.h"
#include "parameters/ParamText.h"

namespace LaneTapUI {
namespace {

bool sameText(const QString& text, const char* expected) {
    return text.compare(QLatin1String(expected), Qt::CaseInsensitive) == 0;
}

}  // namespace

ControllerParameters::ControllerParameters(db::Instance* instance) {
    readParameters(instance);
}

ControllerParameters::~ControllerParameters() = default;

void ControllerParameters::readParameters(db::Instance* instance) {
    MemoryTxRxComponentParameters::readParameters(instance);
    if (!instance || db::get_model_cell_name(instance) != controllerCellName) {
        return;
    }
    const db::ParamIter params(instance);
    readMode = sameText(readParamText(params, "DataMode"), "read");
    ddrSimulation = !sameText(readParamText(params, "SimulationMode"), "transient");
    const QString burstMode = readParamText(params, "BurstMode");
    noBurst = sameText(burstMode, "No BURST");
    ddr4 = !sameText(burstMode, "LPDDR4");
    rate = readParamText(params, "DataRate");
    const QString rateUnit = readParamText(params, "DataRateUnit");
    if (!sameText(rateUnit, "none")) {
        rate += QLatin1Char(' ') + rateUnit;
    }
    rateType = readParamText(params, "DataRateType");
}

bool ControllerParameters::isReadMode() const {
    return readMode;
}
bool ControllerParameters::isDDRSimulation() const {
    return ddrSimulation;
}
bool ControllerParameters::isNoBurst() const {
    return noBurst;
}
bool ControllerParameters::isDDR4() const {
    return ddr4;
}
QString ControllerParameters::dataRate() const {
    return rate;
}
QString ControllerParameters::dataRateType() const {
    return rateType;
}

}  // namespace LaneTapUI
