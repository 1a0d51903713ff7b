/* What holds of every instance, whatever was loaded. A check that fails ends the process with its text. */
#ifndef KORV_FUZZ_CHECKS_H
#define KORV_FUZZ_CHECKS_H

#include <string>

#include "korv_lib_yang.h"

namespace fuzz {

void Require(bool holds, const char *what, const std::string &where = "");

/* The registered module's trees: links, names, leaf lists, travel, dumps. Returns all of its dumps as text. */
std::string CheckTrees(TELMYANG_LOCAL_DATA_S *local, const TELMYANG_YANG_FILE_INFO_S *file);

/* Every node of the module's trees is found by both forms of its path. */
void CheckLookups(TELMYANG_LOCAL_DATA_S *local, const TELMYANG_YANG_FILE_INFO_S *file);

} // namespace fuzz

#endif // KORV_FUZZ_CHECKS_H
