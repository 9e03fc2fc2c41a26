// The block road: the block the plug-in writes, read back by its grammar, against what the probe
// stores. Every stored signal, measurement, reference and compliance id is in the block or is
// named with the reason it is not.

#include <QMap>
#include <QSet>
#include <algorithm>

#include "app/Check.h"
#include "app/ValueForms.h"
#include "catalogue/ComplianceLookups.h"
#include "catalogue/MeasurementTypes.h"
#include "netlist/BlockReader.h"
#include "netlist/BlockSettings.h"
#include "parameters/ParamText.h"
#include "standin/DesignFile.h"

namespace lanetap {

using namespace LaneTapUI;

namespace {

// What the block says, in the terms the stored setup speaks.
struct Written {
    QSet<QString> watched;
    // Signal and reference ("Unreferenced" for none) to the measurement keys of their lines.
    QHash<QPair<QString, QString>, QStringList> measured;
    QHash<QString, QStringList> compliance;
    bool complianceOn = false;
};

Written writtenOf(const NetlistBlock& block) {
    Written written;
    for (const QStringList& node : block.nodeData) {
        written.watched.insert(node.value(0));
    }
    for (const QStringList& line : block.nodeMeasMap) {
        written.measured[{line.value(0), line.value(1)}] << line.mid(2);
    }
    for (const QStringList& line : block.complianceMeasMap) {
        written.compliance.insert(line.value(0), line.mid(1));
    }
    written.complianceOn = block.settings.value("EnableCompliance") == "1";
    return written;
}

// The stored key a setting of the line comes from, and its item.
QPair<QString, QString> sourceOf(const QString& setting, const ProbeSetup& setup) {
    for (const Setting& known : blockSettings) {
        if (setting == known.name && known.parameter) {
            return {known.parameter, setup.stored(known.parameter)};
        }
    }
    if (setting == "DataRate") {
        return {"DataRate", "DataRate DataRateUnit of the controller"};
    }
    return {"speedGradeList", {}};
}

void checkShape(const NetlistBlock& block, const ProbeSetup& setup, Findings& findings) {
    for (const BlockProblem& problem : block.problems) {
        switch (problem.place) {
            case BlockProblem::Place::Setting: {
                const auto [key, item] = sourceOf(problem.at, setup);
                findings.warning("unsafe-value", key, item,
                                 QString("the settings line cannot carry it as it stands: %1, "
                                         "its pair %2")
                                     .arg(problem.what, problem.at));
                break;
            }
            case BlockProblem::Place::Net:
            case BlockProblem::Place::Probe:
                findings.warning(
                    "unsafe-value", {}, problem.at,
                    QString("the %1 name %2: the component line cannot carry it as "
                            "it stands")
                        .arg(problem.place == BlockProblem::Place::Net ? "net" : "instance",
                             problem.what));
                break;
            default:
                findings.error("unsafe-value", {}, {},
                               "the block cannot be read: " + problem.text());
        }
    }
}

// Why a signal the setup names has no line of its own in the block.
QString signalReason(const ProbeSetup& setup, const QStringList& selected, const QString& key) {
    if (!setup.all.contains(key)) {
        return "the design has no such signal";
    }
    return selected.contains(key) ? "the block has no node of it" : "the signal is not selected";
}

// The stored words that are not numbers where the plug-in reads a code or an id.
void checkCodeWords(const ProbeSetup& setup, Findings& findings) {
    const struct {
        const char* key;
        int from;
        int to;  // the last word read as a number, -1 for every word from `from` on
    } maps[] = {{"SelectedMeasurementsListMap", 1, -1},
                {"SelectedMeasurementsRefSignalListMap", 1, 1},
                {"SelectedGroupComplianceListMap", 1, -1}};
    for (const auto& map : maps) {
        const ListEntries entries = parseListEntries(setup.stored(map.key).toStdString());
        for (const QStringView entry : entries.items) {
            WordViews words;
            splitOnWhiteSpace(entry, words);
            const int last = map.to < 0 ? words.size() - 1 : std::min(map.to, words.size() - 1);
            for (int i = map.from; i <= last; ++i) {
                if (!isInteger(words[i].toString())) {
                    findings.warning("bad-number", map.key,
                                     words[0].toString() + " " + words[i].toString(),
                                     QString("%1 is no number; the plug-in reads it as %2")
                                         .arg(standin::quoted(words[i].toString()))
                                         .arg(wordToInt(words[i])));
                }
            }
        }
    }
}

void checkSignals(const ProbeSetup& setup, const Written& written, Findings& findings) {
    QStringList seen;
    const QStringList selected =
        readParamStringList(db::ParamIter(setup.probeInstance()), "SelectedSignalList");
    for (const QString& key : selected) {
        if (!written.watched.contains(key) && !seen.contains(key)) {
            seen << key;
            findings.warning("not-written", "SelectedSignalList", key,
                             signalReason(setup, selected, key));
        }
    }
}

void checkMeasurements(const ProbeSetup& setup, const Written& written, Findings& findings) {
    const db::ParamIter stored(setup.probeInstance());
    const QStringList selected = readParamStringList(stored, "SelectedSignalList");
    const IntListMap lists = readParamIntListMap(stored, "SelectedMeasurementsListMap");
    const ReferenceMap references =
        readParamReferenceMap(stored, "SelectedMeasurementsRefSignalListMap");
    for (auto entry = lists.cbegin(); entry != lists.cend(); ++entry) {
        const QString& signal = entry.key();
        for (const int code : entry.value()) {
            const QString name = measurementKeys().value(MeasurementType(code));
            const QString item = signal + " " + (name.isEmpty() ? QString::number(code) : name);
            if (name.isEmpty()) {
                findings.warning("unknown-id", "SelectedMeasurementsListMap", item,
                                 "no measurement has this code; the dialog and the block drop it");
                continue;
            }
            bool found = false;
            for (auto line = written.measured.cbegin(); line != written.measured.cend(); ++line) {
                const bool referenced = line.key().second != "Unreferenced";
                found = found || (line.key().first == signal &&
                                  referenced != referenceFreeTypesByKey().contains(name) &&
                                  line.value().contains(name));
            }
            if (found) {
                continue;
            }
            if (!referenceFreeTypesByKey().contains(name) &&
                references.value(signal).value(code).isEmpty()) {
                findings.warning("missing-reference", "SelectedMeasurementsRefSignalListMap", item,
                                 name +
                                     " needs a reference signal and has none; the block "
                                     "leaves it out");
            } else if (referenceFreeTypesByKey().contains(name)) {
                findings.warning("not-written", "SelectedMeasurementsListMap", item,
                                 signalReason(setup, selected, signal));
            }
        }
    }
    for (auto entry = references.cbegin(); entry != references.cend(); ++entry) {
        for (auto code = entry.value().cbegin(); code != entry.value().cend(); ++code) {
            const QString name = measurementKeys().value(MeasurementType(code.key()));
            for (const QString& reference : code.value()) {
                const QString item =
                    entry.key() + " " + QString::number(code.key()) + " " + reference;
                const bool isWritten =
                    written.measured.value({entry.key(), reference}).contains(name);
                if (isWritten && name.isEmpty()) {
                    findings.warning("unknown-id", "SelectedMeasurementsRefSignalListMap", item,
                                     "no measurement has this code; the block writes the line "
                                     "with an empty measurement name");
                } else if (!isWritten) {
                    findings.warning("not-written", "SelectedMeasurementsRefSignalListMap", item,
                                     !setup.all.contains(reference)
                                         ? "the design has no reference signal " + reference
                                         : signalReason(setup, selected, entry.key()));
                }
            }
        }
    }
}

QString modesText(const TestModes& modes) {
    return QString("%1, %2 cycle, %3 strobe")
        .arg(modes.dramTypeText(), modes.cycle() == 0 ? "read" : "write",
             modes.dqsSignalMode == 0 ? "continuous" : "bursting");
}

// Why a stored compliance group writes no line.
QString groupReason(const ProbeSetup& setup, const Written& written, const QString& group,
                    const QList<int>& ids) {
    if (group.contains('_')) {
        return "only a signal type's key writes a line; " + group +
               " is a key of a tree level "
               "below it";
    }
    const TestModes modes =
        blockTestModes(setup.storedInt("dramType"), setup.storedInt("dqsSignalMode"),
                       setup.storedInt("modeOfOperation"), *setup.controller);
    const QMultiHash<qint32, QString> offered =
        complianceNamesFor(group, modes.dramTypeText(), modes.cycle(), modes.dqsSignalMode);
    if (std::none_of(ids.cbegin(), ids.cend(), [&](int id) { return offered.contains(id); })) {
        return "none of the group's tests applies under " + modesText(modes) +
               ", the modes by which the block judges them";
    }
    const bool hasRecord =
        std::any_of(written.watched.cbegin(), written.watched.cend(), [&](const QString& key) {
            return setup.all.contains(key) && setup.all.value(key)->signalType == group;
        });
    return hasRecord ? "the block leaves it out" : "no signal of type " + group + " is watched";
}

void checkCompliance(const ProbeSetup& setup, const Written& written, Findings& findings) {
    if (!written.complianceOn) {
        return;  // compliance off, as stored or by a DDR simulation, writes no test
    }
    const db::ParamIter stored(setup.probeInstance());
    const IntListMap groups = readParamIntListMap(stored, "SelectedGroupComplianceListMap");
    for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
        if (written.compliance.contains(group.key()) || group.value().isEmpty()) {
            continue;
        }
        const QString reason = groupReason(setup, written, group.key(), group.value());
        for (const int id : group.value()) {
            findings.warning("not-written", "SelectedGroupComplianceListMap",
                             group.key() + " " + QString::number(id), reason);
        }
    }
    const IntListMap perSignal = readParamIntListMap(stored, "SelectedComplianceListMap");
    for (auto signal = perSignal.cbegin(); signal != perSignal.cend(); ++signal) {
        for (const int id : signal.value()) {
            findings.warning("not-written", "SelectedComplianceListMap",
                             signal.key() + " " + QString::number(id),
                             "the block takes compliance tests per signal type only");
        }
    }
    // The receiving side's signals and their companions join the block with compliance on.
    QSet<QString> chosen;
    for (const QString& key : readParamStringList(stored, "SelectedSignalList")) {
        chosen.insert(key);
    }
    const ReferenceMap references =
        readParamReferenceMap(stored, "SelectedMeasurementsRefSignalListMap");
    for (const QHash<int, QStringList>& lists : references) {
        for (const QStringList& list : lists) {
            chosen.unite(QSet<QString>(list.cbegin(), list.cend()));
        }
    }
    QMap<QString, int> added;
    for (const QString& key : written.watched) {
        if (!chosen.contains(key) && setup.all.contains(key)) {
            ++added[setup.all.value(key)->signalType];
        }
    }
    if (!added.isEmpty()) {
        QStringList byType;
        int total = 0;
        for (auto it = added.cbegin(); it != added.cend(); ++it) {
            byType << QString("%1 %2").arg(it.key()).arg(it.value());
            total += it.value();
        }
        findings.note("compliance-adds", "EnableComplianceMeasurements", {},
                      QString("compliance adds %1 signals of the receiving side and their "
                              "companions beyond the selection and its references: %2")
                          .arg(total)
                          .arg(byType.join(", ")));
    }
}

}  // namespace

void checkBlock(const ProbeSetup& setup, const QString& text,
                const std::vector<std::string>& warnings, Findings& findings) {
    for (const std::string& warning : warnings) {
        findings.warning("netlist-warning", {}, {}, QString::fromStdString(warning).trimmed());
    }
    const NetlistBlock block = readBlock(text);
    checkShape(block, setup, findings);
    const Written written = writtenOf(block);
    checkCodeWords(setup, findings);
    checkSignals(setup, written, findings);
    checkMeasurements(setup, written, findings);
    checkCompliance(setup, written, findings);
}

QStringList canonicalBlock(standin::Host& host, const QString& probe) {
    const standin::CallResult result = host.netlistProbe(probe.toStdString());
    host.takeWarnings();
    NetlistBlock block = readBlock(QString::fromStdString(result.text));
    // A line's measurements come in the order of their stored list, which means nothing.
    for (QStringList& line : block.nodeMeasMap) {
        std::sort(line.begin() + std::min(2, int(line.size())), line.end());
    }
    QStringList lines = block.sortedLines();
    for (const QString& name : block.settingNames) {
        lines << "S " + name + "=" + block.settings.value(name);
    }
    return lines;
}

}  // namespace lanetap
