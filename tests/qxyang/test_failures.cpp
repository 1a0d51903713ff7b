/* The texts of failures about names, definitions and other files: where, what, and what was expected. */
#include <gtest/gtest.h>

#include <filesystem>

#include "failure_cases.h"
#include "schema.h"

namespace {

using test::ExpectFailures;
using test::ModuleText;
using test::Schema;

constexpr const char *YIN = "urn:ietf:params:xml:ns:yang:yin:1";

TEST(FailureTexts, OfDefinitions)
{
    ExpectFailures({
        {"<typedef name=\"temperature-kelvin\"><type name=\"int8\"/></typedef>\n"
         "<leaf name=\"l\"><type name=\"temperature-kwxyzn\"/></leaf>",
         "m.yin:3:16: unknown type 'temperature-kwxyzn'; did you mean 'temperature-kelvin'?\n"},
        {"<typedef name=\"string\"><type name=\"int8\"/></typedef>",
         "@1: typedef 'string' has the name of a built-in type\n"},
        {"<typedef name=\"t\"><type name=\"int8\"/></typedef><typedef name=\"t\"><type name=\"int8\"/></typedef>",
         "@48: second typedef 't'\n"},
        {"<typedef name=\"t\"><type name=\"int8\"/></typedef>\n<container name=\"c\"><typedef name=\"t\">"
         "<type name=\"int8\"/></typedef></container>",
         "m.yin:3:21: typedef 't' has the name of one defined around it\n"},
        {"<grouping name=\"g\"/><container name=\"c\"><grouping name=\"g\"/></container>",
         "@41: grouping 'g' has the name of one defined around it\n"},
        {"<typedef name=\"a\"><type name=\"b\"/></typedef><typedef name=\"b\"><type name=\"m:a\"/></typedef>",
         "@1: typedef cycle: a -> b -> a\n"},
        {"<typedef name=\"a\"><type name=\"union\"><type name=\"a\"/></type></typedef>", "@1: typedef cycle: a -> a\n"},
        {"<grouping name=\"a\"><container name=\"c\"><uses name=\"b\"/></container></grouping><grouping name=\"b\">"
         "<uses name=\"a\"/></grouping>",
         "@1: grouping cycle: a -> b -> a\n"},
        {"<identity name=\"a\"><base name=\"b\"/></identity><identity name=\"b\"><base name=\"a\"/></identity>",
         "@1: identity cycle: a -> b -> a\n"},
        {"<uses name=\"other:grup\"/><leaf name=\"l\"><type name=\"other:knwon\"/></leaf>",
         "@1: unknown grouping 'other:grup'; did you mean 'other:group'?\n@41: unknown type 'other:knwon'; did you "
         "mean "
         "'other:known'?\n"},
        {"<container name=\"c\"><typedef name=\"unused\"><type name=\"none\"/></typedef></container>",
         "@44: unknown type 'none'\n"},
    });
}

TEST(FailureTexts, OfNamesAndTargets)
{
    constexpr const char *STRING = "<type name=\"string\"/>";
    const std::string group = std::string("<grouping name=\"g\"><leaf name=\"x\">") + STRING + "</leaf></grouping>";
    ExpectFailures({
        {"<container name=\"x\"/>\n<leaf name=\"x\"><type name=\"string\"/></leaf>",
         "m.yin:3:1: second node 'x' in module 'm'\n"},
        {group + "<container name=\"c\"><container name=\"x\"/>\n<uses name=\"g\"/></container>",
         "m.yin:3:1: second node 'x' in container 'c'\n"},
        {"<choice name=\"ch\"><case name=\"a\"><container name=\"x\"/></case><case name=\"b\"><container "
         "name=\"x\"/></case></choice>",
         "@77: second node 'x' in module 'm'\n"},
        {"<choice name=\"ch\"><case name=\"a\"/>\n<case name=\"a\"/></choice>",
         "m.yin:3:1: second node 'a' in choice 'ch'\n"},
        {"<list name=\"l\"><key value=\"k kk\"/><leaf name=\"k\"><type name=\"string\"/></leaf></list>",
         "@16: key 'kk' of list 'l' is no leaf of it\n"},
        {"<list name=\"l\"><key value=\"c\"/><container name=\"c\"/></list>",
         "@16: key 'c' of list 'l' is container 'c', not a leaf\n"},
        {"<list name=\"l\"><key value=\"k k\"/><leaf name=\"k\"><type name=\"string\"/></leaf></list>",
         "@16: key 'k' of list 'l' is named twice\n"},
        {"<leaf name=\"l\"><type name=\"union\"><type name=\"leafref\"><path value=\"/m:x\"/></type><type "
         "name=\"int8\"/></type></leaf>",
         "@16: leafref 'l' with path '/m:x': module 'm' has no 'x'\n"},
        {"<typedef name=\"t\"><type name=\"union\"><type name=\"int8\"/><type name=\"leafref\"><path value=\"/m:x\"/>"
         "</type></type></typedef>\n<leaf name=\"l\"><type name=\"union\"><type name=\"t\"/><type name=\"int8\"/>"
         "<type name=\"t\"/></type></leaf>",
         "m.yin:3:16: leafref 'l' with path '/m:x': module 'm' has no 'x'\n"},
        {"<list name=\"l\"><unique tag=\"u\"/></list>", "@16: unique 'u' is no leaf below list 'l'\n"},
        {group + "<container name=\"c\"><uses name=\"g\">\n<refine target-node=\"y\"/></uses></container>",
         "m.yin:3:1: refine 'y': grouping 'g' has no node 'y'\n"},
        {group + "<container name=\"c\"><uses name=\"g\">\n<refine target-node=\"x\"><presence "
                 "value=\"p\"/></refine></uses></container>",
         "m.yin:3:25: refine 'x': leaf 'x' can have no 'presence'\n"},
        {"<container name=\"c\"/><augment target-node=\"/m:d\"/>", "@22: augment '/m:d': module 'm' has no node 'd'\n"},
        {"<container name=\"c\"/><augment target-node=\"m:c\"/>", "@22: augment 'm:c': the path must begin with '/'\n"},
        {"<container name=\"c\"/><augment target-node=\"/m:c/\"/>", "@22: augment '/m:c/': '' is no name of a node\n"},
        {"<leaf name=\"l\"><type name=\"string\"/></leaf><augment target-node=\"/l\"/>",
         "@44: augment '/l': leaf 'l' can have no nodes added\n"},
        {"<container name=\"c\"/><augment target-node=\"/c\"><case name=\"k\"/></augment>",
         "@48: 'case' cannot be added to container 'c'\n"},
        {"<container name=\"c\"><container name=\"x\"/></container><augment target-node=\"/c\"><container "
         "name=\"y\"/></augment>\n"
         "<augment target-node=\"/c\"><container name=\"y\"/></augment>",
         "m.yin:3:27: second node 'y' in container 'c'\n"},
    });
}

TEST(FailureTexts, OfImportsAndIncludes)
{
    Schema schema;
    auto failures = [&schema](const std::string &name) { return schema.Failures(name); };
    schema.Module("bad", "<leaf name=\"l\"><type name=\"none\"/></leaf>");
    schema.Module("m", "<import module=\"bad\"><prefix value=\"again\"/></import>", "bad");
    EXPECT_EQ(failures("m"),
              "bad.yin:2:16: unknown type 'none'\n"
              "m.yin:1:166: cannot import module 'bad': bad.yin:2:16: unknown type 'none'\n"
              "m.yin:2:1: cannot import module 'bad': bad.yin:2:16: unknown type 'none'\n");
    schema.Module("a", "", "b");
    schema.Module("b", "", "c");
    schema.Module("c", "", "b");
    EXPECT_EQ(
        failures("a"),
        "c.yin:1:162: cannot import module 'b': import cycle: b -> c -> b\n"
        "b.yin:1:162: cannot import module 'c': c.yin:1:162: cannot import module 'b': import cycle: b -> c -> b\n"
        "a.yin:1:162: cannot import module 'b': c.yin:1:162: cannot import module 'b': import cycle: b -> c -> b\n");
    schema.Module("twice", "<import module=\"lib\"><prefix value=\"twice\"/></import>");
    schema.Module("lib", "");
    EXPECT_EQ(failures("twice"), "twice.yin:2:22: prefix 'twice' stands for module 'twice' already\n");

    auto submodule = [&](const std::string &name, const std::string &owner, const std::string &body) {
        std::string version = name == "s5" || owner == "old" ? "" : "<yang-version value=\"1.1\"/>";
        schema.File(name + ".yin", "<submodule name=\"" + name + "\" xmlns=\"" + YIN + "\"><belongs-to module=\"" +
                                       owner + "\"><prefix value=\"p\"/></belongs-to>" + version + "\n" + body +
                                       "</submodule>");
    };
    for (const char *owner : {"m", "old"}) {
        const std::string prefix = owner == std::string("m") ? "s" : "old";
        submodule(prefix + "1", owner, "<include module=\"" + prefix + "2\"/>");
        submodule(prefix + "2", owner, "<include module=\"" + prefix + "1\"/>");
    }
    submodule("s3", "other", "");
    submodule("s4", "m", "<leaf name=\"l\"><type name=\"none\"/></leaf>");
    submodule("s5", "m", "");
    submodule("s6", "m", "<include module=\"s7\"/><revision date=\"2020-01-01\"/>");
    submodule("s7", "m",
              "<include module=\"s6\"><revision-date date=\"2020-01-01\"/></include>\n"
              "<include module=\"s6\"><revision-date date=\"2019-01-01\"/></include>");
    submodule("s8", "m", "<include module=\"m\"/>");
    submodule("s9", "m", "<augment target-node=\"/p:c/none\"/>");
    const struct {
        const char *name;
        const char *failures;
    } cases[] = {
        {"s5", "m.yin:2:1: cannot include submodule 's5': it is of YANG version 1, what includes it of 1.1\n"},
        {"s6",
         "s7.yin:3:1: cannot include submodule 's6': revision '2019-01-01' is wanted; 's6.yin' has revision "
         "'2020-01-01'\n"
         "s6.yin:2:1: cannot include submodule 's7': s7.yin:3:1: cannot include submodule 's6': revision '2019-01-01' "
         "is "
         "wanted; 's6.yin' has revision '2020-01-01'\n"
         "m.yin:2:1: cannot include submodule 's6': s7.yin:3:1: cannot include submodule 's6': revision '2019-01-01' "
         "is "
         "wanted; 's6.yin' has revision '2020-01-01'\n"},
        {"s8",
         "m.yin:1:1: the file holds module 'm', not submodule 'm'\n"
         "s8.yin:2:1: cannot include submodule 'm': m.yin:1:1: the file holds module 'm', not submodule 'm'\n"
         "m.yin:2:1: cannot include submodule 's8': m.yin:1:1: the file holds module 'm', not submodule 'm'\n"},
        {"s9", "s9.yin:2:1: augment '/p:c/none': container 'c' has no node 'none' of module 'm'\n"},
        {"s3",
         "s3.yin:1:64: submodule 's3' belongs to module 'other', not to 'm'\n"
         "m.yin:2:1: cannot include submodule 's3': s3.yin:1:64: submodule 's3' belongs to module 'other', not to "
         "'m'\n"},
        {"s4", "s4.yin:2:16: unknown type 'none'\n"},
        {"lib",
         "lib.yin:1:1: the file holds module 'lib', not submodule 'lib'\n"
         "m.yin:2:1: cannot include submodule 'lib': lib.yin:1:1: the file holds module 'lib', not submodule 'lib'\n"},
    };
    for (const auto &test : cases) {
        schema.Module("m", std::string("<include module=\"") + test.name + "\"/><container name=\"c\"/>");
        EXPECT_EQ(failures("m"), test.failures);
    }
    schema.File("old.yin", ModuleText("old", "<include module=\"old1\"/>", "", "1"));
    EXPECT_EQ(failures("old"),
              "old2.yin:2:1: cannot include submodule 'old1': include cycle: old1 -> old2 -> old1\n"
              "old1.yin:2:1: cannot include submodule 'old2': old2.yin:2:1: cannot include submodule 'old1': include "
              "cycle: old1 -> old2 -> old1\n"
              "old.yin:2:1: cannot include submodule 'old1': old2.yin:2:1: cannot include submodule 'old1': include "
              "cycle: old1 -> old2 -> old1\n");
    schema.Module("m", "<include module=\"none\"/>");
    EXPECT_EQ(
        failures("m").find("m.yin:2:1: cannot include submodule 'none': no file 'none.yin' or 'none@REVISION.yin', nor "
                           "with '.yang' instead, in '"),
        0u);
}

/* The prefix that is missing, or the namespace that is meant, in both syntaxes. */
TEST(FailureTexts, NameWhatIsMeant)
{
    struct {
        std::string body;
        const char *compact;
        const char *sentence;
    } cases[] = {
        {"<ext value=\"1\"/>", "ext 1;", "unknown statement 'ext'; did you mean 'other:ext'?"},
        {"<extension name=\"own\"/><container name=\"c\"><own/></container>", "extension own; container c { own; }",
         "unknown statement 'own'; did you mean 'm:own'?"},
        {"<leaff name=\"l\"/>", "leaff l;", "unknown statement 'leaff'; did you mean 'leaf'?"},
        {"<leaf name=\"l\"><type name=\"known\"/></leaf>", "leaf l { type known; }",
         "unknown type 'known'; did you mean 'other:known'?"},
        {"<uses name=\"group\"/>", "uses group;", "unknown grouping 'group'; did you mean 'other:group'?"},
        {"<identity name=\"i\"><base name=\"kind\"/></identity>", "identity i { base kind; }",
         "unknown identity 'kind'; did you mean 'other:kind'?"},
        {"<leaf name=\"l\"><if-feature name=\"fast\"/><type name=\"string\"/></leaf>",
         "leaf l { if-feature fast; type string; }", "unknown feature 'fast'; did you mean 'other:fast'?"},
        {"<augment target-node=\"/top\"/>", "augment /top;",
         "augment '/top': module 'm' has no node 'top'; did you mean 'other:top'?"},
        {"<augment target-node=\"/other:top/in\"/>", "augment /other:top/in;",
         "augment '/other:top/in': container 'top' has no node 'in' of module 'm'; did you mean 'other:in'?"},
        {"<leaf name=\"l\"><type name=\"leafref\"><path value=\"/top/in\"/></type></leaf>",
         "leaf l { type leafref { path /top/in; } }",
         "leafref 'l' with path '/top/in': module 'm' has no 'top'; did you mean 'other:top'?"},
        {"<other:ext xmlns:other=\"urn:others\" value=\"1\"/>", nullptr,
         "extension statement 'ext' is of namespace 'urn:others', which no imported module has; prefix 'other' stands "
         "for "
         "module 'other', whose namespace is 'urn:other'"},
    };
    for (const auto &test : cases) {
        Schema schema;
        schema.Module("other", R"(<typedef name="known"><type name="string"/></typedef><grouping name="group"/>
            <extension name="ext"><argument name="value"/></extension><identity name="kind"/><feature name="fast"/>
            <container name="top"><container name="in"/></container>)");
        schema.Module("m", test.body, "other");
        EXPECT_NE(schema.Failures("m").find(std::string(": ") + test.sentence + "\n"), std::string::npos)
            << schema.Failures("m");
        if (test.compact == nullptr)
            continue;
        std::filesystem::remove(schema.Dir() + "/m.yin");
        schema.File("m.yang",
                    std::string("module m { yang-version 1.1; namespace urn:m; prefix m; import other { prefix "
                                "other; }\n") +
                        test.compact + "}");
        EXPECT_NE(schema.Failures("m").find(std::string(": ") + test.sentence + "\n"), std::string::npos)
            << schema.Failures("m");
    }
}

/* After any failure the context holds what it held. */
TEST(Failures, LeaveTheContextAsItWas)
{
    Schema schema;
    schema.Module("base",
                  R"(<container name="top"><leaf name="l"><type name="string"/></leaf><choice name="ch"/></container>
        <rpc name="op"/>)");
    schema.Module("helper", R"(<augment target-node="/base:top"><container name="h"/></augment>)", "base");
    schema.LoadText("user", R"(<augment target-node="/base:top"><container name="u"/></augment>)", "base");
    schema.Load("base");
    const std::string before = schema.Tree("base");
    QY_NODE *leaf = schema.Node("base", "top/l");
    const std::string good = R"(<augment target-node="/base:top/helper:h"><container name="x"/></augment>
        <augment target-node="/base:top/base:ch"><container name="y"/></augment>
        <augment target-node="/base:op/base:output"><container name="z"/></augment>
        <deviation target-node="/base:top/user:u"><deviate value="not-supported"/></deviation>
        <deviation target-node="/base:top/base:l"><deviate value="replace"><type name="int8"/></deviate></deviation>)";
    const char *const bad[] = {
        R"(<leaf name="l"><type name="leafref"><path value="/base:none"/></type></leaf>)",
        R"(<deviation target-node="/base:top/base:none"><deviate value="not-supported"/></deviation>)",
        R"(<augment target-node="/base:top"><leaf name="x"><type name="none"/></leaf></augment>)",
        R"(<import module="missing"><prefix value="x"/></import>)",
    };
    for (const char *mistake : bad) {
        schema.Module("m", good + mistake, "base helper user");
        EXPECT_NE(schema.Failures("m"), "");
        EXPECT_EQ(schema.Tree("base"), before);
        EXPECT_EQ(schema.Node("base", "top/l"), leaf);
        EXPECT_EQ(schema.Loaded({"base", "helper", "user", "m"}), "base user");
    }
    schema.LoadText("m", good, "base helper user");
    EXPECT_EQ(schema.Tree("base"),
              "container top\n  leaf l int8\n  choice ch\n    case m:y\n      container m:y\n"
              "  container helper:h\n    container m:x\nrpc op\n  output output\n    container m:z\n");
}

} // namespace
