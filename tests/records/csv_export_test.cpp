// The CSV file of the record browser, byte for byte, and the ways in which none comes about.
#include "platform/toolkit/dialogs.h"
#include "support/desk.h"
#include "support/environment.h"
#include "support/records.h"
#include "windows/Record_View_Form.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#ifdef _WIN32
#include "platform/os/file.h"
#else
#include <sys/resource.h>
#include <sys/stat.h>
#endif

namespace vantrel {
namespace {

using Cells = std::vector<std::string>;

const std::string kCaptions =
    "\"Scan Cycle\",\"Time\",\"CH 1\",\"CH 2\",\"CH 3\",\"CH 4\",\"CH 5\",\"CH 6\",\"CH 7\",\"CH 8\",\"CH 9\","
    "\"CH 10\",\"CH 11\",\"CH 12\",\"CH 13\",\"CH 14\",\"CH 15\",\"CH 16\",\"CH 17\",\"CH 18\",\"CH 19\",\"CH 20\"\r\n";
const std::string kEmptyLine =
    "\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"\r\n";
const std::string kTwentyBlanks =
    ",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \","
    "\" \",\" \"\r\n";

/// The line of row `row` of a record whose readings are all missing.
std::string BlankRow(int row) { return "\"" + std::to_string(row) + "\",\"" + RowTime(row) + "\"" + kTwentyBlanks; }

std::string BlankRows(int from, int to) {
    std::string lines;
    for (int row = from; row <= to; ++row) lines += BlankRow(row);
    return lines;
}

/// A reading in channel 1 and none in the others.
ReadingOf FirstChannel(const std::string& reading) {
    return [reading](int, int channel) { return channel == 1 ? reading : " "; };
}

class CsvExport : public Desk {
protected:
    CsvExport() {
        Open();
        user.Click("Form1", "Command7");
    }
    MSFlexGrid& Grid() { return The<Record_View_Form>().MSFlexGrid1; }
    /// Has the browser show the only record that there is.
    void ShowRecord() {
        user.Click("Record_View_Form", "Command1");
        user.Press("Record_View_Form", "List1", Qt::Key_Space);
        user.Click("Record_View_Form", "Command2");
    }
    void ShowRecord(int rows, const ReadingOf& reading = FirstChannel(" ")) {
        MakeRecord(Record("Record1"), rows, reading);
        ShowRecord();
    }
    /// Presses CSV and answers the dialog with file `name`.
    void ExportTo(const std::string& name) {
        user.AnswerFile(folder / name);
        user.Click("Record_View_Form", "Command5");
    }
    /// The same. What is then in the file; nothing if there is none.
    std::string Export(const std::string& name = "page.csv") {
        ExportTo(name);
        return FileBytes(folder / name);
    }
    void Cancel() {
        user.AnswerFile("");
        user.Click("Record_View_Form", "Command5");
    }
    bool IsThere(const std::string& name) const { return std::filesystem::exists(folder / name); }
    /// A file that can be opened and not written: a full disk.
    std::string FullDisk() const {
        std::filesystem::create_symlink("/dev/full", folder / "full.csv");
        return "full.csv";
    }
    void ExpectNoMessage() const { EXPECT_EQ(user.Messages(), Cells()); }
};

// ---- The file

TEST_F(CsvExport, Has_the_captions_and_a_line_for_each_row_with_every_cell_in_quotes) {
    ShowRecord(2, [](int row, int channel) {
        if (channel == 20) return std::string("+9.90000000E+37\n");
        return channel <= 3 ? "-" + std::to_string(10 * row + channel) + ".5" : " ";
    });
    const std::string blanks =
        "\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \",\" \"";
    EXPECT_EQ(Export(), kCaptions + "\"1\",\"2026-03-01 08:00:01\",\"-11.5\",\"-12.5\",\"-13.5\"," + blanks +
                            ",\"+9.90000000E+37\n\"\r\n"
                            "\"2\",\"2026-03-01 08:00:02\",\"-21.5\",\"-22.5\",\"-23.5\"," +
                            blanks + ",\"+9.90000000E+37\n\"\r\n");
    ExpectNoMessage();
}

TEST_F(CsvExport, Before_any_record_is_opened_has_the_captions_and_one_line_of_empty_fields) {
    EXPECT_EQ(Export(), kCaptions + kEmptyLine);
}

TEST_F(CsvExport, Of_a_record_without_rows_has_the_captions_alone) {
    ShowRecord(0);
    EXPECT_EQ(Export(), kCaptions);
}

TEST_F(CsvExport, Of_a_full_page_has_1001_lines) {
    ShowRecord(1500);
    const std::string bytes = Export();
    EXPECT_EQ(std::ranges::count(bytes, '\n'), 1001);
    EXPECT_EQ(bytes, kCaptions + BlankRows(1, 1000));
}

TEST_F(CsvExport, Of_the_second_page_begins_with_row_1001_behind_the_captions) {
    ShowRecord(1500);
    user.Click("Record_View_Form", "next_DB");
    EXPECT_EQ(Export(), kCaptions + BlankRows(1001, 1500));
}

TEST_F(CsvExport, Of_the_empty_page_behind_exactly_1000_rows_has_the_captions_alone) {
    ShowRecord(1000);
    user.Click("Record_View_Form", "next_DB");
    EXPECT_EQ(Export(), kCaptions);
}

TEST_F(CsvExport, Has_a_quoted_blank_for_a_channel_without_a_reading_and_two_quotes_for_an_empty_cell) {
    ShowRecord(1, [](int, int channel) { return channel == 1 ? "" : " "; });
    std::string line = BlankRow(1);
    line.replace(line.find("\" \""), 3, "\"\"");
    EXPECT_EQ(Export(), kCaptions + line);
}

TEST_F(CsvExport, Has_empty_fields_for_a_row_that_the_page_leaves_blank) {
    MakeRecord(Record("Record1"), 3);
    Database database = TheDBEngine().OpenDatabase(Record("Record1"));
    Recordset rows = database.OpenRecordset("select * from data");
    rows.MoveNext();
    rows.Edit();
    rows.Set("NUM", "02");
    rows.Update();
    database.Close();
    ShowRecord();
    EXPECT_EQ(Export(), kCaptions + BlankRow(1) + kEmptyLine + BlankRow(3));
}

TEST_F(CsvExport, Neither_doubles_quotes_in_a_cell_nor_changes_commas_and_line_feeds) {
    ShowRecord(1, FirstChannel("1,5\" \"x\"\n"));
    std::string line = BlankRow(1);
    line.replace(line.find("\" \""), 3, "\"1,5\" \"x\"\n\"");
    EXPECT_EQ(Export(), kCaptions + line);
}

TEST_F(CsvExport, Is_in_the_code_page_with_a_question_mark_for_what_it_lacks) {
    SetEnvironment("LC_ALL", "C");
    ShowRecord(1, FirstChannel("\u00B0\u20AC\u2126\xB0."));
    std::string line = BlankRow(1);
    line.replace(line.find("\" \""), 3, "\"\xB0\x80??.\"");
    EXPECT_EQ(Export(), kCaptions + line);
}

TEST_F(CsvExport, Is_what_the_table_shows_whatever_has_become_of_the_record) {
    ShowRecord(2);
    std::filesystem::remove(Record("Record1"));
    EXPECT_EQ(Export(), kCaptions + BlankRows(1, 2));
}

TEST_F(CsvExport, Leaves_the_current_cell_at_the_last_one_written) {
    ShowRecord(5);
    Export();
    EXPECT_EQ(Grid().Row(), 6);
    EXPECT_EQ(Grid().Col(), 21);
}

TEST_F(CsvExport, Of_the_captions_alone_leaves_the_current_cell_at_the_last_of_them) {
    ShowRecord(0);
    Export();
    EXPECT_EQ(Grid().Row(), 1);
    EXPECT_EQ(Grid().Col(), 21);
}

TEST_F(CsvExport, Can_be_repeated) {
    ShowRecord(2);
    const std::string first = Export();
    EXPECT_EQ(Export("again.csv"), first);
}

#ifndef _WIN32  // the tools that read it are the host's
TEST_F(CsvExport, Is_read_by_another_program_as_the_same_cells) {
    SetEnvironment("LC_ALL", "C");
    const Cells odd = {"+1.00000000E+00", " ", "", "1,5", ",", "two\nlines", "\n", "20 \u00B0C", "'", ";"};
    ShowRecord(300, [&](int row, int channel) { return odd[static_cast<std::size_t>(row + channel) % odd.size()]; });
    ASSERT_EQ(Grid().Rows(), 302);
    Export();
    std::string shown;
    for (int row = 1; row < Grid().Rows(); ++row) {
        for (int col = 0; col < Grid().Cols(); ++col) shown += Grid().TextMatrix(row, col) + '\x1F';
        shown += '\x1E';
    }
    const std::string reader =
        "python3 -c \"import csv, sys\n"
        "with open(sys.argv[1], newline='', encoding='cp1252') as file, open(sys.argv[2], 'wb') as cells:\n"
        "    for row in csv.reader(file, strict=True):\n"
        "        cells.write(''.join([cell + chr(0x1F) for cell in row] + [chr(0x1E)]).encode())\" '" +
        (folder / "page.csv") + "' '" + (folder / "cells") + "'";
    ASSERT_EQ(std::system(reader.c_str()), 0);
    EXPECT_EQ(FileBytes(folder / "cells"), shown);
}

TEST_F(CsvExport, Is_read_by_a_spreadsheet_as_the_same_numbers_times_and_texts) {
    SetEnvironment("LC_ALL", "C");
    setenv("HOME", folder.Path().c_str(), 1);
    const std::array<Cells, 3> readings = {
        Cells{"+1.50000000E+00", "+2.0"}, {" ", "20 \u00B0C"}, {"-2.50000000E-03\n", "a, b\nc"}};
    ShowRecord(2, [&](int row, int channel) {
        return channel <= 3 ? readings[static_cast<std::size_t>(channel - 1)][static_cast<std::size_t>(row - 1)] : "";
    });
    Export();
    const std::string spreadsheet =
        "cd '" + folder.Path() +
        "' && ssconvert --import-encoding=WINDOWS-1252 --export-type=Gnumeric_stf:stf_assistant"
        " -O 'quoting-mode=always separator=, eol=unix format=automatic' page.csv cells 2>/dev/null";
    if (std::system("command -v ssconvert >/dev/null") != 0) GTEST_SKIP() << "no spreadsheet";
    ASSERT_EQ(std::system(spreadsheet.c_str()), 0);
    std::string captions = kCaptions;
    captions.erase(captions.find('\r'), 1);
    std::string empty_channels;
    for (int channel = 4; channel <= 20; ++channel) empty_channels += ",\"\"";
    EXPECT_EQ(FileBytes(folder / "cells"),
              captions + "\"1\",\"2026/03/01 08:00:01\",\"1.5\",\" \",\"-0.0025\"" + empty_channels +
                  "\n\"2\",\"2026/03/01 08:00:02\",\"2\",\"20 \u00B0C\",\"a, b\nc\"" + empty_channels + "\n");
}
#endif

// ---- The dialog

TEST_F(CsvExport, Gives_the_file_the_extension_csv_by_default) {
    Export("page");
    EXPECT_FALSE(IsThere("page"));
    EXPECT_EQ(FileBytes(folder / "page.csv"), kCaptions + kEmptyLine);
}

TEST_F(CsvExport, Offers_files_of_the_pattern_for_csv_and_the_last_name) {
    Export();
    const CommonDialog& dialog = The<Record_View_Form>().CommonDialog1;
    EXPECT_EQ(dialog.DefaultExt, "csv");
    EXPECT_EQ(dialog.Filter, "*.csv");
    EXPECT_EQ(dialog.FileName, folder / "page.csv");
}

TEST_F(CsvExport, Replaces_a_file_with_the_user_s_consent) {
    WriteFileBytes(folder / "page.csv", std::string(10000, 'x'));
    EXPECT_EQ(Export(), kCaptions + kEmptyLine);
    ASSERT_EQ(user.Messages().size(), 1U);
    EXPECT_NE(user.Messages()[0].find("already exists"), std::string::npos);
}

TEST_F(CsvExport, Leaves_a_file_alone_without_the_user_s_consent) {
    WriteFileBytes(folder / "page.csv", "kept");
    user.AnswerNo("already exists");
    user.AnswerFile(folder / "page.csv");
    EXPECT_EQ(Export("other.csv"), kCaptions + kEmptyLine);
    EXPECT_EQ(FileBytes(folder / "page.csv"), "kept");
}

TEST_F(CsvExport, Cancelled_touches_no_file_and_says_nothing) {
    Export();
    WriteFileBytes(folder / "page.csv", "kept");
    Grid().SetRow(2);
    Grid().SetCol(3);
    Cancel();
    EXPECT_EQ(FileBytes(folder / "page.csv"), "kept");
    ExpectNoMessage();
    EXPECT_EQ(Grid().Row(), 2);
    EXPECT_EQ(Grid().Col(), 3);
}

TEST_F(CsvExport, Cancelled_can_be_made_up_for) {
    Cancel();
    EXPECT_EQ(Export(), kCaptions + kEmptyLine);
}

// ---- Errors, all of them silent

TEST_F(CsvExport, To_a_file_that_cannot_be_opened_ends_without_a_word) {
    Grid().SetRow(2);
    Grid().SetCol(3);
    Export("none/page.csv");
    EXPECT_FALSE(IsThere("none"));
    ExpectNoMessage();
    EXPECT_TRUE(user.Sees("Record_View_Form"));
    EXPECT_EQ(Grid().Row(), 2);
    EXPECT_EQ(Grid().Col(), 3);
}

#ifndef _WIN32  // there are no pipes among the files
TEST_F(CsvExport, Onto_a_pipe_ends_without_a_word_and_without_waiting_for_a_reader) {
    ASSERT_EQ(mkfifo((folder / "pipe.csv").c_str(), S_IRUSR | S_IWUSR), 0);
    ExportTo("pipe.csv");
    EXPECT_EQ(user.Messages().size(), 1U);  // the question for consent
    EXPECT_EQ(Export(), kCaptions + kEmptyLine);
}
#endif

TEST_F(CsvExport, To_a_file_that_cannot_be_opened_does_not_hinder_the_next) {
    Export("none/page.csv");
    EXPECT_EQ(Export(), kCaptions + kEmptyLine);
}

#ifdef _WIN32
TEST_F(CsvExport, Onto_a_file_that_another_program_has_open_ends_without_a_word_until_it_is_closed) {
    WriteFileBytes(folder / "page.csv", "kept");
    os::File spreadsheet;
    ASSERT_EQ(spreadsheet.Open(folder / "page.csv", os::File::Use::kAlone), os::Fault::kNone);
    ExportTo("page.csv");
    EXPECT_EQ(user.Messages().size(), 1U);  // the question for consent
    EXPECT_TRUE(user.Sees("Record_View_Form"));
    spreadsheet.Close();
    EXPECT_EQ(FileBytes(folder / "page.csv"), "kept");
    EXPECT_EQ(Export(), kCaptions + kEmptyLine);
}
#endif

#ifndef _WIN32  // there is no device that does this
TEST_F(CsvExport, That_fails_while_it_is_written_ends_without_a_word) {
    ShowRecord(1000);
    ExportTo(FullDisk());
    EXPECT_EQ(user.Messages().size(), 1U);  // the question for consent
    EXPECT_TRUE(user.Sees("Record_View_Form"));
    EXPECT_LT(Grid().Row(), 1001);  // it does not get to the last row
}

TEST_F(CsvExport, That_fails_while_it_is_written_lets_every_later_one_fail_without_a_word) {
    ShowRecord(500);
    ExportTo(FullDisk());
    Export();
    Export("other.csv");
    EXPECT_FALSE(IsThere("page.csv"));
    EXPECT_FALSE(IsThere("other.csv"));
    EXPECT_EQ(user.Messages().size(), 1U);
}

TEST_F(CsvExport, That_fails_at_the_end_of_its_file_lets_every_later_one_fail_without_a_word) {
    ExportTo(FullDisk());  // a short file is written when it is closed
    Export();
    EXPECT_FALSE(IsThere("page.csv"));
    EXPECT_EQ(user.Messages().size(), 1U);
}

TEST_F(CsvExport, That_failed_while_it_was_written_lets_one_from_a_new_browser_fail_too) {
    ExportTo(FullDisk());
    user.Click("Record_View_Form", "Command4");
    user.Click("Form1", "Command7");
    Export();
    EXPECT_FALSE(IsThere("page.csv"));
}

TEST_F(CsvExport, That_failed_leaves_a_file_that_is_there_alone_later) {
    ExportTo(FullDisk());
    WriteFileBytes(folder / "page.csv", "kept");
    EXPECT_EQ(Export(), "kept");
}
#endif

#ifndef _WIN32  // there is no limit of a file's size
TEST_F(CsvExport, Cut_short_by_the_limit_of_the_user_keeps_what_was_written) {
    ShowRecord(1000);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = 50000;
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(Export(), (kCaptions + BlankRows(1, 1000)).substr(0, 50000));
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_FSIZE, &limit);
    Export("other.csv");
    EXPECT_FALSE(IsThere("other.csv"));
    ExpectNoMessage();
}
#endif

TEST_F(CsvExport, Of_more_rows_than_16_bits_count_fails_with_its_file_open) {
    Grid().SetRows(32769);
    EXPECT_EQ(Export(), "");
    EXPECT_TRUE(IsThere("page.csv"));
    Export("other.csv");
    EXPECT_FALSE(IsThere("other.csv"));
    ExpectNoMessage();
}

}  // namespace
}  // namespace vantrel
