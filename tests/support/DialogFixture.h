#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>
#include <QWidget>
#include <memory>

#include "support/TestSupport.h"

// The setup dialog as the host opens it: a design with a probe, the plug-in loaded, and
// LaneTap_show_dialog called for the probe with a window instance whose parent is a main window.
namespace lanetap_test {

class OpenDialog {
public:
    // `design` is a whole design file; `probe` the instance to edit.
    explicit OpenDialog(const QByteArray& design, const QString& probe = "X1");
    ~OpenDialog();

    // Calls LaneTap_show_dialog again, for `probe`; gives the widget it returned, null when the
    // call failed (lastCall says why).
    QWidget* show(const QString& probe);
    const standin::CallResult& lastCall() const { return call; }

    QWidget* dialog() const { return widget; }
    template <class T>
    T* find(const QString& objectName) const {
        T* child = widget ? widget->findChild<T*>(objectName) : nullptr;
        EXPECT_NE(child, nullptr) << objectName.toStdString();
        return child;
    }

    // A stored parameter of an instance as the design now holds it (after commits).
    QString stored(const QString& key, const QString& instance = "X1") const;

    HostWithPlugin& host() { return *hosted; }

private:
    std::unique_ptr<HostWithPlugin> hosted;
    std::unique_ptr<QWidget> mainWindow;
    std::unique_ptr<standin::WindowInstance> window;
    QWidget* widget = nullptr;
    standin::CallResult call;
};

// A probe instance with the given parameters ({"key":"value",...} without braces).
QString probeInstance(const QString& name, const QString& parameters = QString());

}  // namespace lanetap_test
