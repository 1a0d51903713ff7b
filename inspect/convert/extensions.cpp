#include "convert/extensions.h"

#include <algorithm>

namespace inspect {

Extensions::Extensions(const ModelFile &file, std::vector<std::string> dirs) : dirs_(std::move(dirs))
{
    const char *name = file.Root().pcArgument;
    own_ = name != nullptr ? name : "";
    ReadPrefixes(file);
    modules_.emplace(own_, Describe(file));
}

void Extensions::ReadPrefixes(const ModelFile &file)
{
    file.ForEachIn(file.Root(), [&](const QXYANG_STATEMENT_S &statement) {
        if (statement.pcPrefix != nullptr || statement.pcArgument == nullptr)
            return;
        if (IsYang(statement, "prefix")) {
            prefixes_.emplace_back(statement.pcArgument, own_);
        } else if (IsYang(statement, "import") || IsYang(statement, "belongs-to") || IsYang(statement, "include")) {
            if (IsYang(statement, "belongs-to"))
                belongsTo_ = statement.pcArgument;
            if (!IsYang(statement, "include"))
                prefixes_.emplace_back(file.ArgumentIn(statement, "prefix"), statement.pcArgument);
            revisions_.emplace(statement.pcArgument, file.ArgumentIn(statement, "revision-date"));
        }
    });
}

Extensions::Module Extensions::Describe(const ModelFile &file)
{
    Module module;
    file.ForEachIn(file.Root(), [&](const QXYANG_STATEMENT_S &statement) {
        if (statement.pcPrefix != nullptr || statement.pcArgument == nullptr)
            return;
        if (IsYang(statement, "namespace"))
            module.space = statement.pcArgument;
        else if (IsYang(statement, "include"))
            module.submodules.emplace_back(statement.pcArgument);
        if (!IsYang(statement, "extension"))
            return;
        Extension extension;
        file.ForEachIn(statement, [&](const QXYANG_STATEMENT_S &part) {
            if (!IsYang(part, "argument") || part.pcArgument == nullptr)
                return;
            extension.argument = part.pcArgument;
            extension.inElement = file.ArgumentIn(part, "yin-element") == "true";
        });
        module.extensions.emplace(statement.pcArgument, extension);
    });
    return module;
}

/* The first file that is well formed, is of that name and, when a revision is wanted, has it. */
std::optional<Extensions::Module> Extensions::ReadFirst(const std::string &name, const std::string &revision) const
{
    std::vector<const char *> dirs;
    for (const std::string &dir : dirs_)
        dirs.push_back(dir.c_str());
    std::vector<std::string> paths;
    QXYANG_ScanModulePaths(
        dirs.data(), static_cast<uint32_t>(dirs.size()), name.c_str(), revision.empty() ? nullptr : revision.c_str(),
        [](const char *path, void *cookie) -> uint32_t {
            static_cast<std::vector<std::string> *>(cookie)->emplace_back(path);
            return 0;
        },
        &paths);
    for (const std::string &path : paths) {
        ModelFile file = ModelFile::Read(path, path);
        if (!file.Faults().empty() || file.Root().pcArgument != name)
            continue;
        bool isWanted = revision.empty();
        file.ForEachIn(file.Root(), [&](const QXYANG_STATEMENT_S &statement) {
            isWanted = isWanted || (IsYang(statement, "revision") && statement.pcArgument != nullptr &&
                                    revision == statement.pcArgument);
        });
        if (isWanted)
            return Describe(file);
    }
    return std::nullopt;
}

const Extensions::Module *Extensions::Load(const std::string &name)
{
    auto known = modules_.find(name);
    if (known == modules_.end()) {
        auto revision = revisions_.find(name);
        known = modules_.emplace(name, ReadFirst(name, revision != revisions_.end() ? revision->second : "")).first;
    }
    return known->second ? &*known->second : nullptr;
}

std::string Extensions::NamespaceOf(const std::string &module)
{
    const Module *found = Load(module);
    return found != nullptr ? found->space : "";
}

const ExtensionHome &Extensions::HomeOf(const QXYANG_STATEMENT_S &statement)
{
    std::pair<std::string, std::string> key = {statement.pcNamespace != nullptr ? statement.pcNamespace : "",
                                               statement.pcPrefix};
    auto known = homes_.find(key);
    if (known == homes_.end())
        known = homes_.emplace(key, FindHome(statement)).first;
    return known->second;
}

/* Several imports may be of one module: the one that has the element's own prefix counts, else the first. */
ExtensionHome Extensions::FindHome(const QXYANG_STATEMENT_S &statement)
{
    std::string told = statement.pcModule != nullptr ? statement.pcModule : "";
    if (statement.pcNamespace == nullptr)
        return {told, statement.pcPrefix};
    std::string space = statement.pcNamespace;
    ExtensionHome home;
    auto look = [&](auto &&isMeant) {
        for (const auto &[prefix, module] : prefixes_)
            if (isMeant(module) && (home.prefix.empty() || prefix == statement.pcPrefix))
                home = {module, prefix};
    };
    if (!space.empty())
        look([&](const std::string &module) { return NamespaceOf(module) == space; });
    if (home.prefix.empty() && !told.empty())
        look([&](const std::string &module) { return module == told && NamespaceOf(module).empty(); });
    return home;
}

const Extension *Extensions::Find(const std::string &module, const std::string &name)
{
    std::vector<std::string> names = {module}; // the module, then its submodules, each of which may include others
    if (module == belongsTo_)
        names.push_back(own_);
    for (size_t i = 0; i < names.size(); ++i) {
        const Module *found = Load(names[i]);
        if (found == nullptr)
            continue;
        if (const auto extension = found->extensions.find(name); extension != found->extensions.end())
            return &extension->second;
        for (const std::string &submodule : found->submodules)
            if (std::find(names.begin(), names.end(), submodule) == names.end())
                names.push_back(submodule);
    }
    return nullptr;
}

} // namespace inspect
