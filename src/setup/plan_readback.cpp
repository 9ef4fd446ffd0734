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

/// The plan's cell of channel index `i`: by discovery row.
// Kept: K-row-or-device
std::string& Cell(Integer dev, int i) { return ChannelPlan(SlotOf(dev), i); }

bool IsFourWireTransducer(Integer dev, Integer i) {
    return Contains(QuerySensor("TEMPerature:TRANsducer?", dev, i), "FRTD");
}

}  // namespace

void RefreshChannelFunctions(Integer dev) {
    const int half = ChannelCount(dev) / 2;
    for (const Integer i : Each(ChannelCount(dev))) {
        if (HoldsCurrent(Cell(dev, i))) continue;  // Kept: K-slave
        const std::string reply = QueryFunction(dev, i);
        MapFunctionName(reply);
        Cell(dev, i) = MapResult;  // Kept: K-empty-plan
        // Kept: K-letters
        if (SensorOfWord(reply) == Sensor::kRtd && IsFourWireTransducer(dev, i)) Cell(dev, i) = kFourWireTemperature;
        if (i + 1 > half && TakesFourWires(Cell(dev, i - half))) Cell(dev, i) = kOff;
    }
}

void ReadDevicePlan(Integer dev) {
    Set_Dev& dialog = The<Set_Dev>();
    const int half = ChannelCount(dev) / 2;

    SendScpi("ROUTe:SCAN:TIMER?", dev);
    CleanReply();
    ScanTimerText(dev) = Trim(ReplyBuffer);
    dialog.Timer_Text(dev) = Trim(ReplyBuffer);  // Kept: K-row-or-device

    for (const Integer i : Each(ChannelCount(dev))) {
        const std::string reply = QueryFunction(dev, i);
        MapFunctionName(reply);
        if (HoldsCurrent(Cell(dev, i))) {
            // The instrument tells a voltage; only its kind can have changed.
            // Kept: K-two-letters
            if (Left(MapResult, 2) != Left(Cell(dev, i), 2)) Cell(dev, i) = Left(MapResult, 2) + "I";
        } else {
            Cell(dev, i) = MapResult;
            const Sensor sensor = SensorOfWord(reply);
            if (sensor == Sensor::kRtd) {
                dialog.Temp_Set(i) = QuerySensor("TEMPerature:RTD:TYPE?", dev, i);  // Kept: K-sensors-shared
                if (IsFourWireTransducer(dev, i)) Cell(dev, i) = kFourWireTemperature;
            } else if (sensor == Sensor::kThermocouple) {
                dialog.Temp_Set(i) = QuerySensor("TCOuple:TYPE?", dev, i);
            }
            if (i + 1 > half) {
                if (TakesFourWires(MapResult)) Cell(dev, i) = kOff;  // Kept: K-slave
                // The master is looked up by device and not by row: the two agree while rows are ticked from the top.
                // Kept: K-row-or-device
                if (TakesFourWires(ChannelPlan(dev, i - half))) Cell(dev, i) = kOff;
            }
        }
        dialog.Fun_Set(SlotOf(dev), i) = Cell(dev, i);
    }
}

}  // namespace vantrel
