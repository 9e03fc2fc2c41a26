#include <QVarLengthArray>
#include <algorithm>

#include "netlist/NetlistText.h"
#include "netlist/NetlistWriter.h"

namespace LaneTapUI {
namespace {

using RequiredTypes = QVarLengthArray<QString, 2>;

bool isAddressType(const QString& type) {
    return type == QLatin1String("A") || type == QLatin1String("CA") ||
           type == QLatin1String("CKE");
}

// Clock 0 of the record's channel and designator: the clock of every signal that needs one.
QString clockKey(const SignalRecord& record) {
    return QStringLiteral("CK_") + record.channel + QLatin1Char('_') + record.refDes +
           QStringLiteral("_CK0");
}

QString whereText(const SignalRecord& record) {
    return QStringLiteral(" of Reference Designator '") + record.refDes +
           QStringLiteral("' of Channel ID '") + record.channel + QLatin1Char('\'');
}

// The types a signal needs a companion of, in the order the check takes them up. Asked for every
// receiving signal of a board: the lists are made once.
const RequiredTypes& requiredTypes(const SignalRecord& record) {
    static const QString dq = QStringLiteral("DQ");
    static const QString dqs = QStringLiteral("DQS");
    static const QString ck = QStringLiteral("CK");
    static const QString dm = QStringLiteral("DM");
    static const RequiredTypes forData{dqs, ck};
    static const RequiredTypes forStrobe{dq, ck};
    static const RequiredTypes forClock{ck};
    static const RequiredTypes forMask{dm};
    static const RequiredTypes none;
    const QString& type = record.signalType;
    if (type == dq) {
        return forData;
    }
    if (type == dqs) {
        return forStrobe;
    }
    if (isAddressType(type) || type == ck) {
        return forClock;
    }
    return type == dm ? forMask : none;
}

using CompanionGroup = NetlistWriter::CompanionGroup;

// The group a signal is searched with; a signal of no group is searched alone.
CompanionGroup companionGroup(const SignalRecord& record) {
    const QString& type = record.signalType;
    if (type == QLatin1String("DQ")) {
        return {CompanionGroup::DataByte, record.channel, record.refDes,
                record.signalIndex.toInt() / 8};
    }
    if (isAddressType(type)) {
        return {CompanionGroup::Address, record.channel, record.refDes, 0};
    }
    return {};
}

// The record's own warning when its search misses companions. This text carries no line end of
// its own.
QString missingCompanionsWarning(const SignalRecord& record,
                                 const NetlistWriter::CompanionSearch& search) {
    return QStringLiteral("For ") + record.key + QStringLiteral(", reference signal ID(s) ") +
           search.missing.join(QStringLiteral(", ")) +
           QStringLiteral(
               " are not connected. Some compliance test "
               "would not run for it.");
}

}  // namespace

uint qHash(const NetlistWriter::CompanionGroup& group, uint seed) {
    // Only looked up, never walked: any mix of the parts serves.
    return qHash(group.channel, seed) ^ (qHash(group.refDes, seed) * 31u) ^
           uint(group.byte * 4 + int(group.kind));
}

// Companions are found by designator, not by node, so a die or receiver node of a signal has
// the pin records of its byte as companions.
QStringList NetlistWriter::expectedReferenceKeys(const SignalRecord* record) const {
    QStringList keys;
    if (!record) {
        return keys;
    }
    const QString& type = record->signalType;
    const int index = record->signalIndex.toInt();
    const QString prefix = record->channel + QLatin1Char('_') + record->refDes;
    if (type == QLatin1String("DQ")) {
        keys << QStringLiteral("DQS_") + prefix + QStringLiteral("_DQS") +
                    QString::number(index / 8)
             << clockKey(*record);
    } else if (type == QLatin1String("DQS")) {
        for (int bit = index * 8; bit <= index * 8 + 7; ++bit) {
            keys << QStringLiteral("DQ_") + prefix + QStringLiteral("_DQ") + QString::number(bit);
        }
        keys << clockKey(*record);
    } else if (isAddressType(type)) {
        keys << clockKey(*record);
    } else if (type == QLatin1String("DM") || type == QLatin1String("CK")) {
        keys << record->key;
    }
    return keys;
}

SignalRecordHash NetlistWriter::connectedReferences(const SignalRecord* record) const {
    SignalRecordHash connected;
    for (const QString& key : expectedReferenceKeys(record)) {
        if (SignalRecord* reference = signals.value(key)) {
            connected.insert(key, reference);
        }
    }
    return connected;
}

QHash<QString, int> NetlistWriter::requiredReferenceTypes(const SignalRecord* record) const {
    QHash<QString, int> required;
    if (record) {
        for (const QString& type : requiredTypes(*record)) {
            required.insert(type, 0);
        }
    }
    return required;
}

QString NetlistWriter::describeMissingReference(const SignalRecord* record,
                                                const QString& requiredType) const {
    if (!record) {
        return QString();
    }
    const QString& type = record->signalType;
    const int index = record->signalIndex.toInt();
    if (type == QLatin1String("DQ") && requiredType == QLatin1String("DQS")) {
        return QStringLiteral("DQS") + QString::number(index / 8) + whereText(*record);
    }
    if ((type == QLatin1String("DQ") || isAddressType(type) || type == QLatin1String("DQS")) &&
        requiredType == QLatin1String("CK")) {
        return QStringLiteral("CK0") + whereText(*record);
    }
    if (type == QLatin1String("DQS") && requiredType == QLatin1String("DQ")) {
        // The upper bound is one past the last bit of the byte, as the module's users know it.
        return QStringLiteral("(at least one of) DQ") + QString::number(index * 8) +
               QStringLiteral("-DQ") + QString::number(index * 8 + 8) + whereText(*record);
    }
    return QString();
}

const QList<SignalRecord*>* NetlistWriter::connectionDiagnostics(const SignalRecord* record) const {
    const CompanionSearch* search = diagnoses.value(record);
    if (!search) {
        return nullptr;
    }
    if (!search->missing.isEmpty()) {
        NetlistText::reportWarning(missingCompanionsWarning(*record, *search));
    }
    return &search->companions;
}

void NetlistWriter::diagnoseReceivingSignals() {
    // Only looked up, never walked: its order does not matter, so it is sized once. What a search
    // finds is the same for every signal of its group, whichever comes first.
    diagnoses.reserve(signals.size());
    for (const SignalRecord* record : qAsConst(signals)) {
        if (isReceiving(*record)) {
            diagnoses.insert(record, diagnose(record));
        }
    }
}

const NetlistWriter::CompanionSearch* NetlistWriter::diagnose(const SignalRecord* record) {
    // Most command signals need no companion: an empty search stands for them all.
    if (requiredTypes(*record).isEmpty()) {
        return &nothingToSearch;
    }
    const CompanionGroup group = companionGroup(*record);
    if (group.kind == CompanionGroup::Alone) {
        return &searches.emplace_back(searchCompanions(record));
    }
    const CompanionSearch*& known = searchesByGroup[group];
    if (!known) {
        known = &searches.emplace_back(searchCompanions(record));
    }
    return known;
}

NetlistWriter::CompanionSearch NetlistWriter::searchCompanions(const SignalRecord* record) const {
    const SignalRecordHash connected = connectedReferences(record);
    CompanionSearch search{connected.values(), QStringList()};
    // Most signals have all they need; only a signal that misses some is looked at closer.
    const RequiredTypes& types = requiredTypes(*record);
    const bool complete = std::all_of(types.cbegin(), types.cend(), [&](const QString& type) {
        return std::any_of(
            connected.cbegin(), connected.cend(),
            [&](const SignalRecord* reference) { return reference->signalType == type; });
    });
    if (complete) {
        return search;
    }

    QHash<QString, int> required = requiredReferenceTypes(record);
    // One companion of a type is enough: a strobe needs at least one bit of its byte.
    for (const SignalRecord* reference : connected) {
        const auto count = required.find(reference->signalType);
        if (count != required.end()) {
            ++count.value();
        }
    }
    for (auto it = required.cbegin(); it != required.cend(); ++it) {
        if (it.value() == 0) {
            search.missing << describeMissingReference(record, it.key());
        }
    }
    return search;
}

}  // namespace LaneTapUI
