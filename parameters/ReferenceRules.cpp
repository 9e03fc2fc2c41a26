#include "parameters/ReferenceRules.h"

#include <QStringList>
#include <algorithm>

namespace LaneTapUI {
namespace {

bool containsAny(const QString& text, const QStringList& parts) {
    return std::any_of(parts.begin(), parts.end(),
                       [&](const QString& part) { return text.contains(part); });
}

bool isDataGroup(const QString& type) {
    return type == QLatin1String("DQS") || type == QLatin1String("DQ") ||
           containsAny(type, {QStringLiteral("DM"), QStringLiteral("DBI")});
}

bool isCommandGroup(const QString& type) {
    static const QStringList exact = {"A", "CA", "CTRL", "CA_CKE", "CKE", "BA", "BG", "ODT"};
    return exact.contains(type) || containsAny(type, {"CS", "RAS", "CAS", "WE"});
}

}  // namespace

QSet<QString> excludedReferenceTypes(const QString& signalType) {
    if (signalType.isEmpty()) {
        return {};
    }
    if (isDataGroup(signalType)) {
        return {"A",     "CA",  "CTRL",  "CA_CKE", "CKE",  "CS", "CS_n", "RAS",
                "RAS_n", "CAS", "CAS_n", "WE",     "WE_n", "BA", "BG"};
    }
    if (isCommandGroup(signalType)) {
        return {"DQ", "DQS"};
    }
    return {};
}

}  // namespace LaneTapUI
