#pragma once

#include <QtGlobal>
#include <vector>

namespace LaneTapUI {

// The order in which a QHash walks entries inserted one after another, each under a key of its
// own, worked out from the keys' hash values alone (in the order of insertion, as qHash gives them
// with the hash's seed). The answer holds positions in `hashes`. The walk of a board's selection
// is known this way without building the hashes it is defined by.
std::vector<int> qHashWalkOrder(const std::vector<uint>& hashes);

}  // namespace LaneTapUI
