#include "app/CommandLine.h"

#include <QCommandLineParser>
#include <algorithm>

#include "standin/DesignFile.h"

namespace lanetap {
namespace {

// Help lines stay within a terminal of 80 columns.
const int lineWidth = 79;
// A list's names take at most this many columns; a longer name has its meaning on the next line.
const int widestName = 24;

const Option helpOption{{"h", "help"}, QString(), "show this help"};

QList<Option> optionsOf(const Command& command) {
    return command.options + QList<Option>{helpOption};
}

QString dashed(const QString& name) {
    return (name.size() == 1 ? "-" : "--") + name;
}

QString valueNameOf(const Option& option) {
    return option.choices.isEmpty() ? option.valueName : option.choices.join('|');
}

// "a", "a or b", "a, b or c"
QString alternatives(const QStringList& words) {
    if (words.size() < 2) {
        return words.join(QString());
    }
    return words.mid(0, words.size() - 1).join(", ") + " or " + words.last();
}

QString choiceOf(const Option& option, const QString& value) {
    if (option.choices.isEmpty()) {
        return value;
    }
    for (const QString& choice : option.choices) {
        if (value.compare(choice, Qt::CaseInsensitive) == 0) {
            return choice;
        }
    }
    throw Failure(ExitUsage, QString("%1 must be %2, not %3")
                                 .arg(dashed(option.name()), alternatives(option.choices),
                                      standin::quoted(value)));
}

// `text` broken into lines of at most `width` characters at blanks; a line break in it stays.
QStringList wrapped(const QString& text, int width) {
    QStringList lines;
    for (const QString& part : text.split('\n')) {
        QString line;
        for (const QString& word : part.split(' ', Qt::SkipEmptyParts)) {
            if (!line.isEmpty() && line.size() + 1 + word.size() > width) {
                lines << line;
                line.clear();
            }
            line += (line.isEmpty() ? QString() : QString(" ")) + word;
        }
        lines << line;
    }
    return lines;
}

// `parts` after `prefix`, wrapped between parts, the lines after the first indented by `indent`.
QString hanging(const QString& prefix, const QStringList& parts, int indent) {
    QString result;
    QString line = prefix;
    bool lineHasWord = false;
    for (const QString& word : parts) {
        if (lineHasWord && line.size() + 1 + word.size() > lineWidth) {
            result += line + "\n";
            line = QString(indent, ' ');
            lineHasWord = false;
        }
        line += (lineHasWord ? QString(" ") : QString()) + word;
        lineHasWord = true;
    }
    return result + line + "\n";
}

// Names in one column, meanings wrapped in the next.
QString termsText(const QList<Term>& terms) {
    int nameWidth = 0;
    for (const Term& term : terms) {
        nameWidth = std::max(nameWidth, int(term.name.size()));
    }
    nameWidth = std::min(nameWidth, widestName);
    const int column = 2 + nameWidth + 2;
    QString text;
    for (const Term& term : terms) {
        QString head = "  " + term.name;
        if (term.name.size() > nameWidth) {
            text += head + "\n";
            head.clear();
        }
        const QStringList lines = wrapped(term.meaning, lineWidth - column);
        for (const QString& line : lines) {
            text += head.leftJustified(column) + line + "\n";
            head.clear();
        }
    }
    return text;
}

QString optionTerm(const Option& option) {
    QStringList names;
    for (const QString& name : option.names) {
        names << dashed(name);
    }
    const QString value = valueNameOf(option);
    return names.join(", ") + (value.isEmpty() ? QString() : " " + value);
}

// The words of a synopsis, each kept on one line: "--probe NAME", "[-o FILE]".
QStringList synopsisParts(const Command& command) {
    QStringList parts{command.name};
    if (!command.arguments.isEmpty()) {
        parts << command.arguments;
    }
    for (const Option& option : command.options) {
        const QString value = valueNameOf(option);
        const QString part = dashed(option.names.front()) + (value.isEmpty() ? "" : " " + value);
        parts << (option.required ? part : "[" + part + "]");
    }
    return parts;
}

}  // namespace

Arguments parseArguments(const Command& command, const QStringList& words) {
    const QList<Option> options = optionsOf(command);
    QCommandLineParser parser;
    for (const Option& option : options) {
        parser.addOption(QCommandLineOption(option.names, option.description, valueNameOf(option)));
    }
    const QString seeHelp = QString("see 'lanetap %1 --help'").arg(command.name);
    // The parser skips the first word, the program's.
    if (!parser.parse(QStringList{command.name} + words)) {
        const QStringList unknown = parser.unknownOptionNames();
        if (!unknown.isEmpty()) {
            throw Failure(ExitUsage, QString("unknown option %1 for '%2'; %3")
                                         .arg(standin::printable(dashed(unknown.front())),
                                              command.name, seeHelp));
        }
        // Qt's sentence ("Missing value after '--probe'.") as a clause of the line.
        QString message = parser.errorText();
        if (message.endsWith('.')) {
            message.chop(1);
        }
        throw Failure(ExitUsage, message.left(1).toLower() + message.mid(1) + "; " + seeHelp);
    }
    Arguments arguments;
    if (parser.isSet(helpOption.name())) {
        arguments.flags << helpOption.name();
        return arguments;
    }
    arguments.positional = parser.positionalArguments();
    for (const Option& option : options) {
        if (!parser.isSet(option.name())) {
            if (option.required) {
                throw Failure(ExitUsage, QString("missing %1").arg(dashed(option.name())));
            }
            continue;
        }
        if (valueNameOf(option).isEmpty()) {
            arguments.flags << option.name();
            continue;
        }
        const QStringList given = parser.values(option.name());
        if (given.size() > 1) {
            throw Failure(ExitUsage,
                          QString("%1 given %2")
                              .arg(dashed(option.name()),
                                   given.size() == 2 ? QString("twice")
                                                     : QString("%1 times").arg(given.size())));
        }
        arguments.values.insert(option.name(), choiceOf(option, given.front()));
    }
    return arguments;
}

QString helpOf(const Command& command) {
    QString text = hanging("usage: lanetap ", synopsisParts(command), 8) + "\n";
    for (const Paragraph& paragraph : command.about) {
        text += wrapped(paragraph.text, lineWidth).join('\n') + "\n";
        text += termsText(paragraph.terms) + "\n";
    }
    QList<Term> terms;
    for (const Option& option : optionsOf(command)) {
        terms.append({optionTerm(option), option.description});
    }
    return text + "Options:\n" + termsText(terms);
}

QString overviewOf(const QList<const Command*>& commands) {
    QString text =
        "usage: lanetap COMMAND [ARGUMENTS]\n"
        "       lanetap -h | --help | --version\n\n";
    text += wrapped(
                "LaneTap sets up DDR4 and LPDDR4 bus probes and writes their netlist blocks. "
                "This program is a stand-in for the design host: it reads a design file, "
                "loads the plug-in and runs it.",
                lineWidth)
                .join('\n');
    text += "\n\nCommands:\n";
    for (const Command* command : commands) {
        text += hanging("  lanetap ", synopsisParts(*command), 8);
    }
    text += "\n'lanetap COMMAND --help' explains a command.\n";
    text += wrapped(
                "Exit codes: 0 done, 1 check found a warning or an error, 2 bad usage or "
                "design file, 3 a script function failed, 4 the plug-in could not be loaded "
                "or registered.",
                lineWidth)
                .join('\n');
    return text + "\n";
}

}  // namespace lanetap
