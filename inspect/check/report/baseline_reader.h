/* The JSON of a baseline. */
#pragma once

#include <string>
#include <vector>

#include "check/report/baseline.h"

namespace inspect {

constexpr unsigned BASELINE_VERSION = 1;

/* The findings in the text of the file. Throws Failure: "FILE:LINE:COLUMN: what was expected". */
std::vector<Baseline::Entry> ReadBaselineText(const std::string &path, const std::string &text);

} // namespace inspect
