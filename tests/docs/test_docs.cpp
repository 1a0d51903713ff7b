/* The documents show real commands with their real output, and the real text of example files.
 *
 * A block marked `console` holds commands, each behind "$ ", and what they print (both outputs); a line of three dots stands
 * for any number of lines. A block behind a comment that names a file holds that file's text. */
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

const fs::path SOURCE = KORV_SOURCE_DIR;

struct Block {
    std::string language;
    std::string file; /* named by the comment in front of the block */
    Lines lines;
};

Lines ReadLines(const fs::path &path)
{
    Lines lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

std::vector<Block> BlocksOf(const fs::path &document)
{
    std::vector<Block> blocks;
    std::string file;
    bool inside = false;
    for (const std::string &line : ReadLines(document)) {
        if (line.rfind("```", 0) == 0) {
            inside = !inside;
            if (inside)
                blocks.push_back({line.substr(3), file, {}});
            file.clear();
        } else if (inside) {
            blocks.back().lines.push_back(line);
        } else if (line.rfind("<!-- file: ", 0) == 0) {
            file = line.substr(11, line.size() - 11 - 4);
        }
    }
    return blocks;
}

std::string Run(const std::string &command)
{
    const std::string whole = "cd '" KORV_SOURCE_DIR "' && PATH='" KORV_BINARY_DIR "/bin':$PATH && { " + command + "\n} 2>&1";
    FILE *pipe = popen(whole.c_str(), "r");
    std::string text;
    std::array<char, 4096> buffer;
    for (size_t num; pipe != nullptr && (num = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        text.append(buffer.data(), num);
    if (pipe != nullptr)
        pclose(pipe);
    return text;
}

Lines SplitLines(const std::string &text)
{
    Lines lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

/* Whether the lines are the expected ones, "..." standing for any number of them. */
bool Matches(const Lines &expected, size_t e, const Lines &lines, size_t l)
{
    for (; e < expected.size() && expected[e] != "..."; ++e, ++l) {
        if (l == lines.size() || lines[l] != expected[e])
            return false;
    }
    if (e == expected.size())
        return l == lines.size();
    for (; l <= lines.size(); ++l) {
        if (Matches(expected, e + 1, lines, l))
            return true;
    }
    return false;
}

void ExpectConsole(const fs::path &document, const Block &block)
{
    size_t i = 0;
    while (i < block.lines.size()) {
        ASSERT_EQ(block.lines[i].rfind("$ ", 0), 0u) << document << ": no command: " << block.lines[i];
        const std::string command = block.lines[i++].substr(2);
        Lines expected;
        while (i < block.lines.size() && block.lines[i].rfind("$ ", 0) != 0)
            expected.push_back(block.lines[i++]);
        const std::string output = Run(command);
        EXPECT_TRUE(Matches(expected, 0, SplitLines(output), 0)) << document << ": $ " << command << "\n" << output;
    }
}

std::vector<fs::path> Documents()
{
    std::vector<fs::path> documents = {SOURCE / "README.md"};
    for (const auto &entry : fs::directory_iterator(SOURCE / "docs")) {
        if (entry.path().extension() == ".md")
            documents.push_back(entry.path());
    }
    return documents;
}

TEST(Documents, ShowWhatCommandsPrint)
{
    size_t blocks = 0;
    for (const fs::path &document : Documents()) {
        for (const Block &block : BlocksOf(document)) {
            if (block.language != "console")
                continue;
            ++blocks;
            ExpectConsole(document, block);
        }
    }
    EXPECT_GT(blocks, 0u);
}

TEST(Documents, QuoteFilesAsTheyAre)
{
    size_t files = 0;
    for (const fs::path &document : Documents()) {
        for (const Block &block : BlocksOf(document)) {
            if (block.file.empty())
                continue;
            ++files;
            EXPECT_EQ(block.lines, ReadLines(SOURCE / block.file)) << document << " quotes " << block.file;
        }
    }
    EXPECT_GT(files, 0u);
}

} // namespace
