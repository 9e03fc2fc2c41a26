// The pieces the netlist block is written with: fields and numbers come out as Qt's own
// conversions give them.
#include <gtest/gtest.h>

#include <QHash>
#include <QStringList>
#include <algorithm>
#include <climits>
#include <random>
#include <vector>

#include "netlist/HashOrder.h"
#include "netlist/NetlistText.h"

using LaneTapUI::NetlistText::appendNumber;
using LaneTapUI::NetlistText::appendText;

TEST(NetlistText, FieldsAndNumbersMatchQtsConversions) {
    // ASCII is copied; from the first character past it on, here the lowest one, the field is
    // converted, characters outside the basic plane included.
    const QString fields[] = {QString(), "DQ_Ch0_U2_DQ0", QString(QChar(0x7f)),
                              QString(QChar(0x80)) + "x" + QChar(0xe9),
                              QString::fromUtf8("n\xc3\xa9x\xf0\x9f\x98\x80")};
    for (const QString& field : fields) {
        QByteArray text = "line ";
        appendText(text, field);
        EXPECT_EQ(text, "line " + field.toUtf8()) << field.toStdString();
    }
    for (const int number : {0, 7, -12, INT_MAX, INT_MIN}) {
        QByteArray text = "n";
        appendNumber(text, number);
        EXPECT_EQ(text, "n" + QByteArray::number(number));
    }
}

TEST(HashOrder, WalksAsAQHashOfTheSameKeys) {
    // Sizes around the first growths and one of a board's selection; keys in a shuffled order.
    std::mt19937 random(7);
    for (int size : {0, 1, 16, 17, 18, 35, 400, 70000}) {
        SCOPED_TRACE(size);
        QStringList keys;
        for (int i = 0; i < size; ++i) {
            keys << QStringLiteral("DQ_Ch%1_U%2_DQ%3").arg(i % 8).arg(i / 8).arg(random() % 64);
        }
        keys.removeDuplicates();
        std::shuffle(keys.begin(), keys.end(), random);
        QHash<QString, int> hash;
        std::vector<uint> hashes;
        for (const QString& key : qAsConst(keys)) {
            hash.insert(key, 0);
            hashes.push_back(qHash(key, uint(qGlobalQHashSeed())));
        }
        QStringList walked;
        for (int position : LaneTapUI::qHashWalkOrder(hashes)) {
            walked << keys[position];
        }
        EXPECT_EQ(walked, hash.keys());
    }
}
