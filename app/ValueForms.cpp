#include "app/ValueForms.h"

#include <QRegularExpression>
#include <cmath>

#include "app/Nearest.h"
#include "catalogue/ComplianceLookups.h"
#include "catalogue/MeasurementTypes.h"
#include "catalogue/VoltageUnits.h"
#include "netlist/BlockGrammar.h"
#include "standin/DesignFile.h"

namespace lanetap {

using LaneTapUI::StoredForm;
using LaneTapUI::StoredKey;

namespace {

const QString numberPattern = QStringLiteral(R"([+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?)");

bool matchesWhole(const QString& pattern, const QString& text) {
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

QStringList unitTexts() {
    QStringList units;
    for (int code = LaneTapUI::UnitFemtoVolt; code <= LaneTapUI::UnitKiloVolt; ++code) {
        units << LaneTapUI::voltageUnitNames().value(static_cast<LaneTapUI::VoltageUnit>(code));
    }
    return units;
}

QString itemList(const QStringList& items) {
    QStringList numbered;
    for (int i = 0; i < items.size(); ++i) {
        numbered << QString("%1 %2").arg(i).arg(items[i]);
    }
    return numbered.join(", ");
}

QString measurementCodes() {
    QStringList codes;
    for (int code = LaneTapUI::StrobedEye; code <= LaneTapUI::BERContour; ++code) {
        const auto type = static_cast<LaneTapUI::MeasurementType>(code);
        if (LaneTapUI::measurementDisplayNames().contains(type)) {
            codes << QString("%1 %2").arg(code).arg(
                LaneTapUI::measurementDisplayNames().value(type));
        }
    }
    return codes.join(", ");
}

QString indexProblem(const QString& value, const QStringList& items) {
    if (!isInteger(value)) {
        return QString("%1 is not an index (%2)").arg(standin::quoted(value), itemList(items));
    }
    const int index = value.toInt();
    if (index < 0 || index >= items.size()) {
        return items.isEmpty()
                   ? QString("%1 names no item: the box has none").arg(value)
                   : QString("%1 names no item of its box (%2)").arg(value, itemList(items));
    }
    return {};
}

// The items of a stored list, or a problem with its form: every item is followed by ",".
QString splitList(const QString& value, QStringList& items) {
    if (value.isEmpty()) {
        return {};
    }
    if (!value.endsWith(',')) {
        return "every item ends with ',', the last one too";
    }
    items = value.left(value.size() - 1).split(',');
    if (items.contains(QString())) {
        return "an item is empty (two ',' in a row)";
    }
    return {};
}

QString signalProblem(const QString& key, const ValueContext& context) {
    if (context.signalTypes.contains(key)) {
        return {};
    }
    return QString("the design has no signal %1%2")
        .arg(standin::quoted(key), nearestHint(key, context.signalTypes.keys()));
}

QString codeProblem(const QString& word) {
    const auto type = static_cast<LaneTapUI::MeasurementType>(word.toInt());
    if (isInteger(word) && LaneTapUI::measurementDisplayNames().contains(type)) {
        return {};
    }
    return QString("%1 is not a measurement code (%2)")
        .arg(standin::quoted(word), measurementCodes());
}

QString complianceProblem(const QString& type, const QString& word) {
    if (isInteger(word) && LaneTapUI::hasCompliance(type, word.toInt())) {
        return {};
    }
    return QString("%1 is not a compliance test of %2 ('lanetap catalogue --type %2' lists them)")
        .arg(standin::quoted(word), type);
}

// Checks each entry of a map: its words, the first being the key. `minimum` words are needed.
template <class CheckEntry>
QString mapProblem(const QString& value, int minimum, CheckEntry checkEntry) {
    QStringList entries;
    QString problem = splitList(value, entries);
    for (const QString& entry : qAsConst(entries)) {
        if (!problem.isEmpty()) {
            break;
        }
        const QStringList words = entry.split(' ', Qt::SkipEmptyParts);
        if (words.size() < minimum || entry.contains(QRegularExpression(R"([^\S ])"))) {
            problem = QString("%1 is not an entry of this map").arg(standin::quoted(entry));
        } else {
            problem = checkEntry(words);
        }
    }
    return problem;
}

// The first problem of the words from `from` on.
template <class Check>
QString eachWord(const QStringList& words, int from, Check check) {
    for (int i = from; i < words.size(); ++i) {
        const QString problem = check(words[i]);
        if (!problem.isEmpty()) {
            return problem;
        }
    }
    return {};
}

QString listProblem(const QString& value, const ValueContext& context, bool signals) {
    QStringList items;
    const QString problem = splitList(value, items);
    if (!problem.isEmpty() || !signals) {
        return problem;
    }
    return eachWord(items, 0, [&](const QString& key) { return signalProblem(key, context); });
}

QString mapFormProblem(StoredForm form, const QString& value, const ValueContext& context) {
    const auto signal = [&](const QString& key) { return signalProblem(key, context); };
    switch (form) {
        case StoredForm::MeasurementMap:
            return mapProblem(value, 1, [&](const QStringList& words) {
                const QString problem = signal(words[0]);
                return problem.isEmpty() ? eachWord(words, 1, codeProblem) : problem;
            });
        case StoredForm::GroupMeasurementMap:
            return mapProblem(value, 1, [&](const QStringList& words) {
                return eachWord(words, 1, codeProblem);
            });
        case StoredForm::ReferenceMap:
            return mapProblem(value, 2, [&](const QStringList& words) {
                QString problem = signal(words[0]);
                problem = problem.isEmpty() ? codeProblem(words[1]) : problem;
                return problem.isEmpty() ? eachWord(words, 2, signal) : problem;
            });
        case StoredForm::ComplianceMap:
            return mapProblem(value, 1, [&](const QStringList& words) {
                const QString problem = signal(words[0]);
                const QString type = context.signalTypes.value(words[0]);
                return problem.isEmpty() ? eachWord(words, 1,
                                                    [&](const QString& id) {
                                                        return complianceProblem(type, id);
                                                    })
                                         : problem;
            });
        case StoredForm::GroupComplianceMap:
            return mapProblem(value, 1, [&](const QStringList& words) {
                const QString type = words[0].section('_', 0, 0);
                return eachWord(words, 1,
                                [&](const QString& id) { return complianceProblem(type, id); });
            });
        case StoredForm::WriteLevelingMap:
            return mapProblem(value, 1,
                              [&](const QStringList& words) { return eachWord(words, 0, signal); });
        default:
            return {};
    }
}

}  // namespace

bool isInteger(const QString& text) {
    bool fits = false;
    text.toInt(&fits);
    return fits && matchesWhole(R"([+-]?\d+)", text);
}

bool isDecimalNumber(const QString& text) {
    return matchesWhole(numberPattern, text) && std::isfinite(text.toDouble());
}

bool isStoredVoltage(const QString& text) {
    return LaneTapUI::BlockGrammar::valueProblem(LaneTapUI::SettingForm::Voltage, text).isEmpty();
}

QString formProblem(const StoredKey& key, const QString& value, const ValueContext& context) {
    switch (key.form) {
        case StoredForm::Int:
            return isInteger(value) ? QString()
                                    : QString("%1 is not an integer").arg(standin::quoted(value));
        case StoredForm::Flag:
            return value == "0" || value == "1"
                       ? QString()
                       : QString("%1 is neither 0 (off) nor 1 (on)").arg(standin::quoted(value));
        case StoredForm::Index:
            return indexProblem(value,
                                key.key == "speedGradeIndex" ? context.speedGrades : key.items);
        case StoredForm::Number:
            return isDecimalNumber(value)
                       ? QString()
                       : QString("%1 is not a decimal number").arg(standin::quoted(value));
        case StoredForm::Text:
            return {};
        case StoredForm::Choice:
            return key.items.contains(value)
                       ? QString()
                       : QString("%1 is none of %2")
                             .arg(standin::quoted(value), key.items.join(", "));
        case StoredForm::Voltage:
            return isStoredVoltage(value)
                       ? QString()
                       : QString(
                             "%1 is not a voltage: a number, then a blank and a unit (%2) "
                             "where it has one")
                             .arg(standin::quoted(value), unitTexts().join(", "));
        case StoredForm::SpeedGrades: {
            QStringList grades;
            QString problem = splitList(value, grades);
            return problem.isEmpty() ? eachWord(grades, 0,
                                                [](const QString& grade) {
                                                    return isInteger(grade) && grade.toInt() > 0
                                                               ? QString()
                                                               : QString("%1 is not a data rate")
                                                                     .arg(standin::quoted(grade));
                                                })
                                     : problem;
        }
        case StoredForm::SignalList:
            return listProblem(value, context, true);
        default:
            return mapFormProblem(key.form, value, context);
    }
}

}  // namespace lanetap
