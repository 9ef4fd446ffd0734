#include "platform/printer.h"

#include "platform/errors.h"

#include <QPrinterInfo>
#include <gtest/gtest.h>

namespace vantrel {

// The environment names no printer and no print server.
TEST(Printing, Every_operation_without_a_printer_is_an_error) {
    qputenv("CUPS_SERVER", "localhost:9");
    if (!QPrinterInfo::defaultPrinter().isNull()) GTEST_SKIP() << "this machine has a printer";
    EXPECT_THROW(ThePrinter().SetOrientation(2), RunTimeError);
    EXPECT_THROW(ThePrinter().PaintPicture({1, 1, {0}}, 0, 0), RunTimeError);
    EXPECT_THROW(ThePrinter().EndDoc(), RunTimeError);
}

}  // namespace vantrel
