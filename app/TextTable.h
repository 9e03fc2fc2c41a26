#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace lanetap {

// Plain-text table for a terminal: a header line, then one line per row with the columns padded
// to their widest cell. A row may carry note lines, printed indented under it.
class TextTable {
public:
    explicit TextTable(QStringList header);
    void addRow(QStringList cells, QStringList notes = {});
    QString text() const;

private:
    struct Row {
        QStringList cells;
        QStringList notes;
    };
    QStringList header;
    QList<Row> rows;
};

}  // namespace lanetap
