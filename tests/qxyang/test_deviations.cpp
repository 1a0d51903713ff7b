/* Deviations, and what is left when their modules go. */
#include <gtest/gtest.h>

#include "schema.h"

namespace {

using namespace std::string_literals;
using test::Schema;

std::string Deviation(const std::string &target, const std::string &deviates)
{
    return "<deviation target-node=\"" + target + "\">" + deviates + "</deviation>\n";
}

class Deviations : public testing::Test {
  protected:
    Deviations()
    {
        schema.Module("ext", R"(<extension name="id"><argument name="value"/></extension><extension name="mark"/>)");
        schema.Module("base",
                      R"(<container name="top"><list name="l"><key value="k j"/><leaf name="k"><type name="string"/>
              </leaf><leaf name="j"><type name="string"/></leaf></list>
            <leaf name="n"><type name="uint32"/><units name="m"/><ext:id value="1"/><ext:mark/></leaf>
            <leaf name="r"><type name="leafref"><path value="../n"/></type></leaf>
            <container name="gone"><leaf name="g"><type name="string"/></leaf></container></container>)",
                      "ext");
        schema.Load("base");
        original = schema.Tree("base");
    }

    void Unload(const std::string &name) { EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), name.c_str()), 0u); }

    Schema schema;
    std::string original;
};

TEST_F(Deviations, ChangeWhatTheContractShows)
{
    schema.LoadText("dev",
                    Deviation("/base:top/base:n", R"(<deviate value="replace"><type name="uint8"/><units name="s"/>
            <ext:id value="2"/></deviate><deviate value="add"><default value="1"/><ext:id value="3"/></deviate>
            <deviate value="delete"><ext:mark/></deviate>)") +
                        Deviation("/base:top/base:gone", R"(<deviate value="not-supported"/>)"),
                    "base ext");
    EXPECT_EQ(schema.Tree("base"), R"(container top
  list l [2]
    leaf k string key
    leaf j string key
  leaf n uint8 ext:id(2) ext:id(3)
  leaf r leafref -> /top/n
)");
    Unload("dev");
    EXPECT_EQ(schema.Tree("base"), original);
}

TEST_F(Deviations, OfSeveralModulesAreTakenBackInAnyOrder)
{
    schema.Module("d1",
                  Deviation("/base:top/base:n", R"(<deviate value="replace"><type name="int8"/><ext:id value="d1"/>
        </deviate>)") +
                      Deviation("/base:top/base:gone", R"(<deviate value="not-supported"/>)") +
                      Deviation("/base:top/base:gone", R"(<deviate value="add"><ext:mark/></deviate>)"),
                  "base ext");
    schema.Module("d2",
                  Deviation("/base:top/base:n", R"(<deviate value="replace"><type name="int16"/></deviate>
        <deviate value="add"><ext:id value="d2"/></deviate>)") +
                      Deviation("/base:top/base:gone", R"(<deviate value="not-supported"/>)"),
                  "base ext");
    schema.Load("d1");
    schema.LoadText("d3", Deviation("/base:top/base:gone", R"(<deviate value="add"><ext:mark/></deviate>)"),
                    "base ext");
    EXPECT_EQ(schema.Tree("base").find("gone"), std::string::npos)
        << "what changes a removed node does not bring it back";
    Unload("d1");
    Unload("d3");
    const char *const orders[][2] = {{"d1", "d2"}, {"d2", "d1"}};
    for (const auto &order : orders) {
        schema.Load("d1");
        schema.Load("d2");
        EXPECT_EQ(test::TypeChain(schema.Node("base", "top/n")), "int16 -32768..32767");
        EXPECT_EQ(test::Extensions(schema.Node("base", "top/n")), "ext:mark(-) ext:id(d1) ext:id(d2)");
        Unload(order[0]);
        bool firstLeft = std::string(order[0]) == "d1";
        EXPECT_EQ(test::TypeChain(schema.Node("base", "top/n")), firstLeft ? "int16 -32768..32767" : "int8 -128..127");
        EXPECT_EQ(test::Extensions(schema.Node("base", "top/n")),
                  firstLeft ? "ext:id(1) ext:mark(-) ext:id(d2)" : "ext:mark(-) ext:id(d1)");
        EXPECT_EQ(schema.Tree("base").find("gone"), std::string::npos);
        Unload(order[1]);
        EXPECT_EQ(schema.Tree("base"), original);
    }
}

/* Whichever module comes first. */
TEST_F(Deviations, OfNodesThatOthersAugment)
{
    schema.Module("dev", Deviation("/base:top/base:gone", R"(<deviate value="not-supported"/>)"), "base");
    schema.Module("aug", R"(<augment target-node="/base:top/base:gone"><container name="a"/></augment>
        <augment target-node="/base:top/base:gone/aug:a"><container name="b"/></augment>)",
                  "base");
    const char *const orders[][2] = {{"dev", "aug"}, {"aug", "dev"}};
    for (const auto &order : orders) {
        schema.Load(order[0]);
        schema.Load(order[1]);
        EXPECT_EQ(schema.Tree("base").find("gone"), std::string::npos);
        EXPECT_EQ(schema.AugmentTree("aug", 0), "augment /base:top/base:gone\n");
        EXPECT_EQ(QY_NODE_GetAugmentTargetNode(schema.Augment("aug", 1)), nullptr);
        Unload("dev");
        EXPECT_EQ(schema.AugmentTree("aug", 0), "augment /base:top/base:gone\n  container a\n    container b\n");
        Unload("aug");
        EXPECT_EQ(schema.Tree("base"), original);
    }
}

/* A leafref has no target as long as a deviation leaves it out, whichever module is loaded first. */
TEST_F(Deviations, OfNodesThatLeafrefsReferTo)
{
    const std::string removal = R"(<deviate value="not-supported"/>)";
    schema.Module("ref",
                  R"(<leaf name="far"><type name="leafref"><path value="/base:top/base:gone/base:g"/></type></leaf>
        <leaf name="through"><type name="leafref"><path value="/far"/></type></leaf>
        <leaf name="u"><type name="union"><type name="int8"/><type name="leafref">
        <path value="/base:top/base:gone/base:g"/></type></type></leaf>)",
                  "base");
    schema.Module(
        "dev",
        Deviation("/base:top/base:gone", removal) + Deviation("/base:top/base:n", removal) +
            Deviation("/base:top/base:gone/base:g", R"(<deviate value="replace"><type name="int8"/></deviate>)"),
        "base");
    schema.Module("bad", Deviation("/base:top/base:n", removal) + Deviation("/base:top/base:none", removal), "base");
    const char *const orders[][2] = {{"dev", "ref"}, {"ref", "dev"}};
    for (const auto &order : orders) {
        schema.Load(order[0]);
        schema.Load(order[1]);
        EXPECT_EQ(schema.Tree("ref"), "leaf far leafref\nleaf through leafref -> /far\nleaf u union\n");
        EXPECT_EQ(schema.Tree("base"),
                  "container top\n  list l [2]\n    leaf k string key\n    leaf j string key\n"
                  "  leaf r leafref\n");
        EXPECT_NE(schema.Failures("bad"), "");
        EXPECT_EQ(QY_NODE_GetLeafrefTargetNode(schema.Node("base", "top/r"), 0), nullptr);
        Unload("dev");
        EXPECT_EQ(schema.Tree("ref"), "leaf far leafref -> /top/gone/g\nleaf through leafref -> /far\nleaf u union\n");
        EXPECT_EQ(schema.Tree("base"), original);
        EXPECT_NE(schema.Failures("bad"), "");
        EXPECT_EQ(schema.Tree("base"), original);
        Unload("ref");
    }
    schema.LoadText("dev",
                    Deviation("/base:top/base:n", removal) +
                        Deviation("/base:top/base:r", R"(<deviate value="replace"><type name="int8"/></deviate>)"),
                    "base");
    EXPECT_EQ(test::TypeChain(schema.Node("base", "top/r")), "int8 -128..127");
}

/* Of default, units, must and the like it is known that they are there. */
TEST_F(Deviations, OfPropertiesAreComparedAndTakenBack)
{
    schema.LoadText("props",
                    R"(<container name="c"><leaf name="l"><type name="uint8"/><default value="5"/><must condition="1"/>
        </leaf><leaf name="bare"><type name="uint8"/><config value="false"/></leaf><list name="s"><unique tag="u"/><leaf name="u"><type name="uint8"/>
        <units name="s"/></leaf></list></container><rpc name="r"/>)");
    auto failure = [this](const std::string &node, const std::string &deviates) {
        schema.Module("dev", Deviation("/props:" + node, "\n" + deviates), "props");
        if (QY_CTX_LoadModule(schema.Context(), "dev", nullptr) == 0) {
            Unload("dev");
            return std::string();
        }
        std::string text = schema.Failures("dev");
        return text.substr(text.find("': ") + 3);
    };
    const struct {
        const char *node;
        const char *deviates;
        const char *failure;
    } cases[] = {
        {"c/props:l", R"(<deviate value="add"><default value="6"/></deviate>)",
         "leaf 'l' has 'default' already, which only 'replace' changes\n"},
        {"c/props:l", R"(<deviate value="replace"><default value="300"/></deviate>)", "expected 0..255\n"},
        {"c/props:l",
         R"(<deviate value="replace"><default value="6"/></deviate><deviate value="delete"><default value="6"/>
            <must condition="1"/></deviate><deviate value="add"><default value="7"/></deviate>)",
         ""},
        {"c/props:l", R"(<deviate value="add"><mandatory value="true"/></deviate>)",
         "leaf 'l' is mandatory and has a default\n"},
        {"c/props:bare", R"(<deviate value="replace"><default value="6"/></deviate>)",
         "leaf 'bare' has no 'default' to replace\n"},
        {"c/props:bare", R"(<deviate value="replace"><mandatory value="true"/></deviate>)",
         "leaf 'bare' has no 'mandatory' to replace\n"},
        {"c/props:bare", R"(<deviate value="delete"><must condition="3"/></deviate>)",
         "leaf 'bare' has no 'must' to delete\n"},
        {"c/props:bare", R"(<deviate value="add"><config value="true"/></deviate>)",
         "leaf 'bare' has 'config' already, which only 'replace' changes\n"},
        {"c/props:bare", R"(<deviate value="replace"><config value="true"/></deviate>)", ""},
        {"c/props:s", R"(<deviate value="add"><max-elements value="2"/><min-elements value="3"/></deviate>)",
         "max-elements 2 is less than min-elements 3\n"},
        {"c/props:s", R"(<deviate value="replace"><max-elements value="2"/></deviate>)",
         "list 's' has no 'max-elements' to replace\n"},
        {"c/props:s", R"(<deviate value="add"><unique tag="u"/></deviate>)", ""},
        {"c/props:s/props:u",
         R"(<deviate value="delete"><units name="s"/></deviate><deviate value="add"><units name="m"/>
            </deviate>)",
         ""},
        {"r/props:input", R"(<deviate value="not-supported"/>)", "input of 'r' cannot be left out\n"},
    };
    for (int round = 0; round < 2; ++round) // a load that failed or went has left nothing behind
        for (const auto &test : cases) {
            std::string text = failure(test.node, test.deviates);
            EXPECT_EQ(text.substr(text.size() - std::min(text.size(), std::string(test.failure).size())), test.failure)
                << test.deviates;
            EXPECT_EQ(text.empty(), *test.failure == '\0') << text;
        }
    schema.LoadText("first", Deviation("/props:c/props:l", R"(<deviate value="delete"><default value="5"/></deviate>)"),
                    "props");
    EXPECT_EQ(failure("c/props:l", R"(<deviate value="delete"><default value="5"/></deviate>)"),
              "leaf 'l' has no 'default' to delete\n");
}

TEST_F(Deviations, ReplacedByALeafrefFollowsIt)
{
    schema.LoadText("dev",
                    Deviation("/base:top/base:l/base:j", R"(<deviate value="replace"><type name="leafref">
        <path value="../../base:n"/></type></deviate>)") +
                        Deviation("/base:top/base:r", R"(<deviate value="replace">
        <type name="string"/></deviate>)"),
                    "base");
    EXPECT_EQ(test::Path(QY_NODE_GetLeafrefTargetNode(schema.Node("base", "top/l/j"), 0)), "/top/n");
    EXPECT_EQ(QY_NODE_GetLeafrefTargetNode(schema.Node("base", "top/r"), 0), nullptr);
    schema.Module("cycle", Deviation("/base:top/base:n", R"(<deviate value="replace"><type name="leafref">
        <path value="../base:l/base:j"/></type></deviate>)"),
                  "base");
    EXPECT_EQ(schema.Failures("cycle"), "cycle.yin:2:68: leafref cycle: n -> j -> n\n");
    Unload("dev");
    EXPECT_EQ(schema.Tree("base"), original);
}

TEST_F(Deviations, KeepInstancesThatWereReplacedOnRequest)
{
    QY_NODE *n = schema.Node("base", "top/n");
    schema.Module("dev", Deviation("/base:top/base:n", R"(<deviate value="add"><ext:id value="dev"/></deviate>)"),
                  "base ext");
    EXPECT_EQ(QY_NODE_ReplaceDstExtInst(n, schema.Node("base", "top/r")), 0u);
    for (int round = 0; round < 2; ++round) {
        schema.Load("dev");
        EXPECT_EQ(test::Extensions(n), "");
        EXPECT_EQ(QY_NODE_ReplaceDstExtInst(n, schema.Node("base", "top/r")), 0u);
        Unload("dev");
    }
    EXPECT_EQ(test::Extensions(n), "");
}

TEST_F(Deviations, MistakesAreReportedAndChangeNothing)
{
    struct {
        std::string deviation;
        const char *failures;
    } cases[] = {
        {Deviation("/base:top/base:m", R"(<deviate value="not-supported"/>)"),
         "dev.yin:3:1: deviation '/base:top/base:m': container 'top' has no node 'm' of module 'base'\n"},
        {Deviation("/base:top/base:l/base:j", R"(<deviate value="not-supported"/>)"),
         "dev.yin:3:50: deviation '/base:top/base:l/base:j': leaf 'j' is a key and cannot be left out\n"},
        {Deviation("base:top", R"(<deviate value="not-supported"/>)"),
         "dev.yin:3:1: deviation 'base:top': the path must begin with '/'\n"},
        {Deviation("/base:top", R"(<deviate value="replace"><type name="string"/></deviate>)"),
         "dev.yin:3:61: deviation '/base:top': container 'top' can have no 'type'\n"},
        {Deviation("/base:top/base:r", R"(<deviate value="delete"><ext:id value="9"/></deviate>)"),
         "dev.yin:3:43: deviation '/base:top/base:r': leaf 'r' has no extension statement 'ext:id' to delete\n"},
        {Deviation("/base:top/base:n", R"(<deviate value="delete"><ext:id value="9"/></deviate>)"),
         "dev.yin:3:43: deviation '/base:top/base:n': leaf 'n' has no extension statement 'ext:id' to delete\n"},
        {Deviation("/base:top/base:n", R"(<deviate value="add"><type name="string"/></deviate>)"),
         "dev.yin:3:64: 'type' is not allowed in deviate 'add'\n"},
        {Deviation("/base:top/base:n", R"(<deviate value="not-supported"/><deviate value="add"/>)"),
         "dev.yin:3:75: deviation '/base:top/base:n': 'not-supported' is the only deviate that may stand in it\n"},
    };
    for (const auto &test : cases) {
        schema.Module(
            "dev",
            Deviation("/base:top/base:n", R"(<deviate value="replace"><type name="int8"/></deviate>)") + test.deviation,
            "base ext");
        EXPECT_EQ(schema.Failures("dev"), test.failures);
        EXPECT_EQ(schema.Tree("base"), original);
    }
}

} // namespace
