#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/HostExport.h"
#include "host/OpenAccess.h"

// The host's design database: designs, instances, terminals, nets and parameters. All handles are
// owned by the host and stay valid for the duration of a script call.
namespace db {

class Design;
class ModelDef;
class Net;
class View;
class EmptyParamIter;

// Base of the host's database objects. Its third pointer-sized member is the OpenAccess object
// that the database object stands for.
class HOST_API MeridianObject {
public:
    static MeridianObject* find_oa_object_meridian_data(OpenAccess_4::oaObject* object);
    static MeridianObject* create_oa_object_meridian_data(OpenAccess_4::oaObject* object);

    Net* get_net_of_object_only() const;
    OpenAccess_4::oaNet* cast_to_oa_net() const;

    void* hostHeader[2];
    OpenAccess_4::oaObject* oaObject;

protected:
    MeridianObject() = default;
    ~MeridianObject() = default;
};

// A placed instance. Its fourth pointer-sized member is the design that holds it; an instance
// with either of the two lowest status bits set is not part of the netlist.
class HOST_API Instance : public MeridianObject {
public:
    Design* design;
    std::uint32_t statusBits;

protected:
    Instance() = default;
    ~Instance() = default;
};

// The model definition of an instance; an instance counts only while `active` is non-zero.
class HOST_API ModelDef {
public:
    void* hostHeader[2];
    std::uint8_t active;

protected:
    ModelDef() = default;
    ~ModelDef() = default;
};

// A terminal of an instance; its third pointer-sized member is the oaInstTerm.
class HOST_API InstTerm : public MeridianObject {
protected:
    InstTerm() = default;
    ~InstTerm() = default;
};

class HOST_API Net : public MeridianObject {
protected:
    Net() = default;
    ~Net() = default;
};

class HOST_API HierarchyContext {
public:
    HierarchyContext(Design* design, const View* view);
    ~HierarchyContext();
    Design* get_design() const;

private:
    Design* design;
    const View* view;
};

template <class OaType, class DbType>
class HOST_API Iterator {
public:
    DbType* get_next();

protected:
    explicit Iterator(Design* design);
    ~Iterator() = default;

    Design* design;
    std::size_t position;
};

extern template class Iterator<OpenAccess_4::oaInst, Instance>;

class HOST_API InstIter : public Iterator<OpenAccess_4::oaInst, Instance> {
public:
    explicit InstIter(Design* design);
    ~InstIter();
};

class HOST_API InstTermIter {
public:
    explicit InstTermIter(const Instance* instance);
    ~InstTermIter();
    InstTerm* get_current_data() const;
    void set_next();

private:
    const Instance* instance;
    std::size_t position;
};

// Read access to the parameters of an instance or of an edited item.
class HOST_API ParamIterConst {
public:
    // Throws an exception derived from std::exception when the parameter does not exist.
    const std::string& get_param_string_value(const std::string& name) const;

protected:
    ParamIterConst() = default;
    ~ParamIterConst() = default;

    friend struct ParamIterAccess;
    void* parameterSet = nullptr;
    const Instance* owner = nullptr;
};

class HOST_API ParamIter : public ParamIterConst {
public:
    explicit ParamIter(Instance* instance);
    // An empty iterator, to be pointed at an item's parameters by ItemParameterSession.
    ParamIter(EmptyParamIter* empty, const Instance* instance);
    ~ParamIter();
    ParamIter(const ParamIter&) = delete;
    ParamIter& operator=(const ParamIter&) = delete;

    void set_param_string_value(const std::string& name, const std::string& value);
};

HOST_API ModelDef* get_instance_model_definition(const Instance* instance);
HOST_API std::string get_model_cell_name(const Instance* instance);
HOST_API std::string get_instance_name(const Instance* instance);
HOST_API std::string get_inst_term_name(const InstTerm* term);

}  // namespace db

// How the netlist of a design is seen; the plug-in always asks for the netlist descent.
enum DescentNetlistType : int { DescentNetlistNetlist = 2 };

class HOST_API DesignContext {
public:
    explicit DesignContext(db::Design* design);
    ~DesignContext();
    db::Design* design() const;

private:
    db::Design* designHandle;
};

namespace db {
HOST_API HierarchyContext get_hierarchy_context_for_netlist(const DesignContext& context,
                                                            DescentNetlistType type,
                                                            const View* view);
}  // namespace db

// Shows a warning to the user during netlisting. The text is given whole, with its own line end.
HOST_API void meridian_report_warning(const std::string& text);
