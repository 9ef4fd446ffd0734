// Lists of texts, which tests hold against each other.
#pragma once

#include <string>
#include <vector>

namespace vantrel {

using Texts = std::vector<std::string>;

/// The numbers from `first` to `last`.
inline Texts Counting(int first, int last) {
    Texts numbers;
    for (int i = first; i <= last; ++i) numbers.push_back(std::to_string(i));
    return numbers;
}

/// The numbers from 1 to `count`.
inline Texts Counting(int count) { return Counting(1, count); }

}  // namespace vantrel
