// Compliance tables and their lookups.

#include <gtest/gtest.h>

#include <QSet>

#include "catalogue/ComplianceLookups.h"
#include "catalogue/ComplianceTables.h"

// Show texts, not code units, when an expectation fails.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

using namespace LaneTapUI;

namespace {

struct GroupTable {
    const char* group;
    const ComplianceTable* table;
    int ddr4Rows;
    int lpddr4Rows;
};

QList<GroupTable> groupTables() {
    return {{"CKE", &ckeComplianceTable(), 1, 0},   {"CA", &caComplianceTable(), 12, 4},
            {"CK", &ckComplianceTable(), 41, 48},   {"DM", &dmComplianceTable(), 6, 4},
            {"DQS", &dqsComplianceTable(), 42, 31}, {"DQ", &dqComplianceTable(), 18, 14}};
}

int rowsOfDram(const ComplianceTable& table, const QString& dramType) {
    int count = 0;
    for (const ComplianceMeasurement& row : table) {
        count += row.dramType == dramType ? 1 : 0;
    }
    return count;
}

QSet<QString> namesOf(const QMultiHash<qint32, QString>& namesById) {
    const QList<QString> names = namesById.values();
    return QSet<QString>(names.begin(), names.end());
}

QSet<qint32> asSet(const QList<qint32>& ids) {
    return QSet<qint32>(ids.begin(), ids.end());
}

const QStringList dramTypes = {"DDR4", "LPDDR4"};

}  // namespace

TEST(ComplianceTables, EveryRowIsThereOnceUnderItsId) {
    int ddr4 = 0;
    int lpddr4 = 0;
    QHash<qint32, int> tablesHoldingId;
    for (const GroupTable& group : groupTables()) {
        SCOPED_TRACE(group.group);
        // A table smaller than its two row lists means an id was entered twice and lost a row.
        EXPECT_EQ(group.table->size(), group.ddr4Rows + group.lpddr4Rows);
        EXPECT_EQ(rowsOfDram(*group.table, "DDR4"), group.ddr4Rows);
        EXPECT_EQ(rowsOfDram(*group.table, "LPDDR4"), group.lpddr4Rows);
        for (auto row = group.table->cbegin(); row != group.table->cend(); ++row) {
            EXPECT_EQ(row.key(), row->id);
            EXPECT_TRUE(row->description.startsWith("Description:\n")) << row->id;
            EXPECT_FALSE(row->name.isEmpty()) << row->id;
            EXPECT_TRUE(row->operationMode >= 0 && row->operationMode <= 2) << row->id;
            ++tablesHoldingId[row->id];
        }
        ddr4 += group.ddr4Rows;
        lpddr4 += group.lpddr4Rows;
    }
    EXPECT_EQ(ddr4, 120);
    EXPECT_EQ(lpddr4, 101);
    // Only 503004 stands in two tables, as a DQ row and as a DQS row.
    QList<qint32> shared;
    for (auto id = tablesHoldingId.cbegin(); id != tablesHoldingId.cend(); ++id) {
        if (id.value() > 1) {
            shared.append(id.key());
        }
    }
    EXPECT_EQ(shared, QList<qint32>{503004});
}

TEST(ComplianceLookups, TwinNamesYieldAllTheirIds) {
    const struct {
        const char* group;
        const char* dramType;
        const char* name;
        QList<qint32> ids;
    } twins[] = {
        {"CK", "DDR4", "VSEH(CK)", {10333, 10337}},
        {"CK", "DDR4", "VSEL(CK)", {10334, 10338}},
        {"DQS", "DDR4", "VSEH(DQS)", {10331, 10335}},
        {"DQS", "DDR4", "VSEL(DQS)", {10332, 10336}},
        {"CK", "DDR4", "Undershoot area (Min Abs Level) (CK)", {103028, 103033}},
        {"DQS", "DDR4", "Overshoot amplitude (DQS)", {103006, 103012}},
        {"CK", "LPDDR4", "Vinse_CK_High", {50339, 50341}},
        {"CK", "LPDDR4", "Vinse_CK_Low", {50340, 50342}},
        {"CK", "LPDDR4", "Undershoot area (CK)", {503019, 503023}},
        {"DQS", "LPDDR4", "Overshoot amplitude (DQS)", {503004, 503008}},
        {"A", "LPDDR4", "Undershoot amplitude (CA)", {50361, 50362}},
    };
    for (const auto& twin : twins) {
        SCOPED_TRACE(twin.name);
        EXPECT_EQ(asSet(complianceIdsWithName(twin.group, twin.dramType, twin.name)),
                  asSet(twin.ids));
    }
    // The list follows the table's own order.
    QList<qint32> inTableOrder;
    for (const ComplianceMeasurement& row : ckComplianceTable()) {
        if (row.id == 10333 || row.id == 10337) {
            inTableOrder.append(row.id);
        }
    }
    EXPECT_EQ(complianceIdsWithName("CK", "DDR4", "VSEH(CK)"), inTableOrder);
    EXPECT_TRUE(complianceIdsWithName("CK", "LPDDR4", "VIX(CK)").isEmpty());
    // Picking a twin name offers both ids at once, in either strobe mode.
    EXPECT_EQ(complianceIdsByNameFor("CK", "DDR4", 1, 0).values("VSEL(CK)").size(), 2);
}

TEST(ComplianceLookups, FilterByCycleDramTypeAndStrobeMode) {
    // {group, DRAM type, cycle, strobe mode, rows offered}
    const struct {
        const char* group;
        const char* dramType;
        int operationMode;
        int dqsSignalMode;
        int offered;
    } cases[] = {
        {"DQ", "DDR4", 0, 0, 16},
        {"DQ", "DDR4", 0, 1, 18},
        {"DQ", "DDR4", 1, 0, 6},
        {"DQ", "DDR4", 1, 1, 6},
        {"DQ", "LPDDR4", 0, 0, 9},
        {"DQ", "LPDDR4", 1, 1, 5},
        {"CK", "DDR4", 0, 0, 41},
        {"CK", "DDR4", 1, 1, 41},
        {"CK", "LPDDR4", 0, 0, 28},
        {"CK", "LPDDR4", 1, 1, 48},
        {"CKE", "DDR4", 1, 0, 1},
        {"CKE", "LPDDR4", 0, 1, 0},
        {"DQS", "DDR4", 1, 0, 28},
        {"DQS", "DDR4", 1, 1, 31},
        {"DQS", "LPDDR4", 0, 1, 19},
        // A cycle outside 0 and 1 still keeps the rows valid in both cycles.
        {"DQ", "DDR4", 7, 1, 6},
        {"DQ", "LPDDR4", -1, 0, 5},
        // Any non-zero strobe mode counts as bursting.
        {"DQ", "DDR4", 0, 2, 18},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.group << " " << c.dramType << " mode "
                                          << c.operationMode << " strobe " << c.dqsSignalMode);
        const QMultiHash<qint32, QString> names =
            complianceNamesFor(c.group, c.dramType, c.operationMode, c.dqsSignalMode);
        EXPECT_EQ(names.size(), c.offered);
        // The three filtered lookups keep the same rows.
        const QMultiHash<QString, qint32> ids =
            complianceIdsByNameFor(c.group, c.dramType, c.operationMode, c.dqsSignalMode);
        EXPECT_EQ(asSet(ids.values()), asSet(names.keys()));
        EXPECT_EQ(ids.size(), c.offered);
        EXPECT_EQ(
            complianceDescriptionsFor(c.group, c.dramType, c.operationMode, c.dqsSignalMode).size(),
            c.offered);
    }
    const QSet<QString> ddr4ReadContinuous = namesOf(complianceNamesFor("DQ", "DDR4", 0, 0));
    EXPECT_FALSE(ddr4ReadContinuous.contains("tHZDQ") || ddr4ReadContinuous.contains("tLZDQ"));
    const QSet<QString> dqsWriteContinuous = namesOf(complianceNamesFor("DQS", "DDR4", 1, 0));
    for (const char* burstOnly : {"tDQSS", "tWPRE", "tWPST"}) {
        EXPECT_FALSE(dqsWriteContinuous.contains(burstOnly)) << burstOnly;
    }
    for (const QString& name : namesOf(complianceNamesFor("DQS", "LPDDR4", 0, 0))) {
        EXPECT_FALSE(name.contains("shoot")) << name.toStdString();
    }
    for (int operationMode : {0, 1}) {
        for (int dqsSignalMode : {0, 1}) {
            EXPECT_EQ(complianceNamesFor("DM", "DDR4", operationMode, dqsSignalMode).size(), 6);
            EXPECT_EQ(complianceNamesFor("DM", "LPDDR4", operationMode, dqsSignalMode).size(), 4);
            EXPECT_EQ(complianceNamesFor("CA", "LPDDR4", operationMode, dqsSignalMode).size(), 4);
            for (const QString& dramType : dramTypes) {
                EXPECT_EQ(complianceNamesFor("A", dramType, operationMode, dqsSignalMode),
                          complianceNamesFor("CA", dramType, operationMode, dqsSignalMode));
            }
        }
    }
}

TEST(ComplianceLookups, DmGroupIsFoundByContainingOrByEquality) {
    // A group that merely contains "DM" reaches the DM rows through two lookups only.
    EXPECT_EQ(complianceDescriptionsFor("DM_x", "DDR4", 0, 0).size(), 6);
    EXPECT_EQ(complianceIdsByNameFor("xDMx", "LPDDR4", 1, 1).size(), 4);
    EXPECT_EQ(complianceDescriptionsFor("DM_x", "DDR4", 0, 0).value("Overshoot amplitude (DM)"),
              "Description:\nPeak amplitude of AC overshoot");
    EXPECT_TRUE(complianceNamesFor("DM_x", "DDR4", 0, 0).isEmpty());
    EXPECT_TRUE(complianceIdsWithName("DM_x", "DDR4", "Overshoot amplitude (DM)").isEmpty());
    EXPECT_FALSE(hasCompliance("DM_x", 103018));
    EXPECT_TRUE(complianceName("DM_x", 103018).isEmpty());

    EXPECT_EQ(complianceIdsWithName("DM", "DDR4", "Overshoot amplitude (DM)"),
              QList<qint32>{103018});
    EXPECT_TRUE(hasCompliance("DM", 503012));
    EXPECT_EQ(complianceName("DM", 103023), "Undershoot area (VSSQ to Min Abs Level) (DM)");
}
