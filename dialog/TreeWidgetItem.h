#pragma once

#include <QTreeWidgetItem>

namespace LaneTapUI {

// An item of a signal tree. It sorts its texts with numbers read as numbers, so that DQ2 comes
// before DQ10.
class TreeWidgetItem : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    ~TreeWidgetItem() override;

    bool operator<(const QTreeWidgetItem& other) const override;
};

}  // namespace LaneTapUI
