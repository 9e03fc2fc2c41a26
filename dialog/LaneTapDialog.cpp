#include "dialog/LaneTapDialog.h"

#include "discovery/DesignWalk.h"
#include "discovery/SignalDiscovery.h"
#include "parameters/ParamText.h"
#include "parameters/TestModes.h"

namespace LaneTapUI {

LaneTapDialog::LaneTapDialog(ItemParametersEditInterface* itemEditor,
                             std::shared_ptr<ItemParameterSession> itemSession, QWidget* parent,
                             Qt::WindowFlags flags)
    : QWidget(parent, flags),
      editor(itemEditor),
      session(std::move(itemSession)),
      workspaceDirectory("C:\\") {
    ui.setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    setupConnections();
    setInitialSizes();
    const ORLValue directory = CallORL("de_workspace_directory").execute(nullptr);
    if (const char* text = StringORLValue(directory).value_data()) {
        workspaceDirectory = QString::fromLocal8Bit(text);
    }
    // The dialog opens on the top-left corner of its parent, not centred on it.
    if (parent && parent->geometry().isValid()) {
        move(parent->geometry().topLeft());
    }
    parameters = std::make_unique<ControllerParameters>();
}

LaneTapDialog::~LaneTapDialog() = default;

void LaneTapDialog::rebindSession(ItemParametersEditInterface* newEditor,
                                  std::shared_ptr<ItemParameterSession> newSession) {
    sessionDirty = false;
    editor = newEditor;
    session = std::move(newSession);
}

void LaneTapDialog::loadFromInstance(WinInstanceC* newWindowInstance) {
    windowInstance = newWindowInstance;
    std::string library;
    session->libraryName(library);
    ui.instanceLabel->setText(QString::fromStdString(library) + ":" +
                              QString::fromStdString(session->cellName()) + " Instance Name");
    ui.instanceNameEdit->setText(QString::fromStdString(session->instanceName()));
    readController();
    discoverSignals();
    collectClockSignals();
    assignDefaultReferences();
    {
        db::ParamIter stored(static_cast<db::EmptyParamIter*>(nullptr), nullptr);
        fillParameters(stored);
        writeLevelingEnabled = readParamInt(stored, "EnableWriteLeveling") == 1;
        ui.writeLevelingCheckBox->setChecked(writeLevelingEnabled);
        restoreWizardPosition(stored);
        loadSettings(stored);
        loadSelections(stored);
    }
    // Opening rewrites what it has just read, so the stored text is normalised by the opening.
    db::ParamIter normalised(static_cast<db::EmptyParamIter*>(nullptr), nullptr);
    fillParameters(normalised);
    saveToInstance(normalised);
    commitToHost();
}

void LaneTapDialog::fillParameters(db::ParamIter& iterator) {
    session->fillParamIter(&iterator);
}

void LaneTapDialog::readController() {
    walkInstances(session->design(), [this](db::Instance* instance) {
        if (db::get_model_cell_name(instance) != controllerCellName) {
            return true;
        }
        parameters->readParameters(instance);
        return false;
    });
    applyControllerRules();
}

void LaneTapDialog::applyControllerRules() {
    if (!parameters->parametersRead) {
        return;
    }
    const DecidedModes decided = modesDecidedBy(*parameters);
    ui.modeOfOperationBox->setEnabled(!decided.operationMode);
    ui.dqsSignalModeBox->setEnabled(!decided.dqsSignalMode);
    ui.dramTypeBox->setEnabled(!decided.dramType);
    if (parameters->isDDRSimulation()) {
        ui.enableComplianceCheckBox->setEnabled(false);
    }
}

void LaneTapDialog::discoverSignals() {
    ++discoveries;
    allSignals.clear();
    selectedSignals.clear();
    wlSelectedSignals.clear();
    signalStore.clear();
    LaneTapUI::discoverSignals(session->design(), *parameters, DiscoveryKind::Dialog, signalStore,
                               allSignals);
    wlAllSignals = allSignals;
    availableSignals = allSignals;
    wlAvailableSignals = allSignals;
}

void LaneTapDialog::commitToHost() {
    session->commit();
    if (!session->passesEditOn()) {
        return;
    }
    const ORLValue sessionValue(editor->sessionValue(&session));
    CallORL("de_iteminfo_edit_instance")
        .add_arg(sessionValue)
        .add_arg(std::string(session->instanceName()))
        .execute(nullptr);
}

void LaneTapDialog::onApplyClicked() {
    db::ParamIter iterator(static_cast<db::EmptyParamIter*>(nullptr), nullptr);
    fillParameters(iterator);
    saveToInstance(iterator);
    commitToHost();
}

void LaneTapDialog::onCancelClicked() {
    close();
    const ORLValue design(create_design_orl_value(session->design()));
    CallORL("de_end_one_lapi_command_in_all_context_windows").add_arg(design).execute(nullptr);
}

void LaneTapDialog::onFinishClicked() {
    onApplyClicked();
    onCancelClicked();
}

void LaneTapDialog::onHelpClicked() {
    const ORLValue window(apival_create_winInst_value(windowInstance, nullptr, nullptr, nullptr));
    CallORL("de_post_help_cb").add_arg(0).add_arg("lane_tap").add_arg(window).execute(nullptr);
}

}  // namespace LaneTapUI
