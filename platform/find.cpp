/* Finding files by pattern, in the order of their names. The directory that is searched belongs to the calling thread
 * and to these functions alone: the process's working directory stays as it is. */
#include <dirent.h>
#include <fnmatch.h>
#include <limits.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "korv_platform.h"

namespace {

/* Empty: the process's working directory. */
thread_local char g_acWorkPath[PATH_MAX];

struct Search {
    std::vector<std::string> names;
    size_t next = 0;
};

using DirHandle = std::unique_ptr<DIR, int (*)(DIR *)>;

std::unique_ptr<Search> FindMatches(const char *pcPattern)
{
    DirHandle dir(opendir(g_acWorkPath[0] != '\0' ? g_acWorkPath : "."), closedir);
    if (!dir)
        return nullptr;
    auto search = std::make_unique<Search>();
    while (const dirent *entry = readdir(dir.get())) {
        if (fnmatch(pcPattern, entry->d_name, 0) == 0)
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

} // namespace

uint32_t XUR_VFS_SetWorkPath(const char *pcDir)
{
    char acResolved[PATH_MAX];
    if (XUR_VFS_IsDirExist(pcDir) != 1 || realpath(pcDir, acResolved) == nullptr)
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
    struct stat stStat;
    return pcPath != nullptr && stat(pcPath, &stStat) == 0 && S_ISDIR(stStat.st_mode) ? 1 : 0;
}
