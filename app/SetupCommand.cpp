// `lanetap setup`: the probe's setup dialog in a real window, opened as the host's script opens
// it, with every commit of the edit saved to the design file.

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QGuiApplication>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTimer>
#include <cstdio>

#include "app/Commands.h"
#include "standin/DesignFile.h"

namespace lanetap {
namespace {

// Ends the program once the dialog is hidden: by Finish, Cancel or the window's frame.
class QuitWhenHidden : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Hide) {
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        }
        return QObject::eventFilter(watched, event);
    }
};

QString helpPage(const std::string& key) {
    QFile page(QString(":/help/%1.html").arg(QString::fromStdString(key)));
    return page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
}

// The host's help window: one page per help key, bundled with the program.
void showHelp(QWidget* owner, const std::string& key) {
    auto* browser = new QTextBrowser(owner);
    browser->setWindowFlags(Qt::Window);
    browser->setAttribute(Qt::WA_DeleteOnClose);
    browser->setWindowTitle("LaneTap help");
    browser->setHtml(helpPage(key));
    browser->resize(640, 720);
    browser->show();
}

// The measurement route's tab given as --tab N, checked before anything is opened; -1 for none.
int requestedTab(const Arguments& arguments) {
    if (!arguments.values.contains("tab")) {
        return -1;
    }
    bool number = false;
    const int tab = arguments.value("tab").toInt(&number);
    if (!number || tab < 0 || tab > 4) {
        throw Failure(ExitUsage, QString("--tab must be a tab number from 0 to 4, not %1")
                                     .arg(standin::quoted(arguments.value("tab"))));
    }
    return tab;
}

void showTab(QWidget* dialog, int tab) {
    if (auto* tabs = dialog->findChild<QTabWidget*>("measurementTabs")) {
        tabs->setTabEnabled(tab, true);
        tabs->setCurrentIndex(tab);
    }
}

void saveScreenshot(QWidget* dialog, const QString& path) {
    QApplication::processEvents();
    if (!dialog->grab().save(path)) {
        throw Failure(ExitUsage, QString("cannot write the screenshot %1").arg(path));
    }
}

int runSetup(const Arguments& arguments) {
    const QString& designFile = designFileOf(arguments, "setup");
    const QString probeName = arguments.value("probe");
    const int tab = requestedTab(arguments);
    const bool picture = arguments.values.contains("screenshot");
    // A window on such a platform is never seen, and so never closed.
    const QString platform = QGuiApplication::platformName();
    if (!picture && (platform == "offscreen" || platform.startsWith("minimal"))) {
        throw Failure(ExitUsage, QString("setup shows no window on the %1 platform; give "
                                         "--screenshot FILE, or run it with a display")
                                     .arg(platform));
    }
    standin::Host host;
    loadDesign(host, designFile);
    findProbe(host, probeName);
    loadPlugin(host, arguments);
    host.setEditedItem(probeName.toStdString());

    int exitCode = ExitOk;
    // Each commit is saved (under the design's lock, and never over a file that changed since
    // it was read), but for a picture: its opening's commit stays in the design in memory.
    host.onCommit = [&] {
        if (picture) {
            return;
        }
        try {
            host.saveDesign();
        } catch (const standin::DesignError& error) {
            std::fprintf(stderr, "lanetap: error: %s\n", error.what());
            exitCode = ExitUsage;
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        }
    };
    // The host's main window: the dialog's parent, never shown itself.
    QWidget mainWindow;
    host.onHelp = [&](const std::string& key, WinInstanceC*) { showHelp(&mainWindow, key); };
    standin::WindowInstance window(&mainWindow);
    const standin::CallResult opened =
        host.call("LaneTap_show_dialog", {standin::ScriptArgument::windowInstance(&window)});
    printWarnings(host);
    checkCall(opened, "LaneTap_show_dialog");
    auto* dialog = static_cast<QWidget*>(opened.pointer);
    if (!dialog || exitCode != ExitOk) {
        return exitCode;
    }
    // What the host's script does with the widget it is given: show it as a window of its own.
    dialog->setWindowFlags(dialog->windowFlags() | Qt::Window);
    if (tab >= 0) {
        showTab(dialog, tab);
    }
    dialog->show();
    if (picture) {
        saveScreenshot(dialog, arguments.value("screenshot"));
        return exitCode;
    }
    QuitWhenHidden quitter;
    dialog->installEventFilter(&quitter);
    QApplication::exec();
    printWarnings(host);
    return exitCode;
}

}  // namespace

const Command& setupCommand() {
    static const Command command{
        "setup",
        "DESIGN",
        {{"Opens the probe's setup dialog in a window, as the host does when the user edits the "
          "probe. Opening already writes the stored setup back in its normalised form. Apply and "
          "Finish save the design file (atomically, never over a file that changed on disk since "
          "it was read); Finish and Cancel end the edit and the program. Closing the window "
          "through its frame only hides the dialog: the program then ends without saving "
          "anything further. Help shows the probe's help page."}},
        {{{"probe"}, "NAME", "the probe instance, an instance of the LaneTap cell", {}, true},
         {{"plugin"}, "PATH", "the plug-in library (as for netlist)"},
         {{"tab"},
          "N",
          "show tab N of the measurement route (0 Setup Probe ... 4 Select Compliance "
          "Measurements) first"},
         {{"screenshot"},
          "FILE",
          "save a picture of the dialog as FILE (PNG) and end at once; the design file is left as "
          "it was. Without it, a platform that shows no window (offscreen, minimal) is refused"}},
        &runSetup,
        Widgets::Shown};
    return command;
}

}  // namespace lanetap
