// The design loader on arbitrary file contents. A file either loads, or fails with one DesignError
// whose message is one line and names the file. A design that loads holds only names and values
// the rest of the program can rely on. Saved without a change, its file keeps every byte; saved
// with renames and added, changed and removed parameters, it loads again as the changed design.

#include <QFile>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <set>
#include <sstream>
#include <string>

#include "fuzz/FuzzCheck.h"
#include "standin/Design.h"
#include "standin/DesignFile.h"

using lanetap_fuzz::check;
using lanetap_fuzz::fail;
using lanetap_fuzz::shown;

namespace {

const QTemporaryDir& folder() {
    static const QTemporaryDir dir;
    check(dir.isValid(), "cannot make a temporary folder");
    return dir;
}

void writeFile(const QString& path, const std::uint8_t* data, std::size_t size) {
    QFile file(path);
    check(file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
              file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size)) ==
                  static_cast<qint64>(size),
          "cannot write " + path.toStdString());
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    check(file.open(QIODevice::ReadOnly), "cannot read " + path.toStdString());
    return file.readAll();
}

bool holdsControl(const std::string& text) {
    for (const QChar c : QString::fromStdString(text)) {
        if (c.category() == QChar::Other_Control) {
            return true;
        }
    }
    return false;
}

void checkName(const std::string& name, const std::string& what) {
    check(standin::nameProblem(name).empty(),
          what + " " + shown(name) + " was loaded although it " + standin::nameProblem(name));
}

std::string netName(const standin::OaInstTerm* bit) {
    return bit->net ? bit->net->oaNet()->name : std::string("<open>");
}

// Everything a loaded design holds, one fact a line, for comparing two loads. Checks on the way
// that names and values are what the loader promises.
std::string describe(const db::Design& design) {
    std::ostringstream out;
    out << "design " << design.name << '\n';
    std::set<std::string> names;
    for (const auto& instance : design.instances) {
        checkName(instance->name, "instance name");
        check(names.insert(instance->name).second, "two instances named " + shown(instance->name));
        check(!instance->cell.empty(), "instance " + instance->name + " has an empty cell");
        check(instance->design == &design, "instance " + instance->name + " has no design");
        check(instance->statusBits <= 3, "instance " + instance->name + " has a status above 3");
        check((instance->modelKind == standin::ModelKind::None) == !instance->model,
              "instance " + instance->name + ": the model does not match its kind");
        out << "instance " << instance->name << " cell " << instance->cell << " library "
            << instance->library << " model " << static_cast<int>(instance->modelKind) << " status "
            << instance->statusBits << '\n';
        for (const auto& [key, value] : instance->parameters.values) {
            check(!key.empty() && !holdsControl(key),
                  "parameter name " + shown(key) + " of " + instance->name + " was loaded");
            check(!holdsControl(value), "parameter " + key + " of " + instance->name +
                                            " holds a control character: " + shown(value));
            out << "  parameter " << shown(key) << " = " << shown(value) << '\n';
        }
        for (const standin::InstTerm* term : instance->terminals) {
            checkName(term->name, "terminal name");
            const auto* oaTerm = static_cast<const standin::OaInstTerm*>(
                static_cast<const OpenAccess_4::oaInstTerm*>(term->oaObject));
            if (oaTerm->bits.empty()) {
                const std::string net = term->net ? term->net->oaNet()->name : "<open>";
                if (term->net) {
                    checkName(net, "net name");
                }
                out << "  terminal " << term->name << " net " << net << '\n';
                continue;
            }
            out << "  bus " << term->name << '\n';
            for (const standin::OaInstTerm* bit : oaTerm->bits) {
                checkName(bit->name, "bit name");
                out << "    bit " << bit->name << " net " << netName(bit) << '\n';
            }
        }
        for (const standin::DdrPort& port : instance->ddrPorts) {
            checkName(port.port, "port name");
            checkName(port.pin, "pin name");
            checkName(port.refDes, "designator");
            check(port.index >= 0, "port " + port.port + " has a negative index");
            out << "  port " << port.port << " pin " << port.pin << " refDes " << port.refDes
                << " channel " << port.channel << " signal " << port.signal << " index "
                << port.index << '\n';
        }
    }
    return out.str();
}

// Loads `path`: a design, or null after checking the one error the loader may give.
std::unique_ptr<db::Design> load(const QString& path) {
    try {
        std::unique_ptr<db::Design> design = standin::readDesignFile(path);
        check(design != nullptr, "the loader gave no design and no error");
        return design;
    } catch (const standin::DesignError& error) {
        const std::string message = error.what();
        check(message.find('\n') == std::string::npos && message.find('\r') == std::string::npos,
              "the error is not one line: " + shown(message));
        const std::string prefix = path.toStdString() + ": ";
        check(message.size() > prefix.size() && message.compare(0, prefix.size(), prefix) == 0,
              "the error does not start with the file's name: " + shown(message));
        return nullptr;
    } catch (const std::exception& error) {
        fail(std::string("the loader threw something other than DesignError: ") + error.what());
    } catch (...) {
        fail("the loader threw something other than a standard exception");
    }
}

// Saves the design to its file and loads it back; both steps must succeed.
std::unique_ptr<db::Design> saveAndLoad(db::Design& design) {
    try {
        standin::writeDesignFile(design);
    } catch (const std::exception& error) {
        fail(std::string("a loaded design cannot be saved: ") + error.what());
    }
    try {
        return standin::readDesignFile(design.filePath);
    } catch (const std::exception& error) {
        fail(std::string("a saved design does not load again: ") + error.what());
    }
}

// Changes every instance as a setup would: a parameter added, the first one changed to a value
// that needs escapes, the last of two or more removed, and every other instance renamed.
void change(db::Design& design) {
    int n = 0;
    for (const auto& instance : design.instances) {
        standin::ParameterValues& values = instance->parameters.values;
        // Board nodes become part of signal keys and may not hold quotes.
        if (!values.empty() && values.begin()->first != "IbisPinSelEbdNodesName") {
            values.begin()->second += "\"\\/\u00e9";
        }
        if (values.size() >= 2) {
            values.erase(std::prev(values.end()));
        }
        values["fuzzAdded"] = "v" + std::to_string(n);
        const std::string name = "Renamed" + std::to_string(n++);
        if (n % 2 == 0 && !design.findInstance(name)) {
            instance->name = name;
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString input = folder().filePath("design.json");
    writeFile(input, data, size);
    std::unique_ptr<db::Design> design = load(input);
    if (!design) {
        return 0;
    }
    const std::string loaded = describe(*design);

    // Saved without a change, the file keeps every byte.
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    std::unique_ptr<db::Design> same = saveAndLoad(*design);
    check(readFile(input) == bytes, "saving without a change changed the file");
    check(describe(*same) == loaded, "the design changed by saving and loading");

    // Changed and saved, it loads again as the changed design, and saving that changes no byte.
    change(*design);
    const std::string changed = describe(*design);
    std::unique_ptr<db::Design> again = saveAndLoad(*design);
    const std::string reloaded = describe(*again);
    check(reloaded == changed, "the changed design did not load again as it was:\n--- changed\n" +
                                   changed + "--- saved and loaded\n" + reloaded);
    const QByteArray saved = readFile(input);
    saveAndLoad(*again);
    check(readFile(input) == saved, "saving a saved design changed the file");
    return 0;
}
