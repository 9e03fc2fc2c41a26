// lanetap setup: the dialog in a window of the program, run offscreen as a script would.

#include <gtest/gtest.h>

#include <QImage>
#include <QProcessEnvironment>

#include "support/TestSupport.h"

// A run that opens the dialog saves the setup as the opening normalised it and pictures the
// dialog at its size (Qt's offscreen platform may warn on stderr); a failing opening or a bad tab
// ends with its exit code and error line, and saves and pictures nothing; so does an opening whose
// save fails.
TEST(SetupCommand, OpeningSavesTheNormalisedSetupAndPicturesTheDialogOrFailsLeavingTheFile) {
    const struct {
        const char* parameters;
        const char* tab;
        int exitCode;
        const char* firstErrorLine;
        const char* targetBER;
        int fileBlocks = 0;  // a limit on the size of the files the program writes
    } cases[] = {
        {R"(,"TabWidgetTabNumber":"4")", "4", 0, "", "1e-06"},
        {R"(,"vtt":"")", "2", 3,
         "lanetap: error: script function LaneTap_show_dialog failed: "
         "setVoltageAmplitudeAndUnits LaneTapVoltage failed",
         "0.000001"},
        {"", "5", 2, "lanetap: error: --tab must be a tab number from 0 to 4, not '5'", "0.000001"},
        // A DRAM type that names no item of its box leaves the box as it is.
        {R"(,"dramType":"7")", "0", 0, "", "1e-06"},
        {"", "0", 2, "lanetap: error: DESIGN: cannot write: File too large", "0.000001", 1},
    };
    for (const auto& c : cases) {
        lanetap_test::Workspace workspace;
        const QString design = workspace.write(
            "design.json",
            lanetap_test::designText({QString(R"({"name":"X1","cell":"LaneTap","library":"lanetap",
                "parameters":{"targetBER":"0.000001"%1}})")
                                          .arg(c.parameters)}));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        // Qt warns on stderr when it has no private runtime folder; give it the workspace's.
        environment.insert("XDG_RUNTIME_DIR", workspace.path(""));
        const QString picture = workspace.path("tab.png");
        const QStringList arguments{"setup", design, "--probe",      "X1",
                                    "--tab", c.tab,  "--screenshot", picture};
        const auto run = c.fileBlocks ? lanetap_test::runProgramWithFileLimit(
                                            arguments, c.fileBlocks, environment)
                                      : lanetap_test::runProgram(arguments, environment);
        EXPECT_EQ(run.exitCode, c.exitCode) << run.err.toStdString();
        EXPECT_EQ(run.err.count("lanetap: error: "), c.exitCode == 0 ? 0 : 1);
        if (c.exitCode != 0) {
            EXPECT_EQ(run.err.split('\n').value(0).toStdString(),
                      QString(c.firstErrorLine).replace("DESIGN", design).toStdString());
        }
        EXPECT_EQ(QImage(picture).height(), c.exitCode == 0 ? 652 : 0);
        EXPECT_EQ(lanetap_test::runProgram({"get", design, "--probe", "X1", "targetBER"}).out,
                  QByteArray("targetBER=") + c.targetBER + "\n");
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
