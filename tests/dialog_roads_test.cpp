// The two ways in and out of the setup dialog: opening it through the script function, and the
// commands Apply, Finish, Cancel and Help reaching the host.

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "support/DialogFixture.h"

using lanetap_test::OpenDialog;
using lanetap_test::probeInstance;

// The dialog is opened for X1, then reused for X2; Apply writes X2's setup only. Help, Cancel and
// Finish reach the host; Cancel writes nothing, Finish writes as Apply does.
TEST(DialogRoads, OpeningReuseAndTheCommandsReachTheHost) {
    OpenDialog opened(lanetap_test::designText(
        {probeInstance("X1", R"("TabWidgetTabNumber":"0","vdd":"1.25 V")"),
         probeInstance("X2", R"("TabWidgetTabNumber":"0","vdd":"1.05 V")")}));
    QWidget* first = opened.dialog();
    ASSERT_NE(first, nullptr);
    standin::Host& host = opened.host().host;
    EXPECT_EQ(first->objectName(), "LaneTapQtDialog");
    EXPECT_EQ(opened.find<QLabel>("instanceLabel")->text(), "lanetap:LaneTap Instance Name");
    EXPECT_EQ(opened.find<QLineEdit>("instanceNameEdit")->text(), "X1");
    // Opening wrote the setup back at once and passed the edit on.
    EXPECT_EQ(host.commits, 1);
    EXPECT_EQ(host.editedInstanceNotices, std::vector<std::string>{"X1"});

    EXPECT_EQ(opened.show("X2"), first);
    EXPECT_EQ(opened.find<QLineEdit>("instanceNameEdit")->text(), "X2");
    opened.find<QLineEdit>("vddBox")->setText("1.5");
    opened.find<QPushButton>("applyButton")->click();
    EXPECT_EQ(opened.stored("vdd", "X2") + " " + opened.stored("vdd", "X1"), "1.5 V 1.25 V");
    EXPECT_EQ(host.commits, 3);

    std::vector<WinInstanceC*> helpWindows;
    host.onHelp = [&](const std::string&, WinInstanceC* window) { helpWindows.push_back(window); };
    opened.find<QPushButton>("helpButton")->click();
    EXPECT_EQ(host.helpRequests, std::vector<std::string>{"lane_tap"});
    ASSERT_EQ(helpWindows.size(), 1u);
    EXPECT_NE(helpWindows.front(), nullptr);

    opened.find<QPushButton>("cancelButton")->click();
    EXPECT_EQ(host.commandsEnded, 1);
    EXPECT_EQ(host.commits, 3);
    EXPECT_FALSE(opened.dialog()->isVisible());
    opened.show("X1");
    opened.find<QPushButton>("finishButton")->click();
    EXPECT_EQ(host.commandsEnded, 2);
    EXPECT_EQ(host.commits, 5);  // the opening and Finish
}
