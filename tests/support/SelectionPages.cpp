#include "support/SelectionPages.h"

namespace lanetap_test {

QByteArray busDesign(const QString& probeParameters, const QStringList& memoryPins,
                     bool withMemory) {
    const QStringList pins{"DQ2", "DQ10", "DQS_t0", "DQS_c0", "DQS_t1", "DQS_c1", "CK_t0", "CK_c0"};
    QStringList parts{ddrPart(
        "U1", "DDR_Controller", "U1",
        R"("DDRIbisFile":"c.ibs","RefDesName":"U1","RefDesDQM":"x8","DQSIndex":"Continuous",)"
        R"("DataMode":"read","SimulationMode":"transient","BurstMode":"No BURST",)"
        R"("DataRate":"3200","DataRateUnit":"Mbps","DataRateType":"1T")",
        pins, {0, 1})};
    if (withMemory) {
        parts << ddrPart("U2", "DDR_Memory", "U2",
                         R"("DDRIbisFile":"m.ibs","RefDesName":"U2","RefDesDQM":"x8",)"
                         R"("DQSIndex":"Continuous","DieMode":"No")",
                         memoryPins.isEmpty() ? pins + QStringList{"DQ17"} : memoryPins, {0, 1});
    }
    return designText(parts << probeInstance("X1", probeParameters));
}

namespace {

QChar colourCode(const QBrush& brush) {
    const QList<QColor> known{Qt::red, Qt::black, Qt::darkGreen};
    const int found = brush.style() == Qt::NoBrush ? 3 : known.indexOf(brush.color());
    return QString("rkg-?").at(found < 0 ? 4 : found);
}

QString dumpItem(const QTreeWidgetItem* item, QStringList path, bool keyed) {
    path << item->text(0);
    const QString key = path.size() == 2 ? path[1] : path.join("_");
    const QString parent = item->parent() ? item->parent()->text(0) : QString();
    QString text = item->text(0);
    if (!item->text(1).isEmpty() && item->text(1) != parent) {
        text += "[" + item->text(1) + "]";
    }
    if (keyed && item->text(2) != key) {
        text += "=" + item->text(2);
    }
    const QString colours =
        QString(colourCode(item->foreground(0))) + colourCode(item->foreground(1));
    if (colours != (item->text(1).isEmpty() ? "--" : "-g")) {
        text += "!" + colours;
    }
    QStringList children;
    for (int i = 0; i < item->childCount(); ++i) {
        children << dumpItem(item->child(i), path, keyed);
    }
    return children.isEmpty() ? text : text + "(" + children.join(" ") + ")";
}

QTreeWidgetItem* itemAt(QTreeWidget* tree, const QStringList& path) {
    QTreeWidgetItem* item = tree->invisibleRootItem();
    for (int level = 0; item && level < path.size(); ++level) {
        QTreeWidgetItem* parent = item;
        item = nullptr;
        for (int i = 0; i < parent->childCount() && !item; ++i) {
            item = parent->child(i)->text(0) == path[level] ? parent->child(i) : nullptr;
        }
    }
    return item;
}

}  // namespace

QString dump(QTreeWidget* tree, const QStringList& path) {
    QTreeWidgetItem* item = itemAt(tree, path);
    bool keyed = false;  // a flat list carries no keys
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        keyed = keyed || tree->topLevelItem(i)->childCount() > 0;
    }
    if (!item || !path.isEmpty()) {
        return item ? dumpItem(item, path.mid(0, path.size() - 1), keyed) : "(none)";
    }
    QStringList items;
    for (int i = 0; i < item->childCount(); ++i) {
        items << dumpItem(item->child(i), {}, keyed);
    }
    return items.join(" ");
}

QString currentPath(QTreeWidget* tree) {
    QStringList path;
    for (QTreeWidgetItem* item = tree->currentItem(); item; item = item->parent()) {
        path.prepend(item->text(0));
    }
    return path.join("/");
}

QString canonical(const QString& stored, int fixed) {
    QStringList records;
    for (const QString& record : stored.split(',', Qt::SkipEmptyParts)) {
        QStringList words = record.split(' ', Qt::SkipEmptyParts);
        QStringList sorted = words.mid(fixed);
        sorted.sort();
        records << (words.mid(0, fixed) + sorted).join(" ");
    }
    records.sort();
    return records.join(",");
}

void Pages::act(const QString& treeName, const QStringList& path, const QString& button) {
    QTreeWidgetItem* item = path.isEmpty() ? nullptr : itemAt(tree(treeName), path);
    ASSERT_TRUE(item || path.isEmpty()) << (treeName + ": " + path.join("/")).toStdString();
    tree(treeName)->setCurrentItem(item);
    if (!button.isEmpty()) {
        press(button);
    }
}

}  // namespace lanetap_test
