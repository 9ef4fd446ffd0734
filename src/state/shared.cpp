#include "state/shared.h"

namespace vantrel {

ViStatus VisaStatus = kViSuccess;
ViSession DefaultRM = 0;
ViSession FindList = 0;
std::uint32_t FindCount = 0;
FixedText<kReplyBytes> InstrDesc;
std::uint32_t RetCount = 0;
FixedText<kReplyBytes> ReplyBuffer;
Table<ViSession, 21> InstrSession;
Table<Integer, 11> FoundSession;
Table<Integer, 5> SlotOf;
Integer DeviceCount = 0;
Table<Integer, 5> ChannelCount;
Table<std::string, 11> DeviceSerial;

ChannelTable<std::string> ChannelPlan;
Table<std::string, 5> ScanModeWord;
Table<std::string, 5> ScanTimerText;
ChannelTable<Colour> ChannelColor;
ChannelTable<std::string> ChannelDivision;
ChannelTable<std::string> ChannelOffset;
ChannelTable<double> ShuntOhm;
ChannelTable<double> ShuntOffset;
Integer ShuntDevice = 0;
Integer ShuntChannel = 0;
Table<std::string, 5> RecordName;

ChannelTable<std::string> ScanRow;
Table<double, 5> ScanCount;
Table<double, 5> ActiveChannels;
Table<Integer, 5> ScanTarget;
Table<Integer, 5> ScanThreshold;
Integer StopRequested = 0;
DateTime ScanTime;
Table<std::vector<std::string>, 5> ListFetchTime;
Table<Colour, 20> ColorTable;

Table<std::string, 5> RecordPath;
Table<Database, 5> RecordDb;
Table<Recordset, 5> RecordRs;
Table<double, 5> RecordBase;

double XStep;
double YStep;
double XZoom;
double YZoom;
Integer BaseRow;
Table<double, 5> TrendX;
Table<double, 5> TrendY;
Table<double, 5> TrendBase;
Table<double, 5> TrendDelta;
ChannelTable<Table<double, 171>> TrendHistory;

bool LinkIsGood() { return VisaStatus == kViSuccess || VisaStatus == kViSuccessMaxCnt; }

bool HasRecord(Integer device) { return RecordName(device) != kNoRecord; }

void BuildColorTable() {
    const std::vector<Colour> colours = {
        RGB(0, 128, 0),     RGB(0, 128, 128),   RGB(128, 0, 0),     RGB(128, 0, 128),   RGB(128, 128, 0),
        RGB(192, 192, 192), RGB(128, 128, 128), RGB(0, 255, 0),     RGB(0, 255, 255),   RGB(255, 0, 0),
        RGB(255, 0, 255),   RGB(255, 255, 0),   RGB(196, 136, 136), RGB(255, 128, 128), RGB(255, 128, 64),
        RGB(96, 175, 255),  RGB(128, 128, 255), RGB(255, 128, 192), RGB(255, 128, 255), RGB(255, 255, 128),
    };
    for (const Integer ch : Each(kChannels)) ColorTable(ch) = colours.at(static_cast<std::size_t>(ch));
}

void ClearRunState() {
    for (const Integer device : Each(kDevices)) ScanCount(device) = 0;
    StopRequested = 0;
}

void SetTrendDefaults() {
    XZoom = 1.0;
    YZoom = 1.0;
    BaseRow = 8;
}

void SetDeviceDefaults() {
    for (const Integer device : Each(kDevices)) {
        RecordName(device) = kNoRecord;
        ScanModeWord(device) = "SCAN";
        for (const Integer ch : Each(kChannels)) {
            ChannelDivision(device, ch) = "1";
            ChannelOffset(device, ch) = "0";
            ChannelColor(device, ch) = ColorTable(ch);
            ScanRow(device, ch) = " ";
            ShuntOhm(device, ch) = 1.0;
            ShuntOffset(device, ch) = 0.0;
        }
    }
}

}  // namespace vantrel
