// Puts a simulated bench behind the program's VISA calls.
#pragma once

#include "bench/bench.h"

#include <string>
#include <utility>
#include <vector>

/// While one lives, every VISA call of the program goes to `bench`, whose time is the program's clock. There is at most
/// one at a time. Afterwards the machine has no VISA library.
class BenchOnTheWire {
public:
    explicit BenchOnTheWire(vantrel::bench::BenchDescription description = vantrel::bench::DefaultBench());
    ~BenchOnTheWire();
    BenchOnTheWire(const BenchOnTheWire&) = delete;
    BenchOnTheWire& operator=(const BenchOnTheWire&) = delete;

    vantrel::bench::Bench bench;

    /// The exact bytes of each message to `instrument` (place on the bench, from 0), in order.
    std::vector<std::string> Sent(int instrument) const;
    /// The messages to all instruments, each with the place of the one that got it, in order.
    std::vector<std::pair<int, std::string>> Sent() const;
    /// The VISA calls, as `viClose(0)`, in order.
    std::vector<std::string> Calls() const;
    void ClearTranscript() { bench.ClearTranscript(); }
};
