// The readers of stored parameter texts on arbitrary stored bytes. They never fail, and what they
// read agrees with the text, with the other readers and with the writers.

#include <QSet>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>

#include "fuzz/FuzzCheck.h"
#include "parameters/ParamText.h"
#include "standin/Design.h"

using namespace LaneTapUI;
using lanetap_fuzz::check;
using lanetap_fuzz::fail;
using lanetap_fuzz::shown;

namespace {

const std::string name = "p";

// One instance of a design kept for the whole run; its parameter "p" holds the input.
standin::Instance* instance() {
    static db::Design design;
    static standin::Instance* made = [] {
        standin::Instance* added = design.addInstance();
        added->name = "X1";
        added->cell = "Plain";
        return added;
    }();
    return made;
}

void store(const std::string& value) {
    instance()->parameters.values[name] = value;
}

// A key or token of a map: something, without a separator in it.
void checkToken(const QString& token, const char* what, const std::string& input) {
    check(!token.isEmpty(), std::string(what) + " is empty; stored " + shown(input));
    for (const QChar c : token) {
        check(
            !c.isSpace() && c != QLatin1Char(','),
            std::string(what) + " " + shown(token) + " holds a separator; stored " + shown(input));
    }
}

void checkReaders(const std::string& input) {
    store(input);
    db::ParamIter params(instance());
    const QString decoded = QString::fromUtf8(input.data(), static_cast<int>(input.size()));

    check(readParamString(params, name) == input, "readParamString changed the bytes");
    check(readParamText(params, name) == decoded,
          "readParamText is not the bytes decoded as UTF-8");

    // A list written back is the stored text, with its final "," added when it had none. Each
    // item is decoded as a text of its own, so a byte-order mark that opens one is dropped.
    const QStringList list = readParamStringList(params, name);
    QString joined;
    for (const QString& item : list) {
        joined += item + QLatin1Char(',');
    }
    // Decoded behind a ",", the text keeps every mark; the marks that open an item then go.
    const std::string behindComma = "," + input;
    QString expected = QString::fromUtf8(behindComma.data(), static_cast<int>(behindComma.size()));
    if (!input.empty() && !expected.endsWith(QLatin1Char(','))) {
        expected += QLatin1Char(',');
    }
    expected.replace(QStringLiteral(",") + QChar(0xFEFF), QStringLiteral(","));
    expected.remove(0, 1);
    check(joined == expected, "the list read from " + shown(input) + " does not join back to it");

    // Every reader of a map takes the first part of each entry as its key; the number map keeps
    // the parts of the last entry of a key, the name map those of all its entries.
    const IntListMap numbers = readParamIntListMap(params, name);
    const StringListMap names = readParamStringListMap(params, name);
    const ReferenceMap references = readParamReferenceMap(params, name);
    const QList<QString> numberKeys = numbers.keys();
    const QList<QString> nameKeys = names.keys();
    check(QSet<QString>(numberKeys.cbegin(), numberKeys.cend()) ==
              QSet<QString>(nameKeys.cbegin(), nameKeys.cend()),
          "the number map and the name map have different keys for " + shown(input));
    for (auto it = names.cbegin(); it != names.cend(); ++it) {
        checkToken(it.key(), "a key", input);
        for (const QString& token : it.value()) {
            checkToken(token, "a name", input);
        }
        check(it.value().size() >= numbers.value(it.key()).size(),
              "the number map holds more numbers than there are parts for " + shown(input));
    }
    for (auto it = references.cbegin(); it != references.cend(); ++it) {
        check(names.contains(it.key()),
              "the reference map has a key the name map lacks: " + shown(it.key()));
        int parts = 0;
        for (const QStringList& referenceNames : it.value()) {
            parts += 1 + referenceNames.size();
            for (const QString& token : referenceNames) {
                checkToken(token, "a reference", input);
            }
        }
        check(parts <= names.value(it.key()).size(),
              "the reference map holds more parts than the name map for " + shown(input));
    }

    const int number = readParamInt(params, name);
    // A double is read whatever the text; the sanitizers watch the conversion.
    (void)readParamDouble(params, name);

    // What the writers write, the readers read back.
    writeParamInt(params, name, number);
    check(readParamInt(params, name) == number, "an int written does not read back");
    // Stored text is UTF-8 both ways: valid UTF-8 comes back from the text readers as written.
    // An item that opens with a byte-order mark loses it when read, so it cannot come back.
    const bool opensWithMark = std::any_of(list.cbegin(), list.cend(), [](const QString& item) {
        return item.startsWith(QChar(0xFEFF));
    });
    if (decoded.toUtf8() == QByteArray::fromStdString(input)) {
        if (!opensWithMark) {
            writeParamStringList(params, name, list);
            check(readParamStringList(params, name) == list,
                  "a list written back reads differently: " + shown(input));
        }
        writeParamString(params, name, decoded);
        check(readParamString(params, name) == input, "a text written back reads differently");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    try {
        checkReaders(input);
    } catch (const std::exception& error) {
        fail(std::string("a reader or writer threw: ") + error.what());
    }
    return 0;
}
