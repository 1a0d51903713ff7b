#include "check/file_requests.h"

#include <filesystem>
#include <map>
#include <system_error>
#include <utility>
#include <vector>

#include "model/model_file.h"

namespace inspect {

void FileRequests::Read()
{
    std::map<std::string, std::vector<std::string>> includes; /* by submodule; "": those of modules */
    for (const ModuleListing::Folder &folder : listing_.Folders())
        for (const std::string &name : folder.files) {
            std::error_code ignored;
            std::string path = (std::filesystem::path(folder.dir) / name).string();
            if (!std::filesystem::is_regular_file(path, ignored))
                continue;
            ModelFile file = ModelFile::Read(path, path);
            if (!file.HasRoot())
                continue;
            QXYANG_STATEMENT_S root = file.Root();
            std::string submodule = IsYang(root, "submodule") && root.pcArgument != nullptr ? root.pcArgument : "";
            file.ForEachIn(root, [&](const QXYANG_STATEMENT_S &statement) {
                bool isInclude = IsYang(statement, "include");
                if (statement.pcArgument == nullptr || (!isInclude && !IsYang(statement, "import")))
                    return;
                if (isInclude)
                    includes[submodule].emplace_back(statement.pcArgument);
                revisions_.insert(std::string(statement.pcArgument) + "@" +
                                  file.ArgumentIn(statement, "revision-date"));
            });
        }
    for (std::vector<std::string> open = includes[""]; !open.empty();) {
        std::string submodule = std::move(open.back());
        open.pop_back();
        if (includes_.insert(submodule).second)
            open.insert(open.end(), includes[submodule].begin(), includes[submodule].end());
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
