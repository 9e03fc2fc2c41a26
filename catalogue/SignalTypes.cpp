#include "catalogue/SignalTypes.h"

#include <QStringList>

#include <iterator>

namespace LaneTapUI {
namespace {

// Indexed by the host's signal family value.
const char* const familyNames[] = {
    "DQ",   "DQS_t", "DQS_c", "CK_t",  "CK_c", "A",  "VDD", "VPP",  "VSS",   "ODT",
    "CS_n", "CKE",   "RAS_n", "CAS_n", "WE_n", "BA", "BG",  "DM_n", "DBI_n",
};

}  // namespace

QString signalTypeName(int signalFamily) {
    if (signalFamily < 0 || signalFamily >= static_cast<int>(std::size(familyNames))) {
        return QStringLiteral("UNKNOWN");
    }
    return QString::fromLatin1(familyNames[signalFamily]);
}

QString signalBaseName(const QString& text) {
    return text.split(QLatin1Char('_'), Qt::SkipEmptyParts).value(0);
}

}  // namespace LaneTapUI
