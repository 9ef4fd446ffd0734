#include "platform/visa/wire_log.h"

#include "platform/clock.h"
#include "platform/os/output.h"

namespace vantrel {
namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

/// "yyyy-MM-dd HH:mm:ss.zzz"
std::string Stamp(DateTime moment) {
    constexpr int kMsPerSecond = 1000;
    std::string thousandths = std::to_string(kMsPerSecond + moment.ms % kMsPerSecond);
    thousandths.front() = '.';
    return DateText(moment) + thousandths;
}

/// The bytes as a text of a bench file.
std::string Quoted(std::string_view bytes) {
    std::string text = "\"";
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '\n')
            text += "\\n";
        else if (c == '"' || c == '\\')
            text += {'\\', c};
        else if (code < 0x20 || code > 0x7E)
            text += {'\\', 'x', kHexDigits[code / 16], kHexDigits[code % 16]};
        else
            text += c;
    }
    return text + '"';
}

/// " ! 3FFF0006"; nothing for a plain success.
std::string StatusText(ViStatus status) {
    if (status == kViSuccess) return {};
    std::string digits;
    for (auto rest = static_cast<std::uint32_t>(status); rest != 0; rest /= 16)
        digits.insert(digits.begin(), kHexDigits[rest % 16]);
    return " ! " + digits;
}

}  // namespace

WireLog::WireLog(const char* file) : name_(file != nullptr ? file : "") {
    if (name_.empty()) return;
    if (file_.Open(name_, os::File::Use::kAppend) == os::Fault::kNone)
        Write(Stamp(Now()) + " begins");
    else
        GiveUp();
}

void WireLog::Opened(const std::string& resource, ViSession session, ViStatus status) {
    if (!file_.IsOpen()) return;
    const int place = places_.try_emplace(resource, static_cast<int>(places_.size())).first->second;
    if (status >= 0) session_place_[session] = place;
    Write(Stamp(Now()) + ' ' + std::to_string(place) + " = " + Quoted(resource) + StatusText(status));
}

void WireLog::Sent(ViSession session, std::string_view bytes, ViStatus status) {
    Exchanged(session, '>', bytes, status);
}

void WireLog::Received(ViSession session, std::string_view bytes, ViStatus status) {
    Exchanged(session, '<', bytes, status);
}

void WireLog::Exchanged(ViSession session, char direction, std::string_view bytes, ViStatus status) {
    if (!file_.IsOpen()) return;
    const auto known = session_place_.find(session);
    const std::string place = known == session_place_.end() ? "?" : std::to_string(known->second);
    Write(Stamp(Now()) + ' ' + place + ' ' + direction + ' ' + Quoted(bytes) + StatusText(status));
}

void WireLog::Write(const std::string& line) {
    if (file_.Write(line + '\n') != os::Fault::kNone) GiveUp();
}

void WireLog::GiveUp() {
    file_.Close();
    os::WriteError("VANTREL_WIRE_LOG: " + name_ + " cannot be written, nothing more is logged\n");
}

}  // namespace vantrel
