#include "bench/instrument.h"

#include "bench/readings.h"
#include "bench/text.h"
#include "bench/vocabulary.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>

namespace vantrel::bench {
namespace {

constexpr int kMemory = 100000;         // readings that an instrument holds at most
constexpr double kTimerEnd = 9999.999;  // the scan timer stays below

/// Between 1 and 500 bytes of any value; the same ones for the same `seed`.
std::string Garbage(int seed) {
    constexpr int kLongest = 500;
    std::minstd_rand random(static_cast<std::uint32_t>(seed) + 1);
    random.discard(8);  // neighbouring seeds begin alike
    std::string bytes(1 + random() % kLongest, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random() >> 8);
    return bytes;
}

/// `reply` again and again, as one list of at least 100 KB.
std::string Lengthened(std::string_view reply) {
    constexpr std::size_t kLength = 100 * 1024;
    std::string item(Trim(reply));
    item += ',';
    std::string list;
    while (list.size() < kLength) list += item;
    list.back() = '\n';
    return list;
}

struct Setting {
    std::string value;
    std::string_view channel;
};

/// Cuts "PT100 ,@3" into the value, in upper case, and the channel.
Setting SplitSetting(std::string_view arguments) {
    const auto comma = arguments.rfind(',');
    if (comma == std::string_view::npos) return {};
    return {Upper(Trim(arguments.substr(0, comma))), arguments.substr(comma + 1)};
}

}  // namespace

Instrument::Instrument(InstrumentDescription description, int index, Pace pace)
    : description_(std::move(description)), index_(index), pace_(pace) {
    description_.channels.resize(static_cast<std::size_t>(description_.ChannelCount()));
}

// ---- calls and replies

Instrument::Fate Instrument::NextCall() {
    ++calls_;
    const auto reached = [this](int call) { return call != 0 && calls_ >= call; };
    if (reached(description_.unplugged_at_call)) unplugged_ = true;
    if (reached(description_.silent_at_call)) silent_ = true;
    if (unplugged_) return Fate::kConnectionLost;
    return HasFault(CallFault::kTimeOut) ? Fate::kTimesOut : Fate::kCarriedOut;
}

/// Whether the call counted last has a fault of this kind.
bool Instrument::HasFault(CallFault::Kind kind) const {
    return std::ranges::any_of(description_.faults, [&](const CallFault& fault) {
        return fault.kind == kind && (fault.call == calls_ || (fault.and_after && fault.call < calls_));
    });
}

std::optional<std::uint32_t> Instrument::FixedStatusOfCall() const {
    for (const FixedStatus& fixed : description_.statuses) {
        if (fixed.call == calls_) return fixed.status;
    }
    return std::nullopt;
}

bool Instrument::Receive(std::string_view message, std::int64_t now) {
    now_ = now;
    reply_.reset();
    started_by_command_ = false;
    if (silent_) return false;
    message = Trim(message);
    CarryOut(message);
    if (reply_ && !description_.line_feed) reply_->pop_back();
    ApplyFixedReply(message);
    reply_is_whole_ = true;
    return started_by_command_;
}

std::string Instrument::TakeReply(std::size_t limit, std::optional<char> terminator) {
    if (reply_is_whole_ && HasFault(CallFault::kGarbage)) reply_ = Garbage(calls_);
    if (reply_is_whole_ && HasFault(CallFault::kLong)) reply_ = Lengthened(*reply_);
    reply_is_whole_ = false;
    const std::size_t end = terminator ? reply_->find(*terminator) : std::string::npos;
    std::string piece = reply_->substr(0, end < limit ? end + 1 : limit);
    if (HasFault(CallFault::kEmpty)) piece.clear();
    if (HasFault(CallFault::kShort)) piece.resize(piece.size() / 2);
    const bool goes_on = piece.size() == limit || (end != std::string::npos && piece.size() < reply_->size());
    if (goes_on && !HasFault(CallFault::kEmpty) && !HasFault(CallFault::kShort)) {
        reply_->erase(0, piece.size());
    } else {
        reply_.reset();
    }
    return piece;
}

// ---- recordings

std::uint32_t Instrument::ReplayWrite(std::string_view message) {
    reads_left_.clear();
    const auto recorded = description_.recording->find(message);
    if (recorded == description_.recording->end()) return 0;
    std::size_t& times = replayed_[recorded->first];
    const RecordedExchange& exchange = recorded->second[std::min(times, recorded->second.size() - 1)];
    ++times;
    reads_left_.assign(exchange.reads.rbegin(), exchange.reads.rend());
    return exchange.status;
}

std::optional<RecordedRead> Instrument::ReplayRead() {
    if (reads_left_.empty()) return std::nullopt;
    RecordedRead read = std::move(reads_left_.back());
    reads_left_.pop_back();
    return read;
}

const std::vector<Instrument::Command>& Instrument::Commands() {
    static const std::vector<Command> commands = {
        {"ROUTe:STATe?", &Instrument::CardQuery},
        {"CALibration:SECure:SERial?", &Instrument::SerialQuery},
        {"*IDN?", &Instrument::IdentityQuery},
        {"ROUTe:SCAN:COUNt", &Instrument::SetCount},
        {"ROUTe:SCAN:COUNt?", &Instrument::CountQuery},
        {"ROUTe:SCAN", &Instrument::StartByCommand},
        {"ROUTe:SCAN:STEP", &Instrument::StartByCommand},
        {"ROUTe:SCAN:STATe?", &Instrument::StateQuery},
        {"FETCh?", &Instrument::Fetch},
        {"ROUTe:SCAN:TIMER", &Instrument::SetTimer},
        {"ROUTe:SCAN:TIMER?", &Instrument::TimerQuery},
        {"ROUTe:SCAN:FUNCtion", &Instrument::SetFunction},
        {"ROUTe:SCAN:FUNCtion?", &Instrument::FunctionQuery},
        {"TEMPerature:RTD:TYPE", &Instrument::SetRtdType},
        {"TEMPerature:RTD:TYPE?", &Instrument::RtdTypeQuery},
        {"TEMPerature:TRANsducer", &Instrument::SetTransducer},
        {"TEMPerature:TRANsducer?", &Instrument::TransducerQuery},
        {"TCOuple:TYPE", &Instrument::SetTcoupleType},
        {"TCOuple:TYPE?", &Instrument::TcoupleTypeQuery},
    };
    return commands;
}

/// A message that this instrument does not know has no effect and no reply.
void Instrument::CarryOut(std::string_view message) {
    const auto blank = std::min(message.find(' '), message.size());
    const std::string_view header = message.substr(0, blank);
    for (const Command& command : Commands()) {
        if (IsCommand(header, command.pattern)) return (this->*command.carry_out)(Trim(message.substr(blank)));
    }
}

void Instrument::ApplyFixedReply(std::string_view message) {
    const std::string query = Upper(message);
    const auto is_for_query = [&query](const FixedReply& fixed) { return Upper(fixed.query) == query; };
    if (std::none_of(description_.replies.begin(), description_.replies.end(), is_for_query)) return;
    const int time = ++asked_[query];
    for (const FixedReply& fixed : description_.replies) {
        if (is_for_query(fixed) && (fixed.nth == 0 || fixed.nth == time)) reply_ = fixed.reply;
    }
}

// ---- scanning

/// A master that measures with four wires uses its slave's contacts, so the slave is not scanned.
bool Instrument::OccupiedByMaster(std::size_t index) const {
    const std::size_t half = description_.channels.size() / 2;
    if (index < half) return false;
    const ChannelDescription& master = description_.channels[index - half];
    return master.function == "FRES" || (master.function == "TEMP" && master.transducer == "FRTD");
}

std::vector<int> Instrument::ActiveChannels() const {
    std::vector<int> active;
    for (std::size_t i = 0; i < description_.channels.size(); ++i) {
        if (description_.channels[i].function != "NONE" && !OccupiedByMaster(i))
            active.push_back(static_cast<int>(i) + 1);
    }
    return active;
}

void Instrument::StartScan(int count) {
    const int sweep = static_cast<int>(scan_.channels.size());
    const int next_sweep = sweep == 0 ? scan_.first_sweep : scan_.first_sweep + (Taken() + sweep - 1) / sweep;
    const auto timer_ms = static_cast<std::int64_t>(Number(description_.timer).value_or(0) * 1000);
    scan_ = {now_, std::max(timer_ms, pace_.pause_ms), count, next_sweep, ActiveChannels(), description_.channels};
    counts_told_ = 0;
    count_told_ = 0;
}

/// How many readings the scan has given so far.
int Instrument::Taken() const {
    const auto sweep = static_cast<std::int64_t>(scan_.channels.size());
    if (sweep == 0) return 0;
    const std::int64_t elapsed = std::max<std::int64_t>(now_ - scan_.start, 0);
    const std::int64_t period = sweep * pace_.reading_ms + scan_.pause_ms;
    const std::int64_t of_sweep = std::min(sweep, elapsed % period / pace_.reading_ms);
    return static_cast<int>(std::min<std::int64_t>(elapsed / period * sweep + of_sweep, scan_.count));
}

/// How many readings the instrument says it has: the described counts one after the other, or else the true one.
int Instrument::CountTold() {
    if (description_.counts.empty()) return Taken();
    const std::size_t place = std::min(counts_told_, description_.counts.size() - 1);
    ++counts_told_;
    count_told_ = description_.counts[place];
    return count_told_;
}

std::optional<int> Instrument::CountOnWire() const {
    if (count_set_ == static_cast<int>(ActiveChannels().size())) return std::nullopt;
    return count_set_;
}

void Instrument::StartByWire(std::optional<int> count, std::int64_t now) {
    if (silent_ || unplugged_ || description_.channels.empty()) return;
    now_ = now;
    StartScan(count.value_or(static_cast<int>(ActiveChannels().size())));
}

// ---- commands and queries

void Instrument::CardQuery(std::string_view) { Answer(std::to_string(description_.card)); }

void Instrument::SerialQuery(std::string_view) { Answer(description_.serial); }

void Instrument::IdentityQuery(std::string_view) { Answer(description_.identity); }

/// A fraction is rounded, halves to even.
void Instrument::SetCount(std::string_view arguments) {
    const auto count = Number(arguments);
    if (count) count_set_ = static_cast<int>(std::nearbyint(std::clamp(*count, 0.0, double{kMemory})));
}

void Instrument::CountQuery(std::string_view) {
    Answer(std::to_string(count_set_.value_or(static_cast<int>(ActiveChannels().size()))));
}

void Instrument::StartByCommand(std::string_view) {
    if (description_.channels.empty()) return;
    StartScan(count_set_.value_or(static_cast<int>(ActiveChannels().size())));
    started_by_command_ = true;
}

void Instrument::StateQuery(std::string_view) {
    if (!description_.channels.empty()) Answer(std::to_string(CountTold()));
}

/// With described counts there are as many readings as the last count that was told.
void Instrument::Fetch(std::string_view) {
    const int held = description_.counts.empty() ? Taken() : count_told_;
    const auto sweep = static_cast<int>(scan_.channels.size());
    std::string readings;
    for (int i = 0; i < held && sweep != 0; ++i) {
        const int number = scan_.channels[static_cast<std::size_t>(i % sweep)];
        const ChannelDescription& channel = scan_.plan[static_cast<std::size_t>(number - 1)];
        if (i != 0) readings += ',';
        readings += ReadingText(Reading(index_, number, channel, scan_.first_sweep + i / sweep));
    }
    Answer(readings);
}

void Instrument::SetTimer(std::string_view arguments) {
    const auto seconds = Number(arguments);
    if (seconds && *seconds >= 0 && *seconds < kTimerEnd) description_.timer = NumberText(*seconds);
}

void Instrument::TimerQuery(std::string_view) {
    if (!description_.channels.empty()) Answer(description_.timer);
}

/// The channel that "7" or "@7" names; nullptr if the card has none such.
ChannelDescription* Instrument::Channel(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('@')) text.remove_prefix(1);
    const auto number = WholeNumber(text);
    if (!number || *number < 1 || *number > static_cast<int>(description_.channels.size())) return nullptr;
    return &description_.channels[static_cast<std::size_t>(*number - 1)];
}

void Instrument::SetFunction(std::string_view arguments) {
    const auto comma = std::min(arguments.find(','), arguments.size());
    ChannelDescription* channel = Channel(arguments.substr(0, comma));
    if (channel == nullptr || comma == arguments.size()) return;
    const auto function = StoredFunction(Trim(arguments.substr(comma + 1)));
    if (function) channel->function = *function;
}

void Instrument::FunctionQuery(std::string_view arguments) {
    if (const auto* channel = Channel(arguments)) Answer('"' + channel->function + '"');
}

void Instrument::SetRtdType(std::string_view arguments) {
    const Setting setting = SplitSetting(arguments);
    ChannelDescription* channel = Channel(setting.channel);
    if (channel != nullptr && IsRtdType(setting.value)) channel->rtd_type = setting.value;
}

void Instrument::RtdTypeQuery(std::string_view arguments) {
    if (const auto* channel = Channel(arguments)) Answer(channel->rtd_type);
}

void Instrument::SetTransducer(std::string_view arguments) {
    const Setting setting = SplitSetting(arguments);
    ChannelDescription* channel = Channel(setting.channel);
    if (channel != nullptr && IsTransducer(setting.value)) channel->transducer = setting.value;
}

void Instrument::TransducerQuery(std::string_view arguments) {
    if (const auto* channel = Channel(arguments)) Answer(channel->transducer);
}

void Instrument::SetTcoupleType(std::string_view arguments) {
    const Setting setting = SplitSetting(arguments);
    ChannelDescription* channel = Channel(setting.channel);
    if (channel != nullptr && IsTcoupleType(setting.value)) channel->tcouple_type = setting.value;
}

void Instrument::TcoupleTypeQuery(std::string_view arguments) {
    if (const auto* channel = Channel(arguments)) Answer(channel->tcouple_type);
}

}  // namespace vantrel::bench
