/* Noting why a module is refused. */
#include "telem_yang_lib/refusal.h"

namespace {

/* Closes all levels of an inquiry, and is the mark by which it is known: no host has this function. */
uint32_t IsOpenInInquiry(uint64_t, uint32_t)
{
    return 0;
}

} // namespace

korv::Inquiry korv::NewInquiry(const TELMYANG_LOCAL_DATA_S *pstHost)
{
    Inquiry stInquiry = {*pstHost, {}};
    for (TELMYANG_DEBUG_HOOK_S &stHook : stInquiry.stLocal.astDebugHook)
        stHook = {0, nullptr, IsOpenInInquiry};
    stInquiry.stLocal.pfnDatatypeAdapt = nullptr;
    return stInquiry;
}

void korv::Refuse(TELMYANG_LOCAL_DATA_S *pstLocal, const Refusal &stRefusal)
{
    if (pstLocal == nullptr || pstLocal->astDebugHook[0].pfnDebugIsOpen != IsOpenInInquiry)
        return;
    Refusal &stFirst = reinterpret_cast<Inquiry *>(pstLocal)->stRefusal;
    if (stFirst.eWhy == Why::NoMemory)
        stFirst = stRefusal;
}
