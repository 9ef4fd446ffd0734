// Run-time errors: the one way in which a fault ends the program.
#pragma once

#include <stdexcept>
#include <string>

namespace vantrel {

/// Numbers of the run-time errors that the program can raise.
enum ErrorNumber : int {
    kInvalidCall = 5,
    kOverflow = 6,
    kSubscript = 9,
    kDivisionByZero = 11,
    kTypeMismatch = 13,
    kBadFileNumber = 52,
    kFileNotFound = 53,
    kFileAlreadyOpen = 55,
    kDeviceIo = 57,
    kDiskFull = 61,
    kPermissionDenied = 70,
    kPathNotFound = 76,
    kInvalidNull = 94,
    kControlArrayElement = 340,
    kInvalidPropertyValue = 380,
    kAlreadyShown = 400,
    kPrinter = 482,
    kNoCurrentRecord = 3021,
    kTableExists = 3010,
    kFileMissing = 3024,
    kEngineFull = 3026,
    kReadOnly = 3027,
    kNotAValidPath = 3044,
    kFileInUse = 3045,
    kNoPermission = 3051,
    kNotAValidName = 3055,
    kTableMissing = 3078,
    kNoCurrentEdit = 3020,
    kFieldTooSmall = 3163,
    kFileExists = 3204,
    kFieldType = 3259,
    kLockedByOther = 3260,
    kItemNotFound = 3265,
    kNotADatabase = 3343,
    kObjectClosed = 3420,
    kEngineSyntax = 3075,
    kEngineOther = 3000,
    kCancel = 32755,
    kGridRow = 30009,
    kGridCol = 30010,
};

/// A fault at run time. Four places catch it: the event dispatcher, which shows it and ends the program; the CSV
/// export's trap; the record plot, which tells what went wrong and goes on; and the database engine, which undoes what
/// was begun and passes the fault on, but for one while a transaction's object goes. Anything else that catches it
/// hides a fault.
class RunTimeError : public std::runtime_error {
public:
    explicit RunTimeError(int number);
    /// With a text of its own in place of the standard one.
    RunTimeError(int number, const std::string& text) : std::runtime_error(text), number_(number) {}
    int Number() const { return number_; }

private:
    int number_;
};

/// The standard text of run-time error `number`, as "Subscript out of range" for 9.
std::string ErrorText(int number);

}  // namespace vantrel
