#include "bench/resource_name.h"

#include "bench/text.h"

#include <algorithm>
#include <array>

namespace vantrel::bench {
namespace {

struct InterfaceWord {
    std::string_view word;
    Interface interface;
};
// What begins like another one stands before it.
constexpr std::array<InterfaceWord, 7> kInterfaces = {{{"GPIB-VXI", Interface::kGpibVxi},
                                                       {"GPIB", Interface::kGpib},
                                                       {"VXI", Interface::kVxi},
                                                       {"ASRL", Interface::kSerial},
                                                       {"PXI", Interface::kPxi},
                                                       {"TCPIP", Interface::kTcpip},
                                                       {"USB", Interface::kUsb}}};
constexpr std::array<std::string_view, 7> kClasses = {"INSTR",  "INTFC",   "SOCKET",   "RAW",
                                                      "MEMACC", "SERVANT", "BACKPLANE"};
constexpr std::string_view kSeparator = "::";

std::vector<std::string> WordsOf(std::string_view name) {
    std::vector<std::string> words;
    std::size_t end = 0;
    while ((end = name.find(kSeparator)) != std::string_view::npos) {
        words.emplace_back(name.substr(0, end));
        name.remove_prefix(end + kSeparator.size());
    }
    words.emplace_back(name);
    return words;
}

}  // namespace

std::string ResourceName::Whole() const {
    const auto* const word = std::ranges::find(kInterfaces, interface, &InterfaceWord::interface);
    std::string whole = std::string(word->word) + std::to_string(board);
    for (const std::string& part : address) whole.append(kSeparator).append(part);
    return whole.append(kSeparator).append(resource_class);
}

std::optional<ResourceName> ParseResourceName(std::string_view name) {
    std::vector<std::string> words = WordsOf(Trim(name));
    words.front() = Upper(words.front());
    const auto* const known = std::ranges::find_if(
        kInterfaces, [&](const InterfaceWord& candidate) { return words[0].starts_with(candidate.word); });
    if (known == kInterfaces.end() || std::ranges::find(words, "") != words.end()) return std::nullopt;

    ResourceName parsed = {known->interface, 0, {}, "INSTR"};
    const std::string board = words[0].substr(known->word.size());
    constexpr int kBoards = 0x10000;
    const auto number = WholeNumber(board);
    if (!board.empty() && (!number || *number < 0 || *number >= kBoards)) return std::nullopt;
    parsed.board = static_cast<std::uint16_t>(number.value_or(0));
    if (words.size() > 1 && std::ranges::find(kClasses, Upper(words.back())) != kClasses.end()) {
        parsed.resource_class = Upper(words.back());
        words.pop_back();
    }
    parsed.address.assign(words.begin() + 1, words.end());
    // USB0::vendor::product::serial::interface number, GPIB0::primary::secondary: some clients write a 0 for none.
    const std::size_t words_without_it = parsed.interface == Interface::kUsb ? 3 : 1;
    const bool may_have_it = parsed.interface == Interface::kUsb || parsed.interface == Interface::kGpib;
    if (may_have_it && parsed.address.size() == words_without_it + 1 && parsed.address.back() == "0")
        parsed.address.pop_back();
    return parsed;
}

bool SameResource(std::string_view a, std::string_view b) {
    const auto whole_a = ParseResourceName(a);
    const auto whole_b = ParseResourceName(b);
    return whole_a && whole_b ? Upper(whole_a->Whole()) == Upper(whole_b->Whole()) : Upper(a) == Upper(b);
}

}  // namespace vantrel::bench
