#include "core/hardware/NodeAssignment.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <set>
#include <span>

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

// The buses in the order a new device tries them (see placeOnFirstFreeNode).
constexpr Bus kOriginalOrder[] = {Bus::Ide, Bus::Scsi};
constexpr Bus kModernDiskOrder[] = {Bus::Nvme, Bus::Scsi, Bus::Sata, Bus::Ide};
constexpr Bus kModernCdRomOrder[] = {Bus::Sata, Bus::Ide, Bus::Scsi};

bool sitsOn(const Device& d, Bus bus, int controller, int node) {
    return d.node.ControllerType() == busName(bus) && d.node.ControllerNumber() == controller &&
           d.node.NodeNumber() == node;
}

bool isPlaced(const Device& d) {
    return busFromName(d.node.ControllerType()) && d.node.ControllerNumber() >= 0 && d.node.NodeNumber() >= 0;
}

void place(Device& d, Bus bus, int controller, int node) {
    if (d.type == DeviceType::HardDisk && !busRow(bus).diskType && equalsIgnoreCase(d.settings.text(".deviceType"), "disk"))
        d.settings.unset(".deviceType");
    d.node.setControllerType(std::string(busName(bus)));
    d.node.setControllerNumber(controller);
    d.node.setNodeNumber(node);
}

Message busFull(Bus bus) { return Message{MessageKind::Information, {TextPart::fromId(170)}, {TextPart::fromId(busRow(bus).fullNoticeId)}}; }

Message notice(int textId) { return Message{MessageKind::Information, {TextPart::fromId(170)}, {TextPart::fromId(textId)}}; }

Message invalidSelection(TextParts text) {
    return Message{MessageKind::Warning, {TextPart::fromId(191)}, std::move(text)};
}

// "SCSI" for a generic SCSI device, "IDE, SCSI or SATA" for a DVD/CD-ROM drive.
std::string allowedBusesText(DeviceType type) {
    std::vector<std::string_view> names;
    for (const BusRow& row : busRows()) {
        if (busAllowed(type, row.bus)) names.push_back(row.label);
    }
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "" : i + 1 == names.size() ? " or " : ", ") + std::string(names[i]);
    return text;
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

int nodesPerController(const DeviceStore& store, Bus bus, const Device& controller) {
    if (bus != Bus::Scsi) return busRow(bus).nodes;
    // SCSI: the original products offer n:0-n:6 on every type, and so does a BusLogic controller
    // anywhere. Later products give LSI Logic, LSI Logic SAS and paravirtual controllers units
    // 0-15 (7 the controller's own), the reference's confirmed figure for hardware version 7 on;
    // the paravirtual controller's units up to 63 are taken where the product tables say the
    // product has them (the first hardware version of that is not settled by the sources).
    const BusOptions& options = store.busOptions;
    const std::string type = toLowerAscii(controller.settings.text(".virtualDev"));
    if (!options.wideScsi || type.empty() || type == "buslogic") return busRow(bus).nodes;
    if (type == "pvscsi" && options.wideParavirtual) return 64;
    return 16;
}

std::string nodeLabel(Bus bus, int controller, int node) {
    return std::string(busName(bus)) + " " + std::to_string(controller) + ":" + std::to_string(node);
}

std::vector<std::string> nodeList(const DeviceStore& store, Bus bus) {
    const BusRow& row = busRow(bus);
    // Every node of the bus with its holder text (empty: free).
    std::map<NodeKey, std::string> nodes;
    auto addController = [&](int number, int count) {
        for (int n = 0; n < count; ++n) nodes[{number, n}];
        if (row.ownNode >= 0) nodes[{number, row.ownNode}] = std::string(kControllerHolderPrefix);
    };
    if (!row.declaredControllers) {
        for (int c = 0; c < row.maxControllers; ++c) addController(c, row.nodes);
    } else {
        for (const Device& controller : store.devices(row.controllerType)) {
            if (controller.number >= 0) addController(controller.number, nodesPerController(store, bus, controller));
        }
    }
    std::set<NodeKey> taken;  // the first device on a node holds it
    for (DeviceType t : kNodeTypes) {
        if (!busAllowed(t, bus)) continue;
        for (const Device& d : store.devices(t)) {
            if (d.node.ControllerType() != row.label || !isPlaced(d)) continue;
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
    const auto row = std::find_if(busRows().begin(), busRows().end(), [&](const BusRow& r) {
        return label.size() > r.label.size() && label.starts_with(r.label) && label[r.label.size()] == ' ';
    });
    if (row == busRows().end()) return std::nullopt;
    parsed.bus = row->bus;
    rest = label.substr(row->label.size() + 1);
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
            "A " + std::string(englishTypeName(type)) + " sits on " + allowedBusesText(type) + " nodes only, not on " +
            bare + ". Free nodes: " + freeNodesText(store, type))});
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
        result.message = busFull(parsed->bus);
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
    result.message = busFull(bus);
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
        if (!result.placed) result.notices.push_back(busFull(Bus::Scsi));
        return result;
    }
    if (store.busOptions.modernPlacement) {
        std::span<const Bus> order = device.type == DeviceType::CdRom ? std::span<const Bus>(kModernCdRomOrder)
                                                                      : std::span<const Bus>(kModernDiskOrder);
        for (Bus bus : order) {
            if (placeOnBus(store, device, bus)) {
                result.placed = true;
                return result;
            }
        }
        result.notices.push_back(notice(404));
        return result;
    }
    if (placeOnBus(store, device, kOriginalOrder[0])) {
        result.placed = true;
        return result;
    }
    result.notices.push_back(busFull(kOriginalOrder[0]));
    result.placed = placeOnBus(store, device, kOriginalOrder[1]);
    if (!result.placed) result.notices.push_back(notice(173));
    return result;
}

}  // namespace

std::string freeNodesText(const DeviceStore& store, DeviceType type) {
    std::string text;
    for (const BusRow& row : busRows()) {
        if (!busAllowed(type, row.bus)) continue;
        for (const std::string& label : nodeList(store, row.bus)) {
            if (label.find('-') == std::string::npos) text += (text.empty() ? "" : ", ") + label;
        }
    }
    return text.empty() ? std::string("none") : text;
}

bool hasFreeNode(const DeviceStore& store, DeviceType type) {
    if (!isNodeDevice(type)) return true;
    for (const BusRow& row : busRows()) {
        if (busAllowed(type, row.bus) && findFirstFreeNode(nodeList(store, row.bus))) return true;
    }
    return false;
}

std::vector<const Device*> devicesOnController(const DeviceStore& store, Bus bus, int number) {
    std::vector<const Device*> held;
    for (DeviceType t : kNodeTypes) {
        for (const Device& d : store.devices(t)) {
            if (d.node.ControllerType() == busName(bus) && d.node.ControllerNumber() == number) held.push_back(&d);
        }
    }
    std::stable_sort(held.begin(), held.end(),
                     [](const Device* a, const Device* b) { return a->node.NodeNumber() < b->node.NodeNumber(); });
    return held;
}

std::vector<std::string> removeController(DeviceStore& store, DeviceType controllerType, std::string_view identifier) {
    std::vector<std::string> report;
    const auto bus = busOfController(controllerType);
    const Device* controller = bus ? store.find(controllerType, identifier) : nullptr;
    if (!controller) return report;
    // The devices by identity, with the names and nodes they had while the controller stood.
    struct Held {
        DeviceType type;
        std::string identifier;
        std::string before;
    };
    std::vector<Held> held;
    for (const Device* d : devicesOnController(store, *bus, controller->number))
        held.push_back({d->type, d->identifier, store.displayText(*d) + " (" + placedNodeLabel(*d) + ")"});
    store.remove(controllerType, identifier);
    // Where the devices go: IDE, the bus's other controllers, then the other buses.
    std::vector<Bus> order{Bus::Ide};
    if (*bus != Bus::Ide) order.push_back(*bus);
    for (const BusRow& row : busRows()) {
        if (std::find(order.begin(), order.end(), row.bus) == order.end()) order.push_back(row.bus);
    }
    for (const Held& h : held) {
        Device* d = store.find(h.type, h.identifier);
        d->node.setControllerNumber(-1);
        d->node.setNodeNumber(-1);
        d->node.setControllerType({});
        const bool moved = std::any_of(order.begin(), order.end(),
                                       [&](Bus to) { return busAllowed(h.type, to) && placeOnBus(store, *d, to); });
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
    const auto bus = busFromName(d.node.ControllerType());
    if (!bus || !busRow(*bus).declaredControllers || store.findByNumber(busRow(*bus).controllerType, controller))
        return {};
    const BusRow& row = busRow(*bus);
    return store.displayText(d) + " sits on " + placedNodeLabel(d) + ", but the file declares no " +
           std::string(row.label) + " controller " + std::to_string(controller) + " (" + std::string(row.keyStem) +
           std::to_string(controller) + ".present)";
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
