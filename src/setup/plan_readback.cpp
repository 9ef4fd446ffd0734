#include "setup/plan_readback.h"

#include "link/messaging.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "windows/Set_Dev.h"

namespace vantrel {

namespace {

/// Full cleaning: no line feed anywhere, no blanks around.
void CleanReply() { ReplyBuffer = Trim(WithoutLineFeeds(ReplyBuffer)); }

/// The reply with the blanks around it gone and its line feed in place.
// Kept: K-sensor-line-feed
std::string ReplyWithoutBlanks() { return Trim(ReplyBuffer); }

/// Asks for the function of channel index `i`: the cleaned reply.
std::string QueryFunction(Integer device, Integer i) {
    SendScpi("rout:scan:func? " + Str(i + 1), device);
    CleanReply();
    return Trim(ReplyBuffer);
}

/// Asks for a sensor setting of channel index `i`: the reply, with blanks trimmed only.
std::string QuerySensor(const std::string& query, Integer device, Integer i) {
    SendScpi(query + " @" + Str(i + 1), device);
    return ReplyWithoutBlanks();
}

/// The plan's cell of channel index `i`: by discovery row.
// Kept: K-row-or-device
std::string& Cell(Integer device, int i) { return ChannelPlan(SlotOf(device), i); }

bool IsFourWireTransducer(Integer device, Integer i) {
    return Contains(QuerySensor("TEMPerature:TRANsducer?", device, i), "FRTD");
}

}  // namespace

void RefreshChannelFunctions(Integer device) {
    const int half = ChannelCount(device) / 2;
    for (const Integer i : Each(ChannelCount(device))) {
        if (HoldsCurrent(Cell(device, i))) continue;  // Kept: K-slave
        const std::string reply = QueryFunction(device, i);
        MapFunctionName(reply);
        Cell(device, i) = MapResult;  // Kept: K-empty-plan
        // Kept: K-letters
        if (SensorOfWord(reply) == Sensor::kRtd && IsFourWireTransducer(device, i))
            Cell(device, i) = kFourWireTemperature;
        if (i + 1 > half && TakesFourWires(Cell(device, i - half))) Cell(device, i) = kOff;
    }
}

void ReadDevicePlan(Integer device) {
    Set_Dev& dialog = The<Set_Dev>();
    const int half = ChannelCount(device) / 2;

    SendScpi("ROUTe:SCAN:TIMER?", device);
    CleanReply();
    ScanTimerText(device) = Trim(ReplyBuffer);
    dialog.Timer_Text(device) = Trim(ReplyBuffer);  // Kept: K-row-or-device

    for (const Integer i : Each(ChannelCount(device))) {
        const std::string reply = QueryFunction(device, i);
        MapFunctionName(reply);
        if (HoldsCurrent(Cell(device, i))) {
            // The instrument tells a voltage; only its kind can have changed.
            // Kept: K-two-letters
            if (Left(MapResult, 2) != Left(Cell(device, i), 2)) Cell(device, i) = Left(MapResult, 2) + "I";
        } else {
            Cell(device, i) = MapResult;
            const Sensor sensor = SensorOfWord(reply);
            if (sensor == Sensor::kRtd) {
                dialog.Temp_Set(i) = QuerySensor("TEMPerature:RTD:TYPE?", device, i);  // Kept: K-sensors-shared
                if (IsFourWireTransducer(device, i)) Cell(device, i) = kFourWireTemperature;
            } else if (sensor == Sensor::kThermocouple) {
                dialog.Temp_Set(i) = QuerySensor("TCOuple:TYPE?", device, i);
            }
            if (i + 1 > half) {
                if (TakesFourWires(MapResult)) Cell(device, i) = kOff;  // Kept: K-slave
                // The master is looked up by device and not by row: the two agree while rows are ticked from the top.
                // Kept: K-row-or-device
                if (TakesFourWires(ChannelPlan(device, i - half))) Cell(device, i) = kOff;
            }
        }
        dialog.Fun_Set(SlotOf(device), i) = Cell(device, i);
    }
}

}  // namespace vantrel
