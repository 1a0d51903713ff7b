#include "check/yang/definitions.h"

#include <algorithm>
#include <functional>

namespace inspect {
namespace {

constexpr uint64_t TOP = UINT64_MAX;
constexpr int MAX_TYPEDEFS = 128; /* longer chains are not loaded */

std::optional<DefinitionKind> KindOf(std::string_view keyword)
{
    if (keyword == "typedef")
        return DefinitionKind::Typedef;
    if (keyword == "grouping")
        return DefinitionKind::Grouping;
    if (keyword == "identity")
        return DefinitionKind::Identity;
    if (keyword == "feature")
        return DefinitionKind::Feature;
    return std::nullopt;
}

uint8_t StatusNamed(std::string_view name)
{
    return name == "obsolete"     ? QXYANG_STATUS_OBSOLETE
           : name == "deprecated" ? QXYANG_STATUS_DEPRECATED
                                  : QXYANG_STATUS_CURRENT;
}

} // namespace

size_t Definitions::KeyHash::operator()(const Key &key) const
{
    return std::hash<std::string_view>()(key.name) * 31 +
           std::hash<uint64_t>()(key.scope * 4 + static_cast<uint64_t>(key.kind));
}

uint64_t Definitions::ScopeOf(const OwnFile &file, uint32_t around)
{
    return around == 0 ? TOP : uint64_t{file.number} << 32 | around;
}

Definitions::Definitions(const std::vector<OwnFile> &files) : statuses_(files.size())
{
    for (const OwnFile &file : files)
        Read(file);
}

void Definitions::Read(const OwnFile &file)
{
    std::vector<uint8_t> &statuses = statuses_[file.number];
    ForEachStatement(file.file, [&](const QXYANG_STATEMENT_S &statement) {
        statuses.resize(statement.uiIndex + 1);
        std::string_view keyword = statement.pcKeyword;
        if (keyword == "status" && statement.uiParent != QXYANG_NO_STATEMENT)
            statuses[statement.uiParent] = StatusNamed(ArgumentOf(statement));
        else if (std::optional<DefinitionKind> kind = KindOf(keyword))
            definitions_.try_emplace({ScopeOf(file, statement.uiParent), *kind, ArgumentOf(statement)},
                                     Definition{&file, statement.uiIndex});
    });
    ForEachStatement(file.file, [&](const QXYANG_STATEMENT_S &statement) {
        if (statement.uiParent != QXYANG_NO_STATEMENT)
            statuses[statement.uiIndex] = std::max(statuses[statement.uiIndex], statuses[statement.uiParent]);
    });
}

std::optional<Definition> Definitions::Find(DefinitionKind kind, const OwnFile &file, const QXYANG_STATEMENT_S &from,
                                            std::string_view reference) const
{
    PrefixedName wanted = SplitName(reference);
    if (file.names.ModuleOf(wanted.prefix) != file.names.module)
        return std::nullopt;
    bool mayBeNested = kind == DefinitionKind::Typedef || kind == DefinitionKind::Grouping;
    for (uint32_t around = mayBeNested ? from.uiParent : 0;; around = StatementAt(file.file, around).uiParent) {
        auto found = definitions_.find({ScopeOf(file, around), kind, wanted.name});
        if (found != definitions_.end())
            return found->second;
        if (around == 0 || around == QXYANG_NO_STATEMENT)
            return std::nullopt;
    }
}

uint32_t Definitions::StatusOf(const OwnFile &file, uint32_t statement) const
{
    return statuses_[file.number][statement];
}

std::string_view Definitions::BuiltinOf(const OwnFile &file, const QXYANG_STATEMENT_S &type) const
{
    const OwnFile *in = &file;
    QXYANG_STATEMENT_S last = type;
    for (int i = 0; i <= MAX_TYPEDEFS; ++i) {
        std::optional<Definition> definition = Find(DefinitionKind::Typedef, *in, last, ArgumentOf(last));
        if (!definition)
            break;
        in = definition->file;
        ForEachIn(in->file, StatementAt(in->file, definition->statement), [&last](const QXYANG_STATEMENT_S &statement) {
            if (IsYang(statement, "type"))
                last = statement;
        });
    }
    return ArgumentOf(last);
}

} // namespace inspect
