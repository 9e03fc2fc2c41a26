#include "discovery/RecordPool.h"

#include <sanitizer/asan_interface.h>

#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>

#include "discovery/ResidentPages.h"

namespace LaneTapUI::RecordPool {
namespace {

constexpr std::size_t slabBytes = std::size_t(1) << 20;
// The slab's own header, at its start; records are cut behind it.
constexpr std::size_t headerBytes = 64;
constexpr std::size_t recordAlignment = alignof(std::max_align_t);

struct Slab {
    // Records cut from the slab and not given back, and one more while records are cut from it.
    std::size_t holds;
    char* next;

    char* firstRecord() { return reinterpret_cast<char*>(this) + headerBytes; }
    char* end() { return reinterpret_cast<char*>(this) + slabBytes; }
};

struct Pool {
    std::mutex lock;
    Slab* current = nullptr;
    int slabs = 0;
};

// Never destroyed: a record may be given back by a thread that outlives the statics.
Pool& pool() {
    static Pool* const instance = new Pool;
    return *instance;
}

Slab* slabOf(void* record) {
    return reinterpret_cast<Slab*>(reinterpret_cast<std::uintptr_t>(record) & ~(slabBytes - 1));
}

Slab* newSlab() {
    void* memory = std::aligned_alloc(slabBytes, slabBytes);
    if (!memory) {
        throw std::bad_alloc();
    }
    makeResident(memory, slabBytes);
    auto* slab = new (memory) Slab{1, nullptr};
    slab->next = slab->firstRecord();
    ASAN_POISON_MEMORY_REGION(slab->next, slab->end() - slab->next);
    return slab;
}

void dropHold(Pool& pool, Slab* slab) {
    if (--slab->holds == 0) {
        --pool.slabs;
        std::free(slab);
    }
}

}  // namespace

void* allocate(std::size_t size) {
    const std::size_t step = (size + recordAlignment - 1) & ~(recordAlignment - 1);
    Pool& pool = RecordPool::pool();
    const std::lock_guard<std::mutex> guard(pool.lock);
    if (!pool.current || pool.current->next + step > pool.current->end()) {
        Slab* full = pool.current;
        pool.current = newSlab();
        ++pool.slabs;
        if (full) {
            dropHold(pool, full);
        }
    }
    char* record = pool.current->next;
    pool.current->next += step;
    ++pool.current->holds;
    ASAN_UNPOISON_MEMORY_REGION(record, size);
    return record;
}

void release(void* record, std::size_t size) {
    if (!record) {
        return;
    }
    Pool& pool = RecordPool::pool();
    const std::lock_guard<std::mutex> guard(pool.lock);
    ASAN_POISON_MEMORY_REGION(record, size);
    Slab* slab = slabOf(record);
    if (slab == pool.current && slab->holds == 2) {
        // The last record of the slab in use: it is cut again from its start.
        slab->holds = 1;
        slab->next = slab->firstRecord();
        return;
    }
    dropHold(pool, slab);
}

int slabCount() {
    Pool& pool = RecordPool::pool();
    const std::lock_guard<std::mutex> guard(pool.lock);
    return pool.slabs;
}

}  // namespace LaneTapUI::RecordPool
