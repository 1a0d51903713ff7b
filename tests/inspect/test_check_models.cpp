/* check: models whose lines say what is found there, the files of marked/. Behind "// " stand the rules of the findings at the
 * line, behind "//: " those when module 'changes' is loaded. */
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

struct Found {
    uint32_t line;
    std::string rule;
    std::string keyword; /* of the statement that the finding points at, or into */
};

using Lines = std::vector<std::pair<uint32_t, std::string>>; /* line and rule, in the order of lines */

/* What the lines of a text say that is found at them. */
Lines Expected(const std::filesystem::path &file, const std::string &mark)
{
    Lines findings;
    std::ifstream lines(file);
    unsigned number = 1;
    for (std::string line; std::getline(lines, line); ++number)
        if (size_t at = line.find(mark); at != std::string::npos) {
            std::istringstream words(line.substr(at + mark.size()));
            for (std::string rule; words >> rule && rule.find('-') != std::string::npos;)
                findings.emplace_back(number, rule);
        }
    return findings;
}

/* "must" for any column of `must "../x";`, and for the first one of `<must condition="../x"/>`. */
std::string KeywordAt(const std::string &file, uint32_t line, uint32_t column)
{
    std::ifstream stream(file);
    std::string text;
    for (uint32_t i = 0; i < line; ++i)
        std::getline(stream, text);
    const bool isYin = file.ends_with(".yin");
    const size_t before = isYin ? column - 2 : text.find_last_of(";{}", column - 1);
    const size_t begin = text.find_first_not_of(" ", before + 1) + (isYin && text[column - 1] == '<' ? 1 : 0);
    return text.substr(begin, text.find_first_of(" />", begin) - begin);
}

class InspectCheckModels : public ::testing::Test {
  protected:
    InspectCheckModels()
    {
        for (const char *folder : {"/yang", "/yin"})
            std::filesystem::create_directory(dir.Path() + folder);
        for (const auto &file : std::filesystem::directory_iterator(KORV_SOURCE_DIR "/tests/inspect/marked")) {
            models.push_back(file.path());
            std::filesystem::copy(file.path(), dir.Path() + "/yang");
        }
    }

    Result Run(const std::string &command, const std::string &folder = "yang")
    {
        return RunShell("cd " + dir.Path() + " && korv-inspect " + command + " -d " + folder + " -d .");
    }

    /* Adds what is found, by file. */
    void Check(const std::string &arguments, const std::string &folder,
               std::map<std::string, std::vector<Found>> *found)
    {
        for (const Told &one : FindingsOf(Run("check --format json " + arguments, folder)))
            if (one.line != 0)
                (*found)[one.Stem()].push_back(
                    {one.line, one.rule, KeywordAt(dir.Path() + "/" + one.file, one.line, one.column)});
    }

    ModelDir dir;
    std::vector<std::filesystem::path> models;
};

Lines LinesOf(const std::vector<Found> &findings)
{
    Lines lines;
    for (const Found &finding : findings)
        lines.emplace_back(finding.line, finding.rule);
    return lines;
}

TEST_F(InspectCheckModels, LinesThatBreakARuleAreFoundInBothSyntaxes)
{
    const Result converted = Run("convert yang/*.yang -o yin");
    ASSERT_EQ(converted.exitCode, 0) << converted.err;
    std::map<std::string, std::vector<Found>> compact;
    std::map<std::string, std::vector<Found>> yin;
    /* The deviations are checked apart: on one device, they would change what the others are. */
    Check("changes", "yang", &compact);
    Check("changes", "yin", &yin);
    RunShell("rm " + dir.Path() + "/*/changes.*");
    Check("--all", "yang", &compact);
    Check("--all", "yin", &yin);
    for (const std::filesystem::path &model : models) {
        const std::string name = model.stem();
        EXPECT_EQ(LinesOf(compact[name]), Expected(model, "// ")) << name;
        ASSERT_EQ(yin[name].size(), compact[name].size()) << name << " in YIN";
        for (size_t i = 0; i < yin[name].size(); ++i) {
            EXPECT_EQ(yin[name][i].rule, compact[name][i].rule) << name << ".yin:" << yin[name][i].line;
            EXPECT_EQ(yin[name][i].keyword, compact[name][i].keyword) << name << ".yin:" << yin[name][i].line;
        }
    }
}

TEST_F(InspectCheckModels, DeviationsTakePart)
{
    std::map<std::string, std::vector<Found>> found;
    Check("mandatory references targets --load changes", "yang", &found);
    for (const std::filesystem::path &model : models)
        EXPECT_EQ(LinesOf(found[model.stem()]), Expected(model, "//: ")) << model;
}

TEST_F(InspectCheckModels, TextsSayWhatToDo)
{
    const std::string text = Run("check changes mandatory targets --load changes").out + Run("check --all").out;
    for (const char *part :
         {"(see yang/changes.yang:7) (RFC 7950, 7.9.3) [mandatory-default-case]",
          "changes.yang:12:23: warning: the deviation leaves out '/gone/a', to which leafref '/one/ref' and 1 other "
          "refer (see yang/targets.yang:7) (RFC 7950, 7.20.3) [removed-leafref-target]",
          "targets.yang:10:3: warning: leafref '/either' refers to '/b', which a deviation leaves out (see "
          "yang/changes.yang:13) (RFC 7950, 7.20.3) [removed-leafref-target]",
          "1 key of class /keys/above (0x6) has no attribute id in class /keys/above/clash (0x7): the field-id 3 of "
          "ancestor-key-fid 2 is the attribute id of leaf 'n' as well (line 57) [",
          "2 keys of class /keys/above (0x6) have no attribute id in class /keys/above/without (0x8): add an "
          "ancestor-key-fid for keys 1, 2 [",
          "class /keys/above/few (0xa): add an attribute id for key 2 to its ancestor-key-fid [",
          "class /keys/above/hollow (0xb): write a field-id into ancestor-key-fid 1 [",
          "container 'more': it has 3 ancestor keys, but the lists above it have 2 keys",
          "class /top/twin (0x1) has the class id of /numbers of module 'attributes' (yang/attributes.yang:13)",
          "leaf 'far' of class /numbers (0x1): attribute ids end at 255, so that field-id 0x101 becomes 1 [",
          "leaf 'word': field-id 'abc' is no number: it counts as 0",
          "leaf 'eight': field-id '0500' is octal and counts as 64: ",
          "leaf 'less': field-id '-3' is no number: it counts as 253",
          "container 'minus': class-id '-2' is no number: it counts as 0xfffffffe"})
        EXPECT_NE(LineWith(text, part), "") << part << "\n" << text;
}

} // namespace
