#include "app/Cli.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "standin/DesignFile.h"

namespace lanetap {

QString Arguments::required(const QString& option) const {
    if (!values.contains(option)) {
        throw Failure(ExitUsage, QString("missing --%1").arg(option));
    }
    return values.value(option);
}

Arguments parseArguments(const Command& command, const QStringList& words) {
    Arguments arguments;
    for (int i = 0; i < words.size(); ++i) {
        const QString shortName = words[i].mid(1);
        const QString& word = words[i].startsWith('-') && command.shortNames.contains(shortName)
                                  ? "--" + command.shortNames.value(shortName)
                                  : words[i];
        if (!word.startsWith("--") || word == "--") {
            arguments.positional << word;
            continue;
        }
        QString option = word.mid(2);
        QString value;
        const int equals = option.indexOf('=');
        const bool inlineValue = equals >= 0;
        if (inlineValue) {
            value = option.mid(equals + 1);
            option.truncate(equals);
        }
        if (command.valueOptions.contains(option)) {
            if (!inlineValue) {
                if (i + 1 >= words.size()) {
                    throw Failure(ExitUsage, QString("--%1 needs a value").arg(option));
                }
                value = words[++i];
            }
            arguments.values.insert(option, value);
        } else if (option == "help" || command.flagOptions.contains(option)) {
            if (inlineValue) {
                throw Failure(ExitUsage, QString("--%1 takes no value").arg(option));
            }
            arguments.flags << option;
        } else {
            throw Failure(ExitUsage,
                          QString("unknown option --%1 for '%2'; see 'lanetap %2 --help'")
                              .arg(standin::printable(option), command.name));
        }
    }
    return arguments;
}

QString usageOf(const Command& command) {
    return QString("usage: lanetap %1\n\n%2").arg(command.synopsis, command.description);
}

const QString& designFileOf(const Arguments& arguments, const char* command) {
    if (arguments.positional.size() != 1) {
        throw Failure(ExitUsage, QString("%1 needs exactly one design file").arg(command));
    }
    return arguments.positional.front();
}

void loadDesign(standin::Host& host, const QString& path) {
    try {
        host.loadDesign(path);
    } catch (const standin::DesignError& error) {
        throw Failure(ExitUsage, error.what());
    }
}

std::unique_ptr<standin::DesignLock> lockDesign(const QString& path) {
    if (path.isEmpty() || !QFileInfo(path).isFile()) {
        return nullptr;
    }
    try {
        return std::make_unique<standin::DesignLock>(path);
    } catch (const standin::DesignError& error) {
        throw Failure(ExitUsage, error.what());
    }
}

standin::Instance* findProbe(const standin::Host& host, const QString& name) {
    standin::Instance* probe = host.design()->findInstance(name.toStdString());
    if (!probe) {
        throw Failure(ExitUsage, QString("%1: no instance named %2")
                                     .arg(host.design()->filePath, standin::quoted(name)));
    }
    return probe;
}

void loadPlugin(standin::Host& host, const Arguments& arguments) {
    QString path = arguments.value("plugin");
    if (path.isEmpty()) {
        path = qEnvironmentVariable("LANETAP_PLUGIN");
    }
    if (path.isEmpty()) {
        path = QCoreApplication::applicationDirPath() + "/liblanetap.so";
    }
    std::vector<std::string> failures;
    try {
        failures = host.loadPlugin(QFileInfo(path).absoluteFilePath());
    } catch (const standin::DesignError& error) {
        throw Failure(ExitPlugin, error.what());
    }
    if (!failures.empty()) {
        throw Failure(ExitPlugin, QString("plug-in registration failed: %1")
                                      .arg(QString::fromStdString(failures.front())));
    }
}

void printWarnings(standin::Host& host) {
    for (const std::string& warning : host.takeWarnings()) {
        const bool ended = !warning.empty() && warning.back() == '\n';
        std::fprintf(stderr, "warning: %s%s", warning.c_str(), ended ? "" : "\n");
    }
}

void checkCall(const standin::CallResult& result, const char* functionName) {
    if (!result.ok) {
        throw Failure(ExitScriptFailed,
                      QString("script function %1 failed: %2")
                          .arg(functionName, QString::fromStdString(result.error)));
    }
}

void writeOut(const QString& text) {
    writeOut(text.toUtf8());
}

void writeOut(const QByteArray& bytes) {
    writeOut(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

void writeOut(std::string_view bytes) {
    const std::size_t size = bytes.size();
    // A full disk or a closed pipe must not pass for a complete output.
    if (std::fwrite(bytes.data(), 1, size, stdout) != size || std::fflush(stdout) != 0) {
        throw Failure(ExitUsage, QString("cannot write the output: %1").arg(std::strerror(errno)));
    }
}

}  // namespace lanetap
