#include <QString>
#include <memory>

#include "host/Script.h"
#include "netlist/NetlistWriter.h"
#include "plugin/HostInterfaces.h"
#include "plugin/Vocabulary.h"

// Opens an edit session on the item and hands the script the setup dialog as a "QtWidget" value.
// Until the dialog is built into the library the value holds a null widget, as it does whenever
// no live dialog is left to give.
VALUE_HEADER* LaneTap_show_dialog() {
    orl::get_win_instance_parm(0);
    std::shared_ptr<ItemParameterSession> session;
    LaneTapPlugin::itemParametersInterface()->openItemSession(session, 1);
    return oval_create_raw_ptr(oval_find_type("QtWidget"), nullptr);
}

VALUE_HEADER* LaneTap_netlist_probe() {
    QString result = "\n;Lane_Tap";
    TYPE_DEFINITION* paramIterType = oval_find_type("ParamIter");
    VALUE_HEADER* argument = orl::get_typed_parm_impl(0, paramIterType);
    auto* parameters = *static_cast<db::ParamIter**>(oval_value_data(argument));
    oval_free_value(argument);
    if (!parameters) {
        orl::throw_parameter_pointer_is_null(0, paramIterType);
    }
    db::Instance* instance = get_db_inst_orl_parm(1);
    const auto writer = std::make_unique<LaneTapUI::NetlistWriter>(parameters, instance);
    result += QString::fromStdString(writer->writeBlock());
    return oval_create_string(result.toStdString().c_str());
}
