#include "installation/document.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>

#include "installation/field_value.h"
#include "platform/code_page.h"

namespace nzutil {

namespace {

std::string file_text(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    if (!in || !(text << in.rdbuf())) {
        throw ToolError(texts::kToolCannotRead, {file});
    }
    return text.str();
}

/// A whole number that fills the text; false for anything else.
bool parse_whole(const std::string& text, int& value) {
    const char* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, value);
    return failure == std::errc{} && rest == end;
}

}  // namespace

Document::Document(std::string file) : file_(std::move(file)) {
    const std::string text = file_text(file_);
    take([&] { return YAML::Load(text); });
}

Document::Document(std::string name, const std::string& text) : file_(std::move(name)) {
    take([&] { return YAML::Load(text); });
}

void Document::take(const std::function<YAML::Node()>& load) {
    try {
        root_ = load();
    } catch (const YAML::ParserException& failure) {
        throw DocumentError(file_, failure.mark.line + 1,
                            fill(texts::kToolExpectedYaml, {failure.msg}));
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
            fail(key_node, texts::kToolExpectedKey, {list, key});
        }
    });
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
    const std::string typed = utf8(node);
    // A number of 15 characters with these decimals stands for the form to check against.
    const MXREPOSITORY::Descriptor form{
        .area = MXREPOSITORY::Area::DITX,
        .offset = 1,
        .length = 15,
        .type = decimals == 0 ? 'N' : static_cast<char>('0' + decimals)};
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
    FieldValue result{
        .field = field, .occurrence = occurrence, .value = text(node), .line = line(node)};
    if (const std::optional<Objection> found = objection(field, result.value, Decimals::rounded)) {
        fail(node, std::string(field.name()) + ": " + fill(*found->text, {found->value}));
    }
    return result;
}

FieldValues Document::fields(const YAML::Node& map, MXREPOSITORY::Area area,
                             const Keys& other_keys) const {
    FieldValues values;
    const std::string tag(MXREPOSITORY::kAreaTags[static_cast<std::size_t>(area)]);
    each(map, [&](const std::string& key, const YAML::Node& key_node, const YAML::Node& value) {
        if (std::ranges::find(other_keys, key) != other_keys.end()) {
            return;
        }
        const MXREPOSITORY::Descriptor* field = MXREPOSITORY::find_field(key);
        if (field == nullptr || field->area != area) {
            fail(key_node, texts::kToolExpectedField, {tag, key});
        }
        if (!value.IsMap()) {
            values.push_back(field_value(*field, 0, value));
            return;
        }
        each(value, [&](const std::string& occurrence, const YAML::Node& place,
                        const YAML::Node& content) {
            values.push_back(field_value(*field, whole_key(occurrence, place, 1, 99), content));
        });
    });
    return values;
}

}  // namespace nzutil
