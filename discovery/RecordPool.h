#pragma once

#include <cstddef>

namespace LaneTapUI::RecordPool {

// Where signal records live. A board has tens of thousands of them, made in one walk and given
// back together: they are cut from slabs of a megabyte, each made resident in one call, and a slab
// goes back to the system when its last record does. Safe to use from any thread.
void* allocate(std::size_t size);
void release(void* record, std::size_t size);

// The slabs held now, the one being cut from included.
int slabCount();

}  // namespace LaneTapUI::RecordPool
