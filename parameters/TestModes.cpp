#include "parameters/TestModes.h"

#include <iterator>

namespace LaneTapUI {

namespace {

template <std::size_t count>
int itemOrNone(int index) {
    return index >= 0 && index < int(count) ? index : -1;
}

}  // namespace

QString TestModes::dramTypeText() const {
    const int item = itemOrNone<std::size(dramTypeItems)>(dramType);
    return item < 0 ? QString() : QString::fromLatin1(dramTypeItems[item]);
}

DecidedModes modesDecidedBy(const ControllerParameters& controller) {
    DecidedModes decided;
    decided.operationMode = decided.dqsSignalMode = controller.parametersRead;
    decided.dramType = controller.parametersRead && !controller.isNoBurst();
    return decided;
}

TestModes dialogTestModes(int storedDramType, int storedDqsSignalMode, int storedOperationMode,
                          const ControllerParameters& controller, int shownDramType) {
    TestModes modes;
    const int stored = itemOrNone<std::size(dramTypeItems)>(storedDramType);
    modes.dramType = stored < 0 ? shownDramType : stored;
    const DecidedModes decided = modesDecidedBy(controller);
    if (decided.dramType) {
        modes.dramType = controller.isDDR4() ? 0 : 1;
    }
    modes.dqsSignalMode = decided.dqsSignalMode
                              ? (controller.isNoBurst() ? 0 : 1)
                              : itemOrNone<std::size(strobeModeItems)>(storedDqsSignalMode);
    modes.operationMode = decided.operationMode
                              ? (controller.isReadMode() ? 0 : 1)
                              : itemOrNone<std::size(cycleItems)>(storedOperationMode);
    return modes;
}

TestModes blockTestModes(int storedDramType, int storedDqsSignalMode, int storedOperationMode,
                         const ControllerParameters& controller) {
    TestModes modes;
    if (!controller.parametersRead) {
        modes.dramType = storedDramType != 0 ? 1 : 0;
        modes.operationMode = storedOperationMode != 0 ? 1 : 0;
        modes.dqsSignalMode = storedDqsSignalMode;
        return modes;
    }
    modes.dramType = controller.isDDR4() ? 0 : 1;
    modes.operationMode = controller.isReadMode() ? 0 : 1;
    modes.dqsSignalMode = controller.isNoBurst() ? 0 : 1;
    return modes;
}

bool isComplianceOn(int storedSwitch, const ControllerParameters& controller) {
    // A controller that was never read answers as a transient simulation.
    return storedSwitch != 0 && !controller.isDDRSimulation();
}

const QString& receivingCell(const QString& type, bool readCycle) {
    // Asked for every signal of a board: the names are made once.
    static const QString controller = QString::fromLatin1(controllerCellName);
    static const QString memory = QString::fromLatin1(memoryCellName);
    const bool dataOrStrobe = type == QLatin1String("DQ") || type == QLatin1String("DQS");
    return dataOrStrobe && readCycle ? controller : memory;
}

}  // namespace LaneTapUI
