/* What the types of leaves allow, in words. */
#pragma once

#include <qxyang.h>

#include <map>
#include <string>

#include "diff/type_reader.h"

namespace inspect {

struct TypeText {
    std::string written;                    /* as the leaf's statement has it: "et:percent" */
    std::string base;                       /* the built-in type at the end of typedefs and leafrefs */
    std::string limits;                     /* "0..100; leads to /sys/load", or "" */
    const diff::TypeModel *names = nullptr; /* the type whose names an enumeration or bits have, or null */
};

class TypeWords {
  public:
    TypeWords(const QY_CTX *schema, diff::FileNames *files, diff::Version *version) : types_(schema, files, version) {}

    TypeText Of(QY_NODE *leaf);

  private:
    const std::string &LimitsOf(const diff::TypeModel &type);

    diff::TypeReader types_;
    std::map<const diff::TypeModel *, std::string> limits_; /* types of many leaves are said once */
};

} // namespace inspect
