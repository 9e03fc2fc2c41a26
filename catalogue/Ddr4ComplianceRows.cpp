// Compliance rows of DDR4, table by table, in their order of entry.
// Columns: id, name, cycle, offered with a continuous strobe, text, companion signals.

#include "catalogue/ComplianceRows.h"

namespace LaneTapUI::ComplianceRows {
namespace {

// clang-format off

const Row dqRows[] = {  // 18 rows
    {11311, "VOH(AC)", Read, true, "AC Output Logic High.", DepQ},
    {11312, "VOH(DC)", Read, true, "DC Output Logic High.", DepQ},
    {11321, "VOL(AC)", Read, true, "AC Output Logic Low.", DepQ},
    {11322, "VOL(DC)", Read, true, "DC Output Logic Low.", DepQ},
    {11341, "SRQseR", Read, true, "Output signal minimum rising slew rate.", DepQ},
    {11342, "SRQseF", Read, true, "Output signal minimum falling slew rate.", DepQ},
    {30101, "tHZDQ", Read, false, "DQ out high-impedance time from CK'/CK.", DepQC},
    {30102, "tLZDQ", Read, false, "DQ low-impedance time from CK'/CK.", DepQC},
    {30104, "tDQSQ", Read, true, "DQS-DQ skew for DQS and associated DQ signals.", DepQC},
    {30105, "tQH", Read, true, "DQ/DQS output hold time from DQS.", DepQC},
    {30119, "tDQSQ_DBI", Read, true, "DQS-DQ skew for DQS and associated DQ signals with DBI enabled.", DepQC},
    {30120, "tQH_DBI", Read, true, "DQ/DQS output hold time from DQS with DBI enabled.", DepQC},
    {103000, "Overshoot amplitude (DQ)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {103001, "Overshoot area (Max Abs Level) (DQ)", Both, true, "Overshoot area above Maximum Absolute Level of Vin,Vout", NoDep},
    {103002, "Overshoot area (VDDQ to Max Abs Level) (DQ)", Both, true, "Overshoot area between VDDQ and Maximum Absolute Level of Vin,Vout", NoDep},
    {103003, "Undershoot amplitude (DQ)", Both, true, "Peak amplitude of AC undershoot", NoDep},
    {103004, "Undershoot area (Min Abs Level) (DQ)", Both, true, "Undershoot area below Minimum Absolute Level of Vin,Vout", NoDep},
    {103005, "Undershoot area (VSSQ to Min Abs Level) (DQ)", Both, true, "Undershoot area between VSSQ and Minimum Absolute Level of Vin,Vout", NoDep},
};

const Row dqsRows[] = {  // 42 rows
    {11411, "VOHdiff(AC)", Read, true, "Differential AC Output Logic High Voltage.", DepD},
    {11412, "VOLdiff(AC)", Read, true, "Differential AC Output Logic Low Voltage.", DepD},
    {11413, "SRQdiffR", Read, true, "Differential Output Rising Slew Rate.", DepD},
    {11414, "SRQdiffF", Read, true, "Differential Output Falling Slew Rate.", DepD},
    {30021, "tDQSCK", Read, true, "DQS output access time from CK'/CK.", DepDC},
    {30103, "tLZDQS", Read, false, "DQS low-impedance time from CK'/CK.", DepDC},
    {30113, "tRPRE", Read, false, "Read preamble.", DepDC},
    {30114, "tRPST", Read, false, "Read postamble.", DepDC},
    {30115, "tQSH", Read, true, "DQS output high time.", DepDC},
    {30116, "tQSL", Read, true, "DQS output low time.", DepDC},
    {30118, "tHZDQS", Read, false, "DQS high-impedance time from CK'/CK.", DepDC},
    {10331, "VSEH(DQS)", Write, true, "Single-ended High Level Voltage.", DepD},
    {10335, "VSEH(DQS)", Write, true, "Single-ended High Level Voltage.", DepD},
    {10332, "VSEL(DQS)", Write, true, "Single-ended Low Level Voltage.", DepD},
    {10336, "VSEL(DQS)", Write, true, "Single-ended Low Level Voltage.", DepD},
    {10382, "VIX(DQS)", Write, true, "Strobe Cross Point Voltage Test.", DepD},
    {10413, "VIHdiff.DQS(AC)", Write, true, "Differential AC Input Logic High Voltage.", DepD},
    {10417, "VIHdiff.DQS(DC)", Write, true, "Differential DC Input Logic High Voltage.", DepD},
    {10414, "VILdiff.DQS(AC)", Write, true, "Differential AC Input Logic Low Voltage.", DepD},
    {10418, "VILdiff.DQS(DC)", Write, true, "Differential DC Input Logic Low Voltage.", DepD},
    {11415, "SRIdiffR", Write, true, "Differential Input Rising Slew Rate.", DepD},
    {11416, "SRIdiffF", Write, true, "Differential Input Falling Slew Rate.", DepD},
    {30106, "tDQSS", Write, false, "DQS latching transition to associated clock edge.", DepDC},
    {30107, "tDQSH", Write, true, "DQS input high pulse width.", DepDC},
    {30108, "tDQSL", Write, true, "DQS input low pulse width.", DepDC},
    {30109, "tDSS", Write, true, "DQS falling edge to CK setup time.", DepDC},
    {30110, "tDSH", Write, true, "DQS falling edge hold time from CK.", DepDC},
    {30111, "tWPRE", Write, false, "Write preamble.", DepDC},
    {30112, "tWPST", Write, false, "Write postamble.", DepDC},
    {30117, "tDVAC(DQS)", Write, true, "Time above AC level (Strobe).", DepDC},
    {103006, "Overshoot amplitude (DQS)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {103012, "Overshoot amplitude (DQS)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {103007, "Overshoot area (Max Abs Level) (DQS)", Both, true, "Overshoot area above Maximum Absolute Level of Vin,Vout", NoDep},
    {103013, "Overshoot area (Max Abs Level) (DQS)", Both, true, "Overshoot area above Maximum Absolute Level of Vin,Vout", NoDep},
    {103008, "Overshoot area (VDDQ to Max Abs Level) (DQS)", Both, true, "Overshoot area between VDDQ and Maximum Absolute Level of Vin, Vout", NoDep},
    {103014, "Overshoot area (VDDQ to Max Abs Level) (DQS)", Both, true, "Overshoot area between VDDQ and Maximum Absolute Level of Vin, Vout", NoDep},
    {103009, "Undershoot amplitude (DQS)", Both, true, "Peak amplitude of AC undershoot", NoDep},
    {103015, "Undershoot amplitude (DQS)", Both, true, "Peak amplitude of AC undershoot", NoDep},
    {103010, "Undershoot area (Min Abs Level) (DQS)", Both, true, "Undershoot area below Minimum Absolute Level of Vin,Vout", NoDep},
    {103016, "Undershoot area (Min Abs Level) (DQS)", Both, true, "Undershoot area below Minimum Absolute Level of Vin,Vout", NoDep},
    {103011, "Undershoot area (VSSQ to Min Abs Level) (DQS)", Both, true, "Undershoot area between VSSQ and Minimum Absolute Level of Vin,Vout", NoDep},
    {103017, "Undershoot area (VSSQ to Min Abs Level) (DQS)", Both, true, "Undershoot area between VSSQ and Minimum Absolute Level of Vin,Vout", NoDep},
};

const Row dmRows[] = {  // 6 rows
    {103018, "Overshoot amplitude (DM)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {103019, "Overshoot area (Max Abs Level) (DM)", Both, true, "Overshoot area above Maximum Absolute Level of Vin,Vout", NoDep},
    {103020, "Overshoot area (VDDQ to Max Abs Level) (DM)", Both, true, "Overshoot area between VDDQ and Maximum Absolute Level of Vin,Vout", NoDep},
    {103021, "Undershoot amplitude (DM)", Both, true, "Peak amplitude of AC undershoot", NoDep},
    {103022, "Undershoot area (Min Abs Level) (DM)", Both, true, "Undershoot area below Minimum Absolute Level of Vin,Vout", NoDep},
    {103023, "Undershoot area (VSSQ to Min Abs Level) (DM)", Both, true, "Undershoot area between VSSQ and Minimum Absolute Level of Vin,Vout", NoDep},
};

const Row caRows[] = {  // 12 rows
    {10311, "VIH.CA(AC)", Both, true, "AC Input Logic High", NoDep},
    {10312, "VIH.CA(DC)", Both, true, "DC Input Logic High", NoDep},
    {10321, "VIL.CA(AC)", Both, true, "AC Input Logic Low", NoDep},
    {10322, "VIL.CA(DC)", Both, true, "DC Input Logic Low", NoDep},
    {10393, "Overshoot amplitude (CA)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {10394, "Overshoot area (VDD Abs Max) (CA)", Both, true, "OverShoot area above VDD Absolute Max", NoDep},
    {10395, "Overshoot area (VDD to VDD Abs Max) (CA)", Both, true, "OverShoot area between VDD and VDD Absolute Max", NoDep},
    {10396, "Undershoot amplitude (CA)", Both, true, "Peak amplitude of AC undershoot", NoDep},
    {10397, "Undershoot amplitude (VSS) (CA)", Both, true, "UnderShoot area below VSS", NoDep},
    {30201, "tIS(base)", Both, true, "Address and control input setup time.", DepC},
    {30202, "tIH(base)", Both, true, "Address and control input hold time.", DepC},
    {30207, "tIPW", Both, true, "Address and control input pulse width.", DepC},
};

const Row ckRows[] = {  // 41 rows
    {10333, "VSEH(CK)", Both, true, "Single-ended High Level Voltage", NoDep},
    {10337, "VSEH(CK)", Both, true, "Single-ended High Level Voltage", NoDep},
    {10334, "VSEL(CK)", Both, true, "Single-ended Low Level Voltage", NoDep},
    {10338, "VSEL(CK)", Both, true, "Single-ended Low Level Voltage", NoDep},
    {10381, "VIX(CK)", Both, true, "Clock Cross Point Voltage Test", NoDep},
    {10411, "VIHdiff.CK(AC)", Both, true, "Differential AC Input Logic High Voltage", NoDep},
    {10412, "VILdiff.CK(AC)", Both, true, "Differential AC Input Logic Low Voltage", NoDep},
    {10415, "VIHdiff.CK(DC)", Both, true, "Differential DC Input Logic High Voltage", NoDep},
    {10416, "VILdiff.CK(DC)", Both, true, "Differential DC Input Logic Low Voltage", NoDep},
    {2, "tCK(abs)", Both, true, "tCK(abs) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {100, "tjit(CC)", Both, true, "tjit(CC) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {200, "tCK(avg)", Both, true, "tCK(avg) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {300, "tjit(per)", Both, true, "tjit(per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {400, "terr(2per)", Both, true, "terr(2per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {500, "terr(3per)", Both, true, "terr(3per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {600, "terr(4per)", Both, true, "terr(4per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {700, "terr(5per)", Both, true, "terr(5per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {800, "terr(6per)", Both, true, "terr(6per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {900, "terr(7per)", Both, true, "terr(7per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {1000, "terr(8per)", Both, true, "terr(8per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {1100, "terr(9per)", Both, true, "terr(9per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {1200, "terr(10per)", Both, true, "terr(10per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {1300, "terr(11per)", Both, true, "terr(11per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {1400, "terr(12per)", Both, true, "terr(12per) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {3000, "terr(nper)", Both, true, "terr(nper) Rising Edge Measurements. Requires waveform of 200 periods or more", NoDep},
    {2200, "tCH(abs)", Both, true, "tCH(abs) Absolute clock HIGH pulse width. Requires waveform of 200 periods or more", NoDep},
    {2250, "tCL(abs)", Both, true, "tCL(abs) Absolute clock LOW pulse width. Requires waveform of 200 periods or more", NoDep},
    {2000, "tCH(avg)", Both, true, "tCH Average High Measurements. Requires waveform of 200 periods or more", NoDep},
    {2050, "tCL(avg)", Both, true, "tCL Average Low Measurements. Requires waveform of 200 periods or more", NoDep},
    {2100, "tjit(duty-high)", Both, true, "tjit(duty-high) Jitter Average High Measurements. Requires waveform of 200 periods or more", NoDep},
    {2150, "tjit(duty-low)", Both, true, "tjit(duty-low) Jitter Average Low Measurements. Requires waveform of 200 periods or more", NoDep},
    {103024, "Overshoot amplitude (CK)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {103029, "Overshoot amplitude (CK)", Both, true, "Peak amplitude of AC overshoot", NoDep},
    {103025, "Overshoot area (Max Abs Level) (CK)", Both, true, "Overshoot area above VDD Absolute Max", NoDep},
    {103030, "Overshoot area (Max Abs Level) (CK)", Both, true, "Overshoot area above VDD Absolute Max", NoDep},
    {103026, "Overshoot area (VDDQ to Max Abs Level) (CK)", Both, true, "Overshoot area between VDD and VDD Absolute Max", NoDep},
    {103031, "Overshoot area (VDDQ to Max Abs Level) (CK)", Both, true, "Overshoot area between VDD and VDD Absolute Max", NoDep},
    {103027, "Undershoot amplitude (CK)", Both, true, "Peak amplitude of AC undershoot", NoDep},
    {103032, "Undershoot amplitude (CK)", Both, true, "Peak amplitude of AC undershoot", NoDep},
    {103028, "Undershoot area (Min Abs Level) (CK)", Both, true, "UnderShoot area below VSS", NoDep},
    {103033, "Undershoot area (Min Abs Level) (CK)", Both, true, "UnderShoot area below VSS", NoDep},
};

const Row ckeRows[] = {  // 1 rows
    {30206, "tCKE", Both, true, "CKE Minimum Pulse Width.", DepC},
};

// clang-format on

}  // namespace

DramRows ddr4Rows() {
    DramRows rows{"DDR4", {}, {}, {}, {}, {}, {}};
    rows.dq = rangeOf(dqRows);
    rows.dqs = rangeOf(dqsRows);
    rows.dm = rangeOf(dmRows);
    rows.ca = rangeOf(caRows);
    rows.ck = rangeOf(ckRows);
    rows.cke = rangeOf(ckeRows);
    return rows;
}

}  // namespace LaneTapUI::ComplianceRows
