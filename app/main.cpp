#include <QCoreApplication>
#include <cstdio>

#include "app/Commands.h"

namespace {

using lanetap::Command;

const QStringList pluginOption = {"probe", "plugin"};

const Command commands[] = {
    {"netlist", "netlist DESIGN --probe NAME [--plugin PATH]",
     "Loads the design, loads the LaneTap plug-in, and prints the netlist block that the plug-in\n"
     "writes for the probe instance NAME, exactly as the host would receive it. Warnings go to\n"
     "stderr as 'warning: TEXT'.\n\n"
     "  --probe NAME    the probe instance\n"
     "  --plugin PATH   the plug-in library (default: $LANETAP_PLUGIN, else liblanetap.so next\n"
     "                  to this program)\n",
     pluginOption, {}, &lanetap::runNetlist},
    {"get", "get DESIGN --probe NAME [KEY...]",
     "Prints parameters of the instance NAME as KEY=VALUE lines: the given keys, or all of them.\n"
     "A probe shows the values of its item definition for the keys its design file lacks.\n\n"
     "  --probe NAME    the instance\n",
     {"probe"}, {}, &lanetap::runGet},
    {"set", "set DESIGN --probe NAME KEY=VALUE...",
     "Sets parameters of the instance NAME and saves the design file. The file is replaced in\n"
     "one step, so it is either fully written or left as it was.\n\n"
     "  --probe NAME    the instance\n",
     {"probe"}, {}, &lanetap::runSet},
};

void printOverview() {
    QString text =
        "usage: lanetap COMMAND [ARGUMENTS]\n"
        "       lanetap --help | --version\n\n"
        "LaneTap sets up DDR4 and LPDDR4 bus probes and writes their netlist blocks. This program\n"
        "is a stand-in for the design host: it reads a design file, loads the plug-in and runs it.\n\n"
        "Commands:\n";
    for (const Command& command : commands) {
        text += QString("  lanetap %1\n").arg(command.synopsis);
    }
    text +=
        "\n'lanetap COMMAND --help' explains a command.\n"
        "Exit codes: 0 done, 2 bad usage or design file, 3 a script function failed,\n"
        "4 the plug-in could not be loaded or registered.\n";
    lanetap::writeOut(text);
}

int dispatch(const QStringList& words) {
    if (words.isEmpty()) {
        printOverview();
        return lanetap::ExitUsage;
    }
    if (words.front() == "--help" || words.front() == "help") {
        printOverview();
        return lanetap::ExitOk;
    }
    if (words.front() == "--version") {
        lanetap::writeOut(QString("lanetap %1\n").arg(QCoreApplication::applicationVersion()));
        return lanetap::ExitOk;
    }
    for (const Command& command : commands) {
        if (words.front() == command.name) {
            const lanetap::Arguments arguments = lanetap::parseArguments(command, words.mid(1));
            if (arguments.has("help")) {
                lanetap::writeOut(lanetap::usageOf(command));
                return lanetap::ExitOk;
            }
            return command.run(arguments);
        }
    }
    throw lanetap::Failure(lanetap::ExitUsage,
                           QString("unknown command '%1'; see 'lanetap --help'").arg(words.front()));
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName("lanetap");
    QCoreApplication::setApplicationVersion(LANETAP_VERSION);
    try {
        return dispatch(QCoreApplication::arguments().mid(1));
    } catch (const lanetap::Failure& failure) {
        std::fprintf(stderr, "lanetap: error: %s\n", failure.what());
        return failure.code;
    }
}
