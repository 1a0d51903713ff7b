/* Finds the extension that is meant by a keyword without a prefix. */
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "schema/context.h"
#include "syntax/statement.h"

namespace qxyang {

/* Made for one load. The modules that a file imports are not loaded yet while the file is parsed, so their files are
 * searched for extension statements: each file once, and only if a keyword is unknown. */
class ExtensionHints {
  public:
    ExtensionHints(QY_CTX &context, FileFinder &files) : context_(context), files_(files) {}

    /* "; did you mean 'prefix:name'?" if the file, or a module that it has imported so far, has an extension of that
     * name; otherwise an empty text. */
    std::string Hint(const Unit &unit, std::string_view name);

  private:
    bool Has(std::string_view module, std::string_view name);

    QY_CTX &context_;
    FileFinder &files_;
    std::map<std::string, std::vector<std::string>, std::less<>> extensions_; /* by module */
};

} // namespace qxyang
