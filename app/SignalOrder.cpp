#include "app/SignalOrder.h"

#include <QCollatorSortKey>
#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "dialog/NaturalOrder.h"

namespace lanetap {

using LaneTapUI::SignalRecord;

namespace {

int digitsEnd(const QString& text, int from) {
    while (from < text.size() && text[from].isDigit()) {
        ++from;
    }
    return from;
}

int zerosEnd(const QString& text, int from, int end) {
    while (from < end && text[from] == QLatin1Char('0')) {
        ++from;
    }
    return from;
}

// Orders text as people count: "DQ2" before "DQ10". Runs of digits compare as numbers; text
// that is equal so far compares as plain text, so that the order is total.
bool naturalLess(const QString& a, const QString& b) {
    int i = 0;
    int j = 0;
    while (i < a.size() && j < b.size()) {
        if (a[i].isDigit() && b[j].isDigit()) {
            const int endA = digitsEnd(a, i);
            const int endB = digitsEnd(b, j);
            const int startA = zerosEnd(a, i, endA);
            const int startB = zerosEnd(b, j, endB);
            if (endA - startA != endB - startB) {
                return endA - startA < endB - startB;
            }
            const int order = QStringRef(&a, startA, endA - startA)
                                  .compare(QStringRef(&b, startB, endB - startB));
            if (order != 0) {
                return order < 0;
            }
            i = endA;
            j = endB;
        } else if (a[i] != b[j]) {
            return a[i] < b[j];
        } else {
            ++i;
            ++j;
        }
    }
    if (i < a.size() || j < b.size()) {
        return j < b.size();
    }
    return a < b;
}

}  // namespace

QStringList naturallySorted(QStringList texts) {
    std::sort(texts.begin(), texts.end(), naturalLess);
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
