/* The demo shows what the program does with the example models. */
#include <gtest/gtest.h>

#include "inspect/run_inspect.h"

using namespace test;

namespace {

TEST(Demo, ShowsTheExamplesAndFailsWhenACommandFails)
{
    const Result result =
        RunShell("sh examples/demo.sh " KORV_BINARY_DIR "/bin/korv-inspect " KORV_BINARY_DIR "/examples.html");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    for (const char *command :
         {"tree example-interfaces", "tree example-qos", "tree example-interface-qos", "tree quelvo-bras-user-manage"})
        EXPECT_NE(LineWith(result.out, std::string("$ korv-inspect ") + command), "") << command;
    EXPECT_EQ(LineWith(result.out, "The page: "), "The page: " KORV_BINARY_DIR "/examples.html");
    EXPECT_EQ(RunShell("test -s " KORV_BINARY_DIR "/examples.html").exitCode, 0);
    EXPECT_EQ(RunShell("sh examples/demo.sh false x").exitCode, 1);
}

} // namespace
