// The trend on paper, through a real print queue: see scripts/with-print-queue.
#include "platform/printer.h"
#include "platform/toolkit/events.h"
#include "plot/expected_plot.h"
#include "state/shared.h"
#include "support/desk.h"
#include "windows/Form1.h"

#include <QCoreApplication>
#include <QImage>
#include <QMetaObject>
#include <QProcess>
#include <QTest>
#include <QTransform>

namespace vantrel {
namespace {

/// What `program` writes.
QString OutputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}

class TrendPage : public Desk {
protected:
    /// Presses the button and waits until the document has left the queue.
    void PrintPage() {
        user.Click("Form1", "Command5");
        WaitForDocuments(1);
    }

    static void WaitForDocuments(int count) {
        const auto done = [&] { return OutputOf("lpstat", {"-W", "completed", "-o"}).count('\n') == count; };
        ASSERT_TRUE(QTest::qWaitFor(done, 30'000)) << OutputOf("lpstat", {"-t"}).toStdString();
        EXPECT_EQ(OutputOf("lpstat", {"-W", "not-completed", "-o"}), "");
    }

    /// Prints `picture` with whatever is set on the printer.
    static void PrintOutright(const Picture& picture) {
        ThePrinter().PaintPicture(picture, 0, 0);
        ThePrinter().EndDoc();
    }

    static QString Document() { return qEnvironmentVariable("PRINTED"); }

    static int PageCount() {
        for (const QString& line : OutputOf("pdfinfo", {Document()}).split('\n'))
            if (line.startsWith("Pages:")) return line.mid(6).trimmed().toInt();
        return -1;
    }

    /// The page with sixteen dots to the pixel of the picture at 96 pixels an inch. A landscape page lies turned on the
    /// upright sheet that the printer takes in; it is held as it is read.
    QImage Page() const {
        OutputOf("pdftoppm", {"-r", "384", "-singlefile", Document(), QString::fromStdString(folder / "sheet")});
        return QImage(QString::fromStdString(folder / "sheet.ppm")).transformed(QTransform().rotate(90));
    }

    /// The page is landscape and shows `picture` in its upper left corner at its own size, and nothing else: a dot in
    /// the middle of each pixel has that pixel's colour.
    static void ExpectOnPage(const QImage& page, const Picture& picture) {
        ASSERT_GT(page.width(), page.height());
        int wrong = 0;
        for (int y = 0; 4 * y + 2 < page.height(); ++y) {
            for (int x = 0; 4 * x + 2 < page.width(); ++x) {
                const bool inside = x < picture.width && y < picture.height;
                const Colour expected = inside ? picture.At(x, y) : RGB(255, 255, 255);
                const QColor dot = page.pixelColor(4 * x + 2, 4 * y + 2);
                if (RGB(dot.red(), dot.green(), dot.blue()) != expected && wrong++ == 0)
                    ADD_FAILURE() << "pixel (" << x << ", " << y << ") is " << dot.name().toStdString();
            }
        }
        EXPECT_EQ(wrong, 0) << "pixels differ";
    }
};

TEST_F(TrendPage, Before_the_first_run_it_is_the_empty_grid) {
    Open();
    PrintPage();
    EXPECT_EQ(PageCount(), 1);
    ExpectOnPage(Page(), ExpectedPlot().Image());
}

TEST_F(TrendPage, After_Stop_it_is_the_last_picture_of_the_trend) {
    Open();
    Connect({0});
    for (const Integer ch : Each(20)) ChannelDivision(0, ch) = "2";
    RunAndStopAfter(20'000);
    const Picture picture = The<Form1>().draw_pic.Image();
    ASSERT_NE(std::ranges::count(picture.pixels, ColorTable(0)), 0);
    PrintPage();
    EXPECT_EQ(PageCount(), 1);
    ExpectOnPage(Page(), picture);
}

TEST_F(TrendPage, Landscape_stays_set_on_the_printer_afterwards) {
    Open();
    const Picture grid = ExpectedPlot().Image();
    PrintOutright(grid);
    WaitForDocuments(1);
    EXPECT_EQ(Page().pixelColor(2, 2), QColor(Qt::white));  // upright: the grid is in another corner
    user.Click("Form1", "Command5");
    PrintOutright(grid);
    WaitForDocuments(3);
    ExpectOnPage(Page(), grid);
}

TEST_F(TrendPage, Nothing_else_runs_while_the_page_goes_out) {
    Open();
    DoEvents();
    bool ran = false;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&ran] { ran = true; }, Qt::QueuedConnection);
    The<Form1>().Command5_Click();
    EXPECT_FALSE(ran);
    DoEvents();
    EXPECT_TRUE(ran);
}

}  // namespace
}  // namespace vantrel
