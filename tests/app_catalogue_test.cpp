// lanetap catalogue: the whole catalogue against its reference file, the text views against the
// JSON, the filters against the compliance lookup, and the threshold columns.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include "catalogue/ComplianceLookups.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::runProgram;

QStringList outputLines(const QStringList& options) {
    const ProgramRun run = runProgram(QStringList{"catalogue"} + options);
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.err.isEmpty()) << run.err.toStdString();
    return QString::fromUtf8(run.out).split('\n', Qt::SkipEmptyParts);
}

QJsonObject json(const QStringList& options) {
    return QJsonDocument::fromJson(outputLines(options + QStringList{"--json"}).join('\n').toUtf8())
        .object();
}

const QJsonObject& reference() {
    static const QJsonObject catalogue =
        QJsonDocument::fromJson(
            lanetap_test::readBytes(LANETAP_SOURCE_DIR "/tests/data/catalogue.json"))
            .object();
    return catalogue;
}

// The reference file holds the whole catalogue as it was checked row by row against the tables
// of the compliance tests, measurements, supplies, thresholds and units: any changed name,
// description, id, selector or value shows up here.
TEST(CatalogueCommand, JsonHoldsTheWholeCatalogue) {
    const ProgramRun run = runProgram({"catalogue", "--json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out == lanetap_test::readBytes(LANETAP_SOURCE_DIR "/tests/data/catalogue.json"))
        << "lanetap catalogue --json differs from tests/data/catalogue.json";
}

// The text views: the measurement table as a table, and the supplies as the JSON holds them.
TEST(CatalogueCommand, TextViewsShowWhatTheJsonHolds) {
    EXPECT_EQ(outputLines({"--measurements"}).join('\n'),
              R"(CODE  NAME         KEY         REFERENCE
0     Strobed Eye  StrobedEye  needed
1     Skew         Skew        needed
2     Slew Rate    SlewRate    none
3     Eye          Eye         none
4     Waveform     Waveform    none
5     Mask Margin  MaskMargin  none
7     BER Contour  BERContour  none)");
    EXPECT_EQ(
        outputLines({"--supplies", "--dram", "lpddr4"}).join(','),
        "LPDDR4 vdd=1.1 V,LPDDR4 vdd1=1.1 V,LPDDR4 vdd2=1.1 V,LPDDR4 vddq=1.1 V,LPDDR4 vtt=0.55 V");
    EXPECT_EQ(json({"--supplies"})["supplies"], reference()["supplies"]);
    EXPECT_EQ(outputLines({"--type", "CS_n"}), QStringList{"no compliance rows match"});
}

TEST(CatalogueCommand, ThresholdsShowTheColumnThatARateRoundsUpTo) {
    // Each rate and the column it reads: its own grade or the next one up, the last past it.
    // clang-format off
    const std::pair<const char*, int> cases[] = {
        {"1", 1600}, {"1600", 1600}, {"1601", 1866}, {"1866", 1866}, {"1867", 2133}, {"2133", 2133},
        {"2134", 2400}, {"2400", 2400}, {"2401", 2666}, {"2666", 2666}, {"2667", 2933},
        {"2933", 2933}, {"2934", 3200}, {"3200", 3200}, {"3201", 3200}, {"2147483647", 3200}};
    // clang-format on
    for (const auto& [rate, grade] : cases) {
        SCOPED_TRACE(rate);
        const QJsonObject column = reference()["thresholds"][QString::number(grade)].toObject();
        QStringList lines{QString("# speed grade %1").arg(grade)};
        for (const QString& key : column.keys()) {
            lines << key + "=" + column[key].toString();
        }
        EXPECT_EQ(outputLines({"--thresholds", rate}), lines);
        EXPECT_EQ(json({"--thresholds", rate}),
                  (QJsonObject{{"speedGrade", grade}, {"thresholds", column}}));
    }
}

TEST(CatalogueCommand, FiltersGiveWhatTheComplianceLookupOffers) {
    // Type, DRAM type, cycle, strobe; an empty text leaves the filter out, and then every group,
    // both DRAM types, both cycles and a bursting strobe (which keeps every row) count.
    // clang-format off
    const QList<QStringList> cases{
        {"DQ", "DDR4", "read", "continuous"}, {"DQ", "lpddr4", "READ", "continuous"}, {"DQS", "LPDDR4", "write", "burst"},
        {"DQS", "LPDDR4", "write", "continuous"}, {"DM_n", "DDR4", "write", ""}, {"A", "", "", "burst"},
        {"CKE", "", "", ""}, {"", "LPDDR4", "read", "continuous"}, {"", "", "write", ""}};
    // clang-format on
    for (const QStringList& c : cases) {
        SCOPED_TRACE(c.join(' ').toStdString());
        QStringList options;
        for (int i = 0; i < 4; ++i) {
            options << (c[i].isEmpty()
                            ? QStringList()
                            : QStringList{QStringList{"--type", "--dram", "--mode", "--dqs"}[i],
                                          c[i]});
        }
        QSet<QPair<QString, int>> offered, shown;
        for (const QString& type :
             c[0].isEmpty() ? QStringList{"CKE", "CA", "CK", "DM", "DQS", "DQ"} : c.mid(0, 1)) {
            for (const QString& dram :
                 c[1].isEmpty() ? QStringList{"DDR4", "LPDDR4"} : QStringList{c[1].toUpper()}) {
                for (int mode :
                     c[2].isEmpty() ? QList<int>{0, 1} : QList<int>{c[2].toLower() == "write"}) {
                    const auto ids =
                        LaneTapUI::complianceIdsByNameFor(type, dram, mode, c[3] != "continuous");
                    for (auto it = ids.cbegin(); it != ids.cend(); ++it) {
                        offered.insert({it.key(), it.value()});
                    }
                }
            }
        }
        for (const QJsonValue& row : json(options)["compliance"].toArray()) {
            shown.insert({row["name"].toString(), row["id"].toInt()});
        }
        EXPECT_EQ(shown, offered);
        EXPECT_FALSE(shown.isEmpty());
    }
}

}  // namespace
