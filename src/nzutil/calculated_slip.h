#pragma once
// A calculated slip as its records tell it: the employee before and after the run, the pay items,
// company, sector and yearly tables. It shares no figure with the calculation that it is held
// against.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "installation/description.h"
#include "installation/installation.h"

namespace nzutil {

/// One slip line, as it stands in the record after the run.
struct SlipLine {
    std::string item;     ///< record of the pay item
    double quantity = 0;  ///< units
    double rate = 0;      ///< euro a unit
    double amount = 0;    ///< euro, in cents; in whole euro where the item asks for it

    [[nodiscard]] double of_item(const MXREPOSITORY::Descriptor& field) const;
    [[nodiscard]] bool deduction() const;
};

/// The employee's record before and after a run, with the run's period.
class CalculatedSlip {
  public:
    CalculatedSlip(const Installation& installation, int record, std::string before,
                   std::string after, const PeriodEntry& period);

    /// Number in a field of the employee after and before the run, and by how much it has moved.
    [[nodiscard]] double now(const MXREPOSITORY::Descriptor& field) const;
    [[nodiscard]] double was(const MXREPOSITORY::Descriptor& field) const;
    [[nodiscard]] double moved(const MXREPOSITORY::Descriptor& field) const;
    [[nodiscard]] double sum(const std::vector<MXREPOSITORY::Descriptor>& fields) const;
    [[nodiscard]] std::string text(const MXREPOSITORY::Descriptor& field) const;
    [[nodiscard]] std::string text_before(const MXREPOSITORY::Descriptor& field) const;

    /// Number in a field of the company, the sector, the yearly tables.
    [[nodiscard]] double company(const MXREPOSITORY::Descriptor& field) const;
    [[nodiscard]] double sector(const MXREPOSITORY::Descriptor& field) const;
    [[nodiscard]] double yearly(const MXREPOSITORY::Descriptor& field) const;
    /// Number in a field of the employee's certificate of the year; 0 without one.
    [[nodiscard]] double certificate(const MXREPOSITORY::Descriptor& field) const;
    /// Is the employee in a pension fund that the archive has, and a number in a field of it.
    [[nodiscard]] bool in_a_fund() const { return !fund_.empty(); }
    [[nodiscard]] double fund(const MXREPOSITORY::Descriptor& field) const;
    /// Is the company the customer of this tax code?
    [[nodiscard]] bool company_is(std::string_view tax_code) const;

    [[nodiscard]] int year() const { return year_; }
    [[nodiscard]] int month() const { return month_; }
    [[nodiscard]] bool additional() const { return additional_; }
    [[nodiscard]] bool entertainer() const;
    [[nodiscard]] bool collaborator() const;
    /// Does this slip settle the year's tax?
    [[nodiscard]] bool settles_year() const;

    /// The lines that the slip evaluates.
    [[nodiscard]] const std::vector<SlipLine>& lines() const { return lines_; }

    /// Limit and percent of the brackets that the employee's tax of the year goes by.
    struct Bracket {
        double limit;
        double percent;
    };
    [[nodiscard]] const std::vector<Bracket>& brackets() const { return brackets_; }

  private:
    void read_lines(const Installation& installation);
    void read_brackets(const Installation& installation);
    /// An item that draws on a yearly cap does not run where none is left, save the one that sets
    /// it.
    [[nodiscard]] bool waits_for_cap(const std::string& item) const;

    std::string before_;
    std::string after_;
    std::string company_;
    std::string sector_;
    std::string yearly_;
    std::string certificate_;
    std::string fund_;
    int year_ = 0;
    int month_ = 0;
    bool additional_ = false;
    std::vector<SlipLine> lines_;
    std::vector<Bracket> brackets_;
};

}  // namespace nzutil
