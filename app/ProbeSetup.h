#pragma once

#include <QString>
#include <memory>

#include "dialog/StoredSelection.h"
#include "host/Database.h"
#include "parameters/ControllerParameters.h"
#include "parameters/TestModes.h"

namespace lanetap {

// The measurement route of a probe's setup as the dialog holds it once opened, without the dialog:
// the design's signals with their automatic references, the stored selection loaded onto them by
// the dialog's own rules, and the modes the setup page shows. Changes are made with the operations
// the dialog's pages use, and the selection is written back in the dialog's forms.
class ProbeSetup {
public:
    ProbeSetup(db::Design* design, db::Instance* probe);
    ProbeSetup(const ProbeSetup&) = delete;
    ProbeSetup& operator=(const ProbeSetup&) = delete;

    // The stored text of a parameter of the probe, decoded as the plug-in decodes it.
    QString stored(const char* key) const;
    int storedInt(const char* key) const;

    db::Instance* probeInstance() const { return probe; }

    // The texts the dialog would store for the selection keys: SelectedSignalList and the maps of
    // measurements, references and compliance, by key.
    QHash<QString, QString> selectionTexts() const;

    std::unique_ptr<LaneTapUI::ControllerParameters> controller;
    LaneTapUI::TestModes modes;
    // The design's signals: the store holds them, the hashes point into it.
    LaneTapUI::SignalStore store;
    LaneTapUI::SignalRecordHash all;
    LaneTapUI::SignalRecordHash available;
    LaneTapUI::SignalRecordHash selected;
    LaneTapUI::GroupMeasurements groupMeasurements;
    LaneTapUI::GroupCompliance groupCompliance;

private:
    db::Instance* probe;
};

}  // namespace lanetap
