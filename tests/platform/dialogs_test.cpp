// The dialogs that ask for an answer: a place to save, yes or no.
#include "platform/toolkit/dialogs.h"

#include "platform/qt/text.h"
#include "platform/toolkit/desktop.h"
#include "platform/trial_window.h"
#include "support/errors.h"
#include "support/temp_folder.h"
#include "support/user.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

class SaveDialog : public testing::Test {
protected:
    SaveDialog() {
        dialog.DefaultExt = "csv";
        dialog.Filter = "*.csv";
    }
    /// The error of a save dialog in which the user gives these answers, one after the other.
    int Answered(const std::vector<std::string>& answers) {
        for (const std::string& answer : answers) user.AnswerFile(answer);
        return ErrorOf([&] { dialog.ShowSave(); });
    }
    /// Shows the dialog, has `look` see it as it comes up, and cancels it.
    void LookAt(const std::function<void(QFileDialog&)>& look) {
        user.AnswerFile("");
        bool seen = false;
        QTimer::singleShot(0, qApp, [&] {
            auto* files = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!files) return;
            seen = true;
            look(*files);
        });
        EXPECT_EQ(ErrorOf([&] { dialog.ShowSave(); }), kCancel);
        EXPECT_TRUE(seen);
    }
    TempFolder folder;
    User user;
    CommonDialog dialog;
};

TEST_F(SaveDialog, Asks_where_to_save_and_shows_the_files_of_its_pattern) {
    LookAt([](QFileDialog& files) {
        EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(files.fileMode(), QFileDialog::AnyFile);
        EXPECT_EQ(files.nameFilters(), QStringList{"*.csv"});
        EXPECT_EQ(files.windowTitle(), "Save As");
        EXPECT_FALSE(files.testOption(QFileDialog::DontConfirmOverwrite));
    });
}

TEST_F(SaveDialog, Takes_a_name_that_is_not_there_yet_and_makes_no_file) {
    EXPECT_EQ(Answered({folder / "page.csv"}), 0);
    EXPECT_EQ(dialog.FileName, folder / "page.csv");
    EXPECT_FALSE(FileExists(dialog.FileName));
    EXPECT_EQ(user.Messages(), std::vector<std::string>());
}

TEST_F(SaveDialog, Gives_a_name_without_an_extension_the_default_one) {
    Answered({folder / "page"});
    EXPECT_EQ(dialog.FileName, folder / "page.csv");
}

TEST_F(SaveDialog, Leaves_another_extension_as_it_is) {
    Answered({folder / "page.txt"});
    EXPECT_EQ(dialog.FileName, folder / "page.txt");
}

TEST_F(SaveDialog, Takes_names_in_letters_of_any_script) {
    Answered({folder / "Messung \u00B5V \u65E5.csv"});
    EXPECT_EQ(dialog.FileName, folder / "Messung \u00B5V \u65E5.csv");
}

TEST_F(SaveDialog, Asks_for_consent_before_it_takes_a_file_that_is_there) {
    WriteFileBytes(folder / "page.csv", "");
    EXPECT_EQ(Answered({folder / "page.csv"}), 0);
    ASSERT_EQ(user.Messages().size(), 1U);
    EXPECT_NE(user.Messages()[0].find("page.csv already exists"), std::string::npos) << user.Messages()[0];
    EXPECT_EQ(dialog.FileName, folder / "page.csv");
}

TEST_F(SaveDialog, Asks_for_consent_where_the_name_is_that_of_a_file_with_its_default_extension) {
    WriteFileBytes(folder / "page.csv", "");
    Answered({folder / "page"});
    EXPECT_EQ(user.Messages().size(), 1U);
}

TEST_F(SaveDialog, Comes_back_without_consent) {
    WriteFileBytes(folder / "page.csv", "");
    user.AnswerNo("already exists");
    EXPECT_EQ(Answered({folder / "page.csv", folder / "other.csv"}), 0);
    EXPECT_EQ(dialog.FileName, folder / "other.csv");
}

TEST_F(SaveDialog, Raises_an_error_when_it_is_cancelled_and_keeps_the_name) {
    EXPECT_EQ(Answered({""}), kCancel);
    EXPECT_EQ(dialog.FileName, "");
    Answered({folder / "page.csv"});
    EXPECT_EQ(Answered({""}), 32755);
    EXPECT_EQ(dialog.FileName, folder / "page.csv");
}

TEST_F(SaveDialog, Without_consent_and_then_cancelled_keeps_the_name) {
    WriteFileBytes(folder / "page.csv", "");
    user.AnswerNo("already exists");
    EXPECT_EQ(Answered({folder / "page.csv", ""}), kCancel);
    EXPECT_EQ(dialog.FileName, "");
}

TEST_F(SaveDialog, Comes_up_with_what_was_chosen_last) {
    Answered({folder / "page.csv"});
    LookAt([&](QFileDialog& files) {
        EXPECT_EQ(FromQt(files.directory().path()), folder.Path());
        const auto* name = files.findChild<QLineEdit*>("fileNameEdit");
        ASSERT_TRUE(name);
        EXPECT_EQ(name->text(), "page.csv");
    });
}

class YesOrNo : public testing::Test {
protected:
    /// What comes of a question that is dealt with by `answer`.
    MsgBoxResult Answer(const std::function<void(QMessageBox&)>& answer) {
        QTimer::singleShot(0, qApp, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box) answer(*box);
        });
        return AskYesNo("Will you delete the \"Record1.mdb\"?");
    }
    static auto Key(Qt::Key key) {
        return [key](QMessageBox& box) { QTest::keyClick(&box, key); };
    }
    static auto Button(QMessageBox::StandardButton button) {
        return [button](QMessageBox& box) { box.button(button)->click(); };
    }
};

TEST_F(YesOrNo, Is_asked_without_a_title_with_two_buttons) {
    Answer([](QMessageBox& box) {
        EXPECT_EQ(box.text(), "Will you delete the \"Record1.mdb\"?");
        EXPECT_EQ(box.windowTitle().trimmed(), "");
        EXPECT_EQ(box.windowHandle()->title().trimmed(), "");
        EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
        EXPECT_EQ(box.button(QMessageBox::Yes)->text().remove('&'), "Yes");
        EXPECT_EQ(box.button(QMessageBox::No)->text().remove('&'), "No");
        box.reject();
    });
}

TEST_F(YesOrNo, Is_answered_by_its_buttons) {
    EXPECT_EQ(Answer(Button(QMessageBox::Yes)), kYes);
    EXPECT_EQ(Answer(Button(QMessageBox::No)), kNo);
}

TEST_F(YesOrNo, Takes_Enter_and_Escape_and_its_close_box_for_No) {
    EXPECT_EQ(Answer(Key(Qt::Key_Return)), kNo);
    EXPECT_EQ(Answer(Key(Qt::Key_Escape)), kNo);
    EXPECT_EQ(Answer([](QMessageBox& box) { box.close(); }), kNo);
}

TEST_F(YesOrNo, Takes_letters_of_markup_as_they_are) {
    QTimer::singleShot(0, qApp, [] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_TRUE(box);
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        box->reject();
    });
    AskYesNo("Will you delete the \"<b>Record1</b>.mdb\"?");
}

TEST(SystemBeep, Sounds_at_once_each_time) {
    User user;
    Beep();
    EXPECT_EQ(user.Beeps(), 1);
    Beep();
    EXPECT_EQ(user.Beeps(), 2);
}

}  // namespace
}  // namespace vantrel
