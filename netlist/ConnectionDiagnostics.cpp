#include "netlist/NetlistText.h"
#include "netlist/NetlistWriter.h"

namespace LaneTapUI {
namespace {

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

}  // namespace

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
    if (!record) {
        return required;
    }
    const QString& type = record->signalType;
    if (type == QLatin1String("DQ")) {
        required.insert(QStringLiteral("DQS"), 0);
        required.insert(QStringLiteral("CK"), 0);
    } else if (type == QLatin1String("DQS")) {
        required.insert(QStringLiteral("DQ"), 0);
        required.insert(QStringLiteral("CK"), 0);
    } else if (isAddressType(type)) {
        required.insert(QStringLiteral("CK"), 0);
    } else if (type == QLatin1String("DM") || type == QLatin1String("CK")) {
        required.insert(type, 0);
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

QStringList NetlistWriter::connectionDiagnostics(const SignalRecord* record) const {
    auto known = diagnoses.constFind(record);
    if (known == diagnoses.constEnd()) {
        known = diagnoses.insert(record, diagnose(record));
    }
    if (!known->warning.isEmpty()) {
        NetlistText::reportWarning(known->warning);
    }
    return known->companions;
}

NetlistWriter::Diagnosis NetlistWriter::diagnose(const SignalRecord* record) const {
    const SignalRecordHash connected = connectedReferences(record);
    QHash<QString, int> required = requiredReferenceTypes(record);
    // One companion of a type is enough: a strobe needs at least one bit of its byte.
    for (const SignalRecord* reference : connected) {
        const auto count = required.find(reference->signalType);
        if (count != required.end()) {
            ++count.value();
        }
    }

    QString missing;
    for (auto it = required.cbegin(); it != required.cend(); ++it) {
        if (it.value() == 0) {
            missing += describeMissingReference(record, it.key()) + QStringLiteral(", ");
        }
    }
    Diagnosis diagnosis{connected.keys(), QString()};
    if (!missing.isEmpty()) {
        missing.chop(2);
        // This text carries no line end of its own.
        diagnosis.warning = QStringLiteral("For ") + record->key +
                            QStringLiteral(", reference signal ID(s) ") + missing +
                            QStringLiteral(" are not connected. Some compliance test "
                                           "would not run for it.");
    }
    return diagnosis;
}

}  // namespace LaneTapUI
