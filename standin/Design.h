#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/Database.h"
#include "host/DdrMetaData.h"
#include "host/OpenAccess.h"

// The stand-in's in-memory design database. The objects derive from the host's handle classes, so
// that the handles the plug-in receives are these objects and the layout facts of the handles hold.
namespace standin {

using ParameterValues = std::map<std::string, std::string>;

// The parameters of one instance or of one edit. `defaults` supplies what a probe instance lacks,
// as the item definition would for a newly placed probe.
struct ParameterStore {
    ParameterValues values;
    const ParameterValues* defaults = nullptr;

    const std::string* find(const std::string& name) const;
};

class OaNet : public OpenAccess_4::oaBitNet {
public:
    explicit OaNet(std::string name) : name(std::move(name)) {}
    std::string name;
    // Bits of a bus net; a scalar net is its own only bit. A null bit is unconnected.
    std::vector<OaNet*> bits;
};

class Net : public db::Net {
public:
    explicit Net(OaNet* oaNet);
    OaNet* oaNet() const {
        return static_cast<OaNet*>(static_cast<OpenAccess_4::oaNet*>(oaObject));
    }
};

class InstTerm;

class OaInstTerm : public OpenAccess_4::oaInstTerm {
public:
    OaInstTerm() = default;
    ~OaInstTerm() = default;
    // Bits of a bus terminal; empty for a scalar terminal, which is its own only bit.
    std::vector<OaInstTerm*> bits;
    // What the database object is made of when it is first asked for.
    std::string name;
    Net* net = nullptr;
};

class InstTerm : public db::InstTerm {
public:
    InstTerm(OaInstTerm* oaTerm, std::string name, Net* net);
    std::string name;
    Net* net;
};

class ModelDef : public db::ModelDef {
public:
    explicit ModelDef(bool isActive);
};

enum class ModelKind { Active, Inactive, None };

// A member of a JSON object in the design file's text: byte offsets of its key (quotes included)
// and of its value, each one past its end.
struct SourceMember {
    std::uint32_t keyBegin = 0;
    std::uint32_t keyEnd = 0;
    std::uint32_t valueBegin = 0;
    std::uint32_t valueEnd = 0;
};

// Where an instance stands in the text of its design file: what a save needs to change its name
// and its parameters and to keep every other byte.
struct InstanceSource {
    SourceMember name;
    // The object's last member, and the end of the member before it (the last member's own key
    // start when it is the only one): a "parameters" member that the file lacks goes after it.
    SourceMember last;
    std::uint32_t endBeforeLast = 0;
    int members = 0;
    bool hasParameters = false;
    // The braces of the "parameters" object, and its members in the file's order.
    std::uint32_t parametersOpen = 0;
    std::uint32_t parametersClose = 0;
    std::vector<SourceMember> parameters;
};

struct DdrPort {
    std::string port;
    std::string pin;
    std::string refDes;
    std::uint32_t channel = 0;
    std::int32_t signal = 0;
    std::int32_t index = 0;
};

class Instance : public db::Instance {
public:
    Instance();
    std::string name;
    std::string cell;
    std::string library;
    ModelKind modelKind = ModelKind::Active;
    std::unique_ptr<ModelDef> model;
    ParameterStore parameters;
    std::vector<InstTerm*> terminals;
    std::vector<DdrPort> ddrPorts;
    // Where the instance stands in the design file's text, so that saving keeps what it held.
    InstanceSource source;
};

}  // namespace standin

namespace db {

class Design {
public:
    Design();
    ~Design();
    Design(const Design&) = delete;
    Design& operator=(const Design&) = delete;

    standin::Instance* findInstance(const std::string& name) const;
    standin::Instance* addInstance();
    standin::Net* netNamed(const std::string& name);
    standin::Net* busNet(const std::vector<standin::Net*>& bitNets);
    standin::InstTerm* addScalarTerm(standin::Instance* instance, const std::string& name,
                                     standin::Net* net);
    standin::InstTerm* addBusTerm(standin::Instance* instance, const std::string& name,
                                  const std::vector<std::pair<std::string, standin::Net*>>& bits);
    // The database object of a bit terminal, made on first request.
    MeridianObject* meridianDataOf(OpenAccess_4::oaObject* object, bool create);

    std::string name;
    QString filePath;
    // The file's bytes as they were read or last saved; null for a design built in memory. A save
    // changes only what the instances changed since, and only over a file that still holds them.
    QByteArray sourceText;
    std::vector<std::unique_ptr<standin::Instance>> instances;

private:
    std::vector<std::unique_ptr<standin::OaNet>> oaNets;
    std::vector<std::unique_ptr<standin::Net>> nets;
    std::map<std::string, standin::Net*> netsByName;
    std::vector<std::unique_ptr<standin::OaInstTerm>> oaTerms;
    std::vector<std::unique_ptr<standin::InstTerm>> terms;
    std::map<const OpenAccess_4::oaObject*, MeridianObject*> meridianData;
};

// The design that owns an OpenAccess terminal, or null for an object no live design knows.
Design* designOwning(const OpenAccess_4::oaObject* object);

}  // namespace db
