// Draw settings of one channel at a time.
#include "windows/Form3.h"

#include "plot/placed.h"
#include "state/shared.h"
#include "support/desk.h"
#include "support/errors.h"
#include "windows/Form1.h"

namespace vantrel {
namespace {

/// Instruments of the default bench: two with 20 channels, the third with 10.
class SetDraw : public Desk {
protected:
    void OpenAndConnect(const std::vector<int>& rows = {0, 1}) {
        Open();
        Connect(rows);
    }

    /// Opens the dialog, runs `steps`, OK.
    void Settings(const User::Action& steps) {
        user.WhenShown("Form3", [this, steps] {
            steps();
            user.Click("Form3", "Command1");
        });
        user.Menu("set_draw");
    }

    /// What stands in the dialog's fields: colour, division, offset.
    void ExpectShown(Colour colour, const std::string& division, const std::string& offset) {
        EXPECT_EQ(The<Form3>().color_text.BackColor(), colour);
        EXPECT_EQ(user.Text("Form3", "division_text"), division);
        EXPECT_EQ(user.Text("Form3", "offset_text"), offset);
    }
};

TEST_F(SetDraw, Controls_stand_on_their_places_and_say_what_they_are) {
    OpenAndConnect();
    Settings([this] {
        Form3& form = The<Form3>();
        EXPECT_EQ(user.Caption("Form3"), "Set Draw");
        EXPECT_EQ(form.ClientArea()->size(), QSize(4785 / 15, 3360 / 15));
        ExpectPlaces({{&form.Label1, {120, 120, 855, 255}},
                      {&form.Combo_dev, {1080, 120, 3615, 315}},
                      {&form.Label2, {120, 600, 735, 255}},
                      {&form.Combo_chan, {1080, 600, 3615, 315}},
                      {&form.Label3, {120, 1080, 855, 255}},
                      {&form.color_text, {1080, 1080, 3015, 375}},
                      {&form.Command3, {4200, 1080, 510, 450}},
                      {&form.Label4, {120, 1560, 855, 255}},
                      {&form.division_text, {1080, 1560, 3615, 405}},
                      {&form.Label5, {120, 2040, 855, 255}},
                      {&form.offset_text, {1080, 2040, 3615, 375}},
                      {&form.Command1, {120, 2760, 4575, 375}},
                      {&form.Combo_db, {720, 4200, 3615, 315}}});
        const std::vector<std::pair<std::string, std::string>> texts = {{"Label1", "Device"}, {"Label2", "Channal"},
                                                                        {"Label3", "Color"},  {"Label4", "Division"},
                                                                        {"Label5", "offset"}, {"Command1", "OK"}};
        for (const auto& [control, text] : texts) EXPECT_EQ(user.Text("Form3", control), text);
    });
}

TEST_F(SetDraw, Opens_on_the_first_channel_of_the_first_device) {
    OpenAndConnect();
    ChannelDivision(0, 0) = "2.5";
    ChannelOffset(0, 0) = "-1";
    Settings([this] {
        EXPECT_EQ(user.Entries("Form3", "Combo_dev"), user.Entries("Form1", "Combo1"));
        EXPECT_EQ(user.Index("Form3", "Combo_dev"), 0);
        EXPECT_EQ(user.Text("Form3", "Combo_chan"), "Ch 1");
        ExpectShown(ColorTable(0), "2.5", "-1");
    });
}

TEST_F(SetDraw, Channels_are_those_of_the_card) {
    OpenAndConnect({0, 1, 2});
    Settings([this] {
        std::vector<std::string> channels;
        for (int i = 1; i <= 20; ++i) channels.push_back("Ch " + std::to_string(i));
        EXPECT_EQ(user.Entries("Form3", "Combo_chan"), channels);
        user.Pick("Form3", "Combo_dev", DeviceSerial(2));
        channels.resize(10);
        EXPECT_EQ(user.Entries("Form3", "Combo_chan"), channels);
        EXPECT_EQ(user.Text("Form3", "Combo_chan"), "Ch 1");
    });
}

TEST_F(SetDraw, A_picked_channel_shows_its_settings) {
    OpenAndConnect();
    ChannelColor(1, 4) = RGB(1, 2, 3);
    ChannelDivision(1, 4) = "7";
    ChannelOffset(1, 4) = "8";
    Settings([this] {
        user.Pick("Form3", "Combo_dev", DeviceSerial(1));
        user.Pick("Form3", "Combo_chan", "Ch 5");
        ExpectShown(RGB(1, 2, 3), "7", "8");
    });
}

TEST_F(SetDraw, Looking_around_changes_no_setting) {
    OpenAndConnect();
    for (const Integer dev : Each(2))
        for (const Integer ch : Each(20)) {
            ChannelDivision(dev, ch) = Str(dev * 100 + ch + 1);
            ChannelOffset(dev, ch) = Str(ch);
        }
    Settings([this] {
        user.Pick("Form3", "Combo_chan", "Ch 7");
        user.Pick("Form3", "Combo_dev", DeviceSerial(1));
        user.Pick("Form3", "Combo_chan", "Ch 3");
        user.Pick("Form3", "Combo_dev", DeviceSerial(0));
    });
    for (const Integer dev : Each(2))
        for (const Integer ch : Each(20)) {
            EXPECT_EQ(ChannelDivision(dev, ch), Str(dev * 100 + ch + 1));
            EXPECT_EQ(ChannelOffset(dev, ch), Str(ch));
            EXPECT_EQ(ChannelColor(dev, ch), ColorTable(ch));
        }
}

TEST_F(SetDraw, Typing_goes_into_the_settings_at_once) {
    OpenAndConnect();
    Settings([this] {
        user.Pick("Form3", "Combo_chan", "Ch 2");
        user.Type("Form3", "division_text", "2.50x");
        user.Type("Form3", "offset_text", "1.50");
        EXPECT_EQ(ChannelDivision(0, 1), "2.50x");
        EXPECT_EQ(ChannelOffset(0, 1), "1.50");
        EXPECT_EQ(ChannelDivision(0, 0), "1");
    });
}

TEST_F(SetDraw, OK_leaves_plain_numbers_in_every_channel) {
    OpenAndConnect();
    ChannelDivision(1, 19) = "+2.50 V";
    ChannelOffset(1, 19) = "1.50";
    ChannelOffset(0, 3) = "abc";
    ChannelOffset(0, 4) = "";
    Settings([] {});
    EXPECT_EQ(ChannelDivision(1, 19), "2.5");
    EXPECT_EQ(ChannelOffset(1, 19), "1.5");
    EXPECT_EQ(ChannelOffset(0, 3), "0");
    EXPECT_EQ(ChannelOffset(0, 4), "0");
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(SetDraw, OK_puts_a_division_that_is_no_positive_number_back_to_1_with_a_message_each) {
    OpenAndConnect();
    ChannelDivision(0, 0) = "-2";
    ChannelDivision(0, 2) = "x";
    ChannelDivision(1, 1) = "";
    Settings([] {});
    EXPECT_EQ(user.Messages(), (std::vector<std::string>{DeviceSerial(0) + " ,  Ch 1\n\nDivision : 1",
                                                         DeviceSerial(0) + " ,  Ch 3\n\nDivision : 1",
                                                         DeviceSerial(1) + " ,  Ch 2\n\nDivision : 1"}));
    EXPECT_EQ(ChannelDivision(0, 0), "1");
    EXPECT_EQ(ChannelDivision(0, 2), "1");
    EXPECT_EQ(ChannelDivision(1, 1), "1");
}

TEST_F(SetDraw, Division_message_has_no_channel_name_that_the_shown_device_lacks) {
    OpenAndConnect({0, 1, 2});
    ChannelDivision(0, 14) = "0";
    Settings([this] { user.Pick("Form3", "Combo_dev", DeviceSerial(2)); });  // ten channels
    EXPECT_EQ(user.Messages(), std::vector<std::string>{DeviceSerial(0) + " ,  \n\nDivision : 1"});
}

TEST_F(SetDraw, OK_cleans_twice_and_finds_nothing_more_the_second_time) {
    OpenAndConnect();
    ChannelDivision(0, 0) = "0";
    // What is spoilt while the first message stands, behind the channel that the first round is at, is found by it;
    // what is spoilt before it, by the second.
    ChannelDivision(0, 5) = "0";
    user.WhenMessage("Ch 6", [] { ChannelDivision(0, 0) = "-7"; });
    Settings([] {});
    EXPECT_EQ(user.Messages(), (std::vector<std::string>{DeviceSerial(0) + " ,  Ch 1\n\nDivision : 1",
                                                         DeviceSerial(0) + " ,  Ch 6\n\nDivision : 1",
                                                         DeviceSerial(0) + " ,  Ch 1\n\nDivision : 1"}));
}

TEST_F(SetDraw, Close_box_cleans_once_as_OK_does) {
    OpenAndConnect();
    user.WhenShown("Form3", [this] {
        user.Type("Form3", "division_text", "0");
        user.Type("Form3", "offset_text", "1.50");
        user.Close("Form3");
        EXPECT_FALSE(user.Sees("Form3"));
    });
    user.Menu("set_draw");
    EXPECT_EQ(user.Messages(), std::vector<std::string>{DeviceSerial(0) + " ,  Ch 1\n\nDivision : 1"});
    EXPECT_EQ(ChannelDivision(0, 0), "1");
    EXPECT_EQ(ChannelOffset(0, 0), "1.5");
}

TEST_F(SetDraw, A_chosen_colour_goes_to_swatch_setting_and_live_table) {
    OpenAndConnect();
    user.AnswerColor(RGB(12, 34, 56));
    Settings([this] {
        user.Pick("Form3", "Combo_chan", "Ch 2");
        user.Click("Form3", "Command3");
        EXPECT_EQ(user.OfferedColor(), ColorTable(1));
        EXPECT_EQ(The<Form3>().color_text.BackColor(), RGB(12, 34, 56));
        EXPECT_EQ(ChannelColor(0, 1), RGB(12, 34, 56));
    });
    EXPECT_EQ(user.CellColour("Form1", "MSFlexGrid1(0)", 1, 1), RGB(12, 34, 56));
}

TEST_F(SetDraw, A_colour_shows_the_other_settings_of_its_channel_afresh) {
    OpenAndConnect();
    user.AnswerColor(RGB(12, 34, 56));
    Settings([this] {
        user.Pick("Form3", "Combo_chan", "Ch 2");
        ChannelDivision(0, 1) = "7";
        ChannelOffset(0, 1) = "8";
        user.Click("Form3", "Command3");
        ExpectShown(RGB(12, 34, 56), "7", "8");
    });
}

TEST_F(SetDraw, A_cancelled_colour_stays) {
    OpenAndConnect();
    user.AnswerColor(std::nullopt);
    Settings([this] {
        user.Click("Form3", "Command3");
        EXPECT_EQ(The<Form3>().color_text.BackColor(), ColorTable(0));
    });
    EXPECT_EQ(ChannelColor(0, 0), ColorTable(0));
}

TEST_F(SetDraw, Colour_255_is_pure_red) {
    OpenAndConnect();
    ChannelColor(0, 0) = 255;
    user.AnswerColor(std::nullopt);
    Settings([this] {
        EXPECT_EQ(user.FindControl("Form3", "color_text")->property("BackColor").toString(), "#ff0000");
        user.Click("Form3", "Command3");
        EXPECT_EQ(user.OfferedColor(), RGB(255, 0, 0));
    });
}

TEST_F(SetDraw, Settings_are_shown_as_they_stand_at_each_opening) {
    OpenAndConnect();
    EXPECT_TRUE(IsLoaded<Form3>());
    ChannelDivision(0, 0) = "3";
    Settings([this] {
        ExpectShown(ColorTable(0), "3", "0");
        user.Pick("Form3", "Combo_chan", "Ch 4");
    });
    ChannelOffset(0, 0) = "4";
    Settings([this] {
        EXPECT_EQ(user.Text("Form3", "Combo_chan"), "Ch 1");
        ExpectShown(ColorTable(0), "3", "4");
    });
}

TEST_F(SetDraw, A_dialog_that_was_never_shown_goes_without_closing_steps) {
    OpenAndConnect();
    ChannelDivision(0, 0) = "-2";
    ASSERT_TRUE(IsLoaded<Form3>());
    user.WhenShown("Form3", [this] {
        EXPECT_TRUE(user.Messages().empty());
        EXPECT_EQ(user.Text("Form3", "division_text"), "-2");
        user.Click("Form3", "Command1");
    });
    user.Menu("set_draw");
    EXPECT_EQ(user.Messages().size(), 1U);
}

TEST_F(SetDraw, Connect_fills_the_device_list_and_selects_its_first_entry) {
    OpenAndConnect({0, 1});
    ASSERT_TRUE(IsLoaded<Form3>());
    EXPECT_EQ(The<Form3>().Combo_dev.ListCount(), 2);
    EXPECT_EQ(The<Form3>().Combo_dev.ListIndex(), 0);
    EXPECT_EQ(The<Form3>().Combo_chan.ListIndex(), 0);
    EXPECT_FALSE(The<Form3>().Visible());
}

TEST_F(SetDraw, A_typed_text_that_is_no_device_chooses_none) {
    OpenAndConnect();
    Settings([this] {
        user.Type("Form3", "Combo_dev", "nobody");
        EXPECT_EQ(The<Form3>().Dev_Index, -1);
        ExpectShown(ColorTable(0), "1", "0");
        EXPECT_EQ(ErrorOf([] { The<Form3>().division_text.SetText("5"); }), 9);
    });
}

TEST_F(SetDraw, Without_devices_the_lists_are_empty_and_typing_is_out_of_bounds) {
    Open();
    user.WhenShown("Form3", [this] {
        EXPECT_TRUE(user.Entries("Form3", "Combo_dev").empty());
        EXPECT_TRUE(user.Entries("Form3", "Combo_chan").empty());
        EXPECT_EQ(user.Text("Form3", "Combo_dev"), "");
        EXPECT_EQ(user.Text("Form3", "Combo_chan"), "Combo1");
        EXPECT_EQ(user.Text("Form3", "color_text"), "");
        EXPECT_EQ(user.Text("Form3", "Combo_db"), "Please choice a datebase");
        EXPECT_EQ(user.Text("Form3", "division_text"), "1");
        EXPECT_EQ(user.Text("Form3", "offset_text"), "0");
        EXPECT_EQ(ErrorOf([] { The<Form3>().division_text.SetText("5"); }), 9);
        EXPECT_EQ(ErrorOf([] { The<Form3>().offset_text.SetText("5"); }), 9);
        user.Click("Form3", "Command1");
    });
    The<Form3>().ShowModal();
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(SetDraw, Without_devices_a_chosen_colour_is_out_of_bounds) {
    Open();
    user.AnswerColor(RGB(1, 2, 3));
    user.WhenShown("Form3", [this] {
        EXPECT_EQ(ErrorOf([] { The<Form3>().Command3_Click(); }), 9);
        user.Click("Form3", "Command1");
    });
    The<Form3>().ShowModal();
}

TEST_F(SetDraw, A_typed_channel_shows_nothing_until_it_is_picked) {
    OpenAndConnect();
    ChannelDivision(0, 2) = "7";
    Settings([this] {
        user.Type("Form3", "Combo_chan", "Ch 3");
        ExpectShown(ColorTable(0), "1", "0");
        user.Pick("Form3", "Combo_chan", "Ch 3");
        ExpectShown(ColorTable(2), "7", "0");
    });
}

TEST_F(SetDraw, Settings_outlive_a_new_connection) {
    OpenAndConnect();
    user.AnswerColor(RGB(1, 2, 3));
    Settings([this] {
        user.Pick("Form3", "Combo_dev", DeviceSerial(1));
        user.Click("Form3", "Command3");
        user.Type("Form3", "division_text", "5");
        user.Type("Form3", "offset_text", "6");
    });
    Connect({0, 1});
    EXPECT_EQ(ChannelColor(1, 0), RGB(1, 2, 3));
    EXPECT_EQ(ChannelDivision(1, 0), "5");
    EXPECT_EQ(ChannelOffset(1, 0), "6");
}

TEST_F(SetDraw, A_division_just_above_0_stays) {
    OpenAndConnect();
    ChannelDivision(0, 0) = "0.0010";
    ChannelDivision(0, 1) = "0.0";
    ChannelOffset(0, 0) = "-0.50";
    Settings([] {});
    EXPECT_EQ(ChannelDivision(0, 0), "0.001");
    EXPECT_EQ(ChannelOffset(0, 0), "-0.5");
    EXPECT_EQ(user.Messages(), std::vector<std::string>{DeviceSerial(0) + " ,  Ch 2\n\nDivision : 1"});
}

// ----------------------------------------------------------------------------------- the record combo out of reach

TEST_F(SetDraw, Record_combo_lies_below_the_client_area_and_holds_ten_records_and_NONE) {
    OpenAndConnect();
    Settings([this] {
        EXPECT_FALSE(user.Sees("Form3", "Combo_db"));
        std::vector<std::string> records;
        for (int i = 1; i <= 10; ++i) records.push_back("Record" + std::to_string(i));
        records.emplace_back("NONE");
        EXPECT_EQ(user.Entries("Form3", "Combo_db"), records);
        EXPECT_EQ(user.Text("Form3", "Combo_db"), "Please choice a datebase");
    });
}

TEST_F(SetDraw, Record_combo_follows_the_chosen_device) {
    OpenAndConnect();
    RecordName(1) = "Record4";
    Settings([this] {
        user.Pick("Form3", "Combo_dev", DeviceSerial(1));
        EXPECT_EQ(user.Text("Form3", "Combo_db"), "Record4");
        EXPECT_EQ(RecordName(1), "Record4");
        user.Pick("Form3", "Combo_dev", DeviceSerial(0));
        EXPECT_EQ(user.Text("Form3", "Combo_db"), "Please choice a datebase");
        EXPECT_EQ(RecordName(0), "0");
    });
}

TEST_F(SetDraw, Record_combo_assigns_records) {
    OpenAndConnect();
    Settings([] {
        The<Form3>().Combo_db.SetListIndex(2);
        EXPECT_EQ(RecordName(0), "Record3");
        The<Form3>().Combo_db.SetListIndex(10);
        EXPECT_EQ(RecordName(0), "0");
    });
}

TEST_F(SetDraw, Record_combo_refuses_a_record_of_another_device) {
    OpenAndConnect();
    RecordName(1) = "Record3";
    Settings([] { The<Form3>().Combo_db.SetListIndex(2); });
    EXPECT_EQ(user.Messages(), std::vector<std::string>{"Please select other Record."});
    EXPECT_EQ(RecordName(0), "0");
    EXPECT_EQ(RecordName(1), "Record3");
}

TEST_F(SetDraw, Record_combo_refuses_a_record_of_a_device_before_it) {
    OpenAndConnect();
    RecordName(0) = "Record3";
    Settings([this] {
        user.Pick("Form3", "Combo_dev", DeviceSerial(1));
        The<Form3>().Combo_db.SetListIndex(2);
        EXPECT_EQ(user.Text("Form3", "Combo_db"), "Record3");
    });
    EXPECT_EQ(user.Messages(), std::vector<std::string>{"Please select other Record."});
    EXPECT_EQ(RecordName(0), "Record3");
    EXPECT_EQ(RecordName(1), "0");
}

TEST_F(SetDraw, Record_combo_asks_connected_devices_only) {
    OpenAndConnect({0});
    RecordName(1) = "Record3";
    Settings([] { The<Form3>().Combo_db.SetListIndex(2); });
    EXPECT_TRUE(user.Messages().empty());
    EXPECT_EQ(RecordName(0), "Record3");
}

}  // namespace
}  // namespace vantrel
