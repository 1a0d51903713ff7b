/* The documents show real commands with what they print, and the real text of example files.
 *
 * A block marked `console` holds commands, each behind "$ ", and what they print on either output. A block behind a comment
 * that names a file holds that file's text. KORV_UPDATE_DOCUMENTS=1 writes today's texts into the documents instead.
 *
 * The host guide lists every text that the library logs for a failure; what documents name exists. */
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "inspect/run_inspect.h"

namespace {

namespace fs = std::filesystem;

const fs::path SOURCE = KORV_SOURCE_DIR;

std::string ReadFile(const fs::path &path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

std::vector<fs::path> Documents()
{
    std::vector<fs::path> documents = {SOURCE / "README.md", SOURCE / "CONTRIBUTING.md"};
    for (const auto &entry : fs::directory_iterator(SOURCE / "docs")) {
        if (entry.path().extension() == ".md" && (KORV_SHOWS_PYTHON || entry.path().filename() != "python.md"))
            documents.push_back(entry.path());
    }
    return documents;
}

/* The text of a console block, run again. */
std::string Rerun(const std::string &block)
{
    std::string text;
    std::istringstream lines(block);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("$ ", 0) == 0)
            text += line + "\n" + test::RunShell("{ " + line.substr(2) + "\n} 2>&1").out;
    }
    return text;
}

/* Compares what stands between each opening text and the next "```" with what `real` makes of it; the number of blocks.
 * What the opening text leaves of its line goes to `real` as well. */
size_t CompareBlocks(const fs::path &path, const std::string &open,
                     const std::function<std::string(const std::string &)> &real)
{
    const std::string document = ReadFile(path);
    const bool update = std::getenv("KORV_UPDATE_DOCUMENTS") != nullptr;
    std::string updated;
    size_t blocks = 0;
    size_t at = 0;
    for (size_t begin = document.find(open); begin != std::string::npos; begin = document.find(open, at)) {
        begin += open.size();
        const size_t end = document.find("\n```\n", begin);
        if (end == std::string::npos)
            break;
        const std::string shown = document.substr(begin, end + 1 - begin);
        const std::string now = real(shown);
        if (!update) {
            EXPECT_EQ(now, shown) << path;
        }
        updated += document.substr(at, begin - at) + now;
        at = end + 1;
        ++blocks;
    }
    if (update)
        std::ofstream(path, std::ios::binary) << updated << document.substr(at);
    return blocks;
}

TEST(Documents, ShowWhatCommandsPrint)
{
    size_t blocks = 0;
    for (const fs::path &path : Documents())
        blocks += CompareBlocks(path, "```console\n", Rerun);
    EXPECT_GE(blocks, 8u);
}

TEST(Documents, QuoteFilesAsTheyAre)
{
    /* "<!-- file: PATH -->", the opening line of a block, then the file's text. */
    const auto quote = [](const std::string &shown) {
        const std::string name = shown.substr(0, shown.find(" -->"));
        const size_t text = shown.find('\n', shown.find("```")) + 1;
        return shown.substr(0, text) + ReadFile(SOURCE / name);
    };
    size_t blocks = 0;
    for (const fs::path &path : Documents())
        blocks += CompareBlocks(path, "<!-- file: ", quote);
    EXPECT_GE(blocks, 1u);
}

/* What the expression's group finds in the text. */
std::multiset<std::string> FindAll(const std::string &text, const std::string &expression)
{
    const std::regex sought(expression);
    std::multiset<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), sought), end; match != end; ++match)
        found.insert((*match)[1].str());
    return found;
}

TEST(Documents, ListEveryTextThatTheLibraryLogsForAFailure)
{
    std::multiset<std::string> logged;
    size_t calls = 0;
    for (const auto &entry : fs::recursive_directory_iterator(SOURCE / "korv_lib_yang")) {
        if (entry.path().extension() != ".cpp")
            continue;
        const std::string source = ReadFile(entry.path());
        calls += FindAll(source, R"((KORV_LOG_ERROR\())").size();
        logged.merge(FindAll(source, R"re(KORV_LOG_ERROR\(\s*[^,"]+,\s*"((?:[^"\\]|\\.)*)")re"));
    }
    EXPECT_EQ(logged.size(), calls) << "a text that this test cannot read";
    const std::string guide = ReadFile(SOURCE / "docs/host-guide.md");
    const size_t tables = guide.find("## What each failure logs");
    ASSERT_NE(tables, std::string::npos);
    const auto listed = FindAll(guide.substr(tables), R"(\n\| `([^`]*)` \|)");
    EXPECT_EQ(std::set<std::string>(listed.begin(), listed.end()), std::set<std::string>(logged.begin(), logged.end()));
}

TEST(Documents, MapEveryFunctionOfTheHost)
{
    const std::string guide = ReadFile(SOURCE / "docs/host-guide.md");
    const size_t map = guide.find("### Which function is for what");
    ASSERT_NE(map, std::string::npos);
    const auto listed = FindAll(guide.substr(map, guide.find("\n##", map + 1) - map), "`([A-Z]+_[A-Za-z]+)`");
    size_t declared = 0;
    for (const char *header : {"include/korv_lib_yang.h", "include/korv_lib_yang_query.h"}) {
        for (const std::string &name :
             FindAll(ReadFile(SOURCE / header), R"(KORV_LIB_API [^;(]*\b([A-Z]+_[A-Za-z]+)\()")) {
            EXPECT_GE(listed.count(name), 1u) << name;
            ++declared;
        }
    }
    EXPECT_GE(declared, 30u);
}

TEST(Documents, NameFilesAndCommandsThatExist)
{
    const auto commands = FindAll(ReadFile(SOURCE / "dev"), R"(\n([a-z]+)\))");
    size_t named = 0;
    for (const fs::path &path : Documents()) {
        const std::string document = ReadFile(path);
        for (const std::string &command : FindAll(document, R"(\./dev ([a-z]+))"))
            EXPECT_EQ(commands.count(command), 1u) << path << ": ./dev " << command;
        for (const std::string &file : FindAll(document, "`([a-z_]+/[^`* ]*)`")) {
            if (!fs::exists(SOURCE / file.substr(0, file.find('/'))) || file.rfind("build/", 0) == 0)
                continue; /* no path of this project */
            EXPECT_TRUE(fs::exists(SOURCE / file)) << path << ": " << file;
            ++named;
        }
    }
    EXPECT_GE(named, 20u);
}

} // namespace
