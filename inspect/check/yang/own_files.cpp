#include "check/yang/own_files.h"

#include "model/module_search.h"

namespace inspect {

std::string_view ArgumentOf(const QXYANG_STATEMENT_S &statement)
{
    return statement.pcArgument != nullptr ? statement.pcArgument : "";
}

std::vector<OwnFile> OwnFilesOf(const QY_CTX *schema, const QY_MOD *module)
{
    FileNameTable names;
    std::vector<OwnFile> files;
    for (const auto &[name, path] : FilesOf(module))
        if (const QXYANG_FILE *file = QXYANG_GetLoadedFile(schema, name))
            files.push_back(
                {file, path, name, files.size(), IsYang(StatementAt(file, 0), "submodule"), names.Of(file)});
    return files;
}

} // namespace inspect
