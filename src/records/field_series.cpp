// Lists of fields and series of codes.

#include "platform/failure.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace MXREPOSITORY {

using platform::Failure;

namespace {

template <class List, class Value>
void write_all(const List& fields, Value value) {
    for (const Descriptor& field : fields) {
        scrivi(field, value);
    }
}

/// The letters of a series and where its number starts: "P" and 1, "QA" and 2.
std::size_t letters_of(std::string_view code) {
    return code[1] >= '0' && code[1] <= '9' ? 1 : 2;
}

std::string code_in_series(std::string_view sample, int number) {
    const std::size_t letters = letters_of(sample);
    return std::string(sample.substr(0, letters)) +
           zeri_a_sinistra(std::to_string(number), 4 - letters);
}

int number_in_series(std::string_view code) {
    return static_cast<int>(valore(code.substr(letters_of(code))));
}

}  // namespace

void azzera(std::initializer_list<Descriptor> fields) {
    write_all(fields, 0.0);
}

void svuota(std::initializer_list<Descriptor> fields) {
    write_all(fields, "");
}

void azzera(const std::vector<Descriptor>& fields) {
    write_all(fields, 0.0);
}

void svuota(const std::vector<Descriptor>& fields) {
    write_all(fields, "");
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
