/* The document and the demo show what the program does: run again, every example gives what stands there.
 * KORV_UPDATE_DOCUMENTS=1 writes today's output into the document instead. */
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "inspect/run_inspect.h"

using namespace test;

namespace {

constexpr const char *DOCUMENT = KORV_SOURCE_DIR "/docs/inspector.md";
constexpr const char *PROMPT = "$ ";

/* The text of a console block: commands, and after each of them what it prints on either output. */
std::string Rerun(const std::string &block)
{
    std::string text;
    std::istringstream lines(block);
    for (std::string line; std::getline(lines, line);) {
        if (line.find(PROMPT) == 0)
            text += line + "\n" + RunShell("{ " + line.substr(2) + "\n} 2>&1").out;
    }
    return text;
}

TEST(InspectDocuments, EveryExampleOfTheDocumentIsReal)
{
    std::ostringstream read;
    read << std::ifstream(DOCUMENT).rdbuf();
    const std::string document = read.str();
    const bool update = std::getenv("KORV_UPDATE_DOCUMENTS") != nullptr;
    const std::string begin = "```console\n";
    std::string updated;
    size_t blocks = 0;
    size_t at = 0;
    for (size_t block = document.find(begin); block != std::string::npos; block = document.find(begin, at)) {
        block += begin.size();
        const size_t end = document.find("```\n", block);
        ASSERT_NE(end, std::string::npos);
        const std::string now = Rerun(document.substr(block, end - block));
        if (!update) {
            EXPECT_EQ(now, document.substr(block, end - block));
        }
        updated += document.substr(at, block - at) + now;
        at = end;
        ++blocks;
    }
    EXPECT_GE(blocks, 8U) << "a block a command at least";
    if (update)
        std::ofstream(DOCUMENT) << updated << document.substr(at);
}

TEST(InspectDocuments, TheDemoShowsTheExamplesAndFailsWhenACommandFails)
{
    const Result result = RunShell("sh examples/demo.sh " KORV_BINARY_DIR "/bin/korv-inspect");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    for (const char *command :
         {"tree example-interfaces", "tree example-qos", "tree example-interface-qos", "tree quelvo-bras-user-manage"})
        EXPECT_NE(LineWith(result.out, std::string("$ korv-inspect ") + command), "") << command;
    EXPECT_EQ(RunShell("sh examples/demo.sh false").exitCode, 1);
}

}  // namespace
