/* Why a load failed, in words and with the place: made from the failures that the schema library recorded, or from the
 * library's own chain of messages, whose innermost ones say what happened and whose outer ones say to which node. */
#ifndef KORV_INSPECT_LOAD_CAUSES_H
#define KORV_INSPECT_LOAD_CAUSES_H

#include <string>
#include <vector>

#include "instance.h"
#include "yin_files.h"

namespace inspect {

struct Cause {
    std::string file;    /* as the command line names its directory; empty: not known */
    uint32_t line = 0;   /* 0: not known */
    uint32_t column = 0; /* 0: not known */
    std::string text;
};

/* The causes of a load that failed, or of a deviation module's failure beside one that did not. */
std::vector<Cause> CausesOf(const Instance &instance, const SearchDirs &dirs, const ModuleKey &key,
                            const LoadReport &report, YinFiles *files);

/* "FILE:LINE:COLUMN: " or what of it is known, else the module's name and ": ". */
std::string PlaceText(const Cause &cause, const std::string &module);

/* Loads what --load and the command name, in this order. The first module that fails is reported on standard error and
 * ends the run; what the library finds fault with in modules that do load is mentioned there as well. */
void LoadRequested(Instance *instance, const Arguments &args);

/* One of them. */
void LoadOrFail(Instance *instance, const Arguments &args, const ModuleKey &key);

} // namespace inspect

#endif // KORV_INSPECT_LOAD_CAUSES_H
