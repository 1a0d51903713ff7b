/* Prefixes of the modules that are loaded, however they came in. */
#pragma once

#include <qxyang.h>

#include <string>

namespace inspect {

class Prefixes {
  public:
    /* The context keeps details. */
    explicit Prefixes(const QY_CTX *schema) : schema_(schema) {}

    /* The prefix that the module gives itself, or its name. */
    std::string Of(const std::string &module) const;

    /* The module that a prefix means in the module's own file, or "". */
    std::string ModuleOf(const std::string &module, const std::string &prefix) const;

    /* The target of the module's augment whose steps have these names, without prefixes: as its own file writes it, or "". */
    std::string TargetOf(const std::string &module, const std::string &names) const;

  private:
    const QY_CTX *schema_;
};

} // namespace inspect
