/* Blocks of a host's allocator, as the library makes and frees them. */
#pragma once

#include <korv_platform.h>

#include <cstddef>
#include <cstring>

namespace bench {

inline void *Make(size_t size)
{
    return ZOR_Malloc_F(1, g_aucZorMemPt[0], size, __FILE__, __LINE__);
}

inline void Release(void *block)
{
    ZOR_Free_F(block, __FILE__, __LINE__);
}

template <typename T>
T *MakeCopy(const T &record)
{
    return static_cast<T *>(std::memcpy(Make(sizeof(T)), &record, sizeof(T)));
}

inline char *MakeText(const char *text)
{
    const size_t size = std::strlen(text) + 1;
    return static_cast<char *>(std::memcpy(Make(size), text, size));
}

} // namespace bench
