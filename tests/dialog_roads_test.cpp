// The two ways in and out of the setup dialog: opening it through the script function, and the
// commands Apply, Finish, Cancel and Help reaching the host; and the wizard's walk through the
// measurement tabs.

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

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

    // A new name in the dialog renames the instance only when the name is plain and free.
    opened.show("X2");
    const std::pair<const char*, std::string> renames[] = {
        {"X1", "Instance X2 keeps its name: the name 'X1' is taken by another instance.\n"},
        {"X 3", "Instance X2 keeps its name: the name 'X 3' holds white space.\n"},
        {"X3", ""}};
    host.takeWarnings();
    for (const auto& [name, warning] : renames) {
        opened.find<QLineEdit>("instanceNameEdit")->setText(name);
        opened.find<QPushButton>("applyButton")->click();
        EXPECT_EQ(host.takeWarnings(),
                  warning.empty() ? std::vector<std::string>{} : std::vector<std::string>{warning});
    }
    EXPECT_EQ(opened.stored("vdd", "X3"), "1.5 V");
}

namespace {

// A probe stored on the first page at `tab`.
QByteArray atTab(const QString& tab) {
    return lanetap_test::designText({lanetap_test::probeInstance(
        "X1", QString(R"("StackWidgetPageNumber":"0","TabWidgetTabNumber":"%1")").arg(tab))});
}

// The wizard as "tab enabled-tabs buttons stored-tab": the current tab of the measurement route,
// "1" for each of its enabled tabs, which of Back, Next and Finish show ("-" for a hidden one),
// and the furthest tab as stored.
std::string wizard(const OpenDialog& opened) {
    auto* tabs = opened.find<QTabWidget>("measurementTabs");
    QString state = QString::number(tabs->currentIndex()) + ' ';
    for (int i = 0; i < tabs->count(); ++i) {
        state += tabs->isTabEnabled(i) ? '1' : '0';
    }
    state += ' ';
    for (const char* button : {"backButton", "nextButton", "finishButton"}) {
        state += opened.find<QPushButton>(button)->isHidden() ? '-' : QChar(button[0]).toUpper();
    }
    return (state + ' ' + opened.stored("TabWidgetTabNumber")).toStdString();
}

}  // namespace

// Each step: the button clicked ("-" for none), then the wizard after it.
TEST(DialogWizard, NextAndBackWalkTheMeasurementRouteWithoutLoweringTheFurthestTab) {
    OpenDialog opened(atTab("0"));
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    for (const QString& step :
         QString("-:0 10000 -N- 0;next:1 11000 BN- 0;back:0 11000 -N- 0;next:1 11000 BN- 0;"
                 "next:2 11100 BN- 0;next:3 11110 BN- 0;back:2 11110 BN- 0;back:1 11110 BN- 0;"
                 "apply:1 11110 BN- 3;next:2 11110 BN- 3;next:3 11110 BN- 3;"
                 "next:4 11111 B-F 3;finish:4 11111 B-F 4")
             .split(';')) {
        if (step[0] != '-') {
            opened.find<QPushButton>(step.section(':', 0, 0) + "Button")->click();
        }
        EXPECT_EQ(wizard(opened), step.section(':', 1).toStdString()) << step.toStdString();
    }
}

// The dialog always opens on the measurement route, with the tabs up to the stored one enabled;
// a stored tab outside the route is taken as the nearest tab, and that is what the opening stores
// back (the extremes of an int once spun the opening for seconds, or overflowed). Each case: the
// stored tab, then the wizard after the opening.
TEST(DialogWizard, TheStoredTabDecidesWhereTheDialogOpens) {
    for (const QString& c : QString("3:3 11110 BN- 3;4:4 11111 B-F 4;9:4 11111 B-F 4;"
                                    "1x:1 11000 BN- 1;:0 10000 -N- 0;-1:0 10000 -N- 0;"
                                    "-2147483648:0 10000 -N- 0;2147483647:4 11111 B-F 4")
                                .split(';')) {
        OpenDialog opened(atTab(c.section(':', 0, 0)));
        ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
        EXPECT_EQ(wizard(opened), c.section(':', 1).toStdString()) << c.toStdString();
    }
}
