// A stored row survives a power cut: what the engine has the disk write before Update returns.
#include "platform/dbengine.h"
#include "support/file_calls.h"
#include "support/records.h"
#include "support/temp_folder.h"
#include "support/texts.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(DurableCommit, Update_returns_once_the_record_and_then_the_end_of_its_journal_are_on_the_disk) {
    const TempFolder folder;
    MakeRecord(folder / "Record1.mdb", 1);
    Database database = TheDBEngine().OpenDatabase(folder / "Record1.mdb");
    Recordset rows = database.OpenRecordset("select * from data");
    rows.AddNew();
    rows.Set("NUM", "2");

    const FileCalls calls(folder.Path());
    rows.Update();

    // The journal's name goes with its folder: only then is the row there for good.
    const Texts synced = calls.Synced();
    ASSERT_GE(synced.size(), 2U);
    EXPECT_EQ(Texts(synced.end() - 2, synced.end()), (Texts{"Record1.mdb", ""}));
}

}  // namespace
}  // namespace vantrel
