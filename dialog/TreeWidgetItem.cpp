#include "dialog/TreeWidgetItem.h"

#include <QCollator>
#include <QLocale>
#include <QTreeWidget>

namespace LaneTapUI {

TreeWidgetItem::~TreeWidgetItem() = default;

bool TreeWidgetItem::operator<(const QTreeWidgetItem& other) const {
    // Collation in the C locale is a plain comparison of code points that ignores numeric mode,
    // which would put DQ10 before DQ2; a process left in that locale collates as in English.
    QLocale locale;
    if (locale.language() == QLocale::C) {
        locale = QLocale(QLocale::English);
    }
    QCollator collator{locale};
    collator.setNumericMode(true);
    const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
    return collator.compare(text(column), other.text(column)) < 0;
}

}  // namespace LaneTapUI
