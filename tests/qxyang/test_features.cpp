/* Which nodes are enabled. */
#include <gtest/gtest.h>

#include "schema.h"

namespace {

using test::Schema;

bool Enabled(QY_NODE *node)
{
    return (QY_NODE_IsEnabled(node) & 1) != 0;
}

TEST(Features, ExpressionsFollowWhatIsEnabled)
{
    struct {
        std::string expression;
        const char *values; /* for no feature, a, b, a and b, c, a and c, b and c, all */
    } cases[] = {
        {"a", "01010101"},
        {"m:a or b", "01110111"},
        {"a and b", "00010001"},
        {"not a", "10101010"},
        {"not not a", "01010101"},
        {"a or b and c", "01010111"},
        {"(a or b) and c", "00000111"},
        {"not (a or b) or c", "10001111"},
        {"not a and b", "00100010"},
        {" ( a ) and\n( not(b) ) ", "01000100"},
        {"needs-a", "01010101"},
        {std::string(64, '(') + "a" + std::string(64, ')'), "01010101"},
    };
    for (const auto &test : cases) {
        std::string values;
        for (unsigned enabled = 0; enabled < 8; ++enabled) {
            Schema schema;
            schema.LoadText("m", std::string(R"(<feature name="a"/><feature name="b"/><feature name="c"/>
                <feature name="needs-a"><if-feature name="a"/></feature>
                <leaf name="l"><type name="string"/><if-feature name=")") +
                                     test.expression + R"("/></leaf>)");
            EXPECT_EQ(QY_MOD_EnableFeature(schema.Mod("m"), "needs-a"), 0u);
            for (unsigned i = 0; i < 3; ++i) {
                const char name[] = {static_cast<char>('a' + i), '\0'};
                if ((enabled >> i & 1) != 0)
                    QY_MOD_EnableFeature(schema.Mod("m"), name);
            }
            values += Enabled(schema.Node("m", "l")) ? '1' : '0';
        }
        EXPECT_EQ(values, test.values) << test.expression;
    }
}

TEST(Features, MistakesInExpressionsAreReported)
{
    struct {
        const char *expression;
        const char *failure;
    } cases[] = {
        {"a and", "if-feature 'a and': a feature is missing at its end"},
        {"and a", "if-feature 'and a': a feature is missing before 'and'"},
        {"a b", "if-feature 'a b': 'and' or 'or' is missing before 'b'"},
        {"(a", "if-feature '(a': a ')' is missing"},
        {"a)", "if-feature 'a)': a '(' is missing"},
        {"()", "if-feature '()': a feature is missing before ')'"},
        {"a or 7", "if-feature 'a or 7': '7' is no feature name"},
        {"aa", "unknown feature 'aa'"},
        {"x:a", "unknown prefix 'x' in 'x:a'"},
    };
    for (const auto &test : cases) {
        Schema schema;
        schema.Module("m", std::string(R"(<feature name="a"/><leaf name="l"><type name="string"/>)") +
                               "\n<if-feature name=\"" + test.expression + "\"/></leaf>");
        EXPECT_EQ(schema.Failures("m"), std::string("m.yin:3:1: ") + test.failure + "\n");
    }
    Schema schema;
    schema.File(
        "old.yin",
        test::ModuleText("old", "<feature name=\"a\"/><rpc name=\"r\"><if-feature name=\"not a\"/></rpc>", "", "1"));
    EXPECT_EQ(schema.Failures("old"),
              "old.yin:2:34: if-feature 'not a': in YANG version 1 it is the name of one feature\n");
}

TEST(Features, CyclesAreReportedWithTheirChain)
{
    Schema schema;
    schema.Module("m",
                  R"(<feature name="a"><if-feature name="b or c"/></feature><feature name="b"><if-feature name="m:a"/>
        </feature><feature name="c"/>)");
    EXPECT_EQ(schema.Failures("m"), "m.yin:2:1: feature cycle: a -> b -> a\n");
}

/* A node is off with everything that brought it or stands above it. */
TEST(Features, ReachDownThroughUsesAndAugments)
{
    Schema schema;
    schema.Module("base",
                  R"(<feature name="f"/><container name="top"><if-feature name="f"/><container name="in"/></container>
        <container name="open"/>
        <grouping name="g"><leaf name="l"><type name="string"/><if-feature name="f"/></leaf></grouping>)");
    schema.LoadText("m", R"(<feature name="mine"/>
        <augment target-node="/base:top/base:in"><leaf name="a"><type name="string"/></leaf></augment>
        <augment target-node="/base:open"><if-feature name="mine"/><container name="b"><leaf name="b1"><type name="string"/>
          </leaf></container></augment>
        <container name="c"><uses name="base:g"/></container>
        <container name="d"><uses name="base:g"><refine target-node="l"><if-feature name="mine"/></refine></uses></container>)",
                    "base");
    auto state = [&schema] {
        std::string text;
        for (QY_NODE *node : {schema.Augment("m", 0), schema.Augment("m", 1)})
            text += Enabled(node) ? '1' : '0';
        for (const char *path : {"c", "c/l", "d", "d/l"})
            text += Enabled(schema.Node("m", path)) ? '1' : '0';
        return text;
    };
    EXPECT_EQ(state(), "101110"); // all features of what is only imported are on
    schema.Load("base");
    EXPECT_EQ(state(), "001010");
    EXPECT_FALSE(Enabled(schema.Node("base", "top/in/a")));
    EXPECT_TRUE(Enabled(schema.Node("base", "open")));
    EXPECT_FALSE(Enabled(schema.Node("base", "open/b/b1")));
    EXPECT_NE(QY_MOD_EnableFeature(schema.Mod("m"), "f"), 0u);
    EXPECT_EQ(QY_MOD_EnableFeature(schema.Mod("m"), QY_FEATURE_ALL), 0u);
    EXPECT_EQ(state(), "011010");
    EXPECT_EQ(QY_MOD_EnableFeature(schema.Mod("base"), "f"), 0u);
    EXPECT_EQ(state(), "111111");
    QY_CTX_UnloadModule(schema.Context(), "base");
    schema.Load("base");
    EXPECT_EQ(state(), "011010");
}

} // namespace
