#pragma once

#include <QString>
#include <QStringList>

// Small pieces of text that every section of the netlist block is made of.
namespace LaneTapUI::NetlistText {

// Every line of the statement but the last ends in this; the last loses the backslash and the
// line feed and keeps the blank.
inline const QString lineContinuation = QStringLiteral(" \\\n");

// One line of a list section: `section`[n] = list("field", "field", ...) followed by the line
// continuation. Fields are written as they stand, without escaping.
inline QString listLine(const QString& section, int n, const QStringList& fields) {
    return section + QLatin1Char('[') + QString::number(n) + QStringLiteral("] = list(\"") +
           fields.join(QStringLiteral("\", \"")) + QStringLiteral("\")") + lineContinuation;
}

// Hands a warning to the host whole, with whatever line end the text carries.
void reportWarning(const QString& text);

}  // namespace LaneTapUI::NetlistText
