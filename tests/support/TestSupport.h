#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <vector>

#include "standin/Host.h"

// Helpers shared by the tests: copies of the built plug-in, design files in temporary folders and
// runs of the lanetap program.
namespace lanetap_test {

// The plug-in library and the program as the build made them.
QString builtPluginPath();
QString programPath();

// A private copy of the built plug-in in a folder of its own. The plug-in keeps process-wide
// state, so every copy that is loaded starts unregistered, whatever other copies went through.
class PluginCopy {
public:
    PluginCopy();
    const QString& path() const { return file; }

private:
    QTemporaryDir folder;
    QString file;
};

// A temporary folder that holds design files.
class Workspace {
public:
    Workspace();
    // Writes `bytes` to `name` in the folder and gives the path.
    QString write(const QString& name, const QByteArray& bytes) const;
    QString path(const QString& name) const { return folder.filePath(name); }
    // Names of the files in the folder, sorted.
    QStringList files() const;

private:
    QTemporaryDir folder;
};

QByteArray readBytes(const QString& path);

// A design file of the given instances, each the text of one JSON object.
QByteArray designText(const QStringList& instances);
// A DDR part whose pins ("DQ13", "DQS_t1", ...) sit on each of `channels`, every port on a net of
// its own; `parameters` is {"key":"value",...} without braces.
QString ddrPart(const QString& name, const QString& cell, const QString& refDes,
                const QString& parameters, const QStringList& pins, QList<int> channels = {0});

// The stand-in host with a design loaded from JSON text and a fresh copy of the plug-in loaded.
struct HostWithPlugin {
    explicit HostWithPlugin(const QByteArray& design,
                            standin::RegistryConfig config = standin::RegistryConfig());
    Workspace workspace;
    PluginCopy plugin;
    standin::Host host;
    std::vector<std::string> registrationFailures;
};

// One run of the lanetap program.
struct ProgramRun {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

ProgramRun runProgram(const QStringList& arguments, const QProcessEnvironment& environment =
                                                        QProcessEnvironment::systemEnvironment());
// The same, with the size of any file the program writes limited to `blocks` blocks of 512
// bytes; a write past that fails instead of ending the program.
ProgramRun runProgramWithFileLimit(
    const QStringList& arguments, int blocks,
    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

}  // namespace lanetap_test
