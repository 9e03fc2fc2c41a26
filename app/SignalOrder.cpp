#include "app/SignalOrder.h"

#include <algorithm>
#include <utility>
#include <vector>

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

namespace {

// The text by which records are sorted; the separator sorts below every printable character, so
// that "DQ" comes before "DQS".
QString treeOrder(const SignalRecord& record) {
    const QChar separator(1);
    return record.signalType + separator + record.channel + separator + record.nodeName +
           separator + record.signalIndex + separator + record.key;
}

}  // namespace

QList<const SignalRecord*> inTreeOrder(const LaneTapUI::SignalRecordHash& records) {
    // Each record's sort text is made once, not at every comparison.
    std::vector<std::pair<QString, const SignalRecord*>> keyed;
    keyed.reserve(static_cast<std::size_t>(records.size()));
    for (const SignalRecord* record : records) {
        keyed.emplace_back(treeOrder(*record), record);
    }
    std::sort(keyed.begin(), keyed.end(),
              [](const auto& a, const auto& b) { return naturalLess(a.first, b.first); });
    QList<const SignalRecord*> ordered;
    ordered.reserve(int(keyed.size()));
    for (const auto& entry : keyed) {
        ordered.append(entry.second);
    }
    return ordered;
}

}  // namespace lanetap
