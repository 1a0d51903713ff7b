/* The order in which scans report nodes, what ends them, and the steps of a tree scan. */
#include <gtest/gtest.h>

#include <functional>

#include "schema.h"

namespace {

using test::Schema;

struct Visit {
    std::string text;
    std::string stopAt; /* name at which the callback answers `answer` */
    uint32_t answer = 0;

    uint32_t Add(QY_NODE *node, const char *step)
    {
        text += std::string(text.empty() ? "" : " ") + step + QY_NODE_GetNodeName(node);
        return stopAt == QY_NODE_GetNodeName(node) ? answer : 0;
    }
};

uint32_t AddNode(QY_NODE *node, void *unused, void *cookie)
{
    EXPECT_EQ(unused, nullptr);
    return static_cast<Visit *>(cookie)->Add(node, "");
}

uint32_t AddStep(QY_NODE *node, uint32_t step, void *cookie)
{
    const char *const marks[] = {">", ",", "<", "!"};
    uint32_t answer = static_cast<Visit *>(cookie)->Add(node, marks[step]);
    return step == QY_TRAV_RETURN ? 0 : answer;
}

class Scans : public testing::Test {
  protected:
    Scans()
    {
        schema.Module("base", R"(<container name="top">
            <container name="a"><container name="b"><leaf name="b1"><type name="string"/></leaf></container></container>
            <leaf name="c"><type name="string"/></leaf>
            <list name="d"><leaf name="d1"><type name="string"/></leaf><leaf name="d2"><type name="string"/></leaf></list>
            </container>
            <leaf name="second"><type name="string"/></leaf>
            <rpc name="third"/>)");
        schema.Module("more", R"(<augment target-node="/base:top/base:a"><container name="x"/>
            <container name="y"><leaf name="y1"><type name="string"/></leaf></container></augment>
            <augment target-node="/base:top/base:d"><leaf name="z"><type name="string"/></leaf></augment>)",
                      "base");
        schema.Load("base");
        schema.Load("more");
    }

    Schema schema;
};

TEST_F(Scans, ReportNodesInOrderUntilTheCallbackStops)
{
    using Scan = std::function<uint32_t(Visit *)>;
    QY_MOD *base = schema.Mod("base");
    QY_NODE *top = schema.Node("base", "top");
    struct {
        const char *what;
        Scan scan;
        const char *stopAt;
        uint32_t result;
        const char *visited;
    } cases[] = {
        {"top nodes", [&](Visit *v) { return QY_MOD_IterScanTopmostNode(base, AddNode, v); }, "", 0,
         "top second third"},
        {"stopped", [&](Visit *v) { return QY_MOD_IterScanTopmostNode(base, AddNode, v); }, "second", 7, "top second"},
        {"children", [&](Visit *v) { return QY_NODE_IterScanChildrenNode(top, AddNode, v); }, "", 0, "a c d"},
        {"of a leaf", [&](Visit *v) { return QY_NODE_IterScanChildrenNode(schema.Node("base", "second"), AddNode, v); },
         "", 0, ""},
        {"siblings", [&](Visit *v) { return QY_NODE_IterScanSiblingNode(schema.Node("base", "top/c"), AddNode, v); },
         "", 0, "c d"},
        {"top siblings", [&](Visit *v) { return QY_NODE_IterScanSiblingNode(top, AddNode, v); }, "third", 7,
         "top second third"},
        {"augments", [&](Visit *v) { return QY_MOD_IterScanAugmentNode(schema.Mod("more"), AddNode, v); }, "", 0,
         "/base:top/base:a /base:top/base:d"},
        {"augment's children",
         [&](Visit *v) { return QY_NODE_IterScanChildrenNode(schema.Augment("more"), AddNode, v); }, "", 0, "x y"},
        {"siblings from an augment's child",
         [&](Visit *v) { return QY_NODE_IterScanSiblingNode(schema.Node("base", "top/a/x"), AddNode, v); }, "", 0,
         "x y"},
    };
    for (const auto &test : cases) {
        Visit visit{"", test.stopAt, 7};
        EXPECT_EQ(test.scan(&visit), test.result) << test.what;
        EXPECT_EQ(visit.text, test.visited) << test.what;
    }
}

/* '!' start, '>' child, ',' sibling, '<' return. */
TEST_F(Scans, TreeScanReportsEveryStep)
{
    struct {
        const char *start;
        const char *stopAt;
        uint32_t answer;
        uint32_t result;
        const char *steps;
    } cases[] = {
        {"top", "", 0, 0, "!top >a >b >b1 <b ,x ,y >y1 <y <a ,c ,d >d1 ,d2 ,z <d <top"},
        {"top/a/b", "", 0, 0, "!b >b1 <b"},
        {"top/c", "", 0, 0, "!c"},
        {"top", "a", KORV_TREE_SCAN_SKIP, 0, "!top >a ,c ,d >d1 ,d2 ,z <d <top"},
        {"top", "d", KORV_TREE_SCAN_SKIP, 0, "!top >a >b >b1 <b ,x ,y >y1 <y <a ,c ,d <top"},
        {"top", "top", KORV_TREE_SCAN_SKIP, 0, "!top"},
        {"top", "b1", KORV_TREE_SCAN_SKIP, 0, "!top >a >b >b1 <b ,x ,y >y1 <y <a ,c ,d >d1 ,d2 ,z <d <top"},
        {"top", "x", 9, 9, "!top >a >b >b1 <b ,x"},
        {"top", "top", 9, 9, "!top"},
    };
    for (const auto &test : cases) {
        Visit visit{"", test.stopAt, test.answer};
        EXPECT_EQ(QY_NODE_TreeScanAllNode(schema.Node("base", test.start), AddStep, &visit), test.result);
        EXPECT_EQ(visit.text, test.steps) << test.start << " " << test.stopAt;
    }
}

TEST_F(Scans, TreeScanOfAnAugmentStaysWithinIt)
{
    struct {
        const char *stopAt;
        uint32_t answer;
        uint32_t result;
        const char *steps;
    } cases[] = {
        {"", 0, 0, "!/base:top/base:a >x ,y >y1 <y </base:top/base:a"},
        {"y", KORV_TREE_SCAN_SKIP, 0, "!/base:top/base:a >x ,y </base:top/base:a"},
        {"/base:top/base:a", KORV_TREE_SCAN_SKIP, 0, "!/base:top/base:a"},
        {"x", 9, 9, "!/base:top/base:a >x"},
    };
    for (const auto &test : cases) {
        Visit visit{"", test.stopAt, test.answer};
        EXPECT_EQ(QY_NODE_TreeScanAllNode(schema.Augment("more"), AddStep, &visit), test.result);
        EXPECT_EQ(visit.text, test.steps) << test.stopAt;
    }
}

TEST_F(Scans, NodesKnowTheirPlace)
{
    QY_NODE *augment = schema.Augment("more");
    QY_NODE *a = schema.Node("base", "top/a");
    QY_NODE *x = schema.Node("base", "top/a/x");
    EXPECT_EQ(QY_NODE_GetParentNode(x), a);
    EXPECT_EQ(QY_NODE_GetModule(x), schema.Mod("more"));
    EXPECT_EQ(QY_NODE_GetParentNode(augment), nullptr);
    EXPECT_EQ(QY_NODE_GetAugmentTargetNode(augment), a);
    EXPECT_EQ(QY_NODE_GetAugmentTargetNode(a), nullptr);
    EXPECT_EQ(QY_NODE_GetParentNode(schema.Node("base", "top")), nullptr);
    EXPECT_EQ(QY_NODE_GetLeafrefTargetNode(schema.Node("base", "second"), 0), nullptr);
}

TEST(ExtensionScans, KeepInstancesInStatementOrderWithNestedOnes)
{
    Schema schema;
    schema.LoadText("ext", R"(<extension name="id"><argument name="value"/></extension>
        <extension name="mark"/>
        <extension name="note"><argument name="text"><yin-element value="true"/></argument></extension>)");
    schema.LoadText("m", R"(<ext:id value="module"/>
        <container name="c"><ext:id value="1"/><ext:mark/><description><text>words <b>in</b> between</text></description>
          <ext:note><ext:text> two
words </ext:text><ext:id value="2"><ext:mark/><ext:id value="3"/></ext:id></ext:note>
          <leaf name="l"><ext:id value=""/><type name="string"><ext:mark/></type></leaf>
          <ext:id value="4"/></container>
        <rpc name="r"><input><ext:mark/></input></rpc>)",
                    "ext");
    EXPECT_EQ(test::Extensions(schema.Mod("m")), "ext:id(module)");
    EXPECT_EQ(schema.Tree("m"),
              "container c ext:id(1) ext:mark(-) ext:note(two\nwords){ext:id(2){ext:mark(-) ext:id(3)}} ext:id(4)\n"
              "  leaf l string ext:id()\n"
              "rpc r\n"
              "  input input ext:mark(-)\n");
    uint32_t count = 0;
    auto stop = [](QY_EXT *, const char *, const char *, const char *, void *cookie) {
        ++*static_cast<uint32_t *>(cookie);
        return 5u;
    };
    EXPECT_EQ(QY_NODE_ScanAllExtInsts(schema.Node("m", "c"), stop, &count), 5u);
    EXPECT_EQ(count, 1u);
}

TEST(ExtensionScans, ReplacedInstancesAreCopies)
{
    Schema schema;
    schema.LoadText("ext", R"(<extension name="id"><argument name="value"/></extension>)");
    schema.LoadText("m", R"(<leaf name="a"><type name="string"/><ext:id value="1"><ext:id value="2"/></ext:id></leaf>
        <leaf name="b"><type name="string"/><ext:id value="old"/></leaf><leaf name="none"><type name="string"/></leaf>)",
                    "ext");
    schema.LoadText("n", R"(<leaf name="c"><type name="string"/></leaf>)");
    QY_NODE *c = schema.Node("n", "c");
    EXPECT_EQ(QY_NODE_ReplaceDstExtInst(schema.Node("m", "b"), schema.Node("m", "a")), 0u);
    EXPECT_EQ(QY_NODE_ReplaceDstExtInst(c, schema.Node("m", "b")), 0u);
    EXPECT_EQ(QY_NODE_ReplaceDstExtInst(schema.Node("m", "a"), schema.Node("m", "none")), 0u);
    EXPECT_EQ(QY_NODE_ReplaceDstExtInst(c, c), 0u);
    EXPECT_EQ(test::Extensions(schema.Node("m", "b")), "ext:id(1){ext:id(2)}");
    EXPECT_EQ(test::Extensions(schema.Node("m", "a")), "");
    EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "m"), 0u);
    EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "ext"), 0u);
    EXPECT_EQ(test::Extensions(c), "ext:id(1){ext:id(2)}");
}

} // namespace
