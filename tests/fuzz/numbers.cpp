// Any text read as a number, and cut into pieces.
#include "platform/numbers.h"

#include "fuzz/target.h"
#include "platform/text.h"

#include <cmath>

using namespace vantrel;

void Try(std::string_view text) {
    try {
        // Written out and read again a number stays itself, to the 15 digits of the text.
        const double value = CDbl(text);
        Hold(IsNumeric(text));
        Hold(std::isfinite(value));
        Hold(Str(CDbl(Str(value))) == Str(value));
        CSng(value);
    } catch (const RunTimeError& error) {
        Hold(error.Number() == kTypeMismatch || error.Number() == kOverflow);
    }
    try {
        Hold(std::isfinite(Val(text)));
    } catch (const RunTimeError& error) {
        Hold(error.Number() == kOverflow);
    }
    std::string joined;
    for (const std::string& piece : Split(text, ',')) joined += piece + ",";
    joined.pop_back();
    Hold(joined == text);
    Hold(Trim(Trim(text)) == Trim(text));
    Hold(!Contains(WithoutLineFeeds(text), "\n"));
}
