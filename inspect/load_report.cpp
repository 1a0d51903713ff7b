#include "load_report.h"

#include <cstdio>

namespace inspect {

std::string ProblemText(const SearchDirs &dirs, const LoadProblem &problem)
{
    if (problem.file.empty())
        return problem.module + ": " + problem.text;
    std::string text = ShownPath(dirs, problem.file);
    if (problem.line != 0)
        text += ":" + std::to_string(problem.line) + ":" + std::to_string(problem.column);
    return text + ": " + problem.text;
}

void PrintLoadReport(const SearchDirs &dirs, const ModuleKey &key, const LoadReport &report)
{
    for (const LoadProblem &problem : report.problems)
        std::fprintf(stderr, "%s\n", ProblemText(dirs, problem).c_str());
    if (!report.problems.empty())
        return;
    for (const std::string &error : report.errors)
        std::fprintf(stderr, "%s: %s\n", key.name.c_str(), error.c_str());
}

std::string LoadFailedText(const ModuleKey &key, const LoadReport &, bool verbose)
{
    return "module '" + key.name + "' cannot be loaded" + (verbose ? "" : " (-v shows all that the library says)");
}

}  // namespace inspect
