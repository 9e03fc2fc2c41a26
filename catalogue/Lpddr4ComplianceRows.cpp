// Compliance rows of LPDDR4, table by table, in their order of entry.
// Columns: id, name, cycle, offered with a continuous strobe, text, companion signals.

#include "catalogue/ComplianceRows.h"

namespace LaneTapUI::ComplianceRows {
namespace {

// clang-format off

const Row dqRows[] = {  // 14 rows
    {30501, "tDQSQ_DBI", Read, true, "DQS-DQ skew for DQS and associated DQ signals with DBI enabled.", DepQC},
    {30502, "tQH_DBI", Read, true, "DQ/DQS output hold time from DQS with DBI enabled.", DepQC},
    {50104, "tDQSQ", Read, true, "DQS-DQ skew for DQS and associated DQ signals.", DepQC},
    {50105, "tQH", Read, true, "DQ/DQS output hold time from DQS.", DepQC},
    {51311, "VOH(AC)", Read, false, "AC Output Logic High.", DepQ},
    {51312, "VOH(DC)", Read, false, "DC Output Logic High.", DepQ},
    {51321, "VOL(AC)", Read, false, "AC Output Logic Low.", DepQ},
    {51322, "VOL(DC)", Read, false, "DC Output Logic Low.", DepQ},
    {51341, "SRQseR", Read, false, "Output signal minimum rising slew rate.", DepQ},
    {51342, "SRQseF", Both, true, "Output signal minimum falling slew rate.", DepQ},
    {503000, "Overshoot amplitude (DQ)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {503001, "Overshoot area (DQ)", Both, true, "OverShoot area above VDDQ", NoDep},
    {503003, "Undershoot amplitude (DQ)", Both, true, "UnderShoot area below VSSQ", NoDep},
    {503004, "Undershoot area (DQ)", Both, true, "Peak amplitude of AC overshoot", NoDep},
};

const Row dqsRows[] = {  // 31 rows
    {30503, "tQSH_DBI", Read, true, "DQS output high time with DBI enabled.", DepDC},
    {30504, "tQSL_DBI", Read, false, "DQS output low time with DBI enabled.", DepDC},
    {50021, "tDQSCK", Read, true, "DQS output access time from CK'/CK.", DepDC},
    {50106, "tDQSS", Write, false, "DQS latching transition to associated clock edge.", DepDC},
    {50107, "tDQSH", Write, false, "DQS input high pulse width.", DepDC},
    {50108, "tDQSL", Write, false, "DQS input low pulse width.", DepDC},
    {50109, "tDSS", Write, false, "DQS falling edge to CK setup time.", DepDC},
    {50110, "tDSH", Write, false, "DQS falling edge hold time from CK.", DepDC},
    {50111, "tWPRE", Write, false, "Write preamble.", DepDC},
    {50112, "tWPST", Write, false, "Write postamble.", DepDC},
    {50113, "tRPRE", Read, false, "Read preamble.", DepDC},
    {50114, "tRPST", Read, false, "Read postamble.", DepDC},
    {50115, "tQSH", Read, true, "DQS output high time.", DepDC},
    {50116, "tQSL", Read, true, "DQS output low time.", DepDC},
    {50331, "VSEH(DQS)", Write, false, "Single-ended High Level Voltage.", DepD},
    {50335, "VSEH(DQS)", Write, false, "Single-ended High Level Voltage.", DepD},
    {50332, "VSEL(DQS)", Write, false, "Single-ended Low Level Voltage.", DepD},
    {50336, "VSEL(DQS)", Write, false, "Single-ended Low Level Voltage.", DepD},
    {50382, "Vix_DQS_ratio", Write, true, "Strobe Cross Point Voltage Ratio Test.", DepD},
    {51411, "VOHdiff(AC)", Read, true, "Differential AC Output Logic High Voltage.", DepD},
    {51412, "VOLdiff(AC)", Read, true, "Differential AC Output Logic Low Voltage.", DepD},
    {51413, "SRQdiffR", Read, false, "Differential Output Rising Slew Rate.", DepD},
    {51414, "SRQdiffF", Read, false, "Differential Output Falling Slew Rate.", DepD},
    {503004, "Overshoot amplitude (DQS)", Both, false, "Peak amplitude of AC overshoot", NoDep},
    {503008, "Overshoot amplitude (DQS)", Both, false, "Peak amplitude of AC overshoot", NoDep},
    {503005, "Overshoot area (DQS)", Both, false, "OverShoot area above VDDQ", NoDep},
    {503009, "Overshoot area (DQS)", Both, false, "OverShoot area above VDDQ", NoDep},
    {503006, "Undershoot amplitude (DQS)", Both, false, "Peak amplitude of AC undershoot", NoDep},
    {503010, "Undershoot amplitude (DQS)", Both, false, "Peak amplitude of AC undershoot", NoDep},
    {503007, "Undershoot area (DQS)", Both, false, "UnderShoot area below VSSQ", NoDep},
    {503011, "Undershoot area (DQS)", Both, false, "UnderShoot area below VSSQ", NoDep},
};

const Row dmRows[] = {  // 4 rows
    {503012, "Overshoot amplitude (DM)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {503013, "Overshoot area (DM)", Both, true, "OverShoot area above VDDQ", NoDep},
    {503014, "Undershoot amplitude (DM)", Both, true, "Peak amplitude of AC undershoot", NoDep},
    {503015, "Undershoot area (DM)", Both, true, "UnderShoot area below VSSQ", NoDep},
};

const Row caRows[] = {  // 4 rows
    {50351, "Overshoot amplitude (CA)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {50352, "Overshoot area (CA)", Both, true, "OverShoot area above VDD", NoDep},
    {50361, "Undershoot amplitude (CA)", Both, true, "Peak amplitude of AC undershoot", NoDep},
    {50362, "Undershoot amplitude (CA)", Both, true, "UnderShoot area below VSS", NoDep},
};

const Row ckRows[] = {  // 48 rows
    {50002, "tCK(abs)", Both, false, "tCK(abs) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {50100, "tjit(CC)", Both, false, "tjit(CC) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {50200, "tCK(avg)", Both, false, "tCK(avg) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {50300, "tjit(per)", Both, false, "tjit(per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {50333, "VSEH(CK)", Both, true, "Single-ended High Level Voltage", NoDep},
    {50337, "VSEH(CK)", Both, true, "Single-ended High Level Voltage", NoDep},
    {50334, "VSEL(CK)", Both, true, "Single-ended Low Level Voltage", NoDep},
    {50338, "VSEL(CK)", Both, true, "Single-ended Low Level Voltage", NoDep},
    {50381, "Vix_CK_ratio", Both, true, "Clock Cross Point Voltage Ratio Test", NoDep},
    {50339, "Vinse_CK_High", Both, true, "Clock Single-Ended input voltage High from Vref(CA)", NoDep},
    {50341, "Vinse_CK_High", Both, true, "Clock Single-Ended input voltage High from Vref(CA)", NoDep},
    {50340, "Vinse_CK_Low", Both, true, "Clock Single-Ended input voltage Low from Vref(CA)", NoDep},
    {50342, "Vinse_CK_Low", Both, true, "Clock Single-Ended input voltage Low from Vref(CA)", NoDep},
    {50400, "terr(2per)", Both, false, "terr(2per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {50411, "VIHdiff.CK(AC)", Both, false, "Differential AC Input Logic High Voltage", NoDep},
    {50412, "VILdiff.CK(AC)", Both, false, "Differential AC Input Logic Low Voltage", NoDep},
    {50415, "VIHdiff.CK(DC)", Both, false, "Differential DC Input Logic High Voltage", NoDep},
    {50416, "VILdiff.CK(DC)", Both, false, "Differential DC Input Logic Low Voltage", NoDep},
    {50417, "Vindiff_CK/2 High Pulse", Both, true, "Half CK differential input voltage for High Pulse", NoDep},
    {50418, "Vindiff_CK/2 Low Pulse", Both, true, "Half CK differential input voltage for Low Pulse", NoDep},
    {50419, "Vinse_CK (Positive Pulse)", Both, true, "Clock Single-Ended input voltage for Positive Pulse", NoDep},
    {50420, "Vinse_CK(Negative Pulse)", Both, true, "Clock Single-Ended input voltage for Negative Pulse", NoDep},
    {50421, "Vindiff_CK", Both, false, "CK differential input voltage", NoDep},
    {50500, "terr(3per)", Both, false, "terr(3per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {50600, "terr(4per)", Both, true, "terr(4per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {50700, "terr(5per)", Both, true, "terr(5per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {50800, "terr(6per)", Both, true, "terr(6per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {50900, "terr(7per)", Both, true, "terr(7per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {51000, "terr(8per)", Both, true, "terr(8per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {51100, "terr(9per)", Both, true, "terr(9per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {51200, "terr(10per)", Both, true, "terr(10per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {51300, "terr(11per)", Both, true, "terr(11per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {51400, "terr(12per)", Both, false, "terr(12per) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {52000, "tCH(avg)", Both, false, "tCH Average High Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {52050, "tCL(avg)", Both, false, "tCL Average Low Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {52100, "tjit(duty-high)", Both, false, "tjit(duty-high) Jitter Average High Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {52150, "tjit(duty-low)", Both, false, "tjit(duty-low) Jitter Average Low Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {52200, "tCH(abs)", Both, false, "tCH(abs) Absolute clock HIGH pulse width.\nRequires waveform of 200 periods or more.", NoDep},
    {52250, "tCL(abs)", Both, false, "tCL(abs) Absolute clock LOW pulse width.\nRequires waveform of 200 periods or more.", NoDep},
    {53000, "terr(nper)", Both, false, "terr(nper) Rising Edge Measurements.\nRequires waveform of 200 periods or more.", NoDep},
    {503016, "Overshoot amplitude (CK)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {503020, "Overshoot amplitude (CK)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {503017, "Overshoot area (CK)", Both, true, "OverShoot area above VDDQ", NoDep},
    {503021, "Overshoot area (CK)", Both, true, "OverShoot area above VDDQ", NoDep},
    {503018, "Undershoot amplitude (CK)", Both, true, "Peak amplitude of AC undershoot", NoDep},
    {503022, "Undershoot amplitude (CK)", Both, true, "Peak amplitude of AC undershoot", NoDep},
    {503019, "Undershoot area (CK)", Both, true, "UnderShoot area below VSSQ", NoDep},
    {503023, "Undershoot area (CK)", Both, false, "UnderShoot area below VSSQ", NoDep},
};

// clang-format on

}  // namespace

DramRows lpddr4Rows() {
    DramRows rows{"LPDDR4", {}, {}, {}, {}, {}, {}};
    rows.dq = rangeOf(dqRows);
    rows.dqs = rangeOf(dqsRows);
    rows.dm = rangeOf(dmRows);
    rows.ca = rangeOf(caRows);
    rows.ck = rangeOf(ckRows);
    // CKE has no LPDDR4 row.
    return rows;
}

}  // namespace LaneTapUI::ComplianceRows
