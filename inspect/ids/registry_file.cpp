#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/failure.h"
#include "base/output_file.h"
#include "ids/registry.h"
#include "ids/registry_rules.h"

namespace inspect::ids {
namespace {

Failure CannotRead(const std::string &path)
{
    std::string why = errno != 0 ? std::string(": ") + std::strerror(errno) : "";
    std::error_code error;
    if (errno == ENOENT && !std::filesystem::is_symlink(path, error))
        why += " ('ids lock' makes it)";
    return Failure("cannot read the registry '" + path + "'" + why, EXIT_NOT_LOADED);
}

} // namespace

Registry LoadRegistry(const std::string &path, IfMissing ifMissing)
{
    std::error_code error;
    if (ifMissing == IfMissing::Empty &&
        std::filesystem::symlink_status(path, error).type() == std::filesystem::file_type::not_found)
        return {};
    errno = std::filesystem::is_directory(path, error) ? EISDIR : 0;
    if (errno != 0)
        throw CannotRead(path);
    std::ifstream stream(path, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (!stream.is_open() || stream.bad())
        throw CannotRead(path);
    return ReadRegistry(path, text);
}

void SaveRegistry(const std::string &path, const Registry &registry, const Registry &before)
{
    if (RegistryText(LoadRegistry(path, IfMissing::Empty)) != RegistryText(before))
        throw Failure("the registry '" + path + "' has changed since it was read: nothing is written");
    if (RegistryFault fault = FaultOf(registry); !fault.text.empty())
        throw Failure("the registry '" + path + "' would contradict itself: " + fault.text +
                      ": nothing is written (look at all modules that it has)");
    WriteOutputFile(path, RegistryText(registry));
}

} // namespace inspect::ids
