/* Hostile models end in a failure that names the limit, soon and without harm. */
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>

#include "schema.h"

namespace {

using test::Schema;

std::string Repeat(int count, const std::function<std::string(int)> &text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text(i);
    return all;
}

std::string Nested(int depth, const std::string &begin, const std::string &end)
{
    return Repeat(depth, [&](int) { return begin; }) + Repeat(depth, [&](int) { return end; });
}

std::string Number(int i)
{
    return std::to_string(i);
}

struct HostileModel {
    const char *what;
    std::string body;
    std::string failure; /* how its first failure ends */
};

std::vector<HostileModel> HostileModels()
{
    const std::string string = "<type name=\"string\"/>";
    return {
        {"nested containers", Nested(100000, "<container name=\"c\">", "</container>"),
         "elements are nested deeper than 512 levels"},
        {"nested extension statements", Nested(100000, "<m:x>", "</m:x>"),
         "elements are nested deeper than 512 levels"},
        {"nested text", "<description><text>" + Nested(100000, "<b>", "</b>") + "</text></description>",
         "elements are nested deeper than 512 levels"},
        {"groupings that double",
         "<grouping name=\"g0\"><leaf name=\"x\">" + string + "</leaf></grouping>" +
             Repeat(40,
                    [](int i) {
                        std::string use = "<uses name=\"g" + Number(i) + "\"/></container>";
                        return "<grouping name=\"g" + Number(i + 1) + "\"><container name=\"a\">" + use +
                               "<container name=\"b\">" + use + "</grouping>";
                    }),
         "the load needs more than 4194304 schema nodes"},
        {"containers in groupings in containers",
         Repeat(100,
                [](int i) {
                    return "<grouping name=\"g" + Number(i) + "\">" +
                           Repeat(9, [](int) { return std::string("<container name=\"c\">"); }) + "<uses name=\"g" +
                           Number(i + 1) + "\"/>" + Repeat(9, [](int) { return std::string("</container>"); }) +
                           "</grouping>";
                }) +
             "<grouping name=\"g100\"/>",
         "schema nodes are nested deeper than 512 levels"},
        {"chain of groupings",
         Repeat(1000,
                [](int i) {
                    return "<grouping name=\"g" + Number(i) + "\"><uses name=\"g" + Number(i + 1) + "\"/></grouping>";
                }) +
             "<grouping name=\"g1000\"/>",
         "grouping 'g128' is at the end of a chain of more than 128 groupings"},
        {"chain of typedefs",
         Repeat(1000,
                [](int i) {
                    return "<typedef name=\"t" + Number(i) + "\"><type name=\"t" + Number(i + 1) + "\"/></typedef>";
                }) +
             "<typedef name=\"t1000\">" + string + "</typedef>",
         "typedef 't128' is at the end of a chain of more than 128 typedefs"},
        {"chain of typedefs, backwards",
         "<typedef name=\"t0\">" + string + "</typedef>" +
             Repeat(1000,
                    [](int i) {
                        return "<typedef name=\"t" + Number(i + 1) + "\"><type name=\"t" + Number(i) +
                               "\"><length value=\"1\"/></type>"
                               "</typedef>";
                    }),
         "type is derived from a chain of more than 128 types"},
        {"chain of features",
         "<feature name=\"f0\"/>" + Repeat(1000,
                                           [](int i) {
                                               return "<feature name=\"f" + Number(i + 1) + "\"><if-feature name=\"f" +
                                                      Number(i) + "\"/></feature>";
                                           }),
         "feature 'f128' depends on a chain of more than 128 features"},
        {"chain of identities",
         Repeat(1000,
                [](int i) {
                    return "<identity name=\"i" + Number(i) + "\"><base name=\"i" + Number(i + 1) + "\"/></identity>";
                }) +
             "<identity name=\"i1000\"/>",
         "identity 'i128' is derived from a chain of more than 128 identities"},
        {"parentheses",
         "<feature name=\"f\"/><leaf name=\"l\">" + string + "<if-feature name=\"" + std::string(100000, '(') + "f" +
             std::string(100000, ')') + "\"/></leaf>",
         "it is nested deeper than 64 levels"},
        {"steps upwards",
         "<leaf name=\"l\"><type name=\"leafref\"><path value=\"" +
             Repeat(100000, [](int) { return std::string("../"); }) + "x\"/></type></leaf>",
         "it has more than 512 steps"},
        {"steps of an augment",
         "<augment target-node=\"" + Repeat(100000, [](int) { return std::string("/x"); }) + "\"/>",
         "more than 512 steps"},
        {"attributes", "<container name=\"c\" " + Repeat(1000, [](int i) { return " a" + Number(i) + "=\"\""; }) + "/>",
         "an element has more than 32 attributes"},
        {"name of an element", "<m:" + std::string(100000, 'x') + "/>",
         "...' is longer, with its namespace, than 1024 bytes"},
        {"name of a node", "<container name=\"" + std::string(100000, 'x') + "\"/>", "expected an identifier"},
        {"keys",
         "<list name=\"l\"><key value=\"" + Repeat(256, [](int i) { return " k" + Number(i); }) + "\"/>" +
             Repeat(256, [&](int i) { return "<leaf name=\"k" + Number(i) + "\">" + string + "</leaf>"; }) + "</list>",
         "key 'k255' of list 'l' is more than the 255 that a list can have"},
        {"nodes of one name", Repeat(100000, [&](int) { return "<leaf name=\"x\">" + string + "</leaf>"; }),
         "second node 'x' in module 'm'"},
    };
}

TEST(Limits, HostileModelsFailSoon)
{
    for (const HostileModel &model : HostileModels()) {
        Schema schema;
        schema.Module("m", "<extension name=\"x\"/>" + model.body);
        auto start = std::chrono::steady_clock::now();
        std::string failures = schema.Failures("m");
        std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        std::string first = failures.substr(0, failures.find('\n'));
        EXPECT_TRUE(first.ends_with(model.failure)) << model.what << ": " << first;
        EXPECT_TRUE(first.starts_with("m.yin:2:")) << model.what << ": " << first;
        EXPECT_LT(seconds.count(), 30) << model.what;
    }
}

TEST(Limits, ImportsThatNeverEnd)
{
    Schema schema;
    for (int i = 0; i < 200; ++i)
        schema.Module("m" + Number(i), "", "m" + Number(i + 1));
    std::string failures = schema.Failures("m0");
    EXPECT_EQ(failures.substr(0, failures.find('\n')),
              "m127.yin:1:183: cannot import module 'm128': the chain of imports is longer than 128 modules");
}

TEST(Limits, FailuresAreCapped)
{
    Schema schema;
    schema.Module(
        "m", Repeat(1000, [](int i) { return "<leaf name=\"l" + Number(i) + "\"><type name=\"none\"/></leaf>\n"; }));
    std::string failures = schema.Failures("m");
    EXPECT_EQ(std::count(failures.begin(), failures.end(), '\n'), 64);
}

/* What costs one node each costs no more when there are many. */
TEST(Limits, LargeFlatModelsLoad)
{
    Schema schema;
    schema.Module("lib", R"(<grouping name="g"><leaf name="l"><type name="string"/></leaf></grouping>)");
    schema.LoadText(
        "m",
        "<container name=\"c\">" +
            Repeat(20000,
                   [](int i) { return "<container name=\"n" + Number(i) + "\"><uses name=\"lib:g\"/></container>"; }) +
            "</container>",
        "lib");
    schema.LoadText("aug",
                    Repeat(20000,
                           [](int i) {
                               return "<augment target-node=\"/m:c\"><leaf name=\"a" + Number(i) +
                                      "\"><type name=\"leafref\"><path value=\"/m:c/m:n" + Number(19999 - i) +
                                      "/m:l\"/></type></leaf></augment>";
                           }),
                    "m");
    EXPECT_EQ(test::Path(QY_NODE_GetLeafrefTargetNode(schema.Node("m", "c/a0"), 0)), "/c/n19999/l");
    EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "aug"), 0u);
}

} // namespace
