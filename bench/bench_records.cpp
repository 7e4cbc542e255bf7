// Record traffic of one employee: the record of 16,500 bytes read twice and written twice, through
// LEGGIREC and SCRIVIREC, against the system calls alone.

#include <fcntl.h>
#include <unistd.h>

#include <string>

#include "bench/ratio_reporter.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "tests/support/archive_directory.h"

using MXLIBRERIA::file_numbers::kEmployees;

namespace {

constexpr std::size_t kLength = 16500;
constexpr std::size_t kRecords = 1000;

/// An archive of its own with 1000 employees.
class Archive : public test_support::ArchiveDirectory {
  public:
    Archive() {
        define(kEmployees, "NZDIPEND.DAT", static_cast<int>(kLength));
        write("NZDIPEND.DAT", std::string(kLength * kRecords, '0'));
    }
};

void employee_through_logical_files(benchmark::State& state) {
    const Archive archive;
    MXLIBRERIA::FAIOPEN(kEmployees);
    std::size_t employee = 0;
    for (auto _ : state) {
        const double record = static_cast<double>(employee % kRecords) + 1;
        for (int walk = 0; walk < 2; ++walk) {
            MXLIBRERIA::LEGGIREC(kEmployees, record);
            MXLIBRERIA::record_buffer(kEmployees)[100] = '1';
            MXLIBRERIA::SCRIVIREC(kEmployees, record);
        }
        ++employee;
    }
    state.SetItemsProcessed(state.iterations());
}

void employee_through_system_calls(benchmark::State& state) {
    const Archive archive;
    const int file = ::open(archive.file("NZDIPEND.DAT").c_str(), O_RDWR);
    std::string buffer(kLength, ' ');
    std::size_t employee = 0;
    for (auto _ : state) {
        const auto position = static_cast<off_t>(employee % kRecords * kLength);
        for (int walk = 0; walk < 2; ++walk) {
            if (::pread(file, buffer.data(), kLength, position) != static_cast<ssize_t>(kLength)) {
                state.SkipWithError("short read");
            }
            buffer[100] = '1';
            if (::pwrite(file, buffer.data(), kLength, position) != static_cast<ssize_t>(kLength)) {
                state.SkipWithError("short write");
            }
        }
        ++employee;
    }
    ::close(file);
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(employee_through_logical_files)->Repetitions(3);
BENCHMARK(employee_through_system_calls)->Repetitions(3);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print_ratio("employee_through_logical_files", "employee_through_system_calls");
    return 0;
}
