#include "context/failure_advice.h"

#include <algorithm>
#include <array>

#include "context/environment.h"
#include "context/messages.h"
#include "context/run_course.h"
#include "records/numbers.h"
#include "texts/texts.h"

namespace MXLIBRERIA {

namespace {

using texts::Text;

struct AdviceOfNumber {
    int number;
    const Text& text;
};
constexpr std::array<AdviceOfNumber, 26> kAdvice{{
    {platform::kOutOfMemory, texts::kAdviceMemory},
    {platform::kBadFileNameOrNumber, texts::kAdviceFileTable},
    {platform::kFileNotFound, texts::kAdviceMissingFile},
    {platform::kFileAlreadyOpen, texts::kAdviceRights},
    {platform::kDeviceIo, texts::kAdviceDevice},
    {platform::kBadRecordLength, texts::kAdviceFileTable},
    {platform::kDiskFull, texts::kAdviceDiskFull},
    {platform::kInputPastEnd, texts::kAdviceCutShort},
    {platform::kBadRecordNumber, texts::kAdviceMissingRecord},
    {platform::kTooManyFiles, texts::kAdviceMemory},
    {platform::kPermissionDenied, texts::kAdviceRights},
    {platform::kDiskNotReady, texts::kAdviceDevice},
    {platform::kPathFileAccess, texts::kAdviceRights},
    {platform::kPathNotFound, texts::kAdviceMissingFile},
    {platform::kNothingBegun, texts::kAdviceArchiveReport},
    {platform::kNoCurrentRecord, texts::kAdviceArchiveReport},
    {platform::kKeyTaken, texts::kAdviceKeyTaken},
    {platform::kArchiveReadOnly, texts::kAdviceRights},
    {platform::kNotAnArchive, texts::kAdviceNotAnArchive},
    {platform::kTooFewParameters, texts::kAdviceArchiveReport},
    {platform::kStatementNotUnderstood, texts::kAdviceArchiveReport},
    {platform::kNoSuchTable, texts::kAdviceArchiveTable},
    {platform::kArchiveOnServer, texts::kAdviceArchiveOnServer},
    {platform::kArchiveLocked, texts::kAdviceArchiveLocked},
    {platform::kNoSuchColumn, texts::kAdviceArchiveTable},
    {platform::kOlderArchive, texts::kAdviceOlderArchive},
}};

/// The advice of a number; any other failure comes out of the figures of a record.
const Text& advice_of(int number) {
    const auto* const row = std::ranges::find(kAdvice, number, &AdviceOfNumber::number);
    return row == kAdvice.end() ? texts::kAdviceFigures : row->text;
}

/// Who is being calculated, and how to look at his record.
std::string employee_lines() {
    const std::string record = MXREPOSITORY::testo_numero(run_course.employee_record);
    return texts::kAdviceEmployee.bytes() + employee_label() + "\r\n" +
           texts::kAdviceShowEmployee.bytes() + environment.archive_directory + " " +
           MXREPOSITORY::testo_numero(run_course.employee_file) + " " + record + "\r\n";
}

}  // namespace

std::string failure_advice(const platform::Failure& failure) {
    const std::string advice =
        failure.advice.empty() ? advice_of(failure.number()).bytes() : failure.advice;
    return (run_course.employee_record > 0 ? employee_lines() : std::string()) +
           texts::kAdvice.bytes() + advice + "\r\n";
}

}  // namespace MXLIBRERIA
