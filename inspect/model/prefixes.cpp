#include "model/prefixes.h"

#include "model/path_finder.h"
#include "model/statements.h"

namespace inspect {

std::string Prefixes::Of(const std::string &module) const
{
    const QXYANG_FILE *file = QXYANG_GetLoadedFile(schema_, module.c_str());
    return file != nullptr ? ArgumentIn(file, StatementAt(file, 0), "prefix") : module;
}

std::string Prefixes::ModuleOf(const std::string &module, const std::string &prefix) const
{
    const QXYANG_FILE *file = QXYANG_GetLoadedFile(schema_, module.c_str());
    if (file == nullptr)
        return "";
    std::string found = Of(module) == prefix ? module : "";
    ForEachIn(file, StatementAt(file, 0), [&](const QXYANG_STATEMENT_S &statement) {
        if (found.empty() && IsYang(statement, "import") && ArgumentIn(file, statement, "prefix") == prefix)
            found = statement.pcArgument;
    });
    return found;
}

std::string Prefixes::TargetOf(const std::string &module, const std::string &names) const
{
    std::string found;
    if (const QXYANG_FILE *file = QXYANG_GetLoadedFile(schema_, module.c_str()))
        ForEachIn(file, StatementAt(file, 0), [&](const QXYANG_STATEMENT_S &statement) {
            if (found.empty() && IsYang(statement, "augment") && BareNames(statement.pcArgument) == names)
                found = statement.pcArgument;
        });
    return found;
}

} // namespace inspect
