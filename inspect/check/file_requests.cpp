#include "check/file_requests.h"

#include <filesystem>
#include <system_error>

#include "model/model_file.h"

namespace inspect {

void FileRequests::Read()
{
    for (const ModuleListing::Folder &folder : listing_.Folders())
        for (const std::string &name : folder.files) {
            std::error_code ignored;
            std::string path = (std::filesystem::path(folder.dir) / name).string();
            if (!std::filesystem::is_regular_file(path, ignored))
                continue;
            ModelFile file = ModelFile::Read(path, path);
            if (!file.HasRoot())
                continue;
            file.ForEachIn(file.Root(), [&](const QXYANG_STATEMENT_S &statement) {
                bool isInclude = IsYang(statement, "include");
                if (statement.pcArgument == nullptr || (!isInclude && !IsYang(statement, "import")))
                    return;
                if (isInclude)
                    includes_.insert(statement.pcArgument);
                revisions_.insert(std::string(statement.pcArgument) + "@" +
                                  file.ArgumentIn(statement, "revision-date"));
            });
        }
    isRead_ = true;
}

bool FileRequests::AskFor(const std::string &revision)
{
    if (!isRead_)
        Read();
    return revisions_.contains(revision);
}

bool FileRequests::Include(const std::string &submodule)
{
    if (!isRead_)
        Read();
    return includes_.contains(submodule);
}

} // namespace inspect
