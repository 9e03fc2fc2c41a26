#include "netlist/BlockGrammar.h"

#include <QChar>
#include <QRegularExpression>

namespace LaneTapUI::BlockGrammar {
namespace {

// The marks that reorder text on screen without showing themselves: ALM, LRM, RLM, the
// embeddings and overrides, and the isolates.
bool isBidiFormat(char32_t c) {
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

bool isControl(char32_t c) {
    return QChar::category(c) == QChar::Other_Control;
}

// Why one character cannot be part of a name, or null.
const char* nameCharacterProblem(char32_t c) {
    if (isControl(c)) {
        return "holds a control character";
    }
    if (QChar::isSpace(c)) {
        return "holds white space";
    }
    if (isBidiFormat(c)) {
        return "holds a bidirectional-format character";
    }
    return nullptr;
}

bool isNameDelimiter(char32_t c) {
    return c == '=' || c == ';' || c == '"' || c == '\\' || c == ',';
}

// Calls `visit` with each character of `text`; a lone surrogate comes as itself. Stops at the
// first character for which `visit` answers false.
template <class Visit>
void forEachCharacter(QStringView text, Visit visit) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(text[i].unicode(), text[i + 1].unicode());
            ++i;
        }
        if (!visit(c)) {
            return;
        }
    }
}

int characterCount(QStringView text) {
    int count = 0;
    forEachCharacter(text, [&](char32_t) { return ++count, true; });
    return count;
}

QString plainValueProblem(QStringView value) {
    QString problem;
    forEachCharacter(value, [&](char32_t c) {
        if (const char* fault = nameCharacterProblem(c)) {
            problem = fault;
        } else if (c == '=' || c == ';' || c == '"' || c == '\\') {
            problem = QStringLiteral("holds the character %1").arg(QChar(c));
        }
        return problem.isEmpty();
    });
    return problem;
}

QString quotedTextProblem(QStringView text) {
    QString problem;
    forEachCharacter(text, [&](char32_t c) {
        if (isControl(c)) {
            problem = QStringLiteral("holds a control character");
        } else if (c == '"' || c == '\\') {
            problem =
                QStringLiteral("holds the character %1 within its double quotes").arg(QChar(c));
        }
        return problem.isEmpty();
    });
    return problem;
}

bool isVoltage(QStringView value) {
    static const QRegularExpression voltage(QStringLiteral(
        R"(\A[+-]?(?:[0-9]+(?:\.[0-9]*)?|\.[0-9]+)(?:[eE][+-]?[0-9]+)?(?: (?:fV|pV|nV|uV|mV|V|kV))?\z)"));
    return voltage.match(value.toString()).hasMatch();
}

}  // namespace

QString nameProblem(QStringView name) {
    if (name.isEmpty()) {
        return QStringLiteral("is empty");
    }
    // Only the start of a long name is looked at before it is refused for its length.
    if (name.size() > longestName && characterCount(name.left(2 * longestName + 2)) > longestName) {
        return QStringLiteral("is longer than %1 characters").arg(longestName);
    }
    QString problem;
    forEachCharacter(name, [&](char32_t c) {
        if (const char* fault = nameCharacterProblem(c)) {
            problem = fault;
        } else if (isNameDelimiter(c)) {
            problem = QStringLiteral("holds the character %1").arg(QChar(c));
        }
        return problem.isEmpty();
    });
    return problem;
}

QString nameProblem(std::string_view utf8Name) {
    if (utf8Name.size() > std::size_t(longestName) || utf8Name.empty()) {
        return nameProblem(QString::fromUtf8(utf8Name.data(), int(utf8Name.size())));
    }
    for (const char byte : utf8Name) {
        const auto c = static_cast<unsigned char>(byte);
        if (c >= 0x80) {
            return nameProblem(QString::fromUtf8(utf8Name.data(), int(utf8Name.size())));
        }
        if (c < 0x21 || c == 0x7F || isNameDelimiter(c)) {
            return nameProblem(QString(QChar(c)));
        }
    }
    return QString();
}

QString valueProblem(SettingForm form, QStringView value) {
    switch (form) {
        case SettingForm::Quoted:
            return quotedTextProblem(value);
        case SettingForm::Voltage:
            if (isVoltage(value)) {
                return QString();
            }
            return QStringLiteral(
                "is no voltage (a number, or a number, one blank and one of fV pV nV uV mV V kV)");
        case SettingForm::Text:
        case SettingForm::Number:
            if (value.size() >= 2 && value.startsWith(QLatin1Char('"')) &&
                value.endsWith(QLatin1Char('"'))) {
                return quotedTextProblem(value.mid(1, value.size() - 2));
            }
            return plainValueProblem(value);
        case SettingForm::Computed:
            return plainValueProblem(value);
    }
    return QString();
}

}  // namespace LaneTapUI::BlockGrammar
