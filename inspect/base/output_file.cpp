#include "base/output_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "base/failure.h"

namespace inspect {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string &path, int error)
{
    throw BrokenRun("cannot write '" + path + "': " + std::strerror(error));
}

bool WriteAll(FILE *file, const std::string &text)
{
    bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    int error = errno;
    if (std::fclose(file) != 0)
        return false;
    errno = error;
    return written;
}

/* What a new file gets, or the one that is there has. */
mode_t ModeFor(const std::string &path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) == 0)
        return status.st_mode & 07777;
    mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

void WriteDirectly(const std::string &path, const std::string &text)
{
    FILE *file = std::fopen(path.c_str(), "wb");
    if (file == nullptr || !WriteAll(file, text))
        Fail(path, errno);
}

} // namespace

void WriteOutputFile(const std::string &path, const std::string &text)
{
    std::error_code error;
    if (fs::exists(path, error) && !fs::is_regular_file(path, error))
        return WriteDirectly(path, text);
    fs::path resolved = fs::weakly_canonical(path, error); // a link stays a link
    std::string target = error ? path : resolved.string();
    std::string fresh = target + ".XXXXXX";
    int descriptor = ::mkstemp(fresh.data());
    if (descriptor < 0)
        Fail(path, errno);
    FILE *file = ::fdopen(descriptor, "wb");
    bool written = file != nullptr && ::fchmod(descriptor, ModeFor(target)) == 0;
    if (file == nullptr)
        ::close(descriptor);
    if (!written && file != nullptr)
        std::fclose(file);
    if (written && WriteAll(file, text) && std::rename(fresh.c_str(), target.c_str()) == 0)
        return;
    int why = errno;
    std::remove(fresh.c_str());
    Fail(path, why);
}

} // namespace inspect
