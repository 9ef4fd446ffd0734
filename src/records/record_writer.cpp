#include "records/record_writer.h"

#include "platform/toolkit/events.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "windows/Form1.h"

namespace vantrel {

namespace {

void ConvertCurrent(Integer device, Integer ch) {
    if (!IsCurrent(ChannelPlan(device, ch))) return;  // Kept: K-row-or-device
    const double current = Divide(CDbl(ScanRow(device, ch)), ShuntOhm(device, ch)) + ShuntOffset(device, ch);
    ScanRow(device, ch) = Str(current);  // Kept: K-current-form
}

/// A column never holds an empty text: a field of blanks, of which trimming leaves nothing, counts as no reading.
// Kept: K-blank-cell
std::string Stored(const std::string& reading) { return reading.empty() ? " " : reading; }

void AppendRow(Integer device) {
    Recordset& rows = RecordRs(device);
    rows.AddNew();
    rows.Set("num", RecordBase(device) + ScanCount(device));  // Kept: K-gap
    rows.Set("Time", ScanTime);
    // Kept: K-twenty-columns
    for (const Integer ch : Each(kChannels)) rows.Set("CH" + Str(ch + 1), Stored(ScanRow(device, ch)));
    rows.Update();
}

}  // namespace

void WriteRecord(Integer device) {
    ScanCount(device) += 1;
    MSFlexGrid& table = The<Form1>().MSFlexGrid1(device);
    for (const Integer ch : Each(ChannelCount(device))) {
        table.SetCol(ch % 10);
        table.SetRow(ch < 10 ? 1 : 3);
        ConvertCurrent(device, ch);
        table.SetText(ScanRow(device, ch));
    }
    if (HasRecord(device) && RecordRs(device).IsSet()) AppendRow(device);  // Kept: K-start-opens
    DoEvents();
}

}  // namespace vantrel
