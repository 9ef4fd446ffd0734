// What a bench consists of: its instruments, their plans and their faults.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::bench {

/// One channel of a scanner card.
struct ChannelDescription {
    std::string function = "NONE";  ///< VOLT, VOLT:AC, RES, FRES, FREQ, PER, TCO, TEMP or NONE
    std::string rtd_type = "PT100";
    std::string transducer = "RTD";  ///< RTD or FRTD
    std::string tcouple_type = "K";
    bool open = false;  ///< nothing is connected: every reading overloads
};

/// A reply that stands in for the instrument's own. `reply` is sent to the byte, with nothing added.
struct FixedReply {
    std::string query;                 ///< without its line feed, compared without regard to case
    std::optional<std::string> reply;  ///< no value: the query is not answered
    int nth = 0;                       ///< from 1: this occurrence only; 0: each one
};

/// A status that one call returns in place of its own. The call does what it does all the same.
struct FixedStatus {
    std::uint32_t status = 0;
    int call = 0;
};

/// A fault of one call, or of it and all after it.
struct CallFault {
    enum Kind {
        kTimeOut,  ///< the call times out; what it would have sent or read is lost
        kShort,    ///< a read gives half of what it would have given, and the rest of the reply is lost
        kEmpty,    ///< a read gives nothing and is a success; the reply is lost
        kGarbage,  ///< the reply is some hundred bytes of any value
        kLong,     ///< the reply is 100 KB long: itself again and again
    };
    Kind kind = kTimeOut;
    int call = 0;
    bool and_after = false;
};

/// What one viRead of a recording gave.
struct RecordedRead {
    std::string bytes;
    std::uint32_t status = 0;
};

/// One viWrite of a recording and the viReads that followed it.
struct RecordedExchange {
    std::uint32_t status = 0;
    std::vector<RecordedRead> reads;
};

/// What an instrument did in a recording, by message, in the order in which each message came.
using Recording = std::map<std::string, std::vector<RecordedExchange>, std::less<>>;

/// One instrument. The calls of the faults are counted from 1 over the viWrite and viRead calls that reach it.
struct InstrumentDescription {
    std::string resource;
    std::string identity = "Orlane,SB-0,SB0-0000,1.00";
    std::string serial = "SB0-0000";
    int card = 0;               ///< reply to rout:state?
    std::string timer = "0.5";  ///< seconds between the sweeps of a scan
    bool wired = true;          ///< starts with the instruments before it
    bool refuses_to_open = false;
    bool line_feed = true;  ///< replies end in one
    std::vector<ChannelDescription> channels = std::vector<ChannelDescription>(20);

    int silent_at_call = 0;     ///< from this call on nothing is answered; 1: never
    int unplugged_at_call = 0;  ///< from this call on every call fails
    std::vector<CallFault> faults;
    std::vector<FixedStatus> statuses;
    std::vector<FixedReply> replies;
    std::vector<int> counts;  ///< replies to rout:scan:state? in a scan, the last one repeated; empty: the real ones

    /// With a recording the instrument does nothing but what was recorded.
    std::optional<Recording> recording;

    /// Channels of the card: 10, 20 or none.
    int ChannelCount() const;
};

/// How fast the instruments scan.
struct Pace {
    std::int64_t reading_ms = 15;
    /// The least time between two sweeps of one scan, whatever the scan timer says. Who polls the count of readings of
    /// four instruments in turn, a quarter of a second and more apart, must meet each full sweep.
    std::int64_t pause_ms = 1000;
};

struct BenchDescription {
    Pace pace;
    std::vector<InstrumentDescription> instruments;  ///< in the order in which a search finds them
};

/// Reads the text of a bench file or of a wire log (see README.md). Throws std::invalid_argument, with the line's
/// number in its text.
BenchDescription ParseBench(std::string_view text);

/// Four scanner instruments, a multimeter without a card and a resource that answers nothing.
BenchDescription DefaultBench();

}  // namespace vantrel::bench
