#include <QPointer>
#include <QString>
#include <future>
#include <memory>
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

// A board's writer holds tens of thousands of records, and giving them back takes a good part of a
// netlist call. The writer of the last call is destroyed on a second thread while the host goes
// on with the block; the next call, and the unloading of the library, wait for it.
std::future<void>& writerRelease() {
    static std::future<void> release;
    return release;
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
    if (writerRelease().valid()) {
        writerRelease().get();
    }
    auto writer = std::make_unique<LaneTapUI::NetlistWriter>(parameters, instance);
    // The block is UTF-8 already; it goes to the host without another conversion.
    QByteArray result = writer->writeBlock();
    result.prepend("\n;Lane_Tap");
    writerRelease() = std::async(std::launch::async,
                                 [released = std::move(writer)]() mutable { released.reset(); });
    return oval_create_string(result.constData());
}
