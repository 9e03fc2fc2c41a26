#pragma once

#include "app/Cli.h"

namespace lanetap {

int runNetlist(const Arguments& arguments);
int runGet(const Arguments& arguments);
int runSet(const Arguments& arguments);
int runSetup(const Arguments& arguments);
int runSignals(const Arguments& arguments);
int runCatalogue(const Arguments& arguments);
int runGenerate(const Arguments& arguments);
int runCheck(const Arguments& arguments);
int runExport(const Arguments& arguments);
int runApply(const Arguments& arguments);

}  // namespace lanetap
