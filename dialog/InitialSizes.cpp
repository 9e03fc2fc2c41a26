// The sizes the dialog starts with, worked out from the font of the texts that must show whole:
// the page names of the setup page, the names in the selection trees and the titles of the
// measurement tabs. The form alone gives a page list and trees too narrow to read at a large
// font. Every size here is where the view starts; splitters and columns still move.

#include <QComboBox>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QResizeEvent>
#include <QSplitter>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <algorithm>

#include "catalogue/ComplianceTables.h"
#include "catalogue/MeasurementTypes.h"
#include "dialog/LaneTapDialog.h"

namespace LaneTapUI {

namespace {

// The width a top-level item of `tree` needs in column 0 to show `text` whole: the indentation of
// the root's decoration, the text and the margin a view item keeps at either side of it.
int topLevelItemWidth(const QTreeWidget* tree, const QString& text) {
    const int margin = tree->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, tree) + 1;
    return (tree->rootIsDecorated() ? tree->indentation() : 0) +
           tree->fontMetrics().horizontalAdvance(text) + 2 * margin;
}

template <class Texts>
int widestTopLevelItem(const QTreeWidget* tree, const Texts& texts) {
    int widest = 0;
    for (const QString& text : texts) {
        widest = std::max(widest, topLevelItemWidth(tree, text));
    }
    return widest;
}

// The width of a view whose viewport shows `contents` pixels across: its frame, and the vertical
// scroll bar when `scrolls`.
int viewWidth(const QAbstractScrollArea* view, int contents, bool scrolls) {
    return contents + 2 * view->frameWidth() +
           (scrolls ? view->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, view) : 0);
}

// Whether the rows of an expanded tree are more than its viewport shows at once. A tree not laid
// out yet is taken to be `unknownHeight` high.
bool rowsOverflow(QTreeWidget* tree, int unknownHeight) {
    const int shown = tree->isVisible() ? tree->viewport()->height() : unknownHeight;
    const QAbstractItemView* view = tree;
    const int rowHeight = std::max(view->sizeHintForRow(0), 1);
    int height = 0;
    for (QTreeWidgetItemIterator it(tree); *it && height <= shown; ++it) {
        height += rowHeight;
    }
    return height > shown;
}

// The width a combo box needs to show its longest item with its frame and arrow.
int comboBoxWidth(const QComboBox* box) {
    int widest = 0;
    for (int i = 0; i < box->count(); ++i) {
        widest = std::max(widest, box->fontMetrics().horizontalAdvance(box->itemText(i)));
    }
    QStyleOptionComboBox option;
    option.initFrom(box);
    option.editable = box->isEditable();
    return box->style()
        ->sizeFromContents(QStyle::CT_ComboBox, &option, QSize(widest, box->fontMetrics().height()),
                           box)
        .width();
}

QStringList complianceNames() {
    QStringList names;
    for (const ComplianceTable* table :
         {&ckeComplianceTable(), &caComplianceTable(), &ckComplianceTable(), &dmComplianceTable(),
          &dqsComplianceTable(), &dqComplianceTable()}) {
        for (const ComplianceMeasurement& row : *table) {
            names << row.name;
        }
    }
    return names;
}

// Keeps the titles of a tab bar whole: when they are wider than their tab widget at its font, the
// bar's font gets smaller, half a point at a time, until they fit or it is half the size.
class WholeTabTitles : public QObject {
public:
    explicit WholeTabTitles(QTabWidget* tabs) : QObject(tabs), tabs(tabs) {
        tabs->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == tabs && event->type() == QEvent::Resize) {
            fit(static_cast<QResizeEvent*>(event)->size().width());
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void fit(int width) {
        QTabBar* bar = tabs->tabBar();
        QFont font = tabs->font();
        const qreal full = font.pointSizeF();
        bar->setFont(font);
        for (qreal size = full - 0.5; size >= full / 2 && bar->sizeHint().width() > width;
             size -= 0.5) {
            font.setPointSizeF(size);
            bar->setFont(font);
        }
    }

    QTabWidget* tabs;
};

}  // namespace

void LaneTapDialog::setInitialSizes() {
    // The page list as wide as its longest name. The threshold group beside it, which the form
    // keeps at its size hint at least, may give way down to its minimum to make that room.
    QListWidget* pages = ui.thresholdListWidget;
    QSizePolicy policy = ui.signalThresholdGroup->sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Preferred);
    ui.signalThresholdGroup->setSizePolicy(policy);
    const QAbstractItemView* pageView = pages;
    // The boxes of the pages keep room for their longest item, and the labels beside them break
    // their lines where the room is short.
    for (QComboBox* box : ui.thresholdStackedWidget->findChildren<QComboBox*>()) {
        box->setMinimumWidth(comboBoxWidth(box));
    }
    for (QLabel* label : ui.thresholdStackedWidget->findChildren<QLabel*>()) {
        label->setWordWrap(true);
    }
    ui.splitter_13->setSizes({viewWidth(pages, pageView->sizeHintForColumn(0), false),
                              ui.signalThresholdGroup->sizeHint().width()});

    // On the reference page the two trees on the left keep what fitRefSignalTrees gives them and
    // the group takes the rest. The group's title names the pair shown and may be longer than the
    // dialog is wide: the group is as narrow as what it holds allows, and a long title is cut.
    ui.splitter_9->setStretchFactor(0, 0);
    ui.splitter_9->setStretchFactor(1, 0);
    ui.splitter_9->setStretchFactor(2, 1);
    QGroupBox* group = ui.RefSignalSelectionGroup;
    group->setMinimumWidth(group->layout()->totalMinimumSize().width());

    // Compliance test names are long: the name column starts as wide as the longest of them, and
    // a tree narrower than that scrolls. The tests offered, a long list, get that width first; the
    // selected tests have what remains.
    const QStringList names = complianceNames();
    for (QTreeWidget* tree : {ui.selectComplianceAvailableMeasurementTree,
                              ui.selectComplianceSelectedMeasurementTree}) {
        tree->header()->resizeSection(0, widestTopLevelItem(tree, names));
    }
    QTreeWidget* offered = ui.selectComplianceAvailableMeasurementTree;
    ui.splitter_10->setStretchFactor(0, 0);
    ui.splitter_10->setSizes({viewWidth(offered, offered->header()->sectionSize(0), true),
                              ui.layoutWidget5->sizeHint().width(),
                              ui.selectComplianceSelectedMeasurementTree->sizeHint().width()});

    new WholeTabTitles(ui.measurementTabs);
}

void LaneTapDialog::fitRefSignalTrees() {
    // The signal tree shows all of column 0, which its build fitted, and keeps room for a scroll
    // bar when its rows overflow (a tree not shown yet counts as high as the dialog); the
    // measurement tree is as wide as the longest measurement name.
    QTreeWidget* signalTree = ui.selectRefSignalSelectedSignalTree;
    QTreeWidget* measurementTree = ui.selectRefSignalSelectedMeasurementTree;
    QList<int> sizes = ui.splitter_9->sizes();
    const int signalWidth = viewWidth(signalTree, signalTree->header()->sectionSize(0),
                                      rowsOverflow(signalTree, height()));
    const int measurementWidth = viewWidth(
        measurementTree, widestTopLevelItem(measurementTree, measurementDisplayNames()), false);
    if (sizes[0] != signalWidth || sizes[1] != measurementWidth) {
        sizes[0] = signalWidth;
        sizes[1] = measurementWidth;
        ui.splitter_9->setSizes(sizes);
    }
}

}  // namespace LaneTapUI
