/* The rows of the table, a function a group: each makes its models, runs its benchmarks side by side and says what came
 * of them. */
#ifndef KORV_BENCH_ROWS_H
#define KORV_BENCH_ROWS_H

#include "model_files.h"
#include "runner.h"
#include "table.h"

namespace bench {

Rows LoadRows(Runner &runner, const ModelFiles &files);
Rows GrowthRows(Runner &runner, const ModelFiles &files);
Rows ShapeRows(Runner &runner, const ModelFiles &files);
Rows LookupRows(Runner &runner, const ModelFiles &files);
Rows IdRows(Runner &runner, const ModelFiles &files);
Rows TravelRows(Runner &runner, const ModelFiles &files);
Rows DumpRows(Runner &runner, const ModelFiles &files);
Rows MemoryRows(Runner &runner, const ModelFiles &files);
Rows ProcessRows(Runner &runner, const ModelFiles &files);
Rows AugmentRows(Runner &runner, const ModelFiles &files);
/* Of the set that the command line names, or of a generated one. */
Rows SetRows(Runner &runner, const ModelFiles &files);
Rows AssignRows(Runner &runner, const ModelFiles &files);

} // namespace bench

#endif // KORV_BENCH_ROWS_H
