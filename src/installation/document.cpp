#include "installation/document.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>

#include "installation/field_value.h"
#include "installation/file_layout.h"
#include "installation/yaml_errors.h"
#include "platform/code_page.h"

namespace nzutil {

namespace {

std::string file_text(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    std::string text;
    std::array<char, 4096> block{};
    while (in.read(block.data(), block.size()) || in.gcount() > 0) {
        text.append(block.data(), static_cast<std::size_t>(in.gcount()));
    }
    // Past the end only: a directory, or a device that fails, stops before it.
    if (!in.eof()) {
        throw ToolError(texts::kToolCannotRead, {file});
    }
    return text;
}

/// Occurrences that the records of the field's area hold here.
int most_occurrences(const MXREPOSITORY::Descriptor& field) {
    const auto layouts = file_layouts();
    const auto layout = std::ranges::find(layouts, field.area, &FileLayout::area);
    return layout == layouts.end() ? 1
                                   : occurrences(field, static_cast<std::size_t>(layout->length));
}

bool is_whole(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// A number typed with a decimal comma or with marks of thousands, as it has to be typed; nothing
/// if it is no such number.
std::optional<std::string> with_point(const std::string& typed) {
    const std::size_t last = typed.find_last_of(".,");
    if (typed.find(',') == std::string::npos) {
        return std::nullopt;
    }
    std::string whole = typed.substr(0, last);
    std::erase_if(whole, [](char c) { return c == '.' || c == ','; });
    const std::string_view digits = std::string_view(whole).substr(whole.starts_with('-') ? 1 : 0);
    const std::string decimals = typed.substr(last + 1);
    if (!is_whole(digits) || !is_whole(decimals)) {
        return std::nullopt;
    }
    return whole + "." + decimals;
}

/// A whole number that fills the text; false for anything else.
bool parse_whole(const std::string& text, int& value) {
    const char* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, value);
    return failure == std::errc{} && rest == end;
}

}  // namespace

Document::Document(std::string file) : file_(std::move(file)) {
    take(file_text(file_));
}

Document::Document(std::string name, const std::string& text) : file_(std::move(name)) {
    take(text);
}

void Document::take(const std::string& text) {
    try {
        root_ = YAML::Load(text);
    } catch (const YAML::Exception& failure) {
        throw DocumentError(file_, failure.mark.line + 1,
                            fill(texts::kToolExpectedYaml, {yaml_error_text(failure.msg)}));
    }
    if (!root_.IsMap()) {
        throw DocumentError(file_, 1, std::string(texts::kToolExpectedMap.utf8));
    }
}

void Document::fail(const YAML::Node& node, const std::string& text) const {
    throw DocumentError(file_, line(node), text);
}

void Document::fail(const YAML::Node& node, const texts::Text& text,
                    std::initializer_list<std::string_view> values) const {
    fail(node, fill(text, values));
}

void Document::each(const YAML::Node& map,
                    const std::function<void(const std::string&, const YAML::Node&,
                                             const YAML::Node&)>& visit) const {
    if (!map.IsMap()) {
        fail(map, texts::kToolExpectedMap);
    }
    std::vector<std::string> seen;
    for (const auto& entry : map) {
        const std::string key = utf8(entry.first);
        if (std::ranges::find(seen, key) != seen.end()) {
            fail_if_decimals(map, entry.first);
            fail(entry.first, texts::kToolKeyTwice, {key});
        }
        seen.push_back(key);
        visit(key, entry.first, entry.second);
    }
}

void Document::each_of(const YAML::Node& list_or_map,
                       const std::function<void(const YAML::Node&)>& visit) const {
    if (list_or_map.IsMap()) {
        visit(list_or_map);
        return;
    }
    if (!list_or_map.IsSequence()) {
        fail(list_or_map, texts::kToolExpectedMapOrList);
    }
    for (const YAML::Node& element : list_or_map) {
        visit(element);
    }
}

void Document::expect_keys(const YAML::Node& node, const Keys& known) const {
    each(node, [&](const std::string& key, const YAML::Node& key_node, const YAML::Node&) {
        if (std::ranges::find(known, key) == known.end()) {
            std::string list;
            for (const std::string_view name : known) {
                list += (list.empty() ? "" : ", ") + std::string(name);
            }
            fail_unknown_key(node, key_node, list);
        }
    });
}

void Document::fail_unknown_key(const YAML::Node& map, const YAML::Node& key_node,
                                const std::string& known) const {
    fail_if_decimals(map, key_node);
    fail(key_node, texts::kToolExpectedKey, {known, utf8(key_node)});
}

/// {P256: 1733,31} is P256: 1733 and a key 31 that has no value.
void Document::fail_if_decimals(const YAML::Node& map, const YAML::Node& key_node) const {
    if (map.Style() != YAML::EmitterStyle::Flow) {
        return;
    }
    std::string former;
    for (const auto& entry : map) {
        if (entry.first.is(key_node) && entry.second.IsNull() && is_whole(utf8(entry.first))) {
            refuse_comma(former + "," + utf8(entry.first), key_node);
        }
        former = entry.second.IsScalar() ? entry.second.Scalar() : std::string();
    }
}

void Document::refuse_comma(const std::string& typed, const YAML::Node& node) const {
    if (const std::optional<std::string> number = with_point(typed)) {
        fail(node, texts::kToolUsePoint, {*number, typed});
    }
}

std::string Document::utf8(const YAML::Node& node) const {
    if (node.IsNull()) {
        return {};
    }
    if (!node.IsScalar()) {
        fail(node, texts::kToolExpectedScalar);
    }
    return node.Scalar();
}

std::string Document::text(const YAML::Node& node) const {
    const std::string as_typed = utf8(node);
    std::string bytes = platform::from_utf8(as_typed);
    if (platform::to_utf8(bytes) != as_typed) {
        fail(node, texts::kToolExpectedCodePage);
    }
    return bytes;
}

int Document::whole(const YAML::Node& node, int lowest, int highest) const {
    return whole_key(utf8(node), node, lowest, highest);
}

int Document::whole_key(const std::string& key, const YAML::Node& key_node, int lowest,
                        int highest) const {
    int value = 0;
    // Quoted numbers may be zero-filled ("0001"): leading zeros say nothing else here.
    if (!parse_whole(key, value) || value < lowest || value > highest) {
        fail(key_node, texts::kToolExpectedWhole,
             {std::to_string(lowest), std::to_string(highest), key});
    }
    return value;
}

std::string Document::number(const YAML::Node& node, int decimals) const {
    std::string typed = utf8(node);
    // A number of 15 characters with these decimals stands for the form to check against.
    const MXREPOSITORY::Descriptor form{
        .area = MXREPOSITORY::Area::DITX,
        .offset = 1,
        .length = 15,
        .type = decimals == 0 ? 'N' : static_cast<char>('0' + decimals)};
    refuse_comma(typed, node);
    if (typed.empty()) {
        fail(node, std::string(texts::kToolExpectedNumber.utf8));
    }
    if (const std::optional<Objection> found = objection(form, typed, Decimals::exact)) {
        fail(node, fill(*found->text, {found->value}));
    }
    return typed;
}

std::vector<std::string> Document::list_of_texts(const YAML::Node& node) const {
    if (!node.IsSequence()) {
        fail(node, texts::kToolExpectedList);
    }
    std::vector<std::string> list;
    for (const YAML::Node& element : node) {
        list.push_back(text(element));
    }
    return list;
}

FieldValue Document::field_value(const MXREPOSITORY::Descriptor& field, int occurrence,
                                 const YAML::Node& node) const {
    FieldValue result{.field = field,
                      .occurrence = occurrence,
                      .value = typed_value(field, text(node)),
                      .tolerance = {},
                      .line = line(node)};
    if (field.type != 'A') {
        refuse_comma(result.value, node);
    }
    if (const std::optional<Objection> found = objection(field, result.value, Decimals::rounded)) {
        fail(node, std::string(field.name()) + ": " + fill(*found->text, {found->value}));
    }
    return result;
}

FieldValue Document::value_for(Purpose purpose, const MXREPOSITORY::Descriptor& field,
                               int occurrence, const YAML::Node& node) const {
    if (purpose == Purpose::to_store || !node.IsMap()) {
        return field_value(field, occurrence, node);
    }
    expect_keys(node, {"valore", "tolleranza"});
    const bool is_number = field.type != 'A' && field.type != 'D' && field.type != '0';
    if (!node["valore"] || !node["tolleranza"] || !is_number) {
        fail(node, texts::kToolExpectedTolerance, {field.name()});
    }
    FieldValue result = field_value(field, occurrence, node["valore"]);
    result.tolerance = number(node["tolleranza"], field.decimals());
    if (result.tolerance.starts_with('-')) {
        fail(node["tolleranza"], texts::kToolExpectedTolerance, {field.name()});
    }
    return result;
}

FieldValues Document::fields(const YAML::Node& map, MXREPOSITORY::Area area,
                             const Keys& other_keys) const {
    return fields_for(Purpose::to_store, map, area, other_keys);
}

FieldValues Document::expected_fields(const YAML::Node& map, MXREPOSITORY::Area area) const {
    return fields_for(Purpose::to_compare, map, area, {});
}

FieldValues Document::fields_for(Purpose purpose, const YAML::Node& map, MXREPOSITORY::Area area,
                                 const Keys& other_keys) const {
    FieldValues values;
    const std::string tag(MXREPOSITORY::kAreaTags[static_cast<std::size_t>(area)]);
    each(map, [&](const std::string& key, const YAML::Node& key_node, const YAML::Node& value) {
        if (std::ranges::find(other_keys, key) != other_keys.end()) {
            return;
        }
        const MXREPOSITORY::Descriptor* field = find_typed_field(key);
        if (field == nullptr || field->area != area) {
            fail_if_decimals(map, key_node);
            fail(key_node, texts::kToolExpectedField, {tag, key});
        }
        if (!value.IsMap() || (purpose == Purpose::to_compare && value["valore"])) {
            values.push_back(value_for(purpose, *field, 0, value));
            return;
        }
        each(value, [&](const std::string& occurrence, const YAML::Node& place,
                        const YAML::Node& content) {
            fail_if_decimals(value, place);
            const int number = whole_key(occurrence, place, 1, 99);
            if (number > most_occurrences(*field)) {
                fail(place, texts::kToolOccurrence, {key, occurrence});
            }
            values.push_back(value_for(purpose, *field, number, content));
        });
    });
    return values;
}

}  // namespace nzutil
