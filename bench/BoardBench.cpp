// `make bench`: times the lanetap program and the setup dialog on a board the size of a server
// memory bus and on plain designs of many instances, and prints each figure as a ratio to loading
// the same design, next to its goal. Medians of three runs, all measured in this one run.

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <utility>
#include <vector>

#include "standin/Host.h"

namespace {

QString binDir;
// Where the timed commands write their output.
QString outputFile;

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Seconds that `work` takes, median of `times` runs.
double timed(const std::function<void()>& work, int times = 3) {
    std::vector<double> runs;
    for (int i = 0; i < times; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        runs.push_back(timer.nsecsElapsed() / 1e9);
    }
    return median(runs);
}

// The output of the program; with `toFile`, it goes to outputFile instead and none is returned.
QByteArray runLanetap(const QStringList& arguments, bool toFile = false) {
    QProcess process;
    process.setProcessChannelMode(QProcess::SeparateChannels);
    if (toFile) {
        process.setStandardOutputFile(outputFile);
    }
    process.start(binDir + "/lanetap", arguments);
    process.waitForFinished(-1);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        std::fprintf(stderr, "bench: lanetap %s failed\n", qPrintable(arguments.join(' ')));
        std::exit(1);
    }
    return process.readAllStandardOutput();
}

// Seconds of two commands, medians of three, run in turn: a ratio of the two then compares runs
// made under the same load of the machine. The output goes to a file, as `lanetap netlist ... >
// FILE` sends a block: read through a pipe by this program, megabytes of it would time the pipe
// as well.
std::pair<double, double> alternatedSeconds(const QStringList& first, const QStringList& second) {
    std::vector<double> runs[2];
    for (int i = 0; i < 3; ++i) {
        for (int which = 0; which < 2; ++which) {
            QElapsedTimer timer;
            timer.start();
            runLanetap(which == 0 ? first : second, true);
            runs[which].push_back(timer.nsecsElapsed() / 1e9);
        }
    }
    return {median(runs[0]), median(runs[1])};
}

// Peak resident memory of one run of the program, in KiB, as /usr/bin/time tells it.
long peakKiB(const QStringList& arguments) {
    QProcess process;
    process.start("/usr/bin/time", QStringList{"-f", "%M", binDir + "/lanetap"} + arguments);
    process.waitForFinished(-1);
    const QList<QByteArray> lines = process.readAllStandardError().trimmed().split('\n');
    return lines.isEmpty() ? -1 : lines.last().toLong();
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "bench: cannot write %s\n", qPrintable(path));
        std::exit(1);
    }
}

// A design of `count` plain instances and a probe.
QByteArray plainDesign(int count) {
    QByteArray text = R"({"format": "lanetap-design-1", "name": "plain", "instances": [)";
    for (int i = 0; i < count; ++i) {
        text += R"({"name": "R)" + QByteArray::number(i) +
                R"(", "cell": "R", "library": "analog", "parameters": {"R": "50"}},)";
    }
    text += R"({"name": "X1", "cell": "LaneTap", "library": "lanetap"}]})";
    return text;
}

void report(const char* what, double ratio, double goal, const char* unit = "x load") {
    std::printf("%-58s %7.2f %s   goal <= %.1f   %s\n", what, ratio, unit, goal,
                ratio <= goal ? "ok" : "OVER");
}

// The reference tab when its first signal has a measurement that needs a reference (Skew): its
// signal tree is painted and its reference trees are built at every showing.
void benchReferenceTab(QWidget* dialog, QTabWidget* tabs, double load) {
    tabs->setCurrentIndex(2);
    auto* signalTree = dialog->findChild<QTreeWidget*>("selectMeasurementSelectedSignalTree");
    QTreeWidgetItem* first = signalTree->topLevelItem(0);
    while (first && first->childCount() > 0) {
        first = first->child(0);
    }
    signalTree->setCurrentItem(first);
    // Skew alone, so that it is the measurement the reference tab shows first.
    auto* chosen = dialog->findChild<QTreeWidget*>("selectMeasurementSelectedMeasurementTree");
    while (chosen->topLevelItemCount() > 0) {
        chosen->setCurrentItem(chosen->topLevelItem(0));
        dialog->findChild<QPushButton*>("removeMeasurementButton")->click();
    }
    auto* offered = dialog->findChild<QTreeWidget*>("selectMeasurementAvailableMeasurementTree");
    const QList<QTreeWidgetItem*> skew = offered->findItems("Skew", Qt::MatchExactly);
    if (!skew.isEmpty()) {
        offered->setCurrentItem(skew.first());
        dialog->findChild<QPushButton*>("addMeasurementButton")->click();
    }
    std::vector<double> runs;
    for (int i = 0; i < 3; ++i) {
        tabs->setCurrentIndex(2);
        QElapsedTimer timer;
        timer.start();
        tabs->setCurrentIndex(3);
        runs.push_back(timer.nsecsElapsed() / 1e9);
    }
    report("setup dialog: the reference tab, first signal with Skew", median(runs) / load, 1);
}

// The dialog on the board: opening on the measurement tab, each tab change, and an Add and a
// Remove of the whole DQ type on the signal tab. Each time is divided by `load`.
void benchDialog(const QString& board, double load) {
    standin::Host host;
    host.loadDesign(board);
    host.loadPlugin(binDir + "/liblanetap.so");
    host.setEditedItem("X1");
    QWidget mainWindow;
    standin::WindowInstance window(&mainWindow);
    QWidget* dialog = nullptr;
    auto* probe = host.design()->findInstance("X1");
    const auto openDialog = [&] {
        // The stored wizard position: the measurement tab, the tabs before it reached.
        probe->parameters.values["TabWidgetTabNumber"] = "2";
        const standin::CallResult opened =
            host.call("LaneTap_show_dialog", {standin::ScriptArgument::windowInstance(&window)});
        dialog = static_cast<QWidget*>(opened.pointer);
    };
    // The first opening makes the dialog and every tree; opened again, the dialog walks the
    // design again and keeps what reads as before.
    const double first = timed(openDialog, 1);
    report("setup dialog: first opening, on the measurement tab", first / load, 6);
    report("setup dialog: opening again", timed(openDialog) / load, 6);

    auto* tabs = dialog->findChild<QTabWidget*>("measurementTabs");
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setTabEnabled(tab, true);
    }
    std::vector<double> changes;
    for (int tab : {0, 1, 2, 3, 4, 1}) {
        changes.push_back(timed([&] {
                              tabs->setCurrentIndex((tab + 1) % tabs->count());
                              tabs->setCurrentIndex(tab);
                          }) /
                          2);
    }
    report("setup dialog: a tab change (slowest)",
           *std::max_element(changes.begin(), changes.end()) / load, 1);
    benchReferenceTab(dialog, tabs, load);

    auto* available = dialog->findChild<QTreeWidget*>("selectSignalAvailableSignalTree");
    auto* selected = dialog->findChild<QTreeWidget*>("selectSignalSelectedSignalTree");
    auto moveType = [&](QTreeWidget* from, const char* button) {
        const QList<QTreeWidgetItem*> dq = from->findItems("DQ", Qt::MatchExactly, 0);
        if (!dq.isEmpty()) {
            from->setCurrentItem(dq.first());
        }
        dialog->findChild<QPushButton*>(button)->click();
    };
    std::vector<double> removes;
    std::vector<double> adds;
    for (int i = 0; i < 3; ++i) {
        QElapsedTimer timer;
        timer.start();
        moveType(selected, "removeSignalButton");
        removes.push_back(timer.nsecsElapsed() / 1e9);
        timer.start();
        moveType(available, "addSignalButton");
        adds.push_back(timer.nsecsElapsed() / 1e9);
    }
    report("setup dialog: Remove of every DQ signal", median(removes) / load, 1);
    report("setup dialog: Add of every DQ signal", median(adds) / load, 1);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    binDir = QCoreApplication::applicationDirPath();
    QTemporaryDir folder;
    outputFile = folder.filePath("output.txt");
    const QString board = folder.filePath("board.json");
    const QStringList boardOptions = {"generate", "--dram",      "ddr4", "--channels",
                                      "8",        "--devices",   "32",   "--width",
                                      "x4",       "--ebd-nodes", "2"};
    writeFile(board, runLanetap(boardOptions));
    std::printf("board: lanetap %s (%lld bytes)\n\n", qPrintable(boardOptions.join(' ')),
                static_cast<long long>(QFile(board).size()));

    const QStringList get = {"get", board, "--probe", "X1", "vdd"};
    const QStringList netlist = {"netlist", board, "--probe", "X1"};
    const auto [load, netlisting] = alternatedSeconds(get, netlist);
    std::printf("loading the board (lanetap get): %.3f s\n", load);
    report("lanetap netlist", netlisting / load, 2);
    std::printf("%-58s %7ld KiB (load alone: %ld KiB)\n", "peak memory of lanetap netlist",
                peakKiB(netlist), peakKiB(get));
    benchDialog(board, load);

    std::printf("\nplain designs (lanetap get):\n");
    QStringList gets[2];
    const int counts[2] = {25000, 100000};
    for (int i = 0; i < 2; ++i) {
        const QString plain = folder.filePath(QString("plain%1.json").arg(counts[i]));
        writeFile(plain, plainDesign(counts[i]));
        gets[i] = QStringList{"get", plain, "--probe", "X1", "vdd"};
    }
    const auto [quarter, whole] = alternatedSeconds(gets[0], gets[1]);
    std::printf("  %6d instances: %.3f s\n  %6d instances: %.3f s\n", counts[0], quarter, counts[1],
                whole);
    report("loader: 4 times the instances", whole / quarter, 4.6, "x time ");
    return 0;
}
