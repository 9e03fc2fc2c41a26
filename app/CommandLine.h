#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <stdexcept>

// What a lanetap command is on the command line: its arguments, its options and its help, in one
// description from which its parser and its help text are both made.
namespace lanetap {

enum ExitCode { ExitOk = 0, ExitFindings = 1, ExitUsage = 2, ExitScriptFailed = 3, ExitPlugin = 4 };

// A failure that ends the program with one line on stderr and the given exit code.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode code, const QString& message)
        : std::runtime_error(message.toStdString()), code(code) {}
    ExitCode code;
};

// An option of a command. The last of its names is the one the command asks for it by; a
// one-letter name is written with one dash. An option without a value name is a switch. An
// option with choices takes one of those words in any case and hands the command the word as
// written here; its help shows them as its value.
struct Option {
    QStringList names;
    QString valueName;
    QString description;
    QStringList choices = {};
    bool required = false;

    QString name() const { return names.last(); }
};

// An entry of a list in a command's help, such as a finding code and what it means.
struct Term {
    QString name;
    QString meaning;
};

// A paragraph of a command's help and the list it introduces, if any.
struct Paragraph {
    QString text;
    QList<Term> terms = {};
};

// The side of Qt a command needs: none, a dialog shown on screen, or one opened unseen.
enum class Widgets { None, Shown, Unseen };

struct Arguments;

struct Command {
    QString name;
    // How the words other than options are written: "DESIGN [KEY...]".
    QString arguments;
    QList<Paragraph> about;
    QList<Option> options;
    int (*run)(const Arguments& arguments);
    Widgets widgets = Widgets::None;
};

// A command's words once parsed: options by name, with the words of an option with choices as
// the command writes them.
struct Arguments {
    QStringList positional;
    QMap<QString, QString> values;
    QStringList flags;

    bool has(const QString& flag) const { return flags.contains(flag); }
    QString value(const QString& option) const { return values.value(option); }
};

// Parses the words after the command's name. Fails with exit code 2 on an unknown option, a
// missing or unexpected value, an option given twice, a word that is none of an option's choices,
// or a missing required option; a request for help ("help" among the flags) stops before the last.
Arguments parseArguments(const Command& command, const QStringList& words);

// The command's usage, what it does, and its options.
QString helpOf(const Command& command);

// The program's help: its usage, what it is, the synopsis of each command, and the exit codes.
QString overviewOf(const QList<const Command*>& commands);

}  // namespace lanetap
