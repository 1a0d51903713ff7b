/* What leafrefs refer to, and paths that lead nowhere. */
#include <gtest/gtest.h>

#include "schema.h"

namespace {

using test::Schema;

std::string LeafrefLeaf(const std::string &name, const std::string &path)
{
    return "<leaf name=\"" + name + "\"><type name=\"leafref\"><path value=\"" + path + "\"/></type></leaf>\n";
}

TEST(Leafrefs, FindTheirTargets)
{
    Schema schema;
    schema.Module("lib",
                  R"(<container name="sys"><list name="if"><key value="name"/><leaf name="name"><type name="string"/>
        </leaf></list></container>
        <typedef name="if-ref"><type name="leafref"><path value="/lib:sys/lib:if/lib:name"/></type></typedef>
        <typedef name="local-ref"><type name="leafref"><path value="/sys/if/name"/></type></typedef>
        <grouping name="pair"><leaf name="a"><type name="string"/></leaf>)" +
                      LeafrefLeaf("b", "../a") + "</grouping>");
    schema.LoadText("m",
                    "<container name=\"c\"><leaf name=\"x\"><type name=\"string\"/></leaf>" +
                        LeafrefLeaf("up", "../x") + LeafrefLeaf("spaced", " .. / ../ m:c / x ") +
                        LeafrefLeaf("current", "current() / ../x") +
                        LeafrefLeaf("far", "/lib:sys/lib:if[lib:name = current()/../x][name=']']/lib:name") +
                        LeafrefLeaf("chained", "../up") + LeafrefLeaf("into-op", "/m:op/m:o2") +
                        LeafrefLeaf("deref", "deref (../up) /../x") +
                        R"(<leaf name="typed"><type name="lib:if-ref"/></leaf>
          <leaf name="home"><type name="lib:local-ref"/></leaf>
          <leaf-list name="many"><type name="leafref"><path value="../late"/></type></leaf-list>
          <choice name="ch"><case name="k">)" +
                        LeafrefLeaf("inside", "../x") + R"(</case></choice>
          <leaf name="u"><type name="union"><type name="lib:if-ref"/><type name="string"/></type></leaf></container>
        <container name="d"><uses name="lib:pair"/>)" +
                        LeafrefLeaf("through-choice", "../../c/inside") + R"(</container>
        <rpc name="op"><input><leaf name="i"><type name="string"/></leaf>)" +
                        LeafrefLeaf("i2", "../i") + R"(</input>
          <output><leaf name="i"><type name="int8"/></leaf>)" +
                        LeafrefLeaf("o2", "../i") + R"(</output></rpc>
        <augment target-node="/ m:c "><leaf name="late"><type name="string"/></leaf></augment>)",
                    "lib");
    struct {
        const char *leaf;
        const char *target;
    } cases[] = {{"c/up", "/c/x"},
                 {"c/spaced", "/c/x"},
                 {"c/current", "/c/x"},
                 {"c/far", "/sys/if/name"},
                 {"c/chained", "/c/up"},
                 {"c/into-op", "/op/output/o2"},
                 {"c/deref", nullptr},
                 {"c/typed", "/sys/if/name"},
                 {"c/home", "/sys/if/name"},
                 {"c/many", "/c/late"},
                 {"c/ch/k/inside", "/c/x"},
                 {"c/u", nullptr},
                 {"d/b", "/d/a"},
                 {"d/through-choice", "/c/ch/k/inside"},
                 {"op/input/i2", "/op/input/i"},
                 {"op/output/o2", "/op/output/i"}};
    for (const auto &test : cases) {
        QY_NODE *target = QY_NODE_GetLeafrefTargetNode(schema.Node("m", test.leaf), 1);
        EXPECT_EQ(target != nullptr ? test::Path(target) : "none", test.target != nullptr ? test.target : "none")
            << test.leaf;
    }
    EXPECT_EQ(test::TypeChain(schema.Node("m", "c/typed")), "leafref | leafref");
}

TEST(Leafrefs, MistakesAreReported)
{
    struct {
        const char *path;
        const char *failure; /* behind "path '...': " or "leafref 'l' with path '...': " */
    } cases[] = {
        {"../y", "'c' has no 'y'"},
        {"/m:c/m:sob", "'c' has no 'sob'; did you mean 'sub'?"},
        {"../../../x", "it leads above the top of the schema"},
        {"../sub", "'sub' is no leaf or leaf-list"},
        {"../x/z", "'x' has no 'z'"},
        {"x", "!it begins with neither '/' nor '..'"},
        {"../..", "!it ends above a leaf"},
        {"/", "!a name is missing"},
        {"../x]", "!'x]' is no name of a node"},
        {"../x[y", "!a ']' is missing"},
        {"../x[x=1][ ]", "!a predicate is empty"},
        {"../x y", "!a '/' is missing before 'y'"},
        {"deref(../x", "!the parentheses after 'deref' do not match"},
        {"deref(../x)", "!a '/' is missing after 'deref(...)'"},
        {"current()x", "!a '/' is missing after 'current()'"},
    };
    for (const auto &test : cases) {
        Schema schema;
        schema.Module("m", R"(<container name="c"><leaf name="x"><type name="string"/></leaf><container name="sub"/>)"
                           "\n" +
                               LeafrefLeaf("l", test.path) + "</container>");
        bool isForm = test.failure[0] == '!'; // found while the path is read, and reported there
        std::string place = isForm ? "m.yin:3:37: path '" : "m.yin:3:16: leafref 'l' with path '";
        EXPECT_EQ(schema.Failures("m"), place + test.path + "': " + (test.failure + (isForm ? 1 : 0)) + "\n");
    }
}

TEST(Leafrefs, CyclesAreReportedWithTheirChain)
{
    Schema schema;
    schema.Module("m", LeafrefLeaf("in", "../a") + LeafrefLeaf("a", "../b") + LeafrefLeaf("b", "../c") +
                           LeafrefLeaf("c", "../a") + LeafrefLeaf("self", "../self"));
    EXPECT_EQ(schema.Failures("m"),
              "m.yin:2:17: leafref cycle: a -> b -> c -> a\nm.yin:6:19: leafref cycle: self -> self\n");
}

/* A mistake that a grouping brings twice by one use is told once. */
TEST(Leafrefs, UnknownUseOfAGroupingIsReportedWhereItIsUsed)
{
    Schema schema;
    schema.LoadText("lib", "<grouping name=\"g\">" + LeafrefLeaf("l", "../missing") + "</grouping>");
    schema.Module("m", "<container name=\"c\">\n<uses name=\"lib:g\"/></container>", "lib");
    EXPECT_EQ(schema.Failures("m"), "m.yin:3:1: leafref 'l' with path '../missing': 'c' has no 'missing'\n");
    schema.Module("twice",
                  "<grouping name=\"g\">" + LeafrefLeaf("l", "/twice:x") +
                      R"(</grouping><grouping name="h"><container name="a"><uses name="g"/></container>
        <container name="b"><uses name="g"/></container></grouping>)"
                      "\n<uses name=\"h\"/>",
                  "");
    EXPECT_EQ(schema.Failures("twice"), "twice.yin:5:1: leafref 'l' with path '/twice:x': module 'twice' has no 'x'\n");
}

} // namespace
