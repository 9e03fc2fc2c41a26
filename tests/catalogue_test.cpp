// The catalogue's tables and lookups, checked against the rows the tables hold. The texts and
// numbers of the rows themselves are guarded by the whole-catalogue comparison of the program's
// tests; here every row must be reachable by its lookups and every filter must keep exactly the
// rows its rule keeps.

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "catalogue/ComplianceLookups.h"
#include "catalogue/ComplianceTables.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

using namespace LaneTapUI;

namespace {

const QStringList drams{"DDR4", "LPDDR4"};

// Each table, the group that finds it and its size.
const std::tuple<const char*, const ComplianceTable& (*)(), int> groups[] = {
    {"CKE", ckeComplianceTable, 1}, {"CA", caComplianceTable, 16},   {"CK", ckComplianceTable, 89},
    {"DM", dmComplianceTable, 10},  {"DQS", dqsComplianceTable, 73}, {"DQ", dqComplianceTable, 32}};

template <typename K, typename V>
QList<QPair<K, V>> sortedPairs(const QMultiHash<K, V>& hash) {
    QList<QPair<K, V>> pairs;
    for (auto it = hash.cbegin(); it != hash.cend(); ++it) {
        pairs.append({it.key(), it.value()});
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

}  // namespace

TEST(ComplianceTables, EveryRowIsReachableByItsLookupsUnderItsGroupOnly) {
    QHash<qint32, int> tablesOfId;
    for (const auto& [group, tableOf, size] : groups) {
        SCOPED_TRACE(group);
        const ComplianceTable& table = tableOf();
        EXPECT_EQ(table.size(), size);
        for (auto row = table.cbegin(); row != table.cend(); ++row) {
            EXPECT_EQ(row.key(), row->id);
            EXPECT_EQ(complianceName(group, row->id), row->name);
            EXPECT_TRUE(hasCompliance(group, row->id));
            QList<qint32> twins;  // every id of the DRAM type with this name, in the table's order
            for (const ComplianceMeasurement& other : table) {
                if (other.name == row->name && other.dramType == row->dramType) {
                    twins.append(other.id);
                }
            }
            EXPECT_EQ(complianceIdsWithName(group, row->dramType, row->name), twins);
            ++tablesOfId[row->id];
        }
    }
    EXPECT_EQ(tablesOfId.size(), 220);  // 221 rows; only 503004 stands in two tables
    EXPECT_EQ(tablesOfId.key(2), 503004);
    // A group holds only its own ids; "A" is another name of "CA".
    EXPECT_TRUE(complianceName("DQ", 30206).isEmpty());
    EXPECT_FALSE(hasCompliance("CKE", 10311));
    EXPECT_TRUE(hasCompliance("A", 10311));
}

TEST(ComplianceLookups, FiltersKeepTheRowsOfTheirCycleDramTypeAndStrobeMode) {
    // A signal type, the table it finds, and whether the lookups that want "DM" itself (not just
    // a type containing it) find that table too.
    // clang-format off
    const std::tuple<const char*, const ComplianceTable*, bool> types[] = {
        {"DQ", &dqComplianceTable(), true}, {"DQS", &dqsComplianceTable(), true},
        {"DM", &dmComplianceTable(), true}, {"DM_n", &dmComplianceTable(), false},
        {"CA", &caComplianceTable(), true}, {"A", &caComplianceTable(), true},
        {"CK", &ckComplianceTable(), true}, {"CKE", &ckeComplianceTable(), true},
        {"CK_t", nullptr, false}, {"CS_n", nullptr, false}, {"ODT", nullptr, false},
        {"DBI", nullptr, false}, {"dq", nullptr, false}};
    // clang-format on
    for (const auto& [type, table, equalFinds] : types) {
        for (int i = 0; i < 24; ++i) {  // both DRAM types, cycles -1 to 2, strobe modes 0 to 2
            const QString dram = drams[i % 2];
            const int mode = i / 2 % 4 - 1, dqs = i / 8;
            SCOPED_TRACE(::testing::Message() << type << " " << dram.toStdString() << " mode "
                                              << mode << " strobe " << dqs);
            QMultiHash<qint32, QString> names;
            QMultiHash<QString, qint32> ids;
            QMultiHash<QString, QString> descriptions;
            for (const ComplianceMeasurement& row : table ? *table : ComplianceTable()) {
                if ((row.operationMode == mode || row.operationMode == 2) && row.dramType == dram &&
                    (dqs != 0 || row.continuousAllowed)) {
                    ids.insert(row.name, row.id);
                    descriptions.insert(row.name, row.description);
                    if (equalFinds) {
                        names.insert(row.id, row.name);
                    }
                }
            }
            EXPECT_EQ(sortedPairs(complianceNamesFor(type, dram, mode, dqs)), sortedPairs(names));
            EXPECT_EQ(sortedPairs(complianceIdsByNameFor(type, dram, mode, dqs)), sortedPairs(ids));
            EXPECT_EQ(sortedPairs(complianceDescriptionsFor(type, dram, mode, dqs)),
                      sortedPairs(descriptions));
        }
    }
    // The rule drops rows: a continuous strobe and a cycle each narrow the DDR4 DQ rows.
    EXPECT_EQ(complianceNamesFor("DQ", "DDR4", 0, 0).size(), 16);
    EXPECT_EQ(complianceNamesFor("DQ", "DDR4", 1, 1).size(), 6);
}
