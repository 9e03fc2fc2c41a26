// Voltages and pin names on arbitrary text, read both as stored parameters are (byte by byte) and
// as names from a design are (UTF-8). A voltage parses or, for a blank text, throws the one error
// it is made to throw and keeps what it held; a parsed voltage loses no character but blanks and
// comes back the same from the text the setup stores for it. A pin name splits into parts made
// only of its own letters and digits.

#include <QSet>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>

#include "catalogue/VoltageUnits.h"
#include "fuzz/FuzzCheck.h"
#include "parameters/ParamText.h"
#include "parameters/PinName.h"
#include "parameters/VoltageAmplitude.h"

using namespace LaneTapUI;
using lanetap_fuzz::check;
using lanetap_fuzz::fail;
using lanetap_fuzz::shown;

namespace {

const char* const blankVoltageError = "setVoltageAmplitudeAndUnits LaneTapVoltage failed";

// Parses `text` into `voltage`; false when it throws the error of a blank text.
bool parse(VoltageAmplitude& voltage, const QString& text) {
    try {
        voltage.setVoltageAmplitudeAndUnits(text);
        return true;
    } catch (const std::runtime_error& error) {
        check(std::string(error.what()) == blankVoltageError,
              "parsing " + shown(text) + " threw " + shown(std::string(error.what())));
        return false;
    }
}

// The text the setup stores for a voltage: the amplitude, then a blank and the unit unless the
// unit is "None".
QString storedText(const VoltageAmplitude& voltage) {
    return voltage.units == QLatin1String("None") ? voltage.amplitude
                                                  : voltage.amplitude + ' ' + voltage.units;
}

void checkVoltage(const QString& text) {
    const QStringList words = splitOnWhiteSpace(text);
    VoltageAmplitude voltage;
    voltage.amplitude = QStringLiteral("before");
    voltage.units = QStringLiteral("mV");
    if (!parse(voltage, text)) {
        check(words.isEmpty(), "the text " + shown(text) + " has words but does not parse");
        check(voltage.amplitude == QLatin1String("before") && voltage.units == QLatin1String("mV"),
              "a failed parse changed the voltage");
        return;
    }
    check(!words.isEmpty(), "the blank text " + shown(text) + " parsed");

    check(voltageUnitsByName().contains(voltage.units),
          "the unit " + shown(voltage.units) + " of " + shown(text) + " is no unit");
    check(splitOnWhiteSpace(voltage.amplitude).join(QString()) == voltage.amplitude,
          "the amplitude " + shown(voltage.amplitude) + " holds a blank");
    // Only blanks are dropped: the words, joined, are the amplitude and the unit that was read.
    const bool unitRead = words.last() == voltage.units;
    check(words.join(QString()) == voltage.amplitude + (unitRead ? voltage.units : QString()),
          "parsing " + shown(text) + " lost characters: amplitude " + shown(voltage.amplitude) +
              ", unit " + shown(voltage.units));
    check(unitRead || voltage.units == QLatin1String("None"),
          "the unit " + shown(voltage.units) + " is not the last word of " + shown(text));
    check(unitRead || !voltageUnitsByName().contains(words.last()),
          "the last word of " + shown(text) + " is a unit but was not read as one");

    // The unit's code names the same unit.
    VoltageAmplitude coded;
    coded.setUnitCode(voltage.unitCode());
    check(coded.units == voltage.units, "the unit " + shown(voltage.units) +
                                            " comes back from its code as " + shown(coded.units));

    // What the setup stores for the voltage reads back as the same voltage, unless the amplitude
    // is itself a unit text ("None" typed as a value): stored without a unit, as a voltage of
    // unit None is, the one word reads back as the unit. That is the stored form's own limit.
    const QString stored = storedText(voltage);
    if (!splitOnWhiteSpace(stored).isEmpty() && !voltageUnitsByName().contains(voltage.amplitude)) {
        VoltageAmplitude reread;
        check(parse(reread, stored), "the stored text " + shown(stored) + " does not parse");
        check(reread.amplitude == voltage.amplitude && reread.units == voltage.units,
              "the voltage of " + shown(text) + " (amplitude " + shown(voltage.amplitude) +
                  ", unit " + shown(voltage.units) + ") is stored as " + shown(stored) +
                  " and reads back as amplitude " + shown(reread.amplitude) + ", unit " +
                  shown(reread.units));
    }
}

void checkPinName(const QString& pin) {
    const PinNameParts parts = splitPinName(pin);
    QString digits;
    int letters = 0;
    int polarityLetters = 0;
    for (int i = 0; i < pin.size(); ++i) {
        if (pin.at(i).isDigit()) {
            digits += pin.at(i);
        } else if (pin.at(i).isLetter()) {
            ++letters;
            polarityLetters += i > 0 && pin.at(i - 1) == QLatin1Char('_');
        }
    }
    check(parts.index == digits, "the index of " + shown(pin) + " is " + shown(parts.index) +
                                     ", not its digits " + shown(digits));
    for (const QChar c : parts.group) {
        check(c.isLetter(), "the group of " + shown(pin) + " holds a non-letter");
    }
    // Every letter lands in the group or sets the polarity.
    check(parts.group.size() + polarityLetters == letters,
          "the letters of " + shown(pin) + " do not add up in group " + shown(parts.group));
    check(polarityLetters > 0 || parts.polarity == QLatin1String("s"),
          "the polarity of " + shown(pin) + " is set without a letter behind '_'");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const char* bytes = reinterpret_cast<const char*>(data);
    const int length = static_cast<int>(size);
    try {
        for (const QString& text :
             {QString::fromLatin1(bytes, length), QString::fromUtf8(bytes, length)}) {
            checkVoltage(text);
            checkPinName(text);
        }
    } catch (const std::exception& error) {
        fail(std::string("unexpected exception: ") + error.what());
    }
    return 0;
}
