// The designer form of the setup dialog: every named widget with its class, the text it shows
// and the items it holds, and the order of tabs and pages. One table, walked in one loop; a widget
// the table does not know fails the test as surely as one it misses.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTreeWidget>
#include <set>

#include "ui_LaneTapQtDialog.h"

namespace {

const QStringList kUnits = {"None", "fV", "pV", "nV", "uV", "mV", "V", "kV"};

// A widget that shows a text (label, button, check box, line edit, group box title; null for
// none) or holds items (combo box items, tree header labels, list rows).
struct Row {
    const char* name;
    const char* className;
    const char* text;
    QStringList items = {};
};

const std::vector<Row> kRows = {
    {"instanceLabel", "QLabel", "Instance Name"},
    {"writeLevelingCheckBox", "QCheckBox", "Check box to use this probe for write leveling"},
    {"wlSelectSignalAvailableSignalTree", "QTreeWidget", nullptr, {"Available Signals", "Instances"}},
    {"wlAddSignalButton", "QPushButton", ">> Add >>"},
    {"wlRemoveSignalButton", "QPushButton", "<< Remove <<"},
    {"wlSelectSignalSelectedSignalTree", "QTreeWidget", nullptr, {"Selected Signals", "Instances"}},
    {"wlSelectRefSignalSelectedSignalTree", "QTreeWidget", nullptr, {"Selected Signals", "Instances"}},
    {"wlRefSignalSelectionGroup", "QGroupBox", "Reference signal selection for selected write leveling signals"},
    {"wlSelectRefSignalAvailableRefSignalTree", "QTreeWidget", nullptr, {"Available Signals", "Instances"}},
    {"wlAddRefSignalButton", "QPushButton", ">> Add >>"},
    {"wlRemoveRefSignalButton", "QPushButton", "<< Remove <<"},
    {"wlSelectRefSignalSelectedRefSignalTree", "QTreeWidget", nullptr, {"Selected Reference Signal", "Instances"}},
    {"thresholdListWidget", "QListWidget", nullptr, {"Test Environment Setup", "Supply Voltage", "Single Ended Input (DQ)", "Single Ended Input (CA)", "Single Ended Input (DQS)", "Single Ended Input (CK)", "Single Ended Output", "Differential Input (DQS)", "Differential Input (CK)", "Differential Output"}},
    {"signalThresholdGroup", "QGroupBox", "Signal Thresholds Setting"},
    {"label", "QLabel", "DQS Signal Mode"},
    {"dqsSignalModeBox", "QComboBox", nullptr, {"Continuous", "Burst"}},
    {"label_2", "QLabel", "Mode of Operation"},
    {"modeOfOperationBox", "QComboBox", nullptr, {"Read", "Write"}},
    {"label_4", "QLabel", "DRAM Type"},
    {"dramTypeBox", "QComboBox", nullptr, {"DDR4", "LPDDR4"}},
    {"label_5", "QLabel", "Speed Grade"},
    {"label_54", "QLabel", "Target BER For Mask Margin"},
    {"label_46", "QLabel", "Compliance Waveform Interpolation Time Resolution"},
    {"label_43", "QLabel", "Eye Histogram Time Resolution"},
    {"label_44", "QLabel", "Eye Histogram Amplitude Resolution"},
    {"label_3", "QLabel", "VDD "}, {"label_9", "QLabel", "VDDQ"},
    {"label_18", "QLabel", "VDD1"}, {"label_19", "QLabel", "VDD2"},
    {"label_10", "QLabel", "VTT"},
    {"internalVrefDQCheckBox", "QCheckBox", "Use internally computed VrefDQ"},
    {"label_51", "QLabel", "Group by"},
    {"groupDQSignalBox", "QComboBox", nullptr, {"Bit", "Nibble", "Byte"}},
    {"label_41", "QLabel", "Input reference voltage VrefDQ"},
    {"label_21", "QLabel", "AC input logic HIGH voltage VIH_DQ(AC)"},
    {"label_36", "QLabel", "VrefDQ +"},
    {"label_23", "QLabel", "AC input logic LOW voltage VIL_DQ(AC)"},
    {"label_37", "QLabel", "VrefDQ - "},
    {"label_20", "QLabel", "DC input logic HIGH voltage VIH_DQ(DC)"},
    {"label_47", "QLabel", "VrefDQ + "},
    {"label_22", "QLabel", "DC input logic LOW voltage VIL_DQ(DC)"},
    {"label_50", "QLabel", "VrefDQ - "},
    {"label_39", "QLabel", "Rx input timing window TdiVW"},
    {"tdivwDQTBox", "QComboBox", nullptr, {"UI"}},
    {"internalVrefCACheckBox", "QCheckBox", "Use internally computed VrefCA"},
    {"label_52", "QLabel", "Group by"},
    {"groupCASignalBox", "QComboBox", nullptr, {"Individual", "All"}},
    {"label_42", "QLabel", "Input reference voltage VrefCA"},
    {"label_24", "QLabel", "AC input logic HIGH voltage VIH_CA(AC)"},
    {"label_16", "QLabel", "VrefCA +"},
    {"label_25", "QLabel", "AC input logic LOW voltage VIL_CA(AC)"},
    {"label_17", "QLabel", "VrefCA -"},
    {"label_26", "QLabel", "DC input logic HIGH voltage VIH_CA(DC)"},
    {"label_32", "QLabel", "VrefCA +"},
    {"label_27", "QLabel", "DC input logic LOW voltage VIL_CA(DC)"},
    {"label_33", "QLabel", "VrefCA -"},
    {"label_40", "QLabel", "Rx input timing window TciVW"},
    {"tcivwCATBox", "QComboBox", nullptr, {"UI"}},
    {"label_14", "QLabel", "Single ended input HIGH voltage SE_High (DQS)"},
    {"label_15", "QLabel", "Single ended input LOW voltage SE_Low (DQS)"},
    {"label_30", "QLabel", "Single ended input HIGH voltage SE_High (CK)"},
    {"label_31", "QLabel", "Single ended input LOW voltage SE_Low (CK)"},
    {"label_6", "QLabel", "AC output logic HIGH voltage VOH_AC"},
    {"label_7", "QLabel", "AC output logic LOW voltage VOL_AC"},
    {"label_8", "QLabel", "DC output logic HIGH voltage VOH_DC"},
    {"label_11", "QLabel", "DC output logic LOW voltage VOL_DC"},
    {"label_48", "QLabel", "AC Differential input HIGH voltage VIH_diff_ac (DQS)"},
    {"label_49", "QLabel", "AC Differential input LOW voltage VIL_diff_ac (DQS)"},
    {"label_12", "QLabel", "DC Differential input HIGH voltage VIH_diff (DQS)"},
    {"label_13", "QLabel", "DC Differential input LOW voltage VIL_diff (DQS)"},
    {"label_29", "QLabel", "AC Differential input HIGH voltage VIH_diff_ac (CK)"},
    {"label_28", "QLabel", "AC Differential input LOW voltage VIL_diff_ac (CK)"},
    {"label_38", "QLabel", "DC Differential input HIGH voltage VIH_diff (CK)"},
    {"label_45", "QLabel", "DC Differential input LOW voltage VIL_diff (CK)"},
    {"label_35", "QLabel", "Differential output HIGH voltage VOH_diff"},
    {"label_34", "QLabel", "Differential output LOW voltage VOL_diff"},
    {"selectSignalAvailableSignalTree", "QTreeWidget", nullptr, {"Available Signals", "Instances"}},
    {"addSignalButton", "QPushButton", ">> Add >>"},
    {"removeSignalButton", "QPushButton", "<< Remove <<"},
    {"selectSignalSelectedSignalTree", "QTreeWidget", nullptr, {"Selected Signals", "Instances"}},
    {"selectMeasurementSelectedSignalTree", "QTreeWidget", nullptr, {"Selected Signals", "Instances"}},
    {"measurementSelectionGroup", "QGroupBox", "Select Measurements for Selected Signal:"},
    {"selectMeasurementAvailableMeasurementTree", "QTreeWidget", nullptr, {"Available Measurements"}},
    {"addMeasurementButton", "QPushButton", ">> Add >>"},
    {"removeMeasurementButton", "QPushButton", "<< Remove <<"},
    {"selectMeasurementSelectedMeasurementTree", "QTreeWidget", nullptr, {"Selected Measurements"}},
    {"measurementDescriptionLabel", "QLabel", "Description:\nClick on an available/selected measurement in the list above."},
    {"selectRefSignalSelectedSignalTree", "QTreeWidget", nullptr, {"Selected Signals", "Instances"}},
    {"selectRefSignalSelectedMeasurementTree", "QTreeWidget", nullptr, {"Selected Measurements"}},
    {"RefSignalSelectionGroup", "QGroupBox", "Select Reference Signal for Selected Signal-Measurement Pair:"},
    {"selectRefSignalAvailableRefSignalTree", "QTreeWidget", nullptr, {"Available Signals", "Instances"}},
    {"addRefSignalButton", "QPushButton", ">> Add >>"},
    {"removeRefSignalButton", "QPushButton", "<< Remove <<"},
    {"selectRefSignalSelectedRefSignalTree", "QTreeWidget", nullptr, {"Selected Reference Signal", "Instances"}},
    {"enableComplianceCheckBox", "QCheckBox", "Enable Compliance Measurements"},
    {"complianceGroup", "QGroupBox", ""},
    {"enableScreenshots", "QCheckBox", "Enable Capturing Screenshots"},
    {"saveToPDFCheckBox", "QCheckBox", "Save Compliance Results to PDF in Specified Directory"},
    {"browsePDFDirButton", "QPushButton", "Browse PDF Directory"},
    {"selectComplianceSelectedSignalTree", "QTreeWidget", nullptr, {"Signal Type", "Instances of Models"}},
    {"complianceMeasurementsGroup", "QGroupBox", "Compliance Measurement Selection"},
    {"selectComplianceAvailableMeasurementTree", "QTreeWidget", nullptr, {"Available Compliance Measurement"}},
    {"addComplianceButton", "QPushButton", ">> Add >>"},
    {"removeComplianceButton", "QPushButton", "<< Remove <<"},
    {"selectComplianceSelectedMeasurementTree", "QTreeWidget", nullptr, {"Selected Compliance Measurement"}},
    {"complianceDescriptionLabel", "QLabel", ""}, {"backButton", "QPushButton", "Back"},
    {"applyButton", "QPushButton", "Apply"}, {"nextButton", "QPushButton", "Next"},
    {"finishButton", "QPushButton", "Finish"}, {"cancelButton", "QPushButton", "Cancel"},
    {"helpButton", "QPushButton", "Help"},
};

// The other named widgets, as "name:Class"; line edits among them start empty. Every combo box
// whose name ends in "VBox" is a unit box holding the eight unit texts.
const QString kClasses =
    "stackedWidget:QStackedWidget selectWriteLevelingPage:QWidget writeLevelingPage:QWidget "
    "writeLevelingTabs:QTabWidget wlSelectSignalTab:QWidget splitter_2:QSplitter "
    "layoutWidget:QWidget wlSelectRefSignalTab:QWidget splitter_4:QSplitter splitter_3:QSplitter "
    "layoutWidget1:QWidget measurementsPage:QWidget measurementTabs:QTabWidget "
    "setupProbeTab:QWidget splitter_13:QSplitter thresholdStackedWidget:QStackedWidget "
    "testEnvironmentPage:QWidget speedGradeBox:QComboBox supplyVoltagePage:QWidget "
    "dqInputPage:QWidget caInputPage:QWidget singleEndedDqsPage:QWidget "
    "singleEndedCkPage:QWidget singleEndedOutputPage:QWidget dqsInputPage:QWidget "
    "ckInputPage:QWidget differentialOutputPage:QWidget selectSignalTab:QWidget "
    "splitter:QSplitter layoutWidget2:QWidget selectMeasurementTab:QWidget splitter_7:QSplitter "
    "splitter_6:QSplitter splitter_5:QSplitter layoutWidget3:QWidget selectRefSignalTab:QWidget "
    "splitter_9:QSplitter splitter_8:QSplitter layoutWidget4:QWidget selectComplianceTab:QWidget "
    "splitter_14:QSplitter splitter_12:QSplitter splitter_11:QSplitter splitter_10:QSplitter "
    "layoutWidget5:QWidget line_4:QFrame instanceNameEdit:QLineEdit targetBERBox:QLineEdit "
    "interpolationTimeResolutionBox:QLineEdit timeResolutionBox:QLineEdit "
    "amplitudeResolutionBox:QLineEdit vddBox:QLineEdit vddqBox:QLineEdit vdd1Box:QLineEdit "
    "vdd2Box:QLineEdit vttBox:QLineEdit vref_dqBox:QLineEdit vih_dq_acBox:QLineEdit "
    "vil_dq_acBox:QLineEdit vih_dq_dcBox:QLineEdit vil_dq_dcBox:QLineEdit tdivwDQBox:QLineEdit "
    "vref_caBox:QLineEdit vih_ca_acBox:QLineEdit vil_ca_acBox:QLineEdit vih_ca_dcBox:QLineEdit "
    "vil_ca_dcBox:QLineEdit tcivwCABox:QLineEdit se_high_DQSBox:QLineEdit "
    "se_low_DQSBox:QLineEdit se_high_CKBox:QLineEdit se_low_CKBox:QLineEdit voh_acBox:QLineEdit "
    "vol_acBox:QLineEdit voh_dcBox:QLineEdit vol_dcBox:QLineEdit vihDiff_DQS_acBox:QLineEdit "
    "vilDiff_DQS_acBox:QLineEdit vihDiff_DQSBox:QLineEdit vilDiff_DQSBox:QLineEdit "
    "vihDiff_CK_acBox:QLineEdit vilDiff_CK_acBox:QLineEdit vihDiff_CKBox:QLineEdit "
    "vilDiff_CKBox:QLineEdit voh_diffBox:QLineEdit vol_diffBox:QLineEdit pdfDirPath:QLineEdit ";

QString shownText(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        return label->text();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        return button->text();
    }
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) {
        return edit->text();
    }
    const auto* group = qobject_cast<const QGroupBox*>(widget);
    return group ? group->title() : QString();
}

QStringList itemsOf(const QWidget* widget) {
    QStringList items;
    if (const auto* box = qobject_cast<const QComboBox*>(widget)) {
        for (int i = 0; i < box->count(); ++i) {
            items << box->itemText(i);
        }
    } else if (const auto* tree = qobject_cast<const QTreeWidget*>(widget)) {
        for (int i = 0; i < tree->columnCount(); ++i) {
            items << tree->headerItem()->text(i);
        }
    } else if (const auto* list = qobject_cast<const QListWidget*>(widget)) {
        for (int i = 0; i < list->count(); ++i) {
            items << list->item(i)->text();
        }
    }
    return items;
}

TEST(DialogForm, EveryNamedWidgetWithItsClassTextAndItems) {
    QWidget dialog;
    Ui::LaneTapQtDialog form;
    form.setupUi(&dialog);
    EXPECT_EQ(dialog.objectName(), "LaneTapQtDialog");
    EXPECT_EQ(dialog.size(), QSize(898, 652));
    EXPECT_EQ(dialog.windowTitle(), "LaneTapWidget");

    std::set<QString> known;
    const auto check = [&](const QString& name, const char* className, const QString& text,
                           const QStringList& items) {
        SCOPED_TRACE(name.toStdString());
        known.insert(name);
        const QList<QWidget*> found = dialog.findChildren<QWidget*>(name);
        ASSERT_EQ(found.size(), 1);
        EXPECT_STREQ(found.first()->metaObject()->className(), className);
        EXPECT_EQ(shownText(found.first()), text);
        EXPECT_EQ(itemsOf(found.first()), items);
    };
    for (const Row& row : kRows) {
        check(row.name, row.className, QString::fromUtf8(row.text), row.items);
    }
    for (const QString& entry : kClasses.split(' ', Qt::SkipEmptyParts)) {
        const QString name = entry.section(':', 0, 0);
        const QString className = entry.section(':', 1);
        check(name, className.toLatin1().constData(), QString(), QStringList());
    }
    for (QComboBox* box : dialog.findChildren<QComboBox*>(QRegularExpression("VBox$"))) {
        check(box->objectName(), "QComboBox", QString(), kUnits);
    }
    for (QWidget* widget : dialog.findChildren<QWidget*>()) {
        const QString name = widget->objectName();
        // Qt names some parts of its own widgets, such as the scroll buttons of a tab bar.
        const bool qtsOwn = name.startsWith("qt_") || qobject_cast<QTabBar*>(widget->parent());
        if (!name.isEmpty() && !qtsOwn) {
            EXPECT_EQ(known.count(name), 1u) << "a widget the table does not know: "
                                               << name.toStdString();
        }
    }
}

TEST(DialogForm, TabsAndPagesInTheirOrder) {
    QWidget dialog;
    Ui::LaneTapQtDialog form;
    form.setupUi(&dialog);
    const auto pages = [](const QWidget* widget) {
        QStringList names;
        const auto* tabs = qobject_cast<const QTabWidget*>(widget);
        const auto* stack = qobject_cast<const QStackedWidget*>(widget);
        for (int i = 0; i < (tabs ? tabs->count() : stack->count()); ++i) {
            names << (tabs ? tabs->widget(i)->objectName() + ":" + tabs->tabText(i)
                           : stack->widget(i)->objectName());
        }
        return names.join(", ");
    };
    EXPECT_EQ(pages(form.stackedWidget), "selectWriteLevelingPage, writeLevelingPage, measurementsPage");
    EXPECT_EQ(pages(form.writeLevelingTabs),
              "wlSelectSignalTab:Select Signals, wlSelectRefSignalTab:Select Reference Signal");
    EXPECT_EQ(pages(form.measurementTabs),
              "setupProbeTab:Setup Probe, selectSignalTab:Select Signals, "
              "selectMeasurementTab:Select Measurements, "
              "selectRefSignalTab:Select Reference Signal, "
              "selectComplianceTab:Select Compliance Measurements");
    // The threshold rows show the pages of the threshold stack in the same order.
    EXPECT_EQ(pages(form.thresholdStackedWidget),
              "testEnvironmentPage, supplyVoltagePage, dqInputPage, caInputPage, "
              "singleEndedDqsPage, singleEndedCkPage, singleEndedOutputPage, dqsInputPage, "
              "ckInputPage, differentialOutputPage");
}

}  // namespace
