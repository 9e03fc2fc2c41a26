// The pieces the netlist block is written with: fields and numbers come out as Qt's own
// conversions give them.
#include <gtest/gtest.h>

#include <QStringList>
#include <climits>

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
