// The attributes of VISA's objects.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>

namespace vantrel::bench {

/// Numbers of the attributes that the bench itself looks at.
inline constexpr std::uint32_t kAttributeTimeOut = 0x3FFF001A;
inline constexpr std::uint32_t kAttributeTermChar = 0x3FFF0018;
inline constexpr std::uint32_t kAttributeTermCharEnabled = 0x3FFF0038;
inline constexpr std::uint32_t kAttributeLockState = 0x3FFF0004;

/// A value with the width that VISA gives it in the caller's memory.
using AttributeValue = std::variant<std::uint8_t, std::uint16_t, std::uint32_t, std::string>;

struct Attribute {
    AttributeValue value;
    std::uint32_t greatest = 0;  ///< that may be set; 0: read only
};

using Attributes = std::map<std::uint32_t, Attribute>;

/// Those of a resource manager.
Attributes ManagerAttributes();

/// Those of a session that the manager `manager` opened, with VISA's defaults and a time-out of 2000 ms. `identity` is
/// the instrument's reply to *IDN?.
Attributes SessionAttributes(std::string_view resource, std::string_view identity, std::uint32_t manager);

/// Its value as a number; 0 for a text.
std::uint32_t NumberOf(const AttributeValue& value);

/// Gives a number the value `number`, in its own width.
void Assign(AttributeValue& value, std::uint32_t number);

}  // namespace vantrel::bench
