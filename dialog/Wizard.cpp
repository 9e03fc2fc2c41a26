// The wizard: the connections of the dialog, the two routes of tabs and the navigation buttons.

#include <QSignalBlocker>
#include <algorithm>

#include "dialog/LaneTapDialog.h"
#include "parameters/ParamText.h"

namespace LaneTapUI {

namespace {

// The tab widget of a route page, or null for the first page.
QTabWidget* routeTabs(const Ui::LaneTapQtDialog& ui, int page) {
    return page == writeLevelingRoute ? ui.writeLevelingTabs
           : page == measurementRoute ? ui.measurementTabs
                                      : nullptr;
}

void makeCurrent(QTabWidget* tabs, int tab) {
    if (!tabs->isTabEnabled(tab)) {
        tabs->setTabEnabled(tab, true);
    }
    tabs->setCurrentIndex(tab);
}

}  // namespace

void LaneTapDialog::setupConnections() {
    connect(ui.writeLevelingCheckBox, &QCheckBox::stateChanged, this,
            &LaneTapDialog::onWriteLevelingToggled);
    connect(ui.stackedWidget, &QStackedWidget::currentChanged, this,
            &LaneTapDialog::onStackedPageChanged);
    connect(ui.writeLevelingTabs, &QTabWidget::currentChanged, this,
            &LaneTapDialog::onWriteLevelingTabChanged);
    connect(ui.measurementTabs, &QTabWidget::currentChanged, this,
            &LaneTapDialog::onMeasurementTabChanged);
    connect(ui.modeOfOperationBox, &QComboBox::currentTextChanged, this,
            &LaneTapDialog::purgeDqCompliance);
    connect(ui.dqsSignalModeBox, &QComboBox::currentTextChanged, this,
            &LaneTapDialog::purgeDqCompliance);
    connect(ui.dramTypeBox, &QComboBox::currentTextChanged, this,
            &LaneTapDialog::onDramTypeChanged);
    connect(ui.speedGradeBox, &QComboBox::currentTextChanged, this,
            &LaneTapDialog::onSpeedGradeChanged);
    connect(ui.internalVrefDQCheckBox, &QCheckBox::stateChanged, this,
            &LaneTapDialog::onInternalVrefDQChanged);
    connect(ui.internalVrefCACheckBox, &QCheckBox::stateChanged, this,
            &LaneTapDialog::onInternalVrefCAChanged);
    connect(ui.addSignalButton, &QPushButton::clicked, this, &LaneTapDialog::onAddSignalClicked);
    connect(ui.removeSignalButton, &QPushButton::clicked, this,
            &LaneTapDialog::onRemoveSignalClicked);
    connect(ui.selectMeasurementSelectedSignalTree, &QTreeWidget::currentItemChanged, this,
            &LaneTapDialog::onMeasurementSignalChanged);
    connect(ui.selectMeasurementAvailableMeasurementTree, &QTreeWidget::itemClicked, this,
            &LaneTapDialog::showMeasurementDescription);
    connect(ui.selectMeasurementSelectedMeasurementTree, &QTreeWidget::itemClicked, this,
            &LaneTapDialog::showMeasurementDescription);
    connect(ui.addMeasurementButton, &QPushButton::clicked, this,
            &LaneTapDialog::onAddMeasurementClicked);
    connect(ui.removeMeasurementButton, &QPushButton::clicked, this,
            &LaneTapDialog::onRemoveMeasurementClicked);
    connect(ui.enableComplianceCheckBox, &QCheckBox::stateChanged, this,
            &LaneTapDialog::onEnableComplianceToggled);
    connect(ui.browsePDFDirButton, &QPushButton::clicked, this,
            &LaneTapDialog::onBrowsePdfDirClicked);
    connect(ui.saveToPDFCheckBox, &QCheckBox::stateChanged, this,
            &LaneTapDialog::onSaveToPdfToggled);
    connect(ui.selectComplianceSelectedSignalTree, &QTreeWidget::currentItemChanged, this,
            &LaneTapDialog::onComplianceSignalChanged);
    connect(ui.selectComplianceAvailableMeasurementTree, &QTreeWidget::itemClicked, this,
            &LaneTapDialog::showComplianceDescription);
    connect(ui.selectComplianceSelectedMeasurementTree, &QTreeWidget::itemClicked, this,
            &LaneTapDialog::showComplianceDescription);
    connect(ui.addComplianceButton, &QPushButton::clicked, this,
            &LaneTapDialog::onAddComplianceClicked);
    connect(ui.removeComplianceButton, &QPushButton::clicked, this,
            &LaneTapDialog::onRemoveComplianceClicked);
    connect(ui.selectRefSignalSelectedSignalTree, &QTreeWidget::currentItemChanged, this,
            &LaneTapDialog::onRefSignalChanged);
    connect(ui.selectRefSignalSelectedMeasurementTree, &QTreeWidget::currentItemChanged, this,
            &LaneTapDialog::onRefMeasurementChanged);
    connect(ui.addRefSignalButton, &QPushButton::clicked, this,
            &LaneTapDialog::onAddRefSignalClicked);
    connect(ui.removeRefSignalButton, &QPushButton::clicked, this,
            &LaneTapDialog::onRemoveRefSignalClicked);
    connect(ui.wlAddSignalButton, &QPushButton::clicked, this,
            &LaneTapDialog::onWlAddSignalClicked);
    connect(ui.wlRemoveSignalButton, &QPushButton::clicked, this,
            &LaneTapDialog::onWlRemoveSignalClicked);
    connect(ui.wlSelectRefSignalSelectedSignalTree, &QTreeWidget::currentItemChanged, this,
            &LaneTapDialog::onWlRefSignalChanged);
    connect(ui.wlAddRefSignalButton, &QPushButton::clicked, this,
            &LaneTapDialog::onWlAddRefSignalClicked);
    connect(ui.wlRemoveRefSignalButton, &QPushButton::clicked, this,
            &LaneTapDialog::onWlRemoveRefSignalClicked);
    connect(ui.thresholdListWidget, &QListWidget::currentRowChanged, this,
            &LaneTapDialog::onThresholdRowChanged);
    connect(ui.backButton, &QPushButton::clicked, this, &LaneTapDialog::onBackClicked);
    connect(ui.applyButton, &QPushButton::clicked, this, &LaneTapDialog::onApplyClicked);
    connect(ui.nextButton, &QPushButton::clicked, this, &LaneTapDialog::onNextClicked);
    connect(ui.cancelButton, &QPushButton::clicked, this, &LaneTapDialog::onCancelClicked);
    connect(ui.finishButton, &QPushButton::clicked, this, &LaneTapDialog::onFinishClicked);
    connect(ui.helpButton, &QPushButton::clicked, this, &LaneTapDialog::onHelpClicked);
}

void LaneTapDialog::restoreWizardPosition(const db::ParamIter& stored) {
    // The dialog always opens on the measurement route, whatever was stored.
    stackPage = measurementRoute;
    ui.stackedWidget->setCurrentIndex(measurementRoute);
    // A stored tab outside the route is taken as the nearest one.
    furthestTab =
        std::clamp(readParamInt(stored, "TabWidgetTabNumber"), 0, ui.measurementTabs->count() - 1);
    disableTabsAfter(ui.writeLevelingTabs, 0);
    {
        // The selections are not restored yet, and every page is built once they are: a page
        // built here from the empty selection would never be seen.
        const QSignalBlocker quiet(ui.measurementTabs);
        disableTabsAfter(ui.measurementTabs, furthestTab);
    }
    updateNavigationButtons(ui.measurementTabs, furthestTab);
}

void LaneTapDialog::disableTabsAfter(QTabWidget* tabs, int tab) {
    for (int later = tab + 1; later < tabs->count(); ++later) {
        tabs->setTabEnabled(later, false);
    }
    tabs->setCurrentIndex(tab);
}

void LaneTapDialog::updateNavigationButtons(QTabWidget* tabs, int index) {
    const int last = tabs->count() - 1;
    ui.finishButton->setVisible(index == last);
    ui.nextButton->setVisible(index != last);
    ui.backButton->setVisible(index != 0);
}

void LaneTapDialog::onWriteLevelingToggled(int state) {
    writeLevelingEnabled = state == Qt::Checked;
}

void LaneTapDialog::onStackedPageChanged(int index) {
    ui.backButton->setVisible(index != firstPage);
    ui.applyButton->setVisible(index != firstPage);
}

void LaneTapDialog::onWriteLevelingTabChanged(int index) {
    if (index < 0) {
        return;
    }
    if (index == 1) {
        refreshWlRefPage();
    }
    updateNavigationButtons(ui.writeLevelingTabs, index);
}

void LaneTapDialog::onMeasurementTabChanged(int index) {
    if (index < 0) {
        return;
    }
    refreshMeasurementTab(index);
    updateNavigationButtons(ui.measurementTabs, index);
}

void LaneTapDialog::refreshMeasurementTab(int index) {
    if (index == 2) {
        refreshMeasurementPage();
    } else if (index == 3) {
        refreshRefSignalPage();
        fitRefSignalTrees();
    } else if (index == 4) {
        refreshCompliancePage();
    }
}

void LaneTapDialog::onNextClicked() {
    advanceWizard(ui.stackedWidget->currentIndex());
}

void LaneTapDialog::advanceWizard(int page) {
    if (page == firstPage) {
        furthestTab = 0;
        if (writeLevelingEnabled) {
            refreshWlSignalTrees();
            ui.stackedWidget->setCurrentIndex(writeLevelingRoute);
        } else {
            refreshSignalSelectionTrees();
            ui.stackedWidget->setCurrentIndex(measurementRoute);
        }
        return;
    }
    QTabWidget* tabs = routeTabs(ui, page);
    if (!tabs) {
        return;
    }
    const int tab = tabs->currentIndex();
    if (tab < tabs->count() - 1) {
        makeCurrent(tabs, tab + 1);
    }
    furthestTab = std::max(furthestTab, tab + 1);
}

void LaneTapDialog::onBackClicked() {
    const int page = ui.stackedWidget->currentIndex();
    QTabWidget* tabs = routeTabs(ui, page);
    if (!tabs) {
        return;
    }
    const int tab = tabs->currentIndex();
    if (tab == 0) {
        ui.stackedWidget->setCurrentIndex(firstPage);
    } else if (tab > 0) {
        tabs->setCurrentIndex(tab - 1);
    }
}

}  // namespace LaneTapUI
