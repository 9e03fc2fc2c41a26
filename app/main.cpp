#include <QApplication>
#include <cstdio>
#include <memory>

#include "app/Commands.h"
#include "standin/DesignFile.h"

namespace {

using lanetap::Command;
using lanetap::Widgets;

const QList<const Command*>& commands() {
    static const QList<const Command*> all = {
        &lanetap::netlistCommand(), &lanetap::checkCommand(),   &lanetap::getCommand(),
        &lanetap::setCommand(),     &lanetap::exportCommand(),  &lanetap::applyCommand(),
        &lanetap::setupCommand(),   &lanetap::signalsCommand(), &lanetap::catalogueCommand(),
        &lanetap::generateCommand()};
    return all;
}

const Command* commandNamed(const QString& name) {
    for (const Command* command : commands()) {
        if (command->name == name) {
            return command;
        }
    }
    return nullptr;
}

int dispatch(const QStringList& words) {
    if (words.isEmpty()) {
        lanetap::writeOut(lanetap::overviewOf(commands()));
        return lanetap::ExitUsage;
    }
    if (words.front() == "-h" || words.front() == "--help" || words.front() == "help") {
        lanetap::writeOut(lanetap::overviewOf(commands()));
        return lanetap::ExitOk;
    }
    if (words.front() == "--version") {
        lanetap::writeOut(QString("lanetap %1\n").arg(QCoreApplication::applicationVersion()));
        return lanetap::ExitOk;
    }
    const Command* command = commandNamed(words.front());
    if (!command) {
        throw lanetap::Failure(lanetap::ExitUsage,
                               QString("unknown command %1; see 'lanetap --help'")
                                   .arg(standin::quoted(words.front())));
    }
    const lanetap::Arguments arguments = lanetap::parseArguments(*command, words.mid(1));
    if (arguments.has("help")) {
        lanetap::writeOut(lanetap::helpOf(*command));
        return lanetap::ExitOk;
    }
    return command->run(arguments);
}

// Only the dialog needs the widget side of Qt: `setup` shows it, `check` opens it unseen. The
// arguments are UTF-8 by now; a command line that does not parse gets no widgets, and its fault
// is reported once the program runs.
Widgets widgetsFor(int argc, char** argv) {
    const Command* command = argc >= 2 ? commandNamed(QString::fromUtf8(argv[1])) : nullptr;
    if (!command || command->widgets == Widgets::None) {
        return Widgets::None;
    }
    QStringList words;
    for (int i = 2; i < argc; ++i) {
        words << QString::fromUtf8(argv[i]);
    }
    try {
        return lanetap::parseArguments(*command, words).has("help") ? Widgets::None
                                                                    : command->widgets;
    } catch (const lanetap::Failure&) {
        return Widgets::None;
    }
}

}  // namespace

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
