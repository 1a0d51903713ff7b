/* A directory of modules that belong together, loaded one after the other into one instance. */
#ifndef KORV_BENCH_MODEL_SET_H
#define KORV_BENCH_MODEL_SET_H

#include <string>
#include <vector>

#include "host.h"
#include "model_files.h"

namespace bench {

struct ModelSet {
    /* The modules of the directory's .yin files by name, submodules left out. */
    explicit ModelSet(const std::string &from);

    /* Loads each module by name, those that others import as well. Ends the program when one cannot be loaded. */
    void LoadInto(const Instance &instance) const;

    std::string dir;
    std::vector<std::string> modules;
    std::vector<std::string> texts; /* of all files, submodules included */
};

/* Writes a set that is shaped like public ones: a few modules with trees, most modules with several augments of one of
 * these. */
void WriteSet(const ModelFiles &files);

} // namespace bench

#endif // KORV_BENCH_MODEL_SET_H
