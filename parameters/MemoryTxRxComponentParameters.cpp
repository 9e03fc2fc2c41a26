#include "parameters/MemoryTxRxComponentParameters.h"

#include "host/Database.h"
#include "parameters/ParamText.h"

namespace LaneTapUI {
namespace {

// A controller lists one width per designator; the strobe numbering holds for all of them. With
// a width count that doesn't match the designators nothing is stored.
void readControllerDesignators(const db::ParamIterConst& params, const QStringList& designators,
                               MemoryTxRxComponentParameters& target) {
    QString dqsIndex = readParamText(params, "DQSIndex");
    if (dqsIndex.isEmpty()) {
        dqsIndex = QStringLiteral("Continuous");
    }
    const QStringList widths = splitOnWhiteSpace(readParamText(params, "RefDesDQM"));
    if (widths.isEmpty() || widths.size() != designators.size()) {
        return;
    }
    for (int i = 0; i < designators.size(); ++i) {
        target.dqmByRefDes.insert(designators.at(i), widths.at(i));
        target.dqsIndexByRefDes.insert(designators.at(i), dqsIndex);
    }
}

// A memory has one width for all its designators and, only with "Tdqs" exactly "yes", one strobe
// numbering per designator. A numbering list that runs out gives an empty numbering.
void readMemoryDesignators(const db::ParamIterConst& params, const QStringList& designators,
                           MemoryTxRxComponentParameters& target) {
    const bool tdqs = readParamText(params, "Tdqs") == QLatin1String("yes");
    const QStringList dqsIndices = splitOnWhiteSpace(readParamText(params, "DQSIndex"));
    QString width = readParamText(params, "RefDesDQM");
    if (width.isEmpty()) {
        width = QStringLiteral("x8");
    }
    for (int i = 0; i < designators.size(); ++i) {
        target.dqmByRefDes.insert(designators.at(i), width);
        target.dqsIndexByRefDes.insert(designators.at(i),
                                       tdqs ? dqsIndices.value(i) : QStringLiteral("Continuous"));
    }
}

bool isDataFamily(const QString& family) {
    return family == QLatin1String("DQ") || family.contains(QLatin1String("DM")) ||
           family.contains(QLatin1String("DBI")) || family == QLatin1String("DQS_t") ||
           family == QLatin1String("DQS_c");
}

}  // namespace

MemoryTxRxComponentParameters::MemoryTxRxComponentParameters(db::Instance* instance) {
    readParameters(instance);
}

MemoryTxRxComponentParameters::~MemoryTxRxComponentParameters() = default;

void MemoryTxRxComponentParameters::readParameters(db::Instance* instance) {
    if (!instance) {
        return;
    }
    const std::string cell = db::get_model_cell_name(instance);
    if (cell == controllerCellName || cell == memoryCellName) {
        const db::ParamIter params(instance);
        ibisModel = !readParamText(params, "DDRIbisFile").endsWith(".ebd", Qt::CaseInsensitive);
        dieMode = readParamText(params, "DieMode").compare("Yes", Qt::CaseInsensitive) == 0;
        const QStringList designators = splitOnWhiteSpace(readParamText(params, "RefDesName"));
        if (cell == controllerCellName) {
            readControllerDesignators(params, designators, *this);
        } else {
            readMemoryDesignators(params, designators, *this);
        }
    }
    parametersRead = true;
}

bool MemoryTxRxComponentParameters::isReadMode() const {
    return false;
}
bool MemoryTxRxComponentParameters::isDDRSimulation() const {
    return false;
}
bool MemoryTxRxComponentParameters::isNoBurst() const {
    return true;
}
bool MemoryTxRxComponentParameters::isDDR4() const {
    return true;
}

QString MemoryTxRxComponentParameters::dataRate() const {
    return QString::fromLatin1(defaultDataRate);
}

QString MemoryTxRxComponentParameters::dataRateType() const {
    return QString::fromLatin1(defaultDataRateType);
}

bool MemoryTxRxComponentParameters::isProbedInstance(const QString& signalType,
                                                     const QString& cellName) const {
    if (!isDDRSimulation()) {
        return false;
    }
    const bool onController = isDataFamily(signalType) && isReadMode();
    return cellName == QLatin1String(onController ? controllerCellName : memoryCellName);
}

bool isPinMode(db::Instance* instance) {
    return MemoryTxRxComponentParameters(instance).ibisModel;
}

bool isDieMode(db::Instance* instance) {
    return MemoryTxRxComponentParameters(instance).dieMode;
}

}  // namespace LaneTapUI
