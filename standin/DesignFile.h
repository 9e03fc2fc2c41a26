#pragma once

#include <QLockFile>
#include <QString>
#include <memory>
#include <stdexcept>
#include <string>

#include "standin/Design.h"

// Design files: the JSON form of a design that the stand-in host loads and saves.
namespace standin {

// A design file that cannot be loaded or saved. The message names the file and the fault.
class DesignError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Reads and checks a design file; throws DesignError naming the file, the place and the fault. A
// file that is not a regular file or is larger than 256 MB is refused unread.
std::unique_ptr<db::Design> readDesignFile(const QString& path);

// Writes the design back to the file it came from. Only what changed since it was read or last
// saved is written (renamed instances, added, changed and removed parameters); every other byte
// of the file stays as it was, and so does its mode. The save takes the design's lock (see
// DesignLock) and refuses a file that no longer holds what was read. The file is replaced in one
// step or not at all; throws DesignError.
void writeDesignFile(db::Design& design);

// The lock of a design file: a lock file beside it (DESIGN.lock) that every writer of the design
// holds for its read, change and write. A short-lived writer takes it before it reads the design
// and keeps it until it has saved, so that two writers at once both land; writeDesignFile takes
// it around the write itself. Taking it waits up to `waitMilliseconds` for another holder, takes
// over a lock whose process is gone, and throws DesignError naming the file otherwise. A process
// that holds the lock already takes it again at once: the holders share it until the last one
// goes.
class DesignLock {
public:
    explicit DesignLock(const QString& designPath);
    ~DesignLock();
    DesignLock(const DesignLock&) = delete;
    DesignLock& operator=(const DesignLock&) = delete;

    static constexpr int waitMilliseconds = 15000;
    static constexpr int staleMilliseconds = 120000;

private:
    QString lockPath;
    std::unique_ptr<QLockFile> file;
};

// Why a text cannot be a name in a design (empty, longer than 1,024 characters, white space,
// a control or bidirectional-format character, or one of = ; " \ ,), or an empty text when it
// can.
std::string nameProblem(const std::string& name);

// User text as an error message shows it: characters that do not print are escaped ("\n",
// "\x7F", "\u0085") and the text is cut after `limit` characters (none when negative) with "…",
// so that every error stays one short line.
QString printable(const QString& text, int limit = 60);
// The same between single quotes.
QString quoted(const QString& text);

// Why a parameter value cannot be stored (a control character, or a board-node name that cannot
// be part of a signal key), or an empty text when it can.
std::string valueProblem(const std::string& key, const QString& value);

// Renames an instance when the new name is usable and free; otherwise warns and keeps the old one.
void renameInstance(Instance& instance, const std::string& newName);

}  // namespace standin
