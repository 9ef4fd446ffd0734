// VISA's resource expressions.
#pragma once

#include <optional>
#include <string_view>

namespace vantrel::bench {

/// Whether `expression` describes the whole of `resource`, without regard to case. No value: it is not an expression.
///
/// "?" is any character; "*" and "+" repeat what stands before them from 0 and from 1 times on; "[list]" and "[^list]"
/// are one character in or out of the list; "|" separates alternatives; "()" groups; "\" takes the next one literally.
std::optional<bool> Matches(std::string_view expression, std::string_view resource);

}  // namespace vantrel::bench
