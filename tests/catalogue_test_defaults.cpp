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
