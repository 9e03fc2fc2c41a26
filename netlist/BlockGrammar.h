#pragma once

#include <QString>
#include <QStringView>
#include <string_view>

#include "netlist/BlockSettings.h"

// What the text of the block may hold where it takes a name or a value as it stands. The block
// applies no escaping: a net or instance name goes onto the component line as it is, and a
// stored value onto the settings line, where pairs NAME=VALUE are separated by blanks. Every
// door that lets text into a design (the stand-in's loader, `lanetap set`) asks here.
namespace LaneTapUI::BlockGrammar {

// The longest name, in characters, that a design may give an instance, net, port or pin.
inline constexpr int longestName = 1024;

// Why `name` cannot stand as a name in the block (it is empty or too long, or it holds white
// space, a control or bidirectional-format character, or one of = ; " \ ,), or an empty text
// when it can.
QString nameProblem(QStringView name);
// The same for a name in UTF-8; an ASCII name is looked at without converting it.
QString nameProblem(std::string_view utf8Name);

// Why `value` cannot stand as one value of the settings line in the form `form` takes it, or an
// empty text when it can:
// - Text and Number: a plain value (no white space, no = ; " \, no control or
//   bidirectional-format character; it may be empty), or a quoted value: a double quote, text
//   without double quote, backslash or control character, and a double quote;
// - Quoted: the text the line puts between double quotes;
// - Voltage: a number, or a number, one blank and one of fV pV nV uV mV V kV;
// - Computed: a plain value, for the stored parts a computed setting is made of.
QString valueProblem(SettingForm form, QStringView value);

}  // namespace LaneTapUI::BlockGrammar
