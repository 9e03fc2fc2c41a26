#pragma once

#include <QString>
#include <QStringList>

// Small pieces of text that every section of the netlist block is made of.
namespace LaneTapUI::NetlistText {

// Every line of the statement but the last ends in this; the last loses the backslash and the
// line feed and keeps the blank.
inline const QString lineContinuation = QStringLiteral(" \\\n");

// Appends one line of a list section to `text`: `section`[n] = list("field", "field", ...)
// followed by the line continuation. Fields are written as they stand, without escaping. The
// line goes straight into the block: a board has tens of thousands of them.
inline void appendListLine(QString& text, QLatin1String section, int n, const QStringList& fields) {
    text += section;
    text += QLatin1Char('[');
    text += QString::number(n);
    text += QLatin1String("] = list(\"");
    for (int i = 0; i < fields.size(); ++i) {
        if (i > 0) {
            text += QLatin1String("\", \"");
        }
        text += fields.at(i);
    }
    text += QLatin1String("\")");
    text += lineContinuation;
}

// Hands a warning to the host whole, with whatever line end the text carries.
void reportWarning(const QString& text);

}  // namespace LaneTapUI::NetlistText
