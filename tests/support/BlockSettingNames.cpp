#include "support/BlockSettingNames.h"

#include "support/TestSupport.h"

namespace lanetap_test {

const QStringList& blockSettingNames() {
    // One name a line, as the post-processing module reads them.
    static const QStringList names =
        QString::fromUtf8(readBytes(LANETAP_SOURCE_DIR "/tests/data/block-settings.txt"))
            .split('\n', Qt::SkipEmptyParts);
    return names;
}

}  // namespace lanetap_test
