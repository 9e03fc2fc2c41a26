#include <cstring>
#include <stdexcept>
#include <unordered_map>

#include "standin/Design.h"
#include "standin/Warnings.h"

namespace {

std::unordered_map<const OpenAccess_4::oaObject*, db::Design*>& terminalOwners() {
    static std::unordered_map<const OpenAccess_4::oaObject*, db::Design*> owners;
    return owners;
}

const standin::Instance* impl(const db::Instance* instance) {
    return static_cast<const standin::Instance*>(instance);
}

char* copyText(const char* text) {
    const std::size_t length = std::strlen(text);
    char* copy = new char[length + 1];
    std::memcpy(copy, text, length + 1);
    return copy;
}

class MissingParameter : public std::out_of_range {
public:
    explicit MissingParameter(const std::string& name)
        : std::out_of_range("no parameter named " + name) {}
};

}  // namespace

// ---- OpenAccess ----------------------------------------------------------------------------

namespace OpenAccess_4 {

// An empty string or name holds no text of its own: a netlist call makes two of them for every
// terminal of a board.
oaString::oaString() : text(nullptr) {}
oaString::~oaString() { delete[] text; }
void oaString::assign(const char* value) {
    delete[] text;
    text = copyText(value);
}
oaString::operator const char*() const { return text ? text : ""; }

oaName::oaName() : text(nullptr) {}
oaName::~oaName() { delete[] text; }
void oaName::assign(const char* value) {
    delete[] text;
    text = copyText(value);
}
void oaName::get(oaString& out) const { out.assign(text ? text : ""); }

oaBitNet* oaNet::getBit(unsigned bitIndex) const {
    auto* self = static_cast<const standin::OaNet*>(this);
    if (self->bits.empty()) {
        return bitIndex == 0 ? const_cast<standin::OaNet*>(self) : nullptr;
    }
    return bitIndex < self->bits.size() ? self->bits[bitIndex] : nullptr;
}

void oaNet::getName(oaName& name) const {
    name.assign(static_cast<const standin::OaNet*>(this)->name.c_str());
}

unsigned oaInstTerm::getNumBits() const {
    auto* self = static_cast<const standin::OaInstTerm*>(this);
    return self->bits.empty() ? 1u : static_cast<unsigned>(self->bits.size());
}

oaInstTerm* oaInstTerm::getBit(unsigned bitIndex) const {
    auto* self = static_cast<const standin::OaInstTerm*>(this);
    if (self->bits.empty()) {
        return bitIndex == 0 ? const_cast<standin::OaInstTerm*>(self) : nullptr;
    }
    return bitIndex < self->bits.size() ? self->bits[bitIndex] : nullptr;
}

}  // namespace OpenAccess_4

// ---- stand-in objects ----------------------------------------------------------------------

namespace standin {

const std::string* ParameterStore::find(const std::string& name) const {
    auto found = values.find(name);
    if (found != values.end()) {
        return &found->second;
    }
    if (defaults) {
        auto fallback = defaults->find(name);
        if (fallback != defaults->end()) {
            return &fallback->second;
        }
    }
    return nullptr;
}

Net::Net(OaNet* net) : db::Net() {
    hostHeader[0] = hostHeader[1] = nullptr;
    oaObject = net;
}

InstTerm::InstTerm(OaInstTerm* oaTerm, std::string termName, Net* termNet)
    : db::InstTerm(), name(std::move(termName)), net(termNet) {
    hostHeader[0] = hostHeader[1] = nullptr;
    oaObject = oaTerm;
}

ModelDef::ModelDef(bool isActive) : db::ModelDef() {
    hostHeader[0] = hostHeader[1] = nullptr;
    active = isActive ? 1 : 0;
}

Instance::Instance() : db::Instance() {
    hostHeader[0] = hostHeader[1] = nullptr;
    oaObject = nullptr;
    design = nullptr;
    statusBits = 0;
}

}  // namespace standin

// ---- the design ----------------------------------------------------------------------------

namespace db {

Design* designOwning(const OpenAccess_4::oaObject* object) {
    auto found = terminalOwners().find(object);
    return found == terminalOwners().end() ? nullptr : found->second;
}

Design::Design() = default;

Design::~Design() {
    for (const auto& term : oaTerms) {
        terminalOwners().erase(term.get());
    }
}

standin::Instance* Design::findInstance(const std::string& instanceName) const {
    for (const auto& instance : instances) {
        if (instance->name == instanceName) {
            return instance.get();
        }
    }
    return nullptr;
}

standin::Instance* Design::addInstance() {
    instances.push_back(std::make_unique<standin::Instance>());
    instances.back()->design = this;
    return instances.back().get();
}

standin::Net* Design::netNamed(const std::string& netName) {
    auto found = netsByName.find(netName);
    if (found != netsByName.end()) {
        return found->second;
    }
    oaNets.push_back(std::make_unique<standin::OaNet>(netName));
    nets.push_back(std::make_unique<standin::Net>(oaNets.back().get()));
    netsByName.emplace(netName, nets.back().get());
    return nets.back().get();
}

standin::Net* Design::busNet(const std::vector<standin::Net*>& bitNets) {
    oaNets.push_back(std::make_unique<standin::OaNet>(std::string()));
    standin::OaNet* bus = oaNets.back().get();
    for (standin::Net* bit : bitNets) {
        bus->bits.push_back(bit ? bit->oaNet() : nullptr);
    }
    nets.push_back(std::make_unique<standin::Net>(bus));
    return nets.back().get();
}

standin::InstTerm* Design::addScalarTerm(standin::Instance* instance, const std::string& termName,
                                         standin::Net* net) {
    oaTerms.push_back(std::make_unique<standin::OaInstTerm>());
    standin::OaInstTerm* oaTerm = oaTerms.back().get();
    terms.push_back(std::make_unique<standin::InstTerm>(oaTerm, termName, net));
    meridianData[oaTerm] = terms.back().get();
    terminalOwners()[oaTerm] = this;
    instance->terminals.push_back(terms.back().get());
    return terms.back().get();
}

standin::InstTerm* Design::addBusTerm(
    standin::Instance* instance, const std::string& termName,
    const std::vector<std::pair<std::string, standin::Net*>>& bits) {
    std::vector<standin::Net*> bitNets;
    std::vector<standin::OaInstTerm*> bitTerms;
    for (const auto& [bitName, bitNet] : bits) {
        // A bit's database object is only made when the plug-in first asks for it.
        oaTerms.push_back(std::make_unique<standin::OaInstTerm>());
        oaTerms.back()->name = bitName;
        oaTerms.back()->net = bitNet;
        terminalOwners()[oaTerms.back().get()] = this;
        bitTerms.push_back(oaTerms.back().get());
        bitNets.push_back(bitNet);
    }
    standin::InstTerm* bus = addScalarTerm(instance, termName, busNet(bitNets));
    static_cast<standin::OaInstTerm*>(static_cast<OpenAccess_4::oaInstTerm*>(bus->oaObject))
        ->bits = bitTerms;
    return bus;
}

MeridianObject* Design::meridianDataOf(OpenAccess_4::oaObject* object, bool create) {
    auto found = meridianData.find(object);
    if (found != meridianData.end()) {
        return found->second;
    }
    if (!create) {
        return nullptr;
    }
    auto* oaTerm = static_cast<standin::OaInstTerm*>(static_cast<OpenAccess_4::oaInstTerm*>(object));
    terms.push_back(std::make_unique<standin::InstTerm>(oaTerm, oaTerm->name, oaTerm->net));
    meridianData[object] = terms.back().get();
    return terms.back().get();
}

// ---- host operations -----------------------------------------------------------------------

MeridianObject* MeridianObject::find_oa_object_meridian_data(OpenAccess_4::oaObject* object) {
    Design* owner = designOwning(object);
    return owner ? owner->meridianDataOf(object, false) : nullptr;
}

MeridianObject* MeridianObject::create_oa_object_meridian_data(OpenAccess_4::oaObject* object) {
    Design* owner = designOwning(object);
    return owner ? owner->meridianDataOf(object, true) : nullptr;
}

Net* MeridianObject::get_net_of_object_only() const {
    // Terminals are the only database objects the plug-in asks for a net.
    return static_cast<const standin::InstTerm*>(this)->net;
}

OpenAccess_4::oaNet* MeridianObject::cast_to_oa_net() const {
    return static_cast<OpenAccess_4::oaNet*>(static_cast<OpenAccess_4::oaBitNet*>(
        static_cast<const standin::Net*>(this)->oaNet()));
}

HierarchyContext::HierarchyContext(Design* designHandle, const View* viewHandle)
    : design(designHandle), view(viewHandle) {}
HierarchyContext::~HierarchyContext() = default;
Design* HierarchyContext::get_design() const { return design; }

template <class OaType, class DbType>
Iterator<OaType, DbType>::Iterator(Design* designHandle) : design(designHandle), position(0) {}

template <class OaType, class DbType>
DbType* Iterator<OaType, DbType>::get_next() {
    if (!design || position >= design->instances.size()) {
        return nullptr;
    }
    return design->instances[position++].get();
}

template class Iterator<OpenAccess_4::oaInst, Instance>;

InstIter::InstIter(Design* designHandle) : Iterator(designHandle) {}
InstIter::~InstIter() = default;

InstTermIter::InstTermIter(const Instance* owner) : instance(owner), position(0) {}
InstTermIter::~InstTermIter() = default;

InstTerm* InstTermIter::get_current_data() const {
    const auto& terms = impl(instance)->terminals;
    return position < terms.size() ? terms[position] : nullptr;
}

void InstTermIter::set_next() { ++position; }

const std::string& ParamIterConst::get_param_string_value(const std::string& name) const {
    const auto* store = static_cast<const standin::ParameterStore*>(parameterSet);
    const std::string* value = store ? store->find(name) : nullptr;
    if (!value) {
        throw MissingParameter(name);
    }
    return *value;
}

ParamIter::ParamIter(Instance* instance) {
    parameterSet = instance ? &static_cast<standin::Instance*>(instance)->parameters : nullptr;
    owner = instance;
}

ParamIter::ParamIter(EmptyParamIter*, const Instance* instance) { owner = instance; }

ParamIter::~ParamIter() = default;

void ParamIter::set_param_string_value(const std::string& name, const std::string& value) {
    auto* store = static_cast<standin::ParameterStore*>(parameterSet);
    if (!store) {
        throw std::logic_error("parameter iterator points at no parameters");
    }
    store->values[name] = value;
}

ModelDef* get_instance_model_definition(const Instance* instance) {
    return impl(instance)->model.get();
}

std::string get_model_cell_name(const Instance* instance) { return impl(instance)->cell; }

std::string get_instance_name(const Instance* instance) { return impl(instance)->name; }

std::string get_inst_term_name(const InstTerm* term) {
    return static_cast<const standin::InstTerm*>(term)->name;
}

HierarchyContext get_hierarchy_context_for_netlist(const DesignContext& context,
                                                   DescentNetlistType, const View* view) {
    return HierarchyContext(context.design(), view);
}

}  // namespace db

DesignContext::DesignContext(db::Design* design) : designHandle(design) {}
DesignContext::~DesignContext() = default;
db::Design* DesignContext::design() const { return designHandle; }

void meridian_report_warning(const std::string& text) { standin::recordWarning(text); }

// ---- DDR metadata --------------------------------------------------------------------------

namespace DDRBusPlanner {

DDRSignalID::DDRSignalID(std::int32_t signalIndex, signalType family)
    : index(signalIndex), type(family) {}
DDRSignalID::~DDRSignalID() = default;
const signalType& DDRSignalID::get_signal_id_type() const { return type; }

DDRPortInfo::DDRPortInfo(std::uint32_t channelId, std::string pin, std::string port,
                         std::string designator, DDRSignalID id)
    : channel(channelId),
      pinName(std::move(pin)),
      portName(std::move(port)),
      refDes(std::move(designator)),
      signalId(id) {}
DDRPortInfo::~DDRPortInfo() = default;
std::uint32_t DDRPortInfo::get_channel_id() const { return channel; }
std::string DDRPortInfo::get_pin_name() const { return pinName; }
const std::string& DDRPortInfo::get_port_name() const { return portName; }
const std::string& DDRPortInfo::get_ref_des() const { return refDes; }
const DDRSignalID& DDRPortInfo::get_signal_id() const { return signalId; }

DDRMetaData::DDRMetaData(db::Instance* instance) {
    for (const standin::DdrPort& port : impl(instance)->ddrPorts) {
        ports.push_back(new DDRPortInfo(port.channel, port.pin, port.port, port.refDes,
                                        DDRSignalID(port.index, static_cast<signalType>(port.signal))));
    }
}

DDRMetaData::~DDRMetaData() {
    for (DDRPortInfo* port : ports) {
        delete port;
    }
}

const std::vector<DDRPortInfo*>& DDRMetaData::get_all_meta_data() const { return ports; }

}  // namespace DDRBusPlanner
