#include "installation/yaml_errors.h"

#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "texts/tool_texts.h"

namespace nzutil {

namespace {

/// How a message of the library begins, and our text for it.
struct YamlError {
    std::string_view message;
    const texts::Text* text;
};

const std::array kErrors{
    YamlError{YAML::ErrorMsg::END_OF_MAP, &texts::kYamlMapEnd},
    YamlError{YAML::ErrorMsg::END_OF_MAP_FLOW, &texts::kYamlBraceEnd},
    YamlError{YAML::ErrorMsg::END_OF_SEQ, &texts::kYamlListEnd},
    YamlError{YAML::ErrorMsg::END_OF_SEQ_FLOW, &texts::kYamlBracketEnd},
    YamlError{YAML::ErrorMsg::FLOW_END, &texts::kYamlBracketStray},
    YamlError{YAML::ErrorMsg::UNEXPECTED_END_MAP, &texts::kYamlBracketStray},
    YamlError{YAML::ErrorMsg::UNEXPECTED_END_SEQ, &texts::kYamlBracketStray},
    YamlError{YAML::ErrorMsg::EOF_IN_SCALAR, &texts::kYamlQuoteEnd},
    YamlError{YAML::ErrorMsg::DOC_IN_SCALAR, &texts::kYamlQuoteEnd},
    YamlError{YAML::ErrorMsg::SINGLE_QUOTED_CHAR, &texts::kYamlQuoteEnd},
    YamlError{YAML::ErrorMsg::TAB_IN_INDENTATION, &texts::kYamlTabulator},
    YamlError{YAML::ErrorMsg::BLOCK_ENTRY, &texts::kYamlIndentation},
    YamlError{YAML::ErrorMsg::MAP_KEY, &texts::kYamlIndentation},
    YamlError{YAML::ErrorMsg::MAP_VALUE, &texts::kYamlIndentation},
    YamlError{YAML::ErrorMsg::ZERO_INDENT_IN_BLOCK, &texts::kYamlIndentation},
    YamlError{YAML::ErrorMsg::CHAR_IN_SCALAR, &texts::kYamlCharacter},
    YamlError{YAML::ErrorMsg::CHAR_IN_BLOCK, &texts::kYamlCharacter},
    YamlError{YAML::ErrorMsg::UNKNOWN_TOKEN, &texts::kYamlCharacter},
    YamlError{YAML::ErrorMsg::INVALID_ESCAPE, &texts::kYamlEscape},
    YamlError{YAML::ErrorMsg::INVALID_HEX, &texts::kYamlEscape},
    YamlError{YAML::ErrorMsg::INVALID_UNICODE, &texts::kYamlEscape},
    YamlError{YAML::ErrorMsg::ALIAS_NOT_FOUND, &texts::kYamlAlias},
    YamlError{YAML::ErrorMsg::ANCHOR_NOT_FOUND, &texts::kYamlAlias},
    YamlError{YAML::ErrorMsg::CHAR_IN_ALIAS, &texts::kYamlAlias},
    YamlError{YAML::ErrorMsg::CHAR_IN_ANCHOR, &texts::kYamlAlias},
    YamlError{YAML::ErrorMsg::UNKNOWN_ANCHOR, &texts::kYamlAlias},
};

}  // namespace

std::string yaml_error_text(const std::string& message) {
    const auto* const known = std::ranges::find_if(
        kErrors, [&](const YamlError& row) { return message.starts_with(row.message); });
    return std::string((known != kErrors.end() ? *known->text : texts::kYamlOther).utf8);
}

}  // namespace nzutil
