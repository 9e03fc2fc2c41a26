#include <QApplication>
#include <cstdio>
#include <cstring>
#include <memory>

#include "app/Commands.h"
#include "standin/DesignFile.h"

namespace {

using lanetap::Command;

const QStringList pluginOption = {"probe", "plugin"};

const Command commands[] = {
    {"netlist",
     "netlist DESIGN --probe NAME [--plugin PATH]",
     "Loads the design, loads the LaneTap plug-in, and prints the netlist block that the plug-in\n"
     "writes for the probe instance NAME, exactly as the host would receive it. Warnings go to\n"
     "stderr as 'warning: TEXT'.\n\n"
     "  --probe NAME    the probe instance\n"
     "  --plugin PATH   the plug-in library (default: $LANETAP_PLUGIN, else liblanetap.so next\n"
     "                  to this program)\n",
     pluginOption,
     {},
     &lanetap::runNetlist},
    {"check",
     "check DESIGN --probe NAME [--json] [--plugin PATH]",
     "Reads the setup that the probe NAME stores and learns what the plug-in does with it by\n"
     "running its roads: the block is written once and read back by its grammar, and the dialog\n"
     "opens unseen and stores the setup back. Reports every finding as 'SEVERITY CODE KEY ITEM:\n"
     "MESSAGE' ('-' for a key or item that does not apply), then a summary line. It never\n"
     "changes the file. Exit code 0 when nothing is above a note, 1 when there is a warning or an\n"
     "error, 2 for bad usage or a design that cannot be read.\n\n"
     "Errors: the dialog or the block cannot work as stored.\n"
     "  bad-voltage          a voltage that is blank or no number with a blank and a unit\n"
     "  dialog-fails         the dialog cannot open for another reason\n"
     "Warnings: the plug-in will drop or change what is stored, or the block carries a warning.\n"
     "  bad-number           a number, code or id the plug-in reads otherwise than it reads\n"
     "  bad-index            an index that names no item of its box\n"
     "  duplicate            a signal, code, reference or id stored twice in one entry\n"
     "  modes-differ         the dialog offers tests for other modes than the block judges by\n"
     "  rate-mismatch        the controller's data rate and the speed grade disagree\n"
     "  not-measurable       a measurement its own description rules out for the signal\n"
     "  unsafe-value         a value or name the block's reader cannot read back\n"
     "  netlist-warning      each warning that 'lanetap netlist' prints for the probe\n"
     "  not-written          a stored entry the block does not carry, with the reason\n"
     "  missing-reference    a measurement that needs a reference and has none\n"
     "  unknown-id           a measurement code that no measurement has\n"
     "  dialog-changes       a key the dialog stores with another meaning (a note when the\n"
     "                       block stays the same)\n"
     "Notes: worth knowing.\n"
     "  compliance-adds      how many signals compliance adds beyond the selection\n"
     "  compliance-inactive  compliance stored on in a DDR simulation: the block carries none\n"
     "  controller-override  a stored mode that the controller decides otherwise\n"
     "  nothing-selected     no signal is selected\n"
     "docs/check.md explains every code.\n\n"
     "  --probe NAME    the probe instance\n"
     "  --json          {\"design\", \"probe\", \"findings\": [{\"severity\", \"code\", \"key\",\n"
     "                  \"item\", \"message\"}]}, with null for a key or item that does not apply\n"
     "  --plugin PATH   the plug-in library, as for netlist\n",
     {"probe", "plugin"},
     {"json"},
     &lanetap::runCheck},
    {"get",
     "get DESIGN --probe NAME [KEY...]",
     "Prints parameters of the instance NAME as KEY=VALUE lines: the given keys, or all of them.\n"
     "A probe shows the values of its item definition for the keys its design file lacks.\n\n"
     "  --probe NAME    the instance\n",
     {"probe"},
     {},
     &lanetap::runGet},
    {"set",
     "set DESIGN --probe NAME [--raw] KEY=VALUE...",
     "Sets parameters of the instance NAME and saves the design file. The file is replaced in\n"
     "one step, so it is either fully written or left as it was, and only the values set\n"
     "change in it. The design's lock is held from the read to the write. A value that the\n"
     "block's settings line cannot carry (white space outside double quotes, ; = \" or \\ in a\n"
     "plain value, a voltage that is not NUMBER or NUMBER UNIT) is refused. A probe takes only\n"
     "the keys of its setup, each in its stored form (an int is an integer, an index names an\n"
     "item of its box, a voltage is a number with a blank and a unit where it has one, lists\n"
     "and maps name signals of the design, measurement codes and compliance ids);\n"
     "docs/setup-parameters.md lists them. Anything else is refused, and nothing is written.\n\n"
     "  --probe NAME    the instance\n"
     "  --raw           store a probe's values as given, without the check of their form\n",
     {"probe"},
     {"raw"},
     &lanetap::runSet},
    {"export",
     "export DESIGN --probe NAME [-o FILE]",
     "Writes the setup that the probe NAME stores as a JSON document in words, as the setup\n"
     "dialog shows it: test environment, supplies and thresholds, the selected signals, their\n"
     "measurements, the references that are not the automatic ones, and the compliance tests by\n"
     "name ('offered' for all a group is offered). What the dialog would drop or cannot show is\n"
     "left out, with a note on stderr. 'lanetap apply' reads the document back;\n"
     "docs/setup-parameters.md describes it.\n\n"
     "  --probe NAME        the probe instance\n"
     "  -o, --output FILE   write the document to FILE (replaced in one step), not to stdout\n",
     {"probe", "output"},
     {},
     &lanetap::runExport,
     {{"o", "output"}}},
    {"apply",
     "apply DESIGN --probe NAME SETUP [--dry-run]",
     "Applies a setup document (as 'lanetap export' writes it) to the probe NAME and saves the\n"
     "design file. Each section or field the document has replaces what is stored; what it\n"
     "leaves out stays. Signals are keys or glob patterns ('DQ_Ch0_U2_DQ[0-7]', as 'lanetap\n"
     "signals' lists them), measurements and compliance tests are names as the dialog shows\n"
     "them, references are keys or 'auto' for the automatic reference. The parameters become\n"
     "what the dialog would store for the same choices; a key whose words do not change keeps\n"
     "its text. A name, pattern or id that names nothing, a measurement the signal does not\n"
     "have, a reference of a type the signal may not take, or a field the design's controller\n"
     "decides otherwise is refused with one line and exit code 2, and nothing is written.\n\n"
     "  --probe NAME    the probe instance\n"
     "  --dry-run       print each parameter that would change, as KEY: \"OLD\" -> \"NEW\", and\n"
     "                  write nothing\n",
     {"probe"},
     {"dry-run"},
     &lanetap::runApply},
    {"setup",
     "setup DESIGN --probe NAME [--plugin PATH] [--tab N --screenshot FILE]",
     "Opens the probe's setup dialog in a window, as the host does when the user edits the\n"
     "probe. Opening already writes the stored setup back in its normalised form. Apply and\n"
     "Finish save the design file (atomically, never over a file that changed on disk since it\n"
     "was read); Finish and Cancel end the edit and the program.\n"
     "Closing the window through its frame only hides the dialog: the program then ends\n"
     "without saving anything further. Help shows the probe's help page.\n\n"
     "  --probe NAME        the probe instance\n"
     "  --plugin PATH       the plug-in library (as for netlist)\n"
     "  --tab N             show tab N of the measurement route (0 Setup Probe ... 4 Select\n"
     "                      Compliance Measurements) first\n"
     "  --screenshot FILE   save a picture of the dialog as FILE (PNG) and end at once; the\n"
     "                      design file is left as it was. Without it, a platform that shows\n"
     "                      no window (offscreen, minimal) is refused\n",
     {"probe", "plugin", "tab", "screenshot"},
     {},
     &lanetap::runSetup},
    {"signals",
     "signals DESIGN [--probe NAME] [--json]",
     "Lists every signal that the netlist writer finds in the design, by type, channel, node\n"
     "and index: the key a probe's setup names it by, its type, index, channel, designator,\n"
     "node (pin, Die or Rx Output), polarity (s single-ended, t a differential pair), each\n"
     "instance on it with its positive and, for a pair, negative port and net, and the cells\n"
     "of those instances.\n"
     "Warnings of the walk, such as a half-connected pair, go to stderr.\n\n"
     "  --probe NAME    check that the design has the instance NAME\n"
     "  --json          print {\"signals\": [...]} with the same facts\n",
     {"probe"},
     {"json"},
     &lanetap::runSignals},
    {"catalogue",
     "catalogue [FILTERS | --measurements | --supplies | --thresholds RATE] [--json]",
     "Prints the compliance tests, one row each in the order of their table: table, id, cycle\n"
     "(read, write or both), whether a continuous strobe offers it, DRAM type and name.\n\n"
     "Filters pick the rows that the probe's compliance page offers, with its lookup:\n"
     "  --type TYPE     a signal type as in the keys: DQ, DQS, DM, A, CA, CK, CKE, ... A type\n"
     "                  that contains DM finds the DM rows, as the page does; control types\n"
     "                  such as CS or ODT have none.\n"
     "  --dram DDR4|LPDDR4\n"
     "  --mode read|write      rows of that cycle and rows valid in both\n"
     "  --dqs continuous|burst continuous leaves out the rows only a bursting strobe offers\n"
     "A filter that is left out narrows nothing: every type, both DRAM types, both cycles, any\n"
     "strobe mode.\n\n"
     "  --descriptions  print each row's description under it\n"
     "  --json          print the whole catalogue as JSON: the compliance rows (filtered),\n"
     "                  measurements, supplies, threshold defaults by speed grade, voltage\n"
     "                  units\n"
     "  --measurements  the generic measurements: code, name, netlist key, reference needed\n"
     "  --supplies      supply defaults by DRAM type (--dram picks one)\n"
     "  --thresholds RATE\n"
     "                  threshold defaults for a data rate in MT/s, as KEY=VALUE lines; a rate\n"
     "                  between speed grades uses the next grade up, above 3200 the 3200 grade\n"
     "--json applies to the last three as well.\n",
     {"type", "dram", "mode", "dqs", "thresholds"},
     {"json", "descriptions", "measurements", "supplies"},
     &lanetap::runCatalogue},
    {"generate",
     "generate [--dram ddr4|lpddr4] [--channels N] [--devices M] [OPTIONS]",
     "Writes a synthetic bus design to stdout, for trying the netlist writer at scale. A\n"
     "controller U1 drives N channels of M memories each (U2, U3, ...). Each memory has its own\n"
     "data lanes: DQ, strobes DQS_t/DQS_c and, except x4, masks; the clock, address and command\n"
     "nets of a channel are shared by the controller and all its memories. A probe X1 selects\n"
     "every signal by the keys discovery gives them, with an Eye measurement on each, a Skew of\n"
     "each DQ against its strobe, and compliance on with every test the compliance page offers.\n\n"
     "  --dram ddr4|lpddr4   default ddr4; DDR4 has A0-A13, BA, BG, CKE, CS_n, ODT, RAS_n,\n"
     "                       CAS_n, WE_n, LPDDR4 has CA0-CA5, CKE, CS and ODT_CA\n"
     "  --channels N         1 to 16, default 1\n"
     "  --devices M          memories per channel, 1 to 32, default 1\n"
     "  --width W            data bits per memory: x4, x8 or x16 for DDR4 (default x8), x8 or x16\n"
     "                       for LPDDR4 (default x16)\n"
     "  --ebd-nodes K        memories use a board model with K nodes per port, 0 to 8\n"
     "  --die                memories bring out their die nodes\n"
     "  --ddr-simulation     a DDR simulation instead of a transient one: receiver outputs\n"
     "                       appear, and the block has no compliance\n"
     "  --read               the controller is in a read cycle instead of a write cycle\n",
     {"dram", "channels", "devices", "width", "ebd-nodes"},
     {"die", "ddr-simulation", "read"},
     &lanetap::runGenerate},
};

void printOverview() {
    QString text =
        "usage: lanetap COMMAND [ARGUMENTS]\n"
        "       lanetap --help | --version\n\n"
        "LaneTap sets up DDR4 and LPDDR4 bus probes and writes their netlist blocks. This program\n"
        "is a stand-in for the design host: it reads a design file, loads the plug-in and runs "
        "it.\n\n"
        "Commands:\n";
    for (const Command& command : commands) {
        text += QString("  lanetap %1\n").arg(command.synopsis);
    }
    text +=
        "\n'lanetap COMMAND --help' explains a command.\n"
        "Exit codes: 0 done, 1 check found a warning or an error, 2 bad usage or design file,\n"
        "3 a script function failed, "
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
    throw lanetap::Failure(
        lanetap::ExitUsage,
        QString("unknown command %1; see 'lanetap --help'").arg(standin::quoted(words.front())));
}

}  // namespace

// Only the dialog needs the widget side of Qt: `setup` shows it, `check` opens it unseen.
enum class Widgets { None, Shown, Unseen };

Widgets widgetsFor(int argc, char** argv) {
    for (int i = 2; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0) {
            return Widgets::None;
        }
    }
    if (argc >= 2 && std::strcmp(argv[1], "setup") == 0) {
        return Widgets::Shown;
    }
    return argc >= 2 && std::strcmp(argv[1], "check") == 0 ? Widgets::Unseen : Widgets::None;
}

// Qt ends the process when its window system cannot be reached; say so in one line instead.
bool displayMissing() {
    QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
    if (platform.isEmpty()) {
        platform = "xcb";
    }
    return (platform.startsWith("xcb") && qEnvironmentVariableIsEmpty("DISPLAY")) ||
           (platform.startsWith("wayland") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"));
}

// The first argument that is not UTF-8, or 0 when all of them are: Qt would read its bytes as
// replacement characters, and a value or a path would silently become another one.
int firstNonUtf8Argument(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const QByteArray bytes(argv[i]);
        if (QString::fromUtf8(bytes).toUtf8() != bytes) {
            return i;
        }
    }
    return 0;
}

int main(int argc, char** argv) {
    if (const int bad = firstNonUtf8Argument(argc, argv)) {
        std::fprintf(stderr, "lanetap: error: argument %d is not valid UTF-8\n", bad);
        return lanetap::ExitUsage;
    }
    // The hashes of Qt, and so the order of every hash-ordered output, are the same in every run,
    // whatever QT_HASH_SEED says (Qt would not take a seed of ours while it is set).
    qunsetenv("QT_HASH_SEED");
    qSetGlobalQHashSeed(0);
    const Widgets widgets = widgetsFor(argc, argv);
    if (widgets == Widgets::Unseen) {
        // Nothing is shown, and what Qt says of the platform is nothing to the user.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    }
    if (widgets == Widgets::Shown && displayMissing()) {
        std::fprintf(stderr,
                     "lanetap: error: setup needs a display; without one, run it with "
                     "QT_QPA_PLATFORM=offscreen and --screenshot\n");
        return lanetap::ExitUsage;
    }
    const std::unique_ptr<QCoreApplication> application(
        widgets != Widgets::None ? new QApplication(argc, argv) : new QCoreApplication(argc, argv));
    QCoreApplication::setApplicationName("lanetap");
    QCoreApplication::setApplicationVersion(LANETAP_VERSION);
    try {
        return dispatch(QCoreApplication::arguments().mid(1));
    } catch (const lanetap::Failure& failure) {
        // Whatever text the message carries, it stays on its line.
        const QString message = standin::printable(QString::fromUtf8(failure.what()), -1);
        std::fprintf(stderr, "lanetap: error: %s\n", message.toUtf8().constData());
        return failure.code;
    }
}
