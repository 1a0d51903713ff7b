/* A load's failure as a person reads it: first the lines that say where and why, then one that says what follows. */
#ifndef KORV_INSPECT_LOAD_REPORT_H
#define KORV_INSPECT_LOAD_REPORT_H

#include <string>

#include "instance.h"

namespace inspect {

/* "FILE:LINE:COLUMN: text", or what of it is known. */
std::string ProblemText(const SearchDirs &dirs, const LoadProblem &problem);

/* Lines on standard error; nothing for a load without problems and errors. */
void PrintLoadReport(const SearchDirs &dirs, const ModuleKey &key, const LoadReport &report);

std::string LoadFailedText(const ModuleKey &key, const LoadReport &report, bool verbose);

}  // namespace inspect

#endif  // KORV_INSPECT_LOAD_REPORT_H
