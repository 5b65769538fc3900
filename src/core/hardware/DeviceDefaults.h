#pragma once
// What a device of each type holds when it is created new, and the set of devices a new
// machine starts with.
#include <cstdint>

#include "core/hardware/Device.h"

namespace arden {

class DeviceStore;

// Fills `device` (type and number already set) with the settings of a new device of its type.
void applyNewDeviceDefaults(Device& device);

// Adds the devices of a new Windows XP machine: one processor, memory of `memoryMb`, an IDE
// DVD/CD-ROM drive on IDE 1:0 set to auto detect, a floppy drive, a bridged network adapter
// with an address generated from `macSeed`, USB, sound, display and mouse.
void addNewMachineDevices(DeviceStore& store, int memoryMb, std::uint32_t macSeed);

// Gives an added network adapter a generated address and offset as the products number them:
// offset ten per adapter number, address the machine's base moved on by the offset. The base
// is another adapter's generated address less its offset, or made from `macSeed` when no
// adapter has one.
void giveGeneratedAddress(const DeviceStore& store, Device& nic, std::uint32_t macSeed);

}  // namespace arden
