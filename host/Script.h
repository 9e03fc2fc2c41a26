#pragma once

#include <string>

#include "host/Database.h"
#include "host/HostExport.h"

class QWidget;

// The host's script engine: values, types and the arguments of the running script call.
struct VALUE_HEADER;
struct TYPE_DEFINITION;

// The window instance that a script call carries. Its third pointer member is the parent widget.
class HOST_API WinInstanceC {
public:
    void* hostHeader[2];
    QWidget* parentWidget;

protected:
    WinInstanceC() = default;
    ~WinInstanceC() = default;
};

extern "C" {
HOST_API TYPE_DEFINITION* oval_find_type(const char* name);
HOST_API VALUE_HEADER* oval_create_raw_ptr(TYPE_DEFINITION* type, void* pointer);
HOST_API VALUE_HEADER* oval_create_string(const char* text);
// For a raw-pointer value the first word of the payload is the pointer.
HOST_API void* oval_value_data(VALUE_HEADER* value);
HOST_API void oval_free_value(VALUE_HEADER* value);
}

namespace orl {
// The script argument at `index` as a value of `type`; the caller frees it.
HOST_API VALUE_HEADER* get_typed_parm_impl(int index, TYPE_DEFINITION* type);
// Raises the host's script error; does not return.
[[noreturn]] HOST_API void throw_parameter_pointer_is_null(int index, TYPE_DEFINITION* type);
HOST_API WinInstanceC* get_win_instance_parm(int index);
}  // namespace orl

HOST_API db::Instance* get_db_inst_orl_parm(int index);
HOST_API VALUE_HEADER* create_design_orl_value(db::Design* design);
HOST_API VALUE_HEADER* apival_create_winInst_value(WinInstanceC* windowInstance, void* word1,
                                                   void* word2, void* word3);

// A script value owned for its lifetime.
class HOST_API ORLValue {
public:
    explicit ORLValue(VALUE_HEADER* value);
    ORLValue(ORLValue&& other) noexcept;
    ORLValue(const ORLValue&) = delete;
    ORLValue& operator=(const ORLValue&) = delete;
    ORLValue& operator=(ORLValue&&) = delete;
    ~ORLValue();
    VALUE_HEADER* get() const;

private:
    VALUE_HEADER* value;
};

class HOST_API StringORLValue {
public:
    explicit StringORLValue(const ORLValue& value);
    // Null when the value is not a string.
    const char* value_data() const;

private:
    const ORLValue& value;
};

// A call of a host script function by name.
class HOST_API CallORL {
public:
    explicit CallORL(const std::string& functionName);
    ~CallORL();
    CallORL(const CallORL&) = delete;
    CallORL& operator=(const CallORL&) = delete;

    CallORL& add_arg(const std::string& text);
    CallORL& add_arg(const ORLValue& value);
    CallORL& add_arg(int number);
    CallORL& add_arg(const char* text);
    // Runs the call; an unknown function raises the host's script error.
    ORLValue execute(bool* failed) const;

private:
    struct Arguments;
    std::string name;
    Arguments* arguments;
};
