#include "discovery/DesignWalk.h"

#include <memory>

namespace LaneTapUI {

bool passesInstanceFilter(const db::Instance* instance) {
    if (instance->statusBits & 0x3u) {
        return false;
    }
    const db::ModelDef* model = db::get_instance_model_definition(instance);
    return model && model->active != 0;
}

void walkInstances(db::Design* design, const std::function<bool(db::Instance*)>& visit) {
    std::unique_ptr<db::InstIter> iterator;
    {
        // The contexts only serve to find the design to walk; they go before the walk starts.
        const DesignContext context(design);
        const db::HierarchyContext hierarchy =
            db::get_hierarchy_context_for_netlist(context, DescentNetlistNetlist, nullptr);
        iterator = std::make_unique<db::InstIter>(hierarchy.get_design());
    }
    while (db::Instance* instance = iterator->get_next()) {
        if (passesInstanceFilter(instance) && !visit(instance)) {
            return;
        }
    }
}

}  // namespace LaneTapUI
