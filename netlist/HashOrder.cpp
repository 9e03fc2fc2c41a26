#include "netlist/HashOrder.h"

#include <algorithm>

namespace LaneTapUI {
namespace {

// A QHash has at least 2^4 + 1 buckets; with n bits it has 2^n plus this, a prime.
constexpr int minNumBits = 4;
constexpr unsigned char primeDeltas[] = {0,  0, 1,  3,  1,  5,  3,  3,  1,  9,  7,
                                         5,  3, 17, 27, 3,  1,  29, 3,  21, 7,  17,
                                         15, 9, 43, 35, 15, 29, 3,  11, 3,  11, 0};

int bucketsForBits(int bits) {
    return (1 << bits) + primeDeltas[bits];
}

constexpr int none = -1;

// Buckets of entry positions, each a chain in the order the hash keeps it.
class Buckets {
public:
    Buckets(const std::vector<uint>& hashes) : hashes(hashes), next(hashes.size(), none) {}

    int count() const { return int(first.size()); }

    // A full hash grows by a bit: each old bucket in turn hands its chain on, in order, to the
    // ends of the new chains.
    void grow() {
        const std::vector<int> walk = walkOrder();
        bits = std::max(bits + 1, minNumBits);
        first.assign(bucketsForBits(bits), none);
        last.assign(first.size(), none);
        for (int entry : walk) {
            append(entry);
        }
    }

    // A new key goes to the end of its bucket's chain.
    void append(int entry) {
        const int bucket = int(hashes[entry] % uint(first.size()));
        next[entry] = none;
        if (last[bucket] == none) {
            first[bucket] = entry;
        } else {
            next[last[bucket]] = entry;
        }
        last[bucket] = entry;
    }

    std::vector<int> walkOrder() const {
        std::vector<int> walk;
        walk.reserve(hashes.size());
        for (int head : first) {
            for (int entry = head; entry != none; entry = next[entry]) {
                walk.push_back(entry);
            }
        }
        return walk;
    }

private:
    const std::vector<uint>& hashes;
    std::vector<int> next;
    std::vector<int> first;
    std::vector<int> last;
    int bits = 0;
};

}  // namespace

std::vector<int> qHashWalkOrder(const std::vector<uint>& hashes) {
    Buckets buckets(hashes);
    for (int entry = 0; entry < int(hashes.size()); ++entry) {
        // As QHash::insert: the hash grows first when it holds as many entries as buckets.
        if (entry >= buckets.count()) {
            buckets.grow();
        }
        buckets.append(entry);
    }
    return buckets.walkOrder();
}

}  // namespace LaneTapUI
