// The designer form of the setup dialog: every widget with its class, place and texts, the
// order of tabs, pages and splitter panes, the properties that differ from Qt's defaults, the
// layout of the threshold pages, and the state in which `setupUi` leaves the form.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpacerItem>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest/QTest>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "ui_LaneTapQtDialog.h"

// Show texts, not code units, when an expectation fails.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QStringList& texts, std::ostream* out) {
    *out << '{';
    for (int i = 0; i < texts.size(); ++i) {
        *out << (i == 0 ? "" : ", ") << '"' << texts.at(i).toStdString() << '"';
    }
    *out << '}';
}

namespace {

const QStringList kUnits = {"None", "fV", "pV", "nV", "uV", "mV", "V", "kV"};
const char* const kDialog = "LaneTapQtDialog";

// One widget of the form. `container` is the nearest enclosing widget that the inventory names
// itself. `text` is the text of a label, button or line edit, or the title of a group box;
// null when the widget shows none. `list` is what the widget holds in order: the items of a
// combo box, the header labels of a tree, the rows of a list.
struct InventoryRow {
    const char* name;
    const char* className;
    const char* container;
    const char* text = nullptr;
    QStringList list = {};
};

// A unit box: a combo box with the eight unit texts.
InventoryRow unitBox(const char* name, const char* container) {
    return {name, "QComboBox", container, nullptr, kUnits};
}

const std::vector<InventoryRow>& inventory() {
    static const std::vector<InventoryRow> rows = {
        {"instanceLabel", "QLabel", kDialog, "Instance Name"},
        {"instanceNameEdit", "QLineEdit", kDialog, ""},
        {"stackedWidget", "QStackedWidget", kDialog},

        {"selectWriteLevelingPage", "QWidget", "stackedWidget"},
        {"writeLevelingCheckBox", "QCheckBox", "selectWriteLevelingPage",
         "Check box to use this probe for write leveling"},

        {"writeLevelingPage", "QWidget", "stackedWidget"},
        {"writeLevelingTabs", "QTabWidget", "writeLevelingPage"},
        {"wlSelectSignalTab", "QWidget", "writeLevelingTabs"},
        {"splitter_2", "QSplitter", "wlSelectSignalTab"},
        {"wlSelectSignalAvailableSignalTree",
         "QTreeWidget",
         "splitter_2",
         nullptr,
         {"Available Signals", "Instances"}},
        {"layoutWidget", "QWidget", "splitter_2"},
        {"wlAddSignalButton", "QPushButton", "layoutWidget", ">> Add >>"},
        {"wlRemoveSignalButton", "QPushButton", "layoutWidget", "<< Remove <<"},
        {"wlSelectSignalSelectedSignalTree",
         "QTreeWidget",
         "splitter_2",
         nullptr,
         {"Selected Signals", "Instances"}},
        {"wlSelectRefSignalTab", "QWidget", "writeLevelingTabs"},
        {"splitter_4", "QSplitter", "wlSelectRefSignalTab"},
        {"wlSelectRefSignalSelectedSignalTree",
         "QTreeWidget",
         "splitter_4",
         nullptr,
         {"Selected Signals", "Instances"}},
        {"wlRefSignalSelectionGroup", "QGroupBox", "splitter_4",
         "Reference signal selection for selected write leveling signals"},
        {"splitter_3", "QSplitter", "wlRefSignalSelectionGroup"},
        {"wlSelectRefSignalAvailableRefSignalTree",
         "QTreeWidget",
         "splitter_3",
         nullptr,
         {"Available Signals", "Instances"}},
        {"layoutWidget1", "QWidget", "splitter_3"},
        {"wlAddRefSignalButton", "QPushButton", "layoutWidget1", ">> Add >>"},
        {"wlRemoveRefSignalButton", "QPushButton", "layoutWidget1", "<< Remove <<"},
        {"wlSelectRefSignalSelectedRefSignalTree",
         "QTreeWidget",
         "splitter_3",
         nullptr,
         {"Selected Reference Signal", "Instances"}},

        {"measurementsPage", "QWidget", "stackedWidget"},
        {"measurementTabs", "QTabWidget", "measurementsPage"},
        {"setupProbeTab", "QWidget", "measurementTabs"},
        {"splitter_13", "QSplitter", "setupProbeTab"},
        {"thresholdListWidget",
         "QListWidget",
         "splitter_13",
         nullptr,
         {"Test Environment Setup", "Supply Voltage", "Single Ended Input (DQ)",
          "Single Ended Input (CA)", "Single Ended Input (DQS)", "Single Ended Input (CK)",
          "Single Ended Output", "Differential Input (DQS)", "Differential Input (CK)",
          "Differential Output"}},
        {"signalThresholdGroup", "QGroupBox", "splitter_13", "Signal Thresholds Setting"},
        {"thresholdStackedWidget", "QStackedWidget", "signalThresholdGroup"},

        {"testEnvironmentPage", "QWidget", "thresholdStackedWidget"},
        {"label", "QLabel", "testEnvironmentPage", "DQS Signal Mode"},
        {"dqsSignalModeBox", "QComboBox", "testEnvironmentPage", nullptr, {"Continuous", "Burst"}},
        {"label_2", "QLabel", "testEnvironmentPage", "Mode of Operation"},
        {"modeOfOperationBox", "QComboBox", "testEnvironmentPage", nullptr, {"Read", "Write"}},
        {"label_4", "QLabel", "testEnvironmentPage", "DRAM Type"},
        {"dramTypeBox", "QComboBox", "testEnvironmentPage", nullptr, {"DDR4", "LPDDR4"}},
        {"label_5", "QLabel", "testEnvironmentPage", "Speed Grade"},
        {"speedGradeBox", "QComboBox", "testEnvironmentPage", nullptr, {}},
        {"label_54", "QLabel", "testEnvironmentPage", "Target BER For Mask Margin"},
        {"targetBERBox", "QLineEdit", "testEnvironmentPage", ""},
        {"label_46", "QLabel", "testEnvironmentPage",
         "Compliance Waveform Interpolation Time Resolution"},
        {"interpolationTimeResolutionBox", "QLineEdit", "testEnvironmentPage", ""},
        {"label_43", "QLabel", "testEnvironmentPage", "Eye Histogram Time Resolution"},
        {"timeResolutionBox", "QLineEdit", "testEnvironmentPage", ""},
        {"label_44", "QLabel", "testEnvironmentPage", "Eye Histogram Amplitude Resolution"},
        {"amplitudeResolutionBox", "QLineEdit", "testEnvironmentPage", ""},
        unitBox("amplitudeResolutionVBox", "testEnvironmentPage"),

        {"supplyVoltagePage", "QWidget", "thresholdStackedWidget"},
        {"label_3", "QLabel", "supplyVoltagePage", "VDD "},
        {"vddBox", "QLineEdit", "supplyVoltagePage", ""},
        unitBox("vddVBox", "supplyVoltagePage"),
        {"label_9", "QLabel", "supplyVoltagePage", "VDDQ"},
        {"vddqBox", "QLineEdit", "supplyVoltagePage", ""},
        unitBox("vddqVBox", "supplyVoltagePage"),
        {"label_18", "QLabel", "supplyVoltagePage", "VDD1"},
        {"vdd1Box", "QLineEdit", "supplyVoltagePage", ""},
        unitBox("vdd1VBox", "supplyVoltagePage"),
        {"label_19", "QLabel", "supplyVoltagePage", "VDD2"},
        {"vdd2Box", "QLineEdit", "supplyVoltagePage", ""},
        unitBox("vdd2VBox", "supplyVoltagePage"),
        {"label_10", "QLabel", "supplyVoltagePage", "VTT"},
        {"vttBox", "QLineEdit", "supplyVoltagePage", ""},
        unitBox("vttVBox", "supplyVoltagePage"),

        {"dqInputPage", "QWidget", "thresholdStackedWidget"},
        {"internalVrefDQCheckBox", "QCheckBox", "dqInputPage", "Use internally computed VrefDQ"},
        {"label_51", "QLabel", "dqInputPage", "Group by"},
        {"groupDQSignalBox", "QComboBox", "dqInputPage", nullptr, {"Bit", "Nibble", "Byte"}},
        {"label_41", "QLabel", "dqInputPage", "Input reference voltage VrefDQ"},
        {"vref_dqBox", "QLineEdit", "dqInputPage", ""},
        unitBox("vref_dqVBox", "dqInputPage"),
        {"label_21", "QLabel", "dqInputPage", "AC input logic HIGH voltage VIH_DQ(AC)"},
        {"label_36", "QLabel", "dqInputPage", "VrefDQ +"},
        {"vih_dq_acBox", "QLineEdit", "dqInputPage", ""},
        unitBox("vih_dq_acVBox", "dqInputPage"),
        {"label_23", "QLabel", "dqInputPage", "AC input logic LOW voltage VIL_DQ(AC)"},
        {"label_37", "QLabel", "dqInputPage", "VrefDQ - "},
        {"vil_dq_acBox", "QLineEdit", "dqInputPage", ""},
        unitBox("vil_dq_acVBox", "dqInputPage"),
        {"label_20", "QLabel", "dqInputPage", "DC input logic HIGH voltage VIH_DQ(DC)"},
        {"label_47", "QLabel", "dqInputPage", "VrefDQ + "},
        {"vih_dq_dcBox", "QLineEdit", "dqInputPage", ""},
        unitBox("vih_dq_dcVBox", "dqInputPage"),
        {"label_22", "QLabel", "dqInputPage", "DC input logic LOW voltage VIL_DQ(DC)"},
        {"label_50", "QLabel", "dqInputPage", "VrefDQ - "},
        {"vil_dq_dcBox", "QLineEdit", "dqInputPage", ""},
        unitBox("vil_dq_dcVBox", "dqInputPage"),
        {"label_39", "QLabel", "dqInputPage", "Rx input timing window TdiVW"},
        {"tdivwDQBox", "QLineEdit", "dqInputPage", ""},
        {"tdivwDQTBox", "QComboBox", "dqInputPage", nullptr, {"UI"}},

        {"caInputPage", "QWidget", "thresholdStackedWidget"},
        {"internalVrefCACheckBox", "QCheckBox", "caInputPage", "Use internally computed VrefCA"},
        {"label_52", "QLabel", "caInputPage", "Group by"},
        {"groupCASignalBox", "QComboBox", "caInputPage", nullptr, {"Individual", "All"}},
        {"label_42", "QLabel", "caInputPage", "Input reference voltage VrefCA"},
        {"vref_caBox", "QLineEdit", "caInputPage", ""},
        unitBox("vref_caVBox", "caInputPage"),
        {"label_24", "QLabel", "caInputPage", "AC input logic HIGH voltage VIH_CA(AC)"},
        {"label_16", "QLabel", "caInputPage", "VrefCA +"},
        {"vih_ca_acBox", "QLineEdit", "caInputPage", ""},
        unitBox("vih_ca_acVBox", "caInputPage"),
        {"label_25", "QLabel", "caInputPage", "AC input logic LOW voltage VIL_CA(AC)"},
        {"label_17", "QLabel", "caInputPage", "VrefCA -"},
        {"vil_ca_acBox", "QLineEdit", "caInputPage", ""},
        unitBox("vil_ca_acVBox", "caInputPage"),
        {"label_26", "QLabel", "caInputPage", "DC input logic HIGH voltage VIH_CA(DC)"},
        {"label_32", "QLabel", "caInputPage", "VrefCA +"},
        {"vih_ca_dcBox", "QLineEdit", "caInputPage", ""},
        unitBox("vih_ca_dcVBox", "caInputPage"),
        {"label_27", "QLabel", "caInputPage", "DC input logic LOW voltage VIL_CA(DC)"},
        {"label_33", "QLabel", "caInputPage", "VrefCA -"},
        {"vil_ca_dcBox", "QLineEdit", "caInputPage", ""},
        unitBox("vil_ca_dcVBox", "caInputPage"),
        {"label_40", "QLabel", "caInputPage", "Rx input timing window TciVW"},
        {"tcivwCABox", "QLineEdit", "caInputPage", ""},
        {"tcivwCATBox", "QComboBox", "caInputPage", nullptr, {"UI"}},

        {"singleEndedDqsPage", "QWidget", "thresholdStackedWidget"},
        {"label_14", "QLabel", "singleEndedDqsPage",
         "Single ended input HIGH voltage SE_High (DQS)"},
        {"se_high_DQSBox", "QLineEdit", "singleEndedDqsPage", ""},
        unitBox("se_high_DQSVBox", "singleEndedDqsPage"),
        {"label_15", "QLabel", "singleEndedDqsPage", "Single ended input LOW voltage SE_Low (DQS)"},
        {"se_low_DQSBox", "QLineEdit", "singleEndedDqsPage", ""},
        unitBox("se_low_DQSVBox", "singleEndedDqsPage"),

        {"singleEndedCkPage", "QWidget", "thresholdStackedWidget"},
        {"label_30", "QLabel", "singleEndedCkPage", "Single ended input HIGH voltage SE_High (CK)"},
        {"se_high_CKBox", "QLineEdit", "singleEndedCkPage", ""},
        unitBox("se_high_CKVBox", "singleEndedCkPage"),
        {"label_31", "QLabel", "singleEndedCkPage", "Single ended input LOW voltage SE_Low (CK)"},
        {"se_low_CKBox", "QLineEdit", "singleEndedCkPage", ""},
        unitBox("se_low_CKVBox", "singleEndedCkPage"),

        {"singleEndedOutputPage", "QWidget", "thresholdStackedWidget"},
        {"label_6", "QLabel", "singleEndedOutputPage", "AC output logic HIGH voltage VOH_AC"},
        {"voh_acBox", "QLineEdit", "singleEndedOutputPage", ""},
        unitBox("voh_acVBox", "singleEndedOutputPage"),
        {"label_7", "QLabel", "singleEndedOutputPage", "AC output logic LOW voltage VOL_AC"},
        {"vol_acBox", "QLineEdit", "singleEndedOutputPage", ""},
        unitBox("vol_acVBox", "singleEndedOutputPage"),
        {"label_8", "QLabel", "singleEndedOutputPage", "DC output logic HIGH voltage VOH_DC"},
        {"voh_dcBox", "QLineEdit", "singleEndedOutputPage", ""},
        unitBox("voh_dcVBox", "singleEndedOutputPage"),
        {"label_11", "QLabel", "singleEndedOutputPage", "DC output logic LOW voltage VOL_DC"},
        {"vol_dcBox", "QLineEdit", "singleEndedOutputPage", ""},
        unitBox("vol_dcVBox", "singleEndedOutputPage"),

        {"dqsInputPage", "QWidget", "thresholdStackedWidget"},
        {"label_48", "QLabel", "dqsInputPage",
         "AC Differential input HIGH voltage VIH_diff_ac (DQS)"},
        {"vihDiff_DQS_acBox", "QLineEdit", "dqsInputPage", ""},
        unitBox("vihDiff_DQS_acVBox", "dqsInputPage"),
        {"label_49", "QLabel", "dqsInputPage",
         "AC Differential input LOW voltage VIL_diff_ac (DQS)"},
        {"vilDiff_DQS_acBox", "QLineEdit", "dqsInputPage", ""},
        unitBox("vilDiff_DQS_acVBox", "dqsInputPage"),
        {"label_12", "QLabel", "dqsInputPage", "DC Differential input HIGH voltage VIH_diff (DQS)"},
        {"vihDiff_DQSBox", "QLineEdit", "dqsInputPage", ""},
        unitBox("vihDiff_DQSVBox", "dqsInputPage"),
        {"label_13", "QLabel", "dqsInputPage", "DC Differential input LOW voltage VIL_diff (DQS)"},
        {"vilDiff_DQSBox", "QLineEdit", "dqsInputPage", ""},
        unitBox("vilDiff_DQSVBox", "dqsInputPage"),

        {"ckInputPage", "QWidget", "thresholdStackedWidget"},
        {"label_29", "QLabel", "ckInputPage",
         "AC Differential input HIGH voltage VIH_diff_ac (CK)"},
        {"vihDiff_CK_acBox", "QLineEdit", "ckInputPage", ""},
        unitBox("vihDiff_CK_acVBox", "ckInputPage"),
        {"label_28", "QLabel", "ckInputPage", "AC Differential input LOW voltage VIL_diff_ac (CK)"},
        {"vilDiff_CK_acBox", "QLineEdit", "ckInputPage", ""},
        unitBox("vilDiff_CK_acVBox", "ckInputPage"),
        {"label_38", "QLabel", "ckInputPage", "DC Differential input HIGH voltage VIH_diff (CK)"},
        {"vihDiff_CKBox", "QLineEdit", "ckInputPage", ""},
        unitBox("vihDiff_CKVBox", "ckInputPage"),
        {"label_45", "QLabel", "ckInputPage", "DC Differential input LOW voltage VIL_diff (CK)"},
        {"vilDiff_CKBox", "QLineEdit", "ckInputPage", ""},
        unitBox("vilDiff_CKVBox", "ckInputPage"),

        {"differentialOutputPage", "QWidget", "thresholdStackedWidget"},
        {"label_35", "QLabel", "differentialOutputPage",
         "Differential output HIGH voltage VOH_diff"},
        {"voh_diffBox", "QLineEdit", "differentialOutputPage", ""},
        unitBox("voh_diffVBox", "differentialOutputPage"),
        {"label_34", "QLabel", "differentialOutputPage",
         "Differential output LOW voltage VOL_diff"},
        {"vol_diffBox", "QLineEdit", "differentialOutputPage", ""},
        unitBox("vol_diffVBox", "differentialOutputPage"),

        {"selectSignalTab", "QWidget", "measurementTabs"},
        {"splitter", "QSplitter", "selectSignalTab"},
        {"selectSignalAvailableSignalTree",
         "QTreeWidget",
         "splitter",
         nullptr,
         {"Available Signals", "Instances"}},
        {"layoutWidget2", "QWidget", "splitter"},
        {"addSignalButton", "QPushButton", "layoutWidget2", ">> Add >>"},
        {"removeSignalButton", "QPushButton", "layoutWidget2", "<< Remove <<"},
        {"selectSignalSelectedSignalTree",
         "QTreeWidget",
         "splitter",
         nullptr,
         {"Selected Signals", "Instances"}},

        {"selectMeasurementTab", "QWidget", "measurementTabs"},
        {"splitter_7", "QSplitter", "selectMeasurementTab"},
        {"selectMeasurementSelectedSignalTree",
         "QTreeWidget",
         "splitter_7",
         nullptr,
         {"Selected Signals", "Instances"}},
        {"measurementSelectionGroup", "QGroupBox", "splitter_7",
         "Select Measurements for Selected Signal:"},
        {"splitter_6", "QSplitter", "measurementSelectionGroup"},
        {"splitter_5", "QSplitter", "splitter_6"},
        {"selectMeasurementAvailableMeasurementTree",
         "QTreeWidget",
         "splitter_5",
         nullptr,
         {"Available Measurements"}},
        {"layoutWidget3", "QWidget", "splitter_5"},
        {"addMeasurementButton", "QPushButton", "layoutWidget3", ">> Add >>"},
        {"removeMeasurementButton", "QPushButton", "layoutWidget3", "<< Remove <<"},
        {"selectMeasurementSelectedMeasurementTree",
         "QTreeWidget",
         "splitter_5",
         nullptr,
         {"Selected Measurements"}},
        {"measurementDescriptionLabel", "QLabel", "splitter_6",
         "Description:\nClick on an available/selected measurement in the list above."},

        {"selectRefSignalTab", "QWidget", "measurementTabs"},
        {"splitter_9", "QSplitter", "selectRefSignalTab"},
        {"selectRefSignalSelectedSignalTree",
         "QTreeWidget",
         "splitter_9",
         nullptr,
         {"Selected Signals", "Instances"}},
        {"selectRefSignalSelectedMeasurementTree",
         "QTreeWidget",
         "splitter_9",
         nullptr,
         {"Selected Measurements"}},
        {"RefSignalSelectionGroup", "QGroupBox", "splitter_9",
         "Select Reference Signal for Selected Signal-Measurement Pair:"},
        {"splitter_8", "QSplitter", "RefSignalSelectionGroup"},
        {"selectRefSignalAvailableRefSignalTree",
         "QTreeWidget",
         "splitter_8",
         nullptr,
         {"Available Signals", "Instances"}},
        {"layoutWidget4", "QWidget", "splitter_8"},
        {"addRefSignalButton", "QPushButton", "layoutWidget4", ">> Add >>"},
        {"removeRefSignalButton", "QPushButton", "layoutWidget4", "<< Remove <<"},
        {"selectRefSignalSelectedRefSignalTree",
         "QTreeWidget",
         "splitter_8",
         nullptr,
         {"Selected Reference Signal", "Instances"}},

        {"selectComplianceTab", "QWidget", "measurementTabs"},
        {"enableComplianceCheckBox", "QCheckBox", "selectComplianceTab",
         "Enable Compliance Measurements"},
        {"complianceGroup", "QGroupBox", "selectComplianceTab", ""},
        {"enableScreenshots", "QCheckBox", "complianceGroup", "Enable Capturing Screenshots"},
        {"splitter_14", "QSplitter", "complianceGroup"},
        {"saveToPDFCheckBox", "QCheckBox", "splitter_14",
         "Save Compliance Results to PDF in Specified Directory"},
        {"pdfDirPath", "QLineEdit", "splitter_14", ""},
        {"browsePDFDirButton", "QPushButton", "splitter_14", "Browse PDF Directory"},
        {"splitter_12", "QSplitter", "complianceGroup"},
        {"selectComplianceSelectedSignalTree",
         "QTreeWidget",
         "splitter_12",
         nullptr,
         {"Signal Type", "Instances of Models"}},
        {"complianceMeasurementsGroup", "QGroupBox", "splitter_12",
         "Compliance Measurement Selection"},
        {"splitter_11", "QSplitter", "complianceMeasurementsGroup"},
        {"splitter_10", "QSplitter", "splitter_11"},
        {"selectComplianceAvailableMeasurementTree",
         "QTreeWidget",
         "splitter_10",
         nullptr,
         {"Available Compliance Measurement"}},
        {"layoutWidget5", "QWidget", "splitter_10"},
        {"addComplianceButton", "QPushButton", "layoutWidget5", ">> Add >>"},
        {"removeComplianceButton", "QPushButton", "layoutWidget5", "<< Remove <<"},
        {"selectComplianceSelectedMeasurementTree",
         "QTreeWidget",
         "splitter_10",
         nullptr,
         {"Selected Compliance Measurement"}},
        {"complianceDescriptionLabel", "QLabel", "splitter_11", ""},

        {"line_4", "QFrame", kDialog},
        {"backButton", "QPushButton", kDialog, "Back"},
        {"applyButton", "QPushButton", kDialog, "Apply"},
        {"nextButton", "QPushButton", kDialog, "Next"},
        {"finishButton", "QPushButton", kDialog, "Finish"},
        {"cancelButton", "QPushButton", kDialog, "Cancel"},
        {"helpButton", "QPushButton", kDialog, "Help"},
    };
    return rows;
}

std::set<QString> inventoryNames() {
    std::set<QString> names = {kDialog};
    for (const InventoryRow& row : inventory()) {
        names.insert(row.name);
    }
    return names;
}

// The QApplication of the run comes from the widget tests' main.
class DialogForm : public ::testing::Test {
protected:
    void SetUp() override {
        dialog = std::make_unique<QWidget>();
        form.setupUi(dialog.get());
    }

    // The one widget of that name; fails the test when there is none or more than one.
    template <class T = QWidget>
    T* widget(const char* name) const {
        const QList<T*> found = dialog->findChildren<T*>(QString::fromLatin1(name));
        EXPECT_EQ(found.size(), 1) << name;
        return found.isEmpty() ? nullptr : found.first();
    }

    // Shows the dialog at `size` with the threshold page `page` showing and all layouts done.
    void showThresholdPage(QWidget* page, QSize size) {
        form.stackedWidget->setCurrentWidget(form.measurementsPage);
        form.measurementTabs->setCurrentWidget(form.setupProbeTab);
        form.thresholdStackedWidget->setCurrentWidget(page);
        dialog->resize(size);
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
        QCoreApplication::processEvents();
    }

    std::unique_ptr<QWidget> dialog;
    Ui::LaneTapQtDialog form;
};

// The nearest enclosing widget that the inventory names, or an empty text at the top.
QString namedContainer(const QWidget* widget, const std::set<QString>& names) {
    for (const QWidget* parent = widget->parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        if (names.count(parent->objectName()) != 0) {
            return parent->objectName();
        }
    }
    return {};
}

QStringList comboItems(const QComboBox* box) {
    QStringList items;
    for (int i = 0; i < box->count(); ++i) {
        items << box->itemText(i);
    }
    return items;
}

QStringList headerLabels(const QTreeWidget* tree) {
    QStringList labels;
    for (int i = 0; i < tree->columnCount(); ++i) {
        labels << tree->headerItem()->text(i);
    }
    return labels;
}

QStringList listRows(const QListWidget* list) {
    QStringList rows;
    for (int i = 0; i < list->count(); ++i) {
        rows << list->item(i)->text();
    }
    return rows;
}

// The text a widget shows: label and button texts, line edit contents, group box titles.
bool shownText(const QWidget* widget, QString* text) {
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        *text = label->text();
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        *text = button->text();
    } else if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) {
        *text = edit->text();
    } else if (const auto* group = qobject_cast<const QGroupBox*>(widget)) {
        *text = group->title();
    } else {
        return false;
    }
    return true;
}

TEST_F(DialogForm, EveryWidgetOfTheInventoryWithItsClassPlaceAndTexts) {
    const std::set<QString> names = inventoryNames();
    for (const InventoryRow& row : inventory()) {
        SCOPED_TRACE(row.name);
        QWidget* found = widget(row.name);
        ASSERT_NE(found, nullptr);
        EXPECT_STREQ(found->metaObject()->className(), row.className);
        EXPECT_EQ(namedContainer(found, names), QString::fromLatin1(row.container));

        QString text;
        const bool showsText = shownText(found, &text);
        if (row.text != nullptr) {
            ASSERT_TRUE(showsText) << "no text to compare";
            EXPECT_EQ(text, QString::fromUtf8(row.text));
        } else if (showsText) {
            EXPECT_EQ(text, QString()) << "unexpected text";
        }

        if (const auto* box = qobject_cast<QComboBox*>(found)) {
            EXPECT_EQ(comboItems(box), row.list);
        } else if (const auto* tree = qobject_cast<QTreeWidget*>(found)) {
            EXPECT_EQ(headerLabels(tree), row.list);
        } else if (const auto* list = qobject_cast<QListWidget*>(found)) {
            EXPECT_EQ(listRows(list), row.list);
        } else {
            EXPECT_TRUE(row.list.isEmpty()) << "the widget holds no items";
        }
    }
}

TEST_F(DialogForm, TheDialogWindow) {
    EXPECT_EQ(dialog->objectName(), QString("LaneTapQtDialog"));
    EXPECT_EQ(dialog->size(), QSize(898, 652));
    EXPECT_EQ(dialog->minimumSize(), QSize(0, 0));
    EXPECT_EQ(dialog->maximumSize(), QSize(16777215, 16777215));
    EXPECT_EQ(dialog->windowTitle(), QString("LaneTapWidget"));

    QWidget named;
    named.setObjectName("probeSetup");
    Ui::LaneTapQtDialog second;
    second.setupUi(&named);
    EXPECT_EQ(named.objectName(), QString("probeSetup")) << "a name set before is kept";
}

TEST_F(DialogForm, TabsAndPagesInTheirOrder) {
    struct Tabs {
        const char* tabWidget;
        std::vector<std::pair<const char*, const char*>> pages;  // object name, tab label
    };
    const std::vector<Tabs> table = {
        {"writeLevelingTabs",
         {{"wlSelectSignalTab", "Select Signals"},
          {"wlSelectRefSignalTab", "Select Reference Signal"}}},
        {"measurementTabs",
         {{"setupProbeTab", "Setup Probe"},
          {"selectSignalTab", "Select Signals"},
          {"selectMeasurementTab", "Select Measurements"},
          {"selectRefSignalTab", "Select Reference Signal"},
          {"selectComplianceTab", "Select Compliance Measurements"}}},
    };
    for (const Tabs& row : table) {
        SCOPED_TRACE(row.tabWidget);
        auto* tabs = widget<QTabWidget>(row.tabWidget);
        ASSERT_NE(tabs, nullptr);
        ASSERT_EQ(tabs->count(), static_cast<int>(row.pages.size()));
        for (int i = 0; i < tabs->count(); ++i) {
            EXPECT_EQ(tabs->widget(i)->objectName(), QString(row.pages[i].first));
            EXPECT_EQ(tabs->tabText(i), QString(row.pages[i].second));
        }
    }

    auto* stack = widget<QStackedWidget>("stackedWidget");
    ASSERT_NE(stack, nullptr);
    const QStringList pages = {"selectWriteLevelingPage", "writeLevelingPage", "measurementsPage"};
    ASSERT_EQ(stack->count(), pages.size());
    for (int i = 0; i < stack->count(); ++i) {
        EXPECT_EQ(stack->widget(i)->objectName(), pages.at(i));
    }
}

TEST_F(DialogForm, ThresholdRowsMatchTheirPages) {
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"Test Environment Setup", "testEnvironmentPage"},
        {"Supply Voltage", "supplyVoltagePage"},
        {"Single Ended Input (DQ)", "dqInputPage"},
        {"Single Ended Input (CA)", "caInputPage"},
        {"Single Ended Input (DQS)", "singleEndedDqsPage"},
        {"Single Ended Input (CK)", "singleEndedCkPage"},
        {"Single Ended Output", "singleEndedOutputPage"},
        {"Differential Input (DQS)", "dqsInputPage"},
        {"Differential Input (CK)", "ckInputPage"},
        {"Differential Output", "differentialOutputPage"},
    };
    ASSERT_EQ(form.thresholdListWidget->count(), static_cast<int>(rows.size()));
    ASSERT_EQ(form.thresholdStackedWidget->count(), static_cast<int>(rows.size()));
    EXPECT_FALSE(form.thresholdListWidget->isSortingEnabled());
    for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
        SCOPED_TRACE(rows[i].second);
        EXPECT_EQ(form.thresholdListWidget->item(i)->text(), QString(rows[i].first));
        EXPECT_EQ(form.thresholdStackedWidget->widget(i)->objectName(), QString(rows[i].second));
    }
}

TEST_F(DialogForm, SplittersWithTheirOrientationAndPanes) {
    struct SplitterRow {
        const char* name;
        Qt::Orientation orientation;
        QStringList panes;
    };
    const std::vector<SplitterRow> table = {
        {"splitter_2",
         Qt::Horizontal,
         {"wlSelectSignalAvailableSignalTree", "layoutWidget", "wlSelectSignalSelectedSignalTree"}},
        {"splitter_4",
         Qt::Horizontal,
         {"wlSelectRefSignalSelectedSignalTree", "wlRefSignalSelectionGroup"}},
        {"splitter_3",
         Qt::Horizontal,
         {"wlSelectRefSignalAvailableRefSignalTree", "layoutWidget1",
          "wlSelectRefSignalSelectedRefSignalTree"}},
        {"splitter_13", Qt::Horizontal, {"thresholdListWidget", "signalThresholdGroup"}},
        {"splitter",
         Qt::Horizontal,
         {"selectSignalAvailableSignalTree", "layoutWidget2", "selectSignalSelectedSignalTree"}},
        {"splitter_7",
         Qt::Horizontal,
         {"selectMeasurementSelectedSignalTree", "measurementSelectionGroup"}},
        {"splitter_6", Qt::Vertical, {"splitter_5", "measurementDescriptionLabel"}},
        {"splitter_5",
         Qt::Horizontal,
         {"selectMeasurementAvailableMeasurementTree", "layoutWidget3",
          "selectMeasurementSelectedMeasurementTree"}},
        {"splitter_9",
         Qt::Horizontal,
         {"selectRefSignalSelectedSignalTree", "selectRefSignalSelectedMeasurementTree",
          "RefSignalSelectionGroup"}},
        {"splitter_8",
         Qt::Horizontal,
         {"selectRefSignalAvailableRefSignalTree", "layoutWidget4",
          "selectRefSignalSelectedRefSignalTree"}},
        {"splitter_14", Qt::Horizontal, {"saveToPDFCheckBox", "pdfDirPath", "browsePDFDirButton"}},
        {"splitter_12",
         Qt::Horizontal,
         {"selectComplianceSelectedSignalTree", "complianceMeasurementsGroup"}},
        {"splitter_11", Qt::Vertical, {"splitter_10", "complianceDescriptionLabel"}},
        {"splitter_10",
         Qt::Horizontal,
         {"selectComplianceAvailableMeasurementTree", "layoutWidget5",
          "selectComplianceSelectedMeasurementTree"}},
    };
    EXPECT_EQ(dialog->findChildren<QSplitter*>().size(), static_cast<int>(table.size()))
        << "every splitter of the form is in the table";
    for (const SplitterRow& row : table) {
        SCOPED_TRACE(row.name);
        auto* splitter = widget<QSplitter>(row.name);
        ASSERT_NE(splitter, nullptr);
        EXPECT_EQ(splitter->orientation(), row.orientation);
        EXPECT_FALSE(splitter->childrenCollapsible());
        QStringList panes;
        for (int i = 0; i < splitter->count(); ++i) {
            panes << splitter->widget(i)->objectName();
        }
        EXPECT_EQ(panes, row.panes);
    }
}

TEST_F(DialogForm, PropertiesThatDifferFromTheDefaults) {
    EXPECT_EQ(form.line_4->frameShape(), QFrame::HLine);
    EXPECT_EQ(form.line_4->frameShadow(), QFrame::Sunken);

    EXPECT_TRUE(form.speedGradeBox->isEditable());
    EXPECT_EQ(form.speedGradeBox->insertPolicy(), QComboBox::InsertAlphabetically);

    EXPECT_FALSE(form.measurementTabs->tabBarAutoHide());

    EXPECT_EQ(form.selectComplianceSelectedSignalTree->toolTip(),
              QString("\"Instances of Models\" depends on read or write cycle for DQ/DQS."));
    EXPECT_EQ(form.selectComplianceSelectedSignalTree->toolTipDuration(), 3000);

    EXPECT_EQ(form.measurementDescriptionLabel->text().split('\n'),
              QStringList({"Description:",
                           "Click on an available/selected measurement in the list above."}));
    EXPECT_TRUE(form.complianceGroup->title().isEmpty());
    EXPECT_TRUE(form.complianceDescriptionLabel->text().isEmpty());

    // Nothing else departs from the defaults in the ways the code relies on.
    for (QLineEdit* edit : dialog->findChildren<QLineEdit*>()) {
        if (edit->parent() != nullptr && qobject_cast<QComboBox*>(edit->parent()) != nullptr) {
            continue;  // the editor inside the editable speed grade box
        }
        SCOPED_TRACE(edit->objectName().toStdString());
        EXPECT_EQ(edit->validator(), nullptr);
        EXPECT_TRUE(edit->inputMask().isEmpty());
        EXPECT_FALSE(edit->isReadOnly());
    }
    for (QAbstractButton* button : dialog->findChildren<QAbstractButton*>()) {
        if (inventoryNames().count(button->objectName()) == 0) {
            continue;  // buttons that Qt makes inside its own widgets
        }
        EXPECT_TRUE(button->icon().isNull()) << button->objectName().toStdString();
    }
}

// True for a spacer that takes any space there is in `orientation`, with the given hint.
bool isExpandingSpacer(QLayoutItem* item, Qt::Orientation orientation, QSize hint) {
    QSpacerItem* spacer = item != nullptr ? item->spacerItem() : nullptr;
    if (spacer == nullptr) {
        return false;
    }
    const QSizePolicy::Policy policy = orientation == Qt::Horizontal
                                           ? spacer->sizePolicy().horizontalPolicy()
                                           : spacer->sizePolicy().verticalPolicy();
    return policy == QSizePolicy::Expanding && spacer->sizeHint() == hint;
}

TEST_F(DialogForm, ButtonColumnsBetweenTreesKeepTheirButtonsInTheMiddle) {
    const std::vector<std::array<const char*, 3>> columns = {
        {"layoutWidget", "wlAddSignalButton", "wlRemoveSignalButton"},
        {"layoutWidget1", "wlAddRefSignalButton", "wlRemoveRefSignalButton"},
        {"layoutWidget2", "addSignalButton", "removeSignalButton"},
        {"layoutWidget3", "addMeasurementButton", "removeMeasurementButton"},
        {"layoutWidget4", "addRefSignalButton", "removeRefSignalButton"},
        {"layoutWidget5", "addComplianceButton", "removeComplianceButton"},
    };
    for (const auto& [holderName, addName, removeName] : columns) {
        SCOPED_TRACE(holderName);
        QWidget* holder = widget(holderName);
        ASSERT_NE(holder, nullptr);
        QLayout* layout = holder->layout();
        ASSERT_NE(layout, nullptr);
        EXPECT_EQ(layout->contentsMargins(), QMargins(0, 0, 0, 0));
        ASSERT_EQ(layout->count(), 4);
        EXPECT_TRUE(isExpandingSpacer(layout->itemAt(0), Qt::Vertical, QSize(20, 40)));
        EXPECT_EQ(layout->itemAt(1)->widget(), widget(addName));
        EXPECT_EQ(layout->itemAt(2)->widget(), widget(removeName));
        EXPECT_TRUE(isExpandingSpacer(layout->itemAt(3), Qt::Vertical, QSize(20, 40)));
        // One above the other.
        EXPECT_TRUE(qobject_cast<QVBoxLayout*>(layout) != nullptr);
    }
}

// The widgets of a layout, depth first, and the spacers among its items.
void collect(QLayout* layout, QList<QWidget*>* widgets, QList<QSpacerItem*>* spacers) {
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (item->widget() != nullptr) {
            widgets->append(item->widget());
        } else if (item->layout() != nullptr) {
            collect(item->layout(), widgets, spacers);
        } else if (item->spacerItem() != nullptr) {
            spacers->append(item->spacerItem());
        }
    }
}

TEST_F(DialogForm, TopLevelColumnOfInstanceRowPagesSeparatorAndButtonRow) {
    auto* outer = qobject_cast<QVBoxLayout*>(dialog->layout());
    ASSERT_NE(outer, nullptr);
    ASSERT_EQ(outer->count(), 1);
    auto* inner = qobject_cast<QVBoxLayout*>(outer->itemAt(0)->layout());
    ASSERT_NE(inner, nullptr);
    ASSERT_EQ(inner->count(), 4);

    auto* instanceRow = qobject_cast<QHBoxLayout*>(inner->itemAt(0)->layout());
    ASSERT_NE(instanceRow, nullptr);
    QList<QWidget*> widgets;
    QList<QSpacerItem*> spacers;
    collect(instanceRow, &widgets, &spacers);
    EXPECT_EQ(widgets, QList<QWidget*>({form.instanceLabel, form.instanceNameEdit}));

    EXPECT_EQ(inner->itemAt(1)->widget(), form.stackedWidget);
    EXPECT_EQ(inner->itemAt(2)->widget(), form.line_4);

    auto* buttonRow = qobject_cast<QHBoxLayout*>(inner->itemAt(3)->layout());
    ASSERT_NE(buttonRow, nullptr);
    widgets.clear();
    collect(buttonRow, &widgets, &spacers);
    EXPECT_EQ(widgets, QList<QWidget*>({form.backButton, form.applyButton, form.nextButton,
                                        form.finishButton, form.cancelButton, form.helpButton}));

    // The write-leveling question stands between two spacers that take up the height.
    QLayout* page = form.selectWriteLevelingPage->layout();
    ASSERT_NE(page, nullptr);
    ASSERT_EQ(page->count(), 3);
    EXPECT_TRUE(isExpandingSpacer(page->itemAt(0), Qt::Vertical, QSize(20, 40)));
    EXPECT_EQ(page->itemAt(1)->widget(), form.writeLevelingCheckBox);
    EXPECT_TRUE(isExpandingSpacer(page->itemAt(2), Qt::Vertical, QSize(20, 40)));
}

// One row of a threshold page, from left to right: the label, then its fields.
struct ThresholdPageRows {
    const char* page;
    std::vector<std::vector<const char*>> rows;
};

const std::vector<ThresholdPageRows>& thresholdPages() {
    static const std::vector<ThresholdPageRows> pages = {
        {"testEnvironmentPage",
         {{"label", "dqsSignalModeBox"},
          {"label_2", "modeOfOperationBox"},
          {"label_4", "dramTypeBox"},
          {"label_5", "speedGradeBox"},
          {"label_54", "targetBERBox"},
          {"label_46", "interpolationTimeResolutionBox"},
          {"label_43", "timeResolutionBox"},
          {"label_44", "amplitudeResolutionBox", "amplitudeResolutionVBox"}}},
        {"supplyVoltagePage",
         {{"label_3", "vddBox", "vddVBox"},
          {"label_9", "vddqBox", "vddqVBox"},
          {"label_18", "vdd1Box", "vdd1VBox"},
          {"label_19", "vdd2Box", "vdd2VBox"},
          {"label_10", "vttBox", "vttVBox"}}},
        {"dqInputPage",
         {{"internalVrefDQCheckBox", "label_51", "groupDQSignalBox"},
          {"label_41", "vref_dqBox", "vref_dqVBox"},
          {"label_21", "label_36", "vih_dq_acBox", "vih_dq_acVBox"},
          {"label_23", "label_37", "vil_dq_acBox", "vil_dq_acVBox"},
          {"label_20", "label_47", "vih_dq_dcBox", "vih_dq_dcVBox"},
          {"label_22", "label_50", "vil_dq_dcBox", "vil_dq_dcVBox"},
          {"label_39", "tdivwDQBox", "tdivwDQTBox"}}},
        {"caInputPage",
         {{"internalVrefCACheckBox", "label_52", "groupCASignalBox"},
          {"label_42", "vref_caBox", "vref_caVBox"},
          {"label_24", "label_16", "vih_ca_acBox", "vih_ca_acVBox"},
          {"label_25", "label_17", "vil_ca_acBox", "vil_ca_acVBox"},
          {"label_26", "label_32", "vih_ca_dcBox", "vih_ca_dcVBox"},
          {"label_27", "label_33", "vil_ca_dcBox", "vil_ca_dcVBox"},
          {"label_40", "tcivwCABox", "tcivwCATBox"}}},
        {"singleEndedDqsPage",
         {{"label_14", "se_high_DQSBox", "se_high_DQSVBox"},
          {"label_15", "se_low_DQSBox", "se_low_DQSVBox"}}},
        {"singleEndedCkPage",
         {{"label_30", "se_high_CKBox", "se_high_CKVBox"},
          {"label_31", "se_low_CKBox", "se_low_CKVBox"}}},
        {"singleEndedOutputPage",
         {{"label_6", "voh_acBox", "voh_acVBox"},
          {"label_7", "vol_acBox", "vol_acVBox"},
          {"label_8", "voh_dcBox", "voh_dcVBox"},
          {"label_11", "vol_dcBox", "vol_dcVBox"}}},
        {"dqsInputPage",
         {{"label_48", "vihDiff_DQS_acBox", "vihDiff_DQS_acVBox"},
          {"label_49", "vilDiff_DQS_acBox", "vilDiff_DQS_acVBox"},
          {"label_12", "vihDiff_DQSBox", "vihDiff_DQSVBox"},
          {"label_13", "vilDiff_DQSBox", "vilDiff_DQSVBox"}}},
        {"ckInputPage",
         {{"label_29", "vihDiff_CK_acBox", "vihDiff_CK_acVBox"},
          {"label_28", "vilDiff_CK_acBox", "vilDiff_CK_acVBox"},
          {"label_38", "vihDiff_CKBox", "vihDiff_CKVBox"},
          {"label_45", "vilDiff_CKBox", "vilDiff_CKVBox"}}},
        {"differentialOutputPage",
         {{"label_35", "voh_diffBox", "voh_diffVBox"},
          {"label_34", "vol_diffBox", "vol_diffVBox"}}},
    };
    return pages;
}

TEST_F(DialogForm, ThresholdPagesSpaceTheirRowsAndEndWithASpacer) {
    for (const ThresholdPageRows& page : thresholdPages()) {
        SCOPED_TRACE(page.page);
        QWidget* pageWidget = widget(page.page);
        ASSERT_NE(pageWidget, nullptr);
        QLayout* layout = pageWidget->layout();
        ASSERT_NE(layout, nullptr);
        // The page's last item keeps its rows at the top.
        EXPECT_TRUE(
            isExpandingSpacer(layout->itemAt(layout->count() - 1), Qt::Vertical, QSize(20, 40)));

        // One horizontal spacer per row between the label and the fields, and every widget of
        // the page placed in the layout.
        QList<QWidget*> widgets;
        QList<QSpacerItem*> spacers;
        collect(layout, &widgets, &spacers);
        int horizontal = 0;
        for (QSpacerItem* spacer : spacers) {
            if (isExpandingSpacer(spacer, Qt::Horizontal, QSize(40, 20))) {
                ++horizontal;
            }
        }
        EXPECT_EQ(horizontal, static_cast<int>(page.rows.size()));
        std::size_t cells = 0;
        for (const auto& row : page.rows) {
            cells += row.size();
        }
        EXPECT_EQ(static_cast<std::size_t>(widgets.size()), cells);
    }
}

// Shown at the dialog's own size and at a larger one, each threshold page has its rows in
// order from the top, each label at the left edge showing all of its text, and the fields of
// the row to its right in order, ending flush at the right edge.
TEST_F(DialogForm, ThresholdPagesKeepLabelsLeftAndFieldsRight) {
    for (const QSize size : {QSize(898, 652), QSize(1280, 900)}) {
        for (const ThresholdPageRows& page : thresholdPages()) {
            SCOPED_TRACE(std::string(page.page) + " at " + std::to_string(size.width()));
            QWidget* pageWidget = widget(page.page);
            ASSERT_NE(pageWidget, nullptr);
            showThresholdPage(pageWidget, size);
            const QRect area = pageWidget->layout()->contentsRect();
            int previousBottom = area.top() - 1;
            int rowHeight = 0;
            for (const auto& row : page.rows) {
                SCOPED_TRACE(row.front());
                QRect previous;
                for (std::size_t i = 0; i < row.size(); ++i) {
                    QWidget* cell = widget(row[i]);
                    ASSERT_NE(cell, nullptr);
                    const QRect box(cell->mapTo(pageWidget, QPoint(0, 0)), cell->size());
                    if (i == 0) {
                        EXPECT_EQ(box.left(), area.left());
                        EXPECT_GE(cell->width(), cell->sizeHint().width()) << "text cut off";
                        EXPECT_GT(box.top(), previousBottom) << "rows in order from the top";
                        EXPECT_LT(box.top() - previousBottom, box.height())
                            << "rows kept together at the top";
                        rowHeight = std::max(rowHeight, box.height());
                    } else {
                        EXPECT_GT(box.left(), previous.right()) << row[i];
                        EXPECT_LT(std::abs(box.center().y() - previous.center().y()), rowHeight)
                            << row[i] << " on the row of " << row.front();
                    }
                    if (i + 1 == row.size()) {
                        EXPECT_EQ(box.right(), area.right()) << row[i];
                    }
                    previous = box;
                }
                for (const char* name : row) {
                    QWidget* cell = widget(name);
                    previousBottom =
                        std::max(previousBottom,
                                 cell->mapTo(pageWidget, QPoint(0, 0)).y() + cell->height() - 1);
                }
            }
        }
    }
}

TEST_F(DialogForm, StartingStateAtTheEndOfSetupUi) {
    EXPECT_EQ(form.stackedWidget->currentIndex(), 2);
    EXPECT_EQ(form.stackedWidget->currentWidget(), form.measurementsPage);
    EXPECT_EQ(form.writeLevelingTabs->currentIndex(), 0);
    EXPECT_EQ(form.measurementTabs->currentIndex(), 0);
    EXPECT_EQ(form.thresholdListWidget->currentRow(), 0);
    EXPECT_EQ(form.thresholdStackedWidget->currentIndex(), 0);

    // Everything is enabled, every tab too, until the dialog's code decides otherwise.
    // Nothing is hidden but the pages that their stacks do not show.
    for (const InventoryRow& row : inventory()) {
        QWidget* found = widget(row.name);
        ASSERT_NE(found, nullptr);
        EXPECT_TRUE(found->isEnabledTo(dialog.get())) << row.name;
        const auto* stack = qobject_cast<QStackedWidget*>(found->parentWidget());
        const bool shownByStack = stack == nullptr || stack->currentWidget() == found;
        EXPECT_EQ(found->isHidden(), !shownByStack) << row.name;
    }
    for (QTabWidget* tabs : {form.writeLevelingTabs, form.measurementTabs}) {
        for (int i = 0; i < tabs->count(); ++i) {
            EXPECT_TRUE(tabs->isTabEnabled(i)) << tabs->objectName().toStdString() << " " << i;
        }
    }

    for (QCheckBox* box : dialog->findChildren<QCheckBox*>()) {
        EXPECT_EQ(box->checkState(), Qt::Unchecked) << box->objectName().toStdString();
    }
    for (QTreeWidget* tree : dialog->findChildren<QTreeWidget*>()) {
        EXPECT_EQ(tree->topLevelItemCount(), 0) << tree->objectName().toStdString();
    }
    EXPECT_EQ(form.speedGradeBox->count(), 0);
    EXPECT_TRUE(form.speedGradeBox->currentText().isEmpty());
    // Filled combo boxes show their first item; the indexes that are stored count from there.
    for (QComboBox* box : dialog->findChildren<QComboBox*>()) {
        if (box != form.speedGradeBox) {
            EXPECT_EQ(box->currentIndex(), 0) << box->objectName().toStdString();
        }
    }
}

}  // namespace
