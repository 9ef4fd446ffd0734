#include "support/run_desk.h"

#include "windows/Form4.h"

#include <algorithm>
#include <numeric>

namespace vantrel {

namespace {

std::string ScannerLines(int place, int card, const std::string& entries) {
    const std::string number = std::to_string(place);
    return "instrument GPIB0::" + number + "::INSTR\nserial \"Scanner " + number + "\"\ncard " + std::to_string(card) +
           "\n" + entries;
}

bool IsReadBack(const std::string& message) { return message.find("rout:scan:func?") != std::string::npos; }

/// The message without the one line feed that it ends in. Only the identity is asked for without one.
std::string WithoutLineEnd(const std::string& message) {
    if (message == "*IDN?") return message;
    EXPECT_EQ(message.find('\n'), message.size() - 1) << message;
    return message.substr(0, message.size() - 1);
}

}  // namespace

std::string Scanner(int place, const std::string& entries) { return ScannerLines(place, 2, entries); }

std::string SmallScanner(int place, const std::string& entries) { return ScannerLines(place, 1, entries); }

void RunDesk::OpenWith(const bench::BenchDescription& bench, int devices) {
    Open(bench);
    std::vector<int> rows(static_cast<std::size_t>(devices));
    std::iota(rows.begin(), rows.end(), 0);
    Connect(rows);
    wire->bench.SetObserver([this](const bench::Exchange& exchange) {
        if (exchange.direction != bench::Exchange::kToInstrument) return;
        sent_.push_back({clock.Elapsed(), std::to_string(exchange.instrument) + " " + WithoutLineEnd(exchange.bytes)});
        const auto found = std::ranges::find(awaited_, sent_.back().text, [](const auto& it) { return it.first; });
        if (found == awaited_.end()) return;
        clock.At(Elapsed(), found->second);
        awaited_.erase(found);
    });
}

void RunDesk::AfterSending(const std::string& text, const std::function<void()>& action) {
    awaited_.emplace_back(text, action);
}

std::vector<std::string> RunDesk::Traffic() const {
    std::vector<std::string> texts;
    for (const Message& message : sent_)
        if (!IsReadBack(message.text)) texts.push_back(message.text);
    return texts;
}

int RunDesk::Times(const std::string& text) const { return static_cast<int>(Moments(text).size()); }

std::vector<std::int64_t> RunDesk::Moments(const std::string& text) const {
    std::vector<std::int64_t> moments;
    for (const Message& message : sent_)
        if (message.text == text) moments.push_back(message.moment);
    return moments;
}

void RunDesk::Pace(int seconds) {
    Schedule([this, seconds] {
        if (!user.Checked("Form4", "per_scan_interval")) user.Click("Form4", "per_scan_interval");
        The<Form4>().PerSan.SetValue(FromLocalFields({2000, 1, 1, seconds / 3600, seconds / 60 % 60, seconds % 60}));
    });
}

void RunDesk::Count(const std::string& number) {
    Schedule([this, number] {
        if (!user.Checked("Form4", "stop_after_n_scan")) user.Click("Form4", "stop_after_n_scan");
        user.Paste("Form4", "N_SCAN", number);
    });
}

}  // namespace vantrel
