#include "check/module_facts.h"

#include <map>
#include <string_view>

#include "model/module_search.h"
#include "model/statements.h"

namespace inspect {
namespace {

QXYANG_ORIGIN_S OriginAt(const QXYANG_ORIGIN_S &root, const QXYANG_STATEMENT_S &statement)
{
    QXYANG_ORIGIN_S origin = root;
    origin.uiStatement = statement.uiIndex;
    origin.stPlace = statement.stPlace;
    return origin;
}

/* Calls visit(prefix) for each prefix of a path's steps. */
template <class Visit>
void ForEachPrefix(std::string_view path, Visit visit)
{
    for (size_t begin = path.find('/'); begin != std::string_view::npos; begin = path.find('/', begin + 1)) {
        std::string_view step = path.substr(begin + 1, path.find('/', begin + 1) - begin - 1);
        size_t colon = step.find(':');
        if (colon != std::string_view::npos)
            visit(std::string(step.substr(0, colon)));
    }
}

/* Adds what the module's own file or one of a submodule says. */
void AddFile(const QXYANG_FILE *file, ModuleFacts *facts)
{
    std::map<std::string, std::string> modules; /* by prefix */
    QXYANG_STATEMENT_S root = StatementAt(file, 0);
    ForEachIn(file, root, [&](const QXYANG_STATEMENT_S &statement) {
        if (statement.pcArgument == nullptr)
            return;
        if (IsYang(statement, "import") || IsYang(statement, "include"))
            if (std::string revision = ArgumentIn(file, statement, "revision-date"); !revision.empty())
                facts->dated.insert(std::string(statement.pcArgument) + "@" + revision);
        if (IsYang(statement, "import")) {
            facts->imports.insert(statement.pcArgument);
            modules.emplace(ArgumentIn(file, statement, "prefix"), statement.pcArgument);
        } else if (IsYang(statement, "augment") || IsYang(statement, "deviation")) {
            ForEachPrefix(statement.pcArgument, [&](const std::string &prefix) {
                auto found = modules.find(prefix);
                if (found != modules.end())
                    facts->changes.insert(found->second);
            });
        }
    });
}

FileHeader HeaderOf(const QXYANG_FILE *file, const LoadedFile &loaded)
{
    QXYANG_STATEMENT_S root = StatementAt(file, 0);
    FileHeader header = {{file, loaded.path, loaded.name, root.uiIndex, root.stPlace}};
    ForEachIn(file, root, [&](const QXYANG_STATEMENT_S &statement) {
        if (statement.pcArgument != nullptr && IsYang(statement, "revision") &&
            statement.pcArgument > header.revision) {
            header.revision = statement.pcArgument;
            header.statement = OriginAt(header.root, statement);
        }
    });
    return header;
}

} // namespace

ModuleFacts FactsOf(const Instance &instance, QY_MOD *module)
{
    ModuleFacts facts;
    for (const LoadedFile &loaded : FilesOf(module)) {
        facts.submodules.emplace_back(loaded.name);
        const QXYANG_FILE *file = QXYANG_GetLoadedFile(instance.Schema(), loaded.name);
        if (file == nullptr)
            continue;
        AddFile(file, &facts);
        facts.headers.push_back(HeaderOf(file, loaded));
    }
    if (!facts.submodules.empty())
        facts.submodules.pop_back(); // the module's own file, which is the last
    return facts;
}

} // namespace inspect
