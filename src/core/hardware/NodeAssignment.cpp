#include "core/hardware/NodeAssignment.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <set>

#include "core/hardware/DeviceTexts.h"
#include "core/support/TextUtil.h"

namespace arden {
namespace {

constexpr DeviceType kNodeTypes[] = {DeviceType::HardDisk, DeviceType::CdRom, DeviceType::GenericScsi};

using NodeKey = std::pair<int, int>;  // controller, node

// Holder kinds, told apart by the beginning of the holder text.
struct HolderKind {
    std::string_view prefix;
    DeviceType type;
};
constexpr HolderKind kHolderKinds[] = {
    {"Hard", DeviceType::HardDisk}, {"CD", DeviceType::CdRom}, {"Gen", DeviceType::GenericScsi}};

bool sitsOn(const Device& d, Bus bus, int controller, int node) {
    return d.node.ControllerType() == busName(bus) && d.node.ControllerNumber() == controller &&
           d.node.NodeNumber() == node;
}

bool isPlaced(const Device& d) {
    return busFromName(d.node.ControllerType()) && d.node.ControllerNumber() >= 0 && d.node.NodeNumber() >= 0;
}

void place(Device& d, Bus bus, int controller, int node) {
    d.node.setControllerType(std::string(busName(bus)));
    d.node.setControllerNumber(controller);
    d.node.setNodeNumber(node);
}

Message notice(int textId) { return Message{MessageKind::Information, {TextPart::fromId(170)}, {TextPart::fromId(textId)}}; }

Message invalidSelection(TextParts text) {
    return Message{MessageKind::Warning, {TextPart::fromId(191)}, std::move(text)};
}

// Puts `device` on the first free node of `bus`; false when every node is held.
Placement placeWithoutOrdering(DeviceStore& store, Device& device);

bool placeOnBus(DeviceStore& store, Device& device, Bus bus) {
    std::vector<std::string> labels = nodeList(store, bus);
    auto free = findFirstFreeNode(labels);
    if (!free) return false;
    auto parsed = parseNodeLabel(labels[*free]);
    place(device, bus, parsed->controller, parsed->node);
    return true;
}

}  // namespace

std::string_view busName(Bus bus) { return bus == Bus::Ide ? "IDE" : "SCSI"; }

std::optional<Bus> busFromName(std::string_view name) {
    if (name == "IDE") return Bus::Ide;
    if (name == "SCSI") return Bus::Scsi;
    return std::nullopt;
}

std::string nodeLabel(Bus bus, int controller, int node) {
    return std::string(busName(bus)) + " " + std::to_string(controller) + ":" + std::to_string(node);
}

bool busAllowed(DeviceType type, Bus bus) {
    return isNodeDevice(type) && (type != DeviceType::GenericScsi || bus == Bus::Scsi);
}

std::vector<std::string> nodeList(const DeviceStore& store, Bus bus) {
    // Every node of the bus with its holder text (empty: free).
    std::map<NodeKey, std::string> nodes;
    if (bus == Bus::Ide) {
        for (int c = 0; c < kIdeControllers; ++c) {
            for (int n = 0; n < kIdeNodesPerController; ++n) nodes[{c, n}];
        }
    } else {
        for (const Device& controller : store.devices(DeviceType::ScsiController)) {
            if (controller.number < 0) continue;
            for (int n = 0; n < kScsiDeviceNodes; ++n) nodes[{controller.number, n}];
            nodes[{controller.number, kScsiControllerNode}] = std::string(kControllerHolderPrefix);
        }
    }
    std::set<NodeKey> taken;  // the first device on a node holds it
    for (DeviceType t : kNodeTypes) {
        if (!busAllowed(t, bus)) continue;
        for (const Device& d : store.devices(t)) {
            if (d.node.ControllerType() != busName(bus) || !isPlaced(d)) continue;
            NodeKey key{d.node.ControllerNumber(), d.node.NodeNumber()};
            if (taken.insert(key).second) nodes[key] = store.displayText(d);
        }
    }
    std::vector<std::string> labels;
    labels.reserve(nodes.size());
    for (const auto& [key, holder] : nodes) {
        std::string label = nodeLabel(bus, key.first, key.second);
        if (!holder.empty()) label += " - " + holder;
        labels.push_back(std::move(label));
    }
    return labels;
}

std::optional<std::size_t> findFirstFreeNode(const std::vector<std::string>& labels) {
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (labels[i].find('-') == std::string::npos) return i;
    }
    return std::nullopt;
}

std::optional<ParsedNodeLabel> parseNodeLabel(std::string_view label) {
    ParsedNodeLabel parsed;
    std::string_view rest;
    if (label.starts_with("IDE ")) {
        parsed.bus = Bus::Ide;
        rest = label.substr(4);
    } else if (label.starts_with("SCSI ")) {
        parsed.bus = Bus::Scsi;
        rest = label.substr(5);
    } else {
        return std::nullopt;
    }
    std::size_t colon = rest.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    std::size_t blank = rest.find(' ', colon);
    std::string_view controller = rest.substr(0, colon);
    std::string_view node = rest.substr(colon + 1, blank == std::string_view::npos ? std::string_view::npos : blank - colon - 1);
    auto whole = [](std::string_view digits, int& out) {
        if (digits.empty() || digits.size() > 6) return false;
        auto [ptr, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), out);
        return ec == std::errc{} && ptr == digits.data() + digits.size() && out >= 0;
    };
    if (!whole(controller, parsed.controller) || !whole(node, parsed.node)) return std::nullopt;
    std::size_t dash = label.find('-');
    if (dash != std::string_view::npos) parsed.holder = std::string(label.substr(std::min(dash + 2, label.size())));
    else if (blank != std::string_view::npos && !trimBlanks(rest.substr(blank)).empty()) return std::nullopt;
    return parsed;
}

std::string placedNodeLabel(const Device& device) {
    if (!isPlaced(device)) return {};
    return nodeLabel(*busFromName(device.node.ControllerType()), device.node.ControllerNumber(), device.node.NodeNumber());
}

NodeChoice chooseNode(DeviceStore& store, DeviceType type, std::string_view identifier, std::string_view label) {
    NodeChoice result;
    label = trimBlanks(label);
    if (label == kNoNodeLabel) return result;
    Device* device = isNodeDevice(type) ? store.find(type, identifier) : nullptr;
    if (!device) {
        result.message = invalidSelection({TextPart::fixed("There is no " + std::string(englishTypeName(type)) +
                                                           " \"" + std::string(identifier) + "\" to place on a node")});
        return result;
    }
    auto parsed = parseNodeLabel(label);
    if (!parsed) {
        result.message = invalidSelection({TextPart::fixed(
            "\"" + std::string(label) + "\" is not a node label; nodes are written like \"IDE 0:1\" or \"SCSI 0:3\". Free nodes: " +
            freeNodesText(store, type))});
        return result;
    }
    const std::string bare = nodeLabel(parsed->bus, parsed->controller, parsed->node);
    if (!busAllowed(type, parsed->bus)) {
        result.message = invalidSelection({TextPart::fixed(
            "A " + std::string(englishTypeName(type)) + " sits on SCSI nodes only, not on " + bare +
            ". Free nodes: " + freeNodesText(store, type))});
        return result;
    }
    // The holder of the node, as the machine's node list shows it.
    std::vector<std::string> labels = nodeList(store, parsed->bus);
    auto item = std::find_if(labels.begin(), labels.end(), [&](const std::string& l) {
        return l == bare || l.starts_with(bare + " ");
    });
    if (item == labels.end()) {
        result.message = invalidSelection({TextPart::fixed(bare + " is not a node of this machine. Free nodes: " +
                                                           freeNodesText(store, type))});
        return result;
    }
    const std::string holderText = parseNodeLabel(*item)->holder;
    if (sitsOn(*device, parsed->bus, parsed->controller, parsed->node)) return result;
    if (holderText.empty()) {
        place(*device, parsed->bus, parsed->controller, parsed->node);
        store.orderByNode(type);
        result.changed = true;
        return result;
    }
    // The holder moves out of the way when it is a disk-like device; the controller's own node
    // ("Controller") cannot be freed and is refused.
    Device* holder = nullptr;
    for (const HolderKind& kind : kHolderKinds) {
        if (!holderText.starts_with(kind.prefix) || !busAllowed(kind.type, parsed->bus)) continue;
        for (const Device& d : store.devices(kind.type)) {
            if (sitsOn(d, parsed->bus, parsed->controller, parsed->node)) {
                holder = store.find(kind.type, d.identifier);
                break;
            }
        }
        break;
    }
    if (!holder) {
        result.message = invalidSelection({TextPart::fromId(192)});
        return result;
    }
    if (!placeOnBus(store, *holder, parsed->bus)) {
        result.message = notice(parsed->bus == Bus::Ide ? 171 : 172);
        return result;
    }
    place(*device, parsed->bus, parsed->controller, parsed->node);
    store.orderByNode(type);
    store.orderByNode(holder->type);
    result.changed = true;
    result.movedType = holder->type;
    result.movedIdentifier = holder->identifier;
    result.movedTo = placedNodeLabel(*holder);
    return result;
}

NodeChoice chooseBus(DeviceStore& store, DeviceType type, std::string_view identifier, Bus bus) {
    const Device* device = store.find(type, identifier);
    if (!device || busFromName(device->node.ControllerType()) == bus) return {};
    const std::vector<std::string> labels = nodeList(store, bus);
    if (const auto free = findFirstFreeNode(labels)) return chooseNode(store, type, identifier, labels[*free]);
    NodeChoice result;
    result.message = notice(bus == Bus::Ide ? 171 : 172);
    return result;
}

Placement placeOnFirstFreeNode(DeviceStore& store, Device& device) {
    Placement result = placeWithoutOrdering(store, device);
    if (result.placed) store.orderByNode(device.type);
    return result;
}

namespace {

Placement placeWithoutOrdering(DeviceStore& store, Device& device) {
    Placement result;
    if (!isNodeDevice(device.type)) return result;
    if (isPlaced(device)) {
        result.placed = true;
        return result;
    }
    if (device.type == DeviceType::GenericScsi) {
        result.placed = placeOnBus(store, device, Bus::Scsi);
        if (!result.placed) result.notices.push_back(notice(172));
        return result;
    }
    if (placeOnBus(store, device, Bus::Ide)) {
        result.placed = true;
        return result;
    }
    result.notices.push_back(notice(171));
    result.placed = placeOnBus(store, device, Bus::Scsi);
    if (!result.placed) result.notices.push_back(notice(173));
    return result;
}

}  // namespace

std::string freeNodesText(const DeviceStore& store, DeviceType type) {
    std::string text;
    for (Bus bus : {Bus::Ide, Bus::Scsi}) {
        if (!busAllowed(type, bus)) continue;
        for (const std::string& label : nodeList(store, bus)) {
            if (label.find('-') == std::string::npos) text += (text.empty() ? "" : ", ") + label;
        }
    }
    return text.empty() ? std::string("none") : text;
}

bool hasFreeNode(const DeviceStore& store, DeviceType type) {
    if (!isNodeDevice(type)) return true;
    for (Bus bus : {Bus::Ide, Bus::Scsi}) {
        if (busAllowed(type, bus) && findFirstFreeNode(nodeList(store, bus))) return true;
    }
    return false;
}

std::vector<const Device*> devicesOnScsiController(const DeviceStore& store, int number) {
    std::vector<const Device*> held;
    for (DeviceType t : kNodeTypes) {
        for (const Device& d : store.devices(t)) {
            if (d.node.ControllerType() == busName(Bus::Scsi) && d.node.ControllerNumber() == number) held.push_back(&d);
        }
    }
    std::stable_sort(held.begin(), held.end(),
                     [](const Device* a, const Device* b) { return a->node.NodeNumber() < b->node.NodeNumber(); });
    return held;
}

std::vector<std::string> removeScsiController(DeviceStore& store, std::string_view identifier) {
    std::vector<std::string> report;
    const Device* controller = store.find(DeviceType::ScsiController, identifier);
    if (!controller) return report;
    // The devices by identity, with the names and nodes they had while the controller stood.
    struct Held {
        DeviceType type;
        std::string identifier;
        std::string before;
    };
    std::vector<Held> held;
    for (const Device* d : devicesOnScsiController(store, controller->number))
        held.push_back({d->type, d->identifier, store.displayText(*d) + " (" + placedNodeLabel(*d) + ")"});
    store.remove(DeviceType::ScsiController, identifier);
    for (const Held& h : held) {
        Device* d = store.find(h.type, h.identifier);
        d->node.setControllerNumber(-1);
        d->node.setNodeNumber(-1);
        d->node.setControllerType({});
        bool moved = busAllowed(h.type, Bus::Ide) && placeOnBus(store, *d, Bus::Ide);
        if (!moved) moved = placeOnBus(store, *d, Bus::Scsi);
        if (moved) {
            report.push_back(h.before + " moved to " + placedNodeLabel(*d));
        } else {
            report.push_back(h.before + " removed with the controller");
            store.remove(h.type, h.identifier);
        }
    }
    for (DeviceType t : kNodeTypes) store.orderByNode(t);
    return report;
}

std::string undeclaredControllerText(const DeviceStore& store, const Device& d) {
    const int controller = d.node.ControllerNumber();
    if (d.node.ControllerType() != busName(Bus::Scsi) || store.findByNumber(DeviceType::ScsiController, controller))
        return {};
    return store.displayText(d) + " sits on " + placedNodeLabel(d) + ", but the file declares no SCSI controller " +
           std::to_string(controller) + " (scsi" + std::to_string(controller) + ".present)";
}

std::vector<std::string> devicesOnUndeclaredControllers(const DeviceStore& store) {
    std::vector<std::string> lines;
    for (DeviceType t : kNodeTypes) {
        for (const Device& d : store.devices(t)) {
            if (std::string text = undeclaredControllerText(store, d); !text.empty()) lines.push_back(std::move(text));
        }
    }
    return lines;
}

}  // namespace arden
