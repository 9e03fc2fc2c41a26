// Generic measurement tables, voltage units, supply and threshold defaults, signal type names.

#include <gtest/gtest.h>

#include <QStringList>

#include <algorithm>
#include <climits>

#include "catalogue/MeasurementTypes.h"
#include "catalogue/SignalTypes.h"
#include "catalogue/SpeedGradeDefaults.h"
#include "catalogue/VoltageUnits.h"

// Show texts, not code units, when an expectation fails.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

using namespace LaneTapUI;

TEST(MeasurementTables, NamesKeysAndCodesMatchUp) {
    const QList<int> codes = {0, 1, 2, 3, 4, 5, 7};
    const QStringList displayNames = {"Strobed Eye", "Skew",        "Slew Rate",  "Eye",
                                      "Waveform",    "Mask Margin", "BER Contour"};
    const QStringList keys = {"StrobedEye", "Skew",       "SlewRate",  "Eye",
                              "Waveform",   "MaskMargin", "BERContour"};
    EXPECT_EQ(measurementDisplayNames().size(), 7);
    EXPECT_EQ(measurementKeys().size(), 7);
    EXPECT_EQ(measurementTypesByDisplayName().size(), 7);
    EXPECT_EQ(measurementTypesByKey().size(), 7);
    EXPECT_EQ(measurementDescriptions().size(), 7);
    for (int i = 0; i < codes.size(); ++i) {
        const MeasurementType type = MeasurementType(codes[i]);
        EXPECT_EQ(measurementDisplayNames().value(type), displayNames[i]);
        EXPECT_EQ(measurementKeys().value(type), keys[i]);
        EXPECT_EQ(measurementTypesByDisplayName().value(displayNames[i], MeasurementType(-1)),
                  type);
        EXPECT_EQ(measurementTypesByKey().value(keys[i], MeasurementType(-1)), type);
        EXPECT_TRUE(measurementDescriptions().value(displayNames[i]).startsWith("Description:\n"));
    }
    EXPECT_FALSE(measurementDisplayNames().contains(MeasurementType(6)));
    EXPECT_FALSE(measurementTypesByKey().contains("Slew Rate"));
    EXPECT_FALSE(measurementTypesByDisplayName().contains("SlewRate"));

    EXPECT_EQ(referenceFreeTypesByDisplayName().size(), 5);
    EXPECT_EQ(referenceFreeTypesByKey().size(), 5);
    EXPECT_FALSE(referenceFreeTypesByDisplayName().contains("Skew"));
    EXPECT_FALSE(referenceFreeTypesByDisplayName().contains("Strobed Eye"));
    EXPECT_FALSE(referenceFreeTypesByKey().contains("StrobedEye"));
    EXPECT_EQ(referenceFreeTypesByDisplayName().value("BER Contour"), BERContour);
    EXPECT_EQ(referenceFreeTypesByKey().value("MaskMargin"), MaskMargin);
    EXPECT_FALSE(referenceFreeTypesByKey().contains("Mask Margin"));

    EXPECT_EQ(measurementDescriptions().value("Eye"),
              "Description:\n Measures an ideal clock triggered eye density.");
    EXPECT_EQ(measurementDescriptions().value("BER Contour"),
              "Description:\nPlots the contour at target BER.\nCannot be plot for DQS/CK signal "
              "type or Transient simulation.");
}

TEST(VoltageUnits, TextsAndCodesAreInverse) {
    const QStringList texts = {"None", "fV", "pV", "nV", "uV", "mV", "V", "kV"};
    EXPECT_EQ(voltageUnitNames().size(), 8);
    EXPECT_EQ(voltageUnitsByName().size(), 8);
    for (int code = 0; code < texts.size(); ++code) {
        EXPECT_EQ(voltageUnitNames().value(VoltageUnit(code)), texts[code]);
        EXPECT_EQ(voltageUnitsByName().value(texts[code], VoltageUnit(-1)), code);
    }
    EXPECT_EQ(voltageUnitsByName().value("V"), UnitVolt);
    EXPECT_EQ(voltageUnitsByName().value("volt"), UnitNone);
    EXPECT_FALSE(voltageUnitNames().contains(VoltageUnit(8)));
}

TEST(SpeedGradeDefaults, DataRateSelectsTheNextGradeUp) {
    const struct {
        int dataRate;
        int grade;
    } cases[] = {{INT_MIN, 1600}, {-5, 1600},   {0, 1600},    {1000, 1600}, {1600, 1600},
                 {1601, 1866},    {1865, 1866}, {1866, 1866}, {1867, 2133}, {2133, 2133},
                 {2134, 2400},    {2401, 2666}, {2666, 2666}, {2667, 2933}, {2934, 3200},
                 {3199, 3200},    {3200, 3200}, {3201, 3200}, {4000, 3200}, {INT_MAX, 3200}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.dataRate);
        EXPECT_EQ(thresholdSpeedGrade(c.dataRate), c.grade);
        const QHash<QString, QString> column = thresholdDefaultsBySpeedGrade().value(c.grade);
        for (auto value = column.cbegin(); value != column.cend(); ++value) {
            EXPECT_EQ(thresholdDefault(c.dataRate, value.key()), value.value());
        }
    }
    EXPECT_EQ(thresholdDefault(1866, "vih_dq_ac"), "0.093 V");
    EXPECT_EQ(thresholdDefault(2400, "vih_dq_ac"), "0.08 V");
    EXPECT_EQ(thresholdDefault(2134, "vih_dq_ac"), "0.08 V");
    EXPECT_EQ(thresholdDefault(2401, "tdivwDQ"), "0.22");
    EXPECT_EQ(thresholdDefault(4000, "vilDiff_DQS_ac"), "-0.140 V");
    EXPECT_EQ(thresholdDefault(2400, "vihDiff_DQS_ac"), "0.160 V");
    EXPECT_EQ(thresholdDefault(-5, "vol_diff"), "-0.3");
    EXPECT_TRUE(thresholdDefault(3200, "vih_dq").isEmpty());
}

TEST(SpeedGradeDefaults, EveryGradeHasTheSameKeys) {
    QList<int> grades = thresholdDefaultsBySpeedGrade().keys();
    std::sort(grades.begin(), grades.end());
    EXPECT_EQ(grades, (QList<int>{1600, 1866, 2133, 2400, 2666, 2933, 3200}));
    QStringList lowestKeys = thresholdDefaultsBySpeedGrade().value(1600).keys();
    lowestKeys.sort();
    EXPECT_EQ(lowestKeys.size(), 28);
    for (const QHash<QString, QString>& column : thresholdDefaultsBySpeedGrade()) {
        QStringList keys = column.keys();
        keys.sort();
        EXPECT_EQ(keys, lowestKeys);
        EXPECT_FALSE(column.values().contains(QString()));
    }
}

TEST(SpeedGradeDefaults, SuppliesFollowTheDramType) {
    for (const char* key : {"vdd", "vddq", "vdd1", "vdd2"}) {
        EXPECT_EQ(supplyDefault("DDR4", key), "1.2 V") << key;
        EXPECT_EQ(supplyDefault("LPDDR4", key), "1.1 V") << key;
    }
    EXPECT_EQ(supplyDefault("DDR4", "vtt"), "0.6 V");
    EXPECT_EQ(supplyDefault("LPDDR4", "vtt"), "0.55 V");
    EXPECT_TRUE(supplyDefault("DDR3", "vdd").isEmpty());
    EXPECT_TRUE(supplyDefault("ddr4", "vdd").isEmpty());
    EXPECT_TRUE(supplyDefault("DDR4", "vpp").isEmpty());
    EXPECT_EQ(supplyDefaultsDDR4().size(), 5);
    EXPECT_EQ(supplyDefaultsLPDDR4().size(), 5);
    EXPECT_EQ(supplyDefaultsByDram().size(), 2);
    EXPECT_EQ(supplyDefaultsByDram().value("LPDDR4"), supplyDefaultsLPDDR4());
}

TEST(SignalTypes, FamilyTextsAndBaseNames) {
    EXPECT_EQ(signalTypeName(0), "DQ");
    EXPECT_EQ(signalTypeName(6), "VDD");
    EXPECT_EQ(signalTypeName(10), "CS_n");
    EXPECT_EQ(signalTypeName(18), "DBI_n");
    EXPECT_EQ(signalTypeName(19), "UNKNOWN");
    EXPECT_EQ(signalTypeName(-1), "UNKNOWN");

    EXPECT_EQ(signalBaseName("DQS_Ch0_U1"), "DQS");
    EXPECT_EQ(signalBaseName("DM_n"), "DM");
    EXPECT_EQ(signalBaseName("CKE"), "CKE");
    EXPECT_EQ(signalBaseName("_x"), "x");
    EXPECT_EQ(signalBaseName("__"), "");
    EXPECT_EQ(signalBaseName(""), "");
    EXPECT_EQ(signalBaseName(QString()), "");
}
