#include <QPointer>
#include <QString>
#include <stdexcept>

#include "dialog/LaneTapDialog.h"
#include "host/Script.h"
#include "netlist/NetlistWriter.h"
#include "plugin/HostInterfaces.h"
#include "plugin/Vocabulary.h"

namespace {

// The one setup dialog of the process; it lives until Qt destroys it with its parent.
QPointer<LaneTapUI::LaneTapDialog>& dialogRef() {
    static QPointer<LaneTapUI::LaneTapDialog> dialog;
    return dialog;
}

}  // namespace

// Builds or reuses the setup dialog, binds it to the item being edited and loads it. The script
// that called shows the returned "QtWidget".
VALUE_HEADER* LaneTap_show_dialog() {
    ItemParametersEditInterface* editor = LaneTapPlugin::itemParametersInterface();
    // Without the host's parameter editor there is nothing to edit: the script gets an error and
    // no dialog is made. Netlisting does not need the editor.
    if (!editor) {
        throw std::runtime_error(
            "LaneTap_show_dialog: the host offers no \"ItemParametersEdit\" interface");
    }
    WinInstanceC* windowInstance = orl::get_win_instance_parm(0);
    QWidget* parent = windowInstance->parentWidget;
    std::shared_ptr<ItemParameterSession> session;
    editor->openItemSession(session, 1);
    if (dialogRef()) {
        dialogRef()->rebindSession(editor, session);
    } else {
        dialogRef() = new LaneTapUI::LaneTapDialog(editor, session, parent, Qt::WindowFlags());
    }
    dialogRef()->loadFromInstance(windowInstance);
    return oval_create_raw_ptr(oval_find_type("QtWidget"), dialogRef().data());
}

VALUE_HEADER* LaneTap_netlist_probe() {
    TYPE_DEFINITION* paramIterType = oval_find_type("ParamIter");
    VALUE_HEADER* argument = orl::get_typed_parm_impl(0, paramIterType);
    auto* parameters = *static_cast<db::ParamIter**>(oval_value_data(argument));
    oval_free_value(argument);
    if (!parameters) {
        orl::throw_parameter_pointer_is_null(0, paramIterType);
    }
    db::Instance* instance = get_db_inst_orl_parm(1);
    // The block is UTF-8 already; it goes to the host without another conversion.
    const QByteArray block = LaneTapUI::NetlistWriter(parameters, instance).writeBlock();
    return oval_create_string(block.constData());
}
