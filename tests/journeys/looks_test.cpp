// What a person sees of the windows: every text whole and in the font of its window, every window on a small screen.
#include "support/desk.h"
#include "support/texts.h"

#include <QApplication>
#include <QCheckBox>
#include <QFontInfo>
#include <QFontMetrics>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTableView>
#include <algorithm>

namespace vantrel {
namespace {

constexpr QSize kSmallScreen(1366, 768);
constexpr QSize kWindowManagersFrame(12, 40);

QString NameOf(const QWidget& widget) {
    for (const QWidget* part = &widget; part != nullptr; part = part->parentWidget())
        if (!part->objectName().isEmpty() && !part->objectName().startsWith("qt_")) return part->objectName();
    return "?";
}

/// The texts of a window that do not stand whole, at their natural width and in the window's font, in their places.
class TextsOfWindow {
public:
    explicit TextsOfWindow(QWidget* frame)
        : frame_(frame), font_(frame->layout()->itemAt(0)->widget()->font()), metrics_(font_) {}

    Texts Faults() {
        for (const QWidget* widget : frame_->findChildren<QWidget*>()) {
            if (!widget->isVisible()) continue;
            if (const auto* label = qobject_cast<const QLabel*>(widget)) Look(*label);
            if (const auto* button = qobject_cast<const QPushButton*>(widget)) Look(*button);
            if (const auto* box = qobject_cast<const QCheckBox*>(widget)) Look(*box);
            if (const auto* option = qobject_cast<const QRadioButton*>(widget)) Look(*option);
            if (const auto* field = qobject_cast<const QLineEdit*>(widget)) Look(*field);
            if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) Look(*tabs);
            if (const auto* grid = qobject_cast<const QTableView*>(widget)) Look(*grid);
        }
        return faults_;
    }

private:
    double Needs(const QString& text) const { return metrics_.horizontalAdvance(text); }

    void Expect(bool whole, const QWidget& widget, const QString& text) {
        const QFont font = widget.font();
        const bool natural = font.pixelSize() == font_.pixelSize() &&
                             (font.stretch() == QFont::AnyStretch || font.stretch() == QFont::Unstretched);
        if (!text.isEmpty() && !(whole && natural)) faults_.push_back((NameOf(widget) + ": " + text).toStdString());
    }

    void Look(const QLabel& label) {
        const QRect needed =
            QFontMetrics(font_).boundingRect(QRect(0, 0, label.width(), 10000), Qt::TextWordWrap, label.text());
        Expect(needed.width() <= label.width() && needed.height() <= label.height(), label, label.text());
    }

    void Look(const QPushButton& button) { Expect(Needs(button.text()) <= button.width() - 6, button, button.text()); }

    void Look(const QCheckBox& box) {
        const QStyle& style = *box.style();
        const int mark =
            style.pixelMetric(QStyle::PM_IndicatorWidth) + style.pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
        Expect(Needs(box.text()) <= box.width() - mark, box, box.text());
    }

    /// Its caption ends where the first field in it begins.
    void Look(const QRadioButton& option) {
        int room = option.width();
        for (const QLineEdit* field : option.parentWidget()->findChildren<QLineEdit*>())
            if (field->geometry().intersects(option.geometry())) room = std::min(room, field->x() - option.x());
        QStyleOptionButton look;
        look.initFrom(&option);
        const int mark = option.style()->subElementRect(QStyle::SE_RadioButtonContents, &look, &option).left();
        const QString text = option.text().section("  ", 0, 0);
        Expect(Needs(text) <= room - mark, option, text);
    }

    void Look(const QLineEdit& field) {
        const bool framed = field.hasFrame();
        Expect(Needs(field.text()) <= field.width() - (framed ? 6 : 1), field, field.text());
    }

    void Look(const QTabBar& tabs) {
        for (int i = 0; i < tabs.count(); ++i)
            if (tabs.isTabVisible(i))
                Expect(Needs(tabs.tabText(i)) <= tabs.tabRect(i).width() - 8, tabs, tabs.tabText(i));
    }

    void Look(const QTableView& grid) {
        for (int row = 0; row < grid.model()->rowCount(); ++row) {
            for (int col = 0; col < grid.model()->columnCount(); ++col) {
                const QString text =
                    grid.model()->index(row, col).data().toString().trimmed();  // the last one has a line feed
                Expect(Needs(text) <= grid.columnWidth(col) - 1, grid, text);
            }
        }
    }

    QWidget* frame_;
    QFont font_;  // of the client area, from which its controls have theirs
    QFontMetricsF metrics_;
    Texts faults_;
};

class Looks : public Desk {
protected:
    void LookAt(const std::string& window) {
        QWidget* frame = user.FindWindow(window);
        EXPECT_EQ(TextsOfWindow(frame).Faults(), Texts{}) << window;
        const QSize whole = frame->size() + kWindowManagersFrame;
        EXPECT_LE(whole.width(), kSmallScreen.width()) << window;
        EXPECT_LE(whole.height(), kSmallScreen.height()) << window;
    }
    /// Looks at a modal window as it comes up and closes it by `way_out`.
    void LookWhenShown(const std::string& window, const std::string& way_out) {
        user.WhenShown(window, [this, window, way_out] {
            LookAt(window);
            user.Click(window, way_out);
        });
    }
};

TEST(Font, Is_the_one_that_the_windows_are_laid_out_for) {
    const QString family = QFontInfo(QApplication::font()).family();
    EXPECT_TRUE(family == "Liberation Sans" || family == "Arial") << family.toStdString();
}

TEST_F(Looks, Set_up_windows_show_all_texts_whole_and_in_one_font) {
    Open();
    LookAt("Form1");
    user.WhenShown("Connect", [this] {
        for (const char* box : {"Check1(0)", "Check1(1)", "Check1(2)", "Check1(3)"}) user.Click("Connect", box);
        LookAt("Connect");
        user.Click("Connect", "Command2");
    });
    user.Menu("Connected_to_Instrument");
    LookAt("Form1");
    user.Click("Form1", "Command10");
    LookAt("DB_SET");
    user.Click("DB_SET", "OK");
    user.WhenShown("Set_Dev", [this] {
        LookWhenShown("DCI_ACI_SET", "Command1");
        for (const char* function : {"DCV", "4W", "TCOUPL", "FREQ", "PERIOD", "TEMP", "DCI", "4W,TEMP"})
            user.Pick("Set_Dev", "ch(1)", function);
        LookAt("Set_Dev");
        user.Click("Set_Dev", "Command2");
    });
    user.Menu("set_sc");
    user.WhenShown("Form4", [this] {
        LookAt("Form4");
        user.Click("Form4", "per_scan_interval");
        LookAt("Form4");
        user.Click("Form4", "Command1");
    });
    user.Menu("set_read");
    LookWhenShown("Form2", "Command1");
    user.Click("Form1", "Command8");
    LookWhenShown("Form3", "Command1");
    user.Menu("set_draw");
    user.Menu("About");
    LookAt("about_form");
}

TEST_F(Looks, Windows_of_a_run_and_its_record_show_all_readings_whole_and_in_one_font) {
    Open();
    Connect({0, 1});
    Assign({"Record1", "Record2"});
    user.Click("Form1", "Command6");
    RunAndStopAfter(10'000);
    LookAt("Form1");
    LookAt("DATA_Table");
    user.Click("Form1", "Command7");
    user.Choose("Record_View_Form", "List1", "Record1.mdb");
    user.Click("Record_View_Form", "Command2");
    LookAt("Record_View_Form");
    user.Click("Record_View_Form", "Command4");
    user.WhenShown("Record_View_Draw", [this] {
        LookAt("Record_View_Draw");
        user.Pick("Record_View_Draw", "Combo_record", "Record1.mdb");
        user.Pick("Record_View_Draw", "Combo_chan", "CH5");
        user.Click("Record_View_Draw", "draw_limit");
        user.Click("Record_View_Draw", "Command1");
        LookAt("Record_View_Draw");
        user.Click("Record_View_Draw", "Command3");
    });
    user.Click("Form1", "Command9");
}

TEST_F(Looks, The_font_of_the_desktop_changes_nothing) {
    Open();
    QApplication::setFont(QFont("DejaVu Sans", 16, QFont::Bold));
    Connect({0});
    LookAt("Form1");
    LookWhenShown("Form4", "Command1");
    user.Menu("set_read");
    user.WhenShown("Set_Dev", [this] {
        LookAt("Set_Dev");
        EXPECT_EQ(user.FindControl("Set_Dev", "Label1")->font().weight(), QFont::Normal);
        user.Click("Set_Dev", "Command2");
    });
    user.Menu("set_sc");
}

TEST_F(Looks, The_tables_end_with_their_last_column) {
    Open();
    const auto* table = static_cast<QTableView*>(user.FindControl("Form1", "MSFlexGrid1(0)"));
    EXPECT_EQ(table->columnViewportPosition(9) + table->columnWidth(9), table->viewport()->width());
}

}  // namespace
}  // namespace vantrel
