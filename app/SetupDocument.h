#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QMap>
#include <QString>
#include <QStringList>

#include "app/ProbeSetup.h"

// A probe's setup in words: the JSON document that `lanetap export` writes and `lanetap apply`
// reads. It names everything as the dialog shows it: the test environment, supplies and thresholds
// as texts and switches, signals by key or glob pattern, measurements by name, references by key
// or "auto", compliance tests by name or id. See docs/setup-parameters.md and the README.
namespace lanetap {

// The setup of `setup` in words. What the dialog would drop or cannot show (a blank voltage, an
// index past its box, a group key deeper than a signal type, ...) is left out; `leftOut` counts it.
QJsonObject exportSetup(const ProbeSetup& setup, int& leftOut);

// The stored texts that applying `document` changes, by key: a key is changed only where the
// document's words differ from what export gives for the stored setup, and then takes the text the
// dialog would store for the document's choices. A document that names what the design or the
// plug-in cannot take throws Failure with exit code 2 and one line naming the entry.
QMap<QString, QString> applySetup(ProbeSetup& setup, const QJsonObject& document);

// ---- The two halves, as SetupFields.cpp and SetupChoices.cpp have them ----

// The test environment, supplies, thresholds and the compliance switches: fields of one stored key
// each. Exported into `document`; applied into `changes`, with the modes the document leaves in
// force put in `modes`.
void exportFields(const ProbeSetup& setup, QJsonObject& document, int& leftOut);
void applyFields(const ProbeSetup& setup, const QJsonObject& document,
                 QMap<QString, QString>& changes, LaneTapUI::TestModes& modes);

// The selection: signals, measurements, references and compliance tests.
void exportChoices(const ProbeSetup& setup, QJsonObject& document, int& leftOut);
void applyChoices(ProbeSetup& setup, const QJsonObject& document, const LaneTapUI::TestModes& modes,
                  QMap<QString, QString>& changes);

// A refusal of the document: "PATH: MESSAGE", exit code 2.
[[noreturn]] void refuse(const QString& path, const QString& message);
// A JSON value as text: a string as it stands, a number as its shortest decimal; null for other
// kinds.
QString wordText(const QJsonValue& value);
// The fields of `object` that `known` lacks are refused, each with its nearest known name.
void refuseUnknownFields(const QString& path, const QJsonObject& object, const QStringList& known);

}  // namespace lanetap
