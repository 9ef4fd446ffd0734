// The main job, as a person at the bench does it.
#include "support/desk.h"

namespace vantrel {
namespace {

using MainJob = Desk;

TEST_F(MainJob, From_connect_over_start_and_stop_to_a_record_with_one_row_a_scan) {
    Open();
    EXPECT_FALSE(user.Enabled("Form1", "Command3"));

    Connect({0, 1});
    EXPECT_TRUE(user.Enabled("Form1", "Command3"));
    EXPECT_TRUE(user.SeesTab("Form1", "SSTab1", 1));
    EXPECT_FALSE(user.SeesTab("Form1", "SSTab1", 2));

    Assign({"Record1"});
    user.Click("Form1", "Command6");
    RunAndStopAfter(30'000);

    EXPECT_EQ(user.Messages(), std::vector<std::string>{"End of Job."});
    const auto rows = RowsOf(Record("Record1"));
    ASSERT_GT(rows.size(), 3U);
    for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(rows[i][0], std::to_string(i + 1));
    const int last = user.RowCount("DATA_Table", "MSFlexGrid1(0)") - 1;
    EXPECT_EQ(user.CellText("DATA_Table", "MSFlexGrid1(0)", last, 0), std::to_string(rows.size()));
    EXPECT_EQ(user.CellText("DATA_Table", "MSFlexGrid1(0)", last, 1), rows.back()[1]);
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 1, 0), rows.back()[2]);
}

}  // namespace
}  // namespace vantrel
