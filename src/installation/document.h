#pragma once
// A YAML document with the places of its values, so that an error names file, line and what was
// expected there. Texts come out in the bytes of code page 1252 that records hold.

#include <yaml-cpp/yaml.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "installation/tool_error.h"
#include "records/descriptor.h"

namespace nzutil {

/// "file:line: what was expected", as the tool prints it.
class DocumentError : public ToolError {
  public:
    DocumentError(const std::string& file, int line, const std::string& text)
        : ToolError(file + ":" + std::to_string(line) + ": " + text) {}
};

/// A field with the value that a document gives it, checked against the field's form and width.
struct FieldValue {
    MXREPOSITORY::Descriptor field;
    int occurrence = 0;
    std::string value;      ///< code page 1252
    std::string tolerance;  ///< of an expected value: how far the found one may be; empty: equal
    int line = 0;           ///< where it stands in the document
};
using FieldValues = std::vector<FieldValue>;

/// Keys that may stand in a map.
using Keys = std::vector<std::string_view>;

/// Reads one document. Every function ends in DocumentError when the node is not what it reads.
class Document {
  public:
    /// ToolError if the file cannot be read; DocumentError if it is no YAML or no map.
    explicit Document(std::string file);
    /// The same from a text, for tests; `name` stands for the file in the messages.
    Document(std::string name, const std::string& text);

    [[nodiscard]] const std::string& file() const { return file_; }
    [[nodiscard]] const YAML::Node& root() const { return root_; }

    [[noreturn]] void fail(const YAML::Node& node, const std::string& text) const;
    [[noreturn]] void fail(const YAML::Node& node, const texts::Text& text,
                           std::initializer_list<std::string_view> values = {}) const;
    [[nodiscard]] static int line(const YAML::Node& node) { return node.Mark().line + 1; }

    /// Refuses a key of the map; a number written with a comma, which in a map between braces makes
    /// a key of its decimals, is told as such. `known`: the keys that may stand there.
    [[noreturn]] void fail_unknown_key(const YAML::Node& map, const YAML::Node& key_node,
                                       const std::string& known) const;
    /// A map whose keys all stand in `known`, none twice.
    void expect_keys(const YAML::Node& node, const Keys& known) const;
    /// Visits the entries of a map in their order.
    void each(const YAML::Node& map,
              const std::function<void(const std::string& key, const YAML::Node& key_node,
                                       const YAML::Node& value)>& visit) const;
    /// Visits the elements of a list; a single map counts as a list of one.
    void each_of(const YAML::Node& list_or_map,
                 const std::function<void(const YAML::Node& element)>& visit) const;

    /// Text of a scalar in code page 1252; a missing value is empty.
    [[nodiscard]] std::string text(const YAML::Node& node) const;
    /// Text of a scalar as it stands in the document (UTF-8).
    [[nodiscard]] std::string utf8(const YAML::Node& node) const;
    [[nodiscard]] int whole(const YAML::Node& node, int lowest, int highest) const;
    [[nodiscard]] int whole_key(const std::string& key, const YAML::Node& key_node, int lowest,
                                int highest) const;
    /// A decimal number with at most `decimals` decimals, as text.
    [[nodiscard]] std::string number(const YAML::Node& node, int decimals) const;
    [[nodiscard]] std::vector<std::string> list_of_texts(const YAML::Node& node) const;

    /// A map of fields of one area: code: value, or code: {occurrence: value} in repeating groups.
    [[nodiscard]] FieldValues fields(const YAML::Node& map, MXREPOSITORY::Area area,
                                     const Keys& other_keys = {}) const;
    /// The same for values to compare with; a number may stand as {valore: n, tolleranza: n}.
    [[nodiscard]] FieldValues expected_fields(const YAML::Node& map, MXREPOSITORY::Area area) const;

  private:
    enum class Purpose { to_store, to_compare };

    void take(const std::string& text);
    void refuse_comma(const std::string& typed, const YAML::Node& node) const;
    void fail_if_decimals(const YAML::Node& map, const YAML::Node& key_node) const;
    [[nodiscard]] FieldValues fields_for(Purpose purpose, const YAML::Node& map,
                                         MXREPOSITORY::Area area, const Keys& other_keys) const;
    [[nodiscard]] FieldValue value_for(Purpose purpose, const MXREPOSITORY::Descriptor& field,
                                       int occurrence, const YAML::Node& node) const;
    [[nodiscard]] FieldValue field_value(const MXREPOSITORY::Descriptor& field, int occurrence,
                                         const YAML::Node& node) const;

    std::string file_;
    YAML::Node root_;
};

}  // namespace nzutil
