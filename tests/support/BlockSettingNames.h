#pragma once

#include <QStringList>

namespace lanetap_test {

// The settings of the block, in the order the post-processing module reads them, as
// tests/data/block-settings.txt lists them apart from the writer's own table.
const QStringList& blockSettingNames();

}  // namespace lanetap_test
