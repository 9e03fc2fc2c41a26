#include "support/SelectionPages.h"

#include <QRegularExpression>
#include <QTest>
#include <QTreeWidget>

#include "support/DialogFixture.h"

namespace lanetap_test {

namespace {

const QStringList sharedPins{"DQ2",    "DQ10",   "DQS_t0", "DQS_c0",
                             "DQS_t1", "DQS_c1", "CK_t0",  "CK_c0"};

// One DDR instance whose designator is its name, with every pin on every channel.
QString ddrInstance(const QString& name, const QString& cell, const QString& parameters,
                    const QStringList& pins) {
    QStringList terminals;
    QStringList ports;
    for (int channel : {0, 1}) {
        for (const QString& pin : pins) {
            const QString port = QString("%1_%2").arg(pin).arg(channel);
            QString family = pin;
            family.remove(QRegularExpression("\\d+$"));
            const QString index = pin.mid(family.size());
            terminals << QString(R"({"name":"%1","net":"n_%2_%1"})").arg(port, name);
            ports << QString(R"({"port":"%1","pin":"%2","refDes":"%3","channel":%4,)"
                             R"("signal":"%5","index":%6})")
                         .arg(port, pin, name)
                         .arg(channel)
                         .arg(family, index);
        }
    }
    return QString(R"({"name":"%1","cell":"%2","library":"ddr","parameters":{%3},)"
                   R"("terminals":[%4],"ddrPorts":[%5]})")
        .arg(name, cell, parameters, terminals.join(","), ports.join(","));
}

}  // namespace

QByteArray busDesign(const QString& probeParameters) {
    const QString controller = ddrInstance(
        "U1", "DDR_Controller",
        R"("DDRIbisFile":"controller.ibs","RefDesName":"U1","RefDesDQM":"x8",)"
        R"("DQSIndex":"Continuous","DataMode":"read","SimulationMode":"transient",)"
        R"("BurstMode":"No BURST","DataRate":"3200","DataRateUnit":"Mbps","DataRateType":"1T")",
        sharedPins);
    const QString memory =
        ddrInstance("U2", "DDR_Memory",
                    R"("DDRIbisFile":"memory.ibs","RefDesName":"U2","RefDesDQM":"x8",)"
                    R"("DQSIndex":"Continuous","DieMode":"No")",
                    sharedPins + QStringList{"DQ17"});
    return designText({controller, memory, probeInstance("X1", probeParameters)});
}

QStringList busSignalKeys() {
    QStringList keys;
    for (const QString& refDes : QStringList{"U1", "U2"}) {
        for (const QString& channel : QStringList{"Ch0", "Ch1"}) {
            QStringList signalIds{"DQ2", "DQ10", "DQS0", "DQS1", "CK0"};
            if (refDes == QLatin1String("U2")) {
                signalIds << "DQ17";
            }
            for (const QString& signalId : signalIds) {
                QString type = signalId;
                type.remove(QRegularExpression("\\d+$"));
                keys << QString("%1_%2_%3_%4").arg(type, channel, refDes, signalId);
            }
        }
    }
    return keys;
}

QTreeWidgetItem* itemAt(QTreeWidget* tree, const QStringList& path) {
    QTreeWidgetItem* item = tree->invisibleRootItem();
    for (const QString& text : path) {
        QTreeWidgetItem* next = nullptr;
        for (int i = 0; i < item->childCount() && !next; ++i) {
            if (item->child(i)->text(0) == text) {
                next = item->child(i);
            }
        }
        if (!next) {
            return nullptr;
        }
        item = next;
    }
    return item;
}

QStringList childTexts(QTreeWidget* tree, const QStringList& path) {
    QStringList texts;
    if (QTreeWidgetItem* item = itemAt(tree, path)) {
        for (int i = 0; i < item->childCount(); ++i) {
            texts << item->child(i)->text(0);
        }
    }
    return texts;
}

QSet<QString> leafKeys(QTreeWidget* tree) {
    QSet<QString> keys;
    QList<QTreeWidgetItem*> pending{tree->invisibleRootItem()};
    while (!pending.isEmpty()) {
        QTreeWidgetItem* item = pending.takeLast();
        if (item->childCount() == 0 && item->parent()) {
            keys.insert(item->text(2));
        }
        for (int i = 0; i < item->childCount(); ++i) {
            pending << item->child(i);
        }
    }
    return keys;
}

bool choose(QTreeWidget* tree, const QStringList& path) {
    QTreeWidgetItem* item = itemAt(tree, path);
    if (!item || path.isEmpty()) {
        return false;
    }
    tree->setCurrentItem(item);
    return true;
}

void clickItem(QTreeWidget* tree, QTreeWidgetItem* item) {
    tree->scrollToItem(item);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                      tree->visualItemRect(item).center());
}

QSet<QString> storedList(const QString& text) {
    QSet<QString> items;
    for (const QString& item : text.split(',', Qt::SkipEmptyParts)) {
        items.insert(item);
    }
    return items;
}

QHash<QString, QSet<int>> storedIdMap(const QString& text) {
    QHash<QString, QSet<int>> map;
    for (const QString& record : text.split(',', Qt::SkipEmptyParts)) {
        QStringList parts = record.split(' ', Qt::SkipEmptyParts);
        if (parts.isEmpty()) {
            continue;
        }
        QSet<int>& ids = map[parts.takeFirst()];
        for (const QString& id : parts) {
            ids.insert(id.toInt());
        }
    }
    return map;
}

QHash<QString, QHash<int, QSet<QString>>> storedReferenceMap(const QString& text) {
    QHash<QString, QHash<int, QSet<QString>>> map;
    for (const QString& record : text.split(',', Qt::SkipEmptyParts)) {
        QStringList parts = record.split(' ', Qt::SkipEmptyParts);
        if (parts.size() < 2) {
            continue;
        }
        const QString key = parts.takeFirst();
        const int id = parts.takeFirst().toInt();
        map[key][id] = QSet<QString>(parts.begin(), parts.end());
    }
    return map;
}

}  // namespace lanetap_test
