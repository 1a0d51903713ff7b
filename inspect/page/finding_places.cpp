#include "page/finding_places.h"

#include <algorithm>
#include <array>

#include "model/module_search.h"
#include "model/statements.h"

namespace inspect::page {
namespace {

constexpr std::array<std::string_view, 7> NODE_KEYWORDS = {"augment", "case", "choice",   "container",
                                                           "leaf",    "list", "leaf-list"};

/* The files that the modules were loaded from, by the names that findings have of them. */
std::map<std::string, const QXYANG_FILE *> FilesByName(const Device &device, const std::vector<DeviceModule> &modules,
                                                       diff::FileNames *names)
{
    std::map<std::string, const QXYANG_FILE *> files;
    for (const DeviceModule &module : modules)
        for (const LoadedFile &file : module.schema != nullptr ? FilesOf(module.schema) : std::vector<LoadedFile>{})
            if (const QXYANG_FILE *handle = QXYANG_GetLoadedFile(device.Library().Schema(), file.name)) {
                names->Learn(handle, file.path);
                files.emplace(*names->Of(handle, StatementAt(handle, 0)).file, handle);
            }
    return files;
}

} // namespace

FindingPlaces::FindingPlaces(const Device &device, const std::vector<DeviceModule> &modules,
                             const std::vector<ReportedFinding> &findings, diff::FileNames *files)
    : findings_(findings), nodes_(findings.size())
{
    std::map<std::string, std::vector<uint32_t>> byFile;
    for (uint32_t i = 0; i < findings.size(); ++i)
        if (findings[i].finding.cause.line != 0)
            byFile[findings[i].finding.cause.file].push_back(i);
    if (byFile.empty())
        return;
    std::map<std::string, const QXYANG_FILE *> known = FilesByName(device, modules, files);
    for (const auto &[name, indexes] : byFile)
        if (auto file = known.find(name); file != known.end())
            PlaceIn(file->second, indexes);
}

/* A finding stands where a statement or its argument begins: the last statement that begins there or before has it. */
void FindingPlaces::PlaceIn(const QXYANG_FILE *file, const std::vector<uint32_t> &findings)
{
    std::vector<QXYANG_STATEMENT_S> statements;
    QXYANG_STATEMENT_S next = {};
    for (uint32_t i = 0; QXYANG_GetStatement(file, i, &next) == 0; ++i)
        statements.push_back(next);
    for (uint32_t index : findings) {
        const Cause &cause = findings_[index].finding.cause;
        auto isBehind = [&cause](uint32_t, const QXYANG_STATEMENT_S &statement) {
            return std::pair(cause.line, cause.column) <
                   std::pair(statement.stPlace.uiLine, statement.stPlace.uiColumn);
        };
        auto behind = std::upper_bound(statements.begin(), statements.end(), 0U, isBehind);
        uint32_t at = behind == statements.begin() ? QXYANG_NO_STATEMENT : behind[-1].uiIndex;
        while (at != QXYANG_NO_STATEMENT &&
               std::none_of(NODE_KEYWORDS.begin(), NODE_KEYWORDS.end(),
                            [&](std::string_view keyword) { return IsYang(statements[at], keyword); }))
            at = statements[at].uiParent;
        if (at != QXYANG_NO_STATEMENT)
            places_[{file, at}].push_back(index);
    }
}

std::vector<uint32_t> FindingPlaces::Take(const QXYANG_ORIGIN_S &statement, QY_NODE *node)
{
    auto place = places_.find({statement.pstFile, statement.uiStatement});
    if (place == places_.end())
        return {};
    for (uint32_t index : place->second)
        if (nodes_[index] == nullptr)
            nodes_[index] = node;
    return place->second;
}

std::vector<uint32_t> FindingPlaces::Rest(const std::string &module) const
{
    std::vector<uint32_t> rest;
    for (uint32_t i = 0; i < findings_.size(); ++i)
        if (nodes_[i] == nullptr && findings_[i].finding.module == module)
            rest.push_back(i);
    return rest;
}

} // namespace inspect::page
