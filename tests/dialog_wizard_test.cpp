// The wizard of the setup dialog: where it opens, how Next and Back move along the measurement
// route, which navigation buttons show, and the furthest tab that Apply stores.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>

#include "support/DialogFixture.h"

using lanetap_test::OpenDialog;
using lanetap_test::probeInstance;

namespace {

QByteArray probeAtTab(const QString& tab, const QString& more = QString()) {
    return lanetap_test::designText(
        {probeInstance("X1", QString(R"("TabWidgetTabNumber":"%1"%2)").arg(tab, more))});
}

// Which of Back, Next and Finish are shown, as "BNF" with "-" for a hidden one.
QString buttons(const OpenDialog& opened) {
    QString shown;
    shown += opened.find<QPushButton>("backButton")->isHidden() ? '-' : 'B';
    shown += opened.find<QPushButton>("nextButton")->isHidden() ? '-' : 'N';
    shown += opened.find<QPushButton>("finishButton")->isHidden() ? '-' : 'F';
    return shown;
}

// "1" for each enabled tab of the measurement route, "0" for a disabled one.
QString enabledTabs(const OpenDialog& opened) {
    auto* tabs = opened.find<QTabWidget>("measurementTabs");
    QString enabled;
    for (int i = 0; i < tabs->count(); ++i) {
        enabled += tabs->isTabEnabled(i) ? '1' : '0';
    }
    return enabled;
}

void click(const OpenDialog& opened, const char* button) {
    opened.find<QPushButton>(button)->click();
}

}  // namespace

TEST(DialogWizard, NextAndBackWalkTheMeasurementRouteWithoutLoweringTheFurthestTab) {
    OpenDialog opened(probeAtTab("0"));
    ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
    auto* tabs = opened.find<QTabWidget>("measurementTabs");
    EXPECT_EQ(opened.find<QStackedWidget>("stackedWidget")->currentIndex(), 2);
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(enabledTabs(opened), "10000");
    EXPECT_EQ(buttons(opened), "-N-");

    click(opened, "nextButton");
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_EQ(buttons(opened), "BN-");
    click(opened, "backButton");
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(buttons(opened), "-N-");

    click(opened, "nextButton");
    click(opened, "nextButton");
    click(opened, "nextButton");
    EXPECT_EQ(tabs->currentIndex(), 3);
    EXPECT_EQ(enabledTabs(opened), "11110");
    click(opened, "backButton");
    click(opened, "backButton");
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_EQ(enabledTabs(opened), "11110");
    click(opened, "applyButton");
    EXPECT_EQ(opened.stored("TabWidgetTabNumber"), "3");

    click(opened, "nextButton");
    click(opened, "nextButton");
    click(opened, "nextButton");
    EXPECT_EQ(tabs->currentIndex(), 4);
    EXPECT_EQ(buttons(opened), "B-F");
    click(opened, "finishButton");
    EXPECT_EQ(opened.stored("TabWidgetTabNumber"), "4");
}

TEST(DialogWizard, TheStoredTabDecidesWhereTheDialogOpens) {
    {
        OpenDialog opened(probeAtTab("3"));
        ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
        EXPECT_EQ(opened.find<QTabWidget>("measurementTabs")->currentIndex(), 3);
        EXPECT_EQ(enabledTabs(opened), "11110");
        EXPECT_EQ(buttons(opened), "BN-");
    }
    {
        OpenDialog opened(probeAtTab("4"));
        ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
        EXPECT_EQ(opened.find<QTabWidget>("measurementTabs")->currentIndex(), 4);
        EXPECT_EQ(enabledTabs(opened), "11111");
        EXPECT_EQ(buttons(opened), "B-F");
    }
    {
        // Beyond the last tab no tab becomes current, but the buttons follow the stored number.
        OpenDialog opened(probeAtTab("9"));
        ASSERT_NE(opened.dialog(), nullptr) << opened.lastCall().error;
        EXPECT_EQ(opened.find<QTabWidget>("measurementTabs")->currentIndex(), 0);
        EXPECT_EQ(enabledTabs(opened), "11111");
        EXPECT_EQ(buttons(opened), "BN-");
        EXPECT_EQ(opened.stored("TabWidgetTabNumber"), "9");
    }
}
