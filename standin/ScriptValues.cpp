#include "standin/ScriptValues.h"

#include <atomic>
#include <cstring>
#include <map>

#include "standin/Design.h"

struct TYPE_DEFINITION {
    const char* name;
    standin::ValueKind kind;
};

struct VALUE_HEADER {
    TYPE_DEFINITION* type;
    // The payload: for a pointer value its first word is the pointer.
    void* pointer;
    int number;
    std::string text;
};

namespace standin {
namespace {

TYPE_DEFINITION knownTypes[] = {
    {"QtWidget", ValueKind::Pointer},    {"ParamIter", ValueKind::Pointer},
    {"String", ValueKind::String},       {"Integer", ValueKind::Integer},
    {"DbInstance", ValueKind::Pointer},  {"Design", ValueKind::Pointer},
    {"WinInstance", ValueKind::Pointer}, {"ItemSession", ValueKind::Pointer},
};

TYPE_DEFINITION* findType(const char* name) {
    for (TYPE_DEFINITION& type : knownTypes) {
        if (std::strcmp(type.name, name) == 0) {
            return &type;
        }
    }
    return nullptr;
}

std::atomic<long> liveValues{0};
std::vector<const std::vector<VALUE_HEADER*>*> frames;

std::map<std::string, HostFunction>& hostFunctions() {
    static std::map<std::string, HostFunction> functions;
    return functions;
}

VALUE_HEADER* newValue(TYPE_DEFINITION* type) {
    ++liveValues;
    return new VALUE_HEADER{type, nullptr, 0, std::string()};
}

const VALUE_HEADER* argumentOfType(int index, const TYPE_DEFINITION* type) {
    const VALUE_HEADER* value = currentArgument(index);
    if (value->type != type) {
        throw ScriptError("argument " + std::to_string(index) + " is not of type " + type->name);
    }
    return value;
}

// The pointer that argument `index` of `type` carries; a null one raises the script error.
void* pointerArgument(int index, TYPE_DEFINITION* type) {
    void* pointer = argumentOfType(index, type)->pointer;
    if (!pointer) {
        orl::throw_parameter_pointer_is_null(index, type);
    }
    return pointer;
}

}  // namespace

TYPE_DEFINITION* stringType() {
    return findType("String");
}
TYPE_DEFINITION* integerType() {
    return findType("Integer");
}
TYPE_DEFINITION* instanceType() {
    return findType("DbInstance");
}
TYPE_DEFINITION* designType() {
    return findType("Design");
}
TYPE_DEFINITION* windowInstanceType() {
    return findType("WinInstance");
}
TYPE_DEFINITION* sessionType() {
    return findType("ItemSession");
}

const char* typeName(const TYPE_DEFINITION* type) {
    return type->name;
}
TYPE_DEFINITION* typeOf(const VALUE_HEADER* value) {
    return value->type;
}
ValueKind kindOf(const VALUE_HEADER* value) {
    return value->type->kind;
}

VALUE_HEADER* createInteger(int number) {
    VALUE_HEADER* value = newValue(integerType());
    value->number = number;
    return value;
}

int integerOf(const VALUE_HEADER* value) {
    return value->number;
}

const char* textOf(const VALUE_HEADER* value) {
    return value && kindOf(value) == ValueKind::String ? value->text.c_str() : nullptr;
}

bool takeText(VALUE_HEADER* value, std::string& text) {
    if (!textOf(value)) {
        return false;
    }
    text = std::move(value->text);
    return true;
}

VALUE_HEADER* copyValue(const VALUE_HEADER* value) {
    VALUE_HEADER* copy = newValue(value->type);
    copy->pointer = value->pointer;
    copy->number = value->number;
    copy->text = value->text;
    return copy;
}

CallFrame::CallFrame(std::vector<VALUE_HEADER*> values) : arguments(std::move(values)) {
    frames.push_back(&arguments);
}

CallFrame::~CallFrame() {
    frames.pop_back();
    for (VALUE_HEADER* value : arguments) {
        oval_free_value(value);
    }
}

const VALUE_HEADER* currentArgument(int index) {
    if (frames.empty()) {
        throw ScriptError("no script call is running");
    }
    const std::vector<VALUE_HEADER*>& arguments = *frames.back();
    if (index < 0 || static_cast<std::size_t>(index) >= arguments.size()) {
        throw ScriptError("missing script argument " + std::to_string(index));
    }
    return arguments[static_cast<std::size_t>(index)];
}

void defineHostFunction(const std::string& name, HostFunction function) {
    hostFunctions()[name] = std::move(function);
}

void removeHostFunction(const std::string& name) {
    hostFunctions().erase(name);
}

long liveValueCount() {
    return liveValues;
}

}  // namespace standin

using standin::ScriptError;

// ---- value layer ---------------------------------------------------------------------------

TYPE_DEFINITION* oval_find_type(const char* name) {
    return standin::findType(name);
}

VALUE_HEADER* oval_create_raw_ptr(TYPE_DEFINITION* type, void* pointer) {
    VALUE_HEADER* value = standin::newValue(type);
    value->pointer = pointer;
    return value;
}

VALUE_HEADER* oval_create_string(const char* text) {
    VALUE_HEADER* value = standin::newValue(standin::stringType());
    value->text = text;
    return value;
}

void* oval_value_data(VALUE_HEADER* value) {
    if (standin::kindOf(value) == standin::ValueKind::String) {
        return value->text.data();
    }
    return &value->pointer;
}

void oval_free_value(VALUE_HEADER* value) {
    if (value) {
        --standin::liveValues;
        delete value;
    }
}

namespace orl {

VALUE_HEADER* get_typed_parm_impl(int index, TYPE_DEFINITION* type) {
    return standin::copyValue(standin::argumentOfType(index, type));
}

void throw_parameter_pointer_is_null(int index, TYPE_DEFINITION* type) {
    throw ScriptError("parameter " + std::to_string(index) + " of type " +
                      (type ? type->name : "unknown") + " is a null pointer");
}

WinInstanceC* get_win_instance_parm(int index) {
    return static_cast<WinInstanceC*>(
        standin::pointerArgument(index, standin::windowInstanceType()));
}

}  // namespace orl

db::Instance* get_db_inst_orl_parm(int index) {
    return static_cast<db::Instance*>(standin::pointerArgument(index, standin::instanceType()));
}

VALUE_HEADER* create_design_orl_value(db::Design* design) {
    return oval_create_raw_ptr(standin::designType(), design);
}

VALUE_HEADER* apival_create_winInst_value(WinInstanceC* windowInstance, void*, void*, void*) {
    return oval_create_raw_ptr(standin::windowInstanceType(), windowInstance);
}

// ---- call layer ----------------------------------------------------------------------------

ORLValue::ORLValue(VALUE_HEADER* owned) : value(owned) {}
ORLValue::ORLValue(ORLValue&& other) noexcept : value(other.value) {
    other.value = nullptr;
}
ORLValue::~ORLValue() {
    oval_free_value(value);
}
VALUE_HEADER* ORLValue::get() const {
    return value;
}

StringORLValue::StringORLValue(const ORLValue& result) : value(result) {}
const char* StringORLValue::value_data() const {
    return standin::textOf(value.get());
}

struct CallORL::Arguments {
    std::vector<VALUE_HEADER*> values;
};

CallORL::CallORL(const std::string& functionName) : name(functionName), arguments(new Arguments) {}

CallORL::~CallORL() {
    for (VALUE_HEADER* value : arguments->values) {
        oval_free_value(value);
    }
    delete arguments;
}

CallORL& CallORL::add_arg(const std::string& text) {
    return add_arg(text.c_str());
}

CallORL& CallORL::add_arg(const ORLValue& value) {
    arguments->values.push_back(standin::copyValue(value.get()));
    return *this;
}

CallORL& CallORL::add_arg(int number) {
    arguments->values.push_back(standin::createInteger(number));
    return *this;
}

CallORL& CallORL::add_arg(const char* text) {
    arguments->values.push_back(oval_create_string(text));
    return *this;
}

ORLValue CallORL::execute(bool* failed) const {
    auto found = standin::hostFunctions().find(name);
    if (found == standin::hostFunctions().end()) {
        throw ScriptError("unknown script function " + name);
    }
    std::vector<const VALUE_HEADER*> values(arguments->values.begin(), arguments->values.end());
    if (failed) {
        *failed = false;
    }
    return ORLValue(found->second(values));
}
