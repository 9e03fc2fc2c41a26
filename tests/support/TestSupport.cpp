#include "support/TestSupport.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace lanetap_test {

QString builtPluginPath() {
    return QStringLiteral(LANETAP_PLUGIN_PATH);
}
QString programPath() {
    return QStringLiteral(LANETAP_APP_PATH);
}

PluginCopy::PluginCopy() {
    if (!folder.isValid()) {
        throw std::runtime_error("cannot make a temporary folder for the plug-in");
    }
    file = folder.filePath(QFileInfo(builtPluginPath()).fileName());
    if (!QFile::copy(builtPluginPath(), file)) {
        throw std::runtime_error("cannot copy " + builtPluginPath().toStdString());
    }
}

PluginCopy::RegisterFunction PluginCopy::openRegistration() const {
    void* library = dlopen(file.toLocal8Bit().constData(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        throw std::runtime_error(std::string("dlopen failed: ") + dlerror());
    }
    auto entry = reinterpret_cast<RegisterFunction>(dlsym(library, "RegisterLibraryContents"));
    if (!entry) {
        throw std::runtime_error("the plug-in has no RegisterLibraryContents");
    }
    return entry;
}

Workspace::Workspace() {
    if (!folder.isValid()) {
        throw std::runtime_error("cannot make a temporary folder");
    }
}

QString Workspace::write(const QString& name, const QByteArray& bytes) const {
    const QString target = path(name);
    QFile file(target);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        throw std::runtime_error("cannot write " + target.toStdString());
    }
    return target;
}

QString Workspace::path(const QString& name) const {
    return folder.filePath(name);
}

QStringList Workspace::files() const {
    return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

QByteArray readBytes(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    return file.readAll();
}

QByteArray designText(const QStringList& instances) {
    return QString(
               "{\n  \"format\": \"lanetap-design-1\",\n  \"name\": \"test\",\n"
               "  \"instances\": [\n    %1\n  ]\n}\n")
        .arg(instances.join(",\n    "))
        .toUtf8();
}

HostWithPlugin::HostWithPlugin(const QByteArray& design, standin::RegistryConfig config)
    : host(config) {
    host.loadDesign(workspace.write("design.json", design));
    registrationFailures = host.loadPlugin(plugin.path());
}

namespace {

ProgramRun run(const QString& program, const QStringList& arguments,
               const QProcessEnvironment& environment) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    ProgramRun result;
    if (!process.waitForStarted(30000)) {
        ADD_FAILURE() << "cannot start " << program.toStdString();
        return result;
    }
    process.closeWriteChannel();
    if (!process.waitForFinished(120000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << program.toStdString() << " did not finish";
        return result;
    }
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return result;
}

}  // namespace

ProgramRun runProgram(const QStringList& arguments, const QProcessEnvironment& environment) {
    return run(programPath(), arguments, environment);
}

ProgramRun runProgramWithFileLimit(const QStringList& arguments, int blocks) {
    // An ignored SIGXFSZ stays ignored across exec, so the failed write is seen by the program.
    const QString script =
        QString("ulimit -f %1 && trap '' XFSZ && exec \"$0\" \"$@\"").arg(blocks);
    return run("/bin/sh", QStringList{"-c", script, programPath()} + arguments,
               QProcessEnvironment::systemEnvironment());
}

}  // namespace lanetap_test
