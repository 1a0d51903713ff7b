/* check: why a module is not loaded, and the statement that is to blame. */
#include <gtest/gtest.h>

#include <fstream>
#include <regex>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

/* The name on a line of a YIN file, or "class-id 1" for a line that begins with an extension statement. */
std::string NameAt(const std::string &file, uint32_t line)
{
    std::ifstream stream(file);
    std::string text;
    for (uint32_t i = 0; i < line; ++i)
        std::getline(stream, text);
    std::smatch found;
    if (std::regex_search(text, found, std::regex("^<mimext:([a-z0-9-]+) value=\"([^\"]*)")))
        return found[1].str() + " " + found[2].str();
    return std::regex_search(text, found, std::regex("name=\"([^\"]*)")) ? found[1].str() : "?";
}

class InspectCheckRefused : public ::testing::Test {
  protected:
    Result Run(std::vector<std::string> args)
    {
        args.insert(args.begin(), "check");
        args.insert(args.end(), {"-d", dir.Path()});
        return Inspect(args);
    }

    using Texts = std::vector<std::string>;

    /* "RULE at STATEMENT" of each finding, in order; the statement is what stands on the finding's line. */
    Texts Findings(const std::string &module)
    {
        Texts findings;
        for (const Told &finding : FindingsOf(Run({module, "--format", "json"})))
            findings.push_back(finding.rule + " at " + NameAt(finding.file, finding.line));
        return findings;
    }

    ModelDir dir;
};

TEST_F(InspectCheckRefused, LoadFailuresAreErrorsWithTheirPlace)
{
    dir.Add("types", "<typedef name=\"t\"><type name=\"strng\"/></typedef>");
    dir.Add("a", Container("c", ""), "types");
    dir.Add("b", Container("c", ""), "types");
    dir.AddFile("broken.yin", "<module name=\"broken\">\n<leaf");
    const Result result = Run({"--all"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.err, "");
    const std::string types = dir.Path() + "/types.yin:4:";
    EXPECT_EQ(LineWith(result.out, "strng").find(types), 0U) << result.out;
    EXPECT_TRUE(LineWith(result.out, "/b.yin:").ends_with(": error: cannot import module 'types' [load-failed]"));
    EXPECT_EQ(LineWith(result.out, "module 'types' is not loaded for the same reason [load-failed]").find(types), 0U);
    EXPECT_NE(LineWith(result.out, dir.Path() + "/broken.yin:"), "");
    EXPECT_TRUE(result.out.ends_with("5 modules checked: 5 errors, no warnings\n")) << result.out;
}

TEST_F(InspectCheckRefused, ExplainsWhatTheLibraryRefuses)
{
    std::string keys;
    std::string keyLeaves;
    for (int i = 0; i < 17; ++i) {
        keys += (i > 0 ? " k" : "k") + std::to_string(i);
        keyLeaves += Leaf("k" + std::to_string(i), "string", Id(std::to_string(i + 1)));
    }
    std::string augments;
    for (int i = 0; i < 21; ++i)
        augments += "<augment target-node=\"/p:c\">" + Container("a" + std::to_string(i), "") + "</augment>";
    std::string numbers = "1 2 3";
    for (int i = 4; i <= 17; ++i)
        numbers += " " + std::to_string(i);
    const std::string statement = "ancestor-key-fid " + numbers;
    const std::string few =
        List("inner", "n", ClassId("2") + Ext("ancestor-key-fid", "1", Id("9")) + Leaf("n", "string", Id("1")));
    const std::tuple<const char *, std::string, const char *, const char *> cases[] = {
        {"number", Container("c", ClassId("1") + Leaf("minus", "string", Id("-1"))), "minus",
         "leaf 'minus' of class 'c': '-1' is no number that field-id can have"},
        {"keys", Container("c", List("many", keys, ClassId("1") + keyLeaves)), "many",
         "class 'many' has more than 16 keys: join or drop some"},
        {"ancestors",
         Container("c", List("l", "k",
                             ClassId("1") + Leaf("k", "string", Id("1")) +
                                 Container("d", "\n" + ClassId("2") + Ext("ancestor-key-fid", numbers)))),
         statement.c_str(), "class 'd' has more than 16 ancestor keys: name at most so many"},
        {"type", Container("c", Container("odd", Ext("class-type", "Leafref"))), "class-type Leafref",
         "class 'odd': class-type 'Leafref' is neither 'leafref' nor 'leafref-target'"},
        {"few",
         Container("c", List("outer", "a b",
                             ClassId("1") + Leaf("a", "string", Id("1")) + Leaf("b", "string", Id("2")) + few)),
         "ancestor-key-fid 1", "class 'inner' has 1 ancestor-key-fid, too few for the keys of class 'outer' above it"},
        {"empty", Container("c", Container("bare", ClassId("1") + Ext("ancestor-key-fid", ""))), "ancestor-key-fid ",
         "class 'bare': ancestor-key-fid is empty: name the attribute ids, or leave it out"},
        {"auto",
         Container(
             "c", ClassId("1") + Ext("name2id-key-fid", "2") + Leaf("x", "int8", Id("1")) + Leaf("y", "int8", Id("2"))),
         "name2id-key-fid 2", "class 'c' has several leaves and a name2id-key-fid of its own: that belongs on a leaf"},
        {"augmented", Container("c", "") + augments, "a20",
         "the module has more than 20 augments: put some into another module"},
        {"task", Ext("aaa-task-id", "-1"), "aaa-task-id -1", "aaa-task-id is no number"},
    };
    for (const auto &[module, body, place, text] : cases) {
        dir.Add(module, body);
        EXPECT_EQ(Findings(module), (Texts{std::string("load-failed at ") + place})) << module;
        const Result result = Run({module});
        EXPECT_NE(LineWith(result.out, std::string(": error: ") + text + " [load-failed]"), "") << result.out;
        EXPECT_EQ(result.exitCode, 3);
    }
}

TEST_F(InspectCheckRefused, FindsTheRefusedStatementAmongOthersOfItsName)
{
    const std::string refused = Ext("class-type", "odd");
    dir.Add("base", Container("sys", Container("port", "") + Container("b", Leaf("x", "empty"))));
    dir.Add("m", "<augment target-node=\"/base:sys/base:port\">\n" + Container("port", refused) + "</augment>\n",
            "base");
    dir.Add("n",
            Container("c", Container("a", ClassId("1") + Leaf("x", "string", Id("1"))) +
                               Container("b", ClassId("2") + Leaf("x", "empty", Id("1"))) +
                               Container("e", Container("b", Leaf("x", "empty")))),
            "base");
    EXPECT_EQ(Findings("m"), (Texts{"load-failed at class-type odd"}));
    EXPECT_EQ(LineWith(Run({"n"}).out, "leaf 'x' of class 'b' is of type empty").find(dir.Path() + "/n.yin:13:1: "), 0U)
        << Run({"n"}).out;
}

TEST_F(InspectCheckRefused, LeafrefsThatLeadNowhere)
{
    const auto ref = [](const std::string &path) {
        return "<type name=\"leafref\"><path value=\"" + path + "\"/></type>";
    };
    dir.Add("n", Container("c", ClassId("1") + Leaf("k", "string") + Leaf("r", ref("../k")) +
                                    Leaf("y", ref("../z"), Id("2")) + Leaf("z", ref("deref(../r)/../k"), Id("3"))));
    EXPECT_EQ(Findings("n"), (Texts{"load-failed at y", "load-failed at z"}));
    const std::string text = Run({"n"}).out;
    EXPECT_NE(LineWith(text, "leaf 'y' of class 'c' leads to the leafref /c/z, whose path"), "") << text;
    EXPECT_NE(LineWith(text, "whose path 'deref(../r)/../k' cannot be followed: it needs a datatype-id"), "");

    dir.Add("m", Container("c", Leaf("x", ref("deref(../r)/../k")) + Leaf("r", ref("../l/k")) +
                                    List("l", "k", Leaf("k", "string"))));
    EXPECT_NE(LineWith(Inspect({"tree", "m", "-d", dir.Path()}).out, "- x      -  leafref"), "");
    const Result enums = Inspect({"enums", "m", "/c/x", "-d", dir.Path()});
    EXPECT_EQ(enums.err, "korv-inspect: /c/x is a leafref whose path 'deref(../r)/../k' cannot be followed\n");

    /* 64 leafrefs are followed: l64 has a type, and l65 has none. */
    std::string leaves = Leaf("l0", "uint8", Id("1"));
    for (int i = 1; i <= 65; ++i)
        leaves += Leaf("l" + std::to_string(i), ref("../l" + std::to_string(i - 1)), Id(std::to_string(i + 1)));
    dir.Add("far", Container("c", ClassId("1") + leaves));
    EXPECT_EQ(Findings("far"), (Texts{"load-failed at l65"}));
    EXPECT_NE(
        LineWith(Run({"far"}).out, "'l65' of class 'c' leads through more than 64 leafrefs: it needs a datatype-id"),
        "");
}

TEST_F(InspectCheckRefused, DeviationsThatDoNotApplyLeaveTheModuleLoaded)
{
    dir.Add("quelvo-bras-pppox-access", Container("c", ""));
    dir.Add("quelvo-bras-pppox-access-deviations-x",
            "<deviation target-node=\"/quelvo-bras-pppox-access:d\"><deviate value=\"not-supported\"/></deviation>",
            "quelvo-bras-pppox-access");
    EXPECT_EQ(Run({"quelvo-bras-pppox-access"}).exitCode, 1);
    const Result tree = Inspect({"tree", "quelvo-bras-pppox-access", "-d", dir.Path()});
    EXPECT_EQ(tree.exitCode, 0);
    EXPECT_NE(LineWith(tree.err, "the deviations of module 'quelvo-bras-pppox-access' do not apply"), "") << tree.err;
}

} // namespace
