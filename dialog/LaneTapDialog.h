#pragma once

#include <QHash>
#include <QMultiHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <memory>

#include "dialog/TreeHelpers.h"
#include "discovery/SignalRecord.h"
#include "host/Interfaces.h"
#include "parameters/ControllerParameters.h"
#include "ui_LaneTapQtDialog.h"

class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace LaneTapUI {

// The pages of stackedWidget; each route owns a half of the setup.
inline constexpr int firstPage = 0;
inline constexpr int writeLevelingRoute = 1;
inline constexpr int measurementRoute = 2;

// The probe's setup dialog: a wizard over the measurement route (setup, signals, measurements,
// reference signals, compliance) and the write-leveling route. There is one per process; the
// script that opens it shows it, and closing it only hides it. The selection pages build their
// trees from the hashes below whenever their tab becomes current; a tree that would come out as it
// stands is only brought back to how its build left it.
//
// The class declares no signals or slots of its own: every connection is made by pointer to
// member in setupConnections.
class LaneTapDialog : public QWidget {
    Q_OBJECT

public:
    // `editor` is the host's parameter editor that opened `session`; the dialog hands the session
    // back through it when it commits.
    LaneTapDialog(ItemParametersEditInterface* editor,
                  std::shared_ptr<ItemParameterSession> session, QWidget* parent,
                  Qt::WindowFlags flags);
    ~LaneTapDialog() override;

    // Takes over the edit of another item (or the same item again), opened by `editor`.
    void rebindSession(ItemParametersEditInterface* editor,
                       std::shared_ptr<ItemParameterSession> newSession);
    // Reads the controller, discovers the design's signals, restores the stored setup and at once
    // writes it back, so that opening normalises the stored text.
    void loadFromInstance(WinInstanceC* newWindowInstance);

    // ---- wizard and commands (LaneTapDialog.cpp, Wizard.cpp) ----
    void onWriteLevelingToggled(int state);
    void onStackedPageChanged(int index);
    void onWriteLevelingTabChanged(int index);
    void onMeasurementTabChanged(int index);
    void onNextClicked();
    void onBackClicked();
    void onApplyClicked();
    void onCancelClicked();
    void onFinishClicked();
    void onHelpClicked();

    // ---- setup page (SetupPage.cpp) ----
    void onThresholdRowChanged(int row);
    void onDramTypeChanged(const QString& text);
    void onSpeedGradeChanged(const QString& text);
    void onInternalVrefDQChanged(int state);
    void onInternalVrefCAChanged(int state);

    // ---- signal selection (SignalPage.cpp) ----
    void onAddSignalClicked();
    void onRemoveSignalClicked();

    // ---- measurement selection (MeasurementPage.cpp) ----
    void onMeasurementSignalChanged(QTreeWidgetItem* current);
    void showMeasurementDescription(QTreeWidgetItem* item);
    void onAddMeasurementClicked();
    void onRemoveMeasurementClicked();

    // ---- reference selection (ReferencePage.cpp) ----
    void onRefSignalChanged(QTreeWidgetItem* current);
    void onRefMeasurementChanged(QTreeWidgetItem* current);
    void onAddRefSignalClicked();
    void onRemoveRefSignalClicked();

    // ---- compliance selection (CompliancePage.cpp) ----
    void purgeDqCompliance();
    void onEnableComplianceToggled(int state);
    void onBrowsePdfDirClicked();
    void onSaveToPdfToggled(int state);
    void onComplianceSignalChanged(QTreeWidgetItem* current);
    void showComplianceDescription(QTreeWidgetItem* item);
    void onAddComplianceClicked();
    void onRemoveComplianceClicked();

    // ---- write leveling (WriteLevelingPages.cpp) ----
    void onWlAddSignalClicked();
    void onWlRemoveSignalClicked();
    void onWlRefSignalChanged(QTreeWidgetItem* current);
    void onWlAddRefSignalClicked();
    void onWlRemoveRefSignalClicked();

private:
    void setupConnections();
    void commitToHost();
    // The session's parameters, through an iterator that lives for one operation.
    void fillParameters(db::ParamIter& iterator);

    // Wizard.cpp
    void restoreWizardPosition(const db::ParamIter& parameters);
    void disableTabsAfter(QTabWidget* tabs, int tab);
    void updateNavigationButtons(QTabWidget* tabs, int index);
    void advanceWizard(int page);

    // LaneTapDialog.cpp: the controller and the signals of the design.
    void readController();
    // The rules a controller in the design brings to the setup page.
    void applyControllerRules();
    void discoverSignals();

    // Persistence.cpp
    void saveToInstance(db::ParamIter& parameters);
    void saveWriteLevelingGroup(db::ParamIter& parameters);
    void saveMeasurementGroup(db::ParamIter& parameters);
    void loadSettings(const db::ParamIter& parameters);
    void loadSelections(const db::ParamIter& parameters);

    // SetupPage.cpp
    void applySupplyDefaults(const QString& dramTypeText);
    void applyThresholdDefaults(int dataRate);
    void setThresholdGroupTitle();

    // SignalPage.cpp: the signal trees that every selection page stands on.
    void populateSignalTree(QTreeWidget* tree, const SignalRecordHash& records,
                            const QSet<QString>& excludedTypes);
    void addSignalToTree(TreeBuild& build, const LeafSource& source);
    // Expands the tree, fits its first column and makes its first item current; `sort` sorts it
    // first.
    void finishTree(QTreeWidget* tree, bool sort = true);
    // What a signal tree was last built from. Asked for the same items again, with nothing moved
    // in the tree since, populateSignalTree only brings the view back to how a build leaves it,
    // the colours of the items painted since included: a tab change on a board of 10^4 signals
    // then rebuilds nothing. After a new discovery the records are new but may read the same:
    // the texts the build read tell, and a tree showing them already is kept or copied.
    struct BuiltTree {
        SignalRecordHash records;
        QSet<QString> excludedTypes;
        int discovery;
        int collation;
        bool changed;
        QSet<QTreeWidgetItem*> painted;
        TreeSources sources;
        // Some item was collapsed since the build.
        bool collapsed = false;
    };
    bool isBuiltFrom(const QTreeWidget* tree, const SignalRecordHash& records,
                     const QSet<QString>& excludedTypes, int collation) const;
    // The tree that shows `sources` as built, unchanged: `tree` itself if it does, else another
    // one with no item painted; null for none.
    const QTreeWidget* treeShowing(const QTreeWidget* tree, const TreeSources& sources,
                                   int collation) const;
    void showAsBuilt(QTreeWidget* tree);
    void markTreeChanged(const QTreeWidget* tree);
    void fitColumn(QTreeWidget* tree, int column);
    void refreshSignalSelectionTrees();
    void moveRecords(QTreeWidgetItem* item, SignalRecordHash& target, SignalRecordHash& source);
    QTreeWidgetItem* findOrCreateAncestors(QTreeWidgetItem* item, QTreeWidget* target);
    void attachMovedItem(QTreeWidgetItem* item, QTreeWidgetItem* parent, QTreeWidget* target);
    void mergeItemChildren(QTreeWidgetItem* source, QTreeWidgetItem* target);
    void deleteItemAndEmptyParents(QTreeWidgetItem* item);
    void moveKeys(const QStringList& keys, SignalRecordHash& from, SignalRecordHash& to);
    void inheritGroupMeasurements(QTreeWidgetItem* item);
    // How an item moved by an Add or Remove button takes its place in the tree it joins.
    enum class Placement {
        // A flat list of names: the item joins the list, which is sorted, its first entry current.
        SortedList,
        // A signal tree: the item joins below ancestors of the same texts, made where missing, is
        // merged with an item of its text there and becomes current; column 0 is fitted again.
        // The ancestors it leaves empty go with it.
        SignalTree,
    };
    // What every Add and Remove button of the pages does: `record` takes the current item of
    // `from` into the records, then the item moves to `to`. Without a current item nothing
    // happens and the answer is false.
    bool moveCurrentItem(QTreeWidget* from, QTreeWidget* to, Placement placement,
                         const std::function<void(QTreeWidgetItem*)>& record);
    void applyGroupMeasurements(const QString& key);

    // MeasurementPage.cpp
    // Builds the page behind measurement tab `index`, if it has one to build.
    void refreshMeasurementTab(int index);
    void refreshMeasurementPage();
    void fillFlatTree(QTreeWidget* tree, const QStringList& names);
    void recordMeasurementAdded(QTreeWidgetItem* measurement, QTreeWidgetItem* signal);
    void recordMeasurementRemoved(QTreeWidgetItem* measurement, QTreeWidgetItem* signal);

    // ReferencePage.cpp
    void collectClockSignals();
    void assignDefaultReferences();
    void refreshRefSignalPage();
    void showRefPair(QTreeWidgetItem* signal, QTreeWidgetItem* measurement);
    void updateRefGroupTitle(QTreeWidgetItem* signal, QTreeWidgetItem* measurement);
    void colourPair(QTreeWidgetItem* signal, QTreeWidgetItem* measurement);
    void colourPairs(QTreeWidgetItem* signal, QTreeWidget* measurementTree);
    void colourUnreferenced(QTreeWidgetItem* item);
    void paint(QTreeWidgetItem* item, int column, Qt::GlobalColor colour);
    void recordRefSignalAdded(QTreeWidgetItem* reference, QTreeWidgetItem* signal,
                              QTreeWidgetItem* measurement);
    void recordRefSignalRemoved(QTreeWidgetItem* reference, QTreeWidgetItem* signal,
                                QTreeWidgetItem* measurement);
    SignalRecordHash recordsUnder(QTreeWidgetItem* item, SignalRecordHash records);

    // CompliancePage.cpp
    void refreshCompliancePage();
    QHash<QString, QSet<QString>> collectModelsByType(const SignalRecordHash& records) const;
    void fillComplianceSignalTree(QTreeWidget* tree, const QHash<QString, QSet<QString>>& models);
    void updateComplianceGroupTitle(QTreeWidgetItem* item);
    void recordComplianceAdded(QTreeWidgetItem* measurement, QTreeWidgetItem* signal);
    void recordGroupComplianceAdded(QTreeWidgetItem* measurement, QTreeWidgetItem* signal);
    void recordComplianceRemoved(QTreeWidgetItem* measurement, QTreeWidgetItem* signal);

    // InitialSizes.cpp: the sizes the dialog starts with, from the font of what must show whole.
    void setInitialSizes();
    // The two trees on the left of the reference page wide enough for their names; after a build.
    void fitRefSignalTrees();

    // WriteLevelingPages.cpp
    void refreshWlSignalTrees();
    void refreshWlRefPage();
    void showWlRefSignals(QTreeWidgetItem* item);
    void ensureWlDefaultRef(const QString& key);
    void recordWlRefAdded(QTreeWidgetItem* reference, QTreeWidgetItem* signal);
    void recordWlRefRemoved(QTreeWidgetItem* reference, QTreeWidgetItem* signal);

    Ui::LaneTapQtDialog ui;
    ItemParametersEditInterface* editor;
    std::shared_ptr<ItemParameterSession> session;
    WinInstanceC* windowInstance = nullptr;
    std::unique_ptr<ControllerParameters> parameters;
    QString workspaceDirectory;
    bool writeLevelingEnabled = false;
    bool sessionDirty = false;
    int furthestTab = 0;
    int stackPage = measurementRoute;
    // The records of the last discovery; allSignals and every other hash point into it.
    SignalStore signalStore;
    SignalRecordHash allSignals;
    SignalRecordHash availableSignals;
    SignalRecordHash selectedSignals;
    SignalRecordHash wlAllSignals;
    SignalRecordHash wlAvailableSignals;
    SignalRecordHash wlSelectedSignals;
    QHash<QString, QHash<QString, int>> groupMeasurements;
    QHash<QString, QMultiHash<QString, int>> groupCompliance;
    QHash<QString, QString> clockByNode;
    QHash<const QTreeWidget*, BuiltTree> builtTrees;
    // Counts the discoveries: records of an earlier one may share addresses with today's.
    int discoveries = 0;
};

}  // namespace LaneTapUI
