/* Models of an extreme shape cost no more a node than ordinary ones. */
#include "cycle.h"
#include "model_generator.h"
#include "rows.h"

namespace bench {
namespace {

constexpr uint32_t NODES = 100000;
constexpr uint32_t CHILDREN = 100000;
constexpr uint32_t CHAINS = 500;
constexpr uint32_t LEVELS = 200;
constexpr int64_t ITERATIONS = 2;

struct Shape {
    const char *name;
    std::string measure;
    std::string text;
    uint32_t nodes; /* of the schema */
};

} // namespace

Rows ShapeRows(Runner &runner, const ModelFiles &files)
{
    const Shape shapes[] = {
        {"bench-mixed", "", MixedModule("bench-mixed", NODES), NODES},
        {"bench-wide", "load of a container with " + Grouped(CHILDREN) + " child containers",
         WideModule("bench-wide", CHILDREN), CHILDREN + 1},
        {"bench-deep",
         "load of " + std::to_string(CHAINS) + " chains of lists, " + std::to_string(LEVELS) + " levels deep",
         DeepModule("bench-deep", CHAINS, LEVELS), 2 * CHAINS * LEVELS + 1},
    };
    for (const Shape &shape : shapes) {
        (void)files.Add(shape.name, shape.text);
        runner.Add(
            shape.name, [&](benchmark::State &state) { TimeCycles(state, files.Dir(), shape.name); }, ITERATIONS);
    }
    runner.Run();
    const auto timeANode = [&](const Shape &shape) { return runner.Median(shape.name, "load") / shape.nodes; };
    Rows rows;
    for (const Shape &shape : {shapes[1], shapes[2]})
        rows.push_back({shape.measure, "the mixed shape, a node", timeANode(shape) / timeANode(shapes[0]), 1.5});
    return rows;
}

} // namespace bench
