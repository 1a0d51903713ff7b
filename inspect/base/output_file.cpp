#include "base/output_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

#include "base/failure.h"

namespace inspect {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string &shown, int error)
{
    throw BrokenRun("cannot write '" + shown + "': " + std::strerror(error));
}

/* Nonzero: an errno value. */
int WriteAll(FILE *file, const std::function<void(FILE *)> &print)
{
    errno = 0;
    print(file);
    int error = std::ferror(file) != 0 ? errno : 0;
    if (std::fclose(file) != 0 && error == 0)
        error = errno;
    return error;
}

std::function<void(FILE *)> Printing(const std::string &text)
{
    return [&text](FILE *file) { (void)std::fwrite(text.data(), 1, text.size(), file); };
}

/* The mode that a new file gets. */
mode_t DefaultMode()
{
    mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

void WriteDirectly(const std::string &path, const std::string &text)
{
    FILE *file = std::fopen(path.c_str(), "wb");
    int error = file == nullptr ? errno : WriteAll(file, Printing(text));
    if (error != 0)
        Fail(path, error);
}

std::string Resolved(const std::string &path)
{
    std::error_code error;
    fs::path resolved = fs::weakly_canonical(path, error); /* a link stays a link */
    return error ? path : resolved.string();
}

} // namespace

NewFile::NewFile(const std::string &path, std::string shown) : path_(Resolved(path)), shown_(std::move(shown)) {}

NewFile::NewFile(NewFile &&other) noexcept
    : path_(std::move(other.path_)), shown_(std::move(other.shown_)), name_(std::exchange(other.name_, ""))
{
}

NewFile::~NewFile()
{
    if (!name_.empty())
        std::remove(name_.c_str());
}

void NewFile::Write(const std::function<void(FILE *)> &print)
{
    struct stat status = {};
    bool isThere = ::stat(path_.c_str(), &status) == 0;
    if (isThere && ::access(path_.c_str(), W_OK) != 0) /* a new one in its place would go round that */
        Fail(shown_, errno);
    std::string name = path_ + ".XXXXXX";
    int descriptor = ::mkstemp(name.data());
    if (descriptor < 0)
        Fail(shown_, errno);
    name_ = name;
    FILE *file = ::fdopen(descriptor, "wb");
    if (file == nullptr) {
        int error = errno;
        ::close(descriptor);
        Fail(shown_, error);
    }
    if (isThere && ::fchown(descriptor, status.st_uid, status.st_gid) != 0)
        errno = 0; /* whoever is not its owner becomes it */
    (void)::fchmod(descriptor, isThere ? status.st_mode & 07777 : DefaultMode());
    if (int error = WriteAll(file, print); error != 0)
        Fail(shown_, error);
}

void NewFile::TakeName()
{
    if (std::rename(name_.c_str(), path_.c_str()) != 0)
        Fail(shown_, errno);
    name_.clear();
}

void WriteOutputFile(const std::string &path, const std::string &text)
{
    std::error_code error;
    if (fs::exists(path, error) && !fs::is_regular_file(path, error))
        return WriteDirectly(path, text);
    NewFile file(path, path);
    file.Write(Printing(text));
    file.TakeName();
}

} // namespace inspect
