#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/Database.h"
#include "host/HostExport.h"

// What the host publishes about the DDR role of an instance's ports.
namespace DDRBusPlanner {

enum signalType : std::int32_t {
    DQ = 0,
    DQS_t = 1,
    DQS_c = 2,
    CK_t = 3,
    CK_c = 4,
    A = 5,
    VDD = 6,
    VPP = 7,
    VSS = 8,
    ODT = 9,
    CS_n = 10,
    CKE = 11,
    RAS_n = 12,
    CAS_n = 13,
    WE_n = 14,
    BA = 15,
    BG = 16,
    DM_n = 17,
    DBI_n = 18,
};

// Copied by value as two 32-bit words: the index of the signal in its family, then the family.
class HOST_API DDRSignalID {
public:
    DDRSignalID(std::int32_t index, signalType type);
    DDRSignalID(const DDRSignalID&) = default;
    DDRSignalID& operator=(const DDRSignalID&) = default;
    ~DDRSignalID();
    const signalType& get_signal_id_type() const;

    std::int32_t index;

private:
    signalType type;
};

class HOST_API DDRPortInfo {
public:
    DDRPortInfo(std::uint32_t channel, std::string pinName, std::string portName,
                std::string refDes, DDRSignalID signalId);
    ~DDRPortInfo();
    std::uint32_t get_channel_id() const;
    std::string get_pin_name() const;
    const std::string& get_port_name() const;
    const std::string& get_ref_des() const;
    const DDRSignalID& get_signal_id() const;

private:
    std::uint32_t channel;
    std::string pinName;
    std::string portName;
    std::string refDes;
    DDRSignalID signalId;
};

// The DDR ports of one instance, in the host's order. The object owns the port records.
class HOST_API DDRMetaData {
public:
    explicit DDRMetaData(db::Instance* instance);
    ~DDRMetaData();
    DDRMetaData(const DDRMetaData&) = delete;
    DDRMetaData& operator=(const DDRMetaData&) = delete;
    const std::vector<DDRPortInfo*>& get_all_meta_data() const;

private:
    std::vector<DDRPortInfo*> ports;
};

}  // namespace DDRBusPlanner
