#include "app/Commands.h"

namespace lanetap {

int runNetlist(const Arguments& arguments) {
    if (arguments.positional.size() != 1) {
        throw Failure(ExitUsage, "netlist needs exactly one design file");
    }
    const QString probeName = arguments.required("probe");
    standin::Host host;
    loadDesign(host, arguments.positional.front());
    findProbe(host, probeName);
    loadPlugin(host, arguments);
    const standin::CallResult result = host.netlistProbe(probeName.toStdString());
    printWarnings(host);
    checkCall(result, "LaneTap_netlist_probe");
    // The block is UTF-8 already and goes out as it came.
    writeOut(QByteArray::fromStdString(result.text));
    return ExitOk;
}

}  // namespace lanetap
