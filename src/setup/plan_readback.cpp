#include "setup/plan_readback.h"

#include "link/messaging.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "windows/Set_Dev.h"

namespace vantrel {

namespace {

/// Full cleaning: no line feed anywhere, no blanks around.
void CleanReply() {
    ReplyBuffer = Trim(WithoutLineFeeds(ReplyBuffer));
}

/// The reply with the blanks around it gone and its line feed in place.
std::string ReplyWithoutBlanks() {
    return Trim(ReplyBuffer);
}

/// Asks for the function of channel index `i`: the cleaned reply.
std::string QueryFunction(Integer dev, Integer i) {
    SendScpi("rout:scan:func? " + Str(i + 1), dev);
    CleanReply();
    return Trim(ReplyBuffer);
}

/// Asks for a sensor setting of channel index `i`: the reply, with blanks trimmed only.
std::string QuerySensor(const std::string& query, Integer dev, Integer i) {
    SendScpi(query + " @" + Str(i + 1), dev);
    return ReplyWithoutBlanks();
}

bool IsFourWireTransducer(Integer dev, Integer i) {
    return Contains(QuerySensor("TEMPerature:TRANsducer?", dev, i), "FRTD");
}

}  // namespace

bool IsCurrentChannel(const std::string& name) {
    return Contains(name, "ACI") || Contains(name, "DCI");
}

void RefreshChannelFunctions(Integer dev) {
    const int half = ChannelCount(dev) / 2;
    for (const Integer i : Each(ChannelCount(dev))) {
        std::string& cell = ChannelPlan(SlotOf(dev), i);
        if (IsCurrentChannel(cell)) continue;
        const std::string reply = QueryFunction(dev, i);
        MapFunctionName(reply);
        cell = MapResult;
        if (Contains(reply, "TEMP") && IsFourWireTransducer(dev, i)) cell = "4W,TEMP";
        if (i + 1 > half && Contains(ChannelPlan(SlotOf(dev), i - half), "4W")) cell = "NONE";
    }
}

void ReadDevicePlan(Integer dev) {
    Set_Dev& dialog = The<Set_Dev>();
    const int half = ChannelCount(dev) / 2;

    SendScpi("ROUTe:SCAN:TIMER?", dev);
    CleanReply();
    ScanTimerText(dev) = Trim(ReplyBuffer);
    dialog.Timer_Text(dev) = Trim(ReplyBuffer);

    for (const Integer i : Each(ChannelCount(dev))) {
        std::string& cell = ChannelPlan(SlotOf(dev), i);
        const std::string reply = QueryFunction(dev, i);
        MapFunctionName(reply);
        if (IsCurrentChannel(cell)) {
            // The instrument tells a voltage; only its kind can have changed.
            if (Left(MapResult, 2) != Left(cell, 2)) cell = Left(MapResult, 2) + "I";
        } else {
            cell = MapResult;
            if (Contains(reply, "TEMP")) {
                dialog.Temp_Set(i) = QuerySensor("TEMPerature:RTD:TYPE?", dev, i);
                if (IsFourWireTransducer(dev, i)) cell = "4W,TEMP";
            } else if (Contains(reply, "TCO")) {
                dialog.Temp_Set(i) = QuerySensor("TCOuple:TYPE?", dev, i);
            }
            if (i + 1 > half) {
                if (Contains(MapResult, "4W")) cell = "NONE";
                // The master is looked up by device and not by row: the two agree while rows are ticked from the top.
                if (Contains(ChannelPlan(dev, i - half), "4W")) cell = "NONE";
            }
        }
        dialog.Fun_Set(SlotOf(dev), i) = cell;
    }
}

}  // namespace vantrel
