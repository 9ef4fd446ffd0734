// A desk for runs: scanners on the wire, and all that went over it with the moment at which it did.
#pragma once

#include "support/desk.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vantrel {

inline constexpr const char* kTwentyVolts = "channel 1-20 VOLT\n";

/// A bench file's lines for scanner `place` (from 0), with a card of 20 channels.
std::string Scanner(int place, const std::string& entries = kTwentyVolts);
/// The same with a card of 10 channels.
std::string SmallScanner(int place, const std::string& entries);

class RunDesk : public Desk {
protected:
    struct Message {
        std::int64_t moment;  ///< milliseconds since the clock's start
        std::string text;     ///< the receiver's place and the message without its line feed: "0 fetch?"
    };

    /// Opens the program on the bench and connects the first `devices` scanners. Traffic counts from here on.
    void OpenWith(const bench::BenchDescription& bench, int devices = 1);
    void OpenWith(const std::string& bench_file, int devices = 1) { OpenWith(bench::ParseBench(bench_file), devices); }
    /// The milliseconds since the clock's start.
    int Elapsed() const { return static_cast<int>(clock.Elapsed()); }
    /// Has `action` done in the program's first yield `ms` after now.
    void After(int ms, std::function<void()> action) { clock.At(Elapsed() + ms, std::move(action)); }
    /// Has `action` done in the first yield after the next message `text` was sent, whenever that is.
    void AfterSending(const std::string& text, const std::function<void()>& action);
    /// Presses Stop in the first yield after the next message `text` was sent.
    void StopAfterSending(const std::string& text) {
        AfterSending(text, [this] { user.Click("Form1", "Command4"); });
    }

    /// What was sent, read-back left out.
    std::vector<std::string> Traffic() const;
    /// How often `text` was sent.
    int Times(const std::string& text) const;
    /// When `text` was sent.
    std::vector<std::int64_t> Moments(const std::string& text) const;
    /// The moment at which the last message of any kind went out.
    std::int64_t LastMoment() const { return sent_.empty() ? -1 : sent_.back().moment; }
    void ForgetTraffic() { sent_.clear(); }

    /// Sets the interval of the schedule, in seconds, and switches it on.
    void Pace(int seconds);
    /// Sets the count of the schedule and switches it on.
    void Count(const std::string& number);
    /// The moment `ms` from now.
    static DateTime In(std::int64_t ms) { return {Now().ms + ms}; }

private:
    std::vector<Message> sent_;
    std::vector<std::pair<std::string, std::function<void()>>> awaited_;
};

}  // namespace vantrel
