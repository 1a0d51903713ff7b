#include "base/temporary_folder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "base/failure.h"

namespace inspect {

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    if (!path_.empty())
        std::filesystem::remove_all(path_, ignored);
}

const std::filesystem::path &TemporaryFolder::Make()
{
    if (!path_.empty())
        return path_;
    const char *given = std::getenv("TMPDIR");
    std::filesystem::path around = given != nullptr && *given != '\0' ? given : "/tmp";
    std::string name = (around / "korv-inspect-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw Failure("no directory can be made in " + around.string() + ": " + std::strerror(errno), EXIT_NOT_LOADED);
    return path_ = name;
}

} // namespace inspect
