// The designer form of the setup dialog: every named widget that shows a text or holds items, with
// its class and what it shows, in one table walked in one loop. A widget the table does not know
// fails the test as surely as one it misses.

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTabBar>

#include "ui_LaneTapQtDialog.h"

namespace {

// Rows "class:name=text", ";" between two; the class by its letter below. Items of a combo box or
// list, tree columns, tabs and pages stand with "|" between two. Unit boxes and the Add and Remove
// buttons between two trees follow a rule instead (see the test).
const QMap<QChar, QString> kClasses = {
    {'L', "QLabel"},      {'B', "QPushButton"},    {'C', "QCheckBox"},
    {'G', "QGroupBox"},   {'T', "QTreeWidget"},    {'X', "QComboBox"},
    {'W', "QListWidget"}, {'S', "QStackedWidget"}, {'A', "QTabWidget"}};

const char* const kRows =
    "L:instanceLabel=Instance Name;S:stackedWidget=selectWriteLevelingPage|writeLevelingPage|"
    "measurementsPage;C:writeLevelingCheckBox=Check box to use this probe for write leveling;"
    "A:writeLevelingTabs=Select Signals|Select Reference Signal;"
    "T:wlSelectSignalAvailableSignalTree=Available Signals|Instances;"
    "T:wlSelectSignalSelectedSignalTree=Selected Signals|Instances;"
    "T:wlSelectRefSignalSelectedSignalTree=Selected Signals|Instances;"
    "G:wlRefSignalSelectionGroup=Reference signal selection for selected write leveling signals;"
    "T:wlSelectRefSignalAvailableRefSignalTree=Available Signals|Instances;"
    "T:wlSelectRefSignalSelectedRefSignalTree=Selected Reference Signal|Instances;"
    "A:measurementTabs=Setup Probe|Select Signals|Select Measurements|Select Reference Signal|"
    "Select Compliance Measurements;W:thresholdListWidget=Test Environment Setup|Supply Voltage|"
    "Single Ended Input (DQ)|Single Ended Input (CA)|Single Ended Input (DQS)|Single Ended Input "
    "(CK)|Single Ended Output|Differential Input (DQS)|Differential Input (CK)|Differential "
    "Output;S:thresholdStackedWidget=testEnvironmentPage|supplyVoltagePage|dqInputPage|"
    "caInputPage|singleEndedDqsPage|singleEndedCkPage|singleEndedOutputPage|dqsInputPage|"
    "ckInputPage|differentialOutputPage;G:signalThresholdGroup=Signal Thresholds Setting;"
    "L:label=DQS Signal Mode;X:dqsSignalModeBox=Continuous|Burst;L:label_2=Mode of Operation;"
    "X:modeOfOperationBox=Read|Write;L:label_4=DRAM Type;X:dramTypeBox=DDR4|LPDDR4;"
    "L:label_5=Speed Grade;X:speedGradeBox=;L:label_54=Target BER For Mask Margin;"
    "L:label_46=Compliance Waveform Interpolation Time Resolution;L:label_43=Eye Histogram Time "
    "Resolution;L:label_44=Eye Histogram Amplitude Resolution;L:label_3=VDD ;L:label_9=VDDQ;"
    "L:label_18=VDD1;L:label_19=VDD2;L:label_10=VTT;C:internalVrefDQCheckBox=Use internally "
    "computed VrefDQ;L:label_51=Group by;X:groupDQSignalBox=Bit|Nibble|Byte;L:label_41=Input "
    "reference voltage VrefDQ;L:label_21=AC input logic HIGH voltage VIH_DQ(AC);"
    "L:label_36=VrefDQ +;L:label_23=AC input logic LOW voltage VIL_DQ(AC);L:label_37=VrefDQ - ;"
    "L:label_20=DC input logic HIGH voltage VIH_DQ(DC);L:label_47=VrefDQ + ;L:label_22=DC input "
    "logic LOW voltage VIL_DQ(DC);L:label_50=VrefDQ - ;L:label_39=Rx input timing window TdiVW;"
    "X:tdivwDQTBox=UI;C:internalVrefCACheckBox=Use internally computed VrefCA;L:label_52=Group "
    "by;X:groupCASignalBox=Individual|All;L:label_42=Input reference voltage VrefCA;"
    "L:label_24=AC input logic HIGH voltage VIH_CA(AC);L:label_16=VrefCA +;L:label_25=AC input "
    "logic LOW voltage VIL_CA(AC);L:label_17=VrefCA -;L:label_26=DC input logic HIGH voltage "
    "VIH_CA(DC);L:label_32=VrefCA +;L:label_27=DC input logic LOW voltage VIL_CA(DC);"
    "L:label_33=VrefCA -;L:label_40=Rx input timing window TciVW;X:tcivwCATBox=UI;"
    "L:label_14=Single ended input HIGH voltage SE_High (DQS);L:label_15=Single ended input LOW "
    "voltage SE_Low (DQS);L:label_30=Single ended input HIGH voltage SE_High (CK);"
    "L:label_31=Single ended input LOW voltage SE_Low (CK);L:label_6=AC output logic HIGH "
    "voltage VOH_AC;L:label_7=AC output logic LOW voltage VOL_AC;L:label_8=DC output logic HIGH "
    "voltage VOH_DC;L:label_11=DC output logic LOW voltage VOL_DC;L:label_48=AC Differential "
    "input HIGH voltage VIH_diff_ac (DQS);L:label_49=AC Differential input LOW voltage "
    "VIL_diff_ac (DQS);L:label_12=DC Differential input HIGH voltage VIH_diff (DQS);"
    "L:label_13=DC Differential input LOW voltage VIL_diff (DQS);L:label_29=AC Differential "
    "input HIGH voltage VIH_diff_ac (CK);L:label_28=AC Differential input LOW voltage "
    "VIL_diff_ac (CK);L:label_38=DC Differential input HIGH voltage VIH_diff (CK);L:label_45=DC "
    "Differential input LOW voltage VIL_diff (CK);L:label_35=Differential output HIGH voltage "
    "VOH_diff;L:label_34=Differential output LOW voltage VOL_diff;"
    "T:selectSignalAvailableSignalTree=Available Signals|Instances;"
    "T:selectSignalSelectedSignalTree=Selected Signals|Instances;"
    "T:selectMeasurementSelectedSignalTree=Selected Signals|Instances;"
    "G:measurementSelectionGroup=Select Measurements for Selected Signal:;"
    "T:selectMeasurementAvailableMeasurementTree=Available Measurements;"
    "T:selectMeasurementSelectedMeasurementTree=Selected Measurements;"
    "L:measurementDescriptionLabel=Description:\nClick on an available/selected measurement in "
    "the list above.;T:selectRefSignalSelectedSignalTree=Selected Signals|Instances;"
    "T:selectRefSignalSelectedMeasurementTree=Selected Measurements;"
    "G:RefSignalSelectionGroup=Select Reference Signal for Selected Signal-Measurement Pair:;"
    "T:selectRefSignalAvailableRefSignalTree=Available Signals|Instances;"
    "T:selectRefSignalSelectedRefSignalTree=Selected Reference Signal|Instances;"
    "C:enableComplianceCheckBox=Enable Compliance Measurements;G:complianceGroup=;"
    "C:enableScreenshots=Enable Capturing Screenshots;C:saveToPDFCheckBox=Save Compliance "
    "Results to PDF in Specified Directory;B:browsePDFDirButton=Browse PDF Directory;"
    "T:selectComplianceSelectedSignalTree=Signal Type|Instances of Models;"
    "G:complianceMeasurementsGroup=Compliance Measurement Selection;"
    "T:selectComplianceAvailableMeasurementTree=Available Compliance Measurement;"
    "T:selectComplianceSelectedMeasurementTree=Selected Compliance Measurement;"
    "L:complianceDescriptionLabel=;B:backButton=Back;B:applyButton=Apply;B:nextButton=Next;"
    "B:finishButton=Finish;B:cancelButton=Cancel;B:helpButton=Help";

// "class=text" of a widget that shows a text or holds items, null for any other widget.
QString shown(const QWidget* widget) {
    QStringList items;
    if (const auto* tabs = qobject_cast<const QTabWidget*>(widget)) {
        for (int i = 0; i < tabs->count(); ++i) {
            items << tabs->tabText(i);
        }
    } else if (const auto* stack = qobject_cast<const QStackedWidget*>(widget)) {
        for (int i = 0; i < stack->count(); ++i) {
            items << stack->widget(i)->objectName();
        }
    } else if (const auto* tree = qobject_cast<const QTreeWidget*>(widget)) {
        for (int i = 0; i < tree->columnCount(); ++i) {
            items << tree->headerItem()->text(i);
        }
    } else if (const auto* box = qobject_cast<const QComboBox*>(widget)) {
        for (int i = 0; i < box->count(); ++i) {
            items << box->itemText(i);
        }
    } else if (const auto* list = qobject_cast<const QListWidget*>(widget)) {
        for (int i = 0; i < list->count(); ++i) {
            items << list->item(i)->text();
        }
    } else if (qobject_cast<const QLabel*>(widget) ||
               qobject_cast<const QAbstractButton*>(widget)) {
        items << widget->property("text").toString();
    } else if (qobject_cast<const QGroupBox*>(widget)) {
        items << widget->property("title").toString();
    } else {
        return QString();
    }
    return QString(widget->metaObject()->className()) + "=" + items.join('|');
}

}  // namespace

TEST(DialogForm, EveryWidgetThatShowsSomethingWithItsClassAndTexts) {
    QWidget dialog;
    Ui::LaneTapQtDialog form;
    form.setupUi(&dialog);
    EXPECT_EQ(dialog.windowTitle(), "LaneTapWidget");
    QMap<QString, QString> expected;
    for (const QString& row : QString(kRows).split(';')) {
        expected[row.mid(2).section('=', 0, 0)] = kClasses[row[0]] + "=" + row.section('=', 1);
    }
    for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
        const QString name = widget->objectName();
        // Qt names some parts of its own widgets, such as the scroll buttons of a tab bar.
        if (name.isEmpty() || name.startsWith("qt_") || qobject_cast<QTabBar*>(widget->parent()) ||
            shown(widget).isNull()) {
            continue;
        }
        if (name.endsWith("VBox")) {
            expected[name] = "QComboBox=None|fV|pV|nV|uV|mV|V|kV";
        } else if (name.contains(QRegularExpression("^(wl)?[aA]dd\\w+Button$"))) {
            expected[name] = "QPushButton=>> Add >>";
        } else if (name.contains(QRegularExpression("^(wl)?[rR]emove\\w+Button$"))) {
            expected[name] = "QPushButton=<< Remove <<";
        }
        EXPECT_EQ(shown(widget).toStdString(), expected.take(name).toStdString())
            << name.toStdString();
    }
    EXPECT_EQ(QStringList(expected.keys()).join(' ').toStdString(), "") << "rows without a widget";
}
