#include "app/TextTable.h"

#include <algorithm>

namespace lanetap {

TextTable::TextTable(QStringList header) : header(std::move(header)) {}

void TextTable::addRow(QStringList cells, QStringList notes) {
    rows.append({std::move(cells), std::move(notes)});
}

QString TextTable::text() const {
    QList<int> widths;
    for (const QString& title : header) {
        widths << title.size();
    }
    for (const Row& row : rows) {
        for (int i = 0; i < row.cells.size() && i < widths.size(); ++i) {
            widths[i] = std::max(widths[i], row.cells[i].size());
        }
    }
    auto line = [&](const QStringList& cells) {
        QString text;
        for (int i = 0; i < cells.size() && i < widths.size(); ++i) {
            const bool last = i + 1 == cells.size() || i + 1 == widths.size();
            text += last ? cells[i] : cells[i].leftJustified(widths[i] + 2);
        }
        return text + "\n";
    };
    QString text = line(header);
    for (const Row& row : rows) {
        text += line(row.cells);
        for (const QString& note : row.notes) {
            text += "    " + note + "\n";
        }
    }
    return text;
}

}  // namespace lanetap
