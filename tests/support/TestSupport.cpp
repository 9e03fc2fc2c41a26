#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

namespace lanetap_test {

QString builtPluginPath() {
    return QStringLiteral(LANETAP_PLUGIN_PATH);
}
QString programPath() {
    return QStringLiteral(LANETAP_APP_PATH);
}

namespace {

void require(bool done, const std::string& failure) {
    if (!done) {
        throw std::runtime_error(failure);
    }
}

ProgramRun run(const QString& program, const QStringList& arguments,
               const QProcessEnvironment& environment) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.closeWriteChannel();
    ProgramRun result;
    if (!process.waitForFinished(120000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << program.toStdString() << " did not start or did not finish";
        return result;
    }
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return result;
}

}  // namespace

PluginCopy::PluginCopy() : file(folder.filePath(QFileInfo(builtPluginPath()).fileName())) {
    require(folder.isValid() && QFile::copy(builtPluginPath(), file),
            "cannot copy " + builtPluginPath().toStdString());
}

Workspace::Workspace() {
    require(folder.isValid(), "cannot make a temporary folder");
}

QString Workspace::write(const QString& name, const QByteArray& bytes) const {
    QFile file(path(name));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(),
            "cannot write " + file.fileName().toStdString());
    return file.fileName();
}

QStringList Workspace::files() const {
    return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

QByteArray readBytes(const QString& path) {
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "cannot read " + path.toStdString());
    return file.readAll();
}

QByteArray designText(const QStringList& instances) {
    return QString(
               "{\n  \"format\": \"lanetap-design-1\",\n  \"name\": \"test\",\n"
               "  \"instances\": [\n    %1\n  ]\n}\n")
        .arg(instances.join(",\n    "))
        .toUtf8();
}

QString ddrPart(const QString& name, const QString& cell, const QString& refDes,
                const QString& parameters, const QStringList& pins, QList<int> channels) {
    QStringList terminals;
    QStringList ports;
    for (int channel : channels) {
        for (const QString& pin : pins) {
            const QString port = QString("%1_%2").arg(pin).arg(channel);
            const QString family = QString(pin).remove(QRegularExpression("\\d+$"));
            terminals << QString(R"({"name":"%1","net":"n_%2_%1"})").arg(port, name);
            ports << QString(R"({"port":"%1","pin":"%2","refDes":"%3","channel":%4,)"
                             R"("signal":"%5","index":%6})")
                         .arg(port, pin, refDes)
                         .arg(channel)
                         .arg(family, pin.mid(family.size()));
        }
    }
    return QString(R"({"name":"%1","cell":"%2","parameters":{%3},"terminals":[%4],)"
                   R"("ddrPorts":[%5]})")
        .arg(name, cell, parameters, terminals.join(","), ports.join(","));
}

HostWithPlugin::HostWithPlugin(const QByteArray& design, standin::RegistryConfig config)
    : host(config) {
    host.loadDesign(workspace.write("design.json", design));
    registrationFailures = host.loadPlugin(plugin.path());
}

ProgramRun runProgram(const QStringList& arguments, const QProcessEnvironment& environment) {
    return run(programPath(), arguments, environment);
}

ProgramRun runProgramWithFileLimit(const QStringList& arguments, int blocks,
                                   const QProcessEnvironment& environment) {
    // An ignored SIGXFSZ stays ignored across exec, so the failed write is seen by the program.
    const QString script =
        QString("ulimit -f %1 && trap '' XFSZ && exec \"$0\" \"$@\"").arg(blocks);
    return run("/bin/sh", QStringList{"-c", script, programPath()} + arguments, environment);
}

}  // namespace lanetap_test
