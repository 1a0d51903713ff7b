/* The texts of failures that one file has by itself: its form, its statements and their arguments. */
#include <gtest/gtest.h>

#include "failure_cases.h"
#include "schema.h"

namespace {

using test::ExpectFailures;
using test::ModuleText;
using test::Schema;

constexpr const char *YIN = "urn:ietf:params:xml:ns:yang:yin:1";

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
        {R"(<container name="c"/><augment target-node="/c"><action name="a"/></augment>)",
         "48: 'action' in augment '/c' needs yang-version 1.1"},
        {R"(<rpc name="r"><output><leaf name="l"><type name="int8"/></leaf>
<must condition="1"/></output></rpc>)",
         "1: 'must' in output needs yang-version 1.1"},
        {R"(<identity name="a"/><identity name="i"><base name="a"/>
<base name="a"/></identity>)",
         "1: second 'base' in identity 'i'; only one is allowed"},
        {R"(<feature name="f"/><grouping name="g"><leaf name="l"><type name="int8"/></leaf></grouping>
<uses name="g"><refine target-node="l"><if-feature name="f"/></refine></uses>)",
         "40: 'if-feature' in refine 'l' needs yang-version 1.1"},
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

} // namespace
