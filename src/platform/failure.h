#pragma once
// Failures of the run and the end of the program, as exceptions.

#include <stdexcept>
#include <string>

namespace platform {

/// Numbers of the Basic run-time that this system raises.
enum FailureNumber : int {
    kInvalidCall = 5,
    kOverflow = 6,
    kOutOfMemory = 7,
    kSubscriptOutOfRange = 9,
    kDivisionByZero = 11,
    kTypeMismatch = 13,
    kBadFileNameOrNumber = 52,
    kFileNotFound = 53,
    kFileAlreadyOpen = 55,
    kDeviceIo = 57,
    kFileAlreadyExists = 58,
    kBadRecordLength = 59,
    kDiskFull = 61,
    kInputPastEnd = 62,
    kBadRecordNumber = 63,
    kTooManyFiles = 67,
    kPermissionDenied = 70,
    kDiskNotReady = 71,
    kPathFileAccess = 75,
    kPathNotFound = 76,
    kPrinter = 482,
    // Of the database objects
    kNothingBegun = 3020,
    kNoCurrentRecord = 3021,
    kKeyTaken = 3022,
    kArchiveReadOnly = 3027,
    kNotAnArchive = 3049,
    kTooFewParameters = 3061,
    kStatementNotUnderstood = 3075,
    kNoSuchTable = 3078,
    kArchiveOnServer = 3151,
    kArchiveLocked = 3260,
    kNoSuchColumn = 3265,
    kOlderArchive = 3343,
};

/// The usual English description of a failure number; "Application-defined error" for others.
[[nodiscard]] std::string describe(int number);

/// A run-time failure: number and description. Caught once, at the top, by GESTIONEERRORE.
class Failure : public std::runtime_error {
  public:
    explicit Failure(int number) : Failure(number, describe(number)) {}
    Failure(int number, const std::string& description)
        : std::runtime_error(description), number_(number) {}

    [[nodiscard]] int number() const { return number_; }
    [[nodiscard]] std::string description() const { return what(); }

    /// Name that the handler records in the trace before it shows it ("RepoR", "RepoW"); else
    /// empty.
    std::string pseudo_name;
    /// The file or record that the failure is about, for the operator; else empty. The description
    /// stays the usual text.
    std::string culprit;
    /// What the operator is to do (code page 1252); else empty, and the number decides.
    std::string advice;

  private:
    int number_;
};

/// Any exception as a failure: a file system's own is 75 with its path, a lack of memory 7, an
/// index outside its table 9, all else 5. Texts of the C++ library stay behind.
[[nodiscard]] Failure failure_of(const std::exception& other);

/// The program ends: files close, locks go, and main() returns `status`.
/// 0 end through FINEPROG or nothing to do, 1 failure handler, 2 configuration, 3 other instance.
class EndOfProgram : public std::exception {
  public:
    explicit EndOfProgram(int exit_status) : status(exit_status) {}
    [[nodiscard]] const char* what() const noexcept override { return "end of program"; }
    int status;
};

}  // namespace platform
