// One simulated multimeter with its scanner card.
#pragma once

#include "bench/description.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::bench {

/// A multimeter, as far as it can be seen over its bus: messages in, replies out, and a scan that goes on by itself.
/// Moments are milliseconds of the bench's time source.
class Instrument {
public:
    /// `index` is the instrument's place on the bench, from 0. Its readings follow from it.
    Instrument(InstrumentDescription description, int index, Pace pace);

    const std::string& Resource() const { return description_.resource; }
    bool RefusesToOpen() const { return description_.refuses_to_open; }
    bool Wired() const { return description_.wired; }
    bool Unplugged() const { return unplugged_; }
    const std::string& Identity() const { return description_.identity; }

    /// What becomes of a viWrite or viRead.
    enum class Fate { kCarriedOut, kTimesOut, kConnectionLost };

    /// True for an instrument that does what was recorded: the calls below are not for it.
    bool Replays() const { return description_.recording.has_value(); }
    /// The status of the recorded viWrite of `message`. What comes oftener than it was recorded goes as it went last;
    /// what was never recorded is taken without a word.
    std::uint32_t ReplayWrite(std::string_view message);
    /// The next recorded viRead after the message that was written last; no value: there was none.
    std::optional<RecordedRead> ReplayRead();

    /// Counts one call and says what becomes of it.
    Fate NextCall();
    /// The status that the call counted last returns in place of its own.
    std::optional<std::uint32_t> FixedStatusOfCall() const;

    /// Carries out a message. What is left of an older reply is thrown away. True: the instrument started a scan, and
    /// with it the trigger wire to the instruments behind it.
    bool Receive(std::string_view message, std::int64_t now);

    /// The count of readings that goes out on the trigger wire with the start of a scan: one that was set and that is
    /// not simply one sweep of this instrument.
    std::optional<int> CountOnWire() const;
    /// Starts a scan of `count` readings; without a count, of one sweep.
    void StartByWire(std::optional<int> count, std::int64_t now);

    bool HasReply() const { return reply_.has_value(); }
    /// The next piece of the reply, of `limit` bytes at most. A piece of exactly `limit` bytes leaves the reply open,
    /// be it with nothing left; a shorter one ends it. With a `terminator` the piece ends behind its first one.
    std::string TakeReply(std::size_t limit, std::optional<char> terminator = std::nullopt);
    void DropReply() { reply_.reset(); }

    void Unplug() { unplugged_ = true; }
    void Silence() { silent_ = true; }

private:
    struct Scan {
        std::int64_t start = 0;
        std::int64_t pause_ms = 0;
        int count = 0;
        int first_sweep = 0;
        std::vector<int> channels;  ///< numbers of the active ones, from 1
        std::vector<ChannelDescription> plan;
    };
    struct Command {
        std::string_view pattern;
        void (Instrument::*carry_out)(std::string_view arguments);
    };
    static const std::vector<Command>& Commands();

    bool HasFault(CallFault::Kind kind) const;
    void CarryOut(std::string_view message);
    void ApplyFixedReply(std::string_view message);
    void Answer(const std::string& text) { reply_ = text + "\n"; }

    std::vector<int> ActiveChannels() const;
    bool OccupiedByMaster(std::size_t index) const;
    void StartScan(int count);
    int Taken() const;
    int CountTold();
    ChannelDescription* Channel(std::string_view text);

    void CardQuery(std::string_view arguments);
    void SerialQuery(std::string_view arguments);
    void IdentityQuery(std::string_view arguments);
    void SetCount(std::string_view arguments);
    void CountQuery(std::string_view arguments);
    void StartByCommand(std::string_view arguments);
    void StateQuery(std::string_view arguments);
    void Fetch(std::string_view arguments);
    void SetTimer(std::string_view arguments);
    void TimerQuery(std::string_view arguments);
    void SetFunction(std::string_view arguments);
    void FunctionQuery(std::string_view arguments);
    void SetRtdType(std::string_view arguments);
    void RtdTypeQuery(std::string_view arguments);
    void SetTransducer(std::string_view arguments);
    void TransducerQuery(std::string_view arguments);
    void SetTcoupleType(std::string_view arguments);
    void TcoupleTypeQuery(std::string_view arguments);

    InstrumentDescription description_;
    int index_;
    Pace pace_;
    std::int64_t now_ = 0;  ///< moment of the message that is being carried out
    std::optional<int> count_set_;
    Scan scan_;
    bool started_by_command_ = false;
    std::optional<std::string> reply_;
    bool reply_is_whole_ = false;  ///< nothing of it was read yet

    std::map<std::string, std::size_t, std::less<>> replayed_;  ///< how often each message of the recording came
    std::vector<RecordedRead> reads_left_;                      ///< in reverse order

    int calls_ = 0;
    bool unplugged_ = false;
    bool silent_ = false;
    std::map<std::string, int> asked_;  ///< how often each query with a fixed reply came
    std::size_t counts_told_ = 0;
    int count_told_ = 0;
};

}  // namespace vantrel::bench
