#pragma once
// How far the run has come through its selection.

#include <cstddef>
#include <deque>

namespace MXLIBRERIA {

/// Lives from the start of the first walk to the end.
struct RunCourse {
    /// One an entry of the selection: the first walk found the month calculated before.
    std::deque<bool> calculated_before;
    /// Entries that the second walk has come past, in the order of the selection.
    std::size_t finished = 0;

    /// Record of the employee under way; 0 between two employees.
    double employee_record = 0;
    /// The logical file that it is in.
    double employee_file = 0;

    /// Entries of the selection whose slip the run still owes.
    [[nodiscard]] std::size_t not_calculated() const;
};
extern RunCourse run_course;

/// Did the run come to less than it was asked for: a slip not calculated, a request to stop, a list
/// that could not be written in full?
[[nodiscard]] bool run_fell_short();

}  // namespace MXLIBRERIA
