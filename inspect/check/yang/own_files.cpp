#include "check/yang/own_files.h"

namespace inspect {

std::string_view ArgumentOf(const QXYANG_STATEMENT_S &statement)
{
    return statement.pcArgument != nullptr ? statement.pcArgument : "";
}

std::vector<OwnFile> OwnFilesOf(const QY_CTX *schema, const QY_MOD *module)
{
    struct Cookie {
        const QY_CTX *schema;
        FileNameTable names;
        std::vector<OwnFile> files;
    } cookie = {schema, {}, {}};
    QXYANG_ScanModuleFiles(
        module,
        [](const char *name, const char *path, uint32_t, void *pvCookie) -> uint32_t {
            auto &own = *static_cast<Cookie *>(pvCookie);
            if (const QXYANG_FILE *file = QXYANG_GetLoadedFile(own.schema, name))
                own.files.push_back({file, path, name, own.files.size(), IsYang(StatementAt(file, 0), "submodule"),
                                     own.names.Of(file)});
            return 0;
        },
        &cookie);
    return std::move(cookie.files);
}

} // namespace inspect
