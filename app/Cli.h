#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <string>
#include <string_view>

#include "app/CommandLine.h"
#include "discovery/SignalRecord.h"
#include "standin/Host.h"

// The steps the lanetap commands share: reading the design, finding the probe, loading the
// plug-in, and writing what they print.
namespace lanetap {

// The one design file of a command's words, or a failure with exit code 2 naming the command.
const QString& designFileOf(const Arguments& arguments, const char* command);
// Loads the design file, or fails with exit code 2.
void loadDesign(standin::Host& host, const QString& path);
// Saves the loaded design to its file, or fails with exit code 2 and nothing written.
void saveDesign(standin::Host& host);
// Takes the lock of a design file that a command reads, changes and saves, before it reads it;
// fails with exit code 2 when another writer keeps it. None for a path that names no file, which
// the load refuses.
std::unique_ptr<standin::DesignLock> lockDesign(const QString& path);
// The named instance of the loaded design, or a failure with exit code 2.
standin::Instance* findInstance(const standin::Host& host, const QString& name);
// The named instance when it is a LaneTap probe, or a failure with exit code 2.
standin::Instance* findProbe(const standin::Host& host, const QString& name);
// Loads and registers the plug-in (--plugin, then LANETAP_PLUGIN, then next to the program).
void loadPlugin(standin::Host& host, const Arguments& arguments);
// Writes the warnings of the host to stderr, one per line.
void printWarnings(standin::Host& host);
// Fails with exit code 3 when a script function did not return.
void checkCall(const standin::CallResult& result, const char* functionName);

// The signals that discovery found in a design: the store holds them, the hash points into it.
struct DiscoveredSignals {
    LaneTapUI::SignalStore store;
    LaneTapUI::SignalRecordHash records;
};

// Writes to stdout; fails with exit code 2 when the text cannot be written whole.
void writeOut(const QString& text);
// The same for bytes that are UTF-8 already.
void writeOut(const QByteArray& bytes);
void writeOut(std::string_view bytes);
// Writes to the file `path`, replaced in one step so that it is either whole or as it was, or to
// stdout when `path` is empty; fails with exit code 2.
void writeOutput(const QString& path, std::string_view bytes);
void writeOutput(const QString& path, const QByteArray& bytes);

}  // namespace lanetap
