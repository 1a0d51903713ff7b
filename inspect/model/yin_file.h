/* The statements of one YIN file with their lines. The schema library reads the models; this reading serves what the
 * library does not tell: prefixes, and where a statement stands. */
#ifndef KORV_INSPECT_YIN_FILE_H
#define KORV_INSPECT_YIN_FILE_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

struct YinStatement {
    std::string_view keyword;  /* without prefix; empty for statements of other namespaces */
    std::string_view argument; /* of the first attribute, as written */
    uint32_t line;
    const YinStatement *parent; /* null for the module itself */
    std::vector<const YinStatement *> children;

    bool Is(std::string_view wanted) const { return keyword == wanted; }
};

class YinFile {
  public:
    /* Null when the file cannot be read, is no regular one or beyond the schema library's limits, or is not well-formed
     * XML in an encoding that extends ASCII, or no module or submodule in the YIN namespace. */
    static std::unique_ptr<YinFile> Read(const std::string &path);

    const std::string &Path() const { return path_; }
    const YinStatement &Module() const { return *statements_.front(); }
    bool IsSubmodule() const { return Module().Is("submodule"); }

    /* The module's own prefix; of a submodule, its module's. Empty when there is none. */
    std::string_view Prefix() const;

    /* The module that a prefix of this file means, or "". */
    std::string_view ModuleOfPrefix(std::string_view prefix) const;

  private:
    friend class YinReader;

    std::string path_;
    std::string text_;
    std::vector<std::unique_ptr<YinStatement>> statements_; /* in document order */
};

/* Argument of the first child with this keyword, or "". */
std::string_view ChildArgument(const YinStatement &statement, std::string_view keyword);

} // namespace inspect

#endif // KORV_INSPECT_YIN_FILE_H
