#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/Database.h"
#include "host/HostExport.h"
#include "host/Script.h"

// The host hands a plug-in its interfaces through a registry at load time.

// A script function of the vocabulary: no C-level arguments, a script value as result.
using ScriptFunction = VALUE_HEADER* (*)();

// One entry of a script vocabulary: seven 64-bit words.
struct VocabularyEntry {
    const char* name;
    std::uint64_t kind;
    std::uint64_t payload;
    std::uint64_t reserved[4];
};

// A script vocabulary as it crosses into the script engine; zero words follow the count.
struct VocabularyDescriptor {
    const char* name;
    const char* interfaceName;
    const VocabularyEntry* entries;
    std::uint64_t count;
    std::uint64_t reserved[4];
};

// Kind words of a vocabulary entry.
enum VocabularyKind : std::uint64_t { VocabularyFunction = 0, VocabularyConstant = 2 };

class HOST_API HostInterface {
public:
    virtual std::int32_t version() const = 0;

protected:
    virtual ~HostInterface();
};

// "ORL": the script engine.
class HOST_API ORLInterface : public HostInterface {
public:
    virtual std::uint8_t registerVocabulary(int reserved1, int reserved2, int reserved3,
                                            int descriptorCount,
                                            const VocabularyDescriptor* descriptors) = 0;

protected:
    ~ORLInterface() override;
};

// The host's object for one edit of one item.
class HOST_API ItemParameterSession {
public:
    virtual ~ItemParameterSession();
    virtual bool passesEditOn() const = 0;
    virtual const char* instanceName() const = 0;
    virtual void setInstanceName(const char* name) = 0;
    virtual db::Design* design() const = 0;
    virtual void fillParamIter(db::ParamIter* iterator) = 0;
    virtual void commit() = 0;
    virtual void libraryName(std::string& result) const = 0;
    virtual const std::string& cellName() const = 0;
};

// "ItemParametersEdit": the host's item-parameter editor.
class HOST_API ItemParametersEditInterface : public HostInterface {
public:
    virtual void openItemSession(std::shared_ptr<ItemParameterSession>& result, int mode) = 0;
    virtual VALUE_HEADER* sessionValue(const std::shared_ptr<ItemParameterSession>* session) = 0;

protected:
    ~ItemParametersEditInterface() override;
};

// The registry that the host passes to RegisterLibraryContents.
class HOST_API InterfaceRegistry {
public:
    virtual HostInterface* getInterface(const char* name) = 0;
    virtual void reportFailure(const char* message) = 0;

protected:
    virtual ~InterfaceRegistry();
};
