// The write-leveling route: its signal tab, the reference tab with the default reference that
// returns, its independence from the measurement route, and what Apply writes on each route.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTreeWidget>
#include <tuple>

#include "support/DialogFixture.h"
#include "support/SelectionPages.h"

using lanetap_test::busDesign;
using lanetap_test::childTexts;
using lanetap_test::choose;
using lanetap_test::leafKeys;
using lanetap_test::OpenDialog;
using lanetap_test::storedList;

namespace {

// A stored map of "key name name ," records.
QHash<QString, QSet<QString>> storedNameMap(const QString& text) {
    QHash<QString, QSet<QString>> map;
    for (const QString& record : text.split(',', Qt::SkipEmptyParts)) {
        QStringList parts = record.split(' ', Qt::SkipEmptyParts);
        if (!parts.isEmpty()) {
            const QString key = parts.takeFirst();
            map[key] = QSet<QString>(parts.begin(), parts.end());
        }
    }
    return map;
}

// The write-leveling route of a dialog that opened on the first tab of the measurement route.
struct WriteLevelingRoute {
    explicit WriteLevelingRoute(OpenDialog& dialog) : opened(dialog) {}

    // Back from the first tab leads to the first page even though the button is hidden there.
    void enter(bool writeLeveling = true) {
        button("backButton")->click();
        opened.find<QCheckBox>("writeLevelingCheckBox")->setChecked(writeLeveling);
        button("nextButton")->click();
    }
    void nextTab() { button("nextButton")->click(); }
    QPushButton* button(const QString& name) { return opened.find<QPushButton>(name); }

    void chooseSignal(const QStringList& path) {
        ASSERT_TRUE(choose(signals, path)) << path.join("/").toStdString();
    }
    void move(QTreeWidget* from, const QStringList& path, const QString& buttonName) {
        ASSERT_TRUE(choose(from, path)) << path.join("/").toStdString();
        button(buttonName)->click();
    }
    QString title() const { return opened.find<QGroupBox>("wlRefSignalSelectionGroup")->title(); }
    QHash<QString, QSet<QString>> applyAndReadReferences() {
        button("applyButton")->click();
        return storedNameMap(opened.stored("WriteLevelingSelectedRefSignalListMap"));
    }

    OpenDialog& opened;
    QTreeWidget* availableSignals = opened.find<QTreeWidget>("wlSelectSignalAvailableSignalTree");
    QTreeWidget* selectedSignals = opened.find<QTreeWidget>("wlSelectSignalSelectedSignalTree");
    QTreeWidget* signals = opened.find<QTreeWidget>("wlSelectRefSignalSelectedSignalTree");
    QTreeWidget* available = opened.find<QTreeWidget>("wlSelectRefSignalAvailableRefSignalTree");
    QTreeWidget* selected = opened.find<QTreeWidget>("wlSelectRefSignalSelectedRefSignalTree");
};

const QStringList dq10{"DQ", "Ch0", "U2", "DQ10"};
const QStringList dq17{"DQ", "Ch0", "U2", "DQ17"};
const QStringList dqs1{"DQS", "Ch0", "U2", "DQS1"};
const QSet<QString> clocks{"CK_Ch0_U1_CK0", "CK_Ch1_U1_CK0", "CK_Ch0_U2_CK0", "CK_Ch1_U2_CK0"};

}  // namespace

TEST(WriteLevelingRoutes, ApplyWritesTheSelectionOfTheShowingRouteOnly) {
    const QString staleList = "DQ_Ch0_U1_DQ2,Gone_Ch0_U9_X1,";
    const QString staleMap = "DQ_Ch0_U1_DQ2 Gone_Ch0_U9_X1 ,";
    OpenDialog opened(busDesign(QString(R"("SelectedSignalList":"DQ_Ch0_U2_DQ2,",)"
                                        R"("WritelevelingSelectedSignalList":"%1",)"
                                        R"("WriteLevelingSelectedRefSignalListMap":"%2")")
                                    .arg(staleList, staleMap)));
    // The opening saved the measurement route, which leaves the write-leveling text as it was.
    EXPECT_EQ(opened.stored("WritelevelingSelectedSignalList"), staleList);
    EXPECT_EQ(opened.stored("WriteLevelingSelectedRefSignalListMap"), staleMap);
    const QString measurementSelection = opened.stored("SelectedSignalList");
    EXPECT_EQ(storedList(measurementSelection), QSet<QString>{"DQ_Ch0_U2_DQ2"});

    WriteLevelingRoute route(opened);
    route.enter();
    EXPECT_EQ(leafKeys(route.selectedSignals), QSet<QString>{"DQ_Ch0_U1_DQ2"});
    route.move(route.availableSignals, dq10, "wlAddSignalButton");
    route.move(route.selectedSignals, {"DQ", "Ch0", "U1", "DQ2"}, "wlRemoveSignalButton");
    const auto references = route.applyAndReadReferences();
    EXPECT_EQ(storedList(opened.stored("WritelevelingSelectedSignalList")),
              QSet<QString>{"DQ_Ch0_U2_DQ10"});
    // No reference tab was shown, so no default was given.
    EXPECT_EQ(references, (QHash<QString, QSet<QString>>{{"DQ_Ch0_U2_DQ10", {}}}));
    EXPECT_EQ(opened.stored("EnableWriteLeveling"), "1");
    EXPECT_EQ(opened.stored("SelectedSignalList"), measurementSelection);

    // A further choice that is not applied before the measurement route takes over.
    route.move(route.availableSignals, dq17, "wlAddSignalButton");
    route.enter(false);
    EXPECT_EQ(opened.find<QStackedWidget>("stackedWidget")->currentIndex(), 2);
    route.nextTab();
    auto* measurementSelected = opened.find<QTreeWidget>("selectSignalSelectedSignalTree");
    EXPECT_EQ(leafKeys(measurementSelected), QSet<QString>{"DQ_Ch0_U2_DQ2"});
    route.move(opened.find<QTreeWidget>("selectSignalAvailableSignalTree"), dq17,
               "addSignalButton");
    route.button("applyButton")->click();
    EXPECT_EQ(storedList(opened.stored("SelectedSignalList")),
              (QSet<QString>{"DQ_Ch0_U2_DQ2", "DQ_Ch0_U2_DQ17"}));
    EXPECT_EQ(storedList(opened.stored("WritelevelingSelectedSignalList")),
              QSet<QString>{"DQ_Ch0_U2_DQ10"});
    EXPECT_EQ(storedNameMap(opened.stored("WriteLevelingSelectedRefSignalListMap")), references);

    // The write-leveling selection survived the trip, the choice that was not applied with it.
    route.button("backButton")->click();
    route.enter();
    EXPECT_EQ(leafKeys(route.selectedSignals), (QSet<QString>{"DQ_Ch0_U2_DQ10", "DQ_Ch0_U2_DQ17"}));
}

TEST(WriteLevelingRoutes, ASignalOnBothRoutesKeepsTwoReferenceLists) {
    OpenDialog opened(
        busDesign(R"("SelectedSignalList":"DQ_Ch0_U2_DQ10,",)"
                  R"("SelectedMeasurementsListMap":"DQ_Ch0_U2_DQ10 1 ,",)"
                  R"("SelectedMeasurementsRefSignalListMap":"DQ_Ch0_U2_DQ10 1 DQS_Ch0_U2_DQS0 ,",)"
                  R"("WritelevelingSelectedSignalList":"DQ_Ch0_U2_DQ10,")"));
    WriteLevelingRoute route(opened);
    route.enter();
    route.nextTab();
    route.chooseSignal(dq10);
    EXPECT_EQ(leafKeys(route.selected), QSet<QString>{"DQS_Ch0_U2_DQS1"});
    route.move(route.available, {"CK", "Ch0", "U2", "CK0"}, "wlAddRefSignalButton");
    EXPECT_EQ(route.applyAndReadReferences().value("DQ_Ch0_U2_DQ10"),
              (QSet<QString>{"DQS_Ch0_U2_DQS1", "CK_Ch0_U2_CK0"}));

    // Back to the first tab, the first page, and the measurement route up to its reference tab.
    route.button("backButton")->click();
    route.enter(false);
    for (int tab = 0; tab < 3; ++tab) {
        route.nextTab();
    }
    ASSERT_EQ(opened.find<QTabWidget>("measurementTabs")->currentIndex(), 3);
    auto* measurementSignals = opened.find<QTreeWidget>("selectRefSignalSelectedSignalTree");
    ASSERT_TRUE(choose(measurementSignals, dq10));
    EXPECT_EQ(leafKeys(opened.find<QTreeWidget>("selectRefSignalSelectedRefSignalTree")),
              QSet<QString>{"DQS_Ch0_U2_DQS0"});
    route.button("applyButton")->click();
    EXPECT_EQ(
        lanetap_test::storedReferenceMap(opened.stored("SelectedMeasurementsRefSignalListMap"))
            .value("DQ_Ch0_U2_DQ10")
            .value(1),
        QSet<QString>{"DQS_Ch0_U2_DQS0"});
}

namespace {

}  // namespace
