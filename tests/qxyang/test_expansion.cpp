/* What becomes of statements: nodes, implicit cases, groupings, submodules and augments. */
#include <gtest/gtest.h>

#include "schema.h"
#include "support/compact_twin.h"

namespace {

using test::Schema;

constexpr const char *EXTENSIONS = R"(<extension name="id"><argument name="value"/></extension>)";

TEST(Expansion, EveryKindOfNodeInStatementOrder)
{
    Schema schema;
    schema.LoadText("m", R"(<rpc name="op"><output><leaf name="o"><type name="string"/></leaf></output>
          <input><leaf name="i"><type name="string"/></leaf></input></rpc>
        <container name="c"><anyxml name="x"/><anydata name="d"/><leaf-list name="ll"><type name="int8"/></leaf-list>
          <choice name="ch">
            <leaf name="short"><type name="empty"/></leaf>
            <case name="long"><leaf name="l1"><type name="bits"><bit name="b"/></type></leaf><container name="l2"/></case>
            <choice name="inner"><container name="deep"/></choice>
          </choice>
          <list name="l"><key value="k2 m:k1"/><unique tag="sub/u"/>
            <leaf name="k1"><type name="boolean"/></leaf><leaf name="k2"><type name="binary"/></leaf>
            <container name="sub"><leaf name="u"><type name="decimal64"><fraction-digits value="2"/></type></leaf></container>
            <action name="act"><input><leaf name="i"><type name="instance-identifier"/></leaf></input></action>
            <notification name="event"><leaf name="e"><type name="string"/></leaf></notification></list>
        </container>
        <notification name="n"/>
        <rpc name="plain"/>)");
    EXPECT_EQ(schema.Tree("m"), R"(rpc op
  output output
    leaf o string
  input input
    leaf i string
container c
  anyxml x
  anydata d
  leaf-list ll int8
  choice ch
    case short
      leaf short empty
    case long
      leaf l1 bits
      container l2
    case inner
      choice inner
        case deep
          container deep
  list l [2]
    leaf k1 boolean key
    leaf k2 binary key
    container sub
      leaf u decimal64
    rpc act
      input input
        leaf i instance-identifier
    notification event
      leaf e string
notification n
rpc plain
)");
}

/* Statements that nobody asks for, under a name each. */
std::string Spelled(std::string text)
{
    const struct {
        std::string name;
        std::string statements;
    } groups[] = {
        {"$nodes", R"(<container name="c"><presence value="p"/><config value="true"/>$x</container>
            <leaf name="l"><type name="string"/><units name="s"/><default value="0"/>$must</leaf>
            <leaf-list name="ll"><type name="string"/><default value="1"/><default value="2"/>$counts</leaf-list>
            <list name="li">$counts $must $x</list>
            <choice name="ch"><default value="k"/><case name="k">$when $documented</case></choice>
            <anyxml name="ax"/><anydata name="ad"><mandatory value="true"/>$must $when</anydata>)"},
        {"$x", R"(<leaf name="x"><type name="string"/></leaf>)"},
        {"$counts", R"(<min-elements value="1"/><max-elements value="unbounded"/><ordered-by value="user"/>)"},
        {"$must", R"(<must condition="1">$checked</must>)"},
        {"$when", R"(<when condition="1">$text</when>)"},
        {"$documented", R"(<status value="deprecated"/>$text)"},
        {"$checked", R"(<error-app-tag value="t"/><error-message><value>m</value></error-message>$text)"},
        {"$text", R"(<description><text>d</text></description><reference><text>r</text></reference>)"},
    };
    for (const auto &group : groups)
        for (size_t at = text.find(group.name); at != std::string::npos; at = text.find(group.name))
            text.replace(at, group.name.size(), group.statements);
    return text;
}

TEST(Expansion, EveryStatementIsAccepted)
{
    Schema schema;
    schema.LoadText("base", Spelled(R"($nodes <rpc name="op"><input>$x</input></rpc>
        <notification name="n">$must</notification>)"));
    schema.LoadText("m", Spelled(R"(<organization><text>o</text></organization><contact><text>c</text></contact>$text
        <revision date="2020-01-01">$text</revision><extension name="e">$documented</extension>
        <feature name="f">$documented</feature><identity name="i"><if-feature name="f"/>$documented</identity>
        <typedef name="t"><type name="int8"><range value="1..5">$checked</range></type><units name="u"/>
          <default value="1"/>$documented</typedef>
        <typedef name="s"><type name="string"><length value="1">$checked</length>
          <pattern value="a"><modifier value="invert-match"/>$checked</pattern></type></typedef>
        <typedef name="b"><type name="bits"><bit name="b"><if-feature name="f"/><position value="1"/>$documented</bit></type>
        </typedef>
        <typedef name="r"><type name="instance-identifier"><require-instance value="false"/></type></typedef>
        <grouping name="g">$documented $nodes</grouping>
        <container name="use"><uses name="g">$when $documented
          <refine target-node="c"><presence value="p"/><config value="false"/>$must $text</refine>
          <refine target-node="l"><default value="1"/><mandatory value="false"/></refine>
          <refine target-node="ll"><default value="1"/><default value="2"/><min-elements value="0"/></refine>
          <refine target-node="li"><max-elements value="2"/></refine>
          <refine target-node="ch"><mandatory value="false"/></refine>
          <refine target-node="ax"><mandatory value="true"/></refine><refine target-node="ch/k">$text</refine>
          <augment target-node="c">$when $documented</augment></uses></container>
        <augment target-node="/base:c">$when $documented</augment>
        <deviation target-node="/base:c">$text<deviate value="add">$must</deviate></deviation>
        <deviation target-node="/base:l"><deviate value="replace"><config value="false"/><units name="u"/></deviate>
          <deviate value="delete"><default value="1"/>$must</deviate></deviation>
        <deviation target-node="/base:ll"><deviate value="add"><default value="3"/></deviate>
          <deviate value="replace"><min-elements value="2"/></deviate></deviation>
        <deviation target-node="/base:li"><deviate value="add"><unique tag="x"/></deviate></deviation>
        <deviation target-node="/base:ch"><deviate value="add"><mandatory value="false"/></deviate></deviation>
        <deviation target-node="/base:ax"><deviate value="add"><mandatory value="true"/></deviate></deviation>
        <deviation target-node="/base:op/base:input"><deviate value="add">$must</deviate></deviation>
        <deviation target-node="/base:op/base:output"><deviate value="add">$must</deviate></deviation>
        <deviation target-node="/base:op"><deviate value="not-supported"/></deviation>)"),
                    "base");
    EXPECT_STREQ(QY_MOD_GetRevision(schema.Mod("m")), "2020-01-01");
    EXPECT_EQ(schema.Tree("base").find("rpc"), std::string::npos);
}

TEST(Expansion, UsesIsExpandedInPlaceAndRefined)
{
    Schema schema;
    schema.Module("ext", EXTENSIONS);
    schema.Module("lib",
                  R"(<grouping name="inner"><leaf name="i"><type name="uint8"/><ext:id value="i"/></leaf></grouping>
        <grouping name="outer"><container name="o"><uses name="inner"/><choice name="ch"><leaf name="a"><type name="string"/>
          </leaf></choice><list name="keys"><key value="k"/><leaf name="k"><type name="string"/></leaf></list></container>
        </grouping>)",
                  "ext");
    schema.LoadText("m", R"(<feature name="f"/>
        <container name="c"><leaf name="before"><type name="string"/></leaf>
          <uses name="lib:outer"><if-feature name="f"/>
            <refine target-node="o/i"><ext:id value="refined"/><mandatory value="true"/></refine>
            <augment target-node="o"><leaf name="added"><type name="string"/><ext:id value="x"/></leaf></augment>
            <augment target-node="o/ch"><leaf name="b"><type name="string"/></leaf><case name="c2"/></augment></uses>
          <leaf name="after"><type name="string"/></leaf></container>
        <list name="keyed"><key value="i"/><uses name="lib:inner"/></list>
        <container name="again"><uses name="local"/></container>
        <grouping name="local"><container name="g"><grouping name="nested"><leaf name="n"><type name="t"/></leaf></grouping>
          <typedef name="t"><type name="int16"/></typedef><uses name="nested"/></container></grouping>)",
                    "ext lib");
    EXPECT_EQ(schema.Tree("m"), R"(container c
  leaf before string
  container o off
    leaf i uint8 off ext:id(refined)
    choice ch off
      case a off
        leaf a string off
      case b off
        leaf b string off
      case c2 off
    list keys [1] off
      leaf k string key off
    leaf added string off ext:id(x)
  leaf after string
list keyed [1]
  leaf i uint8 key ext:id(i)
container again
  container g
    leaf n int16
)");
    EXPECT_EQ(schema.Mod("lib"), nullptr);
}

/* As deviate 'replace' does: what a refine says of an extension is all that is left of it, at the end. */
TEST(Expansion, RefinedExtensionStatementsTakeThePlaceOfTheirKind)
{
    const std::string grouping =
        R"(<grouping name="g"><leaf name="l"><type name="string"/><ext:id value="1"/><ext:mark/>
        <ext:id value="2"/></leaf><leaf name="bare"><type name="string"/></leaf></grouping>)";
    const auto refine = [](const std::string &extensions, const std::string &leaf = "l") {
        return "<refine target-node=\"" + leaf + "\">" + extensions + "</refine>";
    };
    const struct {
        std::string uses; /* of g, or of h, which refines what it uses of g */
        const char *extensions;
    } cases[] = {
        {"<uses name=\"g\"/>", "ext:id(1) ext:mark(-) ext:id(2) |"},
        {"<uses name=\"g\">" + refine(R"(<ext:id value="3"/>)") + "</uses>", "ext:mark(-) ext:id(3) |"},
        {"<uses name=\"g\">" + refine(R"(<ext:id value="3"/><ext:id value="4"/>)") + refine("<ext:mark/>") + "</uses>",
         "ext:id(3) ext:id(4) ext:mark(-) |"},
        {"<uses name=\"g\">" + refine(R"(<ext:id value="3"/>)") + refine(R"(<ext:id value="4"/>)") + "</uses>",
         "ext:mark(-) ext:id(4) |"},
        {"<uses name=\"g\">" + refine(R"(<other:id value="3"/>)") + "</uses>",
         "ext:id(1) ext:mark(-) ext:id(2) other:id(3) |"},
        {"<uses name=\"g\">" + refine("<ext:mark/>", "bare") + refine(R"(<ext:id value="5"/>)", "bare") + "</uses>",
         "ext:id(1) ext:mark(-) ext:id(2) | ext:mark(-) ext:id(5)"},
        {"<uses name=\"h\">" + refine(R"(<ext:id value="7"/>)") + "</uses>", "ext:mark(-) ext:id(7) |"},
        {"<uses name=\"h\"/>", "ext:mark(-) ext:id(6) |"},
    };
    for (const auto &test : cases) {
        Schema schema;
        schema.Module("ext", R"(<extension name="id"><argument name="value"/></extension><extension name="mark"/>)");
        schema.Module("other", R"(<extension name="id"><argument name="value"/></extension>)");
        schema.LoadText("m",
                        grouping + "<grouping name=\"h\"><uses name=\"g\">" + refine(R"(<ext:id value="6"/>)") +
                            "</uses></grouping>" + test.uses,
                        "ext other");
        std::string bare = test::Extensions(schema.Node("m", "bare"));
        EXPECT_EQ(test::Extensions(schema.Node("m", "l")) + " |" + (bare.empty() ? "" : " ") + bare, test.extensions)
            << test.uses;
    }
}

std::string Submodule(const std::string &name, const std::string &body)
{
    return "<submodule name=\"" + name +
           "\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\"><yang-version value=\"1.1\"/>"
           "<belongs-to module=\"m\"><prefix value=\"me\"/></belongs-to>" +
           body + "</submodule>";
}

/* RFC 7950, 5.1: each of them uses what the others define. */
TEST(Expansion, SubmodulesMayIncludeEachOther)
{
    const auto body = [](const std::string &includes, const std::string &own, const std::string &used) {
        std::string text;
        for (const char &name : includes)
            text += std::string("<include module=\"") + name + "\"/>";
        return text + "<typedef name=\"t-" + own + "\"><type name=\"int8\"/></typedef><grouping name=\"g-" + own +
               "\"><leaf name=\"of-" + own + "\"><type name=\"t-" + used + "\"/></leaf></grouping><container name=\"" +
               own + "\"><uses name=\"g-" + used + "\"/></container>";
    };
    const struct {
        const char *includes[4]; /* of m, a, b and c */
        const char *order;
    } cases[] = {
        {{"a", "b", "a", ""}, "b a m"},
        {{"a", "b", "c", "a"}, "c b a m"},
        {{"b", "a", "c", "a"}, "a c b m"},
        {{"cba", "abc", "cba", "ab"}, "b a c m"},
    };
    for (const char *suffix : {".yin", ".yang"})
        for (const auto &test : cases) {
            Schema schema;
            auto file = [&](const std::string &name, const std::string &text) {
                schema.File(name + suffix, suffix == std::string(".yin") ? text : test::CompactTwin(text));
            };
            const bool two = *test.includes[3] == '\0';
            file("a", Submodule("a", body(test.includes[1], "a", "b")));
            file("b", Submodule("b", body(test.includes[2], "b", two ? "a" : "c")));
            file("c", Submodule("c", body(test.includes[3], "c", "a")));
            file("m", test::ModuleText("m", body(test.includes[0], "m", "a")));
            schema.Load("m");
            std::string expected;
            for (char name : std::string(test.order))
                if (name != ' ')
                    expected += std::string("container ") + name + "\n  leaf of-" +
                                (name == 'a'           ? "b"
                                 : name == 'b' && !two ? "c"
                                                       : "a") +
                                " int8\n";
            EXPECT_EQ(schema.Tree("m"), expected) << test.includes[0] << suffix;
        }
}

TEST(Expansion, SubmodulesStandWhereInclusionPutsThem)
{
    Schema schema;
    auto submodule = [&schema](const std::string &name, const std::string &body) {
        schema.File(name + ".yin", Submodule(name, body));
    };
    submodule("s1", R"(<include module="s2"/><leaf name="one"><type name="me:t2"/></leaf>)");
    submodule("s2", R"(<typedef name="t2"><type name="uint8"/></typedef><leaf name="two"><type name="own"/></leaf>
        <augment target-node="/me:top"><leaf name="from2"><type name="string"/></leaf></augment>)");
    submodule("s3", R"(<grouping name="g3"><leaf name="three"><type name="string"/></leaf></grouping>)");
    schema.LoadText("m", R"(<include module="s1"/><include module="s2"/><include module="s3"/>
        <typedef name="own"><type name="int8"/></typedef>
        <container name="top"><uses name="g3"/></container>
        <augment target-node="/top"><leaf name="own"><type name="t2"/></leaf></augment>)");
    EXPECT_EQ(schema.Tree("m"), R"(leaf two int8
leaf one uint8
container top
  leaf three string
  leaf from2 string
  leaf own uint8
)");
    EXPECT_EQ(schema.AugmentTree("m", 0), "augment /me:top\n  leaf from2 string\n");
    EXPECT_EQ(schema.AugmentTree("m", 1), "augment /top\n  leaf own uint8\n");
}

class Augments : public testing::Test {
  protected:
    Augments()
    {
        schema.Module("ext", EXTENSIONS);
        schema.Module("base", R"(<container name="top"><choice name="ch"><case name="a"><leaf name="a1">
            <type name="string"/></leaf></case></choice><list name="l"/></container><rpc name="op"/>
            <notification name="n"/>)");
        schema.Module("one",
                      R"(<augment target-node="/base:top"><container name="c1"/><ext:id value="aug"/></augment>)",
                      "base ext");
        // Targets are augmented nodes, deeper ones before those that they stand in.
        schema.Module("two",
                      R"(<augment target-node="/base:top/one:c1/c2/c3"><leaf name="x"><type name="string"/></leaf>
            </augment>
            <augment target-node="/base:top/one:c1/two:c2"><container name="c3"/></augment>
            <augment target-node="/base:top/one:c1"><container name="c2"/></augment>
            <augment target-node="/base:top/base:ch"><leaf name="s"><type name="string"/></leaf><case name="k"/></augment>
            <augment target-node="/base:top/base:ch/base:a"><leaf name="a2"><type name="string"/></leaf></augment>
            <augment target-node="/base:op/base:input"><leaf name="in"><type name="string"/></leaf></augment>
            <augment target-node="/base:n"><leaf name="c1"><type name="string"/></leaf></augment>
            <augment target-node="/base:top/base:l"><action name="go"/></augment>)",
                      "base one");
    }

    Schema schema;
};

constexpr const char *AUGMENTED = R"(container top
  choice ch
    case a
      leaf a1 string
      leaf two:a2 string
    case two:s
      leaf two:s string
    case two:k
  list l
    rpc two:go
  container one:c1
    container two:c2
      container two:c3
        leaf two:x string
rpc op
  input input
    leaf two:in string
notification n
  leaf two:c1 string
)";

TEST_F(Augments, ReachAnyKindOfNodeInAnyOrderOfLoading)
{
    schema.Load("base");
    schema.Load("two"); // brings the module that it builds on
    schema.Load("one");
    EXPECT_EQ(schema.Tree("base"), AUGMENTED);
    EXPECT_EQ(schema.AugmentTree("one"), R"(augment /base:top ext:id(aug)
  container c1
    container two:c2
      container two:c3
        leaf two:x string
)");
    EXPECT_EQ(schema.AugmentTree("two", 3), R"(augment /base:top/base:ch
  case s
    leaf s string
  case k
)");
}

TEST_F(Augments, GoWithTheirModuleAndComeAgain)
{
    schema.Load("two");
    schema.Load("base");
    QY_NODE *kept = schema.Node("base", "top/ch/a/a1");
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "two"), 0u);
        EXPECT_EQ(schema.Tree("base"),
                  "container top\n  choice ch\n    case a\n      leaf a1 string\n  list l\nrpc op\n"
                  "notification n\n");
        schema.Load("two");
        EXPECT_EQ(schema.Tree("base"), AUGMENTED);
        EXPECT_EQ(schema.Node("base", "top/ch/a/a1"), kept);
    }
}

} // namespace
