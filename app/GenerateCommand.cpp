// lanetap generate: a synthetic bus design for scale tests, written to stdout.

#include <QJsonDocument>

#include "app/Commands.h"
#include "app/DesignGenerator.h"
#include "standin/DesignFile.h"

namespace lanetap {
namespace {

const int maxChannels = 16;
const int maxDevices = 32;
const int maxEbdNodes = 8;

int boundedNumber(const Arguments& arguments, const QString& option, int low, int high,
                  int absent) {
    if (!arguments.values.contains(option)) {
        return absent;
    }
    bool ok = false;
    const int number = arguments.value(option).toInt(&ok);
    if (!ok || number < low || number > high) {
        throw Failure(ExitUsage, QString("--%1 must be a whole number from %2 to %3, not %4")
                                     .arg(option)
                                     .arg(low)
                                     .arg(high)
                                     .arg(standin::quoted(arguments.value(option))));
    }
    return number;
}

GeneratorOptions optionsOf(const Arguments& arguments) {
    GeneratorOptions options;
    options.lpddr4 = arguments.value("dram") == "lpddr4";
    options.channels = boundedNumber(arguments, "channels", 1, maxChannels, 1);
    options.devices = boundedNumber(arguments, "devices", 1, maxDevices, 1);
    options.ebdNodes = boundedNumber(arguments, "ebd-nodes", 0, maxEbdNodes, 0);

    const QString width = arguments.values.value("width", options.lpddr4 ? "x16" : "x8");
    if (options.lpddr4 && width == "x4") {
        throw Failure(ExitUsage, "--width must be x8 or x16 for LPDDR4, not 'x4'");
    }
    options.width = width.mid(1).toInt();
    options.dieNodes = arguments.has("die");
    options.ddrSimulation = arguments.has("ddr-simulation");
    options.readMode = arguments.has("read");
    return options;
}

int runGenerate(const Arguments& arguments) {
    if (!arguments.positional.isEmpty()) {
        throw Failure(ExitUsage, QString("generate writes the design to stdout and takes no "
                                         "arguments, not %1")
                                     .arg(standin::quoted(arguments.positional.front())));
    }
    const GeneratorOptions options = optionsOf(arguments);
    writeOut(QString::fromUtf8(QJsonDocument(generateDesign(options)).toJson()));
    return ExitOk;
}

}  // namespace

const Command& generateCommand() {
    static const Command command{
        "generate",
        QString(),
        {{"Writes a synthetic bus design to stdout, for trying the netlist writer at scale. A "
          "controller U1 drives N channels of M memories each (U2, U3, ...). Each memory has its "
          "own data lanes: DQ, strobes DQS_t/DQS_c and, except x4, masks; the clock, address and "
          "command nets of a channel are shared by the controller and all its memories. A probe "
          "X1 selects every signal by the keys discovery gives them, with an Eye measurement on "
          "each, a Skew of each DQ against its strobe, and compliance on with every test the "
          "compliance page offers."}},
        {{{"dram"},
          QString(),
          "default ddr4; DDR4 has A0-A13, BA, BG, CKE, CS_n, ODT, RAS_n, CAS_n, WE_n, LPDDR4 has "
          "CA0-CA5, CKE, CS and ODT_CA",
          {"ddr4", "lpddr4"}},
         {{"channels"}, "N", "1 to 16, default 1"},
         {{"devices"}, "M", "memories per channel, 1 to 32, default 1"},
         {{"width"},
          QString(),
          "data bits per memory: x4, x8 or x16 for DDR4 (default x8), x8 or x16 for LPDDR4 "
          "(default x16)",
          {"x4", "x8", "x16"}},
         {{"ebd-nodes"}, "K", "memories use a board model with K nodes per port, 0 to 8"},
         {{"die"}, QString(), "memories bring out their die nodes"},
         {{"ddr-simulation"},
          QString(),
          "a DDR simulation instead of a transient one: receiver outputs appear, and the block "
          "has no compliance"},
         {{"read"}, QString(), "the controller is in a read cycle instead of a write cycle"}},
        &runGenerate};
    return command;
}

}  // namespace lanetap
