#include "standin/DesignFile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <unordered_set>

#include "standin/ItemDefinition.h"
#include "standin/Warnings.h"

namespace standin {
namespace {

const char* const formatName = "lanetap-design-1";

// Texts of the DDR signal families, in the order of their numeric values.
const char* const signalFamilies[] = {"DQ",   "DQS_t", "DQS_c", "CK_t", "CK_c", "A",     "VDD",
                                      "VPP",  "VSS",   "ODT",   "CS_n", "CKE",  "RAS_n", "CAS_n",
                                      "WE_n", "BA",    "BG",    "DM_n", "DBI_n"};

bool isControl(QChar c) {
    return c.category() == QChar::Other_Control;
}

// Reads one instance of the file; every fault names the instance and the field.
class InstanceReader {
public:
    InstanceReader(db::Design& design, std::unordered_set<std::string>& takenNames,
                   const QJsonObject& object, int position)
        : design(design),
          takenNames(takenNames),
          object(object),
          label(QString("instance %1").arg(position)) {}

    void read() {
        Instance* instance = design.addInstance();
        instance->source = object;
        instance->name = name(object, "name");
        label = "instance " + quoted(QString::fromStdString(instance->name));
        if (!takenNames.insert(instance->name).second) {
            fail("name", "another instance has this name");
        }
        instance->cell = text(object, "cell", true).toStdString();
        if (instance->cell.empty()) {
            fail("cell", "is empty");
        }
        instance->library = text(object, "library", false).toStdString();
        readModel(*instance);
        readStatus(*instance);
        readParameters(*instance);
        readTerminals(*instance);
        readPorts(*instance);
    }

private:
    [[noreturn]] void fail(const QString& field, const QString& problem) const {
        throw DesignError(
            QString("%1: field '%2' %3").arg(label, printable(field), problem).toStdString());
    }

    QString text(const QJsonObject& from, const QString& field, bool required,
                 const QString& where = QString()) const {
        const QJsonValue value = from.value(field);
        if (value.isUndefined() && !required) {
            return QString();
        }
        if (!value.isString()) {
            fail(where + field, "must be a string");
        }
        return value.toString();
    }

    std::string name(const QJsonObject& from, const QString& field,
                     const QString& where = QString()) const {
        const std::string value = text(from, field, true, where).toStdString();
        const std::string problem = nameProblem(value);
        if (!problem.empty()) {
            fail(where + field, QString::fromStdString(problem));
        }
        return value;
    }

    // A net name, or null for an unconnected terminal or bit.
    Net* net(const QJsonObject& from, const QString& where) {
        const QJsonValue value = from.value("net");
        if (value.isUndefined() || value.isNull()) {
            return nullptr;
        }
        return design.netNamed(name(from, "net", where));
    }

    qint64 integer(const QJsonObject& from, const QString& field, qint64 low, qint64 high,
                   qint64 absent, const QString& where = QString()) const {
        const QJsonValue value = from.value(field);
        if (value.isUndefined()) {
            return absent;
        }
        // The range is checked before the conversion: a double outside qint64 does not convert.
        const double number = value.toDouble();
        if (!value.isDouble() || !(number >= static_cast<double>(low)) ||
            !(number <= static_cast<double>(high)) || number != std::floor(number)) {
            fail(where + field, QString("must be an integer from %1 to %2").arg(low).arg(high));
        }
        return static_cast<qint64>(number);
    }

    QJsonArray array(const QString& field) const {
        const QJsonValue value = object.value(field);
        if (value.isUndefined()) {
            return QJsonArray();
        }
        if (!value.isArray()) {
            fail(field, "must be an array");
        }
        return value.toArray();
    }

    QJsonObject element(const QJsonValue& value, const QString& where) const {
        if (!value.isObject()) {
            fail(where, "must be an object");
        }
        return value.toObject();
    }

    void readModel(Instance& instance) const {
        const QString model = text(object, "model", false);
        if (model.isEmpty() || model == "active") {
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
        const QJsonValue value = object.value("parameters");
        if (value.isUndefined()) {
            return;
        }
        if (!value.isObject()) {
            fail("parameters", "must be an object");
        }
        const QJsonObject parameters = value.toObject();
        for (auto it = parameters.begin(); it != parameters.end(); ++it) {
            // One copy of the key: the scan's begin and end must come from the same string.
            const QString key = it.key();
            // A bad key is not repeated in the message, which stays on one line.
            if (key.isEmpty() || std::any_of(key.cbegin(), key.cend(), isControl)) {
                fail("parameters",
                     "holds a parameter with an empty name or a control character in its name");
            }
            const QString where = "parameters." + key;
            if (!it.value().isString()) {
                fail(where, "must be a string");
            }
            const QString text = it.value().toString();
            const std::string problem = valueProblem(key.toStdString(), text);
            if (!problem.empty()) {
                fail(where, QString::fromStdString(problem));
            }
            instance.parameters.values[key.toStdString()] = text.toStdString();
        }
    }

    void readTerminals(Instance& instance) {
        const QJsonArray terminals = array("terminals");
        for (int i = 0; i < terminals.size(); ++i) {
            const QString where = QString("terminals[%1]").arg(i);
            const QJsonObject terminal = element(terminals[i], where);
            const std::string termName = name(terminal, "name", where + ".");
            if (!terminal.contains("bits")) {
                design.addScalarTerm(&instance, termName, net(terminal, where + "."));
                continue;
            }
            if (!terminal.value("bits").isArray() || terminal.value("bits").toArray().isEmpty()) {
                fail(where + ".bits", "must be a non-empty array");
            }
            std::vector<std::pair<std::string, Net*>> bits;
            const QJsonArray bitArray = terminal.value("bits").toArray();
            for (int b = 0; b < bitArray.size(); ++b) {
                const QString bitWhere = QString("%1.bits[%2]").arg(where).arg(b);
                const QJsonObject bit = element(bitArray[b], bitWhere);
                bits.emplace_back(name(bit, "name", bitWhere + "."), net(bit, bitWhere + "."));
            }
            design.addBusTerm(&instance, termName, bits);
        }
    }

    std::int32_t signal(const QJsonObject& port, const QString& where) const {
        const QJsonValue value = port.value("signal");
        if (value.isString()) {
            for (std::int32_t i = 0; i < std::int32_t(std::size(signalFamilies)); ++i) {
                if (value.toString() == signalFamilies[i]) {
                    return i;
                }
            }
            fail(where + "signal", "is not a known signal family");
        }
        return static_cast<std::int32_t>(
            integer(port, "signal", INT32_MIN, INT32_MAX, INT32_MIN - 1LL, where));
    }

    void readPorts(Instance& instance) const {
        const QJsonArray ports = array("ddrPorts");
        for (int i = 0; i < ports.size(); ++i) {
            const QString where = QString("ddrPorts[%1].").arg(i);
            const QJsonObject port = element(ports[i], where.chopped(1));
            if (!port.contains("signal")) {
                fail(where + "signal", "is missing");
            }
            DdrPort ddr;
            ddr.port = name(port, "port", where);
            ddr.pin = name(port, "pin", where);
            ddr.refDes = name(port, "refDes", where);
            ddr.channel =
                static_cast<std::uint32_t>(integer(port, "channel", 0, UINT32_MAX, 0, where));
            ddr.signal = signal(port, where);
            ddr.index = static_cast<std::int32_t>(integer(port, "index", 0, INT32_MAX, 0, where));
            instance.ddrPorts.push_back(ddr);
        }
    }

    db::Design& design;
    // The names of the instances read so far: a set, since a board holds 10^5 of them.
    std::unordered_set<std::string>& takenNames;
    const QJsonObject& object;
    QString label;
};

// The line and column, counted in characters, of a syntax error that Qt reports at a byte offset.
QString lineAndColumn(const QByteArray& bytes, const QJsonParseError& error) {
    int offset = std::clamp(error.offset, 0, static_cast<int>(bytes.size()));
    // Qt reports most errors just past the character it choked on, having consumed it; it reports
    // trailing garbage, bad numbers and bad UTF-8 at the character itself.
    const bool pastTheCharacter = error.error != QJsonParseError::GarbageAtEnd &&
                                  error.error != QJsonParseError::IllegalNumber &&
                                  error.error != QJsonParseError::IllegalUTF8String;
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    if (pastTheCharacter && offset > 0 && !isBlank(bytes[offset - 1])) {
        --offset;
    }
    const int lineStart = offset > 0 ? bytes.lastIndexOf('\n', offset - 1) + 1 : 0;
    const int line = static_cast<int>(bytes.left(lineStart).count('\n')) + 1;
    const int column =
        QString::fromUtf8(bytes.mid(lineStart, offset - lineStart)).toUcs4().size() + 1;
    return QString("line %1, column %2").arg(line).arg(column);
}

QJsonObject parseRoot(const QByteArray& bytes) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        throw DesignError(
            QString("%1: %2").arg(lineAndColumn(bytes, error), error.errorString()).toStdString());
    }
    if (!document.isObject()) {
        throw DesignError("the file must hold one JSON object");
    }
    const QJsonObject root = document.object();
    if (root.value("format").toString() != formatName) {
        throw DesignError(std::string("field 'format' must be \"") + formatName + "\"");
    }
    if (!root.value("name").isUndefined() && !root.value("name").isString()) {
        throw DesignError("field 'name' must be a string");
    }
    if (!root.value("instances").isArray()) {
        throw DesignError("field 'instances' must be an array");
    }
    return root;
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
    if (name.empty()) {
        return "is empty";
    }
    // Checked by character, so that non-ASCII white space and control characters count too.
    for (const QChar c : QString::fromStdString(name)) {
        if (isControl(c)) {
            return "holds a control character";
        }
        if (c.isSpace()) {
            return "holds white space";
        }
        if (c == '"' || c == '\\' || c == ',') {
            return std::string("holds the character ") + c.toLatin1();
        }
    }
    return std::string();
}

std::unique_ptr<db::Design> readDesignFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw DesignError(withFile(path, "cannot read: " + file.errorString().toStdString()));
    }
    const QByteArray bytes = file.readAll();
    auto design = std::make_unique<db::Design>();
    design->filePath = path;
    try {
        design->source = parseRoot(bytes);
        design->name = design->source.value("name").toString().toStdString();
        const QJsonArray instances = design->source.value("instances").toArray();
        std::unordered_set<std::string> takenNames;
        for (int i = 0; i < instances.size(); ++i) {
            if (!instances[i].isObject()) {
                throw DesignError(QString("instance %1 must be an object").arg(i).toStdString());
            }
            const QJsonObject object = instances[i].toObject();
            InstanceReader(*design, takenNames, object, i).read();
        }
    } catch (const DesignError& error) {
        throw DesignError(withFile(path, error.what()));
    }
    return design;
}

void writeDesignFile(const db::Design& design) {
    QJsonObject root = design.source;
    QJsonArray instances;
    for (const auto& instance : design.instances) {
        QJsonObject object = instance->source;
        object["name"] = QString::fromStdString(instance->name);
        QJsonObject parameters;
        for (const auto& [key, value] : instance->parameters.values) {
            parameters[QString::fromStdString(key)] = QString::fromStdString(value);
        }
        // An instance that had no parameters in the file and has none now keeps that shape.
        if (!parameters.isEmpty() || object.contains("parameters")) {
            object["parameters"] = parameters;
        }
        instances.append(object);
    }
    root["instances"] = instances;
    QSaveFile file(design.filePath);
    if (!file.open(QIODevice::WriteOnly)) {
        throw DesignError(
            withFile(design.filePath, "cannot write: " + file.errorString().toStdString()));
    }
    // QSaveFile only notices a failed write that happens before commit(), so the text is written
    // out here and checked; a short write leaves the original untouched.
    const QByteArray text = QJsonDocument(root).toJson(QJsonDocument::Indented);
    errno = 0;
    if (file.write(text) != text.size() || !file.flush()) {
        // Qt keeps no message for a failed flush; the system's reason is the useful one.
        const std::string reason = errno ? std::strerror(errno) : file.errorString().toStdString();
        file.cancelWriting();
        throw DesignError(withFile(design.filePath, "cannot write: " + reason));
    }
    if (!file.commit()) {
        throw DesignError(
            withFile(design.filePath, "cannot write: " + file.errorString().toStdString()));
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
