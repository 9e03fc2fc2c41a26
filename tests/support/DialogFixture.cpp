#include "support/DialogFixture.h"

namespace lanetap_test {

OpenDialog::OpenDialog(const QByteArray& design, const QString& probe)
    : hosted(std::make_unique<HostWithPlugin>(design)),
      mainWindow(std::make_unique<QWidget>()),
      window(std::make_unique<standin::WindowInstance>(mainWindow.get())) {
    EXPECT_TRUE(hosted->registrationFailures.empty());
    show(probe);
}

// The dialog is a child of the main window and goes with it, as in the host.
OpenDialog::~OpenDialog() {
    mainWindow.reset();
}

QWidget* OpenDialog::show(const QString& probe) {
    EXPECT_TRUE(hosted->host.setEditedItem(probe.toStdString()));
    call = hosted->host.call("LaneTap_show_dialog",
                             {standin::ScriptArgument::windowInstance(window.get())});
    widget = call.ok ? static_cast<QWidget*>(call.pointer) : nullptr;
    return widget;
}

QString OpenDialog::stored(const QString& key, const QString& instance) const {
    const standin::Instance* found = hosted->host.design()->findInstance(instance.toStdString());
    const std::string* value = found ? found->parameters.find(key.toStdString()) : nullptr;
    return value ? QString::fromStdString(*value) : QString();
}

QString probeInstance(const QString& name, const QString& parameters) {
    return QString(R"({"name":"%1","cell":"LaneTap","library":"lanetap","parameters":{%2}})")
        .arg(name, parameters);
}

}  // namespace lanetap_test
