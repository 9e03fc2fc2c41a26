#pragma once

#include "parameters/MemoryTxRxComponentParameters.h"

namespace LaneTapUI {

// How the simulation is set up on the bus's DDR_Controller instance. Once read, these settings
// override the probe's own choice of cycle, strobe mode and DRAM type. Callers check
// `parametersRead` first: an object that has read no controller answers with the defaults.
class ControllerParameters : public MemoryTxRxComponentParameters {
public:
    ControllerParameters() = default;
    explicit ControllerParameters(db::Instance* instance);
    ~ControllerParameters() override;

    // Reads the base fields, then, for a DDR_Controller only, the simulation settings. All text
    // comparisons ignore case. A missing parameter reads as empty text.
    void readParameters(db::Instance* instance) override;
    bool isReadMode() const override;
    bool isDDRSimulation() const override;
    bool isNoBurst() const override;
    bool isDDR4() const override;
    QString dataRate() const override;
    QString dataRateType() const override;

    // "DataMode" is "read".
    bool readMode = false;
    // "SimulationMode" is anything but "transient".
    bool ddrSimulation = false;
    // "BurstMode" is "No BURST": the strobe doesn't burst.
    bool noBurst = true;
    // "BurstMode" is anything but "LPDDR4".
    bool ddr4 = true;
    // "DataRate", then a blank and "DataRateUnit" unless that unit is "none".
    QString rate = QString::fromLatin1(defaultDataRate);
    // "DataRateType".
    QString rateType = QString::fromLatin1(defaultDataRateType);
};

}  // namespace LaneTapUI
