#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <initializer_list>

// Small pieces of text that every section of the netlist block is made of. The block is built
// as UTF-8 bytes, the form in which it leaves the plug-in: a board gives some megabytes of it.
namespace LaneTapUI::NetlistText {

// Every line of the statement but the last ends in this; the last loses the backslash and the
// line feed and keeps the blank.
inline constexpr char lineContinuation[] = " \\\n";

// Appends `field` in UTF-8.
void appendText(QByteArray& text, QStringView field);
void appendNumber(QByteArray& text, int number);

// Appends one line of a list section to `text`: `section`[n] = list("field", "field", ...)
// followed by the line continuation. Fields are written as they stand, without escaping.
template <class Fields>
void appendListLine(QByteArray& text, const char* section, int n, const Fields& fields) {
    // A board's block has tens of thousands of lines: the pieces are appended with their sizes.
    static constexpr char open[] = "] = list(\"";
    static constexpr char between[] = "\", \"";
    static constexpr char close[] = "\")";
    text += section;
    text += '[';
    appendNumber(text, n);
    text.append(open, sizeof open - 1);
    bool first = true;
    for (const auto& field : fields) {
        if (!first) {
            text.append(between, sizeof between - 1);
        }
        first = false;
        appendText(text, field);
    }
    text.append(close, sizeof close - 1);
    text.append(lineContinuation, sizeof lineContinuation - 1);
}

inline void appendListLine(QByteArray& text, const char* section, int n,
                           std::initializer_list<QStringView> fields) {
    appendListLine<std::initializer_list<QStringView>>(text, section, n, fields);
}

// Hands a warning to the host whole, with whatever line end the text carries.
void reportWarning(const QString& text);

}  // namespace LaneTapUI::NetlistText
