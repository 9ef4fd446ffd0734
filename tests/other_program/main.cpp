// What tests have a second program do with a record.
//   other_program TASK RECORD FOLDER
// At each halt it writes a line and waits until the next of the files 1, 2, 3 ... is in the folder.
#include "platform/dbengine.h"
#include "platform/os/file.h"
#include "platform/os/output.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <thread>
#ifdef _WIN32
#include <windows.h>
#endif

using namespace vantrel;

namespace {

std::string record;
std::string signals;
int halts = 0;

void Say() { std::cout << "here" << std::endl; }

void AwaitSignal() {
    const std::string signal = signals + "/" + std::to_string(++halts);
    while (!os::IsFile(signal)) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void Halt() {
    Say();
    AwaitSignal();
}

/// Ends as a killed program does: nothing is closed.
[[noreturn]] void Die() { std::_Exit(0); }

void Append(Database& database, const std::string& number) {
    Recordset rows = database.OpenRecordset("select * from data");
    rows.AddNew();
    rows.Set("NUM", number);
    rows.Update();
}

void Execute(const char* statements) {
    sqlite3* file = nullptr;
    sqlite3_open(record.c_str(), &file);
    if (sqlite3_exec(file, statements, nullptr, nullptr, nullptr) != SQLITE_OK) throw std::runtime_error(statements);
}

const std::map<std::string, std::function<void()>> kTasks = {
    {"open",
     [] {
         const Database database = TheDBEngine().OpenDatabase(record);
         Halt();
     }},
    {"make",
     [] {
         Database database = TheDBEngine().CreateDatabase(record, "", 0);
         Halt();
         database.Close();
     }},
    {"make_and_die",
     [] {
         const Database database = TheDBEngine().CreateDatabase(record, "", 0);
         Halt();
         Die();
     }},
    {"delete",
     [] {
         os::File file;
         if (file.Open(record, os::File::Use::kAlone) != os::Fault::kNone) throw std::runtime_error("in use");
         Halt();
     }},
    {"lock",
     [] {
         Execute("begin exclusive");
         Halt();
     }},
    {"append_2_between",
     [] {
         Database database = TheDBEngine().OpenDatabase(record);
         Append(database, "2");
         Halt();
         Recordset rows = database.OpenRecordset("select * from data");
         rows.MoveLast();
         if (rows.RecordCount() != 3 || rows.Text("num") != "3") throw std::runtime_error("rows");
     }},
    {"append_until_death",
     [] {
         std::thread([] {
             AwaitSignal();
             Die();
         }).detach();
         Database database = TheDBEngine().OpenDatabase(record);
         for (int number = 1;; ++number) {
             Append(database, std::to_string(number));
             Say();
         }
     }},
    {"wait", [] { AwaitSignal(); }},
    {"tell",
     [] {
         os::WriteOutput("an answer\n");
         os::WriteError("one fault\n");
         os::WriteError("another fault in \u00B5V\n");
     }},
    {"die_in_a_transaction",
     [] {
         Database database = TheDBEngine().OpenDatabase(record);
         const Database::Transaction transaction(database);
         Recordset rows = database.OpenRecordset("select * from data");
         for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
             rows.Edit();
             rows.Set("num", "x");
             rows.Update();
         }
         Halt();
         Die();
     }},
    {"die_in_the_middle_of_a_change",
     [] {
         Execute("pragma cache_size=5; begin; update data set num='x'");
         Halt();
         Die();
     }},
};

/// Stands in for the command interpreter: writes down how it was called.
int TellCall(int argc, char** argv) {
    std::ofstream told(std::getenv("VANTREL_TOLD"), std::ios::binary);
    for (int i = 0; i < argc; ++i) told << argv[i] << ' ';
#ifdef _WIN32
    STARTUPINFOW start{};
    GetStartupInfoW(&start);
    const bool is_minimised = (start.dwFlags & STARTF_USESHOWWINDOW) != 0 && start.wShowWindow == SW_SHOWMINIMIZED;
    told << (is_minimised ? "minimised" : "not minimised");
#endif
    told << '\n';
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1 && argv[1] == std::string("/c")) return TellCall(argc, argv);
    if (argc != 4 || !kTasks.contains(argv[1])) return 2;
    record = argv[2];
    signals = argv[3];
    try {
        kTasks.at(argv[1])();
    } catch (const std::exception&) {
        return 1;
    }
    return 0;
}
