#include "standin/DesignFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <map>
#include <mutex>
#include <unordered_set>

#include "netlist/BlockGrammar.h"
#include "standin/DesignText.h"
#include "standin/ItemDefinition.h"
#include "standin/Warnings.h"

namespace standin {
namespace {

namespace BlockGrammar = LaneTapUI::BlockGrammar;

const char* const formatName = "lanetap-design-1";

// Texts of the DDR signal families, in the order of their numeric values.
const char* const signalFamilies[] = {"DQ",   "DQS_t", "DQS_c", "CK_t", "CK_c", "A",     "VDD",
                                      "VPP",  "VSS",   "ODT",   "CS_n", "CKE",  "RAS_n", "CAS_n",
                                      "WE_n", "BA",    "BG",    "DM_n", "DBI_n"};

bool isControl(QChar c) {
    return c.category() == QChar::Other_Control;
}

// The largest design file the loader reads.
constexpr qint64 largestDesign = qint64(256) << 20;

using designtext::Kind;
using designtext::Node;
using designtext::Nodes;

// A JSON integer as the format takes it: an integral number from `low` to `high`, in any of the
// spellings JSON has for it (7, 7.0, 0.7e1).
bool integerValue(std::string_view text, qint64 low, qint64 high, qint64& result) {
    if (text.find_first_of(".eE") == std::string_view::npos) {
        long long value = 0;
        const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (fault != std::errc() || end != text.data() + text.size() || value < low ||
            value > high) {
            return false;
        }
        result = value;
        return true;
    }
    bool number = false;
    // The range is checked before the conversion: a double outside qint64 does not convert.
    const double value = QByteArray::fromRawData(text.data(), int(text.size())).toDouble(&number);
    if (!number || !(value >= double(low)) || !(value <= double(high)) ||
        value != std::floor(value)) {
        return false;
    }
    result = static_cast<qint64>(value);
    return true;
}

// Whether UTF-8 text holds a control character; ASCII text is looked at byte by byte.
bool holdsControl(std::string_view text) {
    for (const char byte : text) {
        const auto c = static_cast<unsigned char>(byte);
        if (c >= 0x80) {
            const QString wide = QString::fromUtf8(text.data(), int(text.size()));
            return std::any_of(wide.cbegin(), wide.cend(), isControl);
        }
        if (c < 0x20 || c == 0x7F) {
            return true;
        }
    }
    return false;
}

QString fromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), int(text.size()));
}

// Reads one instance of the file; every fault names the instance and the field.
class InstanceReader {
public:
    InstanceReader(db::Design& design, std::unordered_set<std::string>& takenNames,
                   const Nodes& nodes, int object, int position)
        : design(design),
          takenNames(takenNames),
          nodes(nodes),
          object(object),
          label(QString("instance %1").arg(position)) {}

    void read() {
        Instance* instance = design.addInstance();
        instance->name = name(object, "name");
        label = "instance " + quoted(QString::fromStdString(instance->name));
        if (!takenNames.insert(instance->name).second) {
            fail("name", "another instance has this name");
        }
        instance->cell = text(object, "cell", true);
        if (instance->cell.empty()) {
            fail("cell", "is empty");
        }
        instance->library = text(object, "library", false);
        readModel(*instance);
        readStatus(*instance);
        readParameters(*instance);
        readTerminals(*instance);
        readPorts(*instance);
        readLayout(*instance);
    }

private:
    // The place of a field: "terminals[3].bits[1].net", from the element being read.
    QString place(const char* field) const {
        QString where;
        if (list) {
            where = QString("%1[%2]").arg(list).arg(index);
            if (bit >= 0) {
                where += QString(".bits[%1]").arg(bit);
            }
            if (field) {
                where += '.';
            }
        }
        return field ? where + field : where;
    }

    [[noreturn]] void fail(const QString& field, const QString& problem) const {
        throw DesignError(
            QString("%1: field '%2' %3").arg(label, printable(field), problem).toStdString());
    }
    [[noreturn]] void fail(const char* field, const QString& problem) const {
        fail(place(field), problem);
    }

    const Node& at(int index) const { return nodes[std::size_t(index)]; }

    // The member `field` of an object, or null when it has none.
    const Node* member(int from, const char* field) const {
        const Node* found = nullptr;
        for (int child = at(from).firstChild; child >= 0; child = at(child).next) {
            if (at(child).key == field) {
                if (found) {
                    fail(field, "appears twice");
                }
                found = &at(child);
            }
        }
        return found;
    }

    std::string text(int from, const char* field, bool required) const {
        const Node* value = member(from, field);
        if (!value && !required) {
            return std::string();
        }
        if (!value || value->kind != Kind::String) {
            fail(field, "must be a string");
        }
        return std::string(value->text);
    }

    std::string name(int from, const char* field) const {
        std::string value = text(from, field, true);
        const QString problem = BlockGrammar::nameProblem(std::string_view(value));
        if (!problem.isEmpty()) {
            fail(field, problem);
        }
        return value;
    }

    // A net name, or null for an unconnected terminal or bit.
    Net* net(int from) {
        const Node* value = member(from, "net");
        if (!value || value->kind == Kind::Null) {
            return nullptr;
        }
        return design.netNamed(name(from, "net"));
    }

    qint64 integer(int from, const char* field, qint64 low, qint64 high, qint64 absent) const {
        const Node* value = member(from, field);
        if (!value) {
            return absent;
        }
        qint64 result = 0;
        if (value->kind != Kind::Number || !integerValue(value->text, low, high, result)) {
            fail(field, QString("must be an integer from %1 to %2").arg(low).arg(high));
        }
        return result;
    }

    // The elements of the array `field` of the instance, or none when it has no such field.
    std::vector<int> array(const char* field) const {
        std::vector<int> elements;
        const Node* value = member(object, field);
        if (!value) {
            return elements;
        }
        if (value->kind != Kind::Array) {
            fail(field, "must be an array");
        }
        for (int child = value->firstChild; child >= 0; child = at(child).next) {
            elements.push_back(child);
        }
        return elements;
    }

    void requireObject(int element) const {
        if (at(element).kind != Kind::Object) {
            fail(nullptr, "must be an object");
        }
    }

    void readModel(Instance& instance) const {
        const std::string model = text(object, "model", false);
        if (model.empty() || model == "active") {
            instance.modelKind = ModelKind::Active;
        } else if (model == "inactive") {
            instance.modelKind = ModelKind::Inactive;
        } else if (model == "none") {
            instance.modelKind = ModelKind::None;
        } else {
            fail("model", "must be \"active\", \"inactive\" or \"none\"");
        }
        if (instance.modelKind != ModelKind::None) {
            instance.model = std::make_unique<ModelDef>(instance.modelKind == ModelKind::Active);
        }
    }

    void readStatus(Instance& instance) const {
        instance.statusBits = static_cast<std::uint32_t>(integer(object, "status", 0, 3, 0));
    }

    void readParameters(Instance& instance) const {
        if (instance.cell == probeCellName) {
            instance.parameters.defaults = &probeItemDefinition();
        }
        const Node* value = member(object, "parameters");
        if (!value) {
            return;
        }
        if (value->kind != Kind::Object) {
            fail("parameters", "must be an object");
        }
        InstanceSource& source = instance.source;
        source.hasParameters = true;
        source.parametersOpen = value->begin;
        source.parametersClose = value->end - 1;
        ParameterValues& values = instance.parameters.values;
        for (int child = value->firstChild; child >= 0; child = at(child).next) {
            const Node& parameter = at(child);
            const std::string_view key = parameter.key;
            // A bad key is not repeated in the message, which stays on one line.
            if (key.empty() || holdsControl(key)) {
                fail("parameters",
                     "holds a parameter with an empty name or a control character in its name");
            }
            const QString where = "parameters." + fromUtf8(key);
            if (parameter.kind != Kind::String) {
                fail(where, "must be a string");
            }
            const std::string_view text = parameter.text;
            if (holdsControl(text) || key == "IbisPinSelEbdNodesName") {
                const std::string problem = valueProblem(std::string(key), fromUtf8(text));
                if (!problem.empty()) {
                    fail(where, QString::fromStdString(problem));
                }
            }
            if (!values.emplace(key, text).second) {
                fail(where, "appears twice");
            }
            source.parameters.push_back(
                {parameter.keyBegin, parameter.keyEnd, parameter.begin, parameter.end});
        }
    }

    void readTerminals(Instance& instance) {
        const std::vector<int> terminals = array("terminals");
        list = "terminals";
        index = 0;
        for (const int terminal : terminals) {
            requireObject(terminal);
            const std::string termName = name(terminal, "name");
            const Node* bitList = member(terminal, "bits");
            if (!bitList) {
                design.addScalarTerm(&instance, termName, net(terminal));
                ++index;
                continue;
            }
            if (bitList->kind != Kind::Array || bitList->firstChild < 0) {
                fail("bits", "must be a non-empty array");
            }
            std::vector<std::pair<std::string, Net*>> bits;
            bit = 0;
            for (int element = bitList->firstChild; element >= 0; element = at(element).next) {
                requireObject(element);
                std::string bitName = name(element, "name");
                bits.emplace_back(std::move(bitName), net(element));
                ++bit;
            }
            bit = -1;
            design.addBusTerm(&instance, termName, bits);
            ++index;
        }
        list = nullptr;
    }

    std::int32_t signal(int port) const {
        const Node* value = member(port, "signal");
        if (value && value->kind == Kind::String) {
            for (std::int32_t i = 0; i < std::int32_t(std::size(signalFamilies)); ++i) {
                if (value->text == signalFamilies[i]) {
                    return i;
                }
            }
            fail("signal", "is not a known signal family");
        }
        return static_cast<std::int32_t>(
            integer(port, "signal", INT32_MIN, INT32_MAX, INT32_MIN - 1LL));
    }

    void readPorts(Instance& instance) {
        const std::vector<int> ports = array("ddrPorts");
        list = "ddrPorts";
        index = 0;
        for (const int port : ports) {
            requireObject(port);
            if (!member(port, "signal")) {
                fail("signal", "is missing");
            }
            DdrPort ddr;
            ddr.port = name(port, "port");
            ddr.pin = name(port, "pin");
            ddr.refDes = name(port, "refDes");
            ddr.channel = static_cast<std::uint32_t>(integer(port, "channel", 0, UINT32_MAX, 0));
            ddr.signal = signal(port);
            ddr.index = static_cast<std::int32_t>(integer(port, "index", 0, INT32_MAX, 0));
            instance.ddrPorts.push_back(ddr);
            ++index;
        }
        list = nullptr;
    }

    // Where the instance stands in the text, for saving it.
    void readLayout(Instance& instance) const {
        const Node& self = at(object);
        const Node* nameNode = member(object, "name");
        InstanceSource& source = instance.source;
        source.name = {nameNode->keyBegin, nameNode->keyEnd, nameNode->begin, nameNode->end};
        source.last = self.last;
        source.endBeforeLast = self.endBeforeLast;
        source.members = self.members;
    }

    db::Design& design;
    // The names of the instances read so far: a set, since a board holds 10^5 of them.
    std::unordered_set<std::string>& takenNames;
    const Nodes& nodes;
    const int object;
    QString label;
    // The list, element and bit being read, for the place of a fault.
    const char* list = nullptr;
    int index = 0;
    int bit = -1;
};

// The bytes of a design file and its mode, or why they cannot be had (without the path).
struct FileBytes {
    QByteArray bytes;
    mode_t mode = 0;
    std::string fault;
};

FileBytes readFileBytes(const QString& path) {
    FileBytes read;
    // Opened without waiting, so that a FIFO is refused rather than waited on.
    const int handle =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0) {
        read.fault = std::strerror(errno);
        return read;
    }
    QFile file;
    struct stat facts {};
    if (!file.open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(handle);
        read.fault = file.errorString().toStdString();
    } else if (::fstat(handle, &facts) != 0) {
        read.fault = std::strerror(errno);
    } else if (!S_ISREG(facts.st_mode)) {
        read.fault = S_ISDIR(facts.st_mode) ? "it is a folder" : "it is not a regular file";
    } else if (facts.st_size > largestDesign) {
        read.fault = "it is larger than 256 MB";
    } else {
        read.bytes = file.readAll();
        read.mode = facts.st_mode & 07777;
        if (file.error() != QFileDevice::NoError) {
            read.fault = file.errorString().toStdString();
        } else if (read.bytes.size() > largestDesign) {
            read.fault = "it is larger than 256 MB";
        }
    }
    return read;
}

// Reads the top level of the design's text and its instances into the design.
void readDesignText(db::Design& design) {
    std::unordered_set<std::string> takenNames;
    std::string instanceFault;
    QByteArray work;
    const Nodes top = designtext::parse(
        design.sourceText, work,
        [&](const Nodes& nodes, int instance, int position, bool isObject) {
            if (!isObject) {
                throw DesignError(
                    QString("instance %1 must be an object").arg(position).toStdString());
            }
            InstanceReader(design, takenNames, nodes, instance, position).read();
        },
        instanceFault);
    if (top.front().kind != Kind::Object) {
        throw DesignError("the file must hold one JSON object");
    }
    const Node* fields[3] = {nullptr, nullptr, nullptr};
    const char* const names[3] = {"format", "name", "instances"};
    for (std::size_t i = 1; i < top.size(); ++i) {
        for (int f = 0; f < 3; ++f) {
            if (top[i].key == names[f]) {
                if (fields[f]) {
                    throw DesignError(std::string("field '") + names[f] + "' appears twice");
                }
                fields[f] = &top[i];
            }
        }
    }
    const auto [format, name, instances] = fields;
    if (!format || format->kind != Kind::String || format->text != formatName) {
        throw DesignError(std::string("field 'format' must be \"") + formatName + "\"");
    }
    if (name && name->kind != Kind::String) {
        throw DesignError("field 'name' must be a string");
    }
    if (!instances || instances->kind != Kind::Array) {
        throw DesignError("field 'instances' must be an array");
    }
    if (!instanceFault.empty()) {
        throw DesignError(instanceFault);
    }
    design.name = name ? std::string(name->text) : std::string();
}

QString escaped(uint c) {
    switch (c) {
        case '\n':
            return "\\n";
        case '\t':
            return "\\t";
        case '\r':
            return "\\r";
    }
    const bool byte = c < 0x100;
    return (byte ? "\\x" : "\\u") +
           QString::number(c, 16).toUpper().rightJustified(byte ? 2 : 4, '0');
}

std::string withFile(const QString& path, const std::string& message) {
    return path.toStdString() + ": " + message;
}

}  // namespace

QString printable(const QString& text, int limit) {
    QString shown;
    int characters = 0;
    // Only the start of a long text is looked at: a name may be megabytes long.
    for (const uint c : (limit < 0 ? text : text.left(2 * limit + 2)).toUcs4()) {
        if (characters++ == limit) {
            return shown + QStringLiteral("…");
        }
        shown += QChar::isPrint(c) ? QString::fromUcs4(&c, 1) : escaped(c);
    }
    return shown;
}

QString quoted(const QString& text) {
    return "'" + printable(text) + "'";
}

std::string valueProblem(const std::string& key, const QString& value) {
    if (std::any_of(value.cbegin(), value.cend(), isControl)) {
        return "holds a control character";
    }
    // Each board node, up to its first dot, becomes part of the keys of its port's signals.
    if (key == "IbisPinSelEbdNodesName") {
        QString nodes = value;
        std::replace_if(
            nodes.begin(), nodes.end(), [](QChar c) { return c.isSpace(); }, ' ');
        for (const QString& node : nodes.split(' ', Qt::SkipEmptyParts)) {
            const QString nodeName = node.split('.', Qt::SkipEmptyParts).value(0);
            const std::string problem = nameProblem(nodeName.toStdString());
            if (!problem.empty()) {
                return "names board node " + quoted(node).toStdString() + ", which " + problem;
            }
        }
    }
    return std::string();
}

std::string nameProblem(const std::string& name) {
    return BlockGrammar::nameProblem(std::string_view(name)).toStdString();
}

std::unique_ptr<db::Design> readDesignFile(const QString& path) {
    FileBytes file = readFileBytes(path);
    if (!file.fault.empty()) {
        throw DesignError(withFile(path, "cannot read: " + file.fault));
    }
    auto design = std::make_unique<db::Design>();
    design->filePath = path;
    design->sourceText = std::move(file.bytes);
    try {
        readDesignText(*design);
    } catch (const DesignError& error) {
        throw DesignError(withFile(path, error.what()));
    }
    return design;
}

void writeDesignFile(db::Design& design) {
    const QString& path = design.filePath;
    if (design.sourceText.isNull()) {
        throw DesignError(withFile(path, "cannot write: the design was not read from a file"));
    }
    const DesignLock lock(path);
    // What the file holds now must be what was read: a save never writes over another's change.
    const FileBytes onDisk = readFileBytes(path);
    if (!onDisk.fault.empty()) {
        throw DesignError(
            withFile(path, "cannot save: " + onDisk.fault + " now; nothing was written"));
    }
    if (onDisk.bytes != design.sourceText) {
        throw DesignError(withFile(
            path, "cannot save: the file changed on disk since it was read; nothing was written"));
    }
    std::vector<InstanceSource> layouts;
    const QByteArray text = designtext::edited(design, layouts);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        throw DesignError(withFile(path, "cannot write: " + file.errorString().toStdString()));
    }
    // QSaveFile only notices a failed write that happens before commit(), so the text is written
    // out here and checked; a short write leaves the original untouched. The new file gets the
    // mode of the old one.
    errno = 0;
    if (::fchmod(file.handle(), onDisk.mode) != 0 || file.write(text) != text.size() ||
        !file.flush()) {
        // Qt keeps no message for a failed flush; the system's reason is the useful one.
        const std::string reason = errno ? std::strerror(errno) : file.errorString().toStdString();
        file.cancelWriting();
        throw DesignError(withFile(path, "cannot write: " + reason));
    }
    if (!file.commit()) {
        throw DesignError(withFile(path, "cannot write: " + file.errorString().toStdString()));
    }
    design.sourceText = text;
    for (std::size_t i = 0; i < layouts.size(); ++i) {
        design.instances[i]->source = std::move(layouts[i]);
    }
}

// ---- the lock of a design file ---------------------------------------------------------------

namespace {

// The design files whose locks this process holds, and how many holders each has.
struct HeldLocks {
    std::mutex mutex;
    std::map<QString, int> holders;
};

HeldLocks& heldLocks() {
    static HeldLocks held;
    return held;
}

}  // namespace

DesignLock::DesignLock(const QString& designPath) {
    const QFileInfo info(designPath);
    // Beside the file itself, whatever link leads to it.
    const QString target = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    lockPath = target + ".lock";
    HeldLocks& held = heldLocks();
    {
        const std::lock_guard<std::mutex> guard(held.mutex);
        const auto holder = held.holders.find(lockPath);
        if (holder != held.holders.end()) {
            ++holder->second;
            return;
        }
    }
    file = std::make_unique<QLockFile>(lockPath);
    // A lock whose process is gone is taken over at once; one that a live process has held for
    // longer than any save takes is taken over too.
    file->setStaleLockTime(staleMilliseconds);
    if (!file->tryLock(waitMilliseconds)) {
        std::string reason;
        qint64 pid = 0;
        QString host;
        QString application;
        switch (file->error()) {
            case QLockFile::LockFailedError:
                reason = "another program is writing it";
                if (file->getLockInfo(&pid, &host, &application)) {
                    reason += " (process " + std::to_string(pid) + ")";
                }
                reason += "; nothing was written";
                break;
            case QLockFile::PermissionError:
                reason = "cannot lock it: cannot make " + lockPath.toStdString();
                break;
            default:
                reason = "cannot lock it";
                break;
        }
        throw DesignError(withFile(designPath, reason));
    }
    const std::lock_guard<std::mutex> guard(held.mutex);
    held.holders[lockPath] = 1;
}

DesignLock::~DesignLock() {
    HeldLocks& held = heldLocks();
    const std::lock_guard<std::mutex> guard(held.mutex);
    if (--held.holders[lockPath] == 0) {
        held.holders.erase(lockPath);
        if (file) {
            file->unlock();
        }
    }
}

void renameInstance(Instance& instance, const std::string& newName) {
    std::string problem = nameProblem(newName);
    if (problem.empty() && instance.design->findInstance(newName)) {
        problem = "is taken by another instance";
    }
    if (!problem.empty()) {
        recordWarning("Instance " + instance.name + " keeps its name: the name '" + newName + "' " +
                      problem + ".\n");
        return;
    }
    instance.name = newName;
}

}  // namespace standin
