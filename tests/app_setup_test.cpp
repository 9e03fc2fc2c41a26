// lanetap setup: the dialog in a window of the program, run offscreen as a script would.

#include <gtest/gtest.h>

#include <QImage>
#include <QProcessEnvironment>

#include "support/TestSupport.h"

// A run that pictures the dialog pictures it at its size (Qt's offscreen platform may warn on
// stderr) and leaves the design file byte for byte as it was: the opening's save of the
// normalised setup goes to the design in memory only. A failing opening, a bad tab, or a platform
// that shows no window without a picture to take, ends with its exit code and error line.
TEST(SetupCommand, PicturesTheDialogLeavingTheFileOrFailsInOneLine) {
    const struct {
        const char* parameters;
        const char* tab;  // null: no --tab and no --screenshot
        const char* platform;
        int exitCode;
        const char* firstErrorLine;
    } cases[] = {
        {R"(,"TabWidgetTabNumber":"4")", "4", "offscreen", 0, ""},
        {R"(,"vtt":"")", "2", "offscreen", 3,
         "lanetap: error: script function LaneTap_show_dialog failed: "
         "setVoltageAmplitudeAndUnits LaneTapVoltage failed"},
        {"", "5", "offscreen", 2,
         "lanetap: error: --tab must be a tab number from 0 to 4, not '5'"},
        // A DRAM type that names no item of its box leaves the box as it is.
        {R"(,"dramType":"7")", "0", "offscreen", 0, ""},
        // The opening stores a tab outside the route back as the nearest one, in memory only.
        {R"(,"TabWidgetTabNumber":"-2147483648")", "0", "offscreen", 0, ""},
        // Without a picture, a window that nobody sees would wait for ever.
        {"", nullptr, "offscreen", 2,
         "lanetap: error: setup shows no window on the offscreen platform; give --screenshot "
         "FILE, or run it with a display"},
        {"", nullptr, "minimal", 2,
         "lanetap: error: setup shows no window on the minimal platform; give --screenshot FILE, "
         "or run it with a display"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.parameters);
        lanetap_test::Workspace workspace;
        const QString design = workspace.write(
            "design.json",
            lanetap_test::designText({QString(R"({"name":"X1","cell":"LaneTap","library":"lanetap",
                "parameters":{"targetBER":"0.000001"%1}})")
                                          .arg(c.parameters)}));
        const QByteArray before = lanetap_test::readBytes(design);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", c.platform);
        // Qt warns on stderr when it has no private runtime folder; give it the workspace's.
        environment.insert("XDG_RUNTIME_DIR", workspace.path(""));
        const QString picture = workspace.path("tab.png");
        QStringList arguments{"setup", design, "--probe", "X1"};
        if (c.tab) {
            arguments << "--tab" << c.tab << "--screenshot" << picture;
        }
        const auto run = lanetap_test::runProgram(arguments, environment);
        EXPECT_EQ(run.exitCode, c.exitCode) << run.err.toStdString();
        EXPECT_EQ(run.err.count("lanetap: error: "), c.exitCode == 0 ? 0 : 1);
        if (c.exitCode != 0) {
            EXPECT_EQ(run.err.split('\n').value(0).toStdString(), c.firstErrorLine);
        }
        EXPECT_EQ(QImage(picture).height(), c.exitCode == 0 ? 652 : 0);
        EXPECT_EQ(lanetap_test::readBytes(design), before);
        EXPECT_EQ(
            workspace.files(),
            QStringList{c.exitCode == 0 ? "design.json tab.png" : "design.json"}.join(' ').split(
                ' '));
    }
}

// Without a window system the dialog cannot open: one line says what to do instead.
TEST(SetupCommand, WithoutADisplayOneLineSaysWhatToDo) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        environment.remove(name);
    }
    const auto run = lanetap_test::runProgram(
        {"setup", LANETAP_SOURCE_DIR "/examples/ddr4_x8_write.json", "--probe", "X1"}, environment);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err.toStdString(),
              "lanetap: error: setup needs a display; without one, run it with "
              "QT_QPA_PLATFORM=offscreen and --screenshot\n");
}
