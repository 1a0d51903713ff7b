#include "support/host_services.h"

#include <dlfcn.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <sstream>
#include <unordered_map>

#include "korv_platform.h"

namespace test {
namespace {

std::unordered_map<void *, Block> &Live()
{
    static std::unordered_map<void *, Block> live;
    return live;
}

template <typename F>
F *Real(const char *name)
{
    return reinterpret_cast<F *>(dlsym(RTLD_NEXT, name));
}

void CallWatcher()
{
    if (Services().watcher)
        Services().watcher();
}

bool BoundedFails()
{
    const uint64_t number = Services().boundedCalls++;
    return number >= Services().failBounded && number - Services().failBounded < Services().failBoundedCalls;
}

/* Result of a bounded text function, and its empty text where it fails. */
int TextResult(int result, int failure, char *dest)
{
    if (!BoundedFails())
        return result;
    *dest = '\0';
    return failure;
}

} // namespace

HostServices &Services()
{
    static HostServices services;
    return services;
}

void HostServices::Reset()
{
    *this = HostServices();
    g_aucZorMemPt[0] = PARTITION;
}

void HostServices::FailAllocation(uint64_t n, bool forGood)
{
    failAllocation = n;
    failForGood = forGood;
    allocations = 0;
}

std::vector<Block> HostServices::LiveBlocks() const
{
    std::vector<Block> blocks;
    for (const auto &entry : Live())
        blocks.push_back(entry.second);
    return blocks;
}

std::set<void *> HostServices::LiveAddresses() const
{
    std::set<void *> blocks;
    for (const auto &entry : Live())
        blocks.insert(entry.first);
    return blocks;
}

std::vector<Block> HostServices::ReleaseAllBut(const std::set<void *> &blocks) const
{
    std::vector<Block> released;
    for (void *block : LiveAddresses()) {
        if (blocks.count(block) != 0)
            continue;
        released.push_back(Live().at(block));
        ZOR_Free_F(block, __FILE__, __LINE__);
    }
    return released;
}

std::string HostServices::Leaks() const
{
    std::ostringstream text;
    for (const Block &block : LiveBlocks())
        text << block.size << " bytes from " << block.place << "\n";
    return text.str();
}

} // namespace test

/* Part of this program, so the libraries find these functions before those of the host services library. */
using test::BoundedFails;
using test::CallWatcher;
using test::Live;
using test::Real;
using test::Services;
using test::TextResult;

void *ZOR_Malloc_F(uint64_t ulModuleId, uint8_t ucPartition, uint64_t ulSize, const char *pcFile, uint32_t uiLine)
{
    CallWatcher();
    const uint64_t number = Services().allocations++;
    if (Services().failOfFile != test::NEVER && Services().failFile == pcFile && Services().failOfFile-- == 0)
        return nullptr;
    if (number == Services().failAllocation || (Services().failForGood && number > Services().failAllocation))
        return nullptr;
    void *block = std::malloc(ulSize);
    Live()[block] = {ulModuleId, ucPartition, ulSize, std::string(pcFile) + ":" + std::to_string(uiLine)};
    return block;
}

void ZOR_Free_F(void *pvBlock, const char *, uint32_t)
{
    CallWatcher();
    if (pvBlock == nullptr)
        return;
    Services().frees++;
    if (Live().erase(pvBlock) != 1)
        std::abort(); /* not a live block: released twice, or never allocated */
    std::free(pvBlock);
}

void ZOR_Assert(const char *pcFile, uint32_t uiLine, uint32_t)
{
    Services().assertions.push_back(std::string(pcFile) + ":" + std::to_string(uiLine));
}

VEC_VECTOR_S *VEC_VectorInit_F(uint64_t ulModuleId, uint32_t uiCapacity, const char *pcFile, uint32_t uiLine)
{
    CallWatcher();
    if (Services().vectorInits++ == Services().failVectorInit)
        return nullptr;
    return Real<decltype(VEC_VectorInit_F)>("VEC_VectorInit_F")(ulModuleId, uiCapacity, pcFile, uiLine);
}

uint32_t VEC_VectorSet(VEC_VECTOR_S *pstVector, void *pvItem)
{
    CallWatcher();
    if (Services().vectorSets++ == Services().failVectorSet)
        return 0xFFFFFFFF;
    return Real<decltype(VEC_VectorSet)>("VEC_VectorSet")(pstVector, pvItem);
}

#define REAL_ONCE(function) static auto *const real = Real<decltype(function)>(#function)

int memset_s(void *pvDest, size_t ulDestMax, int iValue, size_t ulCount)
{
    REAL_ONCE(memset_s);
    const int result = real(pvDest, ulDestMax, iValue, ulCount);
    return BoundedFails() ? EINVAL : result;
}

int memcpy_s(void *pvDest, size_t ulDestMax, const void *pvSrc, size_t ulCount)
{
    REAL_ONCE(memcpy_s);
    const int result = real(pvDest, ulDestMax, pvSrc, ulCount);
    return BoundedFails() ? EINVAL : result;
}

int strcpy_s(char *pcDest, size_t ulDestMax, const char *pcSrc)
{
    REAL_ONCE(strcpy_s);
    return TextResult(real(pcDest, ulDestMax, pcSrc), ERANGE, pcDest);
}

int strncpy_s(char *pcDest, size_t ulDestMax, const char *pcSrc, size_t ulCount)
{
    REAL_ONCE(strncpy_s);
    return TextResult(real(pcDest, ulDestMax, pcSrc, ulCount), ERANGE, pcDest);
}

int strcat_s(char *pcDest, size_t ulDestMax, const char *pcSrc)
{
    REAL_ONCE(strcat_s);
    return TextResult(real(pcDest, ulDestMax, pcSrc), ERANGE, pcDest);
}

int vsnprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, va_list vaArgs)
{
    REAL_ONCE(vsnprintf_s);
    return TextResult(real(pcDest, ulDestMax, pcFormat, vaArgs), -1, pcDest);
}

int snprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, ...)
{
    va_list args;
    va_start(args, pcFormat);
    const int result = vsnprintf_s(pcDest, ulDestMax, pcFormat, args);
    va_end(args);
    return result;
}

int sprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, ...)
{
    va_list args;
    va_start(args, pcFormat);
    const int length = std::vsnprintf(pcDest, ulDestMax, pcFormat, args);
    va_end(args);
    const bool violation = length < 0 || static_cast<size_t>(length) >= ulDestMax;
    if (violation)
        *pcDest = '\0';
    return TextResult(violation ? -1 : length, -1, pcDest);
}

int32_t XUR_StrCmp(const char *pcLeft, const char *pcRight)
{
    REAL_ONCE(XUR_StrCmp);
    CallWatcher();
    return real(pcLeft, pcRight);
}
