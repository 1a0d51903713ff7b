/* The texts of failures: where, what, and what was expected. */
#include <gtest/gtest.h>

#include <filesystem>

#include "schema.h"

namespace {

using test::ModuleText;
using test::Schema;

constexpr const char *YIN = "urn:ietf:params:xml:ns:yang:yin:1";

struct Case {
    std::string text;     /* of the body of module 'm', which begins on line 2 */
    const char *failures; /* a line each; '@' stands for "m.yin:2:" */
};

std::string Expand(std::string failures)
{
    for (size_t at = failures.find('@'); at != std::string::npos; at = failures.find('@'))
        failures.replace(at, 1, "m.yin:2:");
    return failures;
}

void ExpectFailures(const std::vector<Case> &cases)
{
    for (const Case &test : cases) {
        Schema schema;
        schema.Module("other", R"(<typedef name="known"><type name="string"/></typedef><grouping name="group"/>
            <extension name="ext"><argument name="value"/></extension>)");
        schema.Module("m", test.text, "other");
        EXPECT_EQ(schema.Failures("m"), Expand(test.failures)) << test.text;
    }
}

TEST(FailureTexts, OfFilesThatAreNoModels)
{
    struct {
        std::string text;
        const char *failures;
    } cases[] = {
        {"", "m.yin:1:1: not well-formed XML: the file has no root element\n"},
        {"\n  <module", "m.yin:2:3: not well-formed XML: the file ends within what begins here\n"},
        {"<?xml version=\"1.0\"?>\n<!DOCTYPE module [<!ENTITY a \"b\">]><module/>",
         "m.yin:2:1: a DOCTYPE is not allowed\n"},
        {"<module/>",
         "m.yin:1:1: the root element is 'module'; expected 'module' or 'submodule' in the namespace "
         "'urn:ietf:params:xml:ns:yang:yin:1'\n"},
        {"// c\nmodule m {",
         "m.yin:1:1: found '//': this is YANG's compact syntax, in a file whose name says that it is YIN; "
         "expected '<'\n"},
        {"\n module m;",
         "m.yin:2:2: found 'module': this is YANG's compact syntax, in a file whose name says that it is "
         "YIN; expected '<'\n"},
        {std::string("<leaf xmlns=\"") + YIN + "\"/>",
         "m.yin:1:1: the root element is 'leaf'; expected 'module' or 'submodule'\n"},
        {std::string("<module xmlns=\"") + YIN + "\"/>",
         "m.yin:1:1: 'module' has no attribute 'name'\nm.yin:1:1: module has no 'namespace'\n"
         "m.yin:1:1: module has no 'prefix'\n"},
        {std::string("<submodule name=\"m\" xmlns=\"") + YIN +
             "\"><belongs-to module=\"n\"><prefix value=\"n\"/></belongs-to>"
             "</submodule>",
         "m.yin:1:1: the file holds submodule 'm', not module 'm'\n"},
        {"<yinn:module xmlns:yin=\"urn:b\"/>",
         "m.yin:1:1: unknown prefix 'yinn': no xmlns attribute binds it; did you mean 'yin'?\n"},
        {"<b:module xmlns:b=\"urn:b\" a:x=\"\"/>",
         "m.yin:1:1: an attribute of 'b:module' has a prefix that no xmlns attribute binds\n"},
        {"<?xml version=\"1.0\" encoding=\"none\"?><m/>", "m.yin:1:31: not well-formed XML: unknown encoding\n"},
        {"\xEF\xBB\xBF<m xmlns=\"x\">\xC3\xA4\xC3\xA4<\xC3\xA4></m>",
         "m.yin:1:1: the root element is 'm'; expected 'module' or 'submodule' in the namespace "
         "'urn:ietf:params:xml:ns:yang:yin:1'\n"},
        {ModuleText("m", "<!-- \xC3\xA4\xC3\xB6\xE2\x82\xAC --><leaf/>"),
         "m.yin:2:13: 'leaf' has no attribute 'name'\nm.yin:2:13: leaf has no 'type'\n"},
    };
    for (const auto &test : cases) {
        Schema schema;
        schema.File("m.yin", test.text);
        EXPECT_EQ(schema.Failures("m"), test.failures) << test.text;
    }
    Schema schema;
    const std::string narrow = ModuleText("m", "<!-- x --><leaf/>");
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (char c : narrow) {
        little.append({c, '\0'});
        big.append({'\0', c});
    }
    std::string latin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + narrow;
    latin[latin.find("x -->")] = '\xA0';
    for (const std::string &text : {little, big, latin}) {
        schema.File("m.yin", text);
        EXPECT_EQ(schema.Failures("m"), "m.yin:2:11: 'leaf' has no attribute 'name'\nm.yin:2:11: leaf has no 'type'\n");
    }
}

TEST(FailureTexts, OfStatementsAndArguments)
{
    ExpectFailures({
        {"<contaner name=\"c\"><leaf/></contaner>", "@1: unknown statement 'contaner'; did you mean 'container'?\n"},
        {"<container name=\"c\"><type name=\"string\"/><key value=\"k\"/></container>",
         "@21: 'type' is not allowed in container 'c'\n@42: 'key' is not allowed in container 'c'\n"},
        {"<leaf name=\"l\"><type name=\"string\"/><type name=\"string\"/></leaf>",
         "@37: second 'type' in leaf 'l'; only one is allowed\n"},
        {"<leaf name=\"l\"/>", "@1: leaf 'l' has no 'type'\n"},
        {"<deviation target-node=\"/m:x\"/>", "@1: deviation '/m:x' has no 'deviate'\n"},
        {"<container/>", "@1: 'container' has no attribute 'name'\n"},
        {"<container nam=\"c\"/>",
         "@1: unknown attribute 'nam' of 'container'; did you mean 'name'?\n@1: 'container' has no attribute 'name'\n"},
        {"<container name=\"7up\"/>", "@1: attribute 'name' of 'container' is '7up'; expected an identifier\n"},
        {"<leaf name=\"l\"><type name=\"string\"/><config value=\"yes\"/></leaf>",
         "@37: attribute 'value' of 'config' is 'yes'; expected 'true' or 'false'\n"},
        {"<revision date=\"2020-01-00\"/>",
         "@1: attribute 'date' of 'revision' is '2020-01-00'; expected a date of the form YYYY-MM-DD\n"},
        {"<revision date=\"2020-13-01\"/>",
         "@1: attribute 'date' of 'revision' is '2020-13-01'; expected a date of the form YYYY-MM-DD\n"},
        {"<leaf-list name=\"l\"><type name=\"string\"/><max-elements value=\"0\"/></leaf-list>",
         "@42: attribute 'value' of 'max-elements' is '0'; expected a number above 0, or 'unbounded'\n"},
        {"<revision date=\"2020-02-29\"/><revision date=\"2000-02-29\"/>\n<revision date=\"2021-02-29\"/>"
         "<revision date=\"1900-02-29\"/>",
         "m.yin:3:1: attribute 'date' of 'revision' is '2021-02-29'; expected a date of the form YYYY-MM-DD\n"
         "m.yin:3:30: attribute 'date' of 'revision' is '1900-02-29'; expected a date of the form YYYY-MM-DD\n"},
        {"<container name=\"c\"><when condition=\"a = 'b\"/></container>",
         "@21: attribute 'condition' of 'when' is 'a = 'b'; expected an XPath expression whose quotes and brackets "
         "match\n"},
        {"<container name=\"c\"><when condition=\"a[b='(' and (c]\"/><must condition=\" \"/></container>",
         "@21: attribute 'condition' of 'when' is 'a[b='(' and (c]'; expected an XPath expression whose quotes and "
         "brackets match\n@56: attribute 'condition' of 'must' is ' '; expected an XPath expression whose quotes and "
         "brackets match\n"},
        {"<container name=\"&#10;a&#127;\"/>",
         "@1: attribute 'name' of 'container' is '\\na\\x7F'; expected an identifier\n"},
        {"<description/>", "@1: 'description' has no element 'text'\n"},
        {"<container name=\"c\"> <!-- a --> hi <leaf name=\"l\"><type "
         "name=\"string\"/><![CDATA[x]]></leaf></container>",
         "@33: text is not allowed in container 'c'\n@72: text is not allowed in leaf 'l'\n"},
        {"<contact><text>a</text><text>b</text></contact>",
         "@24: second element 'text' in contact; only one is allowed\n"},
        {"<container name=\"c\"></list>", "@23: not well-formed XML: the end tag does not belong to container 'c'\n"},
        {"<yang-version value=\"1.1\"/>", "@1: second 'yang-version' in module 'm'; only one is allowed\n"},
        {"<leaf xmlns=\"\"/>",
         "@1: element 'leaf' is in no namespace; expected the namespace 'urn:ietf:params:xml:ns:yang:yin:1'\n"},
        {"<container name=\"1" + std::string(120, 'x') + "\"/>",
         ("@1: attribute 'name' of 'container' is '1" + std::string(119, 'x') + "...'; expected an identifier\n")
             .c_str()},
        {"<container name=\"" + std::string(119, 'x') + "\xE2\x82\xAC\"/>",
         ("@1: attribute 'name' of 'container' is '" + std::string(119, 'x') + "...'; expected an identifier\n")
             .c_str()},
    });
    Schema schema;
    const struct {
        const char *body;
        const char *failure;
    } versionOne[] = {
        {R"(<container name="c"><action name="a"/></container>)",
         "21: 'action' in container 'c' needs yang-version 1.1"},
        {R"(<container name="c"/><augment target-node="/c"><action name="a"/></augment>)",
         "48: 'action' in augment '/c' needs yang-version 1.1"},
        {R"(<leaf-list name="l"><type name="int8"/>
<default value="1"/></leaf-list>)",
         "1: 'default' in leaf-list 'l' needs yang-version 1.1"},
        {R"(<rpc name="r"><output><leaf name="l"><type name="int8"/></leaf>
<must condition="1"/></output></rpc>)",
         "1: 'must' in output needs yang-version 1.1"},
        {R"(<identity name="a"/><identity name="i"><base name="a"/>
<base name="a"/></identity>)",
         "1: second 'base' in identity 'i'; only one is allowed"},
        {R"(<feature name="f"/><grouping name="g"><leaf name="l"><type name="int8"/></leaf></grouping>
<uses name="g"><refine target-node="l"><if-feature name="f"/></refine></uses>)",
         "40: 'if-feature' in refine 'l' needs yang-version 1.1"},
        {R"(<choice name="c">
<choice name="d"/></choice>)",
         "1: 'choice' in choice 'c' needs yang-version 1.1"},
        {R"(<container name="c"/><augment target-node="/c"><notification name="n"/></augment>)",
         "48: 'notification' in augment '/c' needs yang-version 1.1"},
        {R"(<typedef name="t"><type name="enumeration"><enum name="a"/></type></typedef><leaf name="l"><type name="t">
<enum name="a"/></type></leaf>)",
         "1: 'enum' is not allowed in type 't', which is derived from 'enumeration', before yang-version 1.1"},
        {R"(<typedef name="t"><type name="bits"><bit name="a"/></type></typedef><leaf name="l"><type name="t">
<bit name="a"/></type></leaf>)",
         "1: 'bit' is not allowed in type 't', which is derived from 'bits', before yang-version 1.1"},
        {R"(<typedef name="t"><type name="instance-identifier"/></typedef><leaf name="l"><type name="t">
<require-instance value="true"/></type></leaf>)",
         "1: 'require-instance' is not allowed in type 't', which is derived from 'instance-identifier', before "
         "yang-version 1.1"},
    };
    for (const auto &test : versionOne) {
        schema.File("old.yin", ModuleText("old", test.body, "", "1"));
        const char *line = std::string(test.body).find('\n') != std::string::npos ? "3:" : "2:";
        EXPECT_EQ(schema.Failures("old"), std::string("old.yin:") + line + test.failure + "\n");
    }
    schema.File(
        "late.yin",
        std::string("<module name=\"late\" xmlns=\"") + YIN +
            "\"><namespace uri=\"u\"/><prefix value=\"p\"/><rpc name=\"r\"/>\n<yang-version value=\"1\"/></module>");
    EXPECT_EQ(schema.Failures("late"),
              "late.yin:2:1: 'yang-version' must stand before everything that the version matters to\n");
}

TEST(FailureTexts, OfExtensionStatements)
{
    ExpectFailures({
        {"<other:exd value=\"1\"/>", "@1: module 'other' has no extension 'exd'; did you mean 'ext'?\n"},
        {"<x:ext xmlns:x=\"urn:x\"/>",
         "@1: extension statement 'ext' is of namespace 'urn:x', which no imported module has\n"},
        {"<othr:ext value=\"1\"/>", "@1: unknown prefix 'othr': no xmlns attribute binds it; did you mean 'other'?\n"},
        {"<other:ext/>", "@1: extension statement 'ext' has no attribute 'value'\n"},
        {"<other:ext valu=\"1\"/>",
         "@1: unknown attribute 'valu' of extension statement 'ext'; did you mean 'value'?\n"},
        {"<other:ext value=\"1\" more=\"2\"/>",
         "@1: extension statement 'ext' has more than one attribute; its argument is one\n"},
        {"<extension name=\"e\"><argument name=\"a\"><yin-element value=\"true\"/></argument></extension><m:e/>",
         "@90: extension statement 'e' has no element 'a'\n"},
        {"<leaf name=\"l\"><type name=\"string\"><other:none/></type></leaf>",
         "@36: module 'other' has no extension 'none'\n"},
    });
}

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

/* RFC 7950, 7.15 and 7.16. What a grouping is right or wrong about is told there and not at its uses. */
TEST(FailureTexts, OfActionsAndNotificationsThatHaveNoPlace)
{
    const std::string groups =
        R"(<grouping name="a"><action name="go"/></grouping><grouping name="n"><notification name="up"/>
        </grouping><grouping name="deep"><container name="d"><choice name="e"><container name="f"><uses name="a"/></container>
        </choice></container></grouping>)";
    const struct {
        const char *body;
        const char *failures; /* on line 4 */
    } cases[] = {
        {R"(<uses name="a"/>)", "1: uses 'a': action 'go' cannot stand in module 'm'; expected a container or list"},
        {R"(<uses name="n"/>)", nullptr},
        {R"(<container name="c"><uses name="a"/><uses name="n"/><uses name="deep"/></container>)", nullptr},
        {R"(<choice name="c"><case name="k"><uses name="n"/></case></choice>)",
         "33: uses 'n': notification 'up' cannot stand in case 'k'; expected a container or list"},
        {R"(<grouping name="g"><choice name="c"><case name="k"><uses name="a"/></case></choice></grouping><uses name="g"/>)",
         "52: uses 'a': action 'go' cannot stand in case 'k'; expected a container or list"},
        {R"(<container name="c"><choice name="h"/></container><augment target-node="/c/h"><uses name="a"/></augment>)",
         "79: uses 'a': action 'go' cannot stand in case 'go'; expected a container or list"},
        {R"(<container name="c"/><augment target-node="/c"><uses name="a"/></augment>)", nullptr},
        {R"(<rpc name="r"><input><uses name="a"/></input></rpc>)",
         "22: uses 'a': action 'go' cannot stand below operation 'r'"},
        {R"(<rpc name="r"><output><list name="l"><uses name="deep"/></list></output></rpc>)",
         "38: uses 'deep': action 'go' cannot stand below operation 'r'"},
        {R"(<notification name="x"><container name="c"><notification name="y"/></container></notification>)",
         "44: notification 'y' cannot stand below notification 'x'"},
        {R"(<grouping name="g"><action name="b"><input><uses name="n"/></input></action></grouping><container name="c">
            <uses name="g"/></container>)",
         "44: uses 'n': notification 'up' cannot stand below operation 'b'"},
        {R"(<rpc name="r"/><augment target-node="/r/output"><container name="c"><action name="z"/></container></augment>)",
         "69: action 'z' cannot stand below operation 'r'"},
        {R"(<rpc name="r"><input><container name="c"/></input></rpc><augment target-node="/r/input/c"><uses name="n"/>
            </augment>)",
         "91: uses 'n': notification 'up' cannot stand below operation 'r'"},
    };
    for (const auto &test : cases) {
        Schema schema;
        schema.Module("m", groups + "\n" + test.body);
        if (test.failures == nullptr)
            schema.Load("m");
        else
            EXPECT_EQ(schema.Failures("m"), std::string("m.yin:5:") + test.failures + "\n");
    }
}

TEST(Constraints, HoldForWhatTheModuleMakesOfItInTheEnd)
{
    const std::string state = R"(<container name="s"><config value="false"/>)";
    const std::string number = R"(<type name="int8"/>)";
    const std::string leaf = R"(<leaf name="x"><config value="true"/>)" + number + "</leaf>";
    const std::string bodies[] = {
        state + R"(<list name="l"><key value="k"/><leaf name="k">)" + number + R"(</leaf><action name="a"><input>)" +
            leaf + "</input></action></list></container>",
        state + R"(<notification name="n">)" + leaf + "</notification></container>",
        R"(<grouping name="g">)" + leaf + "</grouping>" + state +
            R"(<uses name="g"><refine target-node="x"><config value="false"/></refine></uses></container>)",
        R"(<leaf-list name="l"><min-elements value="2"/><max-elements value="2"/>)" + number + "</leaf-list>",
        R"(<grouping name="g"><leaf name="x"><mandatory value="true"/>)" + number +
            R"(</leaf></grouping><uses name="g"><refine target-node="x"><mandatory value="false"/><default value="3"/>
            </refine></uses>)",
        R"(<leaf name="l"><type name="int8"/><default value="0X7F"/></leaf><leaf name="p"><type name="int8"><range
            value="1..2|4..5"/></type><default value="2"/></leaf><leaf name="s"><type name="int8"/><default value="+5"/></leaf>
            <leaf name="z"><type name="uint8"/><default value="-0"/></leaf>)",
        R"(<leaf name="l"><type name="enumeration"><enum name="a"><value value="2147483646"/></enum><enum name="b"/></type>
            </leaf><leaf name="b"><type name="bits"><bit name="a"><position value="4294967294"/></bit><bit name="b"/></type>
            </leaf>)",
        R"(<container name="c"><choice name="ch"><default value="z"/><leaf name="l">)" + number +
            R"(</leaf></choice></container><augment target-node="/m:c/m:ch"><leaf name="z">)" + number +
            "</leaf></augment>",
        R"(<grouping name="g"><choice name="ch"><default value="z"/><leaf name="l">)" + number +
            R"(</leaf></choice></grouping><uses name="g"><augment target-node="ch"><leaf name="z">)" + number +
            "</leaf></augment></uses>",
    };
    for (const std::string &body : bodies) {
        Schema schema;
        schema.LoadText("m", body);
    }
    Schema schema;
    schema.LoadText("base", R"(<container name="c"><leaf name="x"><type name="int8"/><default value="3"/></leaf>
        <list name="l"><key value="k"/><leaf name="k"><type name="int8"/></leaf></list></container>)" +
                                state +
                                R"(<leaf name="y"><config value="false"/><type name="int8"/></leaf></container>)");
    schema.LoadText("dev", R"(<deviation target-node="/base:c/base:x"><deviate value="add"><mandatory value="true"/>
        </deviate></deviation><deviation target-node="/base:c/base:x"><deviate value="delete"><default value="3"/></deviate>
        </deviation><deviation target-node="/base:c/base:l"><deviate value="not-supported"/></deviation>
        <deviation target-node="/base:c/base:l/base:k"><deviate value="not-supported"/></deviation>
        <deviation target-node="/base:s/base:y"><deviate value="replace"><config value="true"/></deviate></deviation>
        <deviation target-node="/base:s"><deviate value="replace"><config value="true"/></deviate></deviation>)",
                    "base");
    schema.LoadText("dev2",
                    R"(<deviation target-node="/base:s/base:y"><deviate value="add"><default value="300"/></deviate>
        <deviate value="replace"><type name="enumeration"><enum name="none"/></type></deviate>
        <deviate value="replace"><default value="none"/></deviate></deviation>)",
                    "base");
    schema.LoadText("aug", "<augment target-node=\"/base:s\">" + leaf + "</augment>", "base");
    EXPECT_EQ(schema.Tree("base"),
              "container c\n  leaf x int8\ncontainer s\n  leaf y enumeration\n  leaf aug:x int8\n");
}

TEST(FailureTexts, OfConstraints)
{
    const auto leaf = [](const std::string &type, const std::string &value) {
        return "<leaf name=\"l\">" + type + "<default value=\"" + value + "\"/></leaf>";
    };
    const std::string string = "<type name=\"string\"/>";
    const std::string colour = "<type name=\"enumeration\"><enum name=\"red\"/></type>";
    const std::string choice = "<choice name=\"ch\"><default value=\"two\"/><case name=\"too\"/></choice>";
    const std::string state = "<container name=\"c\"><config value=\"false\"/>";
    const std::string group =
        "<grouping name=\"g\"><leaf name=\"x\"><config value=\"true\"/>" + string + "</leaf></grouping>";
    ExpectFailures({
        {choice, "@19: default 'two' is no case of choice 'ch'; did you mean 'too'?\n"},
        {leaf("<type name=\"uint8\"/>", "300"), "@36: default '300': expected 0..255\n"},
        {leaf("<type name=\"int8\"/>", "-0x80") +
             "<leaf name=\"n\"><type name=\"int8\"/><default value=\"0200\"/></leaf>",
         "@100: default '0200': expected -128..127\n"},
        {leaf("<type name=\"uint8\"/>", ""), "@36: default '': it is no number of the type\n"},
        {leaf("<type name=\"decimal64\"><fraction-digits value=\"1\"/><range value=\"1..2|4\"/></type>", "3.5"),
         "@97: default '3.5': expected 1.0..2.0|4.0\n"},
        {leaf(colour, "rad"), "@66: default 'rad': the type has no enum 'rad'; did you mean 'red'?\n"},
        {leaf("<type name=\"bits\"><bit name=\"up\"/></type>", "up at"),
         "@57: default 'up at': the type has no bit 'at'\n"},
        {leaf("<type name=\"boolean\"/>", "1"), "@38: default '1': expected 'true' or 'false'\n"},
        {leaf("<type name=\"empty\"/>", ""), "@36: default '': type 'empty' has no default\n"},
        {leaf("<type name=\"union\"><type name=\"int8\"/>" + colour + "</type>", "x"),
         "@111: default 'x': no type of the union has this value\n"},
        {"<typedef name=\"t\"><type name=\"string\"><length value=\"2..4\"/></type><default "
         "value=\"\xC3\xA4\"/></typedef>",
         "@68: default '\xC3\xA4': its length is 1; expected 2..4\n"},
        {"<leaf name=\"l\">" + string + "<default value=\"a\"/><mandatory value=\"true\"/></leaf>",
         "@1: leaf 'l' is mandatory and has a default\n"},
        {"<leaf-list name=\"l\">" + string + "<min-elements value=\"3\"/><max-elements value=\"2\"/></leaf-list>",
         "@67: max-elements 2 is less than min-elements 3\n"},
        {"<feature name=\"f\"/><list name=\"l\"><key value=\"k\"/><leaf name=\"k\">" + string +
             "<if-feature name=\"f\"/></leaf></list>",
         "@35: key 'k' of list 'l' has an 'if-feature', which no key may have\n"},
        {group + state + "<container name=\"d\">\n<uses name=\"g\"/></container></container>",
         "m.yin:3:1: leaf 'x' has config 'true' below container 'c', which has config 'false'\n"},
        {"<rpc name=\"r\"><input>" + state + "<leaf name=\"l\"><config value=\"true\"/>" + string +
             "</leaf></container></input></rpc><leaf name=\"x\"><type name=\"none\"/></leaf>",
         "@171: unknown type 'none'\n"},
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
