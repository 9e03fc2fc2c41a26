#include "netlist/NetlistText.h"

#include <charconv>

#include "host/Database.h"

namespace LaneTapUI::NetlistText {

void appendText(QByteArray& text, QStringView field) {
    // Names and nets are ASCII nearly always: those characters are copied as they are, and the
    // rest of the field, from its first other character on, is converted.
    const int start = text.size();
    text.resize(start + field.size());
    char* out = text.data() + start;
    for (int i = 0; i < field.size(); ++i) {
        const char16_t c = field[i].unicode();
        if (c >= 0x80) {
            text.resize(start + i);
            text += field.mid(i).toUtf8();
            return;
        }
        out[i] = static_cast<char>(c);
    }
}

void appendNumber(QByteArray& text, int number) {
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    text.append(digits, static_cast<int>(end - digits));
}

void reportWarning(const QString& text) {
    meridian_report_warning(text.toStdString());
}

}  // namespace LaneTapUI::NetlistText
