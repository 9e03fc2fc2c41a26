#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/Script.h"

// The stand-in's script values and the frames of running script calls.
namespace standin {

// The host's script error: what a script function raises when its arguments are wrong, and what
// calling an unknown host function raises.
class ScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum class ValueKind { Pointer, String, Integer };

TYPE_DEFINITION* stringType();
TYPE_DEFINITION* integerType();
TYPE_DEFINITION* instanceType();
TYPE_DEFINITION* designType();
TYPE_DEFINITION* windowInstanceType();
TYPE_DEFINITION* sessionType();

const char* typeName(const TYPE_DEFINITION* type);
TYPE_DEFINITION* typeOf(const VALUE_HEADER* value);
ValueKind kindOf(const VALUE_HEADER* value);
VALUE_HEADER* createInteger(int number);
int integerOf(const VALUE_HEADER* value);
// The text of a string value, or null for any other value.
const char* textOf(const VALUE_HEADER* value);
// Moves the text out of a string value; false for any other value.
bool takeText(VALUE_HEADER* value, std::string& text);
VALUE_HEADER* copyValue(const VALUE_HEADER* value);

// The arguments of one script call, owned by the frame while the call runs.
class CallFrame {
public:
    explicit CallFrame(std::vector<VALUE_HEADER*> arguments);
    ~CallFrame();
    CallFrame(const CallFrame&) = delete;
    CallFrame& operator=(const CallFrame&) = delete;

private:
    std::vector<VALUE_HEADER*> arguments;
    friend const VALUE_HEADER* currentArgument(int index);
};

// The argument `index` of the innermost running call; raises ScriptError when there is none.
const VALUE_HEADER* currentArgument(int index);

// A host script function that CallORL reaches by name. It returns a new value or null.
using HostFunction = std::function<VALUE_HEADER*(const std::vector<const VALUE_HEADER*>&)>;
void defineHostFunction(const std::string& name, HostFunction function);
void removeHostFunction(const std::string& name);

// How many values are alive; the stand-in's tests use it to see that every value is freed.
long liveValueCount();

}  // namespace standin
