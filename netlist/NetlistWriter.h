#pragma once

#include <QHash>
#include <QString>
#include <string>

#include "host/Database.h"

struct SignalRecord;

// Writes the netlist block of one probe instance. Made for one netlist call and destroyed after.
class NetlistWriter {
public:
    NetlistWriter(db::ParamIter* parameterIterator, db::Instance* probeInstance);
    ~NetlistWriter();
    NetlistWriter(const NetlistWriter&) = delete;
    NetlistWriter& operator=(const NetlistWriter&) = delete;

    // The block: the load line, one statement continued over lines, and an empty line.
    std::string writeBlock();

private:
    QHash<QString, SignalRecord*> signals;
    db::ParamIter* parameterIterator;
    db::Instance* probeInstance;
};
