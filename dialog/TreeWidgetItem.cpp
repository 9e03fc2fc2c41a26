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

// A sort compares tens of thousands of pairs; the collator is made again only when the default
// locale has changed since the last comparison.
const QCollator& numericCollator() {
    static QLocale madeFor = collationLocale();
    static QCollator collator = [] {
        QCollator made{madeFor};
        made.setNumericMode(true);
        return made;
    }();
    const QLocale locale = collationLocale();
    if (locale != madeFor) {
        madeFor = locale;
        collator = QCollator(locale);
        collator.setNumericMode(true);
    }
    return collator;
}

}  // namespace

TreeWidgetItem::~TreeWidgetItem() = default;

bool TreeWidgetItem::operator<(const QTreeWidgetItem& other) const {
    const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
    return numericCollator().compare(text(column), other.text(column)) < 0;
}

}  // namespace LaneTapUI
