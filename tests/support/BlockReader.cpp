#include "support/BlockReader.h"

#include "support/TestSupport.h"

#include <QRegularExpression>
#include <algorithm>

namespace lanetap_test {

const QStringList& blockSettingNames() {
    // One name a line, as the post-processing module reads them.
    static const QStringList names =
        QString::fromUtf8(readBytes(LANETAP_SOURCE_DIR "/tests/data/block-settings.txt"))
            .split('\n', Qt::SkipEmptyParts);
    return names;
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

namespace {

const QString head = QStringLiteral("\n;Lane_Tap\n#load \"python\",\"TDM_LaneTap\"\n");

// Values may hold blanks, so a value runs up to the next known name.
void readSettings(const QString& line, NetlistBlock& block) {
    static const QRegularExpression form("^ " + blockSettingNames().join("=(.*?) ") + "=(.*)$");
    const QRegularExpressionMatch match = form.match(line);
    if (!match.hasMatch()) {
        block.problems << "not the settings line: " + line;
        return;
    }
    block.settingNames = blockSettingNames();
    for (int i = 0; i < block.settingNames.size(); ++i) {
        block.settings.insert(block.settingNames[i], match.captured(i + 1));
    }
}

// A "NAME[N] = list(...)" line, into its section. The sections come in this order, and the
// lines of each are numbered from 1.
void readDataLine(const QString& line, NetlistBlock& block, int& section) {
    static const QStringList names = {"NodeData", "NodeMeasMap", "NodeRefMap", "ComplianceMeasMap"};
    static const QRegularExpression form("^(" + names.join('|') +
                                         ")\\[(\\d+)\\] = list\\(\"(.*)\"\\)$");
    const QRegularExpressionMatch match = form.match(line);
    const int index = names.indexOf(match.captured(1));
    QList<QStringList>* sections[] = {&block.nodeData, &block.nodeMeasMap, &block.nodeRefMap,
                                      &block.complianceMeasMap};
    if (index < section || match.captured(2).toInt() != sections[index]->size() + 1) {
        block.problems << "a line out of its place or its count: " + line;
        return;
    }
    section = index;
    *sections[index] << match.captured(3).split("\", \"");
}

}  // namespace

NetlistBlock readBlock(const QString& netlistText) {
    NetlistBlock block;
    if (!netlistText.startsWith(head) || !netlistText.endsWith(" \n\n")) {
        block.problems << "the block does not start with the load line or end in \" \\n\\n\"";
        return block;
    }
    // With the end made like every other line end, every line ends in " \".
    QStringList lines = (netlistText.mid(head.size()).chopped(2) + "\\\n").split('\n');
    lines.removeLast();
    for (QString& line : lines) {
        if (!line.endsWith(" \\")) {
            block.problems << "line without its continuation: " + line;
            return block;
        }
        line.chop(2);
    }
    // The probe's name and then every net, each followed by a blank, on the component line.
    static const QRegularExpression component(
        "^ComponentWithNodes:(\\S+) ((?:\\S* )*)Type=\"ModelExtractor\" Module=\"LaneTap\"$");
    const QRegularExpressionMatch match = component.match(lines.value(0));
    if (!match.hasMatch() || lines.size() < 2) {
        block.problems << "not the component line and a settings line: " + lines.value(0);
        return block;
    }
    block.probe = match.captured(1);
    block.nets = match.captured(2).split(' ');
    block.nets.removeLast();
    readSettings(lines[1], block);
    int section = 0;
    for (int i = 2; i < lines.size(); ++i) {
        readDataLine(lines[i], block, section);
    }
    // The fields of a node line are the parts of its key.
    for (const QStringList& f : qAsConst(block.nodeData)) {
        const QString label = f.value(5).isEmpty() ? QString() : "_" + f.value(5);
        if (f.size() != 7 || f[0] != f[2] + "_" + f[4] + "_" + f[3] + label + "_" + f[2] + f[1]) {
            block.problems << "a node line whose fields do not make its key: " + f.join(", ");
        }
    }
    if (block.nets.size() != block.nodeData.size()) {
        block.problems << QString("%1 nets and %2 NodeData lines")
                              .arg(block.nets.size())
                              .arg(block.nodeData.size());
    }
    return block;
}

}  // namespace lanetap_test
