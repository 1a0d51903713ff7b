/* What the types of leaves allow, as records of the page's data. */
#pragma once

#include <map>
#include <string>
#include <tuple>

#include <korv_lib_yang.h>

#include "diff/type_reader.h"
#include "page/records.h"

namespace inspect::page {

/* "/m:sys/ports/port": the path of a node in data, with the module where it changes. */
std::string LinkPath(QY_NODE *node);

class TypeRecords {
  public:
    TypeRecords(const QY_CTX *schema, diff::FileNames *files, diff::Version *version, Tables *tables)
        : types_(schema, files, version), tables_(tables)
    {
    }

    /* The number of the record of the leaf's type. */
    uint32_t Of(const KorvTreeLeaf &leaf);

    diff::Definitions *Names() { return types_.Names(); }

  private:
    using Type = const diff::TypeModel *;

    uint32_t Record(const KorvTreeLeaf &leaf, const diff::LeafType &type, QY_NODE *target);
    uint32_t Member(Type type);
    void Describe(Type type, Remarks *record);

    diff::TypeReader types_;
    Tables *tables_;
    std::map<std::tuple<const char *, Type, Type, QY_NODE *>, uint32_t> known_;
};

} // namespace inspect::page
