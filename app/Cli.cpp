#include "app/Cli.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "standin/DesignFile.h"
#include "standin/ItemDefinition.h"

namespace lanetap {

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

void saveDesign(standin::Host& host) {
    try {
        host.saveDesign();
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

standin::Instance* findInstance(const standin::Host& host, const QString& name) {
    standin::Instance* instance = host.design()->findInstance(name.toStdString());
    if (!instance) {
        throw Failure(ExitUsage, QString("%1: no instance named %2")
                                     .arg(host.design()->filePath, standin::quoted(name)));
    }
    return instance;
}

standin::Instance* findProbe(const standin::Host& host, const QString& name) {
    standin::Instance* probe = findInstance(host, name);
    if (probe->cell != standin::probeCellName) {
        throw Failure(ExitUsage, QString("%1 is a %2, not a LaneTap probe")
                                     .arg(name, QString::fromStdString(probe->cell)));
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

void writeOutput(const QString& path, std::string_view bytes) {
    if (path.isEmpty()) {
        writeOut(bytes);
        return;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        throw Failure(ExitUsage, QString("%1: cannot write: %2").arg(path, file.errorString()));
    }
    // QSaveFile's commit() misses a write that fails when the buffer is flushed, so the flush is
    // checked here; the file is then left as it was.
    const auto size = static_cast<qint64>(bytes.size());
    errno = 0;
    if (file.write(bytes.data(), size) != size || !file.flush()) {
        // Qt keeps no message for a failed flush; the system's reason is the useful one.
        const QString reason = errno ? QString(std::strerror(errno)) : file.errorString();
        throw Failure(ExitUsage, QString("%1: cannot write: %2").arg(path, reason));
    }
    if (!file.commit()) {
        throw Failure(ExitUsage, QString("%1: cannot write: %2").arg(path, file.errorString()));
    }
}

void writeOutput(const QString& path, const QByteArray& bytes) {
    writeOutput(path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

}  // namespace lanetap
