#pragma once
// Certificates of the year for tests of the adjustment: there are some, and none of the employee.

#include "files/file_numbers.h"
#include "files/isam.h"
#include "tests/support/logical_files.h"

namespace test_support {

class Certificates {
  public:
    Certificates() {
        using namespace MXLIBRERIA;
        files_.define(file_numbers::kCertificates, 6100);
        files_.define(file_numbers::kCertificateIndex, (10 + 7) * 128);
        ISAM(file_numbers::kCertificateIndex, "9990000001", kIsamEmpty, 0);
        ISAM(file_numbers::kCertificateIndex, "9990000001", kIsamInsert, 1);
        FAIOPEN(file_numbers::kCertificates);
        FAIOPEN(file_numbers::kCertificateIndex);
    }

  private:
    LogicalFiles files_;
};

}  // namespace test_support
