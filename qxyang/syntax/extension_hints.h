/* Finds the extension that somebody meant who wrote its keyword without a prefix. */
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "schema/context.h"
#include "syntax/statement.h"

namespace qxyang {

/* Serves one load. The modules that a file imports are not loaded while the file is parsed, so that their files are looked
 * into for extension statements, each once and only when a keyword is unknown. */
class ExtensionHints {
  public:
    ExtensionHints(QY_CTX &context, FileFinder &files) : context_(context), files_(files) {}

    /* "; did you mean 'prefix:name'?" when a module that the file imports so far has an extension of that name, or the file
     * itself has; else nothing. */
    std::string Hint(const Unit &unit, std::string_view name);

  private:
    bool Has(std::string_view module, std::string_view name);

    QY_CTX &context_;
    FileFinder &files_;
    std::map<std::string, std::vector<std::string>, std::less<>> extensions_; /* by module */
};

} // namespace qxyang
