/* A host in C++ that uses all pieces, and a function of a unit. */
#include <korv_lib_yang.h>
#include <korv_lib_yang/korv_lib_yang/korv_lib_yang.h>

int main(int, char **argv)
{
    if (YANGLIB_GetLibVersion() != KORV_LIB_YANG_VERSION_NUMBER)
        return 1;
    TELMYANG_LOCAL_DATA_S *pstLib = YANGLIB_Initial(1, 0, nullptr, argv[1], nullptr);
    if (pstLib == nullptr || YANGLIB_LoadYangModule(pstLib, "example-qos", nullptr) != KORV_OK)
        return 2;
    if (YANGLIB_IsInDeviationList("example-qos") != 0)
        return 3;
    YANGLIB_Uninitial(pstLib);
    return 0;
}
