#pragma once

#include <QHash>
#include <QString>

namespace db {
class Instance;
}

namespace LaneTapUI {

// The two library cells of a bus design that the system reads.
constexpr char controllerCellName[] = "DDR_Controller";
constexpr char memoryCellName[] = "DDR_Memory";

// What a reader that has no controller assumes of the data rate.
constexpr char defaultDataRate[] = "1.0 Gbps";
constexpr char defaultDataRateType[] = "1T";

// What a DDR_Controller or DDR_Memory instance says of itself: its package model, whether its die
// pads are brought out and how each reference designator is organised. The questions that only a
// controller answers get neutral answers here; ControllerParameters gives the real ones.
class MemoryTxRxComponentParameters {
public:
    MemoryTxRxComponentParameters() = default;
    // Reads the instance as readParameters does.
    explicit MemoryTxRxComponentParameters(db::Instance* instance);
    virtual ~MemoryTxRxComponentParameters();

    // Reads an instance of either DDR cell; any other cell only marks the object as read. Adds to
    // the designator hashes without clearing them, so a later instance overrides a designator
    // that both have. A null instance is ignored.
    virtual void readParameters(db::Instance* instance);
    virtual bool isReadMode() const;
    virtual bool isDDRSimulation() const;
    virtual bool isNoBurst() const;
    virtual bool isDDR4() const;
    virtual QString dataRate() const;
    virtual QString dataRateType() const;

    // Whether, in a DDR simulation, the signal of family `signalType` ("DQ", "DQS_t", "CK_c", ...)
    // is seen at the receiver output of an instance of `cellName`: data signals on the controller
    // in read mode and on the memory in write mode, all others on the memory.
    bool isProbedInstance(const QString& signalType, const QString& cellName) const;

    // False when "DDRIbisFile" names an .ebd board description.
    bool ibisModel = true;
    // "DieMode" is "Yes", whatever the case.
    bool dieMode = false;
    // An instance, of any cell, has been read.
    bool parametersRead = false;
    // Reference designator to its DQ width, "x4" or "x8".
    QHash<QString, QString> dqmByRefDes;
    // Reference designator to its DQS numbering, "Continuous", "Even" or "Odd".
    QHash<QString, QString> dqsIndexByRefDes;
};

// True unless the instance is a DDR instance with an .ebd model.
bool isPinMode(db::Instance* instance);
// True for a DDR instance whose die nodes are asked for.
bool isDieMode(db::Instance* instance);

}  // namespace LaneTapUI
