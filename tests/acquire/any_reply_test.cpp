// Instruments may answer anything: what they send becomes readings and names or a run-time error, and nothing else
// happens.
#include "acquire/scan_poll.h"
#include "setup/plan_readback.h"
#include "state/shared.h"
#include "support/rounds.h"
#include "support/temp_folder.h"
#include "support/user.h"
#include "support/virtual_clock.h"
#include "windows/Form1.h"

#include <gtest/gtest.h>
#include <random>

namespace vantrel {
namespace {

using Word = VisaEntryPoints::Word;

/// An instrument that answers every read with bytes drawn at random; now and then a read fills its buffer and more is
/// waiting.
class Babble {
public:
    static void Answer(unsigned round) {
        generator = Rounds(1).Chance(static_cast<int>(round));
        VisaEntryPoints visa;
        visa.viWrite = [](Word, const unsigned char*, Word count, Word* written) {
            *written = count;
            return Word{0};
        };
        visa.viRead = [](Word, unsigned char* bytes, Word count, Word* read) {
            const bool full = Draw(4) == 0;
            *read = full ? count : Draw(static_cast<int>(count));
            for (Word i = 0; i < *read; ++i) bytes[i] = Byte();
            return full ? Word{static_cast<std::uint32_t>(kViSuccessMaxCnt)} : Word{0};
        };
        UseVisa(visa);
    }

private:
    static Word Draw(int below) {
        return std::uniform_int_distribution<Word>(0, static_cast<Word>(below - 1))(generator);
    }
    static unsigned char Byte() {
        static const std::string likely = "0123456789012345678901234567890123456789+-.E,,,,,,,,,,\n\r \"VOLTEMPFRD4W";
        const Word pick = Draw(static_cast<int>(likely.size()) + 2);
        return pick < likely.size() ? static_cast<unsigned char>(likely[pick]) : static_cast<unsigned char>(Draw(256));
    }
    static inline std::mt19937 generator;
};

class AnyReply : public testing::TestWithParam<unsigned> {
protected:
    AnyReply() {
        The<Form1>();
        DeviceCount = 1;
        ChannelCount(0) = 20;
    }
    /// True if `work` comes to its end, regular or by one of the errors that replies may cause.
    template <class Work>
    static bool Ends(const Work& work) {
        try {
            work();
        } catch (const RunTimeError& error) {
            const int number = error.Number();
            return number == kTypeMismatch || number == kOverflow || number == kDivisionByZero;
        }
        return true;
    }
    VirtualClock clock;
    TempAppFolder folder;
    User user;
};

TEST_P(AnyReply, To_fetch_becomes_rows_or_a_run_time_error) {
    Babble::Answer(GetParam());
    for (const Integer round : Each(20)) {
        ActiveChannels(0) = round;
        for (const Integer ch : Each(20)) ChannelPlan(0, ch) = ch * 7 % 20 < round ? "DCV" : "NONE";
        for (int row = 0; row < 400; ++row) Add_Fetch_Time(0);
        EXPECT_TRUE(Ends([] { Fetch_Readings(0); }));
    }
    Tried(20, "fetches with random replies");
}

TEST_P(AnyReply, To_the_plan_becomes_a_name) {
    Babble::Answer(GetParam());
    EXPECT_TRUE(Ends([] { RefreshChannelFunctions(0); }));
    EXPECT_TRUE(Ends([] { ReadDevicePlan(0); }));
    Tried(2, "plans with random replies");
}

INSTANTIATE_TEST_SUITE_P(Drawn, AnyReply, testing::Range(1U, 9U));

}  // namespace
}  // namespace vantrel
