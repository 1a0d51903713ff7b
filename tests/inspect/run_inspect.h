/* Running korv-inspect as a user does. */
#ifndef KORV_TEST_RUN_INSPECT_H
#define KORV_TEST_RUN_INSPECT_H

#include <rapidjson/document.h>

#include <cstdint>
#include <string>
#include <vector>

namespace test {

struct Result {
    int exitCode;
    std::string out;
    std::string err;
};

/* Runs a command of the shell in the project's directory, where `korv-inspect` is the one that was built. */
Result RunShell(const std::string &command);

/* Runs korv-inspect with these arguments. */
Result Inspect(const std::vector<std::string> &args);

/* The same with the example models' directory. */
Result InspectExamples(std::vector<std::string> args);

/* Standard output of a run that must have succeeded, as JSON. */
rapidjson::Document Json(const Result &result);

/* A finding of `check --format json`; "" and 0 stand for null. */
struct Told {
    std::string rule;
    std::string severity;
    std::string section;
    std::string module;
    std::string file;
    uint32_t line;
    uint32_t column;
    std::string text;
    uint32_t places;
    std::string firstPlace;

    /* The file's name without its folder and ending. */
    std::string Stem() const;
};
std::vector<Told> FindingsOf(const Result &result);

/* Text of a value, to compare it as a whole: {"a":1}. */
std::string Compact(const rapidjson::Value &value);

/* The line of a text that contains `part`; "" when there is none. */
std::string LineWith(const std::string &text, const std::string &part);

} // namespace test

#endif // KORV_TEST_RUN_INSPECT_H
