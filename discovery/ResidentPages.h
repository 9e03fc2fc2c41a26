#pragma once

#include <cstddef>

namespace LaneTapUI {

// A page's first write costs a fault, about 12 us on the machines LaneTap is measured on; made
// resident in one call, a page costs about 3 us. These act on the whole pages within `size` bytes
// from `begin`. Where the system cannot make pages resident, nothing is done, and the writes
// fault them in as before.
void makeResident(const void* begin, std::size_t size);
// Gives back the pages, which read as zeros when next written.
void releasePages(const void* begin, std::size_t size);

}  // namespace LaneTapUI
