/* docs/check-rules.md: each of its models is checked, in both syntaxes. The bad one gives findings of its rule alone, in the
 * words that stand behind it, the good one gives none. KORV_UPDATE_DOCUMENTS=1 writes today's words into the document. */
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <vector>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

constexpr const char *DOCUMENT = KORV_SOURCE_DIR "/docs/check-rules.md";

using Lines = std::vector<std::string>;
using Visit = std::function<void(const std::string &rule, bool isBad, const Lines &model, Lines *words)>;

/* The document with the words that visit(rule, isBad, model, words) leaves behind each bad model. */
Lines Walk(const Visit &visit)
{
    Lines out;
    std::ifstream stream(DOCUMENT);
    std::string rule;
    bool isBad = false;
    for (std::string line; std::getline(stream, line);) {
        out.push_back(line);
        rule = line.starts_with("### ") ? line.substr(4) : rule;
        isBad = line == "Bad:" || (isBad && line != "Good:");
        if (line != "```yang")
            continue;
        Lines model;
        for (; std::getline(stream, line) && line != "```"; out.push_back(line))
            model.push_back(line);
        out.push_back(line);
        Lines words;
        std::string next = isBad && std::getline(stream, line) && std::getline(stream, line) ? line : "";
        for (; next == "```text" && std::getline(stream, line) && line != "```";)
            words.push_back(line);
        visit(rule, isBad, model, &words);
        if (isBad)
            out.insert(out.end(), {"", "```text"});
        out.insert(out.end(), words.begin(), words.end());
        if (isBad)
            out.push_back("```");
        if (isBad && next != "```text")
            out.insert(out.end(), {"", next});
        isBad = isBad && next != "Good:";
    }
    return out;
}

/* Writes the files of a model. */
Lines AddFiles(ModelDir *dir, const Lines &model)
{
    const bool isWhole = model.front().starts_with("// ");
    Lines names;
    std::string text =
        "module example {\n  yang-version 1.1;\n  namespace \"urn:example\";\n  prefix e;\n"
        "  import quelvo-mim-extensions { prefix mimext; }\n";
    if (!isWhole)
        names.emplace_back("example.yang");
    for (const std::string &line : model) {
        if (!line.starts_with("// ")) {
            text += line + "\n";
            continue;
        }
        if (!names.empty())
            dir->AddFile(names.back(), text);
        names.push_back(line.substr(3));
        text.clear();
    }
    dir->AddFile(names.back(), text + (isWhole ? "" : "}\n"));
    return names;
}

/* "SEVERITY: TEXT [RULE]" lines of a run over a folder of the directory. */
Lines Findings(const ModelDir &dir, const std::string &folder)
{
    std::istringstream out(RunShell("cd " + dir.Path() + "/" + folder + " && korv-inspect check --all -d .").out);
    Lines findings;
    for (std::string line; std::getline(out, line);)
        if (line.ends_with("]") && line.find(": ") != std::string::npos)
            findings.push_back(line);
    return findings;
}

std::set<std::string> RulesIn(const Lines &findings)
{
    std::set<std::string> rules;
    for (const std::string &line : findings)
        rules.insert(line.substr(line.rfind('[') + 1, line.size() - line.rfind('[') - 2));
    return rules;
}

/* The same files in YIN; none when one is in YIN already. */
bool AddTwins(const ModelDir &dir, const Lines &names)
{
    std::string convert = "cd " + dir.Path() + " && mkdir yin && cp quelvo-mim-extensions.yin yin";
    for (const std::string &name : names) {
        if (name.ends_with(".yin"))
            return false;
        convert += " && korv-inspect convert -d . -o yin/" + name.substr(0, name.rfind('.')) + ".yin " + name;
    }
    const Result result = RunShell(convert);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return true;
}

TEST(InspectCheckRules, AreAsTheDocumentSays)
{
    const Lines document = Walk([](const std::string &rule, bool isBad, const Lines &model, Lines *words) {
        ModelDir dir;
        const Lines names = AddFiles(&dir, model);
        const Lines findings = Findings(dir, ".");
        const std::set<std::string> expected = isBad ? std::set<std::string>{rule} : std::set<std::string>();
        EXPECT_EQ(RulesIn(findings), expected) << rule << ": " << testing::PrintToString(findings);
        if (AddTwins(dir, names)) {
            EXPECT_EQ(RulesIn(Findings(dir, "yin")), expected) << rule << " in YIN";
        }
        if (!isBad)
            return;
        if (std::getenv("KORV_UPDATE_DOCUMENTS") == nullptr) {
            EXPECT_EQ(*words, findings) << rule;
        }
        *words = findings;
    });
    if (std::getenv("KORV_UPDATE_DOCUMENTS") == nullptr)
        return;
    std::ofstream out(DOCUMENT);
    for (const std::string &line : document)
        out << line << "\n";
}

/* Rules of the RFC have a document of their own. */
TEST(InspectCheckRules, OfTheToolsOwnAreAllInTheDocument)
{
    std::ifstream stream(DOCUMENT);
    std::set<std::string> described;
    for (std::string line; std::getline(stream, line);)
        if (line.starts_with("### "))
            described.insert(line.substr(4));
    std::set<std::string> own;
    const rapidjson::Document rules = Json(Inspect({"check", "--rules", "--format", "json"}));
    for (const rapidjson::Value &rule : rules.GetArray())
        if (rule["section"].IsNull())
            own.insert(rule["name"].GetString());
    EXPECT_EQ(described, own);
}

} // namespace
