#pragma once

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "discovery/SignalRecord.h"
#include "standin/Host.h"

// Shared pieces of the lanetap commands: argument parsing, failures with their exit codes, and
// the steps every command that runs the plug-in takes.
namespace lanetap {

enum ExitCode { ExitOk = 0, ExitFindings = 1, ExitUsage = 2, ExitScriptFailed = 3, ExitPlugin = 4 };

// A failure that ends the program with one line on stderr and the given exit code.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode code, const QString& message)
        : std::runtime_error(message.toStdString()), code(code) {}
    ExitCode code;
};

struct Command {
    const char* name;
    const char* synopsis;
    const char* description;
    // Options that take a value, and options that stand alone (besides --help).
    QStringList valueOptions;
    QStringList flagOptions;
    int (*run)(const struct Arguments& arguments);
    // One-letter forms of options: "o" for "output".
    QHash<QString, QString> shortNames = {};
};

struct Arguments {
    QStringList positional;
    QMap<QString, QString> values;
    QStringList flags;

    bool has(const QString& flag) const { return flags.contains(flag); }
    QString value(const QString& option) const { return values.value(option); }
    // The value of an option the command cannot do without.
    QString required(const QString& option) const;
};

Arguments parseArguments(const Command& command, const QStringList& words);
QString usageOf(const Command& command);

// The one design file of a command's words, or a failure with exit code 2 naming the command.
const QString& designFileOf(const Arguments& arguments, const char* command);
// Loads the design file, or fails with exit code 2.
void loadDesign(standin::Host& host, const QString& path);
// Takes the lock of a design file that a command reads, changes and saves, before it reads it;
// fails with exit code 2 when another writer keeps it. None for a path that names no file, which
// the load refuses.
std::unique_ptr<standin::DesignLock> lockDesign(const QString& path);
// The named instance of the loaded design, or a failure with exit code 2.
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

}  // namespace lanetap
