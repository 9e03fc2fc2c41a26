#pragma once

#include <QCollatorSortKey>
#include <QString>
#include <QTreeWidgetItem>
#include <optional>

namespace LaneTapUI {

// An item of a signal tree. It sorts its texts in the natural order of NaturalOrder.h, so that DQ2
// comes before DQ10.
class TreeWidgetItem : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    ~TreeWidgetItem() override;

    bool operator<(const QTreeWidgetItem& other) const override;

    // A copy of `item` and of everything below it, in the same order, made of items of this
    // class.
    static TreeWidgetItem* copyOf(const QTreeWidgetItem& item);

    // Makes the collator of the next sort from the default locale as it is now, and gives its
    // generation, which changes with the collator. A sort compares tens of thousands of pairs with
    // the one collator.
    static int prepareSort();

private:
    explicit TreeWidgetItem(const QTreeWidgetItem& other) : QTreeWidgetItem(other) {}

    // The collation key of the text last compared, kept while that text and the collator stay.
    struct CachedKey {
        QString text;
        int collatorGeneration;
        QCollatorSortKey key;
    };
    const QCollatorSortKey& sortKey(const QString& text) const;

    mutable std::optional<CachedKey> cachedKey;
};

}  // namespace LaneTapUI
