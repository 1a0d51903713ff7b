/* What the command line asks for. */
#ifndef KORV_INSPECT_ARGUMENTS_H
#define KORV_INSPECT_ARGUMENTS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace inspect {

enum class Format {
    TEXT,
    JSON,
    CSV,
    DOT,
};

/* "MODULE" or "MODULE@REVISION". The revision, "" for none, is part of the key under which the library registers the
 * module; it does not choose a file. */
struct ModuleKey {
    std::string name;
    std::string revision;
};

/* Where module files are found: the library's two base directories, in the order searched, and whatever comes after. */
struct SearchDirs {
    std::vector<std::string> base;
    std::vector<std::string> install;
};

struct Arguments;
using Command = int (*)(const Arguments &);

struct Arguments {
    Command command = nullptr;
    std::vector<ModuleKey> modules;
    std::vector<ModuleKey> loads; /* loaded before the modules, in order */
    SearchDirs dirs;
    std::vector<std::string> oldDirs; /* diff */
    std::vector<std::string> newDirs;
    std::string path;
    uint32_t depth = 0; /* levels of nodes to show, 0: all */
    std::optional<uint32_t> augment;
    bool self = false;
    bool full = false;
    bool all = false;
    bool verbose = false;
    Format format = Format::TEXT;
};

/* Reads the command line. A value is the exit code of a run that is over: help was asked for, or the usage is wrong, and
 * it has been printed. */
std::optional<int> ParseArguments(int argc, char **argv, Arguments *args);

} // namespace inspect

#endif // KORV_INSPECT_ARGUMENTS_H
