// Lists of fields and series of codes.

#include "platform/failure.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace MXREPOSITORY {

using platform::Failure;

namespace {

template <class List>
void zero_all(const List& fields) {
    for (const Descriptor& field : fields) {
        scrivi(field, 0.0);
    }
}

template <class List>
void empty_all(const List& fields) {
    for (const Descriptor& field : fields) {
        svuota(field);
    }
}

std::string code_in_series(std::string_view sample, int number) {
    const std::size_t letters = letters_of(sample);
    return std::string(sample.substr(0, letters)) +
           zeri_a_sinistra(std::to_string(number), 4 - letters);
}

}  // namespace

void azzera(std::initializer_list<Descriptor> fields) {
    zero_all(fields);
}

void svuota(std::initializer_list<Descriptor> fields) {
    empty_all(fields);
}

void azzera(std::span<const Descriptor> fields) {
    zero_all(fields);
}

void svuota(std::span<const Descriptor> fields) {
    empty_all(fields);
}

std::vector<Descriptor> serie(const Descriptor& first, const Descriptor& last, int step) {
    std::vector<Descriptor> fields;
    const int end = number_in_series(last.name());
    for (int number = number_in_series(first.name()); number <= end; number += step) {
        if (const Descriptor* field = find_field(code_in_series(first.name(), number))) {
            fields.push_back(*field);
        }
    }
    return fields;
}

const Descriptor& dopo(const Descriptor& field, int distance) {
    const Descriptor* other =
        find_field(code_in_series(field.name(), number_in_series(field.name()) + distance));
    if (other == nullptr) {
        throw Failure(platform::kSubscriptOutOfRange);
    }
    return *other;
}

}  // namespace MXREPOSITORY
