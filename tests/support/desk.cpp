#include "support/desk.h"

#include "platform/dbengine.h"
#include "platform/toolkit/events.h"
#include "windows/Form1.h"

#include <algorithm>

namespace vantrel {

std::vector<std::vector<std::string>> RowsOf(const std::string& path) {
    std::vector<std::vector<std::string>> rows;
    Database database = TheDBEngine().OpenDatabase(path);
    Recordset set = database.OpenRecordset("select * from data");
    for (; !set.Eof(); set.MoveNext()) {
        std::vector<std::string> row = {set.Value("NUM").value_or("<Null>"), set.Value("Time").value_or("<Null>")};
        for (int ch = 1; ch <= 20; ++ch) row.push_back(set.Value("Ch" + std::to_string(ch)).value_or("<Null>"));
        rows.push_back(row);
    }
    database.Close();
    return rows;
}

void Desk::Open(const bench::BenchDescription& description) {
    wire.emplace(description);
    The<Form1>().Show();
    DoEvents();
}

void Desk::Connect(const std::vector<int>& rows) {
    user.WhenShown("Connect", [this, rows] {
        for (int i = 0; i < 6; ++i) {
            const std::string box = "Check1(" + std::to_string(i) + ")";
            const bool wanted = std::find(rows.begin(), rows.end(), i) != rows.end();
            if (user.Sees("Connect", box) && user.Checked("Connect", box) != wanted) user.Click("Connect", box);
        }
        user.Click("Connect", "Command2");
    });
    user.Menu("Connected_to_Instrument");
}

void Desk::Assign(const std::vector<std::string>& records) {
    user.Click("Form1", "Command10");
    for (std::size_t i = 0; i < records.size(); ++i)
        user.Pick("DB_SET", "Combo1(" + std::to_string(i) + ")", records[i]);
    user.Click("DB_SET", "OK");
}

void Desk::Schedule(const User::Action& steps) {
    user.WhenShown("Form4", [this, steps] {
        steps();
        user.Click("Form4", "Command1");
    });
    user.Menu("set_read");
}

void Desk::Run() { user.Click("Form1", "Command3"); }

void Desk::StopAfter(int ms) {
    clock.At(static_cast<int>(clock.Elapsed()) + ms, [this] { user.Click("Form1", "Command4"); });
}

void Desk::RunAndStopAfter(int ms) {
    StopAfter(ms);
    Run();
}

}  // namespace vantrel
