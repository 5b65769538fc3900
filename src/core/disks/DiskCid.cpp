#include "core/disks/DiskCid.h"

#include <random>

namespace arden::disks {

std::string makeCid(const std::function<double()>& uniform01) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (int i = 0; i < 8; ++i) {
        int value = static_cast<int>(uniform01() * 16.0) + 1;
        if (value >= 16) text += "10";
        else text += kDigits[value];
    }
    return text.substr(0, 8);
}

std::string makeCid() {
    static thread_local std::mt19937 engine{std::random_device{}()};
    std::uniform_real_distribution<double> draw(0.0, 1.0);
    return makeCid([&] { return draw(engine); });
}

}  // namespace arden::disks
