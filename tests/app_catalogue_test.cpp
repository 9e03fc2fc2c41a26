// lanetap catalogue: the JSON and text views of the catalogue, the filters and the threshold
// columns, checked against the catalogue's own tables and lookups.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include "catalogue/ComplianceLookups.h"
#include "catalogue/ComplianceTables.h"
#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::readBytes;
using lanetap_test::runProgram;
using LaneTapUI::ComplianceMeasurement;
using LaneTapUI::ComplianceTable;

struct NamedTable {
    QString name;
    const ComplianceTable* table;
};

QList<NamedTable> allTables() {
    return {{"ckeComplianceTable", &LaneTapUI::ckeComplianceTable()},
            {"caComplianceTable", &LaneTapUI::caComplianceTable()},
            {"ckComplianceTable", &LaneTapUI::ckComplianceTable()},
            {"dmComplianceTable", &LaneTapUI::dmComplianceTable()},
            {"dqsComplianceTable", &LaneTapUI::dqsComplianceTable()},
            {"dqComplianceTable", &LaneTapUI::dqComplianceTable()}};
}

QJsonObject catalogueJson(const QStringList& options) {
    const ProgramRun run = runProgram(QStringList{"catalogue", "--json"} + options);
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.err.isEmpty()) << run.err.toStdString();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(run.out, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    return document.object();
}

using NameAndId = QPair<QString, qint32>;

QList<NameAndId> pairsOf(const QJsonArray& rows) {
    QList<NameAndId> pairs;
    for (const QJsonValue& row : rows) {
        pairs.append({row["name"].toString(), row["id"].toInt()});
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

// Rows of every table that a predicate on the row's own fields keeps, as sorted pairs.
template <typename Keep>
QList<NameAndId> rowsWhere(Keep keep) {
    QList<NameAndId> pairs;
    for (const NamedTable& named : allTables()) {
        for (const ComplianceMeasurement& row : *named.table) {
            if (keep(row)) {
                pairs.append({row.name, row.id});
            }
        }
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

void expectOneErrorLine(const ProgramRun& run, const QString& context) {
    EXPECT_EQ(run.exitCode, 2) << context.toStdString();
    EXPECT_TRUE(run.out.isEmpty()) << context.toStdString();
    EXPECT_TRUE(run.err.startsWith("lanetap: error: ")) << run.err.toStdString();
    EXPECT_EQ(run.err.count('\n'), 1) << run.err.toStdString();
}

// The whole catalogue as the program prints it: every compliance row with its name, description
// and selectors, the measurements, supplies, thresholds and units. The reference file holds the
// catalogue as it stands; any changed text or number shows up here, to be checked against the
// tables it comes from.
TEST(CatalogueCommand, JsonHoldsTheWholeCatalogue) {
    const ProgramRun run = runProgram({"catalogue", "--json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out == readBytes(LANETAP_SOURCE_DIR "/tests/data/catalogue.json"))
        << "lanetap catalogue --json differs from tests/data/catalogue.json";
}

struct FilterCase {
    QString type;
    QString dram;
    int mode;
    int dqs;
};

TEST(CatalogueCommand, FiltersGiveExactlyWhatTheComplianceLookupOffers) {
    const QStringList modes{"read", "write"};
    const QStringList strobes{"continuous", "burst"};
    const QList<FilterCase> cases{
        {"DQ", "DDR4", 0, 0},    {"DQ", "LPDDR4", 0, 0}, {"DQS", "LPDDR4", 1, 1},
        {"DQS", "LPDDR4", 1, 0}, {"DM_n", "DDR4", 1, 0}, {"A", "LPDDR4", 1, 1},
        {"CA", "DDR4", 0, 0},    {"CKE", "DDR4", 1, 0},  {"CS_n", "DDR4", 1, 1},
    };
    for (const FilterCase& c : cases) {
        const QString label = QString("%1 %2 %3 %4").arg(c.type, c.dram).arg(c.mode).arg(c.dqs);
        const QJsonArray rows =
            catalogueJson({"--type", c.type, "--dram", c.dram, "--mode", modes[c.mode], "--dqs",
                           strobes[c.dqs]})["compliance"]
                .toArray();
        QList<NameAndId> offered;
        const auto lookup = LaneTapUI::complianceIdsByNameFor(c.type, c.dram, c.mode, c.dqs);
        for (auto it = lookup.cbegin(); it != lookup.cend(); ++it) {
            offered.append({it.key(), it.value()});
        }
        std::sort(offered.begin(), offered.end());
        EXPECT_EQ(pairsOf(rows), offered) << label.toStdString();
        if (c.type == "DQ") {
            // DQ rows of the read cycle with a continuous strobe: 16 of DDR4, 9 of LPDDR4.
            EXPECT_EQ(rows.size(), c.dram == "DDR4" ? 16 : 9) << label.toStdString();
        }
        if (c.type == "DM_n") {
            // "DM_n" contains "DM", and the lookup takes the DM rows for it.
            ASSERT_FALSE(rows.isEmpty());
            EXPECT_EQ(rows[0]["table"].toString(), "dmComplianceTable");
        }
        if (c.type == "CS_n") {
            EXPECT_TRUE(rows.isEmpty());
        }
    }
}

TEST(CatalogueCommand, ThresholdsShowTheColumnThatARateRoundsUpTo) {
    struct Case {
        QString rate;
        int grade;
        QString vihDqAc;
    };
    for (const Case& c : QList<Case>{{"2933", 2933, "0.0725 V"},
                                     {"2932", 2933, "0.0725 V"},
                                     {"2934", 3200, "0.07 V"},
                                     {"1", 1600, "0.093 V"},
                                     {"1601", 1866, "0.093 V"},
                                     {"9999", 3200, "0.07 V"}}) {
        const ProgramRun run = runProgram({"catalogue", "--thresholds", c.rate});
        ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
        const QStringList lines = QString::fromUtf8(run.out).trimmed().split('\n');
        ASSERT_EQ(lines.size(), 29) << c.rate.toStdString();
        EXPECT_EQ(lines[0], QString("# speed grade %1").arg(c.grade));
        EXPECT_TRUE(lines.contains("vih_dq_ac=" + c.vihDqAc)) << c.rate.toStdString();
    }
    const QJsonObject column = catalogueJson({"--thresholds", "2134"});
    EXPECT_EQ(column["speedGrade"].toInt(), 2400);
    EXPECT_EQ(column["thresholds"]["vilDiff_DQS"].toString(), "-0.13 V");
}

TEST(CatalogueCommand, BadOptionsFailWithOneLineAndPrintNothing) {
    const QList<QStringList> cases{
        {"--dram", "DDR5"},
        {"--mode", "sideways"},
        {"--dqs", "strobed"},
        {"--type", ""},
        {"--thresholds", "fast"},
        {"--thresholds", "0"},
        {"--thresholds", "-5"},
        {"--thresholds"},
        {"--type", "DQ", "--thresholds", "2400"},
        {"--mode", "read", "--supplies"},
        {"--measurements", "--supplies"},
        {"--descriptions", "--measurements"},
        {"design.json"},
        {"--colour"},
    };
    for (const QStringList& options : cases) {
        expectOneErrorLine(runProgram(QStringList{"catalogue"} + options), options.join(' '));
    }
}

}  // namespace
