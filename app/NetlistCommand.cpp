#include "app/Commands.h"

namespace lanetap {
namespace {

int runNetlist(const Arguments& arguments) {
    const QString& designFile = designFileOf(arguments, "netlist");
    const QString probeName = arguments.value("probe");
    standin::Host host;
    loadDesign(host, designFile);
    findProbe(host, probeName);
    loadPlugin(host, arguments);
    const standin::CallResult result = host.netlistProbe(probeName.toStdString());
    printWarnings(host);
    checkCall(result, "LaneTap_netlist_probe");
    // The block is UTF-8 already and goes out as it came.
    writeOutput(arguments.value("output"), result.text);
    return ExitOk;
}

}  // namespace

const Command& netlistCommand() {
    static const Command command{
        "netlist",
        "DESIGN",
        {{"Loads the design, loads the LaneTap plug-in, and prints the netlist block that the "
          "plug-in writes for the probe instance NAME, exactly as the host would receive it. "
          "Warnings go to stderr as 'warning: TEXT'."}},
        {{{"probe"}, "NAME", "the probe instance, an instance of the LaneTap cell", {}, true},
         {{"plugin"},
          "PATH",
          "the plug-in library (default: $LANETAP_PLUGIN, else liblanetap.so next to this "
          "program)"},
         {{"o", "output"},
          "FILE",
          "write the block to FILE (replaced in one step), not to stdout"}},
        &runNetlist};
    return command;
}

}  // namespace lanetap
