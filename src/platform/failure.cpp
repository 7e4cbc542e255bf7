#include "platform/failure.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <new>
#include <string_view>

namespace platform {

namespace {

struct Description {
    int number;
    std::string_view text;
};
constexpr std::array<Description, 33> kDescriptions{{
    {kInvalidCall, "Invalid procedure call or argument"},
    {kOverflow, "Overflow"},
    {kOutOfMemory, "Out of memory"},
    {kSubscriptOutOfRange, "Subscript out of range"},
    {kDivisionByZero, "Division by zero"},
    {kTypeMismatch, "Type mismatch"},
    {kBadFileNameOrNumber, "Bad file name or number"},
    {kFileNotFound, "File not found"},
    {kFileAlreadyOpen, "File already open"},
    {kDeviceIo, "Device I/O error"},
    {kFileAlreadyExists, "File already exists"},
    {kBadRecordLength, "Bad record length"},
    {kDiskFull, "Disk full"},
    {kInputPastEnd, "Input past end of file"},
    {kBadRecordNumber, "Bad record number"},
    {kTooManyFiles, "Too many files"},
    {kPermissionDenied, "Permission denied"},
    {kDiskNotReady, "Disk not ready"},
    {kPathFileAccess, "Path/File access error"},
    {kPathNotFound, "Path not found"},
    {kPrinter, "Printer error"},
    {kNothingBegun, "Update or CancelUpdate without AddNew or Edit"},
    {kNoCurrentRecord, "No current record"},
    {kKeyTaken, "Duplicate values in the index, primary key, or relationship"},
    {kArchiveReadOnly, "Cannot update. Database or object is read-only"},
    {kNotAnArchive, "Cannot open database. It may not be a database, or it may be corrupt"},
    {kTooFewParameters, "Too few parameters"},
    {kStatementNotUnderstood, "Syntax error in query expression"},
    {kNoSuchTable, "Cannot find the input table or query"},
    {kArchiveOnServer, "ODBC--connection failed"},
    {kArchiveLocked, "Could not update; currently locked by another user"},
    {kNoSuchColumn, "Item not found in this collection"},
    {kOlderArchive, "Unrecognized database format"},
}};

}  // namespace

std::string describe(int number) {
    const auto* found = std::find_if(kDescriptions.begin(), kDescriptions.end(),
                                     [number](const Description& d) { return d.number == number; });
    return std::string(found == kDescriptions.end() ? "Application-defined or object-defined error"
                                                    : found->text);
}

Failure failure_of(const std::exception& other) {
    if (const auto* failure = dynamic_cast<const Failure*>(&other)) {
        return *failure;
    }
    if (const auto* refusal = dynamic_cast<const std::filesystem::filesystem_error*>(&other)) {
        Failure failure(kPathFileAccess);
        failure.culprit = refusal->path1().string();
        return failure;
    }
    if (dynamic_cast<const std::bad_alloc*>(&other) != nullptr) {
        return Failure(kOutOfMemory);
    }
    const bool outside = dynamic_cast<const std::out_of_range*>(&other) != nullptr;
    return Failure(outside ? kSubscriptOutOfRange : kInvalidCall);
}

}  // namespace platform
