// The main of the widget tests: one QApplication for the whole run, as a host has.
#include <gtest/gtest.h>

#include <QApplication>

// Qt's offscreen platform keeps a few allocations of its own until the process ends; they are
// not ours to free.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libqoffscreen.so\nleak:QPlatformScreen\n";
}

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
