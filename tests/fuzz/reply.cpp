// Any bytes as the reply to fetch?. The first bytes say how the plan lies and at which lengths the reads break off.
#include "acquire/scan_poll.h"
#include "fuzz/target.h"
#include "platform/visa.h"
#include "state/shared.h"
#include "support/user.h"
#include "support/virtual_clock.h"
#include "windows/Form1.h"

#include <algorithm>
#include <cstring>

using namespace vantrel;

namespace {

using Word = VisaEntryPoints::Word;

std::string_view reply;
std::size_t piece;  // the most that one read gives

/// What is left of the reply, a piece at a time; then nothing.
Word Read(Word, unsigned char* bytes, Word count, Word* read) {
    const std::size_t size = std::min({reply.size(), piece, static_cast<std::size_t>(count)});
    if (size > 0) std::memcpy(bytes, reply.data(), size);
    reply.remove_prefix(size);
    *read = static_cast<Word>(size);
    return reply.empty() ? Word{0} : Word{static_cast<std::uint32_t>(kViSuccessMaxCnt)};
}

void UseInstrument() {
    VisaEntryPoints visa;
    visa.viWrite = [](Word, const unsigned char*, Word count, Word* written) {
        *written = count;
        return Word{0};
    };
    visa.viRead = Read;
    UseVisa(visa);
}

}  // namespace

void Try(std::string_view input) {
    if (input.size() < 2) return;
    static VirtualClock clock;
    static User user;
    static const bool is_set_up = (UseInstrument(), The<Form1>(), true);
    Hold(is_set_up);
    const int active = static_cast<unsigned char>(input[0]) % 21;
    piece = std::size_t{1024} >> (static_cast<unsigned char>(input[1]) % 8U);
    reply = input.substr(2);
    DeviceCount = 1;
    ChannelCount(0) = 20;
    ActiveChannels(0) = active;
    for (const Integer ch : Each(20)) ChannelPlan(0, ch) = ch * 7 % 20 < active ? "DCV" : "NONE";
    ListFetchTime(0).clear();
    for (int row = 0; row < 400; ++row) Add_Fetch_Time(0);
    try {
        Fetch_Readings(0);
    } catch (const RunTimeError& error) {
        Hold(error.Number() == kTypeMismatch || error.Number() == kOverflow || error.Number() == kDivisionByZero ||
             error.Number() == 5);
    }
}
