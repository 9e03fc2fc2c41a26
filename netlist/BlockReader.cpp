#include "netlist/BlockReader.h"

#include <QRegularExpression>
#include <algorithm>

#include "netlist/BlockGrammar.h"
#include "netlist/BlockSettings.h"

namespace LaneTapUI {

namespace {

using Place = BlockProblem::Place;

const QString head = QStringLiteral("\n;Lane_Tap\n#load \"python\",\"TDM_LaneTap\"\n");
const QString componentStart = QStringLiteral("ComponentWithNodes:");
const QString componentEnd = QStringLiteral("Type=\"ModelExtractor\" Module=\"LaneTap\"");

// The data rate and its unit: two plain words at most, one blank between.
QString dataRateProblem(const QString& value) {
    const QStringList words = value.split(' ');
    if (words.size() > 2 || words.contains(QString()) != value.isEmpty()) {
        return QStringLiteral("is not a rate and a unit with one blank between");
    }
    for (const QString& word : words) {
        const QString problem = BlockGrammar::valueProblem(SettingForm::Computed, word);
        if (!problem.isEmpty()) {
            return problem;
        }
    }
    return QString();
}

QString settingProblem(const Setting& setting, const QString& value) {
    if (value.isEmpty()) {
        return QString();  // a parameter the probe lacks
    }
    if (setting.form == SettingForm::Quoted) {
        if (value.size() < 2 || !value.startsWith('"') || !value.endsWith('"')) {
            return QStringLiteral("is not in double quotes");
        }
        return BlockGrammar::valueProblem(setting.form, value.mid(1, value.size() - 2));
    }
    if (setting.form != SettingForm::Computed) {
        return BlockGrammar::valueProblem(setting.form, value);
    }
    // A computed value is a word, a word in double quotes, or the controller's rate and unit.
    return QLatin1String(setting.name) == "DataRate"
               ? dataRateProblem(value)
               : BlockGrammar::valueProblem(SettingForm::Text, value);
}

// Each pair has a blank in front, and a value runs up to the pair of the next name.
void readSettings(const QString& line, NetlistBlock& block) {
    int at = 0;
    const int count = int(std::size(blockSettings));
    for (int i = 0; i < count; ++i) {
        const Setting& setting = blockSettings[i];
        const QString pair = QStringLiteral(" %1=").arg(QLatin1String(setting.name));
        if (line.mid(at, pair.size()) != pair) {
            block.problems.append({Place::Setting, setting.name,
                                   QStringLiteral("the settings line lacks its pair here")});
            return;
        }
        const int start = at + pair.size();
        at = i + 1 < count
                 ? line.indexOf(QStringLiteral(" %1=").arg(blockSettings[i + 1].name), start)
                 : int(line.size());
        if (at < 0) {
            block.problems.append({Place::Setting, blockSettings[i + 1].name,
                                   QStringLiteral("the settings line lacks its pair")});
            return;
        }
        const QString value = line.mid(start, at - start);
        block.settingNames << setting.name;
        block.settings.insert(setting.name, value);
        const QString problem = settingProblem(setting, value);
        if (!problem.isEmpty()) {
            block.problems.append({Place::Setting, setting.name,
                                   QStringLiteral("the value %1 %2").arg(value, problem)});
        }
    }
}

void readComponentLine(const QString& line, NetlistBlock& block) {
    const QString middle =
        line.mid(componentStart.size(), line.size() - componentStart.size() - componentEnd.size());
    if (!line.startsWith(componentStart) || !line.endsWith(componentEnd) || !middle.endsWith(' ')) {
        block.problems.append({Place::Line, line, QStringLiteral("is not the component line")});
        return;
    }
    QStringList names = middle.split(' ');
    names.removeLast();
    block.probe = names.takeFirst();
    block.nets = names;
    const QString probeProblem = BlockGrammar::nameProblem(block.probe);
    if (!probeProblem.isEmpty()) {
        block.problems.append({Place::Probe, block.probe, probeProblem});
    }
    for (const QString& net : qAsConst(block.nets)) {
        const QString problem = net.isEmpty() ? QString() : BlockGrammar::nameProblem(net);
        if (!problem.isEmpty()) {
            block.problems.append({Place::Net, net, problem});
        }
    }
}

// A "NAME[N] = list("...", ...)" line, into its section. The sections come in this order, the
// lines of each are numbered from 1, and a field holds no double quote or backslash.
void readDataLine(const QString& line, NetlistBlock& block, int& section) {
    static const QStringList names = {"NodeData", "NodeMeasMap", "NodeRefMap", "ComplianceMeasMap"};
    static const QRegularExpression form("^(" + names.join('|') +
                                         ")\\[(\\d+)\\] = list\\(\"(.*)\"\\)$");
    const int least[] = {7, 3, 2, 2};
    const QRegularExpressionMatch match = form.match(line);
    const int index = names.indexOf(match.captured(1));
    QList<QStringList>* sections[] = {&block.nodeData, &block.nodeMeasMap, &block.nodeRefMap,
                                      &block.complianceMeasMap};
    if (index < section || match.captured(2).toInt() != sections[index]->size() + 1) {
        block.problems.append({Place::Line, line, QStringLiteral("is out of its place or count")});
        return;
    }
    section = index;
    const QStringList fields = match.captured(3).split(QStringLiteral("\", \""));
    const bool counted =
        index == 0 || index == 2 ? fields.size() == least[index] : fields.size() >= least[index];
    QString problem = counted ? QString() : QStringLiteral("has %1 fields").arg(fields.size());
    for (const QString& field : fields) {
        problem =
            problem.isEmpty() ? BlockGrammar::valueProblem(SettingForm::Quoted, field) : problem;
    }
    if (!problem.isEmpty()) {
        block.problems.append({Place::Line, line, problem});
    }
    *sections[index] << fields;
}

// The fields of a node line are the parts of its key, and its polarity one of s, p and n.
void checkNodeLines(NetlistBlock& block) {
    for (const QStringList& f : qAsConst(block.nodeData)) {
        const QString label = f.value(5).isEmpty() ? QString() : "_" + f.value(5);
        if (f.size() != 7 || f[0] != f[2] + "_" + f[4] + "_" + f[3] + label + "_" + f[2] + f[1] ||
            !QStringList({"s", "p", "n"}).contains(f[6])) {
            block.problems.append({Place::Line, f.join(QStringLiteral(", ")),
                                   QStringLiteral("is a node line whose fields do not make its "
                                                  "key and polarity")});
        }
    }
    if (block.nets.size() != block.nodeData.size()) {
        block.problems.append({Place::Block,
                               {},
                               QStringLiteral("%1 nets and %2 NodeData lines")
                                   .arg(block.nets.size())
                                   .arg(block.nodeData.size())});
    }
}

}  // namespace

QString BlockProblem::text() const {
    return at.isEmpty() ? what : at + ": " + what;
}

QStringList NetlistBlock::problemTexts() const {
    QStringList texts;
    for (const BlockProblem& problem : problems) {
        texts << problem.text();
    }
    return texts;
}

QStringList NetlistBlock::sortedLines() const {
    QStringList lines;
    const auto add = [&](const char* tag, QList<QStringList> section) {
        for (QStringList& fields : section) {
            std::replace(fields.begin(), fields.end(), QString(), QString("-"));
            if (*tag == 'M' && fields.value(1) != "Unreferenced") {
                std::sort(fields.begin() + 2, fields.end());
            }
            lines << tag + (" " + fields.join(' '));
        }
    };
    QList<QStringList> nodes;
    for (int i = 0; i < nets.size() && i < nodeData.size(); ++i) {
        nodes << QStringList{nets[i], nodeData[i][0], nodeData[i].value(6)};
    }
    add("N", nodes);
    add("M", nodeMeasMap);
    add("R", nodeRefMap);
    add("C", complianceMeasMap);
    lines.sort();
    return lines;
}

NetlistBlock readBlock(const QString& netlistText) {
    NetlistBlock block;
    if (!netlistText.startsWith(head) || !netlistText.endsWith(" \n\n") ||
        netlistText.endsWith("\n\n\n")) {
        block.problems.append({Place::Block,
                               {},
                               "the block does not start with the load line or end in one blank "
                               "and one empty line"});
        return block;
    }
    // With the end made like every other line end, every line ends in " \".
    QStringList lines = (netlistText.mid(head.size()).chopped(2) + "\\\n").split('\n');
    lines.removeLast();
    for (QString& line : lines) {
        if (!line.endsWith(" \\")) {
            block.problems.append({Place::Line, line, "does not end in a blank and a backslash"});
            return block;
        }
        line.chop(2);
    }
    if (lines.size() < 2) {
        block.problems.append({Place::Block, {}, "the block has no settings line"});
        return block;
    }
    readComponentLine(lines[0], block);
    readSettings(lines[1], block);
    int section = 0;
    for (int i = 2; i < lines.size(); ++i) {
        readDataLine(lines[i], block, section);
    }
    checkNodeLines(block);
    return block;
}

}  // namespace LaneTapUI
