#include "bench/attributes.h"

#include "bench/resource_name.h"
#include "bench/text.h"

#include <algorithm>
#include <charconv>
#include <type_traits>

namespace vantrel::bench {
namespace {

constexpr std::uint32_t kAnyNumber = 0xFFFFFFFF;
constexpr std::uint32_t kVersion = 0x00500000;  // 5.0 of the standard
constexpr std::uint16_t kNoAddress = 0xFFFF;
constexpr std::uint16_t kTrue = 1;
constexpr std::uint16_t kFalse = 0;

/// Field `index` of a comma-separated text.
std::string Field(std::string_view text, int index) {
    for (; index > 0; --index) text.remove_prefix(std::min(text.find(','), text.size() - 1) + 1);
    return std::string(Trim(text.substr(0, text.find(','))));
}

/// "0x0020" or "32"
std::uint16_t Id(std::string_view text) {
    std::uint16_t id = 0;
    const bool is_hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (is_hexadecimal) text.remove_prefix(2);
    std::from_chars(text.data(), text.data() + text.size(), id, is_hexadecimal ? 16 : 10);
    return id;
}

Attributes CommonAttributes() {
    return {
        {0x3FFF0003, {std::uint32_t{0x00100100}}},       // version of the implementation
        {0x3FFF0170, {kVersion}},                        // version of the standard
        {0x3FFF0175, {std::uint16_t{0xFFFF}}},           // number of its maker: of nobody
        {0xBFFF0174, {std::string("VANTREL's bench")}},  // its maker
        {kAttributeLockState, {std::uint32_t{0}}},
        {0x3FFF0005, {std::uint32_t{50}, kAnyNumber}},  // length of the event queue
        {0x3FFF0007, {std::uint32_t{0}, kAnyNumber}},   // the caller's own
    };
}

}  // namespace

Attributes ManagerAttributes() {
    Attributes all = CommonAttributes();
    all[0xBFFF0001] = {std::string("RM")};
    return all;
}

Attributes SessionAttributes(std::string_view resource, std::string_view identity, std::uint32_t manager) {
    const ResourceName name = ParseResourceName(resource).value_or(ResourceName{});
    const auto address = [&name](std::size_t index) {
        return index < name.address.size() ? std::string_view(name.address[index]) : std::string_view();
    };
    Attributes all = CommonAttributes();
    all.merge(Attributes{
        {kAttributeTimeOut, {std::uint32_t{2000}, kAnyNumber}},
        {kAttributeTermChar, {std::uint8_t{'\n'}, 0xFF}},
        {kAttributeTermCharEnabled, {kFalse, kTrue}},
        {0x3FFF0016, {kTrue, kTrue}},           // END with the last byte of a message
        {0x3FFF0036, {kFalse, kTrue}},          // END does not end a read
        {0x3FFF001C, {std::uint16_t{1}, 4}},    // protocol
        {0x3FFF001E, {kFalse, kTrue}},          // direct memory access
        {0x3FFF0192, {kFalse, kTrue}},          // files are added to
        {0x3FFF0177, {std::uint16_t{0xFFFF}}},  // trigger line: the software's
        {0x3FFF0171, {static_cast<std::uint16_t>(name.interface)}},
        {0x3FFF0176, {name.board}},
        {0x3FFF00C4, {manager}},
        {0xBFFF0001, {name.resource_class.empty() ? std::string("INSTR") : name.resource_class}},
        {0xBFFF0002, {std::string(resource)}},
        {0xBFFF00E9, {std::string("VANTREL's bench")}},  // name of the interface
    });
    if (name.interface == Interface::kGpib) {
        const std::string_view secondary = address(1);
        all.merge(Attributes{
            {0x3FFF0172, {Id(address(0))}},
            {0x3FFF0173, {secondary.empty() ? kNoAddress : Id(secondary)}},
            {0x3FFF001B, {kTrue, kTrue}},      // addresses anew each time
            {0x3FFF0184, {kFalse, kTrue}},     // unaddresses afterwards
            {0x3FFF0181, {std::uint16_t{1}}},  // remote enable is asserted
        });
    }
    if (name.interface == Interface::kUsb) {
        all.merge(Attributes{
            {0x3FFF00D9, {Id(address(0))}},           // vendor
            {0x3FFF00DF, {Id(address(1))}},           // product
            {0xBFFF01A0, {std::string(address(2))}},  // serial number
            {0xBFFF0072, {Field(identity, 0)}},       // maker
            {0xBFFF0077, {Field(identity, 1)}},       // model
            {0x3FFF01A1, {std::uint16_t{0}}},         // interface number
            {0x3FFF019F, {kTrue}},                    // speaks IEEE 488.2
        });
    }
    return all;
}

std::uint32_t NumberOf(const AttributeValue& value) {
    return std::visit(
        [](const auto& held) -> std::uint32_t {
            if constexpr (std::is_same_v<decltype(held), const std::string&>)
                return 0;
            else
                return held;
        },
        value);
}

void Assign(AttributeValue& value, std::uint32_t number) {
    std::visit(
        [number](auto& held) {
            using Held = std::remove_reference_t<decltype(held)>;
            if constexpr (!std::is_same_v<Held, std::string>) held = static_cast<Held>(number);
        },
        value);
}

}  // namespace vantrel::bench
