// Where a field of a repeating group stands in its n-th occurrence.

#include <array>

#include "records/fields.h"
#include "records/numbers.h"
#include "records/repository_errors.h"
#include "texts/texts.h"

namespace MXREPOSITORY {

namespace {

int code_number(const Descriptor& d) {
    return static_cast<int>(valore(std::string_view(d.code.data() + 1, 3)));
}

/// A group in which a field at `first` to `last` moves by `width` from one occurrence to the next.
struct Group {
    Area area;
    int first;
    int last;
    int width;
};
constexpr std::array<Group, 10> kGroups{{
    {Area::DICX, 101, INT16_MAX, 10},
    {Area::CONX, 101, 390, 290},
    {Area::M77X, 256, 510, 255},
    {Area::M77X, 3316, 3570, 255},
    {Area::F24X, 42, 66, 36},
    {Area::F24X, 762, 813, 63},
    {Area::F24X, 4359, 4398, 51},
    {Area::F24X, 4824, 4867, 55},
    {Area::F24X, 5000, 5000, 4},
    {Area::F24X, 5483, 5483, 2},
}};
/// Ranges of the tax payment form that recur in steps: first start, last start, step, span, width.
struct SteppedGroup {
    int first;
    int last;
    int step;
    int span;
    int width;
};
constexpr std::array<SteppedGroup, 2> kF24Groups{
    {{1077, 4117, 152, 24, 35}, {5094, 5414, 16, 1, 4}}};
constexpr int kDi2Width = 714;

bool has_groups(Area area) {
    return area == Area::DICX || area == Area::CONX || area == Area::M77X || area == Area::F24X ||
           area == Area::DI2X;
}

int group_width(const Descriptor& d) {
    for (const Group& group : kGroups) {
        if (d.area == group.area && d.offset >= group.first && d.offset <= group.last) {
            return group.width;
        }
    }
    if (d.area == Area::F24X) {
        for (const SteppedGroup& group : kF24Groups) {
            if (d.offset >= group.first && d.offset < group.last + group.span &&
                (d.offset - group.first) % group.step < group.span) {
                return group.width;
            }
        }
    }
    if (d.area == Area::DI2X) {
        if (d.code[0] != 'I') {
            show_repository_error(texts::kRepositoryUnknownLetter);
            return 0;
        }
        return code_number(d) >= 100 ? kDi2Width : 0;
    }
    return 0;
}

}  // namespace

std::int16_t SPOSTAMENTOOCCORRENZA(const Descriptor& descriptor, std::int16_t occurrence) {
    const int width = has_groups(descriptor.area) ? group_width(descriptor) : 0;
    if (occurrence == 0 || width == 0) {
        return 0;
    }
    return checked16((occurrence - 1) * width);
}

}  // namespace MXREPOSITORY
