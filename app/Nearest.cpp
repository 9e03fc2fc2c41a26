#include "app/Nearest.h"

#include <algorithm>
#include <vector>

#include "standin/DesignFile.h"

namespace lanetap {

namespace {

// Edits (insert, delete, replace) that turn one text into the other.
int editDistance(const QString& a, const QString& b) {
    std::vector<int> row(static_cast<std::size_t>(b.size()) + 1);
    for (int j = 0; j <= b.size(); ++j) {
        row[j] = j;
    }
    for (int i = 1; i <= a.size(); ++i) {
        int diagonal = row[0];
        row[0] = i;
        for (int j = 1; j <= b.size(); ++j) {
            const int above = row[j];
            const int replace = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({above + 1, row[j - 1] + 1, replace});
            diagonal = above;
        }
    }
    return row[b.size()];
}

}  // namespace

QString nearestName(const QString& word, const QStringList& names) {
    const QString folded = word.toCaseFolded();
    // A third of the word may be wrong, and never fewer than two letters.
    int best = std::max(2, int(word.size()) / 3) + 1;
    QString nearest;
    for (const QString& name : names) {
        // Names far longer or shorter cannot be near; skip them without counting.
        if (std::abs(int(name.size()) - int(word.size())) >= best) {
            continue;
        }
        const int distance = editDistance(folded, name.toCaseFolded());
        if (distance < best) {
            best = distance;
            nearest = name;
        }
    }
    return nearest;
}

QString nearestHint(const QString& word, const QStringList& names) {
    const QString nearest = nearestName(word, names);
    return nearest.isEmpty() ? QString() : QString(" (nearest: %1)").arg(standin::quoted(nearest));
}

}  // namespace lanetap
