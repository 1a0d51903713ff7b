/* The node that the lookup row asks for. */
#ifndef KORV_BENCH_LOOKUP_PATH_H
#define KORV_BENCH_LOOKUP_PATH_H

#include <string>
#include <vector>

#include "korv_lib_yang.h"
#include "model_generator.h"

namespace bench {

struct LookupPath {
    static constexpr char MODULE[] = "bench-nest";
    static constexpr uint32_t LEVELS = 8;

    LookupPath() : names(NestPath(LEVELS))
    {
        for (const std::string &name : names) {
            plain += "/" + name;
            qualified += (qualified.empty() ? "b:" : "/b:") + name;
        }
    }

    YangXpathLookup Of(TELMYANG_LOCAL_DATA_S *local) const
    {
        return {local,
                MODULE,
                nullptr,
                plain.c_str(),
                qualified.c_str(),
                static_cast<uint32_t>(plain.size()),
                static_cast<uint32_t>(qualified.size())};
    }

    std::vector<std::string> names;
    std::string plain;
    std::string qualified;
};

} // namespace bench

#endif // KORV_BENCH_LOOKUP_PATH_H
