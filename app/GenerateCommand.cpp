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
    const QString dram = arguments.values.value("dram", "ddr4").toLower();
    if (dram != "ddr4" && dram != "lpddr4") {
        throw Failure(ExitUsage, QString("--dram must be ddr4 or lpddr4, not %1")
                                     .arg(standin::quoted(arguments.value("dram"))));
    }
    options.lpddr4 = dram == "lpddr4";
    options.channels = boundedNumber(arguments, "channels", 1, maxChannels, 1);
    options.devices = boundedNumber(arguments, "devices", 1, maxDevices, 1);
    options.ebdNodes = boundedNumber(arguments, "ebd-nodes", 0, maxEbdNodes, 0);

    const QString width = arguments.values.value("width", options.lpddr4 ? "x16" : "x8").toLower();
    const QStringList widths =
        options.lpddr4 ? QStringList{"x8", "x16"} : QStringList{"x4", "x8", "x16"};
    if (!widths.contains(width)) {
        throw Failure(ExitUsage, QString("--width must be %1 for %2, not %3")
                                     .arg(widths.join(", "), options.lpddr4 ? "LPDDR4" : "DDR4",
                                          standin::quoted(arguments.value("width"))));
    }
    options.width = width.mid(1).toInt();
    options.dieNodes = arguments.has("die");
    options.ddrSimulation = arguments.has("ddr-simulation");
    options.readMode = arguments.has("read");
    return options;
}

}  // namespace

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

}  // namespace lanetap
