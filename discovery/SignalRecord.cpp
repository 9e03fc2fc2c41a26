#include "discovery/SignalRecord.h"

#include <algorithm>

#include "catalogue/ComplianceLookups.h"
#include "catalogue/MeasurementTypes.h"

namespace LaneTapUI {

const InstanceNodes* InstanceNodesHash::find(const QString& name) const {
    if (!hashed.isEmpty()) {
        const auto found = hashed.constFind(name);
        return found == hashed.constEnd() ? nullptr : &found.value();
    }
    return hasOnly && onlyName == name ? &onlyNodes : nullptr;
}

InstanceNodes* InstanceNodesHash::find(const QString& name) {
    return const_cast<InstanceNodes*>(qAsConst(*this).find(name));
}

void InstanceNodesHash::insert(const QString& name, const InstanceNodes& nodes) {
    if (!hasOnly) {
        hasOnly = true;
        onlyName = name;
        onlyNodes = nodes;
        return;
    }
    if (hashed.isEmpty()) {
        hashed.insert(onlyName, onlyNodes);
        onlyName.clear();
        onlyNodes = InstanceNodes();
    }
    hashed.insert(name, nodes);
}

QStringList InstanceNodesHash::keys() const {
    if (!hashed.isEmpty()) {
        return hashed.keys();
    }
    return hasOnly ? QStringList{onlyName} : QStringList();
}

const InstanceNodes& InstanceNodesHash::first() const {
    return hashed.isEmpty() ? onlyNodes : hashed.cbegin().value();
}

const QString& InstanceNodesHash::firstKey() const {
    return hashed.isEmpty() ? onlyName : hashed.cbegin().key();
}

void SignalRecord::addMeasurement(const QString& name) {
    if (measurements.contains(name)) {
        return;
    }
    measurements.insert(name, measurementTypesByDisplayName().value(name, StrobedEye));
    addReference(name, defaultReference);
}

void SignalRecord::removeMeasurement(const QString& name) {
    measurements.remove(name);
    refSignals.remove(name);
}

void SignalRecord::setMeasurements(const QList<int>& codes) {
    measurements.clear();
    const QHash<MeasurementType, QString>& names = measurementDisplayNames();
    for (int code : codes) {
        const auto known = names.constFind(static_cast<MeasurementType>(code));
        if (known != names.constEnd()) {
            measurements.insert(known.value(), code);
        }
    }
}

void SignalRecord::setMeasurementsWithReferences(const QList<int>& codes) {
    setMeasurements(codes);
    for (auto it = measurements.cbegin(); it != measurements.cend(); ++it) {
        addReference(it.key(), defaultReference);
    }
}

void SignalRecord::setCompliance(const QList<int>& ids) {
    compliance.clear();
    for (int id : ids) {
        if (hasCompliance(signalType, id)) {
            compliance.replace(complianceName(signalType, id), id);
        }
    }
}

void SignalRecord::addCompliance(const QString& name, const QString& dramType) {
    for (qint32 id : complianceIdsWithName(signalType, dramType, name)) {
        compliance.insert(name, id);
    }
}

void SignalRecord::removeCompliance(const QString& name) {
    compliance.remove(name);
}

void SignalRecord::addReference(const QString& name, SignalRecord* reference) {
    if (!needsReference(name)) {
        return;
    }
    if (!reference) {
        refSignals.insert(name, SignalRecordHash());
        return;
    }
    SignalRecordHash& references = refSignals[name];
    if (!references.contains(reference->key)) {
        references.insert(reference->key, reference);
    }
}

void SignalRecord::removeReference(const QString& name, const SignalRecord* reference) {
    const auto entry = refSignals.find(name);
    if (reference && entry != refSignals.end()) {
        entry->remove(reference->key);
    }
}

void SignalRecord::setReferences(const QString& name, const SignalRecordHash& references) {
    refSignals.remove(name);
    refSignals.insert(name, references);
}

SignalRecordHash SignalRecord::referencesOf(const QString& name) const {
    return refSignals.value(name);
}

bool SignalRecord::allMeasurementsReferenced() const {
    return !refSignals.isEmpty() &&
           std::none_of(refSignals.cbegin(), refSignals.cend(),
                        [](const SignalRecordHash& references) { return references.isEmpty(); });
}

QString SignalRecord::instanceNames() const {
    // Most signals reach one instance: its name is shared, not joined.
    if (instances.size() == 1) {
        return instances.firstKey();
    }
    return instances.keys().join(QStringLiteral(", "));
}

void SignalRecord::addWlRefSignal(SignalRecord* reference) {
    if (reference && !wlRefSignals.contains(reference->key)) {
        wlRefSignals.insert(reference->key, reference);
    }
}

void SignalRecord::removeWlRefSignal(const SignalRecord* reference) {
    if (reference) {
        wlRefSignals.remove(reference->key);
    }
}

namespace {

// The inverse node of a die-level pair; a record without nets keeps its nets empty.
QString inverseOf(const QString& net) {
    return net.isEmpty() ? net : net + QLatin1String("_Inv");
}

}  // namespace

InstanceNodes SignalRecord::firstNodes(const QString& port, const QString& net) const {
    InstanceNodes nodes;
    nodes.single = polarity == QLatin1String("s");
    if (polarity == QLatin1String("c")) {
        nodes.nPort = port;
        nodes.nNet = net;
    } else {
        nodes.pPort = port;
        nodes.pNet = net;
    }
    return nodes;
}

void SignalRecord::addInstanceNode(const QString& instance, const QString& cell,
                                   const QString& port, const QString& net) {
    InstanceNodes* existing = instances.find(instance);
    if (!existing) {
        instances.insert(instance, firstNodes(port, net));
        models[cell].append(instance);
        return;
    }
    const bool dieNode = nodeLabel.endsWith(QLatin1String("Die"));
    InstanceNodes& nodes = *existing;
    if (polarity == QLatin1String("c")) {
        nodes.pPort = port;
        nodes.pNet = net;
        if (dieNode && !nodes.single) {
            nodes.nPort = port + QLatin1String("_Inv");
            nodes.nNet = inverseOf(net);
        }
    } else if (polarity == QLatin1String("t") && !nodes.single) {
        nodes.nPort = dieNode ? port + QLatin1String("_Inv") : port;
        nodes.nNet = dieNode ? inverseOf(nodes.pNet) : net;
    }
}

}  // namespace LaneTapUI
