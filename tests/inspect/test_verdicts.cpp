/* What becomes of a model that breaks a rule of YANG: each rule that docs/yang-rules.md lists has models in verdicts/, which
 * the program judges in compact syntax and in YIN.
 *
 * A case begins with "== RULE[, version 1][, compact|yin]: VERDICT". The module that follows is named RULE, further ones of
 * the rule RULE-2 and so on; '%' stands for that name. "-- NAME" begins a further file. A text that is no whole module gets
 * the head of one before its first line. "@@" marks the places that the verdict names; \xNN and \uNNNN are a byte and a
 * character. "right" is the verdict of a model that keeps the rule. */
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

struct File {
    std::string name;
    std::string text;
    std::vector<size_t> marks; /* offsets */
};

struct Case {
    std::string rule;
    std::string verdict;
    bool isVersion1 = false;
    std::string syntax; /* the only one of it, or "" */
    std::vector<File> files;

    const std::string &Name() const { return files.front().name; }
    bool Is(const std::string &wanted) const { return syntax.empty() || syntax == wanted; }
};

/* What the program says of one module. */
struct Outcome {
    std::set<std::string> places; /* "NAME at FILE:LINE:COLUMN", or "NAME at FILE:STATEMENT" in YIN */
    std::string texts;            /* for a reader of a failing test */
};

void Replace(std::string &text, const std::string &from, const std::string &to)
{
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string Utf8(unsigned code)
{
    auto tail = [](unsigned bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    if (code < 0x800)
        return {static_cast<char>(0xC0 | code >> 6), tail(code)};
    return {static_cast<char>(0xE0 | code >> 12), tail(code >> 6), tail(code)};
}

std::string Unescaped(std::string text)
{
    std::smatch found;
    for (static const std::regex escape("\\\\x([0-9A-F]{2})|\\\\u([0-9A-F]{4})");
         std::regex_search(text, found, escape);) {
        auto code = static_cast<unsigned>(std::stoul(found[1].str() + found[2].str(), nullptr, 16));
        std::string character = found[1].matched ? std::string(1, static_cast<char>(code)) : Utf8(code);
        text.replace(static_cast<size_t>(found.position()), static_cast<size_t>(found.length()), character);
    }
    return text;
}

/* The text of a file as it is written: whole, named, without marks. */
void Finish(const Case &test, File &file)
{
    const std::string &main = test.files.front().name;
    Replace(file.name, "%", main);
    if (!std::regex_search(file.text, std::regex("^(@@)?((sub)?module |<module)"))) {
        const std::string module = file.name.substr(0, file.name.find('@'));
        file.text = std::string("module ") + module + " {" + (test.isVersion1 ? "" : " yang-version 1.1;") +
                    " namespace \"urn:" + module + "\"; prefix t;\n" + file.text + "}\n";
    }
    Replace(file.text, "%", main);
    file.text = Unescaped(file.text);
    for (size_t at = file.text.find("@@"); at != std::string::npos; at = file.text.find("@@")) {
        file.text.erase(at, 2);
        file.marks.push_back(at);
    }
}

std::vector<Case> ReadCases()
{
    std::vector<Case> cases;
    std::map<std::string, int> numbers;
    std::vector<std::filesystem::path> paths;
    for (const auto &entry : std::filesystem::directory_iterator(KORV_SOURCE_DIR "/tests/inspect/verdicts"))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const std::filesystem::path &path : paths) {
        std::ifstream stream(path);
        static const std::regex head("== ([a-z0-9-]+)(, version 1)?(, (compact|yin))?: (.*)");
        std::smatch found;
        for (std::string line; std::getline(stream, line);) {
            if (std::regex_match(line, found, head)) {
                int number = ++numbers[found[1]];
                std::string name = found[1].str() + (number > 1 ? "-" + std::to_string(number) : "");
                cases.push_back({found[1], found[5], found[2].matched, found[4], {{name, "", {}}}});
            } else if (line.rfind("-- ", 0) == 0) {
                cases.back().files.push_back({line.substr(3), "", {}});
            } else {
                cases.back().files.back().text += line + "\n";
            }
        }
    }
    for (Case &test : cases)
        for (File &file : test.files)
            Finish(test, file);
    return cases;
}

/* "3:12" of an offset. */
std::string LineAndColumn(const std::string &text, size_t offset)
{
    const auto line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n') + 1;
    return std::to_string(line) + ":" + std::to_string(offset - (line == 1 ? 0 : text.rfind('\n', offset - 1) + 1) + 1);
}

size_t OffsetOf(const std::string &text, uint32_t line, uint32_t column)
{
    size_t offset = 0;
    for (uint32_t at = 1; at < line; ++at)
        offset = text.find('\n', offset) + 1;
    return std::min(offset + column - 1, text.size());
}

/* "type string" of the statement around an offset, in either syntax; "must" where the argument is no plain word or where
 * YIN has it in an element. */
std::string StatementAt(const std::string &text, size_t offset)
{
    const bool isYin = text.front() == '<';
    const size_t before = isYin ? text.rfind('<', offset) : text.find_last_of(";{}\n", offset == 0 ? 0 : offset - 1);
    const std::string rest = text.substr(before == std::string::npos || offset == 0 ? 0 : before, 200);
    static const std::regex yin("^<([\\w:-]+)( [a-z-]+=\"([\\w.:/-]+)\")?");
    static const std::regex compact("^[;{}\\s]*([\\w:-]+)( +\"?([\\w.:/-]+)(\"| *[;{]))?");
    static const std::regex withElement("description|reference|organization|contact|error-message");
    std::smatch found;
    if (!std::regex_search(rest, found, isYin ? yin : compact))
        return rest;
    const bool isPlain = found[3].matched && !std::regex_match(found[1].str(), withElement);
    return isPlain ? found[1].str() + " " + found[3].str() : found[1].str();
}

std::string ReadText(const std::filesystem::path &path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/* The verdicts of all cases, from one run for each syntax. */
class Verdicts : public ::testing::Test {
  protected:
    static void SetUpTestSuite()
    {
        cases = ReadCases();
        for (const std::string syntax : {"compact", "yin"}) {
            std::filesystem::create_directory(dir.Path() + "/" + syntax);
            std::filesystem::copy(dir.Path() + "/quelvo-mim-extensions.yin", dir.Path() + "/" + syntax);
        }
        std::string batch = "korv-inspect convert --to yin -o yin";
        std::string single;
        for (const Case &test : cases) {
            for (const File &file : test.files) {
                const bool isYin = test.syntax == "yin";
                const std::string path = isYin ? "yin/" + file.name + ".yin" : "compact/" + file.name + ".yang";
                dir.AddFile(path, file.text);
                if (file.name.find('@') != std::string::npos)
                    single += " && korv-inspect convert --to yin -o yin/" + file.name + ".yin " + path;
                else if (test.syntax.empty())
                    batch += " " + path;
            }
        }
        const Result made = RunShell("cd " + dir.Path() + " && " + batch + single);
        ASSERT_EQ(made.exitCode, 0) << made.err;
    }

    /* What the program finds, by module. */
    static std::map<std::string, Outcome> Judge(const std::string &syntax)
    {
        std::map<std::string, Outcome> outcomes;
        for (const Told &finding :
             FindingsOf(RunShell("cd " + dir.Path() + " && korv-inspect check --all --format json -d " + syntax))) {
            Outcome &outcome = outcomes[finding.module];
            outcome.texts += finding.text + "\n";
            if (std::regex_match(finding.text, std::regex("cannot (import|include) (sub)?module '[^']*'")))
                continue; // its own failures say why
            const std::string file = ReadText(dir.Path() + "/" + finding.file);
            const size_t offset = OffsetOf(file, std::max(finding.line, 1U), std::max(finding.column, 1U));
            outcome.places.insert(Place(finding.rule, finding.Stem(), file, offset));
        }
        return outcomes;
    }

    /* In compact syntax the very place, in YIN the statement. */
    static std::string Place(const std::string &name, const std::string &file, const std::string &text, size_t offset)
    {
        const bool isYin = !text.empty() && text.front() == '<';
        return name + " at " + file + ":" + (isYin ? StatementAt(text, offset) : LineAndColumn(text, offset));
    }

    static std::set<std::string> Expected(const Case &test, const std::string &syntax)
    {
        std::set<std::string> places;
        const std::string name =
            test.verdict == "the load fails" ? "load-failed" : test.verdict.substr(test.verdict.find(' ') + 1);
        for (const File &file : test.files)
            for (size_t mark : file.marks)
                places.insert(name + " at " + file.name + ":" +
                              (syntax == "yin" ? StatementAt(file.text, mark) : LineAndColumn(file.text, mark)));
        return places;
    }

    static void ExpectVerdicts(const std::string &syntax)
    {
        std::map<std::string, Outcome> outcomes = Judge(syntax);
        for (const Case &test : cases) {
            const Outcome &outcome = outcomes[test.Name()];
            if (test.Is(syntax)) {
                EXPECT_EQ(outcome.places, Expected(test, syntax)) << test.Name() << ": " << outcome.texts;
            }
        }
    }

    static inline ModelDir dir;
    static inline std::vector<Case> cases;
};

TEST_F(Verdicts, AreTheSameForAModelInCompactSyntax)
{
    ExpectVerdicts("compact");
}

TEST_F(Verdicts, AreTheSameForAModelInYin)
{
    ExpectVerdicts("yin");
}

/* "check: key-config", or "not checked", without what is said behind it. */
std::string DocumentedVerdict(std::string cell)
{
    Replace(cell, "`", "");
    cell = cell.substr(0, cell.find_first_of(",;"));
    return cell.substr(0, cell.rfind("not checked", 0) == 0 ? 11 : cell.size());
}

TEST(VerdictsDocument, SaysWhatBecomesOfTheModels)
{
    std::map<std::string, std::string> documented;
    std::ifstream stream(KORV_SOURCE_DIR "/docs/yang-rules.md");
    static const std::regex row("\\| [0-9.]+ \\| `([a-z0-9-]+)` \\| .* \\| (.*) \\|");
    std::smatch found;
    for (std::string line; std::getline(stream, line);) {
        if (std::regex_match(line, found, row)) {
            EXPECT_TRUE(documented.emplace(found[1], DocumentedVerdict(found[2])).second) << line;
        }
    }
    std::set<std::string> shown;
    for (const Case &test : ReadCases()) {
        ASSERT_EQ(documented.count(test.rule), 1U) << test.rule;
        if (test.verdict == "right")
            continue;
        EXPECT_EQ(test.verdict, documented[test.rule]) << test.Name();
        shown.insert(test.rule);
    }
    for (const auto &[rule, verdict] : documented)
        EXPECT_TRUE(shown.count(rule) != 0 || verdict == "not checked") << rule;
}

} // namespace
