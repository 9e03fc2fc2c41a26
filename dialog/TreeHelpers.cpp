#include "dialog/TreeHelpers.h"

namespace LaneTapUI {

QTreeWidgetItem* copyCurrentItem(QTreeWidget* from, QTreeWidget* to) {
    QTreeWidgetItem* item = from->currentItem();
    if (item) {
        to->addTopLevelItem(item->clone());
        to->sortItems(0, Qt::AscendingOrder);
        to->setCurrentItem(to->topLevelItem(0));
    }
    return item;
}

}  // namespace LaneTapUI
