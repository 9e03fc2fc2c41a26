// The dialog's road: opened on the probe offscreen, its opening stores the setup back as it takes
// it, and every stored key whose meaning that changes is a finding.

#include <QPushButton>
#include <QWidget>

#include "app/Check.h"
#include "parameters/StoredKeys.h"
#include "standin/DesignFile.h"

namespace lanetap {

using namespace LaneTapUI;

namespace {

const char blankVoltageFailure[] = "setVoltageAmplitudeAndUnits LaneTapVoltage failed";

// The records of a stored list or map, each with the words after its head sorted: their order
// carries no meaning. A signal's record without codes or ids means what no record means.
QStringList records(const StoredKey& key, const QString& text) {
    const bool perSignal =
        key.form == StoredForm::MeasurementMap || key.form == StoredForm::ComplianceMap;
    const int head = key.form == StoredForm::ReferenceMap ? 2 : 1;
    QStringList result;
    for (const QString& record : text.split(',', Qt::SkipEmptyParts)) {
        QStringList words = record.split(' ', Qt::SkipEmptyParts);
        if (perSignal && words.size() <= head) {
            continue;
        }
        std::sort(words.begin() + std::min(head, int(words.size())), words.end());
        result << words.join(' ');
    }
    result.sort();
    return result;
}

bool isListOrMap(const StoredKey& key) {
    switch (key.form) {
        case StoredForm::SpeedGrades:
        case StoredForm::SignalList:
        case StoredForm::MeasurementMap:
        case StoredForm::GroupMeasurementMap:
        case StoredForm::ReferenceMap:
        case StoredForm::ComplianceMap:
        case StoredForm::GroupComplianceMap:
        case StoredForm::WriteLevelingMap:
            return true;
        default:
            return false;
    }
}

QString storedValue(const standin::Instance& probe, const QString& key) {
    const std::string* value = probe.parameters.find(key.toStdString());
    return value ? QString::fromStdString(*value) : QString();
}

struct Change {
    QString key;
    QString item;
    QString message;
};

// What the opening changed in the meaning of each stored key.
QList<Change> changes(const QHash<QString, QString>& before, const standin::Instance& probe) {
    QList<Change> found;
    for (const StoredKey& key : storedKeys()) {
        const QString old = before.value(key.key);
        const QString now = storedValue(probe, key.key);
        if (!isListOrMap(key)) {
            if (old != now) {
                found.append({key.key, standin::quoted(old) + " -> " + standin::quoted(now),
                              "the dialog stores it so"});
            }
            continue;
        }
        const QStringList oldRecords = records(key, old);
        const QStringList newRecords = records(key, now);
        for (const QString& record : oldRecords) {
            if (!newRecords.contains(record)) {
                found.append({key.key, record, "the dialog drops it"});
            }
        }
        for (const QString& record : newRecords) {
            if (!oldRecords.contains(record)) {
                found.append({key.key, record, "the dialog adds it"});
            }
        }
    }
    return found;
}

}  // namespace

void checkDialog(standin::Host& host, const QString& probeName, const QStringList& blockBefore,
                 Findings& findings) {
    standin::Instance* probe = host.design()->findInstance(probeName.toStdString());
    QHash<QString, QString> before;
    for (const StoredKey& key : storedKeys()) {
        before.insert(key.key, storedValue(*probe, key.key));
    }
    host.setEditedItem(probeName.toStdString());
    QWidget mainWindow;
    standin::WindowInstance window(&mainWindow);
    const standin::CallResult opened =
        host.call("LaneTap_show_dialog", {standin::ScriptArgument::windowInstance(&window)});
    host.takeWarnings();  // the walk's warnings; the netlist run gives them too
    if (!opened.ok) {
        // A blank voltage stops the opening, as the stored text's findings say already.
        if (opened.error.find(blankVoltageFailure) == std::string::npos) {
            findings.error("dialog-fails", {}, {},
                           "the dialog cannot open: " + QString::fromStdString(opened.error));
        }
        return;
    }
    const QList<Change> found = changes(before, *probe);
    if (found.isEmpty()) {
        return;
    }
    const bool blockChanges = canonicalBlock(host, probeName) != blockBefore;
    for (const Change& change : found) {
        const QString message = change.message + (blockChanges ? "; the block then changes"
                                                               : "; the block stays the same");
        if (blockChanges) {
            findings.warning("dialog-changes", change.key, change.item, message);
        } else {
            findings.note("dialog-changes", change.key, change.item, message);
        }
    }
}

}  // namespace lanetap
