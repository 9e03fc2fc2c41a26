#pragma once

#include "host/HostExport.h"

// The OpenAccess objects that the plug-in touches, in the namespace of the OpenAccess release the
// host is built with.
namespace OpenAccess_4 {

class HOST_API oaObject {
protected:
    oaObject() = default;
    ~oaObject() = default;
};

class HOST_API oaString {
public:
    oaString();
    ~oaString();
    oaString(const oaString&) = delete;
    oaString& operator=(const oaString&) = delete;
    void assign(const char* text);
    operator const char*() const;

private:
    char* text;
};

class HOST_API oaName {
public:
    oaName();
    ~oaName();
    oaName(const oaName&) = delete;
    oaName& operator=(const oaName&) = delete;
    void assign(const char* text);
    void get(oaString& out) const;

private:
    char* text;
};

class oaBitNet;

class HOST_API oaNet : public oaObject {
public:
    oaBitNet* getBit(unsigned bitIndex) const;
    void getName(oaName& name) const;

protected:
    oaNet() = default;
    ~oaNet() = default;
};

class HOST_API oaBitNet : public oaNet {
protected:
    oaBitNet() = default;
    ~oaBitNet() = default;
};

class HOST_API oaInstTerm : public oaObject {
public:
    unsigned getNumBits() const;
    oaInstTerm* getBit(unsigned bitIndex) const;

protected:
    oaInstTerm() = default;
    ~oaInstTerm() = default;
};

class oaInst;

}  // namespace OpenAccess_4
