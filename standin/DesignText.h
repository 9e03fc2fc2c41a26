#pragma once

#include <QByteArray>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "standin/Design.h"

// The text of a design file as JSON: read with the place of every value a save may touch, and
// written back by changing those places alone, so that a save keeps every other byte.
namespace standin::designtext {

enum class Kind : std::uint8_t { Null, False, True, Number, String, Array, Object };

// What a value is in the design format. Only values whose role the loader reads are kept; the
// contents of the others are passed over.
enum class Role : std::uint8_t {
    Leaf,  // kept, its contents (if any) passed over
    Root,
    Instances,
    Instance,
    Parameters,
    Terminals,
    Terminal,
    Bits,
    Bit,
    Ports,
    Port,
};

// One kept value. Offsets are bytes of the file's text; `end` is one past the value.
struct Node {
    Kind kind = Kind::Null;
    Role role = Role::Leaf;
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    // A member's key, its quotes included, and its text.
    std::uint32_t keyBegin = 0;
    std::uint32_t keyEnd = 0;
    std::string_view key;
    // A string's text, or a number as the file spells it.
    std::string_view text;
    int firstChild = -1;
    int lastChild = -1;
    int next = -1;
    // An object's members as the file has them, kept or not: how many, and the last one.
    int members = 0;
    SourceMember last;
    std::uint32_t endBeforeLast = 0;  // end of the member before the last one
};

using Nodes = std::vector<Node>;

// Called with each instance of the file as soon as it is read whole: the nodes of the instance
// and the index of its object among them (or of the value that stands where the object should),
// and its position in the list. The nodes are gone after the call. What it throws is kept, and
// rethrown by `parse` once the whole text proved to be JSON.
using InstanceVisitor =
    std::function<void(const Nodes& nodes, int instance, int position, bool isObject)>;

// Reads `text`, decoding its strings in `work`, a copy of it that the nodes' texts point into.
// Gives the nodes of the top level: the document itself first, then, for an object, its members
// "format", "name" and "instances" as the file has them. An instance's fault goes into
// `firstFault` (the first one only; later instances are not visited). Throws DesignError
// "line L, column C: fault" for text that is not JSON, is nested too deeply or holds a lone
// surrogate escape or a NUL byte.
Nodes parse(const QByteArray& text, QByteArray& work, const InstanceVisitor& visit,
            std::string& firstFault);

// The text of a JSON string token (quotes included) of `text`.
std::string decodeString(const QByteArray& text, std::uint32_t begin, std::uint32_t end);
// `value` as a JSON string token.
QByteArray encodeString(const std::string& value);

// The design's text with the changes of its instances since it was read or last saved: renamed
// instances and added, changed and removed parameters. Every other byte is kept. `layouts` gets
// the places of each instance in the new text, in the order of the design's instances.
QByteArray edited(const db::Design& design, std::vector<InstanceSource>& layouts);

}  // namespace standin::designtext
