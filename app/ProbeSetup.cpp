#include "app/ProbeSetup.h"

#include "dialog/DefaultReferences.h"
#include "discovery/SignalDiscovery.h"
#include "parameters/ParamText.h"

namespace lanetap {

using namespace LaneTapUI;

ProbeSetup::ProbeSetup(db::Design* design, db::Instance* probeInstance)
    : controller(findControllerParameters(design)), probe(probeInstance) {
    discoverSignals(design, *controller, DiscoveryKind::Dialog, store, all);
    QHash<QString, QString> clockByNode;
    collectClockSignals(all, clockByNode);
    assignDefaultReferences(design, all, clockByNode);
    available = all;
    const db::ParamIter in(probe);
    modes = dialogTestModes(readParamInt(in, "dramType"), readParamInt(in, "dqsSignalMode"),
                            readParamInt(in, "modeOfOperation"), *controller);
    moveKeys(readParamStringList(in, "SelectedSignalList"), available, selected);
    restoreMeasurements(readParamIntListMap(in, "SelectedMeasurementsListMap"), selected);
    restoreGroupMeasurements(readParamIntListMap(in, "SelectedGroupMeasurementsListMap"),
                             groupMeasurements);
    restoreReferences(readParamReferenceMap(in, "SelectedMeasurementsRefSignalListMap"), selected,
                      all);
    restoreSignalCompliance(readParamIntListMap(in, "SelectedComplianceListMap"), selected);
    restoreGroupCompliance(readParamIntListMap(in, "SelectedGroupComplianceListMap"), modes,
                           groupCompliance);
}

QString ProbeSetup::stored(const char* key) const {
    return readParamText(db::ParamIter(probe), key);
}

int ProbeSetup::storedInt(const char* key) const {
    return readParamInt(db::ParamIter(probe), key);
}

QHash<QString, QString> ProbeSetup::selectionTexts() const {
    return {{"SelectedSignalList", stringListText(selected.keys())},
            {"SelectedMeasurementsListMap", measurementMapText(selected)},
            {"SelectedGroupMeasurementsListMap", groupMeasurementMapText(groupMeasurements)},
            {"SelectedMeasurementsRefSignalListMap", referenceMapText(selected)},
            {"SelectedComplianceListMap", complianceMapText(selected)},
            {"SelectedGroupComplianceListMap", groupComplianceMapText(groupCompliance)}};
}

}  // namespace lanetap
