#pragma once
// The content identifier ("CID") of a new disk's descriptor.
#include <functional>
#include <string>

namespace arden::disks {

// Eight lower-case hexadecimal characters. Each of eight draws r in [0, 1) gives the value
// floor(r * 16) + 1 (1 to 16) written in hexadecimal without leading zeros, so 16 adds the two
// characters "10"; the first eight characters are kept. A "0" therefore only ever follows a
// "1", and the identifier never starts with "0". `uniform01` supplies the draws.
std::string makeCid(const std::function<double()>& uniform01);

// The same with the program's own random source.
std::string makeCid();

}  // namespace arden::disks
