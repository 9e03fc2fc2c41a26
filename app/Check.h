#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <string>
#include <vector>

#include "app/ProbeSetup.h"
#include "standin/Host.h"

// lanetap check: what the block and the dialog will do with a probe's stored setup. Each part adds
// findings: the stored text read by the plug-in's own readers and rules (CheckStored.cpp), the
// block the netlist road writes compared with what is stored (CheckBlock.cpp), and the setup the
// dialog's opening stores compared with what is stored (CheckDialog.cpp).
namespace lanetap {

struct Finding {
    QString severity;
    QString code;
    // Null where they do not apply.
    QString key;
    QString item;
    QString message;
};

class Findings {
public:
    void error(const char* code, const QString& key, const QString& item, const QString& message);
    void warning(const char* code, const QString& key, const QString& item, const QString& message);
    void note(const char* code, const QString& key, const QString& item, const QString& message);
    const QList<Finding>& all() const { return list; }

private:
    QList<Finding> list;
};

// What the probe stores, read by the readers the plug-in reads it with.
void checkStoredText(const ProbeSetup& setup, Findings& findings);

// The block of the probe, as the plug-in writes it, against what is stored. `block` is the text
// the netlist road returned and `warnings` the warnings it gave.
void checkBlock(const ProbeSetup& setup, const QString& block,
                const std::vector<std::string>& warnings, Findings& findings);

// The block of the probe as the plug-in writes it on the loaded design, as sorted lines and
// settings: what it says, whatever order its hashes gave.
QStringList canonicalBlock(standin::Host& host, const QString& probe);

// The dialog's opening on the probe, run on the loaded design: every stored key whose meaning the
// dialog changes, a warning where the block then differs from `blockBefore`. Leaves the design as
// the dialog stored it.
void checkDialog(standin::Host& host, const QString& probe, const QStringList& blockBefore,
                 Findings& findings);

}  // namespace lanetap
