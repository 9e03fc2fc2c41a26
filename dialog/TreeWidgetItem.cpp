#include "dialog/TreeWidgetItem.h"

#include <QTreeWidget>

#include "dialog/NaturalOrder.h"

namespace LaneTapUI {

TreeWidgetItem::~TreeWidgetItem() = default;

int TreeWidgetItem::prepareSort() {
    return prepareNaturalOrder();
}

const QCollatorSortKey& TreeWidgetItem::sortKey(const QString& text) const {
    const int generation = naturalOrderGeneration();
    if (!cachedKey || cachedKey->collatorGeneration != generation || cachedKey->text != text) {
        cachedKey.emplace(CachedKey{text, generation, naturalSortKey(text)});
    }
    return cachedKey->key;
}

TreeWidgetItem* TreeWidgetItem::copyOf(const QTreeWidgetItem& item) {
    auto* copy = new TreeWidgetItem(item);
    QList<QTreeWidgetItem*> children;
    children.reserve(item.childCount());
    for (int i = 0; i < item.childCount(); ++i) {
        children.append(copyOf(*item.child(i)));
    }
    copy->addChildren(children);
    return copy;
}

bool TreeWidgetItem::operator<(const QTreeWidgetItem& other) const {
    const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
    const QString text = this->text(column);
    const QString otherText = other.text(column);
    // Keys compare as the collator does; an item of another class is compared directly.
    if (const auto* item = dynamic_cast<const TreeWidgetItem*>(&other)) {
        return sortKey(text).compare(item->sortKey(otherText)) < 0;
    }
    return naturalCompare(text, otherText) < 0;
}

}  // namespace LaneTapUI
