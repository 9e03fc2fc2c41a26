#include "parameters/ParamText.h"

#include <locale.h>  // newlocale
#include <stdlib.h>  // strtod_l

#include <cerrno>
#include <stdexcept>

namespace LaneTapUI {
namespace {

// Runs `parse` over a value. A standard exception, from a conversion, ends the parse and leaves
// whatever `parse` had put into the result.
template <class Result, class Parse>
Result parseSafely(const std::string& value, Parse parse) {
    Result result{};
    try {
        parse(value, result);
    } catch (const std::exception&) {
    }
    return result;
}

// The same over the stored value; a parameter the host does not have reads as the empty result.
template <class Result, class Parse>
Result readSafely(const db::ParamIterConst& params, const std::string& name, Parse parse) {
    std::string value;
    try {
        value = params.get_param_string_value(name);
    } catch (const std::exception&) {
        return Result{};
    }
    return parseSafely<Result>(value, parse);
}

// Stored text is UTF-8, as the writers store it.
QString widen(const char* bytes, std::size_t size) {
    return QString::fromUtf8(bytes, static_cast<int>(size));
}

QString widen(const std::string& bytes) {
    return widen(bytes.data(), bytes.size());
}

// std::stod with the decimal point whatever the process locale: the host may run under a locale
// with a decimal comma, while stored numbers always carry a point.
double toDouble(const std::string& text) {
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    const char* begin = text.c_str();
    char* end = nullptr;
    const int savedErrno = errno;
    errno = 0;
    const double value = strtod_l(begin, &end, cLocale);
    const bool outOfRange = errno == ERANGE;
    errno = savedErrno;
    if (end == begin) {
        throw std::invalid_argument("stod");
    }
    if (outOfRange) {
        throw std::out_of_range("stod");
    }
    return value;
}

// Calls `visit` with each entry of a "," separated value, as a view; the "," that ends the last
// entry starts none.
// The value is decoded once. An entry reads as a text of its own would, so a byte-order mark that
// opens it is dropped; decoded behind a ",", the value keeps every mark for that rule, the one
// that opens it included.
QString decodedEntries(const std::string& value) {
    return widen("," + value);
}

// The same over a value decoded by decodedEntries, whose views stay good while it lives.
template <class Visit>
void forEachEntryIn(const QString& decoded, Visit visit) {
    const QStringView whole = QStringView(decoded).mid(1);
    int start = 0;
    while (start < whole.size()) {
        int end = whole.indexOf(QLatin1Char(','), start);
        if (end < 0) {
            end = whole.size();
        }
        QStringView entry = whole.mid(start, end - start);
        if (entry.startsWith(QChar(0xFEFF))) {
            entry = entry.mid(1);
        }
        visit(entry);
        start = end + 1;
    }
}

template <class Visit>
void forEachEntry(const std::string& value, Visit visit) {
    forEachEntryIn(decodedEntries(value), visit);
}

}  // namespace

void splitOnWhiteSpace(QStringView text, WordViews& parts) {
    parts.clear();
    const int size = text.size();
    for (int i = 0; i < size;) {
        while (i < size && text.at(i).isSpace()) {
            ++i;
        }
        const int start = i;
        while (i < size && !text.at(i).isSpace()) {
            ++i;
        }
        if (i > start) {
            parts.append(text.mid(start, i - start));
        }
    }
}

// A stored map holds tens of thousands of small numbers: a plain run of digits is read here, any
// other word as Qt reads it.
int wordToInt(QStringView word) {
    const bool hasSign =
        !word.isEmpty() && (word[0] == QLatin1Char('-') || word[0] == QLatin1Char('+'));
    const QStringView digits = word.mid(hasSign ? 1 : 0);
    constexpr int plainDigits = 9;
    if (digits.isEmpty() || digits.size() > plainDigits) {
        return word.toInt(nullptr, 10);
    }
    int value = 0;
    for (const QChar c : digits) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) {
            return word.toInt(nullptr, 10);
        }
        value = value * 10 + (c.unicode() - '0');
    }
    return word[0] == QLatin1Char('-') ? -value : value;
}

namespace {

// Calls `visit` with the white-space separated parts of each entry that has at least `minimum`.
// The parts are views into the entry: a stored map has tens of thousands of them.
template <class Visit>
void forEachRecordIn(const QString& decoded, int minimum, Visit visit) {
    WordViews parts;
    forEachEntryIn(decoded, [&](QStringView entry) {
        splitOnWhiteSpace(entry, parts);
        if (parts.size() >= minimum) {
            visit(parts);
        }
    });
}

template <class Visit>
void forEachRecord(const std::string& value, int minimum, Visit visit) {
    forEachRecordIn(decodedEntries(value), minimum, visit);
}

// The ids behind an entry's key; a word that is no number counts as 0.
template <class Ids>
Ids idsOf(const WordViews& parts) {
    Ids ids;
    ids.reserve(parts.size() - 1);
    for (int i = 1; i < parts.size(); ++i) {
        ids.append(wordToInt(parts[i]));
    }
    return ids;
}

void appendParts(QStringList& names, const WordViews& parts, int from) {
    for (int i = from; i < parts.size(); ++i) {
        names.append(parts[i].toString());
    }
}

void store(db::ParamIter& params, const std::string& name, const std::string& value) {
    try {
        params.set_param_string_value(name, value);
    } catch (const std::exception&) {
    }
}

}  // namespace

// A scan of the characters: no pattern is compiled for each of the many stored entries.
QStringList splitOnWhiteSpace(const QString& text) {
    WordViews parts;
    splitOnWhiteSpace(text, parts);
    QStringList words;
    words.reserve(parts.size());
    for (QStringView part : parts) {
        words.append(part.toString());
    }
    return words;
}

std::string readParamString(const db::ParamIterConst& params, const std::string& name) {
    return readSafely<std::string>(params, name,
                                   [](const std::string& value, std::string& out) { out = value; });
}

QString readParamText(const db::ParamIterConst& params, const std::string& name) {
    return widen(readParamString(params, name));
}

int readParamInt(const db::ParamIterConst& params, const std::string& name) {
    return readSafely<int>(params, name,
                           [](const std::string& value, int& out) { out = std::stoi(value); });
}

double readParamDouble(const db::ParamIterConst& params, const std::string& name) {
    return readSafely<double>(params, name,
                              [](const std::string& value, double& out) { out = toDouble(value); });
}

ListEntries parseListEntries(const std::string& value) {
    ListEntries out;
    out.text = decodedEntries(value);
    forEachEntryIn(out.text, [&](QStringView entry) { out.items.push_back(entry); });
    return out;
}

IntListMap parseIntListMap(const std::string& value) {
    return parseSafely<IntListMap>(value, [](const std::string& text, IntListMap& out) {
        forEachRecord(text, 1, [&](const WordViews& parts) {
            out.insert(parts[0].toString(), idsOf<QList<int>>(parts));
        });
    });
}

IntListViews parseIntListViews(const std::string& value) {
    return parseSafely<IntListViews>(value, [](const std::string& text, IntListViews& out) {
        out.text = decodedEntries(text);
        forEachRecordIn(out.text, 1, [&](const WordViews& parts) {
            out.lists.insert(parts[0], idsOf<QVarLengthArray<int, 4>>(parts));
        });
    });
}

ReferenceMap parseReferenceMap(const std::string& value) {
    return parseSafely<ReferenceMap>(value, [](const std::string& text, ReferenceMap& out) {
        forEachRecord(text, 2, [&](const WordViews& parts) {
            appendParts(out[parts[0].toString()][wordToInt(parts[1])], parts, 2);
        });
    });
}

QStringList readParamStringList(const db::ParamIterConst& params, const std::string& name) {
    return parseSafely<QStringList>(
        readParamString(params, name), [](const std::string& text, QStringList& out) {
            forEachEntry(text, [&](QStringView entry) { out.append(entry.toString()); });
        });
}

IntListMap readParamIntListMap(const db::ParamIterConst& params, const std::string& name) {
    return parseIntListMap(readParamString(params, name));
}

ReferenceMap readParamReferenceMap(const db::ParamIterConst& params, const std::string& name) {
    return parseReferenceMap(readParamString(params, name));
}

StringListMap readParamStringListMap(const db::ParamIterConst& params, const std::string& name) {
    return readSafely<StringListMap>(params, name,
                                     [](const std::string& value, StringListMap& out) {
                                         forEachRecord(value, 1, [&](const WordViews& parts) {
                                             appendParts(out[parts[0].toString()], parts, 1);
                                         });
                                     });
}

void writeParamString(db::ParamIter& params, const std::string& name, const QString& text) {
    store(params, name, text.toStdString());
}

QString stringListText(const QStringList& items) {
    QString text;
    for (const QString& item : items) {
        text += item + ',';
    }
    return text;
}

void writeParamStringList(db::ParamIter& params, const std::string& name,
                          const QStringList& items) {
    writeParamString(params, name, stringListText(items));
}

void writeParamInt(db::ParamIter& params, const std::string& name, int value) {
    store(params, name, std::to_string(value));
}

}  // namespace LaneTapUI
