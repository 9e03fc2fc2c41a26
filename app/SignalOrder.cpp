#include "app/SignalOrder.h"

#include <QCollatorSortKey>
#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "dialog/NaturalOrder.h"

namespace lanetap {

using LaneTapUI::SignalRecord;

QStringList naturallySorted(QStringList texts) {
    // The trees' collation, and the texts' code points where it finds two alike.
    LaneTapUI::prepareNaturalOrder();
    std::sort(texts.begin(), texts.end(), [](const QString& a, const QString& b) {
        const int order = LaneTapUI::naturalCompare(a, b);
        return order != 0 ? order < 0 : a < b;
    });
    return texts;
}

QList<const SignalRecord*> inTreeOrder(const LaneTapUI::SignalRecordHash& records) {
    // The levels of a signal tree: type, channel, node, then the signal; each record's keys are
    // made once, not at every comparison.
    using Levels = std::array<QCollatorSortKey, 4>;
    LaneTapUI::prepareNaturalOrder();
    std::vector<std::pair<Levels, const SignalRecord*>> keyed;
    keyed.reserve(static_cast<std::size_t>(records.size()));
    for (const SignalRecord* record : records) {
        keyed.push_back({{LaneTapUI::naturalSortKey(record->signalType),
                          LaneTapUI::naturalSortKey(record->channel),
                          LaneTapUI::naturalSortKey(record->nodeName),
                          LaneTapUI::naturalSortKey(record->signalIndex)},
                         record});
    }
    // Records alike on every level follow their keys, collated and then by code points.
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
        for (std::size_t level = 0; level < a.first.size(); ++level) {
            if (const int order = a.first[level].compare(b.first[level])) {
                return order < 0;
            }
        }
        const int order = LaneTapUI::naturalCompare(a.second->key, b.second->key);
        return order != 0 ? order < 0 : a.second->key < b.second->key;
    });
    QList<const SignalRecord*> ordered;
    ordered.reserve(int(keyed.size()));
    for (const auto& entry : keyed) {
        ordered.append(entry.second);
    }
    return ordered;
}

}  // namespace lanetap
