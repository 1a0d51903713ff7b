#include "diff/definitions.h"

#include <algorithm>
#include <set>

#include "model/statements.h"

namespace inspect::diff {
namespace {

constexpr std::string_view BUILT_IN_TYPES[] = {
    "binary", "bits",   "boolean", "decimal64", "empty",   "enumeration", "identityref", "instance-identifier",
    "int8",   "int16",  "int32",   "int64",     "leafref", "string",      "uint8",       "uint16",
    "uint32", "uint64", "union",
};

std::string KeyOf(uint32_t around, std::string_view name)
{
    return std::to_string(around).append(":").append(name);
}

/* Calls visit(statement) for every statement of the file. */
template <class Visit>
void ForEachOf(const QXYANG_FILE *file, Visit visit)
{
    QXYANG_STATEMENT_S statement = {};
    for (uint32_t i = 0; QXYANG_GetStatement(file, i, &statement) == 0; ++i)
        visit(statement);
}

} // namespace

const Definitions::Index &Definitions::IndexOf(const QXYANG_FILE *file)
{
    auto [entry, isNew] = indexes_.try_emplace(file);
    Index &index = entry->second;
    if (!isNew)
        return index;
    QXYANG_STATEMENT_S root = StatementAt(file, 0);
    index.module = root.pcArgument != nullptr ? root.pcArgument : "";
    index.modules[ArgumentIn(file, root, "prefix")] = index.module;
    ForEachIn(file, root, [&](const QXYANG_STATEMENT_S &statement) {
        if (statement.pcArgument == nullptr)
            return;
        if (IsYang(statement, "belongs-to"))
            index.module = statement.pcArgument;
        if (IsYang(statement, "belongs-to") || IsYang(statement, "import"))
            index.modules[ArgumentIn(file, statement, "prefix")] = statement.pcArgument;
    });
    index.modules[""] = index.module;
    ForEachOf(file, [&index](const QXYANG_STATEMENT_S &statement) {
        if (IsYang(statement, "typedef") && statement.pcArgument != nullptr)
            index.typedefs.emplace(KeyOf(statement.uiParent, statement.pcArgument), statement.uiIndex);
    });
    return index;
}

std::vector<const QXYANG_FILE *> Definitions::FilesOf(const std::string &module)
{
    std::vector<const QXYANG_FILE *> files;
    std::vector<std::string> wanted = {module};
    std::set<std::string> seen = {module};
    for (size_t i = 0; i < wanted.size(); ++i) {
        const QXYANG_FILE *file = QXYANG_GetLoadedFile(schema_, wanted[i].c_str());
        if (file == nullptr)
            continue;
        files.push_back(file);
        ForEachIn(file, StatementAt(file, 0), [&](const QXYANG_STATEMENT_S &statement) {
            if (IsYang(statement, "include") && seen.insert(statement.pcArgument).second)
                wanted.emplace_back(statement.pcArgument);
        });
    }
    return files;
}

std::optional<StatementRef> Definitions::TopTypedef(const std::string &module, const std::string &name)
{
    auto [entry, isNew] = tops_.try_emplace(module);
    auto &typedefs = entry->second;
    if (isNew)
        for (const QXYANG_FILE *file : FilesOf(module))
            ForEachIn(file, StatementAt(file, 0), [&](const QXYANG_STATEMENT_S &statement) {
                if (IsYang(statement, "typedef") && statement.pcArgument != nullptr)
                    typedefs.emplace(statement.pcArgument, StatementRef{file, statement.uiIndex});
            });
    auto found = typedefs.find(name);
    return found != typedefs.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<StatementRef> Definitions::TypedefOf(const StatementRef &type)
{
    QXYANG_STATEMENT_S statement = StatementAt(type.file, type.index);
    std::string name = statement.pcArgument != nullptr ? statement.pcArgument : "";
    if (std::find(std::begin(BUILT_IN_TYPES), std::end(BUILT_IN_TYPES), name) != std::end(BUILT_IN_TYPES))
        return std::nullopt;
    const Index &index = IndexOf(type.file);
    size_t colon = name.find(':');
    std::string prefix = colon != std::string::npos ? name.substr(0, colon) : "";
    std::string bare = colon != std::string::npos ? name.substr(colon + 1) : name;
    auto module = index.modules.find(prefix);
    if (module == index.modules.end())
        return std::nullopt;
    if (module->second != index.module)
        return TopTypedef(module->second, bare);
    for (uint32_t around = statement.uiParent; around != QXYANG_NO_STATEMENT;
         around = StatementAt(type.file, around).uiParent) {
        auto found = index.typedefs.find(KeyOf(around, bare));
        if (found != index.typedefs.end())
            return StatementRef{type.file, found->second};
    }
    return TopTypedef(index.module, bare);
}

std::string Definitions::Qualified(const QXYANG_FILE *file, std::string_view name)
{
    const Index &index = IndexOf(file);
    size_t colon = name.find(':');
    std::string prefix(colon != std::string_view::npos ? name.substr(0, colon) : "");
    auto module = index.modules.find(prefix);
    if (module == index.modules.end())
        return std::string(name);
    return module->second + ":" + std::string(colon != std::string_view::npos ? name.substr(colon + 1) : name);
}

} // namespace inspect::diff
