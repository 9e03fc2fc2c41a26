#include "dialog/TreeHelpers.h"

#include "dialog/TreeWidgetItem.h"

namespace LaneTapUI {

QTreeWidgetItem* copyCurrentItem(QTreeWidget* from, QTreeWidget* to) {
    QTreeWidgetItem* item = from->currentItem();
    if (item) {
        to->addTopLevelItem(item->clone());
        TreeWidgetItem::prepareSort();
        to->sortItems(0, Qt::AscendingOrder);
        to->setCurrentItem(to->topLevelItem(0));
    }
    return item;
}

}  // namespace LaneTapUI
