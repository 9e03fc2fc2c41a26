#pragma once

#include "app/Cli.h"

// The commands of the lanetap program, each described where it is run.
namespace lanetap {

const Command& netlistCommand();
const Command& checkCommand();
const Command& getCommand();
const Command& setCommand();
const Command& exportCommand();
const Command& applyCommand();
const Command& setupCommand();
const Command& signalsCommand();
const Command& catalogueCommand();
const Command& generateCommand();

}  // namespace lanetap
