#include <algorithm>

#include "catalogue/ComplianceLookups.h"
#include "netlist/NetlistText.h"
#include "netlist/NetlistWriter.h"
#include "parameters/ParamText.h"
#include "parameters/TestModes.h"

namespace LaneTapUI {

bool NetlistWriter::isComplianceGroupApplicable(const QString& group, const QList<int>& ids) const {
    const TestModes modes =
        blockTestModes(readParamInt(*parameterIterator, "dramType"),
                       readParamInt(*parameterIterator, "dqsSignalMode"),
                       readParamInt(*parameterIterator, "modeOfOperation"), *controllerParameters);
    const QMultiHash<qint32, QString> offered =
        complianceNamesFor(group, modes.dramTypeText(), modes.cycle(), modes.dqsSignalMode);
    return std::any_of(ids.cbegin(), ids.cend(), [&](int id) { return offered.contains(id); });
}

void NetlistWriter::writeComplianceMap(QByteArray& text) const {
    int n = 1;
    const IntListMap groups =
        readParamIntListMap(*parameterIterator, "SelectedGroupComplianceListMap");
    const QStringList groupKeys = groups.keys();
    for (const QString& group : groupKeys) {
        const QList<int> ids = groups.value(group);
        // One fitting id lets the whole group through, the ids that don't fit with it.
        if (!isComplianceGroupApplicable(group, ids)) {
            continue;
        }
        // Only a key that is a signal type finds signals; deeper tree keys write nothing.
        const bool hasSignal =
            std::any_of(signals.cbegin(), signals.cend(),
                        [&](const SignalRecord* record) { return record->signalType == group; });
        if (!hasSignal) {
            continue;
        }
        QStringList fields{group};
        for (int id : ids) {
            fields << QString::number(id);
        }
        NetlistText::appendListLine(text, "ComplianceMeasMap", n++, fields);
    }
}

}  // namespace LaneTapUI
