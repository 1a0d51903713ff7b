/* Functions of qxyang.h. No exception leaves them. */
#include <qxyang.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/text.h"
#include "files/search_path.h"
#include "schema/context.h"
#include "syntax/keywords.h"
#include "syntax/statement_file.h"

using namespace qxyang;

namespace {

/* A handle over what `readText` puts into its source; null: no memory. */
template <class ReadText>
QXYANG_FILE *Read(const char *path, uint32_t options, ReadText &&readText)
{
    try {
        auto file = std::make_unique<QXYANG_FILE>(path, options);
        if (std::string why = readText(file->source); !why.empty())
            file->failures.Add(std::string_view(), std::string(path) + ": the file " + why);
        else
            ReadStatements(*file);
        return file.release();
    } catch (...) {
        return nullptr;
    }
}

SearchPath PathOf(const char *const *dirs, uint32_t count)
{
    SearchPath path;
    for (uint32_t i = 0; i < count; ++i)
        if (*dirs[i] != '\0')
            path.Add(dirs[i]);
    return path;
}

/* Calls visit(name, path) for each name that a load finds a file for, in the order of the alphabet. */
template <class Visit>
uint32_t ScanModules(FileFinder &finder, Visit &&visit)
{
    std::set<std::string> names;
    finder.ForEachName([&names](std::string_view name) { names.emplace(name); });
    for (const std::string &name : names) {
        std::vector<std::string> files = IsIdentifier(name) ? finder.Candidates(name, {}) : std::vector<std::string>();
        if (uint32_t result = files.empty() ? 0 : visit(name, files.front()); result != 0)
            return result;
    }
    return 0;
}

} // namespace

struct QXYANG_LISTINGS {
    SearchPath path;
    std::vector<std::string> dirs; /* absolute, as many as were given; "" for an empty name */
    std::shared_ptr<Listings> listings;
};

QXYANG_FILE *QXYANG_ReadFile(const char *pcPath, uint32_t uiOptions)
{
    return Read(pcPath, uiOptions, [](Source &source) { return source.Read(); });
}

QXYANG_FILE *QXYANG_ReadText(const char *pcName, const char *pcText, uint64_t ulSize, uint32_t uiOptions)
{
    return Read(pcName, uiOptions, [=](Source &source) {
        return source.Take(std::string_view(pcText != nullptr ? pcText : "", static_cast<size_t>(ulSize)));
    });
}

void QXYANG_CloseFile(QXYANG_FILE *pstFile)
{
    delete pstFile;
}

uint32_t QXYANG_GetFileSyntax(const QXYANG_FILE *pstFile)
{
    return pstFile->source.IsCompact() ? QXYANG_SYNTAX_COMPACT : QXYANG_SYNTAX_YIN;
}

const char *QXYANG_GetFileText(const QXYANG_FILE *pstFile, uint64_t *pulSize)
{
    std::string_view text = pstFile->source.Text();
    *pulSize = text.size();
    return text.data() != nullptr ? text.data() : "";
}

uint32_t QXYANG_ScanFile(const QXYANG_FILE *pstFile, QXYANG_EVENT_PF pfnCb, void *pvCookie)
{
    const auto &statements = pstFile->statements;
    auto comment = pstFile->comments.begin();
    auto tellComments = [&](uint32_t before) {
        for (; comment != pstFile->comments.end() && comment->stPlace.uiOffset < before; ++comment)
            if (uint32_t result = pfnCb(QXYANG_EVENT_COMMENT, nullptr, &*comment, pvCookie); result != 0)
                return result;
        return 0u;
    };
    auto tell = [&](uint32_t event, const QXYANG_STATEMENT_S &statement) {
        uint32_t at = statement.stPlace.uiOffset + (event == QXYANG_EVENT_END ? statement.stPlace.uiLength : 0);
        uint32_t result = tellComments(at);
        return result != 0 ? result : pfnCb(event, &statement, nullptr, pvCookie);
    };
    for (uint32_t i = statements.empty() ? QXYANG_NO_STATEMENT : 0; i != QXYANG_NO_STATEMENT;) {
        if (uint32_t result = tell(QXYANG_EVENT_BEGIN, statements[i]); result != 0)
            return result;
        uint32_t next = statements[i].uiFirstChild;
        while (next == QXYANG_NO_STATEMENT && i != QXYANG_NO_STATEMENT) {
            if (uint32_t result = tell(QXYANG_EVENT_END, statements[i]); result != 0)
                return result;
            next = statements[i].uiNext;
            i = statements[i].uiParent;
        }
        i = next;
    }
    return tellComments(QXYANG_NO_STATEMENT);
}

uint32_t QXYANG_GetStatement(const QXYANG_FILE *pstFile, uint32_t uiIndex, QXYANG_STATEMENT_S *pstStatement)
{
    if (uiIndex >= pstFile->statements.size())
        return 1;
    *pstStatement = pstFile->statements[uiIndex];
    return 0;
}

uint32_t QXYANG_ScanFileFailures(const QXYANG_FILE *pstFile, QXYANG_FAILURE_PF pfnCb, void *pvCookie)
{
    return pstFile->failures.ScanRecords(pfnCb, pvCookie);
}

const char *QXYANG_GetArgumentName(const char *pcKeyword, uint32_t *puiForm)
{
    Kw keyword = FindKeyword(pcKeyword);
    if (keyword == Kw::None)
        return nullptr;
    const Keyword &info = KeywordOf(keyword);
    if (info.argument == nullptr) {
        *puiForm = QXYANG_ARGUMENT_NONE;
        return "";
    }
    *puiForm = info.InElement() ? QXYANG_ARGUMENT_ELEMENT : QXYANG_ARGUMENT_ATTRIBUTE;
    return info.argument;
}

uint32_t QXYANG_ScanModulePaths(const char *const *ppcDirs, uint32_t uiDirCount, const char *pcName,
                                const char *pcRevision, QXYANG_PATH_PF pfnCb, void *pvCookie)
{
    if (!IsIdentifier(pcName))
        return 0;
    try {
        SearchPath path = PathOf(ppcDirs, uiDirCount);
        NameBudget names;
        for (const std::string &file : FileFinder(path, names).Candidates(pcName, OrEmpty(pcRevision)))
            if (uint32_t result = pfnCb(file.c_str(), pvCookie); result != 0)
                return result;
        return 0;
    } catch (...) {
        return 1;
    }
}

uint32_t QXYANG_ScanModuleNames(const char *const *ppcDirs, uint32_t uiDirCount, QXYANG_NAME_PF pfnCb, void *pvCookie)
{
    try {
        SearchPath path = PathOf(ppcDirs, uiDirCount);
        NameBudget budget;
        FileFinder finder(path, budget);
        return ScanModules(finder,
                           [=](const std::string &name, const std::string &) { return pfnCb(name.c_str(), pvCookie); });
    } catch (...) {
        return 1;
    }
}

QXYANG_LISTINGS *QXYANG_OpenListings(const char *const *ppcDirs, uint32_t uiDirCount)
{
    try {
        auto listings = std::make_unique<QXYANG_LISTINGS>();
        listings->path = PathOf(ppcDirs, uiDirCount);
        for (uint32_t i = 0; i < uiDirCount; ++i)
            listings->dirs.push_back(*ppcDirs[i] != '\0' ? listings->path.PlaceOf(ppcDirs[i]) : std::string());
        listings->listings = std::make_shared<Listings>();
        return listings.release();
    } catch (...) {
        return nullptr;
    }
}

void QXYANG_CloseListings(QXYANG_LISTINGS *pstListings)
{
    delete pstListings;
}

uint32_t QXYANG_ScanListedFiles(QXYANG_LISTINGS *pstListings, QXYANG_LISTED_FILE_PF pfnCb, void *pvCookie)
{
    try {
        for (uint32_t i = 0; i < pstListings->dirs.size(); ++i) {
            if (pstListings->dirs[i].empty())
                continue;
            const Listings::Directory &directory = pstListings->listings->Of(pstListings->dirs[i]);
            uint32_t result = directory.error != 0 ? pfnCb(i, nullptr, directory.error, pvCookie) : 0;
            for (const auto *files : {&directory.files, &directory.misses})
                for (auto file = files->begin(); result == 0 && file != files->end(); ++file)
                    result = pfnCb(i, file->c_str(), 0, pvCookie);
            if (result != 0)
                return result;
        }
        return 0;
    } catch (...) {
        return 1;
    }
}

uint32_t QXYANG_ScanListedModules(QXYANG_LISTINGS *pstListings, QXYANG_MODULE_FILE_PF pfnCb, void *pvCookie)
{
    try {
        NameBudget budget;
        FileFinder finder(pstListings->path, budget, pstListings->listings.get());
        return ScanModules(finder, [=](const std::string &name, const std::string &path) {
            uint32_t syntax = path.ends_with(COMPACT_SUFFIX) ? QXYANG_SYNTAX_COMPACT : QXYANG_SYNTAX_YIN;
            return pfnCb(name.c_str(), path.c_str(), syntax, pvCookie);
        });
    } catch (...) {
        return 1;
    }
}

void QXYANG_UseListings(QY_CTX *pCtx, QXYANG_LISTINGS *pstListings)
{
    pCtx->listings = pstListings->listings;
}

uint32_t QXYANG_ScanModuleFiles(const QY_MOD *pMod, QXYANG_MODULE_FILE_PF pfnCb, void *pvCookie)
{
    for (const ModuleFile &file : pMod->files)
        if (uint32_t result =
                pfnCb(file.name, file.path, file.isCompact ? QXYANG_SYNTAX_COMPACT : QXYANG_SYNTAX_YIN, pvCookie);
            result != 0)
            return result;
    return 0;
}

uint32_t QXYANG_ScanLoadFailures(const QY_CTX *pCtx, QXYANG_FAILURE_PF pfnCb, void *pvCookie)
{
    return pCtx->failures.ScanRecords(pfnCb, pvCookie);
}
