#include "syntax/extension_hints.h"

#include <algorithm>

#include "base/text.h"
#include "syntax/statement_file.h"

namespace qxyang {

namespace {

std::vector<std::string> ExtensionsIn(const std::string &path)
{
    std::vector<std::string> names;
    QXYANG_FILE file(path, 0);
    if (!file.source.Read().empty())
        return names;
    ReadStatements(file);
    for (const QXYANG_STATEMENT_S &statement : file.statements)
        if (statement.uiLevel == 1 && statement.pcPrefix == nullptr && statement.pcArgument != nullptr &&
            std::string_view(statement.pcKeyword) == KeywordOf(Kw::Extension).name)
            names.emplace_back(statement.pcArgument);
    return names;
}

} // namespace

std::string ExtensionHints::Hint(const Unit &unit, std::string_view name)
{
    if (unit.root == nullptr || !IsIdentifier(name))
        return {};
    for (const Statement *statement = unit.root->first; statement != nullptr; statement = statement->next) {
        bool isImport = statement->keyword == Kw::Import && Has(statement->argument, name);
        bool isOwn = statement->keyword == Kw::Extension && statement->argument == name;
        if (!isImport && !isOwn)
            continue;
        const Statement *around = isImport ? statement : unit.root;
        if (const Statement *owner = FindChild(around, Kw::BelongsTo); owner != nullptr)
            around = owner;
        std::string_view prefix = ArgumentOf(around, Kw::Prefix);
        if (!prefix.empty())
            return PrefixHint(prefix, name);
    }
    return {};
}

bool ExtensionHints::Has(std::string_view module, std::string_view name)
{
    if (const QY_MOD *loaded = context_.PreferredModule(module))
        return loaded->extensionDefinitions.Find(name) != nullptr;
    auto known = extensions_.find(module);
    if (known == extensions_.end()) {
        std::vector<std::string> paths;
        if (IsIdentifier(module))
            paths = files_.Candidates(module, {});
        known =
            extensions_.emplace(module, paths.empty() ? std::vector<std::string>() : ExtensionsIn(paths.front())).first;
    }
    return std::find(known->second.begin(), known->second.end(), name) != known->second.end();
}

} // namespace qxyang
