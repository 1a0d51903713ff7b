/* Giving ids to a model that has none, whole process, against one that loads the result. */
#include "model_generator.h"
#include "process_time.h"
#include "rows.h"

namespace bench {
namespace {

constexpr char NAME[] = "bench-plain";
constexpr uint32_t NODES = 100000;
constexpr int REPETITIONS = 5;

/* The module without the statements of the extension module. */
std::string WithoutIds(const std::string &text)
{
    std::string plain;
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = text.find('\n', begin) + 1;
        const std::string line = text.substr(begin, end - begin);
        if (line.find("<mimext:") == std::string::npos && line.find("</mimext:") == std::string::npos)
            plain += line;
        begin = end;
    }
    return plain;
}

} // namespace

Rows AssignRows(Runner &, const ModelFiles &files)
{
    const std::string text = WithoutIds(MixedModule(NAME, NODES));
    const Command assign = {Beside("korv-inspect"), "ids", "assign", NAME, "-d", files.Dir()};
    const Command load = OperationCommand("load", files.Dir(), NAME);
    ProcessTimes assigns;
    ProcessTimes loads;
    for (int i = 0; i < REPETITIONS; ++i) {
        (void)files.Add(NAME, text);
        assigns.Add(assign);
        loads.Add(load);
    }
    return {{"korv-inspect ids assign of " + Grouped(NODES) + " nodes, whole process",
             "a process that loads the result", assigns.Median() / loads.Median(), 3}};
}

} // namespace bench
