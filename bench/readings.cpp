#include "bench/readings.h"

#include <array>
#include <cmath>

namespace vantrel::bench {
namespace {

constexpr std::array<double, 6> kReferenceVolts = {5.0, 1.25, 3.3, 10.0, -2.5, 0.1};
constexpr std::array<double, 5> kResistorOhms = {100.0, 1000.0, 4700.0, 220.0, 10000.0};
constexpr std::array<double, 3> kSourceHertz = {50.0, 1000.0, 440.0};

/// Where a channel stands and when: what its noise and its levels follow from.
struct Place {
    int instrument;
    int number;
    int sweep;
};

/// Between -1 and 1, without a pattern that the eye finds.
double Noise(const Place& place) {
    auto bits = static_cast<std::uint64_t>(place.instrument) << 48 | static_cast<std::uint64_t>(place.number) << 40 |
                static_cast<std::uint64_t>(static_cast<std::uint32_t>(place.sweep));
    bits += 0x9E3779B97F4A7C15U;
    bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ bits >> 27) * 0x94D049BB133111EBU;
    bits ^= bits >> 31;
    return static_cast<double>(bits >> 11) / static_cast<double>(1ULL << 52) - 1.0;
}

/// The level out of `levels` that belongs to the channel for good.
template <typename Levels>
double Level(const Levels& levels, const Place& place) {
    return levels[static_cast<std::size_t>(place.instrument + place.number) % levels.size()];
}

double Wave(const Place& place, double period) {
    return std::sin(2.0 * 3.141592653589793 * (place.sweep + 7.0 * place.number) / period);
}

double DriftingReference(const Place& place) {
    return Level(kReferenceVolts, place) * (1.0 + 2e-6 * place.sweep + 4e-6 * Wave(place, 80) + 2e-6 * Noise(place));
}

double Mains(const Place& place) { return 230.0 + 1.5 * Wave(place, 90) + 0.6 * Noise(place); }

double Resistor(const Place& place) {
    return Level(kResistorOhms, place) * (1.0 + 1e-4 * Wave(place, 200) + 1e-5 * Noise(place));
}

double Source(const Place& place) {
    return Level(kSourceHertz, place) * (1.0 + 2e-4 * Wave(place, 60) + 1e-4 * Noise(place));
}

double WarmingThermocouple(const Place& place) {
    const double rise = 40.0 + 5.0 * (place.number % 5);
    return 23.0 + rise * (1.0 - std::exp(-place.sweep / 60.0)) + 0.05 * Noise(place);
}

double ControlledBath(const Place& place) { return 37.0 + 0.3 * Wave(place, 45) + 0.01 * Noise(place); }

}  // namespace

double Reading(int instrument, int number, const ChannelDescription& channel, int sweep) {
    if (channel.open) return kOverload;
    const Place place = {instrument, number, sweep};
    if (channel.function == "VOLT:AC") return Mains(place);
    if (channel.function == "RES" || channel.function == "FRES") return Resistor(place);
    if (channel.function == "FREQ") return Source(place);
    if (channel.function == "PER") return 1.0 / Source(place);
    if (channel.function == "TCO") return WarmingThermocouple(place);
    if (channel.function == "TEMP") return ControlledBath(place);
    return DriftingReference(place);
}

}  // namespace vantrel::bench
