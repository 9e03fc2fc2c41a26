#pragma once

#include <QString>

#include "standin/Design.h"

namespace lanetap {

// Why `value`, stored as parameter `key` of `instance`, would break the settings line of the
// block, which carries it unescaped, or an empty text when it would not. Keys that do not reach
// the settings line may hold anything the loader takes. The message names the key and the
// instance. Every command that stores values asks here before it saves.
QString settingsLineProblem(const standin::Instance& instance, const QString& key,
                            const QString& value);

}  // namespace lanetap
