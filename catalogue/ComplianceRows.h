#pragma once

#include <QtGlobal>

#include <cstddef>

// Literal row lists from which the compliance tables are built. Only the table builder and the
// two row files see this header.
namespace LaneTapUI::ComplianceRows {

enum Mode : qint32 { Read = 0, Write = 1, Both = 2 };

// Which companion signals a measurement needs; each names the closing sentence of a description.
enum Dependency {
    NoDep,
    DepC,   // CK
    DepQ,   // corresponding DQS
    DepQC,  // corresponding DQS and CK
    DepD,   // at least one corresponding DQ
    DepDC,  // at least one corresponding DQ and CK
};

struct Row {
    qint32 id;
    const char* name;
    Mode operationMode;
    bool continuousAllowed;
    const char* text;
    Dependency dependency;
};

struct RowRange {
    const Row* first = nullptr;
    const Row* last = nullptr;
};

template <std::size_t N>
constexpr RowRange rangeOf(const Row (&rows)[N]) {
    return {rows, rows + N};
}

// The rows of one DRAM type, split by the table they belong to, in their order of entry.
struct DramRows {
    const char* dramType;
    RowRange dq;
    RowRange dqs;
    RowRange dm;
    RowRange ca;
    RowRange ck;
    RowRange cke;
};

DramRows ddr4Rows();
DramRows lpddr4Rows();

}  // namespace LaneTapUI::ComplianceRows
