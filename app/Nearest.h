#pragma once

#include <QString>
#include <QStringList>

namespace lanetap {

// The known name closest to `word` in spelling (letters compared without regard to case), when it
// is close enough to be a slip of the keyboard; otherwise an empty text.
QString nearestName(const QString& word, const QStringList& names);

// " (nearest: 'NAME')" for the nearest known name, or an empty text when there is none.
QString nearestHint(const QString& word, const QStringList& names);

}  // namespace lanetap
