#include "dialog/TreeWidgetItem.h"

#include <QCollator>
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
struct NumericCollator {
    QLocale locale;
    QCollator collator;
    int generation = 0;

    void follow(const QLocale& current) {
        locale = current;
        collator = QCollator(current);
        collator.setNumericMode(true);
        ++generation;
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

void TreeWidgetItem::prepareSort() {
    NumericCollator& collator = numericCollator();
    const QLocale locale = collationLocale();
    if (locale != collator.locale) {
        collator.follow(locale);
    }
}

const QCollatorSortKey& TreeWidgetItem::sortKey(const QString& text) const {
    const NumericCollator& collator = numericCollator();
    if (!cachedKey || cachedKey->collatorGeneration != collator.generation ||
        cachedKey->text != text) {
        cachedKey.reset(
            new CachedKey{text, collator.generation, collator.collator.sortKey(text)});
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
