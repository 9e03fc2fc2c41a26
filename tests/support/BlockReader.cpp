#include "support/BlockReader.h"

#include <QRegularExpression>

namespace lanetap_test {

const QStringList& blockSettingNames() {
    // In the order of the line.
    static const QStringList names =
        QString(
            "Settings_ReadWriteOperation EnableCompliance EnableScreenshots "
            "NEBProperties_SaveDataset NEBProperties_SaveReportPDF NEBProperties_ReportPath "
            "TargetBER InterpolationTimePoints TimePoints AmplitudeResolution DataRate "
            "CATopology SpeedGrade Settings_pcboCustomSG Settings_DQSSignalType "
            "Settings_chkLPDDR4 Settings_chkLPDDR4X Settings_InputVDD Settings_InputVDDQ "
            "Settings_InputVDD1 Settings_InputVDD2 Settings_InputRefV_VTT UseInternalVrefDQ "
            "GroupDQBy Settings_InputThreshold_Vih_ac_DQ Settings_InputThreshold_Vil_ac_DQ "
            "Settings_InputThreshold_Vih_dc_DQ Settings_InputThreshold_Vil_dc_DQ "
            "Settings_InputRefV_VrefDQ Settings_TimingWindowDQ UseInternalVrefCA GroupCABy "
            "Settings_InputThreshold_Vih_ac_CA Settings_InputThreshold_Vil_ac_CA "
            "Settings_InputThreshold_Vih_dc_CA Settings_InputThreshold_Vil_dc_CA "
            "Settings_InputRefV_VrefCA Settings_TimingWindowCA "
            "Settings_InputThreshold_DQS_SE_High Settings_InputThreshold_DQS_SE_Low "
            "Settings_InputThreshold_CLK_SE_High Settings_InputThreshold_CLK_SE_Low "
            "Settings_InputThreshold_Voh_ac Settings_InputThreshold_Vol_ac "
            "Settings_InputThreshold_Voh_dc Settings_InputThreshold_Vol_dc "
            "Settings_VIHdiff_ac_DQS Settings_VILdiff_ac_DQS Settings_VIHdiff_DQS "
            "Settings_VILdiff_DQS Settings_VIHdiff_ac_CK Settings_VILdiff_ac_CK "
            "Settings_VIHdiff_CK Settings_VILdiff_CK Settings_VOHdiff_ac Settings_VOLdiff_ac")
            .split(' ');
    return names;
}

QList<QStringList> NetlistBlock::nodes() const {
    QList<QStringList> result;
    for (int i = 0; i < nets.size() && i < nodeData.size(); ++i) {
        result << (QStringList{nets[i]} + nodeData[i]);
    }
    return result;
}

namespace {

const QString head = QStringLiteral("\n;Lane_Tap\n#load \"python\",\"TDM_LaneTap\"\n");
const QString componentPrefix = QStringLiteral("ComponentWithNodes:");
const QString componentSuffix = QStringLiteral("Type=\"ModelExtractor\" Module=\"LaneTap\"");

// Values may hold blanks, so a value runs up to the next known name.
void readSettings(const QString& line, NetlistBlock& block) {
    const QStringList& names = blockSettingNames();
    int position = 0;
    for (int i = 0; i < names.size(); ++i) {
        const QString pair = " " + names[i] + "=";
        if (line.mid(position, pair.size()) != pair) {
            block.problems << "setting " + names[i] + " expected at column " +
                                  QString::number(position) + " of: " + line;
            return;
        }
        const int valueStart = position + pair.size();
        int valueEnd = line.size();
        if (i + 1 < names.size()) {
            valueEnd = line.indexOf(" " + names[i + 1] + "=", valueStart);
            if (valueEnd < 0) {
                block.problems << "setting " + names[i + 1] + " missing";
                return;
            }
        }
        block.settingNames << names[i];
        block.settings.insert(names[i], line.mid(valueStart, valueEnd - valueStart));
        position = valueEnd;
    }
}

void readDataLine(const QString& line, NetlistBlock& block, int& section) {
    static const QRegularExpression form(
        QStringLiteral("^(NodeData|NodeMeasMap|NodeRefMap|ComplianceMeasMap)\\[(\\d+)\\] = "
                       "list\\(\"(.*)\"\\)$"));
    static const QStringList sections = {"NodeData", "NodeMeasMap", "NodeRefMap",
                                         "ComplianceMeasMap"};
    const QRegularExpressionMatch match = form.match(line);
    if (!match.hasMatch()) {
        block.problems << "not a data line: " + line;
        return;
    }
    const int index = sections.indexOf(match.captured(1));
    if (index < section) {
        block.problems << match.captured(1) + " line after a later section: " + line;
    }
    section = index;
    QList<QStringList>* lines[] = {&block.nodeData, &block.nodeMeasMap, &block.nodeRefMap,
                                   &block.complianceMeasMap};
    QList<QStringList>& target = *lines[index];
    if (match.captured(2).toInt() != target.size() + 1) {
        block.problems << "counter out of step: " + line;
    }
    const QStringList fields = match.captured(3).split("\", \"");
    const int expectedFields[] = {7, 0, 2, 0};
    if ((expectedFields[index] != 0 && fields.size() != expectedFields[index]) ||
        fields.size() < 2) {
        block.problems << "wrong number of fields: " + line;
    }
    target << fields;
}

}  // namespace

NetlistBlock readBlock(const QString& netlistText) {
    NetlistBlock block;
    if (!netlistText.startsWith(head)) {
        block.problems << "the block does not start with the load line";
        return block;
    }
    if (!netlistText.endsWith(" \n\n")) {
        block.problems << "the block does not end in a blank and an empty line";
        return block;
    }
    // With the end made like every other line end, every line ends in " \".
    QString body = netlistText.mid(head.size());
    body.chop(2);
    body += "\\\n";
    QStringList lines = body.split('\n');
    lines.removeLast();
    for (QString& line : lines) {
        if (!line.endsWith(" \\")) {
            block.problems << "line without its continuation: " + line;
            return block;
        }
        line.chop(2);
    }

    const QString& component = lines.value(0);
    if (!component.startsWith(componentPrefix) || !component.endsWith(componentSuffix)) {
        block.problems << "not the component line: " + component;
        return block;
    }
    QString names = component.mid(componentPrefix.size());
    names.chop(componentSuffix.size());
    if (!names.endsWith(' ')) {
        block.problems << "the node list does not end in a blank: " + component;
    }
    block.nets = names.split(' ');
    block.nets.removeLast();
    block.probe = block.nets.takeFirst();

    if (lines.size() < 2) {
        block.problems << "no settings line";
        return block;
    }
    readSettings(lines[1], block);
    int section = 0;
    for (int i = 2; i < lines.size(); ++i) {
        readDataLine(lines[i], block, section);
    }
    if (block.nets.size() != block.nodeData.size()) {
        block.problems << QString("%1 nets and %2 NodeData lines")
                              .arg(block.nets.size())
                              .arg(block.nodeData.size());
    }
    return block;
}

}  // namespace lanetap_test
