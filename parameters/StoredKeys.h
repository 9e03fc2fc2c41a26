#pragma once

#include <QString>
#include <QStringList>
#include <vector>

// Every key a probe stores its setup under, with the text form of its value: what a tool that
// writes a setup without the dialog must hold a value to, so that the dialog and the block read it
// as meant.
namespace LaneTapUI {

enum class StoredForm {
    Int,                  // a decimal integer
    Flag,                 // "0" or "1"
    Index,                // a decimal integer naming an item of a box
    Number,               // a decimal number: "0.23", "1e-12"
    Text,                 // text as it stands
    Choice,               // one of the item texts of a box
    Voltage,              // a number, or a number, one blank and a unit: "0.07 V"
    SpeedGrades,          // data rates, each followed by ",": "1600,1866,"
    SignalList,           // signal keys, each followed by ","
    MeasurementMap,       // "SIGNAL CODE CODE ,"
    GroupMeasurementMap,  // "GROUP CODE CODE ,"
    ReferenceMap,         // "SIGNAL CODE REFERENCE REFERENCE ,"
    ComplianceMap,        // "SIGNAL ID ID ,"
    GroupComplianceMap,   // "TYPE ID ID ,"
    WriteLevelingMap,     // "SIGNAL REFERENCE REFERENCE ,"
};

struct StoredKey {
    QString key;
    StoredForm form;
    // The items of the box behind an Index or Choice key, by index. The speed grade's items are
    // the stored list, so its index has none here.
    QStringList items;
};

// The keys in the order the setup writes them.
const std::vector<StoredKey>& storedKeys();
// The key's entry, or null for a key the probe does not store.
const StoredKey* findStoredKey(const QString& key);

}  // namespace LaneTapUI
