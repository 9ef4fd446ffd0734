#include "bench/description.h"

#include "bench/text.h"
#include "bench/vocabulary.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <stdexcept>
#include <utility>

namespace vantrel::bench {
namespace {

struct FaultWord {
    std::string_view word;
    CallFault::Kind kind;
};
constexpr std::array<FaultWord, 5> kFaultWords = {{{"time-out", CallFault::kTimeOut},
                                                   {"short", CallFault::kShort},
                                                   {"empty", CallFault::kEmpty},
                                                   {"garbage", CallFault::kGarbage},
                                                   {"long", CallFault::kLong}}};

/// Reads a bench file or a wire log line by line into `bench`.
class Parser {
public:
    void ReadLine(std::string_view text);
    BenchDescription bench;

private:
    void Split(std::string_view text);
    std::string QuotedWord(std::string_view text, std::size_t& at);
    char Escaped(std::string_view text, std::size_t& at);

    void ReadBenchEntry();
    void ReadInstrumentEntry(InstrumentDescription& instrument);
    void ReadChannel(InstrumentDescription& instrument);
    void ReadReply(InstrumentDescription& instrument);
    bool ReadFault(InstrumentDescription& instrument);
    bool ReadLogLine();
    void ReadOpening(std::uint32_t status);
    void ReadExchange(std::uint32_t status);

    bool Is(std::string_view keyword, std::size_t words) const {
        return words_[0] == keyword && words_.size() == words;
    }
    int NumberAt(std::size_t index) const;
    int CallAt(std::size_t index) const;
    std::uint32_t StatusOf(std::string_view digits) const;
    [[noreturn]] void Refuse(const std::string& why) const;

    std::vector<std::string> words_;
    int line_ = 0;
    std::map<std::size_t, std::string> sent_;  ///< what each instrument of a log was sent last, by place
};

void Parser::Refuse(const std::string& why) const {
    throw std::invalid_argument("line " + std::to_string(line_) + ": " + why);
}

void Parser::ReadLine(std::string_view text) {
    ++line_;
    Split(text);
    if (words_.empty() || ReadLogLine()) return;
    if (Is("instrument", 2)) {
        bench.instruments.emplace_back().resource = words_[1];
    } else if (bench.instruments.empty()) {
        ReadBenchEntry();
    } else {
        ReadInstrumentEntry(bench.instruments.back());
    }
}

/// Cuts a line into words. A word in double quotes may hold blanks; "#" begins a comment.
void Parser::Split(std::string_view text) {
    words_.clear();
    std::size_t at = 0;
    while ((at = text.find_first_not_of(" \t\r", at)) != std::string_view::npos && text[at] != '#') {
        if (text[at] == '"') {
            words_.push_back(QuotedWord(text, at));
        } else {
            const auto end = std::min(text.find_first_of(" \t\r", at), text.size());
            words_.emplace_back(text.substr(at, end - at));
            at = end;
        }
    }
}

std::string Parser::QuotedWord(std::string_view text, std::size_t& at) {
    std::string word;
    for (++at; at < text.size() && text[at] != '"'; ++at) {
        word += text[at] == '\\' ? Escaped(text, at) : text[at];
    }
    if (at >= text.size()) Refuse("a quote is not closed");
    ++at;
    return word;
}

/// The character behind the backslash at `at`, which moves to its last place.
char Parser::Escaped(std::string_view text, std::size_t& at) {
    if (++at >= text.size()) Refuse("nothing stands behind the backslash");
    switch (text[at]) {
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        case '"':
        case '\\':
            return text[at];
        case 'x':
            break;
        default:
            Refuse("unknown escape");
    }
    const std::string_view digits = text.substr(at + 1, 2);
    int code = 0;
    const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16).ptr;
    if (digits.size() != 2 || end != digits.data() + 2) Refuse("\\x takes two hexadecimal digits");
    at += 2;
    return static_cast<char>(code);
}

int Parser::NumberAt(std::size_t index) const {
    const auto number = WholeNumber(words_[index]);
    if (!number || *number < 0) Refuse("'" + words_[index] + "' is not a number from 0 on");
    return *number;
}

/// The number in "at call 7", whose first word has `index`.
int Parser::CallAt(std::size_t index) const {
    const bool complete = words_.size() == index + 3 && words_[index] == "at" && words_[index + 1] == "call";
    if (!complete || NumberAt(index + 2) == 0) Refuse("'at call' and a number from 1 on are expected");
    return NumberAt(index + 2);
}

std::uint32_t Parser::StatusOf(std::string_view digits) const {
    std::uint32_t status = 0;
    const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), status, 16).ptr;
    if (end != digits.data() + digits.size()) Refuse("a status is written in hexadecimal digits");
    return status;
}

void Parser::ReadBenchEntry() {
    if (Is("pace", 2)) {
        bench.pace.reading_ms = std::max(1, NumberAt(1));
    } else if (Is("pause", 2)) {
        bench.pace.pause_ms = NumberAt(1);
    } else {
        Refuse("'" + words_[0] + "' is not an entry of a bench, or has too few or too many words");
    }
}

void Parser::ReadInstrumentEntry(InstrumentDescription& instrument) {
    const std::string& entry = words_[0];
    if (Is("identity", 2)) {
        instrument.identity = words_[1];
    } else if (Is("serial", 2)) {
        instrument.serial = words_[1];
    } else if (Is("card", 2)) {
        instrument.card = NumberAt(1);
    } else if (Is("timer", 2)) {
        instrument.timer = words_[1];
    } else if (entry == "channel") {
        ReadChannel(instrument);
    } else if (Is("not-wired", 1)) {
        instrument.wired = false;
    } else if (Is("refuses-to-open", 1)) {
        instrument.refuses_to_open = true;
    } else if (Is("no-line-feed", 1)) {
        instrument.line_feed = false;
    } else if (entry == "silent") {
        instrument.silent_at_call = words_.size() == 1 ? 1 : CallAt(1);
    } else if (entry == "unplugged") {
        instrument.unplugged_at_call = CallAt(1);
    } else if (entry == "status" && words_.size() > 1) {
        instrument.statuses.push_back({StatusOf(words_[1]), CallAt(2)});
    } else if (entry == "reply" || entry == "no-reply") {
        ReadReply(instrument);
    } else if (entry == "counts") {
        for (std::size_t i = 1; i < words_.size(); ++i) instrument.counts.push_back(NumberAt(i));
    } else if (!ReadFault(instrument)) {
        Refuse("'" + entry + "' is not an entry of an instrument, or has too few or too many words");
    }
}

/// channel 4 TEMP PT100 FRTD, channel 1-10 VOLT open
void Parser::ReadChannel(InstrumentDescription& instrument) {
    if (words_.size() < 3) Refuse("a channel needs a number and a function");
    const std::string range = words_[1];
    const auto dash = range.find('-');
    const auto first = WholeNumber(range.substr(0, dash));
    const auto last = dash == std::string::npos ? first : WholeNumber(range.substr(dash + 1));
    if (!first || !last || *first < 1 || *last > 20 || *first > *last) Refuse("channels are numbered from 1 to 20");

    ChannelDescription channel;
    channel.function = StoredFunction("\"" + Upper(words_[2]) + "\"").value_or("");
    if (channel.function.empty()) Refuse("'" + words_[2] + "' is not a function");
    for (std::size_t i = 3; i < words_.size(); ++i) {
        const std::string word = Upper(words_[i]);
        if (word == "OPEN") {
            channel.open = true;
        } else if (IsTransducer(word)) {
            channel.transducer = word;
        } else if (channel.function == "TEMP" && IsRtdType(word)) {
            channel.rtd_type = word;
        } else if (channel.function == "TCO" && IsTcoupleType(word)) {
            channel.tcouple_type = word;
        } else {
            Refuse("'" + words_[i] + "' does not fit the function");
        }
    }
    for (int number = *first; number <= *last; ++number) {
        instrument.channels[static_cast<std::size_t>(number - 1)] = channel;
    }
}

/// reply "fetch?" "1,2\n", reply 3 "fetch?" "1,2\n", no-reply 3 "fetch?"
void Parser::ReadReply(InstrumentDescription& instrument) {
    const bool answered = words_[0] == "reply";
    const std::size_t texts = answered ? 2 : 1;
    if (words_.size() != 1 + texts && words_.size() != 2 + texts) Refuse("a query and its reply are expected");
    FixedReply fixed;
    if (words_.size() == 2 + texts) fixed.nth = NumberAt(1);
    fixed.query = words_[words_.size() - texts];
    if (answered) fixed.reply = words_.back();
    instrument.replies.push_back(std::move(fixed));
}

/// time-out at call 9, garbage from call 9
bool Parser::ReadFault(InstrumentDescription& instrument) {
    const auto fault = std::ranges::find(kFaultWords, words_[0], &FaultWord::word);
    if (fault == kFaultWords.end()) return false;
    const bool and_after = words_.size() > 1 && words_[1] == "from";
    if (and_after) words_[1] = "at";
    instrument.faults.push_back({fault->kind, CallAt(1), and_after});
    return true;
}

// ---- wire logs

/// A line of a wire log: day, time, and "begins", or the place of an instrument and what happened there.
bool Parser::ReadLogLine() {
    constexpr std::size_t kDayLength = std::string_view("2026-01-31").size();
    if (words_[0].size() != kDayLength || words_[0][4] != '-' || words_.size() < 3) return false;
    if (words_[2] == "begins") {
        bench.instruments.clear();
        sent_.clear();
        return true;
    }
    const bool has_status = words_.size() == 7 && words_[5] == "!";
    if (words_.size() != 5 && !has_status)
        Refuse("a line of a log has a place, a sign and a text, and may have a status");
    const std::uint32_t status = has_status ? StatusOf(words_[6]) : 0;
    if (words_[3] == "=") {
        ReadOpening(status);
    } else if (words_[2] != "?") {
        ReadExchange(status);
    }
    return true;
}

/// 2026-01-31 10:00:00.000 0 = "GPIB0::9::INSTR"
void Parser::ReadOpening(std::uint32_t status) {
    const auto place = static_cast<std::size_t>(NumberAt(2));
    if (place > bench.instruments.size()) Refuse("the instruments of a log are opened in the order of their places");
    if (place == bench.instruments.size()) {
        bench.instruments.emplace_back().resource = words_[4];
        bench.instruments.back().recording.emplace();
        bench.instruments.back().refuses_to_open = true;
    }
    if (static_cast<std::int32_t>(status) >= 0) bench.instruments[place].refuses_to_open = false;
}

/// 2026-01-31 10:00:00.000 0 > "fetch?\n", 2026-01-31 10:00:05.000 0 < "" ! BFFF0015
void Parser::ReadExchange(std::uint32_t status) {
    const auto place = static_cast<std::size_t>(NumberAt(2));
    if (place >= bench.instruments.size() || !bench.instruments[place].recording)
        Refuse("the log has not opened this instrument");
    Recording& recording = *bench.instruments[place].recording;
    if (words_[3] == ">") {
        sent_[place] = words_[4];
        recording[words_[4]].push_back({status, {}});
    } else if (words_[3] != "<") {
        Refuse("'" + words_[3] + "' is not a sign of a log");
    } else if (sent_.contains(place)) {
        recording[sent_[place]].back().reads.push_back({words_[4], status});
    }
}

}  // namespace

int InstrumentDescription::ChannelCount() const {
    if (card == 2) return 20;
    return card == 1 || card == 3 ? 10 : 0;
}

BenchDescription ParseBench(std::string_view text) {
    Parser parser;
    while (!text.empty()) {
        const auto end = text.find('\n');
        parser.ReadLine(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return std::move(parser.bench);
}

}  // namespace vantrel::bench
