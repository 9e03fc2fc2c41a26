// The two ways in and out of the setup dialog: opening it through the script function, and the
// commands Apply, Finish, Cancel and Help reaching the host.

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>

#include "support/DialogFixture.h"

using lanetap_test::OpenDialog;
using lanetap_test::probeInstance;

namespace {

QByteArray twoProbes() {
    return lanetap_test::designText(
        {probeInstance("X1", R"("TabWidgetTabNumber":"0","vdd":"1.25 V")"),
         probeInstance("X2", R"("TabWidgetTabNumber":"0","vdd":"1.05 V")")});
}

}  // namespace

TEST(DialogRoads, ASecondOpeningReusesTheDialogForTheOtherItem) {
    OpenDialog opened(twoProbes());
    QWidget* first = opened.dialog();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->objectName(), "LaneTapQtDialog");
    EXPECT_EQ(opened.find<QLabel>("instanceLabel")->text(), "lanetap:LaneTap Instance Name");
    EXPECT_EQ(opened.find<QLineEdit>("instanceNameEdit")->text(), "X1");
    // Opening wrote the setup back at once and passed the edit on.
    EXPECT_EQ(opened.host().host.commits, 1);
    EXPECT_EQ(opened.host().host.editedInstanceNotices, std::vector<std::string>{"X1"});

    QWidget* second = opened.show("X2");
    EXPECT_EQ(second, first);
    EXPECT_EQ(opened.find<QLineEdit>("instanceNameEdit")->text(), "X2");

    opened.find<QLineEdit>("vddBox")->setText("1.5");
    opened.find<QPushButton>("applyButton")->click();
    EXPECT_EQ(opened.stored("vdd", "X2"), "1.5 V");
    EXPECT_EQ(opened.stored("vdd", "X1"), "1.25 V");
}

TEST(DialogRoads, HelpFinishAndCancelReachTheHost) {
    OpenDialog opened(twoProbes());
    standin::Host& host = opened.host().host;
    std::vector<WinInstanceC*> helpWindows;
    host.onHelp = [&](const std::string&, WinInstanceC* window) { helpWindows.push_back(window); };

    opened.find<QPushButton>("helpButton")->click();
    EXPECT_EQ(host.helpRequests, std::vector<std::string>{"lane_tap"});
    ASSERT_EQ(helpWindows.size(), 1u);
    EXPECT_NE(helpWindows.front(), nullptr);

    const int commitsBefore = host.commits;
    opened.find<QPushButton>("cancelButton")->click();
    EXPECT_EQ(host.commandsEnded, 1);
    EXPECT_EQ(host.commits, commitsBefore);
    EXPECT_FALSE(opened.dialog()->isVisible());

    opened.show("X1");
    opened.find<QPushButton>("finishButton")->click();
    EXPECT_EQ(host.commandsEnded, 2);
    EXPECT_EQ(host.commits, commitsBefore + 2);  // the opening and Finish
}
