#include "check/yang/own_files.h"

#include <new>

namespace inspect {
namespace {

void ReadHead(OwnFile *own)
{
    QXYANG_STATEMENT_S root = StatementAt(own->file, 0);
    own->isSubmodule = IsYang(root, "submodule");
    own->isVersion11 = ArgumentIn(own->file, root, "yang-version") == "1.1";
    ForEachIn(own->file, root, [own](const QXYANG_STATEMENT_S &statement) {
        if (IsYang(statement, "prefix"))
            own->prefix = ArgumentOf(statement);
        else if (IsYang(statement, "belongs-to"))
            own->prefix = ArgumentIn(own->file, statement, "prefix");
        else if (IsYang(statement, "import"))
            own->prefixes.insert(ArgumentIn(own->file, statement, "prefix"));
    });
    own->prefixes.insert(own->prefix);
}

} // namespace

std::string_view ArgumentOf(const QXYANG_STATEMENT_S &statement)
{
    return statement.pcArgument != nullptr ? statement.pcArgument : "";
}

std::vector<OwnFile> OwnFilesOf(const QY_CTX *schema, const QY_MOD *module)
{
    struct Cookie {
        const QY_CTX *schema;
        std::vector<OwnFile> files;
    } cookie = {schema, {}};
    QXYANG_ScanModuleFiles(
        module,
        [](const char *name, const char *path, uint32_t, void *pvCookie) -> uint32_t {
            auto &files = static_cast<Cookie *>(pvCookie)->files;
            const QXYANG_FILE *file = QXYANG_GetLoadedFile(static_cast<Cookie *>(pvCookie)->schema, name);
            if (file != nullptr)
                files.push_back({file, path, name, files.size()});
            return 0;
        },
        &cookie);
    for (OwnFile &file : cookie.files)
        ReadHead(&file);
    return std::move(cookie.files);
}

} // namespace inspect
