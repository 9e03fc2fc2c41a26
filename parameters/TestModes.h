#pragma once

#include <QString>

#include "parameters/ControllerParameters.h"

namespace LaneTapUI {

// The items of the setup page's three mode boxes, in the order of their indices.
inline constexpr const char* dramTypeItems[] = {"DDR4", "LPDDR4"};
inline constexpr const char* cycleItems[] = {"Read", "Write"};
inline constexpr const char* strobeModeItems[] = {"Continuous", "Burst"};

// The DRAM type, cycle and strobe mode as the setup page's boxes hold them: the index of each box,
// -1 for a box that shows no item.
struct TestModes {
    int dramType = 0;
    int operationMode = 0;
    int dqsSignalMode = 0;

    // The box's text: "DDR4", "LPDDR4", or empty for no item.
    QString dramTypeText() const;
    // The cycle as the compliance lookups take it: 0 read, 1 anything else.
    int cycle() const { return operationMode != 0 ? 1 : 0; }
    bool readCycle() const { return operationMode == 0; }
};

// Which of the three modes the design's controller decides, so that the setup page locks its box:
// a controller decides the cycle and the strobe mode, and one with a burst pattern the DRAM type,
// which only a controller without one leaves to the probe.
struct DecidedModes {
    bool dramType = false;
    bool operationMode = false;
    bool dqsSignalMode = false;
};
DecidedModes modesDecidedBy(const ControllerParameters& controller);

// What the boxes show once a stored setup is loaded. The stored indices count where the controller
// does not decide: a controller fixes the cycle and the strobe mode, and a bursting controller the
// DRAM type too. A stored DRAM type that names no item leaves the box at `shownDramType`; a stored
// strobe mode or cycle that names no item leaves its box empty.
TestModes dialogTestModes(int storedDramType, int storedDqsSignalMode, int storedOperationMode,
                          const ControllerParameters& controller, int shownDramType = 0);

// The modes by which the block judges which compliance tests apply. The stored values count only
// without a controller: a stored cycle or DRAM type that is not 0 counts as write or LPDDR4, and
// the strobe mode is taken as stored, any value but 0 bursting. A controller decides all three,
// its DRAM type being DDR4 unless its burst pattern is LPDDR4's, a controller without a burst
// pattern included. Where the dialog lets the probe choose the DRAM type of such a controller, the
// two readings differ.
TestModes blockTestModes(int storedDramType, int storedDqsSignalMode, int storedOperationMode,
                         const ControllerParameters& controller);

// Whether compliance is on for a stored switch: stored on, and no DDR simulation at the controller,
// which has no compliance measurements.
bool isComplianceOn(int storedSwitch, const ControllerParameters& controller);

// The cell whose instances receive a signal of `type` in the cycle: data and strobes arrive at the
// controller when reading, everything else at the memory. Compliance is judged on that side.
const QString& receivingCell(const QString& type, bool readCycle);

}  // namespace LaneTapUI
