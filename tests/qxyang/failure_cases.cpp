#include "failure_cases.h"

#include <gtest/gtest.h>

#include "schema.h"

namespace test {
namespace {

std::string Expand(std::string failures)
{
    for (size_t at = failures.find('@'); at != std::string::npos; at = failures.find('@'))
        failures.replace(at, 1, "m.yin:2:");
    return failures;
}

} // namespace

void ExpectFailures(const std::vector<FailureCase> &cases)
{
    for (const FailureCase &test : cases) {
        Schema schema;
        schema.Module("other", R"(<typedef name="known"><type name="string"/></typedef><grouping name="group"/>
            <extension name="ext"><argument name="value"/></extension>)");
        schema.Module("m", test.text, "other");
        EXPECT_EQ(schema.Failures("m"), Expand(test.failures)) << test.text;
    }
}

} // namespace test
