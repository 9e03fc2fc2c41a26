#include "catalogue/SpeedGradeDefaults.h"

#include <cstddef>
#include <iterator>

namespace LaneTapUI {
namespace {

const int speedGrades[] = {1600, 1866, 2133, 2400, 2666, 2933, 3200};
constexpr std::size_t speedGradeCount = std::size(speedGrades);

struct ThresholdRow {
    const char* key;
    const char* values[speedGradeCount];  // one per entry of speedGrades
};

// The trailing zeros of "0.160 V" and its kin are the stored texts; keep them.
// clang-format off
const ThresholdRow thresholdRows[] = {
    {"vih_dq_ac", {"0.093 V", "0.093 V", "0.093 V", "0.08 V", "0.075 V", "0.0725 V", "0.07 V"}},
    {"vil_dq_ac", {"0.093 V", "0.093 V", "0.093 V", "0.08 V", "0.075 V", "0.0725 V", "0.07 V"}},
    {"vih_dq_dc", {"0.068 V", "0.068 V", "0.068 V", "0.065 V", "0.06 V", "0.0575 V", "0.055 V"}},
    {"vil_dq_dc", {"0.068 V", "0.068 V", "0.068 V", "0.065 V", "0.06 V", "0.0575 V", "0.055 V"}},
    {"tdivwDQ", {"0.2", "0.2", "0.2", "0.2", "0.22", "0.23", "0.23"}},
    {"vih_ca_ac", {"0.1 V", "0.1 V", "0.1 V", "0.1 V", "0.09 V", "0.09 V", "0.09 V"}},
    {"vil_ca_ac", {"0.1 V", "0.1 V", "0.1 V", "0.1 V", "0.09 V", "0.09 V", "0.09 V"}},
    {"vih_ca_dc", {"0.075 V", "0.075 V", "0.075 V", "0.075 V", "0.065 V", "0.065 V", "0.065 V"}},
    {"vil_ca_dc", {"0.075 V", "0.075 V", "0.075 V", "0.075 V", "0.065 V", "0.065 V", "0.065 V"}},
    {"tcivwCA", {"0.3", "0.3", "0.3", "0.3", "0.3", "0.3", "0.3"}},
    {"se_high_DQS", {"0.7", "0.7", "0.7", "0.7", "0.69", "0.69", "0.69"}},
    {"se_low_DQS", {"0.5", "0.5", "0.5", "0.5", "0.51", "0.51", "0.51"}},
    {"se_high_CK", {"0.7", "0.7", "0.7", "0.7", "0.69", "0.69", "0.69"}},
    {"se_low_CK", {"0.5", "0.5", "0.5", "0.5", "0.51", "0.51", "0.51"}},
    {"voh_ac", {"0.9", "0.9", "0.9", "0.9", "0.9", "0.9", "0.9"}},
    {"vol_ac", {"0.7", "0.7", "0.7", "0.7", "0.7", "0.7", "0.7"}},
    {"voh_dc", {"0.9", "0.9", "0.9", "0.9", "0.9", "0.9", "0.9"}},
    {"vol_dc", {"0.7", "0.7", "0.7", "0.7", "0.7", "0.7", "0.7"}},
    {"vihDiff_DQS_ac", {"0.186 V", "0.186 V", "0.186 V", "0.160 V", "0.150 V", "0.145 V", "0.140 V"}},
    {"vilDiff_DQS_ac", {"-0.186 V", "-0.186 V", "-0.186 V", "-0.160 V", "-0.150 V", "-0.145 V", "-0.140 V"}},
    {"vihDiff_DQS", {"0.136 V", "0.136 V", "0.136 V", "0.13 V", "0.12 V", "0.115 V", "0.11 V"}},
    {"vilDiff_DQS", {"-0.136 V", "-0.136 V", "-0.136 V", "-0.13 V", "-0.12 V", "-0.115 V", "-0.11 V"}},
    {"vihDiff_CK_ac", {"0.2 V", "0.2 V", "0.2 V", "0.2 V", "0.18 V", "0.18 V", "0.18 V"}},
    {"vilDiff_CK_ac", {"-0.2 V", "-0.2 V", "-0.2 V", "-0.2 V", "-0.18 V", "-0.18 V", "-0.18 V"}},
    {"vihDiff_CK", {"0.15 V", "0.15 V", "0.15 V", "0.15 V", "0.12 V", "0.12 V", "0.12 V"}},
    {"vilDiff_CK", {"-0.15 V", "-0.15 V", "-0.15 V", "-0.15 V", "-0.12 V", "-0.12 V", "-0.12 V"}},
    {"voh_diff", {"0.3", "0.3", "0.3", "0.3", "0.3", "0.3", "0.3"}},
    {"vol_diff", {"-0.3", "-0.3", "-0.3", "-0.3", "-0.3", "-0.3", "-0.3"}},
};
// clang-format on

QHash<QString, QString> thresholdColumn(std::size_t column) {
    QHash<QString, QString> values;
    for (const ThresholdRow& row : thresholdRows) {
        values.insert(QString::fromLatin1(row.key), QString::fromLatin1(row.values[column]));
    }
    return values;
}

QHash<QString, QString> supplies(const char* coreVoltage, const char* terminationVoltage) {
    const QString core = QString::fromLatin1(coreVoltage);
    return {
        {QStringLiteral("vdd"), core},
        {QStringLiteral("vddq"), core},
        {QStringLiteral("vdd1"), core},
        {QStringLiteral("vdd2"), core},
        {QStringLiteral("vtt"), QString::fromLatin1(terminationVoltage)},
    };
}

}  // namespace

const QHash<QString, QString>& supplyDefaultsDDR4() {
    static const QHash<QString, QString> defaults = supplies("1.2 V", "0.6 V");
    return defaults;
}

const QHash<QString, QString>& supplyDefaultsLPDDR4() {
    static const QHash<QString, QString> defaults = supplies("1.1 V", "0.55 V");
    return defaults;
}

const QHash<QString, QHash<QString, QString>>& supplyDefaultsByDram() {
    static const QHash<QString, QHash<QString, QString>> byDram = {
        {QStringLiteral("DDR4"), supplyDefaultsDDR4()},
        {QStringLiteral("LPDDR4"), supplyDefaultsLPDDR4()},
    };
    return byDram;
}

const QHash<int, QHash<QString, QString>>& thresholdDefaultsBySpeedGrade() {
    static const QHash<int, QHash<QString, QString>> bySpeedGrade = [] {
        QHash<int, QHash<QString, QString>> columns;
        for (std::size_t column = 0; column < speedGradeCount; ++column) {
            columns.insert(speedGrades[column], thresholdColumn(column));
        }
        return columns;
    }();
    return bySpeedGrade;
}

QString supplyDefault(const QString& dramType, const QString& key) {
    return supplyDefaultsByDram().value(dramType).value(key);
}

int thresholdSpeedGrade(int dataRate) {
    for (int grade : speedGrades) {
        if (dataRate <= grade) {
            return grade;
        }
    }
    return speedGrades[speedGradeCount - 1];
}

QString thresholdDefault(int dataRate, const QString& key) {
    return thresholdDefaultsBySpeedGrade().value(thresholdSpeedGrade(dataRate)).value(key);
}

}  // namespace LaneTapUI
