#include "check/file_rules.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "model/instance.h"
#include "model/module_search.h"

namespace inspect {
namespace {

/* Modules whose names contain one of these are loaded together with a deviation module. */
constexpr std::array<std::string_view, 4> DEVIATED = {"quelvo-bras-dhcp-access", "quelvo-bras-dhcpv6-access",
                                                      "quelvo-bras-pppox-access", "quelvo-bras-user-manage"};
constexpr std::string_view DEVIATIONS = "-deviations";
constexpr std::string_view PASSED_OVER = "-vs-";
constexpr size_t DEVIATION_DIRS = 2; /* in which a device looks for deviation files */

bool IsDeviated(std::string_view module)
{
    return std::any_of(DEVIATED.begin(), DEVIATED.end(),
                       [module](std::string_view name) { return module.find(name) != std::string_view::npos; });
}

std::string InFolder(const std::string &dir, const std::string &file)
{
    return dir == "." ? file : (std::filesystem::path(dir) / file).string();
}

std::string FolderOf(const std::string &path)
{
    return std::filesystem::path(path).parent_path().string();
}

bool IsFile(const std::string &path)
{
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

bool IsDate(std::string_view text)
{
    constexpr std::string_view FORM = "dddd-dd-dd";
    return std::equal(text.begin(), text.end(), FORM.begin(), FORM.end(),
                      [](char left, char form) { return form == 'd' ? left >= '0' && left <= '9' : left == form; });
}

bool IsYin(std::string_view file)
{
    return file.ends_with(".yin");
}

} // namespace

FileRules::FileRules(const SearchDirs &dirs, const ModuleListing &listing) : dirs_(dirs), listing_(listing)
{
    std::set<std::string> known;
    for (size_t i = 0; i < listing.Folders().size(); ++i) {
        const ModuleListing::Folder &folder = listing.Folders()[i];
        std::error_code error;
        std::string place = std::filesystem::weakly_canonical(folder.dir, error).string();
        if (!known.insert(error ? folder.dir : place).second)
            continue;
        for (const std::string &name : folder.files) {
            std::string stem = name.substr(0, name.rfind('.'));
            files_.push_back({i, name, InFolder(folder.dir, name), stem.substr(0, stem.find('@')), stem});
        }
    }
    FindDeviations();
}

/* The name of the file that a device loads with the module, or "". */
std::string FileRules::FirstDeviation(const std::string &base) const
{
    std::string beginning = base + std::string(DEVIATIONS);
    for (const File &file : files_)
        if (file.folder < DEVIATION_DIRS && file.name.starts_with(beginning) && IsYin(file.name) &&
            file.name.find(PASSED_OVER) == std::string::npos && IsFile(file.shown))
            return file.shown;
    return "";
}

void FileRules::FindDeviations()
{
    std::map<std::string, std::string> taken; /* by base */
    for (const File &file : files_) {
        size_t end = file.name.find(DEVIATIONS);
        std::string base = file.name.substr(0, end);
        if (end == std::string::npos || !IsDeviated(base))
            continue;
        auto [entry, isNew] = taken.try_emplace(base);
        if (isNew)
            entry->second = FirstDeviation(base);
        CheckDeviation(file, base, entry->second);
    }
}

void FileRules::CheckDeviation(const File &file, const std::string &base, const std::string &taken)
{
    std::string why;
    if (!listing_.Modules().contains(base))
        why = "module '" + base + "' is in no directory";
    else if (file.shown == taken)
        return;
    else if (!IsYin(file.name))
        why = "a device looks for names that end in .yin";
    else if (file.name.find(PASSED_OVER) != std::string::npos)
        why = "a device passes over names with '-vs-' in them";
    else if (file.folder >= DEVIATION_DIRS)
        why = "a device looks for deviations in the first two directories alone";
    else if (!taken.empty())
        why = "of several a device takes the first one, '" + taken + "'";
    else
        return;
    unreadDeviations_.insert(file.module);
    deviations_.emplace_back(&file, "no device loads these deviations of module '" + base + "': " + why);
}

std::string FileRules::Winner(const std::string &module)
{
    auto [entry, isNew] = winners_.try_emplace(module);
    auto found = listing_.Modules().find(module);
    if (isNew && found != listing_.Modules().end())
        entry->second = ShownPath(dirs_, found->second);
    return entry->second;
}

void FileRules::CheckFolders(std::vector<Finding> *findings) const
{
    for (const ModuleListing::Folder &folder : listing_.Folders())
        if (folder.error != 0)
            findings->push_back(
                {"unlisted-directory",
                 "",
                 {"", 0, 0,
                  "directory '" + folder.dir + "' cannot be listed (" + std::generic_category().message(folder.error) +
                      "): deviation files and files of other revisions in it are not seen"}});
}

void FileRules::CheckFile(const File &file, bool isDated, std::vector<Finding> *findings)
{
    std::string winner = Winner(file.module);
    bool isRead = file.shown == winner || isDated;
    if (isRead && IsYin(file.name)) {
        std::string twin = TwinOf(file.shown);
        if (!twin.empty())
            findings->push_back(
                {"two-syntaxes",
                 file.module,
                 {file.shown, 0, 0,
                  "'" + twin + "' stands beside it: of the two, a load by name reads the .yin file alone"}});
        return;
    }
    bool isTwin = !IsYin(file.name) && !TwinOf(file.shown).empty(); // told with the other one, or unread like it
    if (isRead || isTwin || !IsFile(file.shown))
        return;
    std::string revision = file.stem.substr(std::min(file.module.size() + 1, file.stem.size()));
    std::string why = file.stem != file.module && !IsDate(revision) ? "'" + revision + "' is no revision"
                      : winner.empty()                              ? "no load finds it"
                                                                    : "a load by name takes '" + winner + "'";
    findings->push_back({"unread-file", file.module, {file.shown, 0, 0, "nothing reads the file: " + why}});
}

std::vector<Finding> FileRules::Check(const std::set<std::string> &modules, const std::set<std::string> &dated,
                                      bool all)
{
    std::vector<Finding> findings;
    CheckFolders(&findings);
    for (const auto &[file, text] : deviations_)
        if (modules.contains(file->module))
            findings.push_back({"unread-deviation", file->module, {file->shown, 0, 0, text}});
    for (const File &file : files_)
        if (modules.contains(file.module) && !unreadDeviations_.contains(file.module) &&
            (all || FolderOf(Winner(file.module)) == FolderOf(file.shown)))
            CheckFile(file, dated.contains(file.stem), &findings);
    return findings;
}

} // namespace inspect
