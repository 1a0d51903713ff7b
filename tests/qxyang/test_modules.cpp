/* Which file a module comes from, which modules a context holds, and when they go. */
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "schema.h"
#include "support/unprivileged.h"

namespace {

using test::ModuleText;
using test::Schema;

std::string Revised(const std::string &name, const std::string &revision, const std::string &body = "")
{
    return ModuleText(name, "<revision date=\"" + revision + "\"/>" + body);
}

std::string OneLeaf(const std::string &name)
{
    return "<leaf name=\"" + name + "\"><type name=\"string\"/></leaf>";
}

std::string RevisionOf(QY_MOD *module)
{
    const char *revision = QY_MOD_GetRevision(module);
    return revision != nullptr ? revision : "none";
}

TEST(ModuleFiles, AreFoundByNameAndRevision)
{
    Schema schema;
    std::string second = schema.Dir() + "/second";
    std::filesystem::create_directory(second);
    schema.File("dated@2019-01-01.yin", Revised("dated", "2019-01-01"));
    schema.File("second/dated@2021-01-01.yin", Revised("dated", "2021-01-01"));
    schema.File("dated@2020-02-02.yin", Revised("dated", "2020-02-02"));
    schema.File("dated@not-a-date.yin", "");
    schema.File("dated@2022-01-01.txt", "");
    schema.File("both.yin", Revised("both", "2001-01-01"));
    schema.File("both@2019-01-01.yin", Revised("both", "2019-01-01"));
    schema.File("second/both.yin", Revised("both", "2002-02-02", "<revision date=\"2000-01-01\"/>"));
    schema.File("second/far.yin", ModuleText("far", ""));
    EXPECT_NE(schema.Failures("far"), "");
    const std::filesystem::path workPath = std::filesystem::current_path();
    std::filesystem::current_path(schema.Dir());
    EXPECT_EQ(QY_CTX_SetSearchDir(schema.Context(), "second/./"), 0u); // meant from here, wherever the process goes
    std::filesystem::current_path(workPath);
    QY_CTX_UnSetSearchDir(schema.Context(), "second/./");
    EXPECT_NE(schema.Failures("far"), "");
    std::filesystem::current_path(schema.Dir());
    EXPECT_EQ(QY_CTX_SetSearchDir(schema.Context(), "second/./"), 0u);
    std::filesystem::current_path(workPath);
    QY_CTX_UnSetSearchDir(schema.Context(), nullptr); // as the library does before it registers its directories again
    EXPECT_EQ(QY_CTX_SetSearchDir(schema.Context(), schema.Dir().c_str()), 0u);
    EXPECT_EQ(QY_CTX_SetSearchDir(schema.Context(), "second/./"), 0u);
    EXPECT_EQ(QY_CTX_SetSearchDir(schema.Context(), second.c_str()), 0u);
    EXPECT_EQ(QY_CTX_SetSearchDir(schema.Context(), ""), 0u);
    EXPECT_EQ(QY_CTX_SetSearchDir(schema.Context(), nullptr), 0u);
    struct {
        const char *name;
        const char *revision;
        const char *found;
    } cases[] = {
        {"dated", nullptr, "2021-01-01"},     {"dated", "2020-02-02", "2020-02-02"}, {"both", nullptr, "2001-01-01"},
        {"both", "2019-01-01", "2019-01-01"}, {"both", "2002-02-02", "2002-02-02"},  {"far", "", "none"},
    };
    for (const auto &test : cases) {
        schema.Load(test.name, test.revision);
        EXPECT_EQ(RevisionOf(schema.Mod(test.name)), test.found);
        EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), test.name), 0u);
    }
    EXPECT_EQ(QY_MOD_GetRevision(nullptr), nullptr);

    std::string places = " in '" + schema.Dir() + "', '" + second + "'";
    auto failure = [&](const char *name, const char *revision) {
        std::string text = schema.Failures(name, revision);
        return text.substr(0, text.size() - 1);
    };
    schema.File("named.yin", ModuleText("other", ""));
    EXPECT_EQ(failure("fur", nullptr),
              "cannot load module 'fur': no file 'fur.yin' or 'fur@REVISION.yin', nor with '.yang' instead, in '" +
                  schema.Dir() + "', 'second'; did you mean 'far'?");
    EXPECT_EQ(failure("both", "2003-03-03"),
              "cannot load module 'both': revision '2003-03-03' is wanted; 'second/both.yin' has revision "
              "'2002-02-02'; there "
              "is 'both@2019-01-01.yin'");
    EXPECT_EQ(
        failure("dated", "2003-03-03"),
        "cannot load module 'dated': no file 'dated.yin' or 'dated@2003-03-03.yin', nor with '.yang' instead, in '" +
            schema.Dir() +
            "', 'second'; there is 'dated@2019-01-01.yin', 'dated@2020-02-02.yin', 'dated@2021-01-01.yin'");
    EXPECT_EQ(failure("far", "2003-03-03"),
              "cannot load module 'far': revision '2003-03-03' is wanted; 'second/far.yin' has none");
    EXPECT_EQ(failure("named", nullptr), "named.yin:1:1: the file holds module 'other', not module 'named'");
    EXPECT_EQ(failure("../far", nullptr), "'../far' is no module name; expected an identifier");
    EXPECT_EQ(failure("", nullptr), "'' is no module name; expected an identifier");
    EXPECT_EQ(failure("far", "yesterday"), "'yesterday' is no revision; expected a date of the form YYYY-MM-DD");
    QY_CTX_UnSetSearchDir(schema.Context(), second.c_str());
    QY_CTX_UnSetSearchDir(schema.Context(), "/unknown");
    EXPECT_NE(schema.Failures("far"), "");
    QY_CTX_UnSetSearchDir(schema.Context(), nullptr);
    EXPECT_EQ(failure("far", nullptr), "cannot load module 'far': no directory to look for it is registered");
}

TEST(ModuleFiles, AreRegularOnes)
{
    Schema schema;
    std::filesystem::create_directory(schema.Dir() + "/folder.yin");
    ASSERT_EQ(::mkfifo((schema.Dir() + "/pipe.yin").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", schema.Dir() + "/device.yin");
    schema.File("real.txt", ModuleText("linked", ""));
    std::filesystem::create_symlink("real.txt", schema.Dir() + "/linked.yin");
    schema.File("huge.yin", "");
    std::filesystem::resize_file(schema.Dir() + "/huge.yin", (uintmax_t{256} << 20) + 1);
    for (const char *name : {"folder", "pipe", "device"})
        EXPECT_EQ(schema.Failures(name),
                  std::string("cannot load module '") + name + "': '" + name + ".yin' is not a regular file\n");
    std::filesystem::create_symlink("loop.yin", schema.Dir() + "/loop.yin");
    EXPECT_EQ(schema.Failures("loop"),
              "cannot load module 'loop': 'loop.yin' cannot be opened: Too many levels of symbolic links\n");
    EXPECT_EQ(schema.Failures("huge"), "cannot load module 'huge': 'huge.yin' is larger than 256 MiB\n");
    schema.Load("linked");
}

TEST(ModuleFiles, InDirectoriesThatDoNotShowThem)
{
    Schema schema;
    schema.File("plain.yin", Revised("plain", "2020-01-01"));
    schema.File("dated@2020-01-01.yin", Revised("dated", "2020-01-01"));
    std::filesystem::permissions(schema.Dir() + "/plain.yin", std::filesystem::perms(0644));
    auto load = [&](const char *name, unsigned mode) {
        std::filesystem::permissions(schema.Dir(), std::filesystem::perms(mode));
        test::Unprivileged unprivileged;
        return schema.Failures(name);
    };
    auto missing = [&](const std::string &name, const std::string &why) {
        return "cannot load module '" + name + "': no file '" + name + ".yin' or '" + name +
               "@REVISION.yin', nor with '.yang' instead, in '" + schema.Dir() + "' (" + why + ": Permission denied)\n";
    };
    EXPECT_EQ(load("dated", test::EnterOnly()), missing("dated", "cannot be listed"));
    EXPECT_EQ(load("plain", test::ListOnly()), missing("plain", "cannot be entered"));
    std::filesystem::permissions(schema.Dir(), std::filesystem::perms(test::EnterOnly()));
    {
        test::Unprivileged unprivileged;
        schema.Load("plain");
    }
    std::filesystem::permissions(schema.Dir(), std::filesystem::perms(0755));
}

TEST(Modules, ImportedOnesAreNotLoadedByName)
{
    Schema schema;
    schema.Module("base", OneLeaf("b"));
    schema.LoadText("m", OneLeaf("l"), "base");
    EXPECT_EQ(schema.Loaded({"base", "m"}), "m");
    EXPECT_NE(QY_CTX_UnloadModule(schema.Context(), "base"), 0u);
    schema.Load("base");
    QY_NODE *node = schema.Node("base", "b");
    EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "base"), 0u);
    EXPECT_EQ(schema.Loaded({"base", "m"}), "m");
    schema.Load("base");
    EXPECT_EQ(schema.Node("base", "b"), node); // the import kept it
    schema.Load("base");
    EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "m"), 0u);
    EXPECT_EQ(schema.Loaded({"base", "m"}), "base");
}

TEST(Modules, RevisionsStandSideBySide)
{
    Schema schema;
    schema.File("lib.yin", Revised("lib", "2020-01-01", "<typedef name=\"t\"><type name=\"uint16\"/></typedef>"));
    schema.File("lib@2010-01-01.yin",
                Revised("lib", "2010-01-01", "<typedef name=\"t\"><type name=\"uint8\"/></typedef>"));
    schema.LoadText("early", R"(<leaf name="l"><type name="lib:t"/></leaf>)", "lib@2020-01-01");
    schema.LoadText("old", R"(<leaf name="l"><type name="lib:t"/></leaf>)", "lib@2010-01-01");
    schema.LoadText("new", R"(<leaf name="l"><type name="lib:t"/></leaf>)", "lib");
    schema.LoadText("exact", R"(<leaf name="l"><type name="lib:t"/></leaf>)", "lib@2020-01-01");
    EXPECT_EQ(schema.Tree("old") + schema.Tree("new") + schema.Tree("exact"),
              "leaf l uint8\nleaf l uint16\nleaf l uint16\n");
    schema.Load("lib");
    EXPECT_EQ(RevisionOf(schema.Mod("lib")), "2020-01-01");
    EXPECT_EQ(schema.Failures("lib", "2010-01-01"),
              "module 'lib' is loaded already, with another revision than '2010-01-01'\n");
    schema.Load("lib", "2020-01-01");
    schema.Module("none", "", "lib@2015-05-05");
    EXPECT_EQ(schema.Failures("none"),
              "none.yin:1:181: cannot import module 'lib': revision '2015-05-05' is wanted; "
              "'lib.yin' has revision '2020-01-01'; there is 'lib@2010-01-01.yin'\n");
    schema.File("again@2010-01-01.yin", Revised("again", "2010-01-01"));
    schema.Module("between", "", "again@2010-01-01");
    schema.LoadText("again", "<revision date=\"2020-01-01\"/>", "between"); // no cycle: another revision of itself
}

/* An import without a revision made of the module that an import by revision had brought, in a load that fails. */
TEST(Modules, FailedLoadChangesNotWhatLaterImportsGet)
{
    Schema schema;
    schema.File("lib.yin", Revised("lib", "2020-01-01", OneLeaf("old")));
    schema.LoadText("early", "", "lib@2020-01-01");
    schema.Module("bad", "<leaf name=\"l\"><type name=\"none\"/></leaf>", "lib");
    EXPECT_NE(schema.Failures("bad"), "");
    schema.File("lib.yin", Revised("lib", "2021-01-01", OneLeaf("new")));
    schema.LoadText("late", R"(<leaf name="l"><type name="leafref"><path value="/lib:new"/></type></leaf>)", "lib");
    EXPECT_EQ(schema.Tree("late"), "leaf l leafref -> /new\n");
}

/* Every order in which three modules that build on one another can go. */
TEST(Modules, GoInAnyOrder)
{
    std::vector<std::string> names = {"a", "b", "c"};
    do {
        Schema schema;
        schema.Module("a",
                      R"(<container name="top"/><grouping name="g"><leaf name="x"><type name="t"/></leaf></grouping>
            <typedef name="t"><type name="enumeration"><enum name="on"/></type></typedef>)");
        schema.Module(
            "b", R"(<augment target-node="/a:top"><container name="in"><uses name="a:g"/></container></augment>)", "a");
        schema.Module("c",
                      R"(<augment target-node="/a:top/b:in"><leaf name="y"><type name="leafref"><path value="../b:x"/>
            </type></leaf></augment>)",
                      "a b");
        for (const char *name : {"c", "a", "b"})
            schema.Load(name);
        std::string left = "a b c";
        for (const std::string &name : names) {
            EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), name.c_str()), 0u);
            left.replace(left.find(name), 1, "");
            if (QY_MOD *a = schema.Mod("a")) {
                EXPECT_EQ(QY_MOD_GetModuleName(a), std::string("a"));
                bool hasIn = left.find_first_of("bc") != std::string::npos;
                EXPECT_EQ(schema.Tree("a").find("b:in") != std::string::npos, hasIn);
            }
        }
        EXPECT_EQ(schema.Loaded(names), "");
    } while (std::next_permutation(names.begin(), names.end()));
}

TEST(Modules, NamesOutliveThem)
{
    Schema schema;
    schema.LoadText("m", "");
    const char *name = QY_MOD_GetModuleName(schema.Mod("m"));
    EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "m"), 0u);
    EXPECT_STREQ(name, "m");
    schema.Load("m");
    EXPECT_EQ(QY_MOD_GetModuleName(schema.Mod("m")), name);
}

std::vector<std::string> *g_freed; /* names of the nodes whose private data were released */

void FreePrivate(void *, QY_NODE *node, void *priv)
{
    EXPECT_EQ(QY_NODE_GetPrivate(node), priv);
    g_freed->push_back(QY_NODE_GetNodeName(node));
    QY_NODE_SetPrivate(node, nullptr);
}

TEST(Modules, PrivateDataAreReleasedWithTheirNodes)
{
    std::vector<std::string> freed;
    g_freed = &freed;
    {
        Schema schema;
        schema.Module("a", "<container name=\"top\">" + OneLeaf("x") + OneLeaf("y") + "</container>");
        schema.Module("b", "<augment target-node=\"/a:top\">" + OneLeaf("z") + "</augment>", "a");
        schema.Module("d", R"(<deviation target-node="/a:top/a:y"><deviate value="not-supported"/></deviation>)", "a");
        schema.Load("a");
        schema.Load("b");
        QY_CTX_SetPridataFreeFunc(schema.Context(), FreePrivate);
        int data = 0;
        for (const char *path : {"top", "top/x", "top/y", "top/z"}) {
            EXPECT_EQ(QY_NODE_GetPrivate(schema.Node("a", path)), nullptr);
            QY_NODE_SetPrivate(schema.Node("a", path), &data);
        }
        schema.Load("d"); // hides y
        QY_NODE_SetPrivate(schema.Node("a", "top/x"), nullptr);
        EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "b"), 0u);
        EXPECT_EQ(freed, std::vector<std::string>{"z"});
    }
    EXPECT_EQ(freed, (std::vector<std::string>{"z", "top", "y"}));
}

} // namespace
