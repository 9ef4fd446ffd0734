// A bench with a clock that the test moves by hand and all instruments opened.
#pragma once

#include "bench/bench.h"

#include <cstdint>
#include <string>
#include <vector>

struct BenchAtHand {
    explicit BenchAtHand(const std::string& file) : BenchAtHand(vantrel::bench::ParseBench(file)) {}
    explicit BenchAtHand(const vantrel::bench::BenchDescription& description)
        : bench(
              description, [this] { return time; }, [this](std::int64_t ms) { time += ms; }) {
        vantrel::bench::Handle manager = 0;
        bench.OpenDefaultRM(&manager);
        for (const auto& instrument : description.instruments) {
            sessions.emplace_back();
            bench.Open(manager, instrument.resource, 0, 0, &sessions.back());
            bench.SetAttribute(sessions.back(), vantrel::bench::kAttributeTimeOut, 5000);
        }
        bench.ClearTranscript();
    }

    vantrel::bench::Status Tell(std::size_t instrument, const std::string& message) {
        std::uint32_t written = 0;
        return bench.Write(sessions[instrument], message, &written);
    }

    /// Reads up to 1024 bytes; the status is kept in `status`.
    std::string Read(std::size_t instrument) {
        std::string bytes;
        status = bench.Read(sessions[instrument], 1024, &bytes);
        return bytes;
    }

    /// Sends `query` with a line feed and reads; empty when it times out.
    std::string Ask(std::size_t instrument, const std::string& query) {
        Tell(instrument, query + "\n");
        return Read(instrument);
    }

    std::int64_t time = 1000000;
    vantrel::bench::Bench bench;
    std::vector<vantrel::bench::Handle> sessions;
    vantrel::bench::Status status = 0;
};
