/* Finding files by pattern, in the order of their names. The directory that is searched belongs to the calling thread
 * and to these functions alone: the process's working directory stays as it is. */
#include <dirent.h>
#include <fnmatch.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "korv_platform.h"

namespace {

/* Empty: the process's working directory. */
thread_local char g_acWorkPath[PATH_MAX];

/* Relative directories that the thread has asked for, each with the place that it named then: it stays there when the
 * process changes its working directory. */
thread_local std::map<std::string, std::string, std::less<>> g_knownDirs;

struct Search {
    std::vector<std::string> names;
    size_t next = 0;
};

using DirHandle = std::unique_ptr<DIR, int (*)(DIR *)>;

/* A file, also behind symbolic links: a directory of that name would hide the files behind it in the order. */
bool IsRegularFile(DIR *pDir, const char *pcName)
{
    struct stat stStat;
    return fstatat(dirfd(pDir), pcName, &stStat, 0) == 0 && S_ISREG(stStat.st_mode);
}

std::unique_ptr<Search> FindMatches(const char *pcPattern)
{
    DirHandle dir(opendir(g_acWorkPath[0] != '\0' ? g_acWorkPath : "."), closedir);
    if (!dir)
        return nullptr;
    auto search = std::make_unique<Search>();
    while (const dirent *entry = readdir(dir.get())) {
        if (fnmatch(pcPattern, entry->d_name, 0) == 0 && IsRegularFile(dir.get(), entry->d_name))
            search->names.emplace_back(entry->d_name);
    }
    std::sort(search->names.begin(), search->names.end());
    return search;
}

uint32_t TakeNext(Search &search, XUR_VFS_FIND_S *pstFind)
{
    if (search.next == search.names.size())
        return 1;
    return strcpy_s(pstFind->acFileName, sizeof(pstFind->acFileName), search.names[search.next++].c_str()) == 0 ? 0 : 1;
}

bool IsDirectory(const char *pcPath)
{
    struct stat stStat;
    return stat(pcPath, &stStat) == 0 && S_ISDIR(stStat.st_mode);
}

void Remember(const char *pcDir)
try {
    char acCurrent[PATH_MAX];
    if (pcDir[0] != '/' && pcDir[0] != '\0' && getcwd(acCurrent, sizeof(acCurrent)) != nullptr)
        g_knownDirs.insert_or_assign(pcDir, std::string(acCurrent) + "/" + pcDir);
} catch (const std::bad_alloc &) {
    // It is looked for in the working directory.
}

const char *PlaceOf(const char *pcDir)
{
    const auto known = g_knownDirs.find(std::string_view(pcDir));
    return known != g_knownDirs.end() ? known->second.c_str() : pcDir;
}

} // namespace

uint32_t XUR_VFS_SetWorkPath(const char *pcDir)
{
    char acResolved[PATH_MAX];
    if (pcDir == nullptr)
        return 1;
    const char *pcPlace = PlaceOf(pcDir);
    if (!IsDirectory(pcPlace) || realpath(pcPlace, acResolved) == nullptr)
        return 1;
    std::memcpy(g_acWorkPath, acResolved, sizeof(acResolved));
    return 0;
}

uint32_t XUR_VFS_FindFirst(const char *pcPattern, XUR_VFS_FIND_S *pstFind)
try {
    std::unique_ptr<Search> search = FindMatches(pcPattern);
    if (!search || TakeNext(*search, pstFind) != 0)
        return 1;
    pstFind->pHandle = search.release();
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

uint32_t XUR_VFS_FindNext(XUR_VFS_FIND_S *pstFind)
{
    return pstFind->pHandle != nullptr ? TakeNext(*static_cast<Search *>(pstFind->pHandle), pstFind) : 1;
}

void XUR_VFS_FindClose(XUR_VFS_FIND_S *pstFind)
{
    delete static_cast<Search *>(pstFind->pHandle);
    pstFind->pHandle = nullptr;
}

uint32_t XUR_VFS_IsDirExist(const char *pcPath)
{
    if (pcPath == nullptr)
        return 0;
    Remember(pcPath);
    return IsDirectory(pcPath) ? 1 : 0;
}
