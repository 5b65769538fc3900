// The .vmx loader and writer on any bytes: load, write, load the written text, write again.
// Nothing may crash, the loader must take back what the writer wrote, and the two writes must
// be equal (a re-save of a saved file changes nothing).
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzCheck.h"
#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"

namespace {

const std::string kFolder = "/vms/fuzz/";
const std::string kFile = "fuzz.vmx";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace arden;
    std::string_view bytes(reinterpret_cast<const char*>(data), size);
    LoadResult first = parseVmxText(bytes, kFolder, kFile, kFolder + kFile);
    if (!first.ok) return 0;
    std::string written = writeVmxText(first.config);

    LoadResult second = parseVmxText(written, kFolder, kFile, kFolder + kFile);
    if (!second.ok) fuzz::fail("the loader refuses the text the writer wrote", "a loaded configuration", written);
    fuzz::expectEqual("the second write differs from the first", written, writeVmxText(second.config));
    return 0;
}
