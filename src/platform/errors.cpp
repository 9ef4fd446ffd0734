#include "platform/errors.h"

#include <algorithm>
#include <array>

namespace vantrel {

namespace {

struct NumberedText {
    int number;
    const char* text;
};

constexpr std::array kTexts = {
    NumberedText{kInvalidCall, "Invalid procedure call or argument"},
    NumberedText{kOverflow, "Overflow"},
    NumberedText{kSubscript, "Subscript out of range"},
    NumberedText{kDivisionByZero, "Division by zero"},
    NumberedText{kTypeMismatch, "Type mismatch"},
    NumberedText{kBadFileNumber, "Bad file name or number"},
    NumberedText{kFileNotFound, "File not found"},
    NumberedText{kFileAlreadyOpen, "File already open"},
    NumberedText{kDeviceIo, "Device I/O error"},
    NumberedText{kDiskFull, "Disk full"},
    NumberedText{kPermissionDenied, "Permission denied"},
    NumberedText{kPathNotFound, "Path not found"},
    NumberedText{kInvalidNull, "Invalid use of Null"},
    NumberedText{kControlArrayElement, "Control array element does not exist"},
    NumberedText{kInvalidPropertyValue, "Invalid property value"},
    NumberedText{kAlreadyShown, "Form already displayed; can't show modally"},
    NumberedText{kPrinter, "Printer error"},
    NumberedText{kEngineOther, "The database engine met an unexpected error"},
    NumberedText{kTableExists, "Table already exists"},
    NumberedText{kNoCurrentEdit, "Update or CancelUpdate without AddNew or Edit"},
    NumberedText{kNoCurrentRecord, "No current record"},
    NumberedText{kFileMissing, "Could not find file"},
    NumberedText{kEngineFull, "Not enough space on disk"},
    NumberedText{kReadOnly, "Cannot update. Database or object is read-only"},
    NumberedText{kNotAValidPath, "Not a valid path"},
    NumberedText{kFileInUse, "Could not use file; file already in use"},
    NumberedText{kNoPermission, "Cannot open the file. It is in exclusive use, or you need permission to use it"},
    NumberedText{kNotAValidName, "Not a valid file name"},
    NumberedText{kEngineSyntax, "Syntax error in query expression"},
    NumberedText{kTableMissing, "Could not find the input table or query"},
    NumberedText{kFieldTooSmall, "The field is too small to accept the amount of data you attempted to add"},
    NumberedText{kFileExists, "Database already exists"},
    NumberedText{kFieldType, "Invalid field data type"},
    NumberedText{kLockedByOther, "Could not update; currently locked by another user"},
    NumberedText{kItemNotFound, "Item not found in this collection"},
    NumberedText{kNotADatabase, "Unrecognized database format"},
    NumberedText{kObjectClosed, "Object invalid or no longer set"},
    NumberedText{kCancel, "Cancel was selected"},
    NumberedText{kGridRow, "Invalid row value"},
    NumberedText{kGridCol, "Invalid column value"},
};

}  // namespace

RunTimeError::RunTimeError(int number) : std::runtime_error(ErrorText(number)), number_(number) {}

std::string ErrorText(int number) {
    const auto* const found = std::ranges::find(kTexts, number, &NumberedText::number);
    return found == kTexts.end() ? "Application-defined or object-defined error" : found->text;
}

}  // namespace vantrel
