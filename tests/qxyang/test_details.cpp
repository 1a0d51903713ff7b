/* Where nodes and extension instances come from, and what else their statements say. */
#include <gtest/gtest.h>
#include <qxyang.h>

#include <fstream>
#include <iterator>

#include "schema.h"
#include "support/compact_twin.h"

namespace {

using test::ModuleText;
using test::Schema;

/* "m.yin:3", with the directory left out. */
std::string OriginText(const QXYANG_ORIGIN_S &origin)
{
    if (origin.pcFile == nullptr)
        return "-";
    const std::string path = origin.pcFile;
    return path.substr(path.rfind('/') + 1) + ":" + std::to_string(origin.stPlace.uiLine);
}

/* A context that keeps details; both syntaxes are tried with the same models. */
struct Kept {
    explicit Kept(bool compact = false) : isCompact(compact) { EXPECT_EQ(QXYANG_KeepDetails(schema.Context()), 0u); }

    void Load(const std::string &name, const std::string &body, const std::string &imports = "")
    {
        const std::string yin = ModuleText(name, body, imports);
        schema.File(name + (isCompact ? ".yang" : ".yin"), isCompact ? test::CompactTwin(yin) : yin);
        schema.Load(name);
    }

    bool isCompact;
    Schema schema;
};

QXYANG_NODE_DETAILS_S DetailsOf(QY_NODE *node)
{
    QXYANG_NODE_DETAILS_S details{};
    EXPECT_EQ(QXYANG_GetNodeDetails(node, &details), 0u);
    return details;
}

/* The line of the statement itself in both syntaxes would differ: "leaf a" names it in either. */
std::string StatementText(const QXYANG_ORIGIN_S &origin)
{
    QXYANG_STATEMENT_S statement;
    if (origin.pstFile == nullptr || QXYANG_GetStatement(origin.pstFile, origin.uiStatement, &statement) != 0)
        return "-";
    const std::string argument = statement.pcArgument != nullptr ? statement.pcArgument : "-";
    return std::string(origin.pcModule) + ":" + statement.pcKeyword + " " + argument;
}

uint32_t AddText(const char *text, void *cookie)
{
    *static_cast<std::string *>(cookie) += std::string(" ") + text;
    return 0;
}

std::string OrDash(const char *text)
{
    return text != nullptr ? text : "-";
}

/* "STATEMENT USES | description units config|state STATUS | defaults" */
std::string DetailsText(QY_NODE *node)
{
    const QXYANG_NODE_DETAILS_S details = DetailsOf(node);
    std::string defaults;
    EXPECT_EQ(QXYANG_ScanNodeDefaults(node, AddText, &defaults), 0u);
    return StatementText(details.stStatement) + ", " + StatementText(details.stUses) + " | " +
           OrDash(details.pcDescription) + " " + OrDash(details.pcUnits) +
           (details.uiIsConfig != 0 ? " config " : " state ") + std::to_string(details.uiStatus) + " |" + defaults;
}

struct Instances {
    QY_CTX *context;
    std::string text;
};

uint32_t AddInstance(QY_EXT *instance, const char *, const char *keyword, const char *argument,
                     const QXYANG_ORIGIN_S *origin, void *pvCookie)
{
    auto &cookie = *static_cast<Instances *>(pvCookie);
    EXPECT_EQ(std::string(keyword), "x");
    EXPECT_NE(argument, nullptr);
    cookie.text += " " + StatementText(*origin);
    Instances nested{cookie.context, ""};
    EXPECT_EQ(QXYANG_ScanChildExtInsts(cookie.context, instance, AddInstance, &nested), 0u);
    if (!nested.text.empty())
        cookie.text += " {" + nested.text + " }";
    return 0;
}

std::string InstancesOf(Schema &schema, QY_NODE *node)
{
    Instances instances{schema.Context(), ""};
    EXPECT_EQ(QXYANG_ScanNodeExtInsts(node, AddInstance, &instances), 0u);
    return instances.text;
}

constexpr const char *EXTENSION = R"(<extension name="x"><argument name="v"/></extension>)";
constexpr const char *TYPE = R"(<type name="string"/>)";

TEST(Details, PlacesAreThoseOfTheStatements)
{
    Kept kept;
    kept.schema.File("s.yin",
                     "<submodule name=\"s\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\"><yang-version value=\"1.1\"/>\n"
                     "<belongs-to module=\"m\"><prefix value=\"m\"/></belongs-to>\n<grouping name=\"g\">\n"
                     "<container name=\"c\"/></grouping></submodule>");
    kept.Load("m",
              "\n<include module=\"s\"/>\n<container name=\"top\">\n<uses name=\"g\"/>\n<choice name=\"ch\">\n"
              "<leaf name=\"l\"><type name=\"string\"/></leaf></choice></container>\n"
              "<augment target-node=\"/m:top\">\n<container name=\"more\"/></augment>\n<rpc name=\"r\"/>"
              "<augment target-node=\"/m:r/m:input\"><container name=\"p\"/></augment>");
    const struct {
        const char *node;
        const char *places; /* statement, uses */
    } cases[] = {{"top", "m.yin:4 -"},        {"top/c", "s.yin:4 m.yin:5"}, {"top/ch/l", "m.yin:7 -"},
                 {"top/ch/l/l", "m.yin:7 -"}, {"top/more", "m.yin:9 -"},    {"r/input", "m.yin:10 -"}};
    for (const auto &test : cases) {
        const QXYANG_NODE_DETAILS_S details = DetailsOf(kept.schema.Node("m", test.node));
        EXPECT_EQ(OriginText(details.stStatement) + " " + OriginText(details.stUses), test.places) << test.node;
    }
    EXPECT_EQ(OriginText(DetailsOf(kept.schema.Augment("m")).stStatement), "m.yin:8");
    QXYANG_ORIGIN_S origin;
    EXPECT_EQ(QXYANG_GetModuleOrigin(kept.schema.Mod("m"), &origin), 0u);
    EXPECT_EQ(OriginText(origin), "m.yin:1");
    EXPECT_NE(QXYANG_GetLoadedFile(kept.schema.Context(), "s"), nullptr);
    EXPECT_EQ(QXYANG_GetLoadedFile(kept.schema.Context(), "none"), nullptr);
}

constexpr const char *GROUPING = R"(
  <typedef name="t0"><type name="string"/><units name="u0"/><default value="d0"/></typedef>
  <typedef name="t"><type name="t0"><length value="1..9"/></type><units name="u1"/></typedef>
  <grouping name="in"><leaf name="a"><type name="t"/><status value="obsolete"/>
    <description><text>own</text></description></leaf>
    <leaf-list name="ll"><type name="t"/><default value="x"/><default value="y"/></leaf-list>
    <leaf name="must"><type name="t"/><mandatory value="true"/></leaf>
    <leaf-list name="any"><type name="t"/><min-elements value="00"/></leaf-list></grouping>
  <grouping name="out"><container name="k"><uses name="in"><refine target-node="a">
    <description><text>inner</text></description><default value="d1"/></refine></uses></container></grouping>
  <container name="plain"><uses name="in"/>
    <leaf name="other"><type name="t"/><units name="u"/><default value="x"/></leaf>
    <leaf name="twice"><type name="t"/><default value="x"/></leaf></container>
  <container name="state"><config value="false"/><uses name="out"><refine target-node="k/a"><default value="d2"/>
    </refine><refine target-node="k/ll"><default value="z"/></refine></uses></container>
  <list name="list"><key value="id"/><leaf name="id"><type name="t"/></leaf>
    <choice name="ch"><default value="s"/><leaf name="s"><type name="uint8"/><units name="s"/></leaf></choice></list>
  <rpc name="r"><input><leaf name="p"><type name="t"/></leaf></input></rpc>
  <augment target-node="/m:r/m:output"><container name="q"/></augment>)";

constexpr const char *DEVIATIONS = R"(
  <deviation target-node="/m:plain/m:a"><deviate value="add"><default value="d3"/><units name="u3"/></deviate>
  </deviation>
  <deviation target-node="/m:plain/m:ll"><deviate value="delete"><default value="x"/></deviate>
    <deviate value="add"><default value="w"/></deviate></deviation>
  <deviation target-node="/m:plain/m:other"><deviate value="delete"><default value="wrong"/><units name="wrong"/></deviate>
    </deviation>
  <deviation target-node="/m:plain/m:twice"><deviate value="delete"><default value="wrong"/></deviate>
    <deviate value="add"><default value="new"/></deviate></deviation>
  <deviation target-node="/m:state"><deviate value="replace"><config value="true"/></deviate></deviation>)";

TEST(Details, ValuesAreTheEffectiveOnes)
{
    const struct {
        const char *node;
        const char *before;
        const char *deviated; /* null: as before */
    } cases[] = {
        {"plain/a", "m:leaf a, m:uses in | own u1 config 2 | d0", "m:leaf a, m:uses in | own u3 config 2 | d3"},
        {"plain/ll", "m:leaf-list ll, m:uses in | - u1 config 0 | x y",
         "m:leaf-list ll, m:uses in | - u1 config 0 | y w"},
        {"plain/other", "m:leaf other, - | - u config 0 | x", "m:leaf other, - | - u1 config 0 | d0"},
        {"plain/twice", "m:leaf twice, - | - u1 config 0 | x", "m:leaf twice, - | - u1 config 0 | new"},
        {"plain/must", "m:leaf must, m:uses in | - u1 config 0 |", nullptr},
        {"plain/any", "m:leaf-list any, m:uses in | - u1 config 0 | d0", nullptr},
        {"state/k/a", "m:leaf a, m:uses out | inner u1 state 2 | d2", "m:leaf a, m:uses out | inner u1 config 2 | d2"},
        {"state/k/ll", "m:leaf-list ll, m:uses out | - u1 state 0 | z",
         "m:leaf-list ll, m:uses out | - u1 config 0 | z"},
        {"list/id", "m:leaf id, - | - u1 config 0 |", nullptr},
        {"list/ch", "m:choice ch, - | - - config 0 | s", nullptr},
        {"list/ch/s", "m:leaf s, - | - - config 0 |", nullptr},
        {"list/ch/s/s", "m:leaf s, - | - s config 0 |", nullptr},
        {"r/input/p", "m:leaf p, - | - u1 state 0 | d0", nullptr},
        {"r/output", "m:rpc r, - | - - state 0 |", nullptr},
    };
    for (bool compact : {false, true}) {
        Kept kept(compact);
        kept.Load("m", GROUPING);
        for (const auto &test : cases)
            EXPECT_EQ(DetailsText(kept.schema.Node("m", test.node)), test.before) << test.node;
        kept.Load("dev", DEVIATIONS, "m");
        for (const auto &test : cases)
            EXPECT_EQ(DetailsText(kept.schema.Node("m", test.node)),
                      test.deviated != nullptr ? test.deviated : test.before)
                << test.node;
        EXPECT_EQ(QY_CTX_UnloadModule(kept.schema.Context(), "dev"), 0u);
        for (const auto &test : cases)
            EXPECT_EQ(DetailsText(kept.schema.Node("m", test.node)), test.before) << test.node;
    }
}

uint32_t AddStatement(const QXYANG_ORIGIN_S *origin, void *cookie)
{
    *static_cast<std::string *>(cookie) += " " + StatementText(*origin);
    return 0;
}

TEST(Details, StatementsAreTheEffectiveOnes)
{
    const char *model =
        R"(<typedef name="t0"><type name="string"/></typedef><typedef name="t1"><type name="t0"/></typedef>
        <grouping name="g"><leaf name="l"><must condition="a"/><must condition="b"/><type name="t1"/></leaf></grouping>
        <container name="c"><uses name="g"><refine target-node="l"><must condition="c"/>
          <mandatory value="true"/></refine></uses></container><container name="d"><uses name="g"/></container>
        <rpc name="r"><description><text>x</text></description></rpc>
        <augment target-node="/m:r/m:input"><container name="p"/></augment>)";
    const char *deviations = R"(<deviation target-node="/m:c/m:l"><deviate value="add"><must condition="d"/></deviate>
        <deviate value="delete"><must condition="b"/></deviate>
        <deviate value="replace"><type name="m:t0"/></deviate></deviation>)";
    const struct {
        const char *node;
        const char *keyword; /* null: typedefs */
        const char *before;
        const char *deviated;
    } cases[] = {
        {"c/l", "must", " m:must a m:must b m:must c", " m:must a m:must c dev:must d"},
        {"c/l", "type", " m:type t1", " dev:type m:t0"},
        {"c/l", "mandatory", " m:mandatory true", " m:mandatory true"},
        {"c/l", nullptr, " m:typedef t1 m:typedef t0", " m:typedef t0"},
        {"d/l", "must", " m:must a m:must b", " m:must a m:must b"},
        {"c", nullptr, "", ""},
        {"r/input", "description", "", ""},
    };
    for (bool compact : {false, true}) {
        Kept kept(compact);
        auto statementsOf = [&](const char *path, const char *keyword) {
            std::string text;
            QY_NODE *node = kept.schema.Node("m", path);
            EXPECT_EQ(keyword != nullptr ? QXYANG_ScanNodeStatements(node, keyword, AddStatement, &text)
                                         : QXYANG_ScanNodeTypedefs(node, AddStatement, &text),
                      0u);
            return text;
        };
        kept.Load("m", model);
        for (const auto &test : cases)
            EXPECT_EQ(statementsOf(test.node, test.keyword), test.before) << test.node;
        kept.Load("dev", deviations, "m");
        for (const auto &test : cases)
            EXPECT_EQ(statementsOf(test.node, test.keyword), test.deviated) << test.node;
    }
}

TEST(Details, ExtensionInstancesComeWithTheirStatements)
{
    for (bool compact : {false, true}) {
        Kept kept(compact);
        kept.Load("m", EXTENSION + std::string(R"(<m:x v="module"/>
            <grouping name="g"><leaf name="l">)") +
                           TYPE + R"(<m:x v="1"/></leaf></grouping>
            <container name="c"><uses name="g"><refine target-node="l"><m:x v="2"><m:x v="in"/></m:x>
              <m:x v="4"/></refine></uses>
              <leaf name="taker">)" +
                           TYPE + R"(<m:x v="own"/></leaf><leaf name="none">)" + TYPE + "</leaf></container>");
        kept.Load("other", std::string("<leaf name=\"o\">") + TYPE + R"(<m:x v="o"/></leaf>)", "m");
        Schema &schema = kept.schema;
        QY_NODE *leaf = schema.Node("m", "c/l");
        EXPECT_EQ(InstancesOf(schema, leaf), " m:x 2 { m:x in } m:x 4");
        EXPECT_EQ(InstancesOf(schema, schema.Node("m", "c/none")), "");
        Instances ofModule{schema.Context(), ""};
        EXPECT_EQ(QXYANG_ScanModuleExtInsts(schema.Mod("m"), AddInstance, &ofModule), 0u);
        EXPECT_EQ(ofModule.text, " m:x module");

        kept.Load("dev", R"(<deviation target-node="/m:c/m:l"><deviate value="add"><m:x v="3"/></deviate>
            <deviate value="delete"><m:x v="2"/></deviate></deviation>)",
                  "m");
        EXPECT_EQ(InstancesOf(schema, leaf), " m:x 4 dev:x 3");
        QY_NODE *taker = schema.Node("m", "c/taker");
        EXPECT_EQ(QY_NODE_ReplaceDstExtInst(taker, leaf), 0u);
        EXPECT_EQ(InstancesOf(schema, taker), " m:x 4 dev:x 3");
        EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "dev"), 0u);
        EXPECT_EQ(InstancesOf(schema, leaf), " m:x 2 { m:x in } m:x 4");
        EXPECT_EQ(InstancesOf(schema, taker), " m:x 4 -"); // the file that said 3 is gone

        EXPECT_EQ(QY_NODE_ReplaceDstExtInst(taker, schema.Node("other", "o")), 0u);
        EXPECT_EQ(InstancesOf(schema, taker), " other:x o");
        EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "other"), 0u);
        EXPECT_EQ(InstancesOf(schema, taker), " -");
    }
}

uint32_t AddLost(const QXYANG_LOST_TARGET_S *lost, void *cookie)
{
    *static_cast<std::string *>(cookie) += test::Path(lost->pLeaf) + " " + lost->pcPath + ": " +
                                           test::Path(lost->pTarget) + " by " + StatementText(lost->stDeviate) +
                                           " of " + test::Path(lost->pRemoved) + "\n";
    return 0;
}

TEST(Details, LostTargetsNameTheDeviation)
{
    for (bool compact : {false, true}) {
        Kept kept(compact);
        Schema &schema = kept.schema;
        const auto lost = [&schema] {
            std::string text;
            EXPECT_EQ(QXYANG_ScanLostTargets(schema.Context(), AddLost, &text), 0u);
            return text;
        };
        kept.Load("m",
                  R"(<grouping name="not-supported"><container name="not-supported"><leaf name="l"><type name="string"/>
            </leaf></container></grouping>
            <container name="c"><uses name="not-supported"><refine target-node="not-supported"><presence value="p"/></refine>
            </uses><leaf name="n"><type name="string"/></leaf><leaf name="kept"><type name="leafref"><path value="../n"/></type>
            </leaf></container>
            <leaf name="r"><type name="leafref"><path value="/c/not-supported/l"/></type></leaf>
            <leaf name="left-out"><type name="leafref"><path value="/c/not-supported/l"/></type></leaf>)");
        EXPECT_EQ(lost(), "");
        kept.Load("dev", R"(<deviation target-node="/m:left-out"><deviate value="not-supported"/></deviation>
            <deviation target-node="/m:c/m:not-supported"><deviate value="not-supported"/></deviation>
            <leaf-list name="u"><type name="union"><type name="leafref"><path value="/m:c/m:n"/></type><type name="union">
              <type name="leafref"><path value="/m:c/m:not-supported/m:l"/></type><type name="leafref">
              <path value="deref(../u)/../x"/></type></type></type></leaf-list>)",
                  "m");
        const std::string expected =
            "/r /c/not-supported/l: /c/not-supported/l by dev:deviate not-supported of "
            "/c/not-supported\n"
            "/u /m:c/m:not-supported/m:l: /c/not-supported/l by dev:deviate not-supported of "
            "/c/not-supported\n";
        EXPECT_EQ(lost(), expected);
        kept.Load("again",
                  R"(<deviation target-node="/m:c/m:not-supported/m:l"><deviate value="not-supported"/></deviation>)",
                  "m");
        EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "dev"), 0u);
        EXPECT_EQ(lost(),
                  "/r /c/not-supported/l: /c/not-supported/l by again:deviate not-supported of "
                  "/c/not-supported/l\n"
                  "/left-out /c/not-supported/l: /c/not-supported/l by again:deviate not-supported of "
                  "/c/not-supported/l\n");
        EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "again"), 0u);
        EXPECT_EQ(lost(), "");
    }
}

TEST(Details, AreOnlyThereWhenAskedForBeforeTheFirstLoad)
{
    Schema schema;
    schema.LoadText("m", EXTENSION + std::string("<leaf name=\"l\">") + TYPE + "<m:x v=\"1\"/></leaf>");
    EXPECT_NE(QXYANG_KeepDetails(schema.Context()), 0u);
    QY_NODE *leaf = schema.Node("m", "l");
    QXYANG_NODE_DETAILS_S details;
    QXYANG_ORIGIN_S origin;
    EXPECT_NE(QXYANG_GetNodeDetails(leaf, &details), 0u);
    EXPECT_NE(QXYANG_GetModuleOrigin(schema.Mod("m"), &origin), 0u);
    EXPECT_NE(QXYANG_ScanNodeExtInsts(leaf, AddInstance, nullptr), 0u);
    EXPECT_NE(QXYANG_ScanNodeDefaults(leaf, AddText, nullptr), 0u);
    EXPECT_NE(QXYANG_ScanNodeStatements(leaf, "type", AddStatement, nullptr), 0u);
    EXPECT_NE(QXYANG_ScanNodeTypedefs(leaf, AddStatement, nullptr), 0u);
    EXPECT_NE(QXYANG_ScanLostTargets(schema.Context(), AddLost, nullptr), 0u);
    EXPECT_EQ(QXYANG_GetLoadedFile(schema.Context(), "m"), nullptr);
}

TEST(Details, AFailedLoadLeavesNothingBehind)
{
    Kept kept;
    kept.Load("m", std::string("<leaf name=\"l\">") + TYPE + "<description><text>d</text></description></leaf>");
    kept.schema.Module("bad", R"(<deviation target-node="/m:l"><deviate value="add"><default value="n"/></deviate>
        </deviation><leaf name="l"><type name="none"/></leaf>)",
                       "m");
    EXPECT_NE(kept.schema.Failures("bad"), "");
    EXPECT_EQ(DetailsText(kept.schema.Node("m", "l")), "m:leaf l, - | d - config 0 |");
}

} // namespace
