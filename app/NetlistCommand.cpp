#include "app/Commands.h"

namespace lanetap {

int runNetlist(const Arguments& arguments) {
    const QString& designFile = designFileOf(arguments, "netlist");
    const QString probeName = arguments.required("probe");
    standin::Host host;
    loadDesign(host, designFile);
    findProbe(host, probeName);
    loadPlugin(host, arguments);
    const standin::CallResult result = host.netlistProbe(probeName.toStdString());
    printWarnings(host);
    checkCall(result, "LaneTap_netlist_probe");
    // The block is UTF-8 already and goes out as it came.
    writeOut(result.text);
    return ExitOk;
}

}  // namespace lanetap
