#pragma once

#include <QJsonObject>

namespace lanetap {

// What `lanetap generate` builds: one controller U1 driving `channels` channels of `devices`
// memories each. Every memory has its own data lanes (width bits, their strobes and, except for
// x4, their masks); the clock and the address and command nets of a channel are shared by the
// controller and all of that channel's memories.
struct GeneratorOptions {
    bool lpddr4 = false;
    int channels = 1;
    int devices = 1;
    int width = 8;     // 4, 8 or 16 data bits per memory
    int ebdNodes = 0;  // board nodes per memory port; above 0 the memories use board models
    bool dieNodes = false;
    bool ddrSimulation = false;
    bool readMode = false;
};

// The design file, with a probe X1 that selects every signal that discovery will find, gives
// each an Eye measurement (and each DQ a Skew against its strobe) and turns compliance on with
// every test the compliance page offers each group for this bus.
QJsonObject generateDesign(const GeneratorOptions& options);

}  // namespace lanetap
