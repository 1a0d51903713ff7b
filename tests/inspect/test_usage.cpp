/* The program around its commands: exit codes, what goes where, help, completion. */
#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "inspect/run_inspect.h"
#include "korv_lib_yang.h"
#include "support/models.h"

using namespace test;

namespace {

TEST(InspectUsage, WrongUsageIsSaidOnStandardErrorAndGivesTwo)
{
    const std::pair<std::vector<std::string>, const char *> cases[] = {
        {{}, "Usage: korv-inspect"},
        {{"fnd", "m"}, "there is no command 'fnd': did you mean 'find'?"},
        {{"tree", "-d", "examples/yin"}, "MODULE is required"},
        {{"tree", "example-qos", "-d", "no/such/dir"}, "Directory does not exist: no/such/dir"},
        {{"diff", "examples/yin/example-qos.yin", "--old", "examples/yin", "--new", "examples/yin"},
         "looks like a file: give the module's name"},
        {{"tree", "examples/yin/example-qos.yin", "./examples/yin/example-qos.yin"},
         "are both of module 'example-qos'"},
        {{"tree", "a", "b", "--format", "dot"}, "a graph shows one module"},
        {{"tree", "a", "--classes"}, "--classes is of graphs: give --format dot or svg"},
        {{"tree", "a", "--color", "red"}, "--color: red not in {"},
        {{"tree", "example-qos@", "-d", "examples/yin"}, "is not MODULE or MODULE@REVISION"},
        {{"tree", "", "-d", "examples/yin"}, "'' is not MODULE or MODULE@REVISION"},
        {{"dump", "", "-d", "examples/yin"}, "'' is not MODULE or MODULE@REVISION"},
        {{"find", "", "/x", "-d", "examples/yin"}, "'' is not MODULE or MODULE@REVISION"},
        {{"find", "-d", "examples/yin"}, "WHAT is required: a path, a pattern or an id"},
        {{"find", "", "-d", "examples/yin"}, "'' is no path: a step is empty"},
        {{"find", "examples/yin/example-qos.yin"}, "looks like a file: say behind it what to find"},
        {{"find", "example-qos", "/qos", "/qos"}, "name one module at most"},
        {{"find", "0x10g1", "-d", "examples/yin"}, "'0x10g1' is no id"},
        {{"find", "0x1001.", "-d", "examples/yin"}, "'0x1001.' is no id"},
        {{"find", "--sample", "0x1.2", "-d", "examples/yin"}, "'0x1.2' is no id"},
        {{"find", std::string(120, '/') + "x"}, "a step is empty"},
        {{"paths", "--all", "example-qos", "mtu", "-d", "examples/yin"}, "name modules, or give --all"},
        {{"paths", "example-qos", "", "-d", "examples/yin"}, "'' is no path: a step is empty"},
        {{"paths", "--class", "1.2", "-d", "examples/yin"}, "'1.2' is no class id"},
        {{"paths", "--columns", "path,clas_id", "-d", "examples/yin"}, "no column 'clas_id': did you mean 'class_id'?"},
        {{"paths", "--columns", "path", "--format", "jsonl"}, "JSON has all columns"},
        {{"paths", "--regex", "(a", "-d", "examples/yin"}, "'(a' is no regular expression"},
        {{"paths", "--regex", "((a?){99}){99}", "-d", "examples/yin"}, "more than 100 when they are multiplied"},
        {{"paths", "--regex", std::string(257, 'a'), "-d", "examples/yin"}, "at most 256 bytes"},
        {{"paths", "--regex", "", "-d", "examples/yin"}, "--regex: the value is empty"},
        {{"tree", "example-qos", "--path", "", "-d", "examples/yin"}, "--path: the value is empty"},
        {{"walk", "", "/x", "-d", "examples/yin"}, "'' is not MODULE or MODULE@REVISION"},
        {{"enums", "", "/x", "-d", "examples/yin"}, "'' is not MODULE or MODULE@REVISION"},
        {{"diff", "", "--old", "examples/yin", "--new", "examples/yin"}, "'' is not MODULE or MODULE@REVISION"},
        {{"check", "", "-d", "examples/yin"}, "'' is not MODULE or MODULE@REVISION"},
        {{"modules", "", "-d", "examples/yin"}, "'' is not MODULE or MODULE@REVISION"},
        {{"tree", "example-qos", "--load", "", "-d", "examples/yin"}, "'' is not MODULE or MODULE@REVISION"},
        {{"tree", "example-qos", "-d", "examples/yin", "--format", "csv"}, "csv not in {text,json,dot,svg}"},
        {{"check", "-d", "examples/yin"}, "name the modules to check, or give --all"},
        {{"check", "--all", "example-qos", "-d", "examples/yin"}, "name the modules to check, or give --all"},
        {{"check", "--rules", "--format", "sarif"}, "the rules are listed as text or json"},
        {{"check", "--all", "--warn", "bad-numbr"}, "--warn: there is no rule 'bad-numbr': did you mean 'bad-number'?"},
        {{"check", "--all", "--off", "long-nam:x"}, "--off: there is no rule 'long-nam': did you mean 'long-name'?"},
        {{"page", "-d", "examples/yin"}, "name the modules to show, or give --all"},
        {{"page", "--all", "-d", "examples/yin", "--against", "-x"}, "'-x' is no revision of git's"},
        {{"page", "--all", "-d", "examples/yin", "--against", "examples", "--against", "no/such"},
         "Directory does not exist: no/such"},
        {{"modules", "-d", "examples/yin"}, "name a module to load"},
        {{"diff", "m", "--old", "examples/yin"}, "--new is required"},
        {{"diff", "m", "--new", "examples/yin"}, "--old or --against is required"},
        {{"diff", "m", "n", "--old", "examples/yin", "--new", "examples/yin"}, "name one module, or give --all"},
        {{"diff", "--all", "examples/yin", "no/such/dir"}, "Directory does not exist: no/such/dir"},
        {{"tree", "m", "--dri", "x"}, "there is no option '--dri': did you mean '--dir'?"},
        {{"tree", "m", "-d", "examples/yin", "--formt=json"}, "there is no option '--formt': did you mean '--format'?"},
        {{"dump", "m", "-d", "examples/yin", "n"}, "The following argument was not expected: n"},
        {{"dump", "m", "-d", "examples/yin", "--self"}, "give --augment N, too"},
        {{"dump", "m", "-d", "examples/yin", "--augment", "0", "--self", "--target"}, "give --self or --target"},
    };
    for (const auto &[args, text] : cases) {
        const Result result = Inspect(args);
        EXPECT_EQ(result.exitCode, 2) << text;
        EXPECT_EQ(result.out, "");
        EXPECT_NE(LineWith(result.err, text), "") << result.err;
    }
    ModelDir dir;
    const std::string deep = dir.Path() + "/" + std::string(120, 'a') + "/" + std::string(120, 'b');
    RunShell("mkdir -p " + deep);
    EXPECT_EQ(Inspect({"tree", "m", "-d", deep}).exitCode, 2);
}

TEST(InspectUsage, AFailedLoadSaysFirstWhereAndWhy)
{
    ModelDir dir;
    dir.Add("m", Container("c", Leaf("x", "strng")));
    const Result result = Inspect({"tree", "m", "-d", dir.Path()});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, dir.Path() + "/m.yin:5:16: unknown type 'strng'; did you mean 'string'?\n" +
                              "korv-inspect: module 'm' cannot be loaded (-v shows all that the library says)\n");
    const Result verbose = Inspect({"tree", "m", "-d", dir.Path(), "-v"});
    EXPECT_EQ(verbose.err.find("info  1. Check module (m) is exists or not\n"), 0U);
    EXPECT_NE(LineWith(verbose.err, "error QY_CTX_LoadModule m error!"), "");
    EXPECT_NE(LineWith(verbose.err, "error Load Module (m) fail!"), "");

    const Result missing = Inspect({"tree", "nowhere", "-d", dir.Path()});
    EXPECT_EQ(missing.exitCode, 3);
    EXPECT_NE(LineWith(missing.err, "no file 'nowhere.yin'"), "");
    const Result first = Inspect({"tree", "quelvo-mim-extensions", "-d", dir.Path(), "--load", "m"});
    EXPECT_EQ(first.exitCode, 3) << "a module of --load that fails ends the run";
    EXPECT_NE(LineWith(first.err, "module 'm' cannot be loaded"), "");
}

TEST(InspectUsage, TheLibrarysProgressIsShownOnRequestOnly)
{
    const Result quiet = InspectExamples({"find", "example-interfaces", "/interfaces/interface/duplex"});
    EXPECT_EQ(quiet.err, "") << "lookups that miss on the way are no news";
    const Result verbose = InspectExamples({"find", "example-interfaces", "/interfaces/interface/duplex", "-v"});
    EXPECT_EQ(verbose.out, quiet.out);
    EXPECT_NE(LineWith(verbose.err, "info  Load Module (example-interfaces) success. Now total module : 1."), "");
    EXPECT_NE(LineWith(verbose.err, "error find node failed!"), "");
}

TEST(InspectUsage, FaultsOfAModuleThatLoadsAreMentioned)
{
    const Result result = Inspect({"tree", "example-faulty", "-d", "tests/inspect/yin/faulty", "-d", "examples/yin"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err,
              "korv-inspect: the library finds fault with module 'example-faulty': "
              "'korv-inspect check' says where\n");

    /* The key has an index map that no statement names; one that names the attribute id is as good. */
    ModelDir dir;
    dir.Add("m", Container("c", List("l", "k",
                                     ClassId("1") + Leaf("k", "string", Id("1") + Ext("name2id-key-fid", "2")) +
                                         Leaf("i", "uint8", Id("2")) +
                                         Container("d", ClassId("2") + Ext("ancestor-key-fid", "1", Id("10"))))));
    EXPECT_EQ(Inspect({"tree", "m", "-d", dir.Path()}).err, "");
}

TEST(InspectUsage, DirectoriesAreSearchedInTheirOrderAndInstallPathsLast)
{
    ModelDir first;
    ModelDir second;
    first.Add("m", Container("one", ""));
    second.Add("m", Container("two", ""));
    second.Add("n", Container("three", ""));
    EXPECT_NE(LineWith(Inspect({"tree", "m", "-d", first.Path(), "-d", second.Path()}).out, "one"), "");
    EXPECT_NE(LineWith(Inspect({"tree", "m", "-d", second.Path(), "-d", first.Path()}).out, "two"), "");
    EXPECT_NE(LineWith(Inspect({"tree", "n", "-d", first.Path(), "--install-path", second.Path()}).out, "three"), "");
}

TEST(InspectUsage, AFileIsTakenAsItStandsAndItsDirectoryIsSearchedFirst)
{
    ModelDir models;
    ModelDir others;
    ModelDir temporary;
    models.AddFile("m.yin", Module("m", Container("plain", "")));
    models.AddFile("m@2020-01-01.yin", Module("m", Container("older", "")));
    models.AddFile("draft.yin", Module("draft", Container("bad", Leaf("x", "strng"))));
    models.AddFile("n.yin", Module("n", Container("below", "")));
    models.AddFile("user.yin",
                   Module("user", "<import module=\"m\"><prefix value=\"m\"/></import>" + Container("mine", "")));
    others.AddFile("m.yin", Module("m", Container("other", "")));
    others.AddFile("n.yin", Module("n", Container("none", "")));
    const std::string in = "cd " + models.Path() + " && ";
    const std::string file = models.Path() + "/m@2020-01-01.yin";
    const std::pair<std::string, const char *> cases[] = {
        {in + "korv-inspect tree m", "plain"},
        {in + "korv-inspect tree user.yin -d " + temporary.Path(), "mine"},
        {"korv-inspect tree - -d " + others.Path() + " -d examples/yin < examples/yin/quelvo-bras-user-manage.yin",
         "sample 0x71"}, // which a deviation adds
        {in + "korv-inspect tree m.yin -d " + others.Path(), "plain"},
        {"korv-inspect tree m -d " + others.Path() + " -d " + models.Path(), "other"},
        {"korv-inspect tree " + file + " -d " + others.Path(), "older"},
        {"korv-inspect tree " + others.Path() + "/n.yin " + file, "older"},
        {in + "mkdir -p a/b .hidden && mv n.yin a/b && touch .hidden/n.yin && korv-inspect tree n -r", "below"},
        {"KORV_MODEL_PATH=/no/such/dir:" + others.Path() + " korv-inspect tree n -d " + models.Path(), "none"},
        {"korv-inspect tree - --as m -d " + models.Path() + " < " + others.Path() + "/m.yin", "other"},
        {"korv-inspect tree - -d " + models.Path() + " < " + others.Path() + "/m.yin", "other"},
        {"printf '// a comment\nmodule m { namespace m; prefix m; container compact; }' | korv-inspect tree - -d " +
             models.Path(),
         "compact"},
        {"korv-inspect modules " + others.Path() + "/n.yin - -d " + models.Path() + " < " + file + " | grep -x m", "m"},
        {in + "cp m.yin copy.yin && korv-inspect tree copy.yin && rm copy.yin", "plain"},
    };
    for (const auto &[command, node] : cases) {
        const Result result = RunShell("export TMPDIR=" + temporary.Path() + "; " + command);
        EXPECT_NE(LineWith(result.out, node), "") << command << "\n" << result.out << result.err;
    }
    const struct {
        std::string command;
        int exitCode;
        const char *error;
    } named[] = {
        {"cp m.yin copy.yin && korv-inspect modules copy.yin && rm copy.yin", 0,
         "korv-inspect: copy.yin holds module 'm': a load by name finds it only in a file of that name\n"},
        {"korv-inspect tree - --as n < m.yin", 2, "korv-inspect: standard input holds module 'm', not 'n'\n"},
        {"korv-inspect tree - < /dev/null", 3,
         "standard input:1:1: the file has no statement; expected 'module' or 'submodule'\n"
         "korv-inspect: standard input holds no module\n"},
        {"printf 'module m {' | korv-inspect tree -", 3,
         "standard input:1:11: found the end of the file in 'module m' of line 1; expected '}'\n"},
        {"printf 'module ../m;' | korv-inspect tree -", 3, "korv-inspect: standard input holds no module\n"},
        {"TMPDIR=/no/where; korv-inspect tree - < m.yin", 3, "korv-inspect: no directory can be made in /no/where: "},
        {"printf 'submodule s { belongs-to m { prefix m; } }' | korv-inspect tree -", 3,
         "korv-inspect: standard input holds submodule 's' of module 'm': name the module or its file\n"},
    };
    for (const auto &test : named) {
        const Result result = RunShell("export TMPDIR=" + temporary.Path() + "; " + in + test.command);
        EXPECT_EQ(result.exitCode, test.exitCode) << test.command;
        EXPECT_EQ(result.err.find(test.error), 0U) << result.err;
    }
    const Result relative = RunShell(in + "korv-inspect check draft.yin");
    EXPECT_EQ(relative.out.find("draft.yin:5:16: error: unknown type 'strng'"), 0U) << relative.out;
    EXPECT_EQ(Inspect({"tree", models.Path() + "/gone.yin"}).exitCode, 3);
    EXPECT_EQ(Inspect({"tree", models.Path() + "/"}).exitCode, 3);
    EXPECT_EQ(RunShell("ls " + temporary.Path()).out, "quelvo-mim-extensions.yin\n") << "nothing else stays behind";
}

TEST(InspectUsage, TextsOfOthersStayOnTheirLineAndJsonIsUtf8)
{
    ModelDir dir;
    const std::string odd = dir.Path() +
                            "/b\xFF"
                            "d\n\xE2\x80\xAE"
                            "dir";
    RunShell("mkdir '" + odd + "' && mv " + dir.Path() + "/*.yin '" + odd + "'");
    dir.AddFile("m.yin", Module("m", Container("c", Leaf("x", "strng"))));
    RunShell("mv " + dir.Path() + "/m.yin '" + odd + "'");
    const Result text = Inspect({"check", "m", "-d", odd});
    EXPECT_EQ(text.out.find(dir.Path() + "/b\\xffd\\n\\u202edir/m.yin:5:16: error: unknown type"), 0U) << text.out;
    const rapidjson::Document json = Json(Inspect({"check", "m", "-d", odd, "--format", "json"}));
    EXPECT_EQ(json["findings"][0]["file"].GetString(), dir.Path() +
                                                           "/b\xEF\xBF\xBD"
                                                           "d\n\xE2\x80\xAE"
                                                           "dir/m.yin");
    EXPECT_EQ(Inspect({"tr\nee"}).err.find("korv-inspect: there is no command 'tr\\nee'"), 0U);
}

TEST(InspectUsage, AResultThatCannotBeWrittenIsNoSuccess)
{
    const Result result = RunShell("korv-inspect tree example-qos -d examples/yin >/dev/full");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "korv-inspect: cannot write to standard output\n");
}

TEST(InspectUsage, HelpHasExamplesThatWork)
{
    EXPECT_EQ(RunShell("korv-inspect --version").out,
              "korv-inspect " KORV_LIB_YANG_VERSION " with libkorv_libyang " KORV_LIB_YANG_VERSION "\n");
    for (const char *command :
         {"tree", "find", "paths", "walk", "dump", "enums", "modules", "check", "diff", "ids", "convert", "page"}) {
        const Result help = Inspect({command, "--help"});
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_NE(LineWith(help.out, " [OPTIONS]"), "");
        const size_t examples = help.out.find("Example");
        ASSERT_NE(examples, std::string::npos) << command;
        std::istringstream lines(help.out.substr(examples));
        for (std::string line; std::getline(lines, line);) {
            if (line.find("korv-inspect ") == std::string::npos)
                continue;
            const Result result = RunShell(
                "set -e; dir=$(mktemp -d); trap 'rm -rf $dir' EXIT; cd $dir; "
                "ln -s " KORV_SOURCE_DIR "/examples; dot() { cat; }; " +
                line);
            EXPECT_EQ(result.exitCode, 0) << line << "\n" << result.err;
        }
    }
}

/* The options of a text, in the order of the alphabet. */
std::set<std::string> OptionsIn(const std::string &text)
{
    std::set<std::string> options;
    for (size_t at = text.find("--"); at != std::string::npos; at = text.find("--", at + 2)) {
        const size_t end = text.find_first_not_of("abcdefghijklmnopqrstuvwxyz-", at);
        if (end > at + 2)
            options.insert(text.substr(at, end - at));
    }
    return options;
}

TEST(InspectUsage, TheManualPageHasEveryOptionOfTheHelp)
{
    std::string help = Inspect({"help"}).out;
    std::istringstream commands(help.substr(help.find("Commands:\n") + 10));
    std::string line;
    while (std::getline(commands, line) && line != "Examples:") {
        std::istringstream words(line);
        std::string command;
        if (!(words >> command))
            continue;
        const std::string more = Inspect({"help", command}).out;
        EXPECT_EQ(more, Inspect({command, "--help"}).out);
        help += more;
    }
    EXPECT_EQ(OptionsIn(RunShell("korv-inspect manual | sed 's/\\\\-/-/g'").out), OptionsIn(help));
    if (RunShell("command -v groff").exitCode == 0) {
        EXPECT_EQ(RunShell("korv-inspect manual | groff -man -Tutf8 -ww -z 2>&1").out, "");
    }
    EXPECT_EQ(Inspect({"help", "tre"}).err.find("korv-inspect: there is no command 'tre': did you mean 'tree'?"), 0U);
}

/* What the program offers for the last of the words, in the order of the alphabet. */
std::string Offered(const std::string &words)
{
    return RunShell("korv-inspect complete " + words + " | cut -f1 | sort | tr '\\n' ' '").out;
}

TEST(InspectUsage, CompletesWhatAWordMayBecome)
{
    ModelDir dir;
    RunShell("mkdir '" + dir.Path() + "/a b' && touch '" + dir.Path() + "/a b/some.yin'");
    const std::pair<std::string, const char *> cases[] = {
        {"d", "diff dump "},
        {"help fi", "find "},
        {"dump x --format ''", "csv json text "},
        {"dump x --format=j", "--format=json "},
        {"diff m --o", "--old "},
        {"tree m --f", "--format --full "},
        {"check --off bad-n", "bad-number "},
        {"diff --by ''", "id path "},
        {"ids l", "list lock "},
        {"ids assign --classes le", "leaf-holders "},
        {"tree -d examples/yin example-interface-", "example-interface-qos example-interface-shaping "},
        {"tree --dir=examples/yin example-q", "example-qos "},
        {"tree --load example-q -d examples/yin --load example-q", "example-qos "},
        {"tree examples/yin/example-q", "examples/yin/example-qos.yin "},
        {"convert examples/yin/example-q", "examples/yin/example-qos.yin "},
        {"tree m -d examples/y", "examples/yin/ "},
        {"tree -d '" + dir.Path() + "/a b' s", "some "},
        {"find -d examples/yin example-interfaces /interfaces/interface/a",
         "/interfaces/interface/address/ "
         "/interfaces/interface/alarm-threshold "},
        {"walk -d examples/yin example-interfaces /if:interfaces/num", "/if:interfaces/number "},
        {"find -d examples/yin /if:interfaces/if:nu", "/if:interfaces/if:number "},
        {"tree examples/yin/example-qos.yin --path /qos/q", "/qos/queues/ "},
        {"find -d examples/yin /qos/q", "/qos/queues/ "},
        {"find -d examples/yin 0x200", "0x2001 0x2002 "},
        {"find -d examples/yin 0x2001.", "0x2001.1 0x2001.2 "},
        {"find -d examples/yin --sample 0x5", "0x51 0x52 "},
        {"paths --columns path,base", "path,base_type "},
        {"paths --type ui", "uint16 uint32 uint64 uint8 "},
        {"nothing ''", ""},
        {"tree -d /no/such/dir x", ""},
    };
    for (const auto &[words, offered] : cases)
        EXPECT_EQ(Offered(words), offered) << words;
    EXPECT_NE(Offered("''").find(" tree "), std::string::npos);
    EXPECT_EQ(RunShell("korv-inspect complete find -d examples/yin 0x2002").out, "0x2002\t/qos/policy/rule\n");
}

/* What bash makes of a line. */
std::string Completed(const std::string &line)
{
    return RunShell(
               "exec bash -c 'source inspect/line/korv-inspect.bash; COMP_LINE=$1 COMP_POINT=${#1}; _korv_inspect; "
               "printf \"%s \" \"${COMPREPLY[@]}\"' - \"" +
               line + "\"")
        .out;
}

TEST(InspectUsage, BashPutsWordsInTheirPlace)
{
    if (RunShell("command -v bash").exitCode != 0)
        GTEST_SKIP() << "no bash";
    EXPECT_EQ(Completed("korv-inspect conv"), "convert ");
    EXPECT_EQ(Completed("korv-inspect diff --by "), "path id ");
    EXPECT_EQ(Completed("korv-inspect dump x --format=j"), "json ");
    EXPECT_EQ(Completed("korv-inspect walk -d examples/yin example-interfaces /if:interfaces/num"),
              "interfaces/number ");
    EXPECT_EQ(Completed("korv-inspect paths --columns path,mo"), "path,module ");
    EXPECT_EQ(Completed("korv-inspect find -d examples/yin '/interfaces/*/mt"), "/interfaces/*/mtu ");
    EXPECT_EQ(Completed("korv-inspect find -d examples/yin /interfaces/\\\\*/mt"), "/interfaces/\\*/mtu ");
    ModelDir dir;
    RunShell("mkdir '" + dir.Path() + "/a b' && touch '" + dir.Path() + "/a b/some.yin'");
    EXPECT_EQ(Completed("korv-inspect tree -d " + dir.Path() + "/a\\\\ b s"), "some ");
    EXPECT_EQ(Completed("korv-inspect tree -d " + dir.Path() + "/a"), dir.Path() + "/a\\ b/ ");
}

TEST(InspectUsage, FishAndZshPutWordsInTheirPlace)
{
    if (RunShell("command -v fish && command -v zsh").exitCode != 0)
        GTEST_SKIP() << "no fish, or no zsh";
    const std::string fish = "fish --no-config -c 'source inspect/line/korv-inspect.fish; complete -C $argv[1]' \"$@\"";
    const std::string zsh =
        "zsh -fc 'compadd() { print -r -- ${(P)@[-1]} }; words=(korv-inspect $=1); CURRENT=$#words; "
        "PREFIX=$words[-1]; source inspect/line/korv-inspect.zsh' - \"${1#* }\"";
    const std::tuple<const char *, const char *, const char *> cases[] = {
        {"conv", "convert\tWrite model files in the other syntax\n", "convert\n\n"},
        {"find -d examples/yin example-qos /qos/q", "/qos/queues/\tcontainer\n", "\n/qos/queues/\n"},
        {"find -d examples/yin /interfaces/\\*/mt", "/interfaces/*/mtu\tleaf\n", "/interfaces/*/mtu\n\n"},
        {"find -d examples/yin 0x2001.2", "0x2001.2\t/qos/policy/weight\n", "0x2001.2\n\n"},
        {"nothing x", "", "\n\n"},
    };
    for (const auto &[words, inFish, inZsh] : cases) {
        const std::string line = std::string("set -- 'korv-inspect ") + words + "'; ";
        EXPECT_EQ(RunShell(line + fish).out, inFish) << words;
        EXPECT_EQ(RunShell(line + zsh).out, inZsh) << words;
    }
    EXPECT_EQ(RunShell("set -- \"korv-inspect tree -d 'examp\"; " + fish).out, "examples/\n");
}

TEST(InspectUsage, ATerminalGetsColorsAndAPager)
{
    const std::string terminal = "unset NO_COLOR PAGER KORV_PAGER; TERM=xterm; export TERM; ";
    const std::string on = "python3 tests/inspect/terminal.py korv-inspect ";
    const std::string tree = "tree example-qos -d examples/yin ";
    const std::string plain = RunShell("korv-inspect " + tree).out;
    const std::string painted = RunShell("korv-inspect " + tree + "--color always").out;
    EXPECT_EQ(plain.find('\033'), std::string::npos);
    EXPECT_EQ(LineWith(painted, "committed"), "      - committed     \033[36m5\033[m  uint32");
    EXPECT_EQ(RunShell("korv-inspect " + tree + "--color always | sed 's/\\x1b\\[[0-9;]*m//g'").out, plain);
    const std::pair<std::string, std::string> cases[] = {
        {"KORV_PAGER= " + on + tree, painted},
        {"KORV_PAGER=cat " + on + tree, painted},
        {"KORV_PAGER=no-such-program " + on + tree, painted},
        {"KORV_PAGER=/no/such/program " + on + tree, painted},
        {"NO_COLOR=1 KORV_PAGER= " + on + tree, plain},
        {"NO_COLOR=1 KORV_PAGER= " + on + tree + "--color always", painted},
        {"KORV_PAGER= " + on + tree + "--color never", plain},
        {"TERM=dumb KORV_PAGER= " + on + tree, plain},
        {"PAGER='sed -n 1p' " + on + tree, "module example-qos, revision 2026-05-11, task id 121\n"},
        {"PAGER=false KORV_PAGER='head -n 1' " + on + tree, "module example-qos, revision 2026-05-11, task id 121\n"},
        {"PAGER='sed -n 1p' korv-inspect " + tree, plain},
    };
    for (const auto &[command, shown] : cases) {
        const Result result = RunShell(terminal + command);
        EXPECT_EQ(result.exitCode, 0) << command;
        EXPECT_EQ(result.out, shown) << command;
    }
    const Result failed =
        RunShell(terminal + "PAGER='sed s/^/paged:/' " + on + "find example-qos /nope -d examples/yin");
    EXPECT_EQ(failed.exitCode, 1) << "the pager does not hide how the command ended";
    EXPECT_EQ(failed.out.find("korv-inspect: no node /nope"), 0U) << failed.out;
}

} // namespace
