/* The nodes that the lookup rows ask for. */
#ifndef KORV_BENCH_LOOKUP_PATH_H
#define KORV_BENCH_LOOKUP_PATH_H

#include <string>
#include <vector>

#include "korv_lib_yang.h"
#include "model_generator.h"

namespace bench {

/* A node of a module, by its path in both forms. */
struct NodePath {
    YangXpathLookup In(TELMYANG_LOCAL_DATA_S *local, const char *module) const
    {
        return {local,
                module,
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

struct LookupPath : NodePath {
    static constexpr char MODULE[] = "bench-nest";
    static constexpr uint32_t LEVELS = 8;

    LookupPath()
    {
        names = NestPath(LEVELS);
        for (const std::string &name : names) {
            plain += "/" + name;
            qualified += (qualified.empty() ? "b:" : "/b:") + name;
        }
    }

    YangXpathLookup Of(TELMYANG_LOCAL_DATA_S *local) const { return In(local, MODULE); }
};

/* A path of as many components: a node that AUGMENT adds to the last node but one of that path. */
struct AugmentPath : NodePath {
    static constexpr char AUGMENT[] = "bench-nest-augment";

    AugmentPath()
    {
        names = NestPath(LookupPath::LEVELS - 1);
        for (const std::string &name : names) {
            plain += "/" + name;
            target += "/b:" + name;
        }
        names.push_back("added");
        plain += "/added";
        qualified = target.substr(1) + "/x:added";
    }

    YangXpathLookup Of(TELMYANG_LOCAL_DATA_S *local) const { return In(local, AUGMENT); }

    std::string target; /* of the augment */
};

} // namespace bench

#endif // KORV_BENCH_LOOKUP_PATH_H
