#include "link/messaging.h"

#include "platform/clock.h"
#include "platform/toolkit/dialogs.h"
#include "state/shared.h"
#include "windows/Form1.h"

namespace vantrel {

namespace {

constexpr int kQueryWait = 50;  // ms

ViSession SessionOf(Integer device) { return InstrSession(FoundSession(SlotOf(device))); }

void ReadReply(Integer device) {
    std::string reply;
    VisaStatus = viRead(SessionOf(device), &reply, kReplyBytes, &RetCount);
    ReplyBuffer = reply;
    if (LinkIsGood()) return;  // Kept: K-term-char, K-box-each-query
    The<Form1>().Command4_Click();
    MsgBox("Device is disconnected !");
}

}  // namespace

void SendScpi(std::string& command, Integer device) {
    command += '\n';
    const Integer length = command.size();  // Kept: K-16-bits
    // Kept: K-failed-write
    VisaStatus = viWrite(SessionOf(device), command, static_cast<std::uint32_t>(length), &RetCount);
    if (!Contains(command, "?")) return;  // Kept: K-question-mark
    ReplyBuffer = "";
    Sleep(kQueryWait);  // Kept: K-query-blocks
    ReadReply(device);
}

void ReadScpi(Integer device) {
    ReplyBuffer = "";
    ReadReply(device);
}

}  // namespace vantrel
