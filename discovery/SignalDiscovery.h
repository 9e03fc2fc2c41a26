#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "discovery/SignalRecord.h"
#include "host/Database.h"
#include "host/DdrMetaData.h"
#include "parameters/ControllerParameters.h"

namespace LaneTapUI {

// The two copies of the signal walk: the netlist writer's records carry nets, the dialog's carry
// none (every net empty, no node suffixes, no pass over board nodes). Keys are the same in both;
// the texts only the signal trees show (group key, display name) are left empty by the netlist's.
enum class DiscoveryKind { Netlist, Dialog };

// Port name to the node names of a board description, in order.
using EbdNodes = QHash<QString, QStringList>;
// Terminal name to net name, for connected terminals only.
using NetsByTerminal = QHash<QString, QString>;

// The parameters of the design's first DDR_Controller, or the defaults without one.
std::unique_ptr<ControllerParameters> findControllerParameters(db::Design* design);

// Makes a record in `store` for every DDR signal of every instance of the design and fills
// `signals` with them by key. `controller` decides which instances also show a receiver output
// node.
void discoverSignals(db::Design* design, const MemoryTxRxComponentParameters& controller,
                     DiscoveryKind kind, SignalStore& store, SignalRecordHash& signals);

// The board nodes of each port of an instance, read from its parameters whatever its mode.
EbdNodes readEbdNodes(db::Instance* instance);
NetsByTerminal collectNets(db::Instance* instance);

}  // namespace LaneTapUI
