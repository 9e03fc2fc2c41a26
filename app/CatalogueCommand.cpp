// lanetap catalogue: the constant tables of compliance tests, measurements, supplies, thresholds
// and voltage units, as text or JSON.

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <algorithm>
#include <optional>

#include "app/Commands.h"
#include "app/TextTable.h"
#include "catalogue/ComplianceLookups.h"
#include "catalogue/ComplianceTables.h"
#include "catalogue/MeasurementTypes.h"
#include "catalogue/SpeedGradeDefaults.h"
#include "catalogue/VoltageUnits.h"
#include "standin/DesignFile.h"

namespace lanetap {
namespace {

using LaneTapUI::ComplianceMeasurement;
using LaneTapUI::ComplianceTable;

// The six tables in the order the catalogue builds them, each with the group name under which
// the lookups find it.
struct NamedTable {
    const char* name;
    const char* group;
    const ComplianceTable& (*table)();
};

const NamedTable tables[] = {
    {"ckeComplianceTable", "CKE", &LaneTapUI::ckeComplianceTable},
    {"caComplianceTable", "CA", &LaneTapUI::caComplianceTable},
    {"ckComplianceTable", "CK", &LaneTapUI::ckComplianceTable},
    {"dmComplianceTable", "DM", &LaneTapUI::dmComplianceTable},
    {"dqsComplianceTable", "DQS", &LaneTapUI::dqsComplianceTable},
    {"dqComplianceTable", "DQ", &LaneTapUI::dqComplianceTable},
};

const QStringList dramTypes = {"DDR4", "LPDDR4"};

// The selectors of the compliance page. An absent one narrows nothing.
struct ComplianceFilter {
    std::optional<QString> type;
    std::optional<QString> dram;
    std::optional<int> mode;
    std::optional<int> dqs;

    bool any() const { return type || dram || mode || dqs; }
};

const QStringList modeWords = {"read", "write"};
const QStringList strobeWords = {"continuous", "burst"};

ComplianceFilter filterOf(const Arguments& arguments) {
    ComplianceFilter filter;
    if (arguments.values.contains("type")) {
        // The types of the keys are upper case; the page's lookup compares them as they are.
        filter.type = arguments.value("type").toUpper();
        if (filter.type->isEmpty()) {
            throw Failure(ExitUsage, "--type needs a signal type such as DQ");
        }
    }
    if (arguments.values.contains("dram")) {
        filter.dram = arguments.value("dram");
    }
    if (arguments.values.contains("mode")) {
        filter.mode = modeWords.indexOf(arguments.value("mode"));
    }
    if (arguments.values.contains("dqs")) {
        filter.dqs = strobeWords.indexOf(arguments.value("dqs"));
    }
    return filter;
}

// The (name, id) pairs that the compliance page offers for a group under the filter: the union
// of complianceIdsByNameFor over every value of each absent selector. A bursting strobe keeps
// every row, so it stands for "any strobe mode".
QSet<QPair<QString, qint32>> offeredPairs(const QString& group, const ComplianceFilter& filter) {
    QSet<QPair<QString, qint32>> pairs;
    const QStringList drams = filter.dram ? QStringList{*filter.dram} : dramTypes;
    const QList<int> modes = filter.mode ? QList<int>{*filter.mode} : QList<int>{0, 1};
    for (const QString& dram : drams) {
        for (int mode : modes) {
            const QMultiHash<QString, qint32> offered =
                LaneTapUI::complianceIdsByNameFor(group, dram, mode, filter.dqs.value_or(1));
            for (auto it = offered.cbegin(); it != offered.cend(); ++it) {
                pairs.insert({it.key(), it.value()});
            }
        }
    }
    return pairs;
}

struct ShownRow {
    const char* table;
    ComplianceMeasurement row;
};

// The rows to show, table by table in entry order. With --type the lookup alone picks the table
// (so "DM_n" finds the DM rows, as it does on the compliance page); a row belongs to the result
// when its name and id are among the pairs the lookup gives. No two tables share a name and id.
QList<ShownRow> complianceRows(const ComplianceFilter& filter) {
    QList<ShownRow> rows;
    std::optional<QSet<QPair<QString, qint32>>> typePairs;
    if (filter.type) {
        typePairs = offeredPairs(*filter.type, filter);
    }
    for (const NamedTable& named : tables) {
        const ComplianceTable& table = named.table();
        QSet<QPair<QString, qint32>> pairs;
        if (filter.any()) {
            pairs = typePairs ? *typePairs : offeredPairs(named.group, filter);
        }
        for (qint32 id : LaneTapUI::complianceEntryOrder(table)) {
            const ComplianceMeasurement& row = table[id];
            if (!filter.any() || pairs.contains({row.name, row.id})) {
                rows.append({named.name, row});
            }
        }
    }
    return rows;
}

QString modeWord(qint32 mode) {
    switch (mode) {
        case 0:
            return "read";
        case 1:
            return "write";
        default:
            return "both";
    }
}

// Measurement codes in ascending order.
QList<LaneTapUI::MeasurementType> measurementCodes() {
    QList<LaneTapUI::MeasurementType> codes = LaneTapUI::measurementDisplayNames().keys();
    std::sort(codes.begin(), codes.end());
    return codes;
}

bool needsReference(LaneTapUI::MeasurementType code) {
    return !LaneTapUI::referenceFreeTypesByKey().contains(LaneTapUI::measurementKeys().value(code));
}

QJsonObject asObject(const QHash<QString, QString>& values) {
    QJsonObject object;
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        object.insert(it.key(), it.value());
    }
    return object;
}

QJsonArray complianceJson(const QList<ShownRow>& rows) {
    QJsonArray array;
    for (const ShownRow& shown : rows) {
        const ComplianceMeasurement& row = shown.row;
        array.append(QJsonObject{{"table", shown.table},
                                 {"id", row.id},
                                 {"operationMode", row.operationMode},
                                 {"continuousAllowed", row.continuousAllowed},
                                 {"dramType", row.dramType},
                                 {"name", row.name},
                                 {"description", row.description}});
    }
    return array;
}

QJsonArray measurementsJson() {
    QJsonArray array;
    for (LaneTapUI::MeasurementType code : measurementCodes()) {
        const QString name = LaneTapUI::measurementDisplayNames().value(code);
        array.append(
            QJsonObject{{"code", static_cast<int>(code)},
                        {"displayName", name},
                        {"key", LaneTapUI::measurementKeys().value(code)},
                        {"needsReference", needsReference(code)},
                        {"description", LaneTapUI::measurementDescriptions().value(name)}});
    }
    return array;
}

QJsonObject suppliesJson(const QStringList& drams) {
    QJsonObject object;
    for (const QString& dram : drams) {
        object.insert(dram, asObject(LaneTapUI::supplyDefaultsByDram().value(dram)));
    }
    return object;
}

QJsonObject thresholdsJson() {
    QJsonObject object;
    const auto& columns = LaneTapUI::thresholdDefaultsBySpeedGrade();
    for (auto it = columns.cbegin(); it != columns.cend(); ++it) {
        object.insert(QString::number(it.key()), asObject(it.value()));
    }
    return object;
}

QJsonArray voltageUnitsJson() {
    QList<LaneTapUI::VoltageUnit> units = LaneTapUI::voltageUnitNames().keys();
    std::sort(units.begin(), units.end());
    QJsonArray array;
    for (LaneTapUI::VoltageUnit unit : units) {
        array.append(LaneTapUI::voltageUnitNames().value(unit));
    }
    return array;
}

void writeJson(const QJsonObject& object) {
    writeOut(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Indented)));
}

QString complianceText(const QList<ShownRow>& rows, bool withDescriptions) {
    if (rows.isEmpty()) {
        return "no compliance rows match\n";
    }
    TextTable table({"TABLE", "ID", "MODE", "CONTINUOUS", "DRAM", "NAME"});
    for (const ShownRow& shown : rows) {
        const ComplianceMeasurement& row = shown.row;
        QStringList notes;
        if (withDescriptions) {
            notes = row.description.split('\n');
            if (notes.value(0) == "Description:") {
                notes.removeFirst();
            }
        }
        table.addRow({shown.table, QString::number(row.id), modeWord(row.operationMode),
                      row.continuousAllowed ? "yes" : "no", row.dramType, row.name},
                     notes);
    }
    return table.text();
}

QString measurementsText() {
    TextTable table({"CODE", "NAME", "KEY", "REFERENCE"});
    for (LaneTapUI::MeasurementType code : measurementCodes()) {
        table.addRow({QString::number(code), LaneTapUI::measurementDisplayNames().value(code),
                      LaneTapUI::measurementKeys().value(code),
                      needsReference(code) ? "needed" : "none"});
    }
    return table.text();
}

QString suppliesText(const QStringList& drams) {
    QString text;
    for (const QString& dram : drams) {
        QStringList keys = LaneTapUI::supplyDefaultsByDram().value(dram).keys();
        keys.sort();
        for (const QString& key : keys) {
            text += QString("%1 %2=%3\n").arg(dram, key, LaneTapUI::supplyDefault(dram, key));
        }
    }
    return text;
}

// The speed grade whose column --thresholds shows.
int thresholdGrade(const Arguments& arguments) {
    bool ok = false;
    const int rate = arguments.value("thresholds").toInt(&ok);
    if (!ok || rate <= 0) {
        throw Failure(ExitUsage, QString("--thresholds needs a data rate in MT/s such as 2933, "
                                         "not %1")
                                     .arg(standin::quoted(arguments.value("thresholds"))));
    }
    return LaneTapUI::thresholdSpeedGrade(rate);
}

int showThresholds(const Arguments& arguments) {
    const int grade = thresholdGrade(arguments);
    const QHash<QString, QString> column = LaneTapUI::thresholdDefaultsBySpeedGrade().value(grade);
    if (arguments.has("json")) {
        writeJson({{"speedGrade", grade}, {"thresholds", asObject(column)}});
        return ExitOk;
    }
    QStringList keys = column.keys();
    keys.sort();
    QString text = QString("# speed grade %1\n").arg(grade);
    for (const QString& key : keys) {
        text += key + "=" + column.value(key) + "\n";
    }
    writeOut(text);
    return ExitOk;
}

int runCatalogue(const Arguments& arguments) {
    if (!arguments.positional.isEmpty()) {
        throw Failure(ExitUsage, QString("catalogue takes no arguments, not %1")
                                     .arg(standin::quoted(arguments.positional.front())));
    }
    const ComplianceFilter filter = filterOf(arguments);
    const bool thresholds = arguments.values.contains("thresholds");
    const int sections =
        int(thresholds) + int(arguments.has("measurements")) + int(arguments.has("supplies"));
    if (sections > 1) {
        throw Failure(ExitUsage, "choose one of --measurements, --supplies and --thresholds");
    }
    const bool compliance = sections == 0;
    if (!compliance && (filter.type || filter.mode || filter.dqs || arguments.has("descriptions") ||
                        (filter.dram && !arguments.has("supplies")))) {
        throw Failure(ExitUsage,
                      "--type, --dram, --mode, --dqs and --descriptions apply to the "
                      "compliance rows (--dram also to --supplies)");
    }
    if (thresholds) {
        return showThresholds(arguments);
    }
    const QStringList drams = filter.dram ? QStringList{*filter.dram} : dramTypes;
    const bool json = arguments.has("json");
    if (arguments.has("measurements") && json) {
        writeJson({{"measurements", measurementsJson()}});
    } else if (arguments.has("measurements")) {
        writeOut(measurementsText());
    } else if (arguments.has("supplies") && json) {
        writeJson({{"supplies", suppliesJson(drams)}});
    } else if (arguments.has("supplies")) {
        writeOut(suppliesText(drams));
    } else if (json) {
        writeJson({{"compliance", complianceJson(complianceRows(filter))},
                   {"measurements", measurementsJson()},
                   {"supplies", suppliesJson(dramTypes)},
                   {"thresholds", thresholdsJson()},
                   {"voltageUnits", voltageUnitsJson()}});
    } else {
        writeOut(complianceText(complianceRows(filter), arguments.has("descriptions")));
    }
    return ExitOk;
}

}  // namespace

const Command& catalogueCommand() {
    static const Command command{
        "catalogue",
        QString(),
        {{"Prints the compliance tests, one row each in the order of their table: table, id, "
          "cycle (read, write or both), whether a continuous strobe offers it, DRAM type and "
          "name."},
         {"The filters --type, --dram, --mode and --dqs pick the rows that the probe's "
          "compliance page offers, with its lookup. A filter that is left out narrows nothing: "
          "every type, both DRAM types, both cycles, any strobe mode."},
         {"--measurements, --supplies and --thresholds print another table instead of the "
          "compliance rows, one of them at a time; --json applies to them as well."}},
        {{{"type"},
          "TYPE",
          "a signal type as in the keys, in any case: DQ, DQS, DM, A, CA, CK, CKE, ... A type "
          "that contains DM finds the DM rows, as the page does; control types such as CS or ODT "
          "have none."},
         {{"dram"}, QString(), "rows of that DRAM type", dramTypes},
         {{"mode"}, QString(), "rows of that cycle and rows valid in both", modeWords},
         {{"dqs"},
          QString(),
          "continuous leaves out the rows only a bursting strobe offers",
          strobeWords},
         {{"descriptions"}, QString(), "print each row's description under it"},
         {{"json"},
          QString(),
          "print the whole catalogue as JSON: the compliance rows (filtered), measurements, "
          "supplies, threshold defaults by speed grade, voltage units"},
         {{"measurements"},
          QString(),
          "the generic measurements: code, name, netlist key, reference needed"},
         {{"supplies"}, QString(), "supply defaults by DRAM type (--dram picks one)"},
         {{"thresholds"},
          "RATE",
          "threshold defaults for a data rate in MT/s, as KEY=VALUE lines; a rate between speed "
          "grades uses the next grade up, above 3200 the 3200 grade"}},
        &runCatalogue};
    return command;
}

}  // namespace lanetap
