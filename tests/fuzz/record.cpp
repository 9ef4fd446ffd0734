// Any bytes as a record file: it opens or it does not, and a walk over its rows ends.
#include "fuzz/target.h"
#include "platform/dbengine.h"
#include "platform/errors.h"
#include "support/temp_folder.h"

using namespace vantrel;

void Try(std::string_view bytes) {
    static const TempFolder folder;
    const std::string path = folder / "Record1.mdb";
    for (const char* file : {"Record1.mdb", "Record1.mdb-journal"}) std::filesystem::remove(folder / file);
    WriteFileBytes(path, std::string(bytes));
    try {
        Database database = TheDBEngine().OpenDatabase(path);
        Recordset rows = database.OpenRecordset("select * from data");
        int walked = 0;
        for (; !rows.Eof() && walked < 1000; rows.MoveNext(), ++walked) {
            rows.Value("NUM");
            rows.Value("Ch20");
        }
        rows = database.OpenRecordset("select * from data where num='2'");
        if (!rows.Eof()) {
            rows.Edit();
            rows.Set("NUM", "3");
            rows.Update();
        }
        rows.AddNew();
        rows.Set("NUM", "4");
        rows.Update();
        database.Close();
    } catch (const RunTimeError& error) {
        Hold(error.Number() >= 3000);
    }
}
