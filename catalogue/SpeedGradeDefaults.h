#pragma once

#include <QHash>
#include <QString>

namespace LaneTapUI {

// Supply key ("vdd", "vddq", "vdd1", "vdd2", "vtt") to voltage text, per DRAM type.
const QHash<QString, QString>& supplyDefaultsDDR4();
const QHash<QString, QString>& supplyDefaultsLPDDR4();
// "DDR4" and "LPDDR4" to their supply hash.
const QHash<QString, QHash<QString, QString>>& supplyDefaultsByDram();

// Speed grade in MT/s (1600, 1866, 2133, 2400, 2666, 2933, 3200) to its threshold defaults: key
// to value text, copied as text and never reformatted. Thresholds don't depend on the DRAM type.
const QHash<int, QHash<QString, QString>>& thresholdDefaultsBySpeedGrade();

// Supply voltage text; empty for an unknown DRAM type or key.
QString supplyDefault(const QString& dramType, const QString& key);

// The speed grade whose thresholds a data rate uses: the rate itself if it is a grade, else the
// next grade up, and the top grade above it.
int thresholdSpeedGrade(int dataRate);

// Threshold value text for a data rate; empty for an unknown key.
QString thresholdDefault(int dataRate, const QString& key);

}  // namespace LaneTapUI
