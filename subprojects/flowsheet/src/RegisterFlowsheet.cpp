#include <tarvo/flowsheet/RegisterFlowsheet.h>
#include <tarvo/flowsheet/Terminator.h>
#include <tarvo/persistency/NodeFactory.h>

void registerFlowsheet() {
    if (NodeFactory::registered("Terminator")) return;
    NodeFactory::registerType<Terminator>("Terminator", "Source or sink of the streams of a flowsheet",
                                          "unit", false, {}, {}, {}, "", 40, 40);
}
