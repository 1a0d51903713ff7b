/* A whole process that loads one of the example modules, against a script that only parses the file. */
#include <filesystem>

#include "host.h"
#include "process_time.h"
#include "rows.h"

namespace bench {
namespace {

constexpr int REPETITIONS = 15;

/* The name of the largest example. */
std::string LargestExample(const std::string &dir)
{
    std::filesystem::path largest;
    for (const auto &entry : std::filesystem::directory_iterator(dir)) {
        if (entry.path().extension() != ".yin")
            continue;
        if (largest.empty() || entry.file_size() > std::filesystem::file_size(largest))
            largest = entry.path();
    }
    return largest.stem().string();
}

} // namespace

Rows ProcessRows(Runner &, const ModelFiles &)
{
    const std::string examples = std::string(KORV_SOURCE_DIR) + "/examples/yin";
    const std::string name = LargestExample(examples);
    const std::string file = examples + "/" + name + ".yin";
    const Command load = {Beside("korv-inspect"), "tree", name, "-d", examples};
    const Command script = {"/usr/bin/python3", std::string(KORV_SOURCE_DIR) + "/bench/list_leaves.py", file};
    if (!Succeeds(load) || !Succeeds(script))
        return {};
    return {{"load of " + name + ", whole process", "python3-lxml parses it, lists leaves",
             ProcessTimes::Ratio(load, script, REPETITIONS), 0.3}};
}

} // namespace bench
