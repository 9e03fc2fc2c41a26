// The dialog as it opens, in a window of its own size at the default font of the platform: the
// names it shows are whole, and no title of the measurement tabs is out of sight.

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QListWidget>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTabBar>

#include "support/SelectionPages.h"

using namespace lanetap_test;

namespace {

// The worked example with its memory under a long designator, every tab open, and DQ0 measured
// with the measurements of the longest names; group DQ has the compliance test of the longest
// name selected.
QByteArray longNamesDesign() {
    QByteArray design = readBytes(LANETAP_SOURCE_DIR "/examples/ddr4_x8_write.json");
    design.replace("U2", "U2_SODIMM_BOTTOM_SIDE");
    design.replace("DQ0 3 1 ,", "DQ0 0 3 7 ,");
    design.replace("DQ 103000 103003 ,", "DQ 103000 103005 ,");
    design.replace(R"("modeOfOperation")", R"("TabWidgetTabNumber":"4","modeOfOperation")");
    return design;
}

enum Read { EveryItem, CurrentItemAndUp, TabTitles };

struct Reading {
    int texts = 0;
    QStringList cut;  // "text: needed left..right, room left..right"
};

// The texts of `widget` that `read` names, and those of them whose room does not hold the
// rectangle they need. An item's text starts a margin into its cell; its room is the viewport and,
// in a tree, column 0, or only the column when the tree `scrolls`. A bar that scrolls lays its tabs
// out past its end.
Reading readTexts(QWidget* widget, Read read, bool scrolls) {
    Reading reading;
    const auto check = [&reading](const QString& text, const QRect& needed, const QRect& room) {
        ++reading.texts;
        if (!room.contains(needed)) {
            reading.cut << QString("%1: needed %2..%3, room %4..%5")
                               .arg(text)
                               .arg(needed.left())
                               .arg(needed.right())
                               .arg(room.left())
                               .arg(room.right());
        }
    };
    if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
        for (int i = 0; i < tabs->count(); ++i) {
            check(tabs->tabText(i), tabs->tabBar()->tabRect(i), tabs->tabBar()->rect());
        }
    } else if (auto* view = qobject_cast<QAbstractItemView*>(widget)) {
        QModelIndexList indexes;
        for (QModelIndex index = view->currentIndex(); read == CurrentItemAndUp && index.isValid();
             index = index.parent()) {
            indexes << index;
        }
        for (int row = 0; read == EveryItem && row < view->model()->rowCount(); ++row) {
            indexes << view->model()->index(row, 0);
        }
        const int margin =
            view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 1;
        for (const QModelIndex& index : indexes) {
            const QString text = index.data().toString();
            const QRect cell = view->visualRect(index);
            QRect room = view->viewport()->rect();
            if (auto* tree = qobject_cast<QTreeView*>(view)) {
                const QRect column(tree->header()->sectionViewportPosition(0), cell.top(),
                                   tree->header()->sectionSize(0), cell.height());
                room = scrolls ? column : room & column;
            }
            const int width = view->fontMetrics().horizontalAdvance(text) + margin;
            check(text, QRect(cell.left() + margin, cell.top(), width, cell.height()), room);
        }
    }
    return reading;
}

}  // namespace

// Each row opens a tab, makes a compliance group current when it names one, and reads texts that
// must show whole; a row that reads fewer than it should fails as well. The window keeps the
// dialog's size on every tab.
TEST(InitialSizes, TheNamesOfEveryTabShowWholeInTheDialogAtItsSize) {
    Pages pages(longNamesDesign());
    QWidget* dialog = pages.dialog();
    ASSERT_NE(dialog, nullptr);
    dialog->setWindowFlags(dialog->windowFlags() | Qt::Window);
    dialog->show();
    const struct {
        int tab;
        const char* complianceGroup;
        const char* widget;
        Read read;
        bool scrolls;
        int texts;
    } rows[] = {
        {0, nullptr, "measurementTabs", TabTitles, false, 5},
        {0, nullptr, "thresholdListWidget", EveryItem, false, 10},
        {3, nullptr, "selectRefSignalSelectedSignalTree", CurrentItemAndUp, false, 4},
        {3, nullptr, "selectRefSignalSelectedMeasurementTree", EveryItem, false, 3},
        {4, "DQ", "selectComplianceAvailableMeasurementTree", EveryItem, true, 4},
        {4, "DQ", "selectComplianceSelectedMeasurementTree", EveryItem, true, 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.widget);
        pages.tab(row.tab);
        if (row.complianceGroup) {
            pages.act("selectComplianceSelectedSignalTree", {row.complianceGroup});
        }
        QApplication::processEvents();
        EXPECT_EQ(dialog->width(), 898);
        EXPECT_EQ(dialog->height(), 652);
        const Reading reading = readTexts(pages.find<QWidget>(row.widget), row.read, row.scrolls);
        EXPECT_EQ(reading.texts, row.texts);
        EXPECT_EQ(reading.cut.join("; ").toStdString(), "");
    }
}

// Every page of the setup tab keeps room in its boxes for the item they show; the labels beside
// them break their lines instead.
TEST(InitialSizes, TheBoxesOfEverySetupPageShowTheirItemsWhole) {
    Pages pages(longNamesDesign());
    QWidget* dialog = pages.dialog();
    ASSERT_NE(dialog, nullptr);
    dialog->setWindowFlags(dialog->windowFlags() | Qt::Window);
    dialog->show();
    pages.tab(0);
    auto* list = pages.find<QListWidget>("thresholdListWidget");
    auto* stack = pages.find<QStackedWidget>("thresholdStackedWidget");
    int boxes = 0;
    for (int row = 0; row < list->count(); ++row) {
        list->setCurrentRow(row);
        QApplication::processEvents();
        for (const QComboBox* box : stack->currentWidget()->findChildren<QComboBox*>()) {
            ++boxes;
            QStyleOptionComboBox option;
            option.initFrom(box);
            option.editable = box->isEditable();
            const QRect field = box->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                             QStyle::SC_ComboBoxEditField, box);
            EXPECT_GE(field.width(), box->fontMetrics().horizontalAdvance(box->currentText()))
                << list->item(row)->text().toStdString() << ": " << box->objectName().toStdString();
        }
    }
    EXPECT_EQ(boxes, 42);
}
