#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace LaneTapUI {

// Slots, at least twice as many as the entries the table will hold, probed one after another
// from the slot that the high bits of a Fibonacci hash name; an empty slot holds `Entry{}`. A
// board's stored selection is read and its records are told apart with these: tens of thousands
// of entries, and no allocation for each.
template <class Entry>
class ProbedTable {
public:
    explicit ProbedTable(std::size_t most) {
        while ((std::size_t(1) << bits) < 2 * most) {
            ++bits;
        }
        slots.assign(std::size_t(1) << bits, Entry{});
    }

    // The slot whose entry `matches` accepts, or else the empty slot where that entry belongs.
    template <class Matches>
    Entry& slot(std::uint64_t hash, Matches matches) {
        const std::size_t mask = slots.size() - 1;
        std::size_t at = std::size_t((hash * 0x9E3779B97F4A7C15u) >> (64 - bits));
        while (!(slots[at] == Entry{}) && !matches(slots[at])) {
            at = (at + 1) & mask;
        }
        return slots[at];
    }

private:
    int bits = 4;
    std::vector<Entry> slots;
};

}  // namespace LaneTapUI
