#include "diff/statement_places.h"

#include <algorithm>
#include <filesystem>
#include <new>

#include "model/instance.h"
#include "model/statements.h"

namespace inspect::diff {
namespace {

uint32_t AddOrigin(const QXYANG_ORIGIN_S *origin, void *cookie)
try {
    static_cast<std::vector<QXYANG_ORIGIN_S> *>(cookie)->push_back(*origin);
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

uint32_t AddText(const char *text, void *cookie)
try {
    static_cast<std::vector<std::string> *>(cookie)->emplace_back(text);
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

void OrNoMemory(uint32_t result)
{
    if (result != 0)
        throw std::bad_alloc();
}

} // namespace

/* The name in front of which a folder is shown is any: the folder's own files all stand there. */
const std::string *FileNames::Shown(const std::string &path)
{
    auto [entry, isNew] = version_->files.try_emplace(path);
    if (!isNew)
        return &entry->second;
    if (auto given = dirs_.shown.find(path); given != dirs_.shown.end()) {
        entry->second = given->second;
        return &entry->second;
    }
    std::filesystem::path file(path);
    auto [folder, isNewFolder] = folders_.try_emplace(file.parent_path().string());
    if (isNewFolder) {
        std::string shown = ShownPath(dirs_, path);
        folder->second = shown.substr(0, shown.size() - file.filename().string().size());
    }
    entry->second = folder->second + file.filename().string();
    return &entry->second;
}

void FileNames::Learn(const QXYANG_FILE *file, const char *path)
{
    const std::string *&name = known_[file];
    if (name == nullptr)
        name = Shown(path);
}

Where FileNames::Of(const QXYANG_ORIGIN_S &origin)
{
    if (origin.pstFile == nullptr)
        return {};
    Learn(origin.pstFile, origin.pcFile);
    return {known_[origin.pstFile], origin.stPlace.uiLine, origin.stPlace.uiColumn};
}

Where FileNames::Of(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &statement)
{
    auto known = known_.find(file);
    if (known == known_.end())
        return {};
    return {known->second, statement.stPlace.uiLine, statement.stPlace.uiColumn};
}

std::vector<QXYANG_ORIGIN_S> StatementsOf(QY_NODE *node, const char *keyword)
{
    std::vector<QXYANG_ORIGIN_S> statements;
    OrNoMemory(QXYANG_ScanNodeStatements(node, keyword, AddOrigin, &statements));
    return statements;
}

std::vector<QXYANG_ORIGIN_S> TypedefsOf(QY_NODE *leaf)
{
    std::vector<QXYANG_ORIGIN_S> typedefs;
    OrNoMemory(QXYANG_ScanNodeTypedefs(leaf, AddOrigin, &typedefs));
    return typedefs;
}

std::vector<std::string> DefaultsOf(QY_NODE *node)
{
    std::vector<std::string> defaults;
    OrNoMemory(QXYANG_ScanNodeDefaults(node, AddText, &defaults));
    return defaults;
}

std::string ArgumentOf(const QXYANG_ORIGIN_S &origin)
{
    const char *argument = StatementAt(origin.pstFile, origin.uiStatement).pcArgument;
    return argument != nullptr ? argument : "";
}

std::vector<Fact> FactsIn(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &around, std::initializer_list<Rule> rules,
                          FileNames *files)
{
    std::vector<Fact> facts;
    for (Rule rule : rules)
        ForEachIn(file, around, [&](const QXYANG_STATEMENT_S &statement) {
            if (IsYang(statement, rule->name) && statement.pcArgument != nullptr)
                facts.push_back({rule, Smoothed(statement.pcArgument), files->Of(file, statement)});
        });
    return facts;
}

std::string Smoothed(std::string_view text)
{
    auto isBlank = [](char c) { return c <= ' ' && (c == ' ' || c == '\t' || c == '\n' || c == '\r'); };
    std::string smoothed;
    smoothed.reserve(text.size());
    auto word = std::find_if_not(text.begin(), text.end(), isBlank);
    while (word != text.end()) {
        auto end = std::find_if(word, text.end(), isBlank);
        smoothed.append(smoothed.empty() ? "" : " ").append(word, end);
        word = std::find_if_not(end, text.end(), isBlank);
    }
    return smoothed;
}

} // namespace inspect::diff
