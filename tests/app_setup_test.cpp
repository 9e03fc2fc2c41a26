// lanetap setup: the dialog in a window of the program, run offscreen as a script would.

#include <gtest/gtest.h>

#include <QImage>
#include <QProcessEnvironment>

#include "support/TestSupport.h"

namespace {

using lanetap_test::runProgram;

QProcessEnvironment offscreen(const lanetap_test::Workspace& workspace) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    // Qt warns on stderr when it has no private runtime folder; give it the workspace's.
    environment.insert("XDG_RUNTIME_DIR", workspace.path(""));
    return environment;
}

}  // namespace

TEST(SetupCommand, OpeningSavesTheNormalisedSetupAndPicturesTheDialog) {
    lanetap_test::Workspace workspace;
    const QString design = workspace.write(
        "design.json", lanetap_test::designText(
                           {R"({"name":"X1","cell":"LaneTap","library":"lanetap",)"
                            R"("parameters":{"targetBER":"0.000001","TabWidgetTabNumber":"4"}})"}));
    const QString picture = workspace.path("tab.png");
    const auto run =
        runProgram({"setup", design, "--probe", "X1", "--tab", "2", "--screenshot", picture},
                   offscreen(workspace));
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QImage image(picture);
    EXPECT_FALSE(image.isNull());
    EXPECT_GE(image.width(), 898);
    EXPECT_EQ(image.height(), 652);
    // The opening wrote the stored text back in its normal form and the program saved it.
    const auto stored = runProgram({"get", design, "--probe", "X1", "targetBER"});
    EXPECT_EQ(stored.out, "targetBER=1e-06\n");
}

TEST(SetupCommand, AFailingOpeningReportsTheScriptFunctionAndLeavesTheFile) {
    lanetap_test::Workspace workspace;
    const QByteArray text = lanetap_test::designText(
        {R"({"name":"X1","cell":"LaneTap","library":"lanetap","parameters":{"vtt":""}})"});
    const QString design = workspace.write("design.json", text);
    const auto run =
        runProgram({"setup", design, "--probe", "X1", "--screenshot", workspace.path("x.png")},
                   offscreen(workspace));
    EXPECT_EQ(run.exitCode, 3) << run.err.toStdString();
    EXPECT_EQ(run.err.split('\n').value(0),
              "lanetap: error: script function LaneTap_show_dialog failed: "
              "setVoltageAmplitudeAndUnits LaneTapVoltage failed");
    EXPECT_EQ(lanetap_test::readBytes(design), text);
}

TEST(SetupCommand, BadTabIsAUsageErrorBeforeAnythingIsOpened) {
    lanetap_test::Workspace workspace;
    const QByteArray text =
        lanetap_test::designText({R"({"name":"X1","cell":"LaneTap","library":"lanetap"})"});
    const QString design = workspace.write("design.json", text);
    const auto run = runProgram(
        {"setup", design, "--probe", "X1", "--tab", "9", "--screenshot", workspace.path("x.png")},
        offscreen(workspace));
    EXPECT_EQ(run.exitCode, 2) << run.err.toStdString();
    EXPECT_TRUE(run.err.startsWith("lanetap: error: --tab")) << run.err.toStdString();
    EXPECT_EQ(lanetap_test::readBytes(design), text);
}
