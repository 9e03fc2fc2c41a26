// What the block may carry as it stands: names on its component line and stored values on its
// settings line, where nothing is escaped.

#include <gtest/gtest.h>

#include "netlist/BlockGrammar.h"

namespace {

using LaneTapUI::SettingForm;
namespace BlockGrammar = LaneTapUI::BlockGrammar;

// Each case: the name, then its fault ("" for a name the block can carry). The UTF-8 form of
// the check must agree with the other.
TEST(BlockGrammar, NamesArePlainNetlistNames) {
    const std::pair<QString, const char*> cases[] = {
        {"DQ_Ch0_U2_DQ0", ""},
        {"n_a<1>.µ/x", ""},
        {QString::fromUtf8("U\xf0\x9d\x84\x9e"), ""},  // outside the basic plane
        {"", "is empty"},
        {"U 2", "holds white space"},
        {QString("U") + QChar(0x2028), "holds white space"},
        {QString("U") + QChar(0x0085), "holds a control character"},
        {"U\x01", "holds a control character"},
        {QString("U") + QChar(0x200E), "holds a bidirectional-format character"},
        {QString("U") + QChar(0x202B), "holds a bidirectional-format character"},
        {QString("U") + QChar(0x2069), "holds a bidirectional-format character"},
        {QString("U") + QChar(0x061C), "holds a bidirectional-format character"},
        {"U=2", "holds the character ="},
        {"U;2", "holds the character ;"},
        {"U\"2", "holds the character \""},
        {"U\\2", "holds the character \\"},
        {"U,2", "holds the character ,"},
        {QString(1024, 'x'), ""},
        {QString(1025, 'x'), "is longer than 1024 characters"},
        // Characters, not UTF-16 units, are counted.
        {QString::fromUtf8("\xf0\x9d\x84\x9e").repeated(1024), ""},
        {QString(1025, 'x') + " ", "is longer than 1024 characters"},
    };
    for (const auto& [name, fault] : cases) {
        SCOPED_TRACE(name.left(40).toStdString());
        EXPECT_EQ(BlockGrammar::nameProblem(QStringView(name)).toStdString(), fault);
        const QByteArray utf8 = name.toUtf8();
        EXPECT_EQ(BlockGrammar::nameProblem(std::string_view(utf8.constData(), utf8.size()))
                      .toStdString(),
                  fault);
    }
}

// Each case: the form the settings line takes a value in, the value, and whether the line can
// carry it.
TEST(BlockGrammar, ValuesHaveTheFormOfTheirSetting) {
    const struct {
        SettingForm form;
        QString value;
        bool carried;
    } cases[] = {
        {SettingForm::Text, "", true},
        {SettingForm::Text, "/tmp/results", true},
        {SettingForm::Text, "/tmp/my results", false},
        {SettingForm::Text, "\"/tmp/my results\"", true},
        {SettingForm::Text, "\"/tmp/my \"results\"", false},
        {SettingForm::Text, "\"/tmp\\results\"", false},
        {SettingForm::Text, "\"", false},
        {SettingForm::Text, "a;b", false},
        {SettingForm::Text, "a=b", false},
        {SettingForm::Text, "a\\b", false},
        {SettingForm::Text, QString("a") + QChar(0x202E), false},
        {SettingForm::Text, "a\tb", false},
        {SettingForm::Number, "1e-12", true},
        {SettingForm::Number, "1e-12 ", false},
        {SettingForm::Quoted, "Nibble", true},
        {SettingForm::Quoted, "By Nibble", true},
        {SettingForm::Quoted, "Nib\"ble", false},
        {SettingForm::Quoted, "Nib\\ble", false},
        {SettingForm::Quoted, "Nib\nble", false},
        {SettingForm::Voltage, "1.2 V", true},
        {SettingForm::Voltage, "-0.3", true},
        {SettingForm::Voltage, "+.5 mV", true},
        {SettingForm::Voltage, "1. kV", true},
        {SettingForm::Voltage, "1e-3 uV", true},
        {SettingForm::Voltage, "7 fV", true},
        {SettingForm::Voltage, "7 pV", true},
        {SettingForm::Voltage, "7 nV", true},
        {SettingForm::Voltage, "", false},
        {SettingForm::Voltage, "1.2  V", false},
        {SettingForm::Voltage, "1.2V", false},
        {SettingForm::Voltage, "1.2 v", false},
        {SettingForm::Voltage, "1.2 None", false},
        {SettingForm::Voltage, " 1.2 V", false},
        {SettingForm::Voltage, "1.2 V ", false},
        {SettingForm::Voltage, "abc", false},
        {SettingForm::Voltage, "1.2 V\n", false},
        {SettingForm::Computed, "3200", true},
        {SettingForm::Computed, "3200 Mbps", false},
        {SettingForm::Computed, "\"3200\"", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value.toStdString());
        EXPECT_EQ(BlockGrammar::valueProblem(c.form, c.value).isEmpty(), c.carried)
            << BlockGrammar::valueProblem(c.form, c.value).toStdString();
    }
}

}  // namespace
