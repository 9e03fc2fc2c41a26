#pragma once

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

// Reads and checks a design file; throws DesignError naming the file, the place and the fault.
std::unique_ptr<db::Design> readDesignFile(const QString& path);

// Writes the design back to the file it came from, keeping everything the file held. The file is
// replaced in one step or not at all; throws DesignError.
void writeDesignFile(const db::Design& design);

// Why a text cannot be a name in a design (empty, white space, quotes, backslash, comma or a
// control character), or an empty text when it can.
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
