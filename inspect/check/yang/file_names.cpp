#include "check/yang/file_names.h"

#include "model/statements.h"

namespace inspect {
namespace {

std::string KeyOf(const std::string &module, std::string_view name)
{
    return module + ":" + std::string(name);
}

FileNames ReadNames(const QXYANG_FILE *file)
{
    FileNames names;
    QXYANG_STATEMENT_S head = StatementAt(file, 0);
    if (head.pcArgument == nullptr)
        return names;
    names.module = head.pcArgument;
    if (IsYang(head, "module"))
        names.modules.emplace(ArgumentIn(file, head, "prefix"), names.module);
    ForEachIn(file, head, [&](const QXYANG_STATEMENT_S &statement) {
        if (statement.pcArgument == nullptr)
            return;
        if (IsYang(statement, "belongs-to"))
            names.module = statement.pcArgument;
        if (IsYang(statement, "belongs-to") || IsYang(statement, "import"))
            names.modules.emplace(ArgumentIn(file, statement, "prefix"), statement.pcArgument);
        if (IsYang(statement, "yang-version"))
            names.isVersion11 = std::string_view(statement.pcArgument) == "1.1";
    });
    return names;
}

} // namespace

PrefixedName SplitName(std::string_view text)
{
    size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return {"", text};
    return {text.substr(0, colon), text.substr(colon + 1)};
}

std::string FileNames::ModuleOf(std::string_view prefix) const
{
    if (prefix.empty())
        return module;
    auto found = modules.find(std::string(prefix));
    return found != modules.end() ? found->second : "";
}

const FileNames &FileNameTable::Of(const QXYANG_FILE *file)
{
    auto [entry, isNew] = files_.try_emplace(file);
    if (isNew)
        entry->second = ReadNames(file);
    return entry->second;
}

void Identities::AddIdentity(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &statement)
{
    const FileNames &names = files_->Of(file);
    Identity identity;
    ForEachIn(file, statement, [&](const QXYANG_STATEMENT_S &within) {
        if (IsYang(within, "base") && within.pcArgument != nullptr) {
            PrefixedName base = SplitName(within.pcArgument);
            identity.bases.push_back(KeyOf(names.ModuleOf(base.prefix), base.name));
        }
        identity.isConditional |= IsYang(within, "if-feature");
    });
    identities_.try_emplace(KeyOf(names.module, statement.pcArgument), std::move(identity));
}

/* Reads a module's or submodule's file and those that it includes. */
void Identities::ReadFile(const std::string &name)
{
    std::vector<std::string> rest = {name};
    while (!rest.empty()) {
        std::string next = std::move(rest.back());
        rest.pop_back();
        const QXYANG_FILE *file = read_.insert(next).second ? QXYANG_GetLoadedFile(schema_, next.c_str()) : nullptr;
        if (file == nullptr)
            continue;
        ForEachIn(file, StatementAt(file, 0), [&](const QXYANG_STATEMENT_S &statement) {
            if (statement.pcArgument == nullptr)
                return;
            if (IsYang(statement, "include"))
                rest.emplace_back(statement.pcArgument);
            if (IsYang(statement, "identity"))
                AddIdentity(file, statement);
        });
    }
}

const Identity *Identities::Find(const std::string &module, std::string_view name)
{
    ReadFile(module);
    auto found = identities_.find(KeyOf(module, name));
    return found != identities_.end() ? &found->second : nullptr;
}

bool Identities::IsDerived(const std::string &identity, const std::string &base)
{
    std::unordered_set<std::string> seen;
    std::vector<std::string> rest = {identity};
    while (!rest.empty()) {
        std::string at = std::move(rest.back());
        rest.pop_back();
        PrefixedName name = SplitName(at);
        const Identity *found = seen.insert(at).second ? Find(std::string(name.prefix), name.name) : nullptr;
        if (found == nullptr)
            continue;
        for (const std::string &above : found->bases) {
            if (above == base)
                return true;
            rest.push_back(above);
        }
    }
    return false;
}

} // namespace inspect
