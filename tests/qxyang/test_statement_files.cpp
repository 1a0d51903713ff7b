/* What qxyang.h tells of files and loads. */
#include <gtest/gtest.h>
#include <qxyang.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <vector>

#include "schema.h"
#include "support/compact_twin.h"

namespace {

using test::ModuleText;
using test::Schema;

struct CloseFile {
    void operator()(QXYANG_FILE *file) const { QXYANG_CloseFile(file); }
};
using File = std::unique_ptr<QXYANG_FILE, CloseFile>;

File ReadText(const std::string &name, const std::string &text, uint32_t options = 0)
{
    return File(QXYANG_ReadText(name.c_str(), text.data(), text.size(), options));
}

std::string PlaceText(const QXYANG_PLACE_S &place)
{
    return std::to_string(place.uiLine) + ":" + std::to_string(place.uiColumn);
}

std::string Slice(const QXYANG_FILE *file, const QXYANG_PLACE_S &place)
{
    uint64_t size = 0;
    const char *text = QXYANG_GetFileText(file, &size);
    return std::string(text, size).substr(place.uiOffset, place.uiLength);
}

struct Cookie {
    const QXYANG_FILE *file;
    bool withPlaces;
    std::string text;
};

std::string OrDash(const char *text)
{
    return text != nullptr ? text : "-";
}

uint32_t AddEvent(uint32_t event, const QXYANG_STATEMENT_S *statement, const QXYANG_COMMENT_S *comment, void *pvCookie)
{
    auto &cookie = *static_cast<Cookie *>(pvCookie);
    if (event == QXYANG_EVENT_COMMENT) {
        cookie.text += std::string(comment->uiIsAlone != 0 ? "alone" : "beside") + "[" + comment->pcText + "]" +
                       PlaceText(comment->stPlace) + "\n";
    } else if (event == QXYANG_EVENT_END) {
        cookie.text += std::string(statement->uiLevel * 2, ' ') + ".\n";
    } else {
        cookie.text += std::string(statement->uiLevel * 2, ' ');
        if (statement->pcPrefix != nullptr)
            cookie.text += std::string(statement->pcPrefix) + "=" + OrDash(statement->pcModule) + " ";
        cookie.text += std::string(statement->pcKeyword) + " " + OrDash(statement->pcArgument);
        if (cookie.withPlaces)
            cookie.text += " " + PlaceText(statement->stPlace) + " " + PlaceText(statement->stArgument) + " <" +
                           Slice(cookie.file, statement->stArgument) + ">";
        cookie.text += "\n";
    }
    return 0;
}

std::string Events(const File &file, bool withPlaces)
{
    Cookie cookie{file.get(), withPlaces, {}};
    EXPECT_EQ(QXYANG_ScanFile(file.get(), AddEvent, &cookie), 0u);
    return cookie.text;
}

uint32_t AddFailure(const QXYANG_FAILURE_S *failure, void *cookie)
{
    *static_cast<std::string *>(cookie) += OrDash(failure->pcModule) + " " + OrDash(failure->pcFile) + " " +
                                           std::to_string(failure->uiLine) + ":" + std::to_string(failure->uiColumn) +
                                           " " + failure->pcSentence + "\n";
    return 0;
}

std::string Failures(const File &file)
{
    std::string text;
    QXYANG_ScanFileFailures(file.get(), AddFailure, &text);
    return text;
}

TEST(StatementFiles, TellWhatCompactFilesSay)
{
    const std::string text =
        "// head\nmodule m {\n  prefix m; import e { prefix x; } /* a\n b */\n"
        "\tx:id \"one\n\t two\" + 'three' { m:flag; y:odd; }\n  leaf /*in*/ \xC3\xA4 ; // end\n  wrong;\n}\n";
    File file = ReadText("m.yang", text, QXYANG_OPTION_COMMENTS);
    EXPECT_EQ(Failures(file), "");
    EXPECT_EQ(QXYANG_GetFileSyntax(file.get()), uint32_t{QXYANG_SYNTAX_COMPACT});
    EXPECT_EQ(Events(file, true),
              "alone[ head]1:1\n"
              "module m 2:1 2:8 <m>\n"
              "  prefix m 3:3 3:10 <m>\n  .\n"
              "  import e 3:13 3:20 <e>\n    prefix x 3:24 3:31 <x>\n    .\n  .\n"
              "beside[ a\n b ]3:36\n"
              "  x=e id one\ntwothree 5:2 5:7 <\"one\n\t two\" + 'three'>\n"
              "    m=m flag - 6:20 0:0 <>\n    .\n    y=- odd - 6:28 0:0 <>\n    .\n  .\n"
              "  leaf \xC3\xA4 7:3 7:15 <\xC3\xA4>\nbeside[in]7:8\n  .\n"
              "beside[ end]7:19\n"
              "  wrong - 8:3 0:0 <>\n  .\n.\n");
    QXYANG_STATEMENT_S statement;
    ASSERT_EQ(QXYANG_GetStatement(file.get(), 2, &statement), 0u);
    EXPECT_EQ(Slice(file.get(), statement.stPlace), "import e { prefix x; }");
    EXPECT_EQ(statement.uiParent, 0u);
    EXPECT_EQ(statement.uiFirstChild, 3u);
    EXPECT_EQ(statement.uiNext, 4u);
    EXPECT_NE(QXYANG_GetStatement(file.get(), 99, &statement), 0u);
}

TEST(StatementFiles, TellWhatYinFilesSay)
{
    const std::string text =
        "<!-- head -->\n<module name=\"m\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\" xmlns:x='urn:e'>\n"
        "  <prefix value='m'/><import module=\"e\"><prefix value=\"x\"/></import>\n"
        "  <x:id  b='&lt;1' /> <!--aside-->\n"
        "  <x:note><x:text> words </x:text></x:note>\n"
        "  <description>\n<text>two\nlines</text></description>\n  <wrong/>\n</module>\n";
    File file = ReadText("m.yin", text, QXYANG_OPTION_COMMENTS);
    EXPECT_EQ(Failures(file), "");
    EXPECT_EQ(QXYANG_GetFileSyntax(file.get()), uint32_t{QXYANG_SYNTAX_YIN});
    EXPECT_EQ(Events(file, true),
              "alone[ head ]1:1\n"
              "module m 2:1 2:15 <m>\n"
              "  prefix m 3:3 3:18 <m>\n  .\n"
              "  import e 3:22 3:38 <e>\n    prefix x 3:41 3:56 <x>\n    .\n  .\n"
              "  x=e id <1 4:3 4:13 <&lt;1>\n  .\nbeside[aside]4:23\n"
              "  x=e note - 5:3 0:0 <>\n    x=e text words 5:11 5:19 < words >\n    .\n  .\n"
              "  description two\nlines 6:3 7:7 <two\nlines>\n  .\n"
              "  wrong - 9:3 0:0 <>\n  .\n.\n");
    QXYANG_STATEMENT_S statement;
    ASSERT_EQ(QXYANG_GetStatement(file.get(), 4, &statement), 0u);
    EXPECT_EQ(Slice(file.get(), statement.stPlace), "<x:id  b='&lt;1' />");
    EXPECT_EQ(statement.uiArgumentForm, uint32_t{QXYANG_ARGUMENT_ATTRIBUTE});
    EXPECT_STREQ(statement.pcArgumentName, "b");
}

TEST(StatementFiles, TheNamespaceOfAnElementTellsItsModule)
{
    const struct {
        const char *bindings; /* of namespaces; the file is of urn:m, and imports e as x and f as y */
        const char *element;
        const char *module; /* or "-" */
    } cases[] = {
        {"xmlns:x='urn:e'", "<x:id/>", "e"},
        {"xmlns:x='urn:e' xmlns:other='urn:e'", "<other:id/>", "e"},
        {"xmlns:x='urn:f' xmlns:y='urn:e'", "<x:id/>", "e"},
        {"xmlns:x='urn:e'", "<y:id xmlns:y='urn:e'/>", "e"},
        {"xmlns:x='urn:e'", "<x:id xmlns:x='urn:none'/>", "-"},
        {"xmlns:x='urn:e'", "<id xmlns='urn:e'/>", "e"},
        {"xmlns:x='urn:e'", "<id xmlns=''/>", "-"},
        {"xmlns:x='urn:m'", "<x:id/>", "m"},
        {"xmlns:other='urn:m'", "<other:id/>", "m"},
        {"xmlns:m='urn:none'", "<m:id/>", "-"},
        {"", "<x:id xmlns:x='urn:e'/>", "e"},
    };
    for (const auto &test : cases) {
        File file =
            ReadText("m.yin", std::string("<yin:module name='m' xmlns:yin='urn:ietf:params:xml:ns:yang:yin:1' ") +
                                  test.bindings + "><yin:namespace uri='urn:m'/><yin:prefix value='m'/>" +
                                  "<yin:import module='e'><yin:prefix value='x'/></yin:import>" +
                                  "<yin:import module='f'><yin:prefix value='y'/></yin:import>" + test.element +
                                  "</yin:module>");
        QXYANG_STATEMENT_S statement{};
        ASSERT_EQ(QXYANG_GetStatement(file.get(), 7, &statement), 0u) << Failures(file);
        EXPECT_EQ(OrDash(statement.pcModule), test.module) << test.bindings << test.element;
    }
}

TEST(StatementFiles, SayTheSameInBothSyntaxes)
{
    size_t compared = 0;
    for (const auto &path : test::YinFiles(KORV_SOURCE_DIR "/examples/yin")) {
        std::ifstream in(path, std::ios::binary);
        const std::string yin(std::istreambuf_iterator<char>(in), {});
        File plain(QXYANG_ReadFile(path.c_str(), 0));
        File twin = ReadText("twin.yang", test::CompactTwin(yin));
        EXPECT_EQ(Events(plain, false), Events(twin, false));
        EXPECT_EQ(Failures(plain) + Failures(twin), "");
        ++compared;
    }
    EXPECT_GE(compared, 9u);
}

TEST(StatementFiles, TellWhyTheyCannotBeRead)
{
    struct {
        const char *name;
        std::string text;
        const char *events;
        const char *failures;
    } cases[] = {
        {"m.yang", "module m { leaf l { type", "module m\n  leaf l\n    type -\n    .\n  .\n.\n",
         "- m.yang 1:25 found the end of the file behind 'type'; expected ';' or '{'\n"},
        {"m.yin", "<module xmlns='urn:ietf:params:xml:ns:yang:yin:1'><leaf", "module -\n.\n",
         "- m.yin 1:51 not well-formed XML: unclosed token\n"},
        {"m.yin", "<!DOCTYPE m><m/>", "", "- m.yin 1:1 a DOCTYPE is not allowed\n"},
        {"m.yin", "", "", "- m.yin 1:1 not well-formed XML: no element found\n"},
        {"m.yang", std::string("module m;\0", 10), "",
         "- m.yang 1:10 found the control character 0x00; expected a "
         "character of UTF-8 text\n"},
    };
    for (const auto &test : cases) {
        File file = ReadText(test.name, test.text);
        EXPECT_EQ(Events(file, false), test.events) << test.text;
        EXPECT_EQ(Failures(file), test.failures) << test.text;
    }
    EXPECT_EQ(Failures(File(QXYANG_ReadFile("/none/m.yang", 0))),
              "- - 0:0 /none/m.yang: the file cannot be opened: No such file or directory\n");
    EXPECT_NE(Failures(ReadText(
                           "m.yang", "module m {" +
                                         [] {
                                             std::string deep;
                                             for (int i = 0; i < 600; ++i)
                                                 deep += "c{";
                                             return deep;
                                         }()))
                  .find("statements are nested deeper than 512 levels"),
              std::string::npos);
    QXYANG_CloseFile(nullptr);
}

/* A load takes more of them, so that of a loaded file the rest has no place. */
TEST(StatementFiles, EndWithTheLastStatementThatIsListed)
{
    std::string text = "module m { namespace u; prefix p; extension x; leaf a { type string; } p:x {";
    for (int i = 0; i < 4 << 20; ++i)
        text += "d;";
    text += "} leaf b { type string; } }";
    const std::string failures = Failures(ReadText("m.yang", text));
    EXPECT_TRUE(failures.ends_with(" the file has more than 4194304 statements\n")) << failures;
    Schema schema;
    ASSERT_EQ(QXYANG_KeepDetails(schema.Context()), 0u);
    schema.File("m.yang", text);
    schema.Load("m");
    for (const char *leaf : {"a", "b"}) {
        QXYANG_NODE_DETAILS_S details = {};
        EXPECT_EQ(QXYANG_GetNodeDetails(schema.Node("m", leaf), &details), 0u);
        EXPECT_EQ(details.stStatement.pcFile != nullptr, *leaf == 'a') << leaf;
    }
}

TEST(StatementFiles, HowYinWritesAnArgumentIsToldByTheKeyword)
{
    const struct {
        const char *keyword;
        const char *name; /* null: no statement of YANG */
        uint32_t form;
    } cases[] = {{"leaf", "name", QXYANG_ARGUMENT_ATTRIBUTE},
                 {"error-message", "value", QXYANG_ARGUMENT_ELEMENT},
                 {"reference", "text", QXYANG_ARGUMENT_ELEMENT},
                 {"input", "", QXYANG_ARGUMENT_NONE},
                 {"unique", "tag", QXYANG_ARGUMENT_ATTRIBUTE},
                 {"leef", nullptr, 99},
                 {"", nullptr, 99}};
    for (const auto &test : cases) {
        uint32_t form = 99;
        EXPECT_STREQ(QXYANG_GetArgumentName(test.keyword, &form), test.name) << test.keyword;
        EXPECT_EQ(form, test.form) << test.keyword;
    }
}

TEST(StatementFiles, PathsOfAModuleAreThoseThatALoadTries)
{
    Schema schema;
    std::filesystem::create_directory(schema.Dir() + "/sub");
    schema.File("sub/m.yang", "");
    schema.File("sub/m@2020-01-01.yin", "");
    schema.File("m.yin", "");
    const std::string below = schema.Dir() + "/sub";
    const char *const dirs[] = {"", below.c_str(), schema.Dir().c_str()};
    auto paths = [&](const char *name, const char *revision) {
        std::string text;
        auto add = [](const char *path, void *cookie) {
            *static_cast<std::string *>(cookie) += std::string(path) + "\n";
            return 0u;
        };
        EXPECT_EQ(QXYANG_ScanModulePaths(dirs, 3, name, revision, add, &text), 0u);
        return text;
    };
    EXPECT_EQ(paths("m", nullptr), below + "/m.yang\n");
    EXPECT_EQ(paths("m", "2020-01-01"),
              below + "/m@2020-01-01.yin\n" + below + "/m.yang\n" + schema.Dir() + "/m.yin\n");
    EXPECT_EQ(paths("none", nullptr) + paths("../m", nullptr), "");
    auto stop = [](const char *, void *) { return 7u; };
    EXPECT_EQ(QXYANG_ScanModulePaths(dirs, 3, "m", nullptr, stop, nullptr), 7u);
    EXPECT_EQ(QXYANG_ScanModulePaths(nullptr, 0, "m", nullptr, stop, nullptr), 0u);

    schema.File("sub/b.Yin", "");
    schema.File("sub/A.YANG", "");
    schema.File("sub/c\x0eyin", ""); // no capital dot
    schema.File("backup@old.yin", "");
    schema.File("dated@2020-01-01.yang", "");
    schema.File("2020.yin", "");
    std::string names;
    auto addName = [](const char *name, void *cookie) {
        *static_cast<std::string *>(cookie) += std::string(" ") + name;
        return 0u;
    };
    EXPECT_EQ(QXYANG_ScanModuleNames(dirs, 3, addName, &names), 0u);
    EXPECT_EQ(names, " dated m");

    /* Listings stay what they were, for the contexts that use them, too. */
    std::string listed;
    auto addFile = [](uint32_t dir, const char *file, int32_t error, void *cookie) {
        *static_cast<std::string *>(cookie) +=
            " " + std::to_string(dir) + ":" + (file != nullptr ? file : std::strerror(error));
        return 0u;
    };
    auto addModule = [](const char *name, const char *path, uint32_t syntax, void *cookie) {
        *static_cast<std::string *>(cookie) += std::string(" ") + name + "=" + path + ":" + std::to_string(syntax);
        return 0u;
    };
    const std::string none = below + "/none";
    const char *const some[] = {"", below.c_str(), none.c_str()};
    QXYANG_LISTINGS *listings = QXYANG_OpenListings(some, 3);
    EXPECT_EQ(QXYANG_ScanListedFiles(listings, addFile, &listed), 0u);
    EXPECT_EQ(listed, " 1:m.yang 1:m@2020-01-01.yin 1:A.YANG 1:b.Yin 2:No such file or directory");
    schema.File("sub/late@2020-01-01.yin", "");
    listed.clear();
    EXPECT_EQ(QXYANG_ScanListedModules(listings, addModule, &listed), 0u);
    EXPECT_EQ(listed, " m=" + below + "/m.yang:2");
    QY_CTX_SetSearchDir(schema.Context(), below.c_str());
    QXYANG_UseListings(schema.Context(), listings);
    QXYANG_CloseListings(listings);
    EXPECT_NE(schema.Failures("late").find("no file 'late.yin'"), std::string::npos);
}

TEST(Loads, TellTheirFilesAndFailures)
{
    Schema schema;
    schema.File("sub.yang", "submodule sub { yang-version 1.1; belongs-to m { prefix m; } }");
    schema.LoadText("m", R"(<include module="sub"/>)");
    std::string files;
    auto add = [](const char *name, const char *path, uint32_t syntax, void *cookie) {
        *static_cast<std::string *>(cookie) += std::string(name) + " " + path + " " + std::to_string(syntax) + "\n";
        return 0u;
    };
    EXPECT_EQ(QXYANG_ScanModuleFiles(schema.Mod("m"), add, &files), 0u);
    EXPECT_EQ(files, "sub " + schema.Dir() + "/sub.yang 2\nm " + schema.Dir() + "/m.yin 1\n");
    schema.Module("bad", R"(<leaf name="l"><type name="none"/></leaf>)");
    EXPECT_NE(QY_CTX_LoadModule(schema.Context(), "bad", nullptr), 0u);
    std::string failures;
    QXYANG_ScanLoadFailures(schema.Context(), AddFailure, &failures);
    EXPECT_EQ(failures, "bad " + schema.Dir() + "/bad.yin 2:16 unknown type 'none'\n");
}

} // namespace
