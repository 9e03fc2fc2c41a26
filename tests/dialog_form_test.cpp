// The designer form of the setup dialog: every named widget that shows a text or holds items, with
// its class and what it shows, in one table walked in one loop. A widget the table does not know
// fails the test as surely as one it misses.

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTabBar>

#include "parameters/StoredKeys.h"
#include "standin/ItemDefinition.h"
#include "support/TestSupport.h"
#include "ui_LaneTapQtDialog.h"

namespace {

// The rows of tests/data/form.txt, "class:name=text" one a line; the class by its letter below.
// Items of a combo box or list, tree columns, tabs and pages stand with "|" between two. Unit boxes
// and the Add and Remove buttons between two trees follow a rule instead (see the test).
const QMap<QChar, QString> kClasses = {
    {'L', "QLabel"},      {'B', "QPushButton"},    {'C', "QCheckBox"},
    {'G', "QGroupBox"},   {'T', "QTreeWidget"},    {'X', "QComboBox"},
    {'W', "QListWidget"}, {'S', "QStackedWidget"}, {'A', "QTabWidget"}};

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
    const QString rows =
        QString::fromUtf8(lanetap_test::readBytes(LANETAP_SOURCE_DIR "/tests/data/form.txt"));
    for (QString row : rows.split('\n', Qt::SkipEmptyParts)) {
        row.replace("\\n", "\n");  // a line end within a text stands as \n
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

namespace {

// The stored keys of a probe are those of its item definition, and the items a key names by index
// or by text are the items of its box in the form, in order.
TEST(DialogForm, StoredKeysAreTheItemDefinitionsWithTheFormsItems) {
    QStringList keys;
    for (const LaneTapUI::StoredKey& key : LaneTapUI::storedKeys()) {
        keys << key.key;
    }
    QStringList defined;
    for (const auto& entry : standin::probeItemDefinition()) {
        defined << QString::fromStdString(entry.first);
    }
    keys.sort();
    EXPECT_EQ(keys, defined);

    QWidget widget;
    Ui::LaneTapQtDialog form;
    form.setupUi(&widget);
    const std::pair<const char*, QWidget*> boxes[] = {
        {"dramType", form.dramTypeBox},           {"modeOfOperation", form.modeOfOperationBox},
        {"dqsSignalMode", form.dqsSignalModeBox}, {"GroupDQBox", form.groupDQSignalBox},
        {"GroupCABox", form.groupCASignalBox},    {"TabWidgetTabNumber", form.measurementTabs}};
    for (const auto& [key, box] : boxes) {
        QStringList items;
        if (const auto* combo = qobject_cast<QComboBox*>(box)) {
            for (int i = 0; i < combo->count(); ++i) {
                items << combo->itemText(i);
            }
        } else if (const auto* tabs = qobject_cast<QTabWidget*>(box)) {
            for (int i = 0; i < tabs->count(); ++i) {
                items << tabs->tabText(i);
            }
        }
        EXPECT_EQ(LaneTapUI::findStoredKey(key)->items, items) << key;
    }
    EXPECT_EQ(LaneTapUI::findStoredKey("StackWidgetPageNumber")->items.size(),
              form.stackedWidget->count());
}

}  // namespace
