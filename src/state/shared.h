// The shared tables of the program: one block that every dialog and the run read and write directly. One thread, no
// locks.
//
// A device (0 to 3) is the position of an instrument among those ticked in the Connect dialog, `ch` (0 to 19) the
// index of a channel; on the wire and on the screen a channel is its index plus 1. Five devices and 21 channels are
// declared. The road from a device to its VISA session takes three steps: InstrSession(FoundSession(SlotOf(device))).
// Tables indexed by discovery row say so; all others are indexed by device.
#pragma once

#include "platform/dbengine.h"
#include "platform/numbers.h"
#include "platform/picture.h"
#include "platform/tables.h"
#include "platform/text.h"
#include "platform/visa.h"

#include <string>
#include <vector>

namespace vantrel {

// Kept: K-places
inline constexpr int kDevices = 4;        ///< in use
inline constexpr int kChannels = 20;      ///< of the largest card
inline constexpr int kReplyBytes = 1024;  ///< read of a reply at a time
inline constexpr const char* kNoRecord = "0";

// ------------------------------------------------------------------------------------------------- link to instruments

/// Status of the VISA call made last, by any code.
extern ViStatus VisaStatus;
/// True while VisaStatus is one of the two good ones: done, or done with more of the reply waiting.
bool LinkIsGood();

extern ViSession DefaultRM;                 ///< session of the default resource manager
extern ViSession FindList;                  ///< find list of the last search
extern std::uint32_t FindCount;             ///< resources that the last search returned
extern FixedText<kReplyBytes> InstrDesc;    ///< resource descriptor of the search
extern std::uint32_t RetCount;              ///< bytes that the last viWrite or viRead moved
extern FixedText<kReplyBytes> ReplyBuffer;  ///< every instrument reply, of all devices: left-aligned, blanks behind it
extern Table<ViSession, 21> InstrSession;   ///< by place in the search, qualifying or not
extern Table<Integer, 11> FoundSession;     ///< by discovery row: place in the search
extern Table<Integer, 5> SlotOf;            ///< discovery row that the user ticked
/// While Connect searches, the instruments that qualify; after it, the ticked ones: 0 to 4.
extern Integer DeviceCount;
// Kept: K-row-or-device
/// Channels of the card, 10 or 20. Written by discovery row and read by device: they agree while rows and devices do.
extern Table<Integer, 5> ChannelCount;
extern Table<std::string, 11> DeviceSerial;  ///< by discovery row; also the name of the device in lists and on its tab

// ------------------------------------------------------------------------------------------------- plan and settings

// Kept: K-row-or-device
/// Function name of each channel. By discovery row where it is read back, written and shown; by device where readings
/// are cut into rows, converted and drawn.
extern ChannelTable<std::string> ChannelPlan;
extern Table<std::string, 5> ScanModeWord;         ///< by discovery row: "SCAN" or "SCAN:STEP"
extern Table<std::string, 5> ScanTimerText;        ///< seconds, as last read from the instrument or written to it
extern ChannelTable<Colour> ChannelColor;          ///< in the live table and the trend
extern ChannelTable<std::string> ChannelDivision;  ///< value that one grid row of the trend is worth
extern ChannelTable<std::string> ChannelOffset;    ///< value that lies on the trend's zero line
extern ChannelTable<double> ShuntOhm;              ///< resistance of a current channel's shunt, ohm
extern ChannelTable<double> ShuntOffset;           ///< offset of a current channel, ampere
extern Integer ShuntDevice, ShuntChannel;          ///< the channel that the shunt dialog edits
// Kept: K-device-settings, K-record-0
/// Name of the record that a device stores into, without folder and extension; kNoRecord: it stores nothing.
extern Table<std::string, 5> RecordName;
bool HasRecord(Integer device);

// ---------------------------------------------------------------------------------------------------------------- run

extern ChannelTable<std::string> ScanRow;  ///< latest reading of each channel; one blank: none
extern Table<double, 5> ScanCount;         ///< scans since Start
/// Channels of the device that are scanned. A divisor, hence a float.
extern Table<double, 5> ActiveChannels;
extern Table<Integer, 5> ScanTarget;     ///< count of readings at which the pass of the device is finished
extern Table<Integer, 5> ScanThreshold;  ///< next count of readings at which a time stamp is taken
extern Integer StopRequested;            ///< -1: the run is to end; any other value: go on
extern DateTime ScanTime;                ///< time stamp of the row being handed on
/// Time stamps of the rows of the present pass, as date texts, oldest first.
extern Table<std::vector<std::string>, 5> ListFetchTime;
extern Table<Colour, 20> ColorTable;  ///< default colours of the channels

// ------------------------------------------------------------------------------------------------------------ records

extern Table<std::string, 5> RecordPath;  ///< full path of the record
extern Table<Database, 5> RecordDb;       ///< open for the run
extern Table<Recordset, 5>
    RecordRs;  ///< all rows, positioned for appending; not set in a run that began without a record
extern Table<double, 5> RecordBase;  ///< rows that the record held when the run opened it

// -------------------------------------------------------------------------------------------------------------- trend

extern double XStep;                 ///< twips between two neighbouring points
extern double YStep;                 ///< twips per unit of value of the channel being drawn; else twips per grid row
extern double XZoom, YZoom;          ///< divisors of the steps; 1
extern Integer BaseRow;              ///< grid row of the zero line, from the top
extern Table<double, 5> TrendX;      ///< pen of the device's trace, twips
extern Table<double, 5> TrendY;      ///< pen of the device's trace, twips
extern Table<double, 5> TrendBase;   ///< zero line of the device, twips
extern Table<double, 5> TrendDelta;  ///< step of the segment being drawn, twips upward

/// Raw values of a channel, newest in slot 0. 171 slots, of which 0 to 162 are used.
extern ChannelTable<Table<double, 171>> TrendHistory;

// ----------------------------------------------------------------------------------------------------------- defaults

void BuildColorTable();
void ClearRunState();      ///< no scans counted, no stop asked for
void SetTrendDefaults();   ///< zoom 1, zero line on grid row 8
void SetDeviceDefaults();  ///< devices 0 to 3, channels 0 to 19; after BuildColorTable

}  // namespace vantrel
