#include "check/file_rules.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "base/failure.h"
#include "model/instance.h"
#include "model/model_file.h"
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
    if (!std::equal(text.begin(), text.end(), FORM.begin(), FORM.end(),
                    [](char left, char form) { return form == 'd' ? left >= '0' && left <= '9' : left == form; }))
        return false;
    auto number = [text](size_t begin, size_t size) { return std::stoi(std::string(text.substr(begin, size))); };
    return std::chrono::year_month_day(std::chrono::year(number(0, 4)),
                                       std::chrono::month(static_cast<unsigned>(number(5, 2))),
                                       std::chrono::day(static_cast<unsigned>(number(8, 2))))
        .ok();
}

bool IsYin(std::string_view file)
{
    return file.ends_with(".yin");
}

bool IsModuleFile(std::string_view file)
{
    return IsYin(file) || file.ends_with(".yang");
}

bool IsIdentifier(std::string_view text)
{
    auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; };
    auto isOther = [](char c) { return (c >= '0' && c <= '9') || c == '-' || c == '.'; };
    return !text.empty() && isLetter(text.front()) &&
           std::all_of(text.begin(), text.end(), [&](char c) { return isLetter(c) || isOther(c); });
}

/* "2020-01-01" of a file "NAME@2020-01-01.yin", or "". */
std::string_view RevisionOf(std::string_view stem, std::string_view module)
{
    return stem.substr(std::min(module.size() + 1, stem.size()));
}

bool HoldsDeviation(const std::string &path)
{
    ModelFile file = ModelFile::Read(path, path);
    bool holds = false;
    if (file.HasRoot())
        file.ForEachIn(file.Root(),
                       [&](const QXYANG_STATEMENT_S &statement) { holds |= IsYang(statement, "deviation"); });
    return holds;
}

/* "'a', 'b' or 'c'" */
std::string DeviatedNames()
{
    std::string text;
    for (size_t i = 0; i < DEVIATED.size(); ++i)
        text.append(i == 0 ? "'" : i + 1 < DEVIATED.size() ? ", '" : " or '").append(DEVIATED[i]).append("'");
    return text;
}

std::string PlaceOf(const std::string &dir)
{
    std::error_code error;
    std::string place = std::filesystem::weakly_canonical(dir, error).string();
    return error ? dir : place;
}

} // namespace

FileRules::FileRules(const SearchDirs &dirs, const ModuleListing &listing)
    : dirs_(dirs), listing_(listing), requests_(listing)
{
    std::set<std::string> own;
    for (const std::vector<std::string> &group : dirs.own)
        for (const std::string &dir : group)
            own.insert(PlaceOf(dir));
    std::set<std::string> known;
    for (size_t i = 0; i < listing.Folders().size(); ++i) {
        const ModuleListing::Folder &folder = listing.Folders()[i];
        std::string place = PlaceOf(folder.dir);
        if (!known.insert(place).second)
            continue;
        for (const std::string &name : folder.files) {
            std::string stem = name.substr(0, name.rfind('.'));
            files_.push_back(
                {i, name, InFolder(folder.dir, name), stem.substr(0, stem.find('@')), stem, own.contains(place)});
        }
    }
    FindDeviations();
}

const ModuleListing::Folder *FileRules::FolderAt(const std::string &dir) const
{
    auto isAt = [&dir](const ModuleListing::Folder &folder) { return folder.dir == dir; };
    auto found = std::find_if(listing_.Folders().begin(), listing_.Folders().end(), isAt);
    return found != listing_.Folders().end() ? &*found : nullptr;
}

void FileRules::RequireFiles() const
{
    for (const std::vector<std::string> &group : dirs_.own) {
        bool hasFiles = std::any_of(group.begin(), group.end(), [this](const std::string &dir) {
            const ModuleListing::Folder *folder = FolderAt(dir);
            return folder != nullptr && !folder->files.empty();
        });
        if (hasFiles)
            continue;
        const ModuleListing::Folder *folder = FolderAt(group.front());
        std::string why = folder != nullptr && folder->error != 0
                              ? "cannot be listed (" + std::generic_category().message(folder->error) + ")"
                              : "has no module file";
        throw Failure("directory '" + group.front() + "' " + why + ": --all checks the modules in it", EXIT_USAGE);
    }
}

std::set<std::string> FileRules::OwnModules() const
{
    std::set<std::string> names;
    for (const File &file : files_)
        if (file.isOwn && IsModuleFile(file.name) && listing_.Modules().contains(file.module) &&
            (file.stem == file.module || IsDate(RevisionOf(file.stem, file.module))))
            names.insert(file.module);
    return names;
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
        if (end == std::string::npos || !IsModuleFile(file.name))
            continue;
        auto [entry, isNew] = taken.try_emplace(base);
        if (isNew && IsDeviated(base))
            entry->second = FirstDeviation(base);
        std::string why = WhyNoDevice(file, base, entry->second);
        if (why.empty())
            continue;
        unreadDeviations_.insert(file.module);
        deviations_.emplace_back(&file, "no device loads these deviations of module '" + base + "': " + why);
    }
}

/* Why no device loads the file with the module; "" when one does, or when the file is none for that. `taken` is the one that
 * is loaded with it. */
std::string FileRules::WhyNoDevice(const File &file, const std::string &base, const std::string &taken) const
{
    bool isThere = listing_.Modules().contains(base);
    if (!IsDeviated(base))
        return isThere && IsFile(file.shown) && HoldsDeviation(file.shown)
                   ? "a device looks for deviations of those modules alone that have " + DeviatedNames() +
                         " in their names"
                   : "";
    if (!isThere)
        return "module '" + base + "' is in no directory";
    if (file.shown == taken)
        return "";
    if (!IsYin(file.name))
        return "a device looks for names that end in .yin";
    if (file.name.find(PASSED_OVER) != std::string::npos)
        return "a device passes over names with '-vs-' in them";
    if (file.folder >= DEVIATION_DIRS)
        return "a device looks for deviations in the first two directories alone";
    return taken.empty() ? "" : "of several a device takes the first one, '" + taken + "'";
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

/* True if the line names a file that a load by the module's name does not take: what that would take is not known. */
bool FileRules::IsGiven(const std::string &module) const
{
    auto found = listing_.Modules().find(module);
    return found != listing_.Modules().end() && !dirs_.first.empty() && found->second.starts_with(dirs_.first + "/");
}

/* True if an import or include asks for the file's revision: one of the modules that were loaded, or else one in any file. */
bool FileRules::IsAsked(const File &file, const Uses &uses)
{
    return uses.dated.contains(file.stem) ||
           (IsModuleFile(file.name) && IsDate(RevisionOf(file.stem, file.module)) && requests_.AskFor(file.stem));
}

std::string FileRules::WhyUnread(const File &file)
{
    std::string_view revision = RevisionOf(file.stem, file.module);
    if (!IsModuleFile(file.name))
        return "a load looks for names that end in .yin or .yang, in small letters";
    if (!IsIdentifier(file.module))
        return "'" + file.module + "' cannot be the name of a module";
    if (file.stem != file.module && !IsDate(revision))
        return "'" + std::string(revision) + "' is no revision";
    std::string winner = Winner(file.module);
    return winner.empty() ? "no load finds it" : "a load by name takes '" + winner + "'";
}

void FileRules::CheckFile(const File &file, const Uses &uses, std::vector<Finding> *findings)
{
    bool isWinner = file.shown == Winner(file.module);
    std::string twin = IsModuleFile(file.name) ? TwinOf(file.shown) : "";
    bool isTold = !IsYin(file.name) && !twin.empty(); // with the other one, or unread like it
    if (isTold || (!isWinner && !IsFile(file.shown)))
        return;
    bool isRead = isWinner || IsAsked(file, uses);
    if (isWinner && uses.orphans.contains(file.module))
        findings->push_back({"unread-file",
                             file.module,
                             {file.shown, 0, 0, "nothing reads the file: no module includes the submodule"}});
    if (!isRead && IsGiven(file.module))
        return;
    if (!isRead)
        findings->push_back(
            {"unread-file", file.module, {file.shown, 0, 0, "nothing reads the file: " + WhyUnread(file)}});
    else if (IsYin(file.name) && !twin.empty())
        findings->push_back(
            {"two-syntaxes",
             file.module,
             {file.shown, 0, 0,
              "'" + twin + "' stands beside it: of the two, a load by name reads the .yin file alone"}});
}

std::vector<Finding> FileRules::Check(Uses uses)
{
    std::vector<Finding> findings;
    CheckFolders(&findings);
    for (const auto &[file, text] : deviations_)
        if (uses.modules.contains(file->module) || (uses.all && file->isOwn))
            findings.push_back({"unread-deviation", file->module, {file->shown, 0, 0, text}});
    std::erase_if(uses.orphans, [this](const std::string &submodule) { return requests_.Include(submodule); });
    for (const File &file : files_) {
        bool isMeant =
            uses.all ? file.isOwn
                     : uses.modules.contains(file.module) && FolderOf(Winner(file.module)) == FolderOf(file.shown);
        if (isMeant && !unreadDeviations_.contains(file.module))
            CheckFile(file, uses, &findings);
    }
    return findings;
}

} // namespace inspect
