// The Printer button where there is no printer. tests/printing has the button with one.
#include "support/user.h"
#include "windows/Form1.h"

#include <QPrinterInfo>
#include <cstdio>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(PrinterButton, Without_a_printer_the_program_ends_with_the_printer_error) {
    qputenv("CUPS_SERVER", "/nonexistent/socket");
    if (!QPrinterInfo::defaultPrinter().isNull()) GTEST_SKIP() << "this machine has a printer on its network";
    EXPECT_EXIT(
        {
            User user;
            user.WhenMessage("Run-time error", [&] { std::fprintf(stderr, "%s", user.Messages().back().c_str()); });
            The<Form1>().Show();
            user.Click("Form1", "Command5");
        },
        testing::ExitedWithCode(1), "Run-time error '482':\n\nPrinter error");
}

}  // namespace
}  // namespace vantrel
