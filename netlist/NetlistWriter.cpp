#include "netlist/NetlistWriter.h"

NetlistWriter::NetlistWriter(db::ParamIter* parameters, db::Instance* instance)
    : parameterIterator(parameters), probeInstance(instance) {}

NetlistWriter::~NetlistWriter() = default;

std::string NetlistWriter::writeBlock() {
    QString block = "\n#load \"python\",\"TDM_LaneTap\"\n";
    const QString probeName = QString::fromStdString(db::get_instance_name(probeInstance));
    block += "ComponentWithNodes:" + probeName + " ";
    if (signals.isEmpty()) {
        meridian_report_warning("No signals selected for '" + probeName.toStdString() +
                                "' component.\n");
    }
    block += "Type=\"ModelExtractor\" Module=\"LaneTap\" \\\n";
    // The last line keeps its blank and loses its continuation.
    block.chop(2);
    block += "\n\n";
    return block.toStdString();
}
