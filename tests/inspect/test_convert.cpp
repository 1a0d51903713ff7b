/* convert: both syntaxes say the same, well written; what cannot be said is refused. */
#include <gtest/gtest.h>
#include <qxyang.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

namespace fs = std::filesystem;

std::string ReadAll(const std::string &path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/* A line a statement: what the schema layer reads of the file. */
std::string Statements(const std::string &path)
{
    QXYANG_FILE *file = QXYANG_ReadFile(path.c_str(), 0);
    std::string text;
    QXYANG_ScanFile(
        file,
        [](uint32_t event, const QXYANG_STATEMENT_S *statement, const QXYANG_COMMENT_S *, void *cookie) -> uint32_t {
            if (event != QXYANG_EVENT_BEGIN)
                return 0;
            auto orNone = [](const char *part) { return std::string(part != nullptr ? part : "-"); };
            *static_cast<std::string *>(cookie) += std::to_string(statement->uiLevel) + " " +
                                                   orNone(statement->pcModule) + " " + statement->pcKeyword + " [" +
                                                   orNone(statement->pcArgument) + "]\n";
            return 0;
        },
        &text);
    QXYANG_CloseFile(file);
    return text;
}

TEST(InspectConvert, EveryModelComesBackWithItsStatements)
{
    ModelDir dir;
    fs::create_directory(dir.Path() + "/back");
    size_t count = 0;
    for (const char *from : {"examples/yin", "docs/models", "tests/inspect/yin/v1", "tests/inspect/yin/faulty",
                             "tests/inspect/yin/broken"}) {
        const std::string there = std::string("korv-inspect convert -o ") + dir.Path() + "/ -d examples/yin " + from;
        const Result result = RunShell(there + "/*.yin");
        ASSERT_EQ(result.exitCode, 0) << result.err;
        for (const auto &entry : fs::directory_iterator(KORV_SOURCE_DIR + std::string("/") + from)) {
            if (entry.path().extension() != ".yin")
                continue;
            const std::string stem = entry.path().stem().string();
            const std::string compact = dir.Path() + "/" + stem + ".yang";
            const std::string back = dir.Path() + "/back/" + stem + ".yin";
            ASSERT_EQ(Inspect({"convert", compact, "-o", back, "-d", "examples/yin"}).exitCode, 0) << stem;
            EXPECT_EQ(Statements(entry.path().string()), Statements(compact));
            EXPECT_EQ(Statements(entry.path().string()), Statements(back));
            EXPECT_EQ(Inspect({"convert", back, "-d", "examples/yin"}).out, ReadAll(compact)) << "nothing creeps";
            ++count;
        }
    }
    EXPECT_GT(count, 20U);
}

/* All but letters, digits and what is beyond ASCII as a number, so that XML changes nothing. */
std::string Numbered(const std::string &text)
{
    std::string out;
    for (const char c : text)
        out += std::isalnum(static_cast<unsigned char>(c)) != 0 || (c & 0x80) != 0
                   ? std::string(1, c)
                   : "&#" + std::to_string(static_cast<int>(c)) + ";";
    return out;
}

TEST(InspectConvert, TextsOfAnyKindComeBackUnchanged)
{
    std::vector<std::string> texts = {"", std::string(90, 'x'), std::string(40, 'x') + " \n" + std::string(90, 'y')};
    std::istringstream rest(
        " ~\t~\n~\n\n~a\n~ a~a ~\ta\t~it's~say \"x\"~'\"~\\~\\n~\\\\ \\t \\\"~a\\~+~a + b~//~/* x */~a//b"
        "~{~}~;~a;b{c}~]]>~<a/>~&amp;~-->~two\nlines~two\n  indented~two\n\tby a tab"
        "~blank \nat the end~tab\t\nat the end~a\n \nb~a\n\n\nb\n~  a\n b\n\n~a\n             far"
        "~\r~a\rb~a\r\nb~a\r\n\r\n b \r\n~'\n'~\"\n\"~\xC3\xA9t\xC3\xA9~\xF0\x9F\x98\x80 \xE2\x82\xAC\n \xC3\xA9"
        "~[0-9]+\\.\\d{1,3}~../a[b = current()/c]");
    for (std::string text; std::getline(rest, text, '~');)
        texts.push_back(text);
    ModelDir dir;
    for (const char *version : {"1", "1.1"}) {
        std::string body, expected;
        for (const std::string &text : texts) {
            body += "<leaf name=\"l\"><units name=\"" + Numbered(text) + "\"/><reference><text>" + Numbered(text) +
                    "</text></reference><mimext:class-type value=\"" + Numbered(text) + "\"/></leaf>";
            expected += "1 - leaf [l]\n2 - units [" + text + "]\n2 - reference [" + text +
                        "]\n2 quelvo-mim-extensions class-type [" + text + "]\n";
        }
        std::string module = Module("m", body);
        module.insert(module.find("<namespace"), std::string("<yang-version value=\"") + version + "\"/>");
        dir.AddFile("m.yin", module);
        const std::string yang = dir.Path() + "/m.yang", back = dir.Path() + "/back.yin";
        const Result there = Inspect({"convert", dir.Path() + "/m.yin", "-o", yang});
        ASSERT_EQ(there.exitCode, 0) << there.err;
        const Result again = Inspect({"convert", yang, "-o", back});
        ASSERT_EQ(again.exitCode, 0) << again.err;
        for (const std::string &path : {yang, back}) {
            const std::string found = Statements(path);
            EXPECT_EQ(found.substr(found.find("1 - leaf")), expected) << version;
        }
        fs::remove(yang);
    }
}

std::string Repeated(size_t count, const std::string &text)
{
    std::string all;
    for (size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

/* A module with an extension whose argument is an element. */
const std::string NOTES =
    "module notes {\n  namespace \"urn:n&n\";\n  prefix n;\n  extension note {\n    argument text {\n"
    "      yin-element true;\n    }\n  }\n  extension mark;\n}\n";

TEST(InspectConvert, TheLayoutIsThatOfAPerson)
{
    const std::string compact = R"(// what it is
module m {
  namespace "urn:m";
  prefix m;

  import notes {
    prefix n;
  }

  n:note "all <of> it"; // beside
  /*
   * of several
   * lines
   */
  container c { // of the head
    description
      "Two
       lines.";
    n:mark;
    leaf l {
      type string {
        pattern '"\d+"';
      }
      must
        "a long expression that is too long for the rest of the line" {
        error-message "no";
      }
    }
  }
}
)";
    const std::string yin = R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- what it is -->
<module name="m"
        xmlns="urn:ietf:params:xml:ns:yang:yin:1"
        xmlns:m="urn:m"
        xmlns:n="urn:n&amp;n">
  <namespace uri="urn:m"/>
  <prefix value="m"/>

  <import module="notes">
    <prefix value="n"/>
  </import>

  <n:note>
    <n:text>all &lt;of&gt; it</n:text>
  </n:note> <!-- beside -->
  <!--
   * of several
   * lines
   -->
  <container name="c"> <!-- of the head -->
    <description>
      <text>Two
lines.</text>
    </description>
    <n:mark/>
    <leaf name="l">
      <type name="string">
        <pattern value="&quot;\d+&quot;"/>
      </type>
      <must condition="a long expression that is too long for the rest of the line">
        <error-message>
          <value>no</value>
        </error-message>
      </must>
    </leaf>
  </container>
</module>
)";
    ModelDir dir;
    dir.AddFile("notes.yang", NOTES);
    dir.AddFile("m.yang", compact);
    EXPECT_EQ(Inspect({"convert", dir.Path() + "/m.yang"}).out, yin);
    dir.AddFile("m.yin", yin);
    std::string back = Inspect({"convert", dir.Path() + "/m.yin"}).out;
    for (const char *text : {" what it is ", " beside ", " of the head "}) { // XML has one kind of comment only
        const size_t at = back.find("/*" + std::string(text) + "*/");
        ASSERT_NE(at, std::string::npos) << back;
        back.replace(at, std::string(text).size() + 4, "//" + std::string(text, std::string(text).size() - 1));
    }
    EXPECT_EQ(back, compact);
    EXPECT_EQ(Inspect({"convert", dir.Path() + "/m.yang", "--to", "yang"}).out, compact);
}

TEST(InspectConvert, WhatCannotBeConvertedIsSaidWithItsPlace)
{
    const std::string head = "module m {\n  namespace \"urn:m\";\n  prefix m;\n  import notes { prefix n; }\n  ";
    const std::string yinHead =
        "<module name=\"m\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\" xmlns:n=\"urn:n&amp;n\">"
        "<prefix value=\"m\"/><import module=\"notes\"><prefix value=\"n\"/></import>\n";
    const std::string nowhere = "<import module=\"nowhere\"><prefix value=\"n\"/></import>";
    std::string lost = yinHead;
    lost.replace(lost.find("notes"), 5, "nowhere");
    const struct {
        std::string text;
        int exitCode;
        std::string error; /* behind "standard input:" */
    } cases[] = {
        {"module m {\n  prefix m\n}\n", 3, "2:11: found '}' behind 'prefix m'; expected ';' or '{'"},
        {"<module>", 3, "1:9: not well-formed XML"},
        {head + "n:nte \"x\";\n}\n", 1,
         "5:3: it is not known how YIN writes the argument of 'n:nte': module 'notes' has no"},
        {head + "x:note \"x\";\n}\n", 1, "5:3: it is not known how YIN writes the argument of 'x:note': no import has"},
        {head + "import far { prefix f; }\n  f:a b;\n}\n", 1,
         "6:3: it is not known how YIN writes the argument of 'f:a': no file"},
        {head + "n:mark x;\n}\n", 1, "5:3: extension 'n:mark' takes no argument"},
        {head + "n:note \" x\";\n}\n", 1, "5:3: YIN cannot hold the argument of 'n:note'"},
        {head + "leef l;\n}\n", 1, "5:3: unknown statement 'leef'"},
        {head + "rpc r { input x; }\n}\n", 1, "5:11: statement 'input' takes no argument"},
        {yinHead + "<n:note text=\"x\"/></module>", 1,
         "2:1: found attribute 'text' of 'n:note'; expected its argument in element"},
        {yinHead + "<n:note><n:text>a<n:b/></n:text></n:note></module>", 1,
         "2:9: element 'n:text' is the argument of 'n:note'"},
        {yinHead + "<leaf nam=\"x\"/></module>", 1, "2:1: found attribute 'nam' of 'leaf'; expected 'name'"},
        {lost + "<n:note><n:text>a</n:text></n:note></module>", 1, "2:1: it is not known how YIN writes"},
        {yinHead + "<n:note xmlns:n=\"urn:x\"/></module>", 1,
         "2:1: 'n:note' is of namespace 'urn:x', which no imported module has; prefix 'n' stands for module 'notes', "
         "whose namespace is 'urn:n&n'\n"},
        {yinHead + "<x:note xmlns:x=\"urn:x\"/></module>", 1,
         "2:1: 'x:note' is of namespace 'urn:x', which no imported module has\n"},
        {lost + "<x:note xmlns:x=\"urn:x\"/></module>", 1,
         "2:1: 'x:note' is of namespace 'urn:x', which no imported module has; no file of module 'nowhere' is found"},
        {yinHead + "<note xmlns=\"\"/></module>", 1, "2:1: element 'note' is in no namespace\n"},
        {head + "container c {\n" + Repeated(509, "n:mark {") + "\n  description x;" + Repeated(511, "}"), 1,
         "7:3: YIN cannot hold 'description': elements are nested deeper than 512 levels\n"},
        {lost + "<n:note text=\"a\"/></module>", 0, ""}, // which needs no definition
    };
    ModelDir dir;
    dir.AddFile("notes.yang", NOTES);
    for (const auto &each : cases) {
        dir.AddFile("input", each.text);
        const Result result = RunShell("korv-inspect convert - -d " + dir.Path() + " <" + dir.Path() + "/input");
        EXPECT_EQ(result.exitCode, each.exitCode) << each.error << result.err;
        EXPECT_EQ(result.out.empty(), each.exitCode != 0) << each.error;
        EXPECT_EQ(result.err.find(each.error.empty() ? "" : "standard input:" + each.error), 0U) << result.err;
    }
    dir.AddFile("c.yang", "module c {\n  // a -- b\n  // c\n  prefix c; // ----\n}\n");
    const Result comments = Inspect({"convert", dir.Path() + "/c.yang"});
    EXPECT_EQ(comments.err, dir.Path() + "/c.yang: YIN cannot hold 2 comments with two hyphens in a row\n");
    EXPECT_NE(comments.out.find("<!-- c -->"), std::string::npos);
}

TEST(InspectConvert, NamespacesDecideWhateverThePrefixes)
{
    const std::string yin = "urn:ietf:params:xml:ns:yang:yin:1", mim = "urn:quelvo:yang:mim-extensions";
    auto module = [](const std::string &name, const std::string &y, const std::string &bindings,
                     const std::string &statements) {
        return "<" + y + "module name=\"" + name + "\" " + bindings + "><" + y + "namespace uri=\"urn:" + name +
               "\"/><" + y + "prefix value=\"" + name + "\"/><" + y + "import module=\"notes\"><" + y +
               "prefix value=\"n\"/></" + y + "import><" + y + "import module=\"quelvo-mim-extensions\"><" + y +
               "prefix value=\"mimext\"/></" + y + "import>" + statements + "</" + y + "module>";
    };
    ModelDir dir;
    dir.AddFile("notes.yang", NOTES);
    dir.AddFile("px.yin",
                module("px", "", "xmlns=\"" + yin + "\" xmlns:z=\"" + mim + "\" xmlns:n=\"" + mim + "\"",
                       "<container name=\"c\"><z:class-id value=\"3\"/><leaf name=\"a\"><n:field-id value=\"1\"/>"
                       "<type name=\"uint8\"/></leaf></container>"));
    dir.AddFile("sp.yin", module("sp", "y:", "xmlns=\"" + mim + "\" xmlns:y=\"" + yin + "\" xmlns:o=\"urn:n&amp;n\"",
                                 "<o:note><o:text>t</o:text></o:note><y:container name=\"c\"><class-id value=\"3\"/>"
                                 "<y:leaf name=\"a\"><y:type name=\"uint8\"/></y:leaf></y:container>"));
    for (const std::string name : {"px", "sp"}) {
        const std::string source = dir.Path() + "/" + name + ".yin", there = dir.Path() + "/" + name + ".yang";
        for (const std::string syntax : {"yang", "yin"}) {
            const std::string back = dir.Path() + "/out." + syntax;
            const Result result =
                Inspect({"convert", source, "-d", dir.Path(), "-d", "examples/yin", "--to", syntax, "-o", back});
            ASSERT_EQ(result.exitCode, 0) << result.err;
            EXPECT_NE(ReadAll(back).find("mimext:class-id"), std::string::npos) << ReadAll(back);
            const std::string statements = Statements(back);
            for (const char *expected : {"class-id [3]", name == "px" ? "field-id [1]" : "leaf [a]"})
                EXPECT_NE(statements.find(expected), std::string::npos) << statements;
            EXPECT_EQ(name == "sp", statements.find("1 notes note") != std::string::npos) << statements;
        }
    }
}

TEST(InspectConvert, FilesAreWrittenAsAWhole)
{
    ModelDir dir;
    const std::string path = dir.Path(), out = path + "/out";
    fs::create_directory(out);
    dir.AddFile("a@2026-01-01.yang", "module a { prefix a; }");
    dir.AddFile("b.yang", "module b { prefix b; }");
    dir.AddFile("wrong.yang", "module c {");
    dir.AddFile("up.yang", "module ../up { prefix c; }");
    const std::string a = path + "/a@2026-01-01.yang", b = path + "/b.yang";
    const std::pair<std::vector<std::string>, int> refused[] = {{{a, b}, 2},
                                                                {{a, b, "-o", path + "/x.yin"}, 2},
                                                                {{a, "-o", path + "/nowhere/"}, 2},
                                                                {{b, "--to", "yang", "-o", path}, 2},
                                                                {{b, b, "-o", out}, 2},
                                                                {{b, path + "/wrong.yang", "-o", out}, 3},
                                                                {{b, path + "/up.yang", "-o", out}, 1},
                                                                {{path + "/none.yang"}, 3},
                                                                {{a, "--to", "xml"}, 2},
                                                                {{b, "-o", path + "/nowhere/x.yin"}, 1}};
    for (auto [args, exitCode] : refused) {
        args.insert(args.begin(), "convert");
        EXPECT_EQ(Inspect(args).exitCode, exitCode) << args.back();
    }
    EXPECT_TRUE(fs::is_empty(out));
    EXPECT_EQ(ReadAll(b), "module b { prefix b; }");
    fs::create_symlink(path + "/target", out + "/b.yin");
    dir.AddFile("target", "before");
    ASSERT_EQ(Inspect({"convert", a, b, "-o", out}).exitCode, 0);
    EXPECT_NE(ReadAll(out + "/a@2026-01-01.yin").find("<module name=\"a\""), std::string::npos);
    EXPECT_NE(ReadAll(path + "/target").find("<module name=\"b\""), std::string::npos) << "a link stays one";
    EXPECT_EQ(std::distance(fs::directory_iterator(out), fs::directory_iterator()), 2) << "nothing else is left";
    ASSERT_EQ(Inspect({"convert", b, "-o", "/dev/null"}).exitCode, 0);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

} // namespace
