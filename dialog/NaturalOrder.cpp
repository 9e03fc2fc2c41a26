#include "dialog/NaturalOrder.h"

#include <QCollator>
#include <QHash>
#include <QLocale>

namespace LaneTapUI {
namespace {

// Collation in the C locale is a plain comparison of code points that ignores numeric mode,
// which would put DQ10 before DQ2; a process left in that locale collates as in English.
QLocale collationLocale() {
    QLocale locale;
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

// The numeric collator of the sorts, with a generation that changes with each new collator.
struct NumericCollator {
    QLocale locale;
    QCollator collator;
    int generation = 0;
    QHash<QString, QCollatorSortKey> keysByText;

    void follow(const QLocale& current) {
        locale = current;
        collator = QCollator(current);
        collator.setNumericMode(true);
        keysByText.clear();
        ++generation;
    }

    QCollatorSortKey keyOf(const QString& text) {
        // A bound on what a long session on many designs keeps.
        constexpr int mostTexts = 100000;
        auto known = keysByText.constFind(text);
        if (known == keysByText.constEnd()) {
            if (keysByText.size() >= mostTexts) {
                keysByText.clear();
            }
            known = keysByText.insert(text, collator.sortKey(text));
        }
        return known.value();
    }
};

NumericCollator& numericCollator() {
    static NumericCollator current = [] {
        NumericCollator made;
        made.follow(collationLocale());
        return made;
    }();
    return current;
}

}  // namespace

int prepareNaturalOrder() {
    NumericCollator& collator = numericCollator();
    const QLocale locale = collationLocale();
    if (locale != collator.locale) {
        collator.follow(locale);
    }
    return collator.generation;
}

int naturalOrderGeneration() {
    return numericCollator().generation;
}

QCollatorSortKey naturalSortKey(const QString& text) {
    return numericCollator().keyOf(text);
}

int naturalCompare(const QString& a, const QString& b) {
    return numericCollator().collator.compare(a, b);
}

}  // namespace LaneTapUI
