#include "ids/session.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "base/failure.h"
#include "base/text.h"
#include "ids/node_path.h"
#include "model/load_causes.h"
#include "model/module_search.h"

namespace inspect::ids {
namespace {

constexpr uint32_t REGISTRY_COLUMN = 5; /* of an entry's line */

std::vector<ModuleKey> ModulesOf(const ModelRequest &request, bool all)
{
    std::vector<ModuleKey> modules;
    for (const ModuleKey &key : request.modules)
        if (std::none_of(modules.begin(), modules.end(),
                         [&key](const ModuleKey &other) { return other.name == key.name; }))
            modules.push_back(key);
    if (!all)
        return modules;
    for (const std::string &name : OwnModuleNames(request.dirs))
        if (!HoldsSubmodule(ModulePath(request.dirs, name)))
            modules.push_back({name, ""});
    if (modules.empty())
        throw Failure("no module in the directories");
    return modules;
}

} // namespace

Session::Session(const ModelRequest &request, bool all, std::string registryPath, Registry registry)
    : dirs_(request.dirs),
      registryPath_(std::move(registryPath)),
      registry_(std::move(registry)),
      instance_(std::make_unique<Instance>(request.dirs, request.verbose)),
      modules_(ModulesOf(request, all)),
      places_(request.dirs)
{
    ModelRequest wanted = request;
    wanted.modules = modules_;
    LoadRequested(instance_.get(), wanted);
    models_ = IdsOf(*instance_, modules_);
    for (const ModuleKey &key : modules_)
        covered_.insert(key.name);
    if (all)
        CoverGone();
}

/* Modules of the registry that no directory has any more. */
void Session::CoverGone()
{
    std::set<std::string> modules;
    for (const ClassEntry &entry : registry_.classes)
        modules.emplace(ModuleOfPath(entry.path));
    for (const FieldEntry &entry : registry_.fields)
        modules.emplace(ModuleOfPath(entry.path));
    for (const std::string &module : modules)
        if (ModulePath(dirs_, module).empty())
            covered_.insert(module);
}

Cause Session::CauseOf(const Difference &difference)
{
    Cause cause = {"", 0, 0, difference.text};
    if (difference.node == nullptr) {
        cause.file = registryPath_;
        cause.line = difference.line;
        cause.column = REGISTRY_COLUMN;
        return cause;
    }
    cause.module = ModuleNameOf(difference.node);
    constexpr std::array<const char *, 1> CLASS = {"class-id"};
    constexpr std::array<const char *, 2> SAMPLE = {"tlmt-sample-id", "class-id"};
    if (difference.statement.pcFile != nullptr)
        PlaceAt(places_.Of(difference.statement), &cause);
    else if (difference.kind == Kind::Sample)
        PlaceAt(places_.OfExtension(difference.node, SAMPLE), &cause);
    else
        PlaceAt(places_.OfExtension(difference.node, CLASS), &cause);
    return cause;
}

std::vector<Finding> Session::Compare()
{
    std::vector<Difference> differences = ids::Compare(Both());
    TellMissing(*instance_, modules_, &differences);
    std::vector<Finding> findings;
    for (Difference &difference : differences) {
        Cause cause = CauseOf(difference);
        findings.push_back({std::move(difference), std::move(cause)});
    }
    return findings;
}

void WriteText(const std::vector<Finding> &findings)
{
    for (const Finding &finding : findings)
        std::printf("%s [%s]\n", Printable(PlaceText(finding.cause, finding.cause.module) + finding.cause.text).c_str(),
                    KindName(finding.difference.kind));
}

void WriteJson(JsonOut *out, const std::vector<Finding> &findings)
{
    out->Key("findings");
    out->Array();
    for (const Finding &finding : findings) {
        out->Object();
        out->Member("rule", KindName(finding.difference.kind));
        out->Member("class_id", finding.difference.classId);
        out->NumberOrNull("field_id", finding.difference.fieldId);
        out->Member("path", finding.difference.path);
        out->Member("text", finding.cause.text);
        out->NumberOrNull("registry_line", finding.difference.line);
        out->Key("place");
        out->Place(finding.cause.file, finding.cause.line, finding.cause.column);
        out->EndObject();
    }
    out->EndArray();
}

std::string DefaultRegistryPath(const SearchDirs &dirs)
{
    if (dirs.dirs.empty() || dirs.dirs.front() == ".")
        return REGISTRY_FILE_NAME;
    return (std::filesystem::path(dirs.dirs.front()) / REGISTRY_FILE_NAME).string();
}

} // namespace inspect::ids
