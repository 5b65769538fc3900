#pragma once
// A device of `type` added to `store` on the node of `label` ("SATA 0:1"); "" leaves it unplaced.
#include "core/hardware/NodeAssignment.h"

namespace arden::test {

inline Device& addOnNode(DeviceStore& store, DeviceType type, std::string_view label) {
    Device& d = store.createDevice(type);
    if (auto p = parseNodeLabel(label)) {
        d.node.setControllerType(std::string(busName(p->bus)));
        d.node.setControllerNumber(p->controller);
        d.node.setNodeNumber(p->node);
    }
    return d;
}

}  // namespace arden::test
