#include "ids/assign/type_table.h"

#include <qxyang.h>

#include <algorithm>
#include <array>
#include <new>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "model/schema_scan.h"
#include "model/statements.h"

namespace inspect::ids {
namespace {

/* By QY_TYPE_ value. */
constexpr std::array<const char *, 20> NAMES = {
    "",       "binary", "bits",  "boolean", "decimal64", "empty",  "enumeration", "identityref", "instance-identifier",
    "int8",   "int16",  "int32", "int64",   "leafref",   "string", "uint8",       "uint16",      "uint32",
    "uint64", "union"};

constexpr std::array<uint32_t, 8> WITHOUT_DATATYPE = {QY_TYPE_BINARY,  QY_TYPE_BITS,        QY_TYPE_DECIMAL64,
                                                      QY_TYPE_EMPTY,   QY_TYPE_IDENTITYREF, QY_TYPE_INSTANCE_IDENTIFIER,
                                                      QY_TYPE_LEAFREF, QY_TYPE_UNION};

uint32_t BaseOf(QY_NODE *leaf)
{
    QY_TYPE *type = FinalType(leaf);
    uint32_t base = type != nullptr ? QY_TYPE_GetBuiltInBaseType(type) : uint32_t{QY_TYPE_LEAFREF};
    return base < NAMES.size() ? base : uint32_t{QY_TYPE_LEAFREF};
}

uint32_t AddTypedef(const QXYANG_ORIGIN_S *origin, void *names)
try {
    if (origin->pstFile == nullptr)
        return 0;
    QXYANG_STATEMENT_S root = StatementAt(origin->pstFile, 0);
    std::string module = IsYang(root, "submodule") ? ArgumentIn(origin->pstFile, root, "belongs-to") : origin->pcModule;
    const char *name = StatementAt(origin->pstFile, origin->uiStatement).pcArgument;
    static_cast<std::vector<std::string> *>(names)->push_back(module + ":" + (name != nullptr ? name : ""));
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

} // namespace

std::string TypeNameOf(QY_NODE *leaf)
{
    return NAMES[BaseOf(leaf)];
}

std::optional<std::string> DatatypeFor(QY_NODE *leaf, const std::map<std::string, std::string> &table)
{
    uint32_t base = BaseOf(leaf);
    if (std::find(WITHOUT_DATATYPE.begin(), WITHOUT_DATATYPE.end(), base) == WITHOUT_DATATYPE.end())
        return "";
    std::vector<std::string> names;
    QY_NODE *end = LeafrefEnd(leaf);
    for (QY_NODE *node : {leaf, end != leaf ? end : nullptr})
        if (node != nullptr && QXYANG_ScanNodeTypedefs(node, AddTypedef, &names) != 0)
            throw std::bad_alloc();
    names.emplace_back(NAMES[base]);
    for (const std::string &name : names)
        if (auto entry = table.find(name); entry != table.end())
            return entry->second;
    return std::nullopt;
}

std::string TypeFault(const ModelSet &models, const std::string &type)
{
    size_t colon = type.find(':');
    std::string word = type.substr(0, colon);
    std::string name = colon != std::string::npos ? type.substr(colon + 1) : "";
    for (const LoadedModule &module : models.Modules()) {
        if (colon == std::string::npos || module.files.empty())
            continue;
        const QXYANG_FILE *own = module.files.back().file;
        if (module.name != word && ArgumentIn(own, StatementAt(own, 0), "prefix") == word && module.isWanted)
            return "the prefix '" + word + "' is that of module '" + module.name + "': write '" + module.name + ":" +
                   name + "'";
        if (module.name != word)
            continue;
        NearestName nearest(name);
        QXYANG_STATEMENT_S statement = {};
        for (const SourceFile &source : module.files)
            for (uint32_t i = 0; QXYANG_GetStatement(source.file, i, &statement) == 0; ++i)
                if (IsYang(statement, "typedef") && statement.pcArgument != nullptr) {
                    if (name == statement.pcArgument)
                        return "";
                    nearest.Offer(statement.pcArgument);
                }
        return "module '" + word + "' has no such typedef" + nearest.Hint();
    }
    return "";
}

bool IsTableType(const std::string &word)
{
    return word.find(':') != std::string::npos || std::any_of(WITHOUT_DATATYPE.begin(), WITHOUT_DATATYPE.end(),
                                                              [&](uint32_t type) { return word == NAMES[type]; });
}

} // namespace inspect::ids
