#include "standin/DesignText.h"

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <QString>
#include <QVector>
#include <algorithm>
#include <cstring>
#include <map>
#include <set>

#include "standin/DesignFile.h"

namespace standin::designtext {
namespace {

// Deeper nesting than this is refused rather than followed: the format needs six levels.
constexpr int deepestNesting = 512;

// The role of a value found as member `key` of a value of role `parent` (an element of an array
// when `key` is null), given whether it is an object or an array. Leaf for a value that is kept
// without its contents; `skip` is set for a value that is not kept at all.
Role roleOf(Role parent, const std::string_view* key, Kind kind, bool& skip) {
    skip = false;
    const auto is = [&](const char* name) { return key && *key == name; };
    const bool object = kind == Kind::Object;
    const bool array = kind == Kind::Array;
    switch (parent) {
        case Role::Root:
            if (is("instances")) {
                return array ? Role::Instances : Role::Leaf;
            }
            skip = !is("format") && !is("name");
            return Role::Leaf;
        case Role::Instances:
            return object ? Role::Instance : Role::Leaf;
        case Role::Instance:
            if (is("parameters")) {
                return object ? Role::Parameters : Role::Leaf;
            }
            if (is("terminals")) {
                return array ? Role::Terminals : Role::Leaf;
            }
            if (is("ddrPorts")) {
                return array ? Role::Ports : Role::Leaf;
            }
            skip = !is("name") && !is("cell") && !is("library") && !is("model") && !is("status");
            return Role::Leaf;
        case Role::Parameters:
            return Role::Leaf;
        case Role::Terminals:
            return object ? Role::Terminal : Role::Leaf;
        case Role::Terminal:
            if (is("bits")) {
                return array ? Role::Bits : Role::Leaf;
            }
            skip = !is("name") && !is("net");
            return Role::Leaf;
        case Role::Bits:
            return object ? Role::Bit : Role::Leaf;
        case Role::Bit:
            skip = !is("name") && !is("net");
            return Role::Leaf;
        case Role::Ports:
            return object ? Role::Port : Role::Leaf;
        case Role::Port:
            skip = !is("port") && !is("pin") && !is("refDes") && !is("channel") && !is("signal") &&
                   !is("index");
            return Role::Leaf;
        case Role::Leaf:
            break;
    }
    skip = true;
    return Role::Leaf;
}

// Builds the nodes of the text as the reader walks it. The text is read in place from a copy:
// strings are decoded where they stand, so that a node's text points into that copy and the
// offsets of the stream are those of the file.
class Builder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Builder> {
public:
    Builder(const QByteArray& text, const char* base, rapidjson::InsituStringStream& stream,
            const InstanceVisitor& visit, std::string& firstFault)
        : original(text.constData()),
          originalEnd(text.constData() + text.size()),
          base(base),
          stream(stream),
          visit(visit),
          firstFault(firstFault) {}

    bool Null() { return scalar(Kind::Null, 4); }
    bool Bool(bool value) { return scalar(value ? Kind::True : Kind::False, value ? 4 : 5); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        return value(Kind::Number, offset(text), offset(text) + length,
                     std::string_view(text, length));
    }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        return checkedString(text, length) &&
               value(Kind::String, offset(text) - 1, stringEnd(offset(text)),
                     std::string_view(text, length));
    }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        if (skipDepth > 0) {
            return true;
        }
        key = std::string_view(text, length);
        keyBegin = offset(text) - 1;
        keyEnd = stringEnd(offset(text));
        return checkedString(text, length);
    }
    bool StartObject() { return start(Kind::Object); }
    bool EndObject(rapidjson::SizeType) { return finish(); }
    bool StartArray() { return start(Kind::Array); }
    bool EndArray(rapidjson::SizeType) { return finish(); }

    Nodes nodes;
    // Why the reading was stopped, when this builder stopped it.
    std::string stopped;

private:
    std::uint32_t offset(const char* text) const { return std::uint32_t(text - base); }
    // The reader's position, right for containers and literals; while a string or a number is
    // reported, the reader has not moved its stream past it yet.
    std::uint32_t position() const { return std::uint32_t(stream.Tell()); }

    // One past the closing quote of the string whose text starts at `start` in the file.
    std::uint32_t stringEnd(std::uint32_t start) const {
        const char* at = original + start;
        for (;;) {
            const char* quote =
                static_cast<const char*>(std::memchr(at, '"', std::size_t(originalEnd - at)));
            const char* backslashes = quote;
            while (backslashes > original + start && backslashes[-1] == '\\') {
                --backslashes;
            }
            if ((quote - backslashes) % 2 == 0) {
                return std::uint32_t(quote - original) + 1;
            }
            at = quote + 1;
        }
    }

    // A decoded string must be UTF-8: an escaped lone low surrogate ("\udc00") is not, and the
    // reader lets it through.
    bool checkedString(const char* text, std::size_t length) {
        for (std::size_t i = 0; i + 1 < length; ++i) {
            if (static_cast<unsigned char>(text[i]) == 0xED &&
                static_cast<unsigned char>(text[i + 1]) >= 0xA0) {
                stopped = "a string holds a lone surrogate escape";
                return false;
            }
        }
        return true;
    }

    bool scalar(Kind kind, std::uint32_t length) {
        return value(kind, position() - length, position(), std::string_view());
    }

    // Notes a member of the innermost open object, kept or not.
    void noteMember(std::uint32_t begin, std::uint32_t end) {
        if (open.empty() || nodes[std::size_t(open.back())].kind != Kind::Object) {
            return;
        }
        Node& object = nodes[std::size_t(open.back())];
        object.endBeforeLast = object.members > 0 ? object.last.valueEnd : keyBegin;
        object.last = {keyBegin, keyEnd, begin, end};
        ++object.members;
    }

    // Where a new value goes: its role, or false when it is not kept.
    bool placeValue(Kind kind, Role& role) {
        if (open.empty()) {
            role = kind == Kind::Object ? Role::Root : Role::Leaf;
            return true;
        }
        const Node& parent = nodes[std::size_t(open.back())];
        bool skip = false;
        role = roleOf(parent.role, parent.kind == Kind::Object ? &key : nullptr, kind, skip);
        return !skip;
    }

    int addNode(Kind kind, Role role, std::uint32_t begin, std::uint32_t end,
                std::string_view text) {
        Node node;
        node.kind = kind;
        node.role = role;
        node.begin = begin;
        node.end = end;
        node.text = text;
        const int index = int(nodes.size());
        const bool inObject = !open.empty() && nodes[std::size_t(open.back())].kind == Kind::Object;
        if (inObject) {
            node.key = key;
            node.keyBegin = keyBegin;
            node.keyEnd = keyEnd;
        }
        const bool instance =
            !open.empty() && nodes[std::size_t(open.back())].role == Role::Instances;
        if (instance) {
            instanceStart = index;
        }
        nodes.push_back(node);
        // The elements of the list of instances are read one by one and not linked to it.
        if (!open.empty() && !instance) {
            Node& parent = nodes[std::size_t(open.back())];
            if (parent.lastChild >= 0) {
                nodes[std::size_t(parent.lastChild)].next = index;
            } else {
                parent.firstChild = index;
            }
            parent.lastChild = index;
        }
        return index;
    }

    bool value(Kind kind, std::uint32_t begin, std::uint32_t end, std::string_view text) {
        if (skipDepth > 0) {
            return true;
        }
        Role role;
        if (placeValue(kind, role)) {
            const int index = addNode(kind, role, begin, end, text);
            if (!open.empty() && nodes[std::size_t(open.back())].role == Role::Instances) {
                instanceRead(index, false);
            }
        }
        noteMember(begin, end);
        return true;
    }

    bool start(Kind kind) {
        if (skipDepth > 0) {
            ++skipDepth;
            return nested();
        }
        const std::uint32_t begin = position() - 1;
        Role role;
        if (!placeValue(kind, role)) {
            skipDepth = 1;
            skipped = -1;
            skipBegin = begin;
            return nested();
        }
        const int index = addNode(kind, role, begin, begin + 1, std::string_view());
        if (role == Role::Leaf) {
            skipDepth = 1;
            skipped = index;
            skipBegin = begin;
        } else {
            open.push_back(index);
        }
        return nested();
    }

    bool nested() {
        if (int(open.size()) + skipDepth > deepestNesting) {
            stopped = "values are nested more than " + std::to_string(deepestNesting) + " deep";
            return false;
        }
        return true;
    }

    bool finish() {
        if (skipDepth > 0) {
            if (--skipDepth == 0) {
                if (skipped >= 0) {
                    nodes[std::size_t(skipped)].end = position();
                    const bool element =
                        !open.empty() && nodes[std::size_t(open.back())].role == Role::Instances;
                    if (element) {
                        instanceRead(skipped, false);
                    }
                }
                noteMember(skipBegin, position());
            }
            return true;
        }
        const int index = open.back();
        open.pop_back();
        Node& node = nodes[std::size_t(index)];
        node.end = position();
        // The key of a member that is a container is the one its node kept.
        key = node.key;
        keyBegin = node.keyBegin;
        keyEnd = node.keyEnd;
        noteMember(node.begin, node.end);
        if (node.role == Role::Instance) {
            instanceRead(index, true);
        }
        return true;
    }

    // Hands an instance to the visitor and forgets its nodes.
    void instanceRead(int index, bool isObject) {
        if (firstFault.empty()) {
            try {
                visit(nodes, index, instanceCount++, isObject);
            } catch (const DesignError& error) {
                firstFault = error.what();
            }
        }
        nodes.resize(std::size_t(instanceStart));
    }

    const char* original;
    const char* originalEnd;
    const char* base;
    rapidjson::InsituStringStream& stream;
    const InstanceVisitor& visit;
    std::string& firstFault;
    // The kept containers that are open, innermost last.
    std::vector<int> open;
    // The key of the member whose value comes next.
    std::string_view key;
    std::uint32_t keyBegin = 0;
    std::uint32_t keyEnd = 0;
    // Within a container that is passed over: how deep, where it began, and its node if kept.
    int skipDepth = 0;
    int skipped = -1;
    std::uint32_t skipBegin = 0;
    int instanceStart = 0;
    int instanceCount = 0;
};

// The line and the column, counted in characters, of a byte of the text.
std::string lineAndColumn(const QByteArray& text, std::size_t offset) {
    offset = std::min<std::size_t>(offset, std::size_t(text.size()));
    const int at = int(offset);
    const int lineStart = at > 0 ? text.lastIndexOf('\n', at - 1) + 1 : 0;
    const int line = int(std::count(text.constData(), text.constData() + lineStart, '\n')) + 1;
    const int column =
        QString::fromUtf8(text.constData() + lineStart, at - lineStart).toUcs4().size() + 1;
    return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

// A fault of the reader as a short phrase: "Missing a comma or '}' after an object member."
// becomes "missing a comma or '}' after an object member".
std::string phrase(rapidjson::ParseErrorCode code) {
    std::string text = rapidjson::GetParseError_En(code);
    if (!text.empty() && text.back() == '.') {
        text.pop_back();
    }
    if (!text.empty() && text[0] >= 'A' && text[0] <= 'Z') {
        text[0] = char(text[0] - 'A' + 'a');
    }
    return text;
}

// Collects the one string of a JSON text.
struct StringHandler : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, StringHandler> {
    bool String(const char* text, rapidjson::SizeType length, bool) {
        value.assign(text, length);
        return true;
    }
    std::string value;
};

}  // namespace

Nodes parse(const QByteArray& text, QByteArray& work, const InstanceVisitor& visit,
            std::string& firstFault) {
    // The reader decodes strings in place: a copy of the text is worked on.
    // RapidJSON 1.1.0 checks a multi-byte character's bytes without stopping at the end of the
    // text: three more NUL bytes keep a character cut off by the end within the copy, where they
    // fail the check.
    work = QByteArray(text.constData(), text.size()) + QByteArray(3, '\0');
    rapidjson::InsituStringStream stream(work.data());
    Builder builder(text, work.constData(), stream, visit, firstFault);
    rapidjson::Reader reader;
    constexpr unsigned flags = rapidjson::kParseInsituFlag | rapidjson::kParseValidateEncodingFlag |
                               rapidjson::kParseNumbersAsStringsFlag;
    const rapidjson::ParseResult result = reader.Parse<flags>(stream, builder);
    if (result.IsError()) {
        // The reader takes a NUL byte for the end of the text, and says what it missed there.
        const std::size_t at = result.Offset();
        const bool nul = at < std::size_t(text.size()) && text[int(at)] == '\0';
        const std::string fault =
            nul ? "the text holds a NUL byte"
            : result.Code() == rapidjson::kParseErrorTermination && !builder.stopped.empty()
                ? builder.stopped
                : phrase(result.Code());
        throw DesignError(lineAndColumn(text, result.Offset()) + ": " + fault);
    }
    const std::size_t end = stream.Tell();
    if (end != std::size_t(text.size())) {
        throw DesignError(lineAndColumn(text, end) + ": the text holds a NUL byte");
    }
    return std::move(builder.nodes);
}

std::string decodeString(const QByteArray& text, std::uint32_t begin, std::uint32_t end) {
    const std::string token(text.constData() + begin, end - begin);
    rapidjson::StringStream stream(token.c_str());
    StringHandler handler;
    rapidjson::Reader reader;
    reader.Parse(stream, handler);
    return handler.value;
}

QByteArray encodeString(const std::string& value) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    writer.String(value.data(), rapidjson::SizeType(value.size()));
    return QByteArray(buffer.GetString(), int(buffer.GetSize()));
}

namespace {

// A change of the text: bytes [begin, end) become `text`.
struct Edit {
    std::uint32_t begin;
    std::uint32_t end;
    QByteArray text;
    // The instance whose layout the edit changes, and how.
    std::size_t instance;
    enum { Name, Parameters, NewParameters } what;
    // The members of a written parameters object, at offsets within `text`.
    std::vector<SourceMember> members;
};

QByteArray slice(const QByteArray& text, std::uint32_t begin, std::uint32_t end) {
    return QByteArray(text.constData() + begin, int(end - begin));
}

SourceMember movedBy(const SourceMember& member, std::int64_t by) {
    const auto move = [by](std::uint32_t offset) { return std::uint32_t(offset + by); };
    return {move(member.keyBegin), move(member.keyEnd), move(member.valueBegin),
            move(member.valueEnd)};
}

// Appends `"key": "value"` to `object` and notes where it stands.
void appendMember(QByteArray& object, const QByteArray& glue, const std::string& key,
                  const std::string& value, std::vector<SourceMember>& members) {
    SourceMember member;
    member.keyBegin = std::uint32_t(object.size());
    object += encodeString(key);
    member.keyEnd = std::uint32_t(object.size());
    object += glue;
    member.valueBegin = std::uint32_t(object.size());
    object += encodeString(value);
    member.valueEnd = std::uint32_t(object.size());
    members.push_back(member);
}

// The parameters object of an instance whose parameters changed, written anew from the file's:
// its members in the file's order, each with its own bytes unless its value changed, the removed
// ones left out with the separator before them, and new ones at the end in the form of the others.
// Returns false, writing nothing, when no parameter changed.
bool rewriteParameters(const QByteArray& text, const InstanceSource& source,
                       const ParameterValues& values, Edit& edit) {
    const std::vector<SourceMember>& old = source.parameters;
    const std::size_t count = old.size();
    std::vector<const std::string*> current(count, nullptr);
    std::set<std::string> inFile;
    bool changed = false;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string key = decodeString(text, old[i].keyBegin, old[i].keyEnd);
        const auto found = values.find(key);
        if (found == values.end()) {
            changed = true;
            continue;
        }
        inFile.insert(key);
        current[i] = &found->second;
        if (found->second != decodeString(text, old[i].valueBegin, old[i].valueEnd)) {
            changed = true;
        }
    }
    if (!changed && inFile.size() == values.size()) {
        return false;
    }
    const std::uint32_t open = source.parametersOpen;
    const std::uint32_t close = source.parametersClose;
    QByteArray object = "{";
    object += count > 0 ? slice(text, open + 1, old[0].keyBegin) : QByteArray();
    int previous = -1;
    for (std::size_t i = 0; i < count; ++i) {
        if (!current[i]) {
            continue;
        }
        if (previous >= 0) {
            object += slice(text, old[std::size_t(previous)].valueEnd,
                            old[std::size_t(previous) + 1].keyBegin);
        }
        previous = int(i);
        const SourceMember& member = old[i];
        const std::int64_t shift = std::int64_t(object.size()) - member.keyBegin;
        SourceMember placed = movedBy(member, shift);
        if (*current[i] == decodeString(text, member.valueBegin, member.valueEnd)) {
            object += slice(text, member.keyBegin, member.valueEnd);
        } else {
            object += slice(text, member.keyBegin, member.valueBegin);
            object += encodeString(*current[i]);
            placed.valueEnd = std::uint32_t(object.size());
        }
        edit.members.push_back(placed);
    }
    // New members are set off and formed as the file's last ones are.
    QByteArray separator = ", ";
    if (count >= 2) {
        separator = slice(text, old[count - 2].valueEnd, old[count - 1].keyBegin);
    } else if (count == 1) {
        const QByteArray lead = slice(text, open + 1, old[0].keyBegin);
        if (lead.contains('\n')) {
            separator = "," + lead;
        }
    }
    const QByteArray glue = count > 0 ? slice(text, old[0].keyEnd, old[0].valueBegin) : ": ";
    for (const auto& [key, value] : values) {
        if (inFile.count(key)) {
            continue;
        }
        if (!edit.members.empty()) {
            object += separator;
        }
        appendMember(object, glue, key, value, edit.members);
    }
    object +=
        count > 0 ? slice(text, old[count - 1].valueEnd, close) : slice(text, open + 1, close);
    object += '}';
    edit.begin = open;
    edit.end = close + 1;
    edit.text = object;
    edit.what = Edit::Parameters;
    return true;
}

// The "parameters" member of an instance that the file gave none, after its last member.
Edit newParameters(const QByteArray& text, const InstanceSource& source,
                   const ParameterValues& values) {
    Edit edit;
    edit.what = Edit::NewParameters;
    edit.begin = edit.end = source.last.valueEnd;
    const QByteArray separator =
        source.members >= 2 ? slice(text, source.endBeforeLast, source.last.keyBegin) : ", ";
    const QByteArray glue = slice(text, source.last.keyEnd, source.last.valueBegin);
    QByteArray object = "{";
    for (const auto& [key, value] : values) {
        if (object.size() > 1) {
            object += ", ";
        }
        appendMember(object, glue, key, value, edit.members);
    }
    object += '}';
    // The member itself comes first among the members of the edit, at the edit's own offsets.
    SourceMember member;
    member.keyBegin = std::uint32_t(separator.size());
    member.keyEnd = member.keyBegin + std::uint32_t(std::strlen("\"parameters\""));
    member.valueBegin = member.keyEnd + std::uint32_t(glue.size());
    member.valueEnd = member.valueBegin + std::uint32_t(object.size());
    for (SourceMember& inner : edit.members) {
        inner = movedBy(inner, member.valueBegin);
    }
    edit.members.insert(edit.members.begin(), member);
    edit.text = separator + "\"parameters\"" + glue + object;
    return edit;
}

}  // namespace

QByteArray edited(const db::Design& design, std::vector<InstanceSource>& layouts) {
    const QByteArray& text = design.sourceText;
    std::vector<Edit> edits;
    for (std::size_t i = 0; i < design.instances.size(); ++i) {
        const Instance& instance = *design.instances[i];
        const InstanceSource& source = instance.source;
        std::vector<Edit> own;
        if (instance.name != decodeString(text, source.name.valueBegin, source.name.valueEnd)) {
            Edit edit;
            edit.begin = source.name.valueBegin;
            edit.end = source.name.valueEnd;
            edit.text = encodeString(instance.name);
            edit.what = Edit::Name;
            own.push_back(std::move(edit));
        }
        const ParameterValues& values = instance.parameters.values;
        Edit parameters;
        if (source.hasParameters ? rewriteParameters(text, source, values, parameters)
                                 : !values.empty()) {
            own.push_back(source.hasParameters ? std::move(parameters)
                                               : newParameters(text, source, values));
        }
        std::sort(own.begin(), own.end(),
                  [](const Edit& a, const Edit& b) { return a.begin < b.begin; });
        for (Edit& edit : own) {
            edit.instance = i;
            edits.push_back(std::move(edit));
        }
    }

    // The new text, and for each edit where it starts there and how much it moved what follows.
    QByteArray result;
    std::vector<std::uint32_t> ends;
    std::vector<std::int64_t> movedAfter;
    std::vector<std::uint32_t> newBegins;
    std::int64_t moved = 0;
    std::uint32_t copied = 0;
    for (const Edit& edit : edits) {
        result += slice(text, copied, edit.begin);
        newBegins.push_back(std::uint32_t(edit.begin + moved));
        result += edit.text;
        copied = edit.end;
        moved += std::int64_t(edit.text.size()) - (edit.end - edit.begin);
        ends.push_back(edit.end);
        movedAfter.push_back(moved);
    }
    if (edits.empty()) {
        result = text;
    } else {
        result += slice(text, copied, std::uint32_t(text.size()));
    }

    // An offset of the old text that no edit replaced, in the new text: moved by every edit that
    // ends at or before it.
    const auto place = [&](std::uint32_t offset) {
        const auto after = std::upper_bound(ends.begin(), ends.end(), offset);
        return std::uint32_t(offset +
                             (after == ends.begin() ? 0 : movedAfter[after - ends.begin() - 1]));
    };
    const auto placeMember = [&](const SourceMember& member) {
        return SourceMember{place(member.keyBegin), place(member.keyEnd), place(member.valueBegin),
                            place(member.valueEnd)};
    };
    layouts.clear();
    layouts.reserve(design.instances.size());
    for (const auto& instance : design.instances) {
        const InstanceSource& old = instance->source;
        InstanceSource layout = old;
        layout.name = placeMember(old.name);
        layout.last = placeMember(old.last);
        layout.endBeforeLast = place(old.endBeforeLast);
        layout.parametersOpen = place(old.parametersOpen);
        layout.parametersClose = place(old.parametersClose);
        for (SourceMember& member : layout.parameters) {
            member = placeMember(member);
        }
        layouts.push_back(std::move(layout));
    }
    for (std::size_t k = 0; k < edits.size(); ++k) {
        const Edit& edit = edits[k];
        InstanceSource& layout = layouts[edit.instance];
        const std::uint32_t begin = newBegins[k];
        if (edit.what == Edit::Parameters) {
            layout.parametersOpen = begin;
            layout.parametersClose = begin + std::uint32_t(edit.text.size()) - 1;
            layout.parameters.clear();
            for (const SourceMember& member : edit.members) {
                layout.parameters.push_back(movedBy(member, begin));
            }
        } else if (edit.what == Edit::NewParameters) {
            const SourceMember member = movedBy(edit.members.front(), begin);
            layout.hasParameters = true;
            layout.endBeforeLast = begin;
            layout.last = member;
            ++layout.members;
            layout.parametersOpen = member.valueBegin;
            layout.parametersClose = member.valueEnd - 1;
            layout.parameters.clear();
            for (std::size_t m = 1; m < edit.members.size(); ++m) {
                layout.parameters.push_back(movedBy(edit.members[m], begin));
            }
        }
    }
    return result;
}

}  // namespace standin::designtext
