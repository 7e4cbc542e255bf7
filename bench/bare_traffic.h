#pragma once
// The floor of a month: the records and index blocks that its two walks cannot do without, in file
// order and with bare calls.

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

#include "bench/payroll.h"

namespace bench {

/// A file with its bare calls.
class BareFile {
  public:
    BareFile(const std::string& path, std::size_t length)
        : file_(::open(path.c_str(), O_RDWR)), buffer_(length, ' ') {
        if (file_ < 0) {
            throw std::runtime_error("cannot open " + path);
        }
    }
    ~BareFile() { ::close(file_); }
    BareFile(const BareFile&) = delete;
    BareFile& operator=(const BareFile&) = delete;
    BareFile(BareFile&&) = delete;
    BareFile& operator=(BareFile&&) = delete;

    const std::string& read(int record) {
        if (::pread(file_, buffer_.data(), buffer_.size(), position(record)) < 0) {
            throw std::runtime_error("a bare reading failed");
        }
        return buffer_;
    }
    void write(int record, const std::string& bytes) const {
        if (::pwrite(file_, bytes.data(), bytes.size(), position(record)) < 0) {
            throw std::runtime_error("a bare writing failed");
        }
    }
    void write(int record) const { write(record, buffer_); }

  private:
    [[nodiscard]] off_t position(int record) const {
        return static_cast<off_t>(record - 1) * static_cast<off_t>(buffer_.size());
    }
    int file_;
    std::string buffer_;
};

/// What a month reads and writes of each employee. The recovery slot is no part of it: it holds the
/// same bytes once more.
class BareTraffic {
  public:
    explicit BareTraffic(const nzutil::Installation& installation)
        : employees_(open(installation, nzutil::kEmployees)),
          months_(open(installation, nzutil::kTwelveMonths)),
          images_(open(installation, nzutil::kBeforeImages)),
          index_(open(installation, nzutil::kBeforeImageIndex)) {
        installation.close();
    }

    void first_walk(int employees) {
        for (int number = 1; number <= employees; ++number) {
            const std::string& record = employees_.read(number);
            if (already_calculated(record)) {
                continue;
            }
            months_.read(number);
            months_.write(number);
            search(number);
            images_.write(number, record);
            search(number);
            index_.write(leaf(number));
            employees_.write(number);
        }
    }
    void second_walk(int employees) {
        for (int number = 1; number <= employees; ++number) {
            if (!already_calculated(employees_.read(number))) {
                employees_.write(number);
            }
        }
    }

  private:
    static BareFile open(const nzutil::Installation& installation, int file) {
        return {installation.path(file),
                static_cast<std::size_t>(installation.record_length(file))};
    }
    /// Keys in ascending order leave 64 entries in each block behind them.
    static int leaf(int number) { return 3 + number / 64; }
    void search(int number) {
        for (const int block : {1, 2, leaf(number)}) {
            index_.read(block);
        }
    }

    BareFile employees_;
    BareFile months_;
    BareFile images_;
    BareFile index_;
};

}  // namespace bench
