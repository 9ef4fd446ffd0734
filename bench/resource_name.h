// VISA's resource names, as "GPIB0::9::INSTR".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::bench {

/// The kinds of interface, with VISA's numbers.
enum class Interface : std::uint16_t { kGpib = 1, kVxi = 2, kGpibVxi = 3, kSerial = 4, kPxi = 5, kTcpip = 6, kUsb = 7 };

struct ResourceName {
    Interface interface = Interface::kGpib;
    std::uint16_t board = 0;
    std::vector<std::string> address;  ///< the words between the interface and the class, as they are written
    std::string resource_class;        ///< "INSTR" and the like, in capitals

    /// The whole name in one form for all ways of writing it: with board number and class, without a last 0 that
    /// stands for no interface number (USB) and no secondary address (GPIB).
    std::string Whole() const;
};

/// The parts of a resource name. The board number is 0 and the class INSTR where they are left out. No value: it is no
/// resource name.
std::optional<ResourceName> ParseResourceName(std::string_view name);

/// Whether both name the same resource. What is not a resource name is compared without regard to case.
bool SameResource(std::string_view a, std::string_view b);

}  // namespace vantrel::bench
