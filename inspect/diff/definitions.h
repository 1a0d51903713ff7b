/* What names in a file's statements mean, by the rules of scope of YANG (RFC 7950, 5.5 and 6.4). */
#pragma once

#include <qxyang.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace inspect::diff {

/* A statement of a file that a context has loaded. */
struct StatementRef {
    const QXYANG_FILE *file;
    uint32_t index;

    auto operator<=>(const StatementRef &) const = default;
};

class Definitions {
  public:
    /* The context keeps details. */
    explicit Definitions(const QY_CTX *schema) : schema_(schema) {}

    /* The typedef that a type statement names; none for a built-in type. */
    std::optional<StatementRef> TypedefOf(const StatementRef &type);

    /* "module:name" of a name with or without prefix in the file. */
    std::string Qualified(const QXYANG_FILE *file, std::string_view name);

    /* The statements of the module's file and of all submodules that it includes. */
    std::vector<const QXYANG_FILE *> FilesOf(const std::string &module);

  private:
    /* One file's prefixes and typedefs. */
    struct Index {
        std::string module;
        std::unordered_map<std::string, std::string> modules; /* by prefix; its own is "" as well */
        std::unordered_map<std::string, uint32_t> typedefs;   /* by "statement around:name" */
    };

    const Index &IndexOf(const QXYANG_FILE *file);
    std::optional<StatementRef> TopTypedef(const std::string &module, const std::string &name);

    const QY_CTX *schema_;
    std::map<const QXYANG_FILE *, Index> indexes_;
    std::map<std::string, std::unordered_map<std::string, StatementRef>> tops_; /* typedefs by module and name */
};

} // namespace inspect::diff
