/* Modules in compact syntax: their strings, their files, what is wrong with them. */
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "schema.h"
#include "support/compact_twin.h"

namespace {

using test::CompactTwin;
using test::ModuleText;
using test::Schema;

/* The statements begin on the second line. */
std::string Compact(const std::string &body, const std::string &version = "1.1")
{
    return "module m { yang-version " + version + "; namespace urn:m; prefix m;\n" + body + "\n}\n";
}

constexpr const char *EXTENSION = "extension id { argument value; } ";

TEST(CompactStrings, HaveTheValueThatTheVersionGivesThem)
{
    struct {
        const char *written;
        const char *value;
        const char *version = "1.1";
    } cases[] = {
        {"plain", "plain"},
        {"/a/b*c:d+\\n", "/a/b*c:d+\\n"},
        {"x\"y'z", "x\"y'z", "1"},
        {"container", "container"},
        {"\xC3\xA4\xE2\x82\xAC", "\xC3\xA4\xE2\x82\xAC"},
        {"'it\\n is \"so\" // {;}'", "it\\n is \"so\" // {;}"},
        {"\"a\\tb\\nc\\\"d\\\\n /* e */ 'f'\"", "a\tb\nc\"d\\n /* e */ 'f'"},
        {"\"a\\x\\d+\"", "a\\x\\d+", "1"},
        {"\"\"", ""},
        {"\"a\" + 'b'+\"c\" // x\n + /* \" */ 'd'", "abcd"},
        {"\"two\\tparts \\n\" + \"joined\"", "two\tparts \njoined"},
        // The quote stands in column 10: so much goes of the lines that follow.
        {"\"first  \t\n           second\n   third\n\n \t \n         \"", "first\n second\nthird\n\n\n"},
        {"\"tab\n\tx\n\t y\n\t  z\"", "tab\nx\ny\nz"},
        {"\"tab\n\t\tx\"", "tab\n      x"},
        {"\"kept\\t \n x\\n \n y\"", "kept\t\nx\n\ny"},
        {"\"a  \r\n          b\"", "a\r\nb"},
        {"'a  \r\n  b'", "a  \r\n  b"},
    };
    for (const auto &test : cases) {
        Schema schema;
        schema.File("m.yang", Compact(EXTENSION + std::string("\n    m:id ") + test.written + ";", test.version));
        schema.Load("m");
        EXPECT_EQ(test::Extensions(schema.Mod("m")), "m:id(" + std::string(test.value) + ")") << test.written;
    }
}

TEST(CompactText, HasCommentsAndLineEndsAnywhere)
{
    Schema schema;
    schema.File("m.yang",
                "\xEF\xBB\xBF// first\r\nmodule /* a */ m// b\r\n{/**/prefix m;namespace 'urn:m';\r\n"
                "container c{leaf l{type string;}}\tlist\nk{key a;leaf a{type int8{range 1..2;}}}/* * / **/}//");
    schema.Load("m");
    EXPECT_EQ(schema.Tree("m"), "container c\n  leaf l string\nlist k [1]\n  leaf a int8 key\n");
}

TEST(CompactFiles, AreFoundWhereYinFilesAre)
{
    Schema schema;
    const std::string second = schema.Dir() + "/second";
    std::filesystem::create_directory(second);
    QY_CTX_SetSearchDir(schema.Context(), second.c_str());
    auto write = [&schema](const std::string &file, const std::string &module, const std::string &mark) {
        const std::string yin = ModuleText(module, "<revision date=\"" + mark + "\"/>");
        schema.File(file, file.ends_with(".yang") ? CompactTwin(yin) : yin);
    };
    write("both.yang", "both", "2001-01-01");
    write("both.yin", "both", "2002-02-02");
    write("early.yang", "early", "2001-01-01");
    write("second/early.yin", "early", "2002-02-02");
    write("dated@2020-01-01.yin", "dated", "2020-01-01");
    write("dated@2021-01-01.yang", "dated", "2021-01-01");
    write("twins@2020-01-01.yang", "twins", "2020-01-01");
    schema.File("twins@2020-01-01.yin",
                ModuleText("twins", "<revision date=\"2020-01-01\"/><container name=\"yin\"/>"));
    struct {
        const char *name;
        const char *wanted;
        std::string found;
    } cases[] = {
        {"both", nullptr, "2002-02-02"},       {"early", nullptr, "2001-01-01"},
        {"early", "2002-02-02", "2002-02-02"}, {"dated", nullptr, "2021-01-01"},
        {"dated", "2020-01-01", "2020-01-01"}, {"twins", nullptr, "2020-01-01"},
        {"twins", "2020-01-01", "2020-01-01"},
    };
    for (const auto &test : cases) {
        schema.Load(test.name, test.wanted);
        EXPECT_EQ(QY_MOD_GetRevision(schema.Mod(test.name)), test.found);
        EXPECT_EQ(schema.Tree(test.name), std::string(test.name) == "twins" ? "container yin\n" : "");
        EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), test.name), 0u);
    }
    EXPECT_NE(schema.Failures("dated", "2022-02-02").find("; there is 'dated@2020-01-01.yin', 'dated@2021-01-01.yang'"),
              std::string::npos);
}

TEST(CompactFiles, ImportAndIncludeAcrossSyntaxes)
{
    Schema schema;
    schema.Module("ext", R"(<extension name="id"><argument name="value"/></extension>
        <extension name="note"><argument name="text"><yin-element value="true"/></argument></extension>
        <extension name="flag"/><typedef name="t"><type name="int8"/></typedef>)");
    schema.File("sub.yang", "submodule sub { yang-version 1.1; belongs-to m { prefix m; } leaf s { type string; } }");
    schema.File("m.yang", Compact(R"(import ext { prefix e; } include sub;
        e:note "  a text " { e:id 1 { e:flag; } e:unknown-here; })"));
    EXPECT_EQ(schema.Failures("m"), "m.yang:3:49: module 'ext' has no extension 'unknown-here'\n");
    schema.File("m.yang", Compact(R"(import ext { prefix e; } include sub;
        e:note "  a text " { e:id 1 { e:flag; } description x; }
        leaf l { type e:t; e:flag; })"));
    schema.LoadText("top", R"(<leaf name="r"><type name="leafref"><path value="/m:l"/></type></leaf>)", "m");
    EXPECT_EQ(schema.Tree("top"), "leaf r leafref -> /l\n");
    schema.Load("m");
    EXPECT_EQ(schema.Tree("m"), "leaf s string\nleaf l int8 ext:flag(-)\n");
    EXPECT_EQ(test::Extensions(schema.Mod("m")), "ext:note(  a text ){ext:id(1){ext:flag(-)}}");
}

TEST(CompactTwins, OfTheExamplesGiveTheSameSchema)
{
    Schema yin;
    Schema compact;
    QY_CTX_SetSearchDir(yin.Context(), KORV_SOURCE_DIR "/examples/yin");
    size_t modules = 0;
    for (const auto &path : test::YinFiles(KORV_SOURCE_DIR "/examples/yin")) {
        std::ifstream file(path, std::ios::binary);
        compact.File(path.stem().string() + ".yang",
                     CompactTwin(std::string(std::istreambuf_iterator<char>(file), {})));
    }
    for (const auto &path : test::YinFiles(KORV_SOURCE_DIR "/examples/yin")) {
        const std::string name = path.stem();
        yin.Load(name);
        compact.Load(name);
        EXPECT_EQ(yin.Tree(name), compact.Tree(name));
        EXPECT_EQ(test::Extensions(yin.Mod(name)), test::Extensions(compact.Mod(name)));
        ++modules;
    }
    EXPECT_GT(modules, 5u);
}

TEST(CompactFailures, SayWhatWasFoundAndWhatWasExpected)
{
    const std::string control = Compact("leaf \x07;");
    struct {
        std::string text;
        const char *failures;
    } cases[] = {
        {"", "m.yang:1:1: the file has no statement; expected 'module' or 'submodule'\n"},
        {" // only a comment", "m.yang:1:19: the file has no statement; expected 'module' or 'submodule'\n"},
        {"\n <module/>",
         "m.yang:2:2: found '<': this is YIN, in a file whose name says that it is in compact syntax; "
         "expected 'module' or 'submodule'\n"},
        {std::string("\xFF\xFEm\0", 4), "m.yang:1:1: the file is in UTF-16; expected UTF-8\n"},
        {control, "m.yang:2:6: found the control character 0x07; expected a character of UTF-8 text\n"},
        {Compact("description \"\xC3\xA4\xFF\";"),
         "m.yang:2:15: found the byte 0xFF, which is no UTF-8 here; expected a character of UTF-8 text\n"},
        {Compact("description \"\xEF\xBF\xBE\";"),
         "m.yang:2:14: found a noncharacter, which YANG has none of since yang-version 1.1; expected a character\n"},
        {"modul m { }", "m.yang:1:1: unknown statement 'modul'; did you mean 'module'?\n"},
        {"leaf m { }", "m.yang:1:1: the file begins with 'leaf'; expected 'module' or 'submodule'\n"},
        {"m:x y;", "m.yang:1:1: found 'm:x'; expected 'module' or 'submodule'\n"},
        {"}", "m.yang:1:1: found '}', which closes nothing; expected 'module' or 'submodule'\n"},
        {Compact("") + "}", "m.yang:4:1: found '}', which closes nothing; expected the end of the file\n"},
        {Compact("") + "leaf x;", "m.yang:4:1: found 'leaf'; expected the end of the file behind the module's\n"},
        {Compact("description \"never\n ended;"),
         "m.yang:2:13: the file ends within the string that begins here; expected a double quote\n"},
        {Compact("description 'never ended;"),
         "m.yang:2:13: the file ends within the string that begins here; expected a single quote\n"},
        {Compact("/* never ended"), "m.yang:2:1: the file ends within the comment that begins here; expected '*/'\n"},
        {Compact("container c { leaf l { type string; }"),
         "m.yang:4:1: found the end of the file in 'module m' of line 1; expected '}'\n"},
        {Compact("leaf l { type string }"), "m.yang:2:21: found '}' behind 'type string'; expected ';' or '{'\n"},
        {Compact("contact 'me'\n organization x;"),
         "m.yang:2:13: found 'organization' behind 'contact 'me''; expected ';', '{' or '+'\n"},
        {Compact("description some words;"),
         "m.yang:2:17: found 'words' behind 'description some'; expected ';' or '{'; a text with blanks stands in "
         "quotes\n"},
        {Compact("description http://x;\nleaf l;"),
         "m.yang:2:18: found 'leaf' behind 'description http:'; expected ';' or '{'; a comment begins at its end: a "
         "text "
         "with '//' or '/*' stands in quotes\n"},
        {Compact("contact 'a' + b;"), "m.yang:2:13: found no string behind '+'; expected one in quotes\n"},
        {Compact("contact a*/b;"), "m.yang:2:10: found '*/'; expected it at the end of a comment only\n"},
        {Compact("contact a;;"), "m.yang:2:11: found ';'; expected a statement or '}'\n"},
        {Compact("contact a; 'leaf' x;"), "m.yang:2:12: found a string in quotes; expected a statement or '}'\n"},
        {Compact("contact\ra;"),
         "m.yang:2:8: found a carriage return without a line feed; expected one in quoted "
         "strings only\n"},
        {Compact("contact \"\\d\"; contact x\"y;"),
         "m.yang:2:10: found a backslash before another character; since yang-version 1.1 expected one of '\\n', "
         "'\\t', "
         "'\\\"' and '\\\\' only\nm.yang:2:24: found \" in an unquoted string; since yang-version 1.1 expected in "
         "quoted "
         "ones only\nm.yang:2:15: second 'contact' in module 'm'; only one is allowed\n"},
        {"module m { namespace \"urn:\\m\"; prefix m; yang-version 1.1; }",
         "m.yang:1:27: found a backslash before another character; since yang-version 1.1 expected one of '\\n', "
         "'\\t', "
         "'\\\"' and '\\\\' only\n"},
        {Compact("leaf; input x; leaf 1 { type string; }"),
         "m.yang:2:1: 'leaf' has no argument; expected an identifier\nm.yang:2:1: leaf has no 'type'\n"
         "m.yang:2:7: 'input' is not allowed in module 'm'\n"
         "m.yang:2:21: the argument of 'leaf' is '1'; expected an identifier\n"},
        {Compact("rpc r { input x { leaf a { type string; } } }"),
         "m.yang:2:15: 'input' takes no argument; expected ';' or '{'\n"},
        {Compact("leaf l { type string; n:id 1; m:id; :x; a:b:c; }"),
         "m.yang:2:37: found ':x'; expected a statement, or a prefix, a colon and a statement\n"
         "m.yang:2:41: found 'a:b:c'; expected a statement, or a prefix, a colon and a statement\n"},
        {Compact(EXTENSION + std::string("extension flag; leaf l { type string; mm:id 1; m:idd; m:id; m:flag 1; }")),
         "m.yang:2:72: unknown prefix 'mm' in 'mm:id'\nm.yang:2:81: module 'm' has no extension 'idd'; did you mean "
         "'m:id'?\nm.yang:2:88: extension statement 'id' has no argument\nm.yang:2:94: extension statement 'flag' "
         "takes "
         "no argument\n"},
        {Compact(std::string(600, '{')), "m.yang:2:1: found '{'; expected a statement or '}'\n"},
    };
    for (const auto &test : cases) {
        Schema schema;
        schema.File("m.yang", test.text);
        EXPECT_EQ(schema.Failures("m"), test.failures) << test.text;
    }
}

} // namespace
