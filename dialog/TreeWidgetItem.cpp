#include "dialog/TreeWidgetItem.h"

#include <QCollator>
#include <QHash>
#include <QLocale>
#include <QTreeWidget>

namespace LaneTapUI {
namespace {

// Collation in the C locale is a plain comparison of code points that ignores numeric mode,
// which would put DQ10 before DQ2; a process left in that locale collates as in English.
QLocale collationLocale() {
    QLocale locale;
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

// The numeric collator of the sorts, with a generation that changes with each new collator.
// The trees of a board hold tens of thousands of items but few distinct texts ("DQ3", "Ch0",
// "U12"), so the key of each text is made once for all the sorts of a collator.
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

TreeWidgetItem::~TreeWidgetItem() = default;

int TreeWidgetItem::prepareSort() {
    NumericCollator& collator = numericCollator();
    const QLocale locale = collationLocale();
    if (locale != collator.locale) {
        collator.follow(locale);
    }
    return collator.generation;
}

const QCollatorSortKey& TreeWidgetItem::sortKey(const QString& text) const {
    NumericCollator& collator = numericCollator();
    if (!cachedKey || cachedKey->collatorGeneration != collator.generation ||
        cachedKey->text != text) {
        cachedKey.emplace(CachedKey{text, collator.generation, collator.keyOf(text)});
    }
    return cachedKey->key;
}

bool TreeWidgetItem::operator<(const QTreeWidgetItem& other) const {
    const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
    const QString text = this->text(column);
    const QString otherText = other.text(column);
    // Keys compare as the collator does; an item of another class is compared directly.
    if (const auto* item = dynamic_cast<const TreeWidgetItem*>(&other)) {
        return sortKey(text).compare(item->sortKey(otherText)) < 0;
    }
    return numericCollator().collator.compare(text, otherText) < 0;
}

}  // namespace LaneTapUI
