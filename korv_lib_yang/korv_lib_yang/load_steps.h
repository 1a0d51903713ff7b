/* The steps of a load that are the library's own. */
#ifndef KORV_LOAD_STEPS_H
#define KORV_LOAD_STEPS_H

#include "korv_lib_yang/korv_lib_yang.h"

namespace korv {

/* Steps 4 and 5 for a module that the schema library has loaded, and a record that is not registered. */
uint32_t ReadAndBuild(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile, const char *pcModuleName,
                      const char *pcRevision, QY_MOD *pMod);

} // namespace korv

#endif // KORV_LOAD_STEPS_H
