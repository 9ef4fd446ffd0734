// How often a test repeats itself with other chances.
#pragma once

#include <cstdlib>
#include <iostream>
#include <random>
#include <ranges>
#include <string>

namespace vantrel {

/// The rounds of a test: as many as it usually makes, or as the environment variable VANTREL_ROUNDS says, for a long
/// run. Each has chances of its own, always the same ones; VANTREL_SEED gives others.
class Rounds {
public:
    explicit Rounds(int usual) : count_(Number("VANTREL_ROUNDS", usual)), seed_(Number("VANTREL_SEED", 1)) {}

    int Count() const { return count_; }
    auto begin() const { return std::views::iota(0, count_).begin(); }
    auto end() const { return std::views::iota(0, count_).end(); }
    std::mt19937 Chance(int round) const {
        std::seed_seq seeds{seed_, round};
        return std::mt19937(seeds);
    }
    /// What a failing test says of a round.
    std::string Text(int round) const { return "round " + std::to_string(round) + " of seed " + std::to_string(seed_); }

private:
    static int Number(const char* name, int usual) {
        const char* const text = std::getenv(name);
        return text != nullptr ? std::atoi(text) : usual;
    }
    int count_;
    int seed_;
};

/// Prints how many of what a test has tried, for scripts/hard-tests to add up.
inline void Tried(int number, const std::string& what) { std::cout << "Tried " << number << ' ' << what << std::endl; }

}  // namespace vantrel
