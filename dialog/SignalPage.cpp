// The "Select Signals" tab, the four-level signal trees that every selection page uses (signal
// type, channel, node, signal) and the move behind every Add and Remove button. Column 2 of every
// item holds its key and is never shown.

#include <QHeaderView>
#include <QScrollBar>

#include "dialog/LaneTapDialog.h"
#include "dialog/StoredSelection.h"
#include "dialog/TreeHelpers.h"
#include "dialog/TreeWidgetItem.h"

namespace LaneTapUI {

namespace {

QTreeWidgetItem* childWithText(QTreeWidgetItem* parent, const QString& text) {
    for (int i = 0; i < parent->childCount(); ++i) {
        if (parent->child(i)->text(0) == text) {
            return parent->child(i);
        }
    }
    return nullptr;
}

// The colour of a leaf's instances as a build leaves it; one brush for every leaf, since a brush
// made from a colour allocates.
const QBrush& instancesBrush() {
    static const QBrush brush(Qt::darkGreen);
    return brush;
}

QTreeWidgetItem* topLevelWithText(QTreeWidget* tree, const QString& text) {
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        if (tree->topLevelItem(i)->text(0) == text) {
            return tree->topLevelItem(i);
        }
    }
    return nullptr;
}

// The columns are filled in order, each text appended to the item's list of texts.
QTreeWidgetItem* newItem(QTreeWidgetItem* parent, const QString& text, const QString& key,
                         const QString& instances = QString()) {
    auto* item = new TreeWidgetItem(parent);
    item->setText(0, text);
    if (!instances.isNull()) {
        item->setText(1, instances);
    }
    item->setText(keyColumn, key);
    return item;
}

// The child of `parent` (a top-level item for a null parent) with column 0 `text`, made with
// `key` when there is none yet.
QTreeWidgetItem* groupItem(TreeBuild& build, QTreeWidgetItem* parent, const QString& text,
                           const QString& key) {
    QHash<QString, QTreeWidgetItem*>& children = build.groups[parent];
    QTreeWidgetItem* item = children.value(text);
    if (!item) {
        item = newItem(parent, text, key);
        if (!parent) {
            build.topLevel.append(item);
        }
        children.insert(text, item);
    }
    return item;
}

// What a build reads of `records`, in their order, leaving out the excluded types.
TreeSources treeSources(const SignalRecordHash& records, const QSet<QString>& excludedTypes) {
    TreeSources sources;
    sources.reserve(records.size());
    for (const SignalRecord* record : records) {
        if (!excludedTypes.contains(record->signalType)) {
            sources.append({record->signalType, record->channel, record->displayName,
                            record->groupKey, record->signalIndex, record->key,
                            record->instanceNames()});
        }
    }
    return sources;
}

// The key of every leaf below `item`, the item itself if it is one.
template <class Visit>
void forEachLeaf(QTreeWidgetItem* item, Visit visit) {
    walkTree(
        item, [](QTreeWidgetItem*) {},
        [&](QTreeWidgetItem* leaf) { visit(leaf->text(keyColumn)); });
}

}  // namespace

void LaneTapDialog::populateSignalTree(QTreeWidget* tree, const SignalRecordHash& records,
                                       const QSet<QString>& excludedTypes) {
    const int collation = TreeWidgetItem::prepareSort();
    if (isBuiltFrom(tree, records, excludedTypes, collation)) {
        showAsBuilt(tree);
        return;
    }
    BuiltTree built{records,
                    excludedTypes,
                    discoveries,
                    collation,
                    false,
                    {},
                    treeSources(records, excludedTypes)};
    const QTreeWidget* showing = treeShowing(tree, built.sources, collation);
    if (showing == tree) {
        // The records are new but read as the tree shows them: it stays, and stands for them.
        BuiltTree& kept = builtTrees[tree];
        kept.records = records;
        kept.excludedTypes = excludedTypes;
        kept.discovery = discoveries;
        showAsBuilt(tree);
        return;
    }
    tree->clear();
    QList<QTreeWidgetItem*> topLevel;
    if (showing) {
        // Another tree shows these records as a build leaves them: its items are copied, sorted.
        for (int i = 0; i < showing->topLevelItemCount(); ++i) {
            topLevel.append(TreeWidgetItem::copyOf(*showing->topLevelItem(i)));
        }
    } else {
        TreeBuild build;
        for (const LeafSource& source : qAsConst(built.sources)) {
            addSignalToTree(build, source);
        }
        topLevel = build.topLevel;
    }
    tree->addTopLevelItems(topLevel);
    if (!builtTrees.contains(tree)) {
        connect(tree, &QTreeWidget::itemCollapsed, this,
                [this, tree] { builtTrees[tree].collapsed = true; });
    }
    // Known as built before it is finished: what the current item's slots paint counts as painted.
    builtTrees.insert(tree, std::move(built));
    finishTree(tree, !showing);
}

bool LaneTapDialog::isBuiltFrom(const QTreeWidget* tree, const SignalRecordHash& records,
                                const QSet<QString>& excludedTypes, int collation) const {
    const auto built = builtTrees.constFind(tree);
    return built != builtTrees.constEnd() && !built->changed && built->discovery == discoveries &&
           built->collation == collation && built->excludedTypes == excludedTypes &&
           built->records == records;
}

const QTreeWidget* LaneTapDialog::treeShowing(const QTreeWidget* tree, const TreeSources& sources,
                                              int collation) const {
    const auto shows = [&](const BuiltTree& built) {
        return !built.changed && built.collation == collation && built.sources == sources;
    };
    const auto own = builtTrees.constFind(tree);
    if (own != builtTrees.constEnd() && shows(*own)) {
        return tree;
    }
    for (auto other = builtTrees.cbegin(); other != builtTrees.cend(); ++other) {
        if (other.key() != tree && other->painted.isEmpty() && shows(*other)) {
            return other.key();
        }
    }
    return nullptr;
}

// What a build leaves that the user may have changed since: every item expanded, the view at its
// start, column 0 fitted, and the first item current and alone selected.
void LaneTapDialog::showAsBuilt(QTreeWidget* tree) {
    BuiltTree& built = builtTrees[tree];
    // Only leaves are painted; a build gives them no colour of their own but their instances'.
    for (QTreeWidgetItem* item : qAsConst(built.painted)) {
        item->setData(0, Qt::ForegroundRole, QVariant());
        item->setData(1, Qt::ForegroundRole, QVariant(instancesBrush()));
    }
    built.painted.clear();
    // Every item is expanded still unless one was collapsed since: laying out tens of thousands
    // of items again would change nothing.
    if (built.collapsed) {
        tree->expandAll();
        built.collapsed = false;
    }
    tree->scrollToTop();
    tree->horizontalScrollBar()->setValue(tree->horizontalScrollBar()->minimum());
    fitColumn(tree, 0);
    tree->setCurrentItem(tree->topLevelItem(0));
}

void LaneTapDialog::markTreeChanged(const QTreeWidget* tree) {
    const auto built = builtTrees.find(tree);
    if (built != builtTrees.end()) {
        built->changed = true;
    }
}

void LaneTapDialog::addSignalToTree(TreeBuild& build, const LeafSource& source) {
    QTreeWidgetItem* type = groupItem(build, nullptr, source.signalType, source.signalType);
    QTreeWidgetItem* channel = groupItem(build, type, source.channel, source.channel);
    QTreeWidgetItem* node = groupItem(build, channel, source.displayName, source.groupKey);
    QTreeWidgetItem* leaf =
        newItem(node, source.signalType + source.signalIndex, source.key, source.instanceNames);
    leaf->setForeground(1, instancesBrush());
}

void LaneTapDialog::finishTree(QTreeWidget* tree, bool sort) {
    // Sorted before it is expanded: the view then has no expanded items to follow through the
    // sort.
    if (sort) {
        TreeWidgetItem::prepareSort();
        tree->sortItems(0, Qt::AscendingOrder);
    } else {
        tree->header()->setSortIndicator(0, Qt::AscendingOrder);
    }
    tree->expandAll();
    fitColumn(tree, 0);
    tree->setCurrentItem(tree->topLevelItem(0));
}

void LaneTapDialog::fitColumn(QTreeWidget* tree, int column) {
    QHeaderView* header = tree ? tree->header() : nullptr;
    if (!header || !tree->headerItem() || column > tree->columnCount()) {
        return;
    }
    header->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    const int hinted = tree->headerItem()->sizeHint(column).width();
    const int section = header->sectionSize(column);
    header->setSectionResizeMode(column, QHeaderView::Interactive);
    header->resizeSection(column, std::max(hinted, section));
}

void LaneTapDialog::refreshSignalSelectionTrees() {
    populateSignalTree(ui.selectSignalAvailableSignalTree, availableSignals, {});
    populateSignalTree(ui.selectSignalSelectedSignalTree, selectedSignals, {});
}

void LaneTapDialog::moveRecords(QTreeWidgetItem* item, SignalRecordHash& target,
                                SignalRecordHash& source) {
    forEachLeaf(item, [&](const QString& key) {
        // The source's answer is taken as it is, also a null for a key it does not hold.
        target.insert(key, source.value(key));
        source.remove(key);
    });
}

QTreeWidgetItem* LaneTapDialog::findOrCreateAncestors(QTreeWidgetItem* item, QTreeWidget* target) {
    QList<QTreeWidgetItem*> ancestors;
    for (QTreeWidgetItem* parent = item->parent(); parent; parent = parent->parent()) {
        ancestors.prepend(parent);
    }
    QTreeWidgetItem* match = nullptr;
    for (const QTreeWidgetItem* ancestor : ancestors) {
        QTreeWidgetItem* found = match ? childWithText(match, ancestor->text(0))
                                       : topLevelWithText(target, ancestor->text(0));
        if (!found) {
            // A new ancestor carries no key until the tree is next rebuilt.
            found = new TreeWidgetItem();
            found->setText(0, ancestor->text(0));
            if (match) {
                match->addChild(found);
            } else {
                target->addTopLevelItem(found);
            }
        }
        match = found;
    }
    return match;
}

void LaneTapDialog::attachMovedItem(QTreeWidgetItem* item, QTreeWidgetItem* parent,
                                    QTreeWidget* target) {
    QTreeWidgetItem* found =
        parent ? childWithText(parent, item->text(0)) : topLevelWithText(target, item->text(0));
    if (found) {
        mergeItemChildren(item, found);
        target->setCurrentItem(found);
        return;
    }
    QTreeWidgetItem* copy = item->clone();
    if (parent) {
        parent->addChild(copy);
    } else {
        target->addTopLevelItem(copy);
    }
    target->setCurrentItem(copy);
}

void LaneTapDialog::mergeItemChildren(QTreeWidgetItem* source, QTreeWidgetItem* target) {
    QHash<QString, QTreeWidgetItem*> existing;
    for (int i = 0; i < target->childCount(); ++i) {
        existing.insert(target->child(i)->text(0), target->child(i));
    }
    for (int i = 0; i < source->childCount(); ++i) {
        QTreeWidgetItem* child = source->child(i);
        if (QTreeWidgetItem* match = existing.value(child->text(0))) {
            mergeItemChildren(child, match);
        } else {
            target->addChild(child->clone());
        }
    }
}

void LaneTapDialog::deleteItemAndEmptyParents(QTreeWidgetItem* item) {
    QTreeWidgetItem* parent = item->parent();
    delete item;
    while (parent && parent->childCount() == 0) {
        QTreeWidgetItem* next = parent->parent();
        delete parent;
        parent = next;
    }
}

void LaneTapDialog::moveKeys(const QStringList& keys, SignalRecordHash& from,
                             SignalRecordHash& to) {
    LaneTapUI::moveKeys(keys, from, to);
}

void LaneTapDialog::inheritGroupMeasurements(QTreeWidgetItem* item) {
    forEachLeaf(item, [this](const QString& key) {
        const SignalRecord* record = allSignals.value(key);
        if (record && LaneTapUI::inheritsGroupMeasurements(groupMeasurements, *record)) {
            applyGroupMeasurements(key);
        }
    });
}

void LaneTapDialog::applyGroupMeasurements(const QString& key) {
    if (SignalRecord* record = allSignals.value(key)) {
        LaneTapUI::applyGroupMeasurements(groupMeasurements, *record);
    }
}

bool LaneTapDialog::moveCurrentItem(QTreeWidget* from, QTreeWidget* to, Placement placement,
                                    const std::function<void(QTreeWidgetItem*)>& record) {
    QTreeWidgetItem* item = from->currentItem();
    if (!item) {
        return false;
    }
    record(item);
    markTreeChanged(from);
    markTreeChanged(to);
    if (placement == Placement::SortedList) {
        to->addTopLevelItem(item->clone());
        TreeWidgetItem::prepareSort();
        to->sortItems(0, Qt::AscendingOrder);
        to->setCurrentItem(to->topLevelItem(0));
        delete item;
        return true;
    }
    attachMovedItem(item, findOrCreateAncestors(item, to), to);
    deleteItemAndEmptyParents(item);
    fitColumn(to, 0);
    return true;
}

void LaneTapDialog::onAddSignalClicked() {
    moveCurrentItem(ui.selectSignalAvailableSignalTree, ui.selectSignalSelectedSignalTree,
                    Placement::SignalTree, [this](QTreeWidgetItem* item) {
                        moveRecords(item, selectedSignals, availableSignals);
                        inheritGroupMeasurements(item);
                    });
}

void LaneTapDialog::onRemoveSignalClicked() {
    moveCurrentItem(ui.selectSignalSelectedSignalTree, ui.selectSignalAvailableSignalTree,
                    Placement::SignalTree, [this](QTreeWidgetItem* item) {
                        moveRecords(item, availableSignals, selectedSignals);
                    });
}

}  // namespace LaneTapUI
