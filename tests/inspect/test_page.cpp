/* The page as a file: what is in it, and what keeps it from being made. tests/page opens it in a browser. */
#include <gtest/gtest.h>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

/* The page's data. */
rapidjson::Document DataOf(const Result &result)
{
    const std::string begin = "id=\"data\">";
    const size_t at = result.out.find(begin) + begin.size();
    rapidjson::Document data;
    data.Parse(result.out.substr(at, result.out.find("</script>", at) - at).c_str());
    EXPECT_FALSE(data.HasParseError()) << result.err;
    return data;
}

TEST(InspectPage, IsTheSameEachTimeAndHasWhatStandardOutputGets)
{
    const Result first = InspectExamples({"page", "--all"});
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(first.err, "");
    EXPECT_EQ(InspectExamples({"page", "--all"}).out, first.out);
    ModelDir dir;
    const std::string file = dir.Path() + "/page.html";
    EXPECT_EQ(InspectExamples({"page", "--all", "-o", file}).out, "");
    EXPECT_TRUE(RunShell("cat " + file).out == first.out);
    EXPECT_EQ(DataOf(first)["modules"].Size(), 9U);
}

TEST(InspectPage, KeepsOnceWhatModelsRepeat)
{
    ModelDir dir;
    std::string leaves;
    for (int i = 0; i < 20; ++i)
        leaves += Leaf("leaf-" + std::to_string(i), "string");
    std::string uses;
    for (int i = 0; i < 100; ++i)
        uses += Container("use-" + std::to_string(i), "<uses name=\"g\"/>");
    const std::string grouping = "<grouping name=\"g\">" + leaves + "</grouping>";
    dir.Add("once", grouping + Container("top", Container("use", "<uses name=\"g\"/>")));
    dir.Add("often", grouping + Container("top", uses));
    const size_t once = Inspect({"page", "once", "-d", dir.Path()}).out.size();
    const Result often = Inspect({"page", "often", "-d", dir.Path()});
    EXPECT_LT(often.out.size() - once, 100U * 120U) << "a use takes its name and the numbers of its leaves";
    EXPECT_EQ(DataOf(often)["leaves"].Size(), 20U);
}

TEST(InspectPage, SaysWhatKeepsItFromBeingMadeOrWhole)
{
    ModelDir dir;
    dir.Add("good", Container("c", Leaf("x", "string")));
    dir.Add("bad", Container("c", Leaf("x", "strng")));
    const std::string fault = dir.Path() + "/bad.yin:5:16: unknown type 'strng'; did you mean 'string'?";
    const Result result = Inspect({"page", "--all", "-d", dir.Path()});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.err, fault + "\nkorv-inspect: module 'bad' cannot be loaded: the page shows why\n");
    const rapidjson::Document data = DataOf(result);
    EXPECT_EQ(Compact(data["modules"][0]["failed"]), "[\"" + fault + "\"]");
    EXPECT_EQ(data["modules"][1]["name"].GetString(), std::string("good"));
    ModelDir old; /* good's older version does not load: what changed since is not known */
    old.Add("good", Container("c", Leaf("x", "strng")));
    const Result against = Inspect({"page", "good", "-d", dir.Path(), "--against", old.Path()});
    EXPECT_EQ(against.exitCode, 3);
    EXPECT_NE(against.err.find("module 'good' cannot be loaded and is not compared"), std::string::npos) << against.err;
    EXPECT_EQ(DataOf(against)["modules"][0]["uncompared"].GetInt(), 1);
    const Result unwritten = InspectExamples({"page", "example-qos", "-o", "/no/such/folder/page.html"});
    EXPECT_EQ(unwritten.exitCode, 1);
    EXPECT_EQ(unwritten.err, "korv-inspect: cannot write '/no/such/folder/page.html': No such file or directory\n");
    EXPECT_EQ(RunShell("korv-inspect page --all -d examples/yin >/dev/full").exitCode, 1);
}

} // namespace
