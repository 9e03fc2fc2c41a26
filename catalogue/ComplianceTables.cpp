#include "catalogue/ComplianceTables.h"

#include "catalogue/ComplianceRows.h"

namespace LaneTapUI {
namespace {

using ComplianceRows::DramRows;
using ComplianceRows::Row;
using ComplianceRows::RowRange;

QString dependencySentence(ComplianceRows::Dependency dependency) {
    switch (dependency) {
        case ComplianceRows::NoDep:
            break;
        case ComplianceRows::DepC:
            return QStringLiteral("Measurement dependent on CK signal.");
        case ComplianceRows::DepQ:
            return QStringLiteral("Measurement dependent on corresponding DQS signal.");
        case ComplianceRows::DepQC:
            return QStringLiteral("Measurement dependent on corresponding DQS and CK signal.");
        case ComplianceRows::DepD:
            return QStringLiteral("Measurement dependent on at least one corresponding DQ signal.");
        case ComplianceRows::DepDC:
            return QStringLiteral(
                "Measurement dependent on at least one corresponding DQ and CK signal.");
    }
    return QString();
}

QString describe(const Row& row) {
    QString description = QStringLiteral("Description:\n") + QString::fromUtf8(row.text);
    const QString sentence = dependencySentence(row.dependency);
    if (!sentence.isEmpty()) {
        description += QLatin1Char('\n') + sentence;
    }
    return description;
}

void insertRows(ComplianceTable& table, const RowRange& range, const QString& dramType) {
    for (const Row* row = range.first; row != range.last; ++row) {
        ComplianceMeasurement measurement;
        measurement.id = row->id;
        measurement.operationMode = row->operationMode;
        measurement.continuousAllowed = row->continuousAllowed;
        measurement.dramType = dramType;
        measurement.name = QString::fromUtf8(row->name);
        measurement.description = describe(*row);
        table.insert(measurement.id, measurement);
    }
}

// One group's table: its DDR4 rows, then its LPDDR4 rows.
ComplianceTable buildTable(RowRange DramRows::*group) {
    ComplianceTable table;
    for (const DramRows& rows : {ComplianceRows::ddr4Rows(), ComplianceRows::lpddr4Rows()}) {
        insertRows(table, rows.*group, QString::fromLatin1(rows.dramType));
    }
    return table;
}

struct Group {
    const ComplianceTable& (*table)();
    RowRange DramRows::*rows;
};

}  // namespace

const ComplianceTable& ckeComplianceTable() {
    static const ComplianceTable table = buildTable(&DramRows::cke);
    return table;
}

const ComplianceTable& caComplianceTable() {
    static const ComplianceTable table = buildTable(&DramRows::ca);
    return table;
}

const ComplianceTable& ckComplianceTable() {
    static const ComplianceTable table = buildTable(&DramRows::ck);
    return table;
}

const ComplianceTable& dmComplianceTable() {
    static const ComplianceTable table = buildTable(&DramRows::dm);
    return table;
}

const ComplianceTable& dqsComplianceTable() {
    static const ComplianceTable table = buildTable(&DramRows::dqs);
    return table;
}

const ComplianceTable& dqComplianceTable() {
    static const ComplianceTable table = buildTable(&DramRows::dq);
    return table;
}

QList<qint32> complianceEntryOrder(const ComplianceTable& table) {
    const Group groups[] = {
        {&ckeComplianceTable, &DramRows::cke}, {&caComplianceTable, &DramRows::ca},
        {&ckComplianceTable, &DramRows::ck},   {&dmComplianceTable, &DramRows::dm},
        {&dqsComplianceTable, &DramRows::dqs}, {&dqComplianceTable, &DramRows::dq},
    };
    QList<qint32> ids;
    for (const Group& group : groups) {
        if (&group.table() != &table) {
            continue;
        }
        for (const DramRows& rows : {ComplianceRows::ddr4Rows(), ComplianceRows::lpddr4Rows()}) {
            const RowRange& range = rows.*group.rows;
            for (const Row* row = range.first; row != range.last; ++row) {
                ids << row->id;
            }
        }
    }
    return ids;
}

}  // namespace LaneTapUI
