#pragma once
// The period of the run: record 1 of logical file 6, kept as text.
//   positions 1-8  ddmmyyyy (3-4 month, 5-8 year, 7-8 short year)
//   position 9     run kind: '0' an additional monthly payment, anything else a normal month

#include <string>
#include <string_view>

namespace MXLIBRERIA {

struct Period {
    std::string PERIODO;      ///< the whole record
    double MMAGGIUNTIVA = 0;  ///< 1 on a run of an additional payment

    /// Takes the record and derives the rest.
    void set(std::string_view record);

    [[nodiscard]] std::string date() const;        ///< ddmmyyyy
    [[nodiscard]] std::string month_text() const;  ///< mm
    [[nodiscard]] std::string year_text() const;   ///< yyyy
    [[nodiscard]] std::string short_year() const;  ///< yy
    [[nodiscard]] std::string month_year() const;  ///< mmyyyy
    [[nodiscard]] int day() const { return day_; }
    [[nodiscard]] int month() const { return month_; }
    [[nodiscard]] int year() const { return year_; }
    [[nodiscard]] double yyyymm() const { return year_ * 100. + month_; }  ///< year x 100 + month
    [[nodiscard]] bool additional() const { return MMAGGIUNTIVA == 1; }
    [[nodiscard]] bool ordinary() const { return MMAGGIUNTIVA != 1; }

  private:
    int day_ = 0;
    int month_ = 0;
    int year_ = 0;
};
extern Period period;

}  // namespace MXLIBRERIA
