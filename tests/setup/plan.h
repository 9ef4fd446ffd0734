// Channel plans, and the dialogs that edit them, for the tests of the scan set-up.
#pragma once

#include "platform/toolkit/control.h"
#include "platform/toolkit/menu.h"
#include "state/shared.h"
#include "support/desk.h"
#include "support/geometry.h"
#include "support/texts.h"

#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace vantrel {

/// Twenty channels: DCV everywhere.
inline const std::string kTwentyVolts = R"(
instrument USB0::1::INSTR
  serial Twenty
  card 2
  no-line-feed
  channel 1-20 VOLT
)";

/// Ten channels: DCV everywhere.
inline const std::string kTenVolts = R"(
instrument USB0::2::INSTR
  serial Ten
  card 1
  no-line-feed
  channel 1-10 VOLT
)";

/// Ten more.
inline const std::string kOtherTenVolts = R"(
instrument USB0::3::INSTR
  serial Other
  card 1
  no-line-feed
  channel 1-10 VOLT
)";

/// The lines of `text`, without the blanks before them, as messages on the wire.
inline Texts Wire(const std::string& text) {
    Texts messages;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const auto start = line.find_first_not_of(' ');
        if (start != std::string::npos) messages.push_back(line.substr(start) + "\n");
    }
    return messages;
}

/// `parts` one after the other.
inline Texts Joined(const std::vector<Texts>& parts) {
    Texts all;
    for (const Texts& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

/// Function commands for channels `from` to `to`.
inline Texts Functions(int from, int to, const std::string& word) {
    Texts messages;
    for (int n = from; n <= to; ++n) messages.push_back("rout:scan:func " + std::to_string(n) + "," + word + "\n");
    return messages;
}

inline Texts FunctionQueries(int channels) {
    Texts messages;
    for (int n = 1; n <= channels; ++n) messages.push_back("rout:scan:func? " + std::to_string(n) + "\n");
    return messages;
}

enum SensorQuery { kRtd, kLetter };

/// The full read-back of a device, with the sensors that the instrument tells of, by channel number.
inline Texts ReadBack(int channels, const std::map<int, SensorQuery>& sensors = {}) {
    Texts messages = {"ROUTe:SCAN:TIMER?\n"};
    for (int n = 1; n <= channels; ++n) {
        const std::string number = std::to_string(n) + "\n";
        messages.push_back("rout:scan:func? " + number);
        const auto sensor = sensors.find(n);
        if (sensor == sensors.end()) continue;
        if (sensor->second == kRtd) {
            messages.push_back("TEMPerature:RTD:TYPE? @" + number);
            messages.push_back("TEMPerature:TRANsducer? @" + number);
        } else {
            messages.push_back("TCOuple:TYPE? @" + number);
        }
    }
    return messages;
}

/// `messages`, all to `instrument`.
inline std::vector<std::pair<int, std::string>> To(int instrument, const Texts& messages) {
    std::vector<std::pair<int, std::string>> out;
    for (const std::string& message : messages) out.emplace_back(instrument, message);
    return out;
}

inline std::string Ch(int i) { return "ch(" + std::to_string(i) + ")"; }
inline std::string Temp(int i) { return "temp(" + std::to_string(i) + ")"; }

/// A desk at which channels are set up.
class PlanDesk : public Desk {
protected:
    /// Opens the scanner card dialog, forgets what went over the wire, runs `steps`, EXIT.
    void SetDev(const User::Action& steps) {
        user.WhenShown("Set_Dev", [this, steps] {
            wire->ClearTranscript();
            steps();
            if (user.Sees("Set_Dev")) user.Click("Set_Dev", "Command2");
        });
        user.Menu("set_sc");
    }
    void Set() { user.Click("Set_Dev", "Command1"); }
    /// Picks a function that opens the shunt dialog, and SETs these numbers there.
    void PickCurrent(int i, const std::string& function, const std::string& ohm = "1", const std::string& amps = "0") {
        user.WhenShown("DCI_ACI_SET", [=, this] {
            user.Type("DCI_ACI_SET", "ohm_set", ohm);
            user.Type("DCI_ACI_SET", "curr_set", amps);
            user.Click("DCI_ACI_SET", "Command1");
        });
        user.Pick("Set_Dev", Ch(i), function);
    }
    /// What a field of the scanner card dialog shows.
    std::string Shown(const std::string& control) const { return user.Text("Set_Dev", control); }
};

}  // namespace vantrel
