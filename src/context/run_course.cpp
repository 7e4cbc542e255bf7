#include "context/run_course.h"

#include <algorithm>

#include "platform/stop_request.h"
#include "platform/window.h"

namespace MXLIBRERIA {

RunCourse run_course;

std::size_t RunCourse::not_calculated() const {
    const std::size_t begin = std::min(finished, calculated_before.size());
    const auto first_left = calculated_before.begin() + static_cast<std::ptrdiff_t>(begin);
    return static_cast<std::size_t>(std::count(first_left, calculated_before.end(), false));
}

bool run_fell_short() {
    return run_course.not_calculated() > 0 || platform::stop_requested() ||
           platform::window().output_failed();
}

}  // namespace MXLIBRERIA
