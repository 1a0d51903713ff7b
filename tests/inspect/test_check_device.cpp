/* check: what modules are to one another on a device. */
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <map>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

std::string Augment(const std::string &target, const std::string &body)
{
    return "<augment target-node=\"" + target + "\">\n" + body + "</augment>\n";
}

std::string Deviate(const std::string &target, const std::string &how, const std::string &body)
{
    return "<deviation target-node=\"" + target + "\"><deviate value=\"" + how + "\">\n" + body +
           "</deviate></deviation>\n";
}

class InspectDevice : public ::testing::Test {
  protected:
    /* The findings without the directory's name and their places' columns. */
    std::string Findings(std::vector<std::string> args)
    {
        args.insert(args.begin(), "check");
        args.insert(args.end(), {"-d", dir.Path(), "--format", "json"});
        std::string text;
        for (const Told &finding : FindingsOf(Inspect(args)))
            text += finding.rule + " " + finding.file.substr(finding.file.rfind('/') + 1) +
                    (finding.line != 0 ? ":" + std::to_string(finding.line) : "") + ": " + finding.text +
                    (finding.places > 1 ? " " + std::to_string(finding.places) + " " + finding.firstPlace : "") + "\n";
        for (size_t at = text.find(dir.Path()); at != std::string::npos; at = text.find(dir.Path()))
            text.erase(at, dir.Path().size() + 1);
        return text;
    }

    ModelDir dir;
};

/* m stands between the two in the alphabet: neither order of loads shows both of them in its tree at its turn. */
TEST_F(InspectDevice, AttributesThatTwoModulesAddToTheClassOfAThird)
{
    dir.Add("m", Container("c", ClassId("1") + Leaf("x", "string", Id("1"))));
    dir.Add("a", Augment("/m:c", Leaf("one", "string", "\n" + Id("50"))), "m");
    dir.Add("z", Augment("/m:c", Leaf("two", "string", "\n" + Id("50"))), "m");
    const std::string both =
        "duplicate-field-id z.yin:7: leaf 'two' of class /c (0x1) has attribute id 50, as 'one' of /c has (a.yin:7)\n";
    EXPECT_EQ(Findings({"--all"}), both);
    EXPECT_EQ(Findings({"a", "z"}), both);
    EXPECT_EQ(Findings({"m", "--load", "z", "--load", "a"}), both);
    EXPECT_EQ(Findings({"m"}), "");
    EXPECT_EQ(Findings({"a", "m"}), "");

    /* Deviations that collide, of modules that have no trees. */
    dir.Add("m", Container("c", ClassId("1") + Leaf("x", "string") + Leaf("y", "string")));
    dir.Add("a", Deviate("/m:c/m:x", "add", Id("9")), "m");
    dir.Add("z", Deviate("/m:c/m:y", "add", Id("9")), "m");
    EXPECT_EQ(
        Findings({"--all"}),
        "missing-field-id m.yin:6: leaf 'x' of class /c (0x1) has no attribute id, when module 'm' is loaded before "
        "'a'\n"
        "missing-field-id m.yin:7: leaf 'y' of class /c (0x1) has no attribute id, when module 'm' is loaded before "
        "'z'\n"
        "duplicate-field-id z.yin:6: leaf 'y' of class /c (0x1) has attribute id 9, as 'x' of /c has (a.yin:6)\n");

    /* A number is told with what it makes of the leaf, and not with what the one before it has made. */
    dir.Add("m", Container("c", ClassId("1") + Leaf("x", "string", Id("5")) + Leaf("y", "string", Id("6"))));
    dir.Add("a", "");
    dir.Add("z", Deviate("/m:c/m:x", "replace", Id("300")), "m");
    EXPECT_EQ(Findings({"--all"}),
              "field-id-range z.yin:6: leaf 'x' of class /c (0x1): attribute ids end at 255, so that field-id 300 "
              "becomes 44\n");
}

TEST_F(InspectDevice, ModulesThatManyOthersChange)
{
    dir.Add("m", Container("c", ClassId("1") + Leaf("x", "string") + Leaf("y", "string", Id("2"))));
    for (const char *name : {"a", "n1", "n2", "n3", "n5"})
        dir.Add(name, Augment("/m:c", Container("in-" + std::string(name), "")), "m");
    dir.Add("n4", Deviate("/m:c/m:x", "add", Id("9")), "m");
    EXPECT_EQ(Findings({"--all", "--off", "no-class"}),
              "missing-field-id m.yin:6: leaf 'x' of class /c (0x1) has no attribute id, when module 'a' is loaded "
              "before 'n1', 'n2', 'n3' and others\n");
}

TEST_F(InspectDevice, KeysThatComeWithAnotherModule)
{
    dir.Add("m", Container("c", List("l", "k", ClassId("1") + Leaf("k", "string", Id("1")))));
    dir.Add(
        "n",
        Augment("/m:c/m:l", Container("d", ClassId("2") + Ext("ancestor-key-fid", "8")) + Leaf("w", "string", Id("3"))),
        "m");
    EXPECT_EQ(Findings({"--all"}), "");
    dir.Add("o", Augment("/m:c/m:l/n:d", Leaf("v", "string", "\n" + Id("8"))), "m n");
    EXPECT_EQ(Findings({"--all"}),
              "ancestor-key-collision n.yin:8: class /c/l/d (0x2) has ancestor key 8, which is the "
              "attribute id of leaf 'v' as well (o.yin:8)\n");
    dir.Add("n", Augment("/m:c/m:l", Container("d", ClassId("2") + Ext("ancestor-key-fid", "1", Id("8")))), "m");
    EXPECT_EQ(Findings({"--all"}),
              "unmapped-ancestor-key n.yin:6: 1 key of class /c/l (0x1) has no attribute id in class /c/l/d (0x2): the "
              "field-id 8 of ancestor-key-fid 1 is the attribute id of leaf 'v' of module 'o' as well (o.yin:8)\n");
}

TEST_F(InspectDevice, LoadsThatFailInOneOrder)
{
    const std::string ref = "<type name=\"leafref\"><path value=\"../s/k\"/></type>";
    dir.Add("m", Container("c", List("l", "k",
                                     Ext("class-type", "leafref") + Leaf("k", ref) +
                                         Container("s", ClassId("8") + Leaf("k", "string", Id("1"))))));
    dir.AddFile("n.yang",
                "module n { namespace \"urn:n\"; prefix n; import m { prefix m; } import quelvo-mim-extensions { "
                "prefix e; }\n\n\n\n\naugment /m:c/m:l { leaf w { type string; e:field-id 7; } } }");
    const std::string text = Findings({"--all"});
    EXPECT_EQ(text,
              "load-failed n.yang:6: leaf 'w' of 'l', a class of class-type 'leafref', is no leafref, when the "
              "modules are loaded in reverse order\n");
    EXPECT_EQ(Inspect({"check", "--all", "-d", dir.Path()}).exitCode, 3);
}

TEST_F(InspectDevice, IdsOfTheWholeDevice)
{
    const std::string sample = Ext("tlmt-sample-id", "5");
    dir.Add("a", Ext("aaa-task-id", "7") + Container("c", ClassId("1") + sample));
    dir.Add("b", Ext("aaa-task-id", "7") + Container("d", ClassId("1") + sample));
    EXPECT_EQ(Findings({"--all"}),
              "duplicate-task-id b.yin:4: aaa-task-id 7 is that of module 'a' as well (a.yin:4)\n"
              "duplicate-class-id b.yin:6: class /d (0x1) has the class id of /c of module 'a' (a.yin:6)\n"
              "duplicate-sample-id b.yin:7: class /d (0x1) has the sample id 0x5 of /c of module 'a' (a.yin:7)\n");
}

TEST_F(InspectDevice, OneFindingForAPlaceInAGrouping)
{
    std::string uses;
    for (int i = 1; i <= 12; ++i)
        uses += Container("c" + std::to_string(i), ClassId(std::to_string(i)) + "<uses name=\"g\"/>");
    dir.Add("m", "<grouping name=\"g\">\n" + Leaf("x", "string") + Leaf("y", "string", "\n" + Id("300")) +
                     "</grouping>" + Container("top", uses));
    EXPECT_EQ(Findings({"m"}),
              "missing-field-id m.yin:5: leaf 'x' of class /top/c1 (0x1) has no attribute id 12 /top/c1/x\n"
              "field-id-range m.yin:7: leaf 'y' of class /top/c1 (0x1): attribute ids end at 255, so that "
              "field-id 300 becomes 44 12 /top/c1/y\n");
    EXPECT_NE(LineWith(Inspect({"check", "m", "-d", dir.Path()}).out,
                       "has no attribute id (in 12 places, first /top/c1/x) [missing-field-id]"),
              "");
}

TEST_F(InspectDevice, GoesOnBehindAModuleThatCannotBeLoaded)
{
    dir.AddFile("a.yang", "module a {");
    dir.Add("b", Container("c", ClassId("1") + Leaf("x", "string")));
    const std::string text = Findings({"--all"});
    EXPECT_EQ(text.find("load-failed a.yang:1: "), 0U) << text;
    EXPECT_NE(text.find("missing-field-id b.yin:6"), std::string::npos) << text;
}

/* Counts how often the files of a directory, and it itself under the name "", are opened. */
class Opens {
  public:
    explicit Opens(const std::string &path) : queue_(inotify_init1(IN_NONBLOCK))
    {
        EXPECT_GE(inotify_add_watch(queue_, path.c_str(), IN_OPEN), 0);
    }
    ~Opens() { close(queue_); }
    Opens(const Opens &) = delete;
    Opens &operator=(const Opens &) = delete;

    std::map<std::string, int> Count()
    {
        std::map<std::string, int> counts;
        alignas(inotify_event) std::array<char, 65536> events = {};
        for (ssize_t size; (size = read(queue_, events.data(), events.size())) > 0;)
            for (ssize_t at = 0; at < size;) {
                const auto *event = reinterpret_cast<const inotify_event *>(events.data() + at);
                counts[event->len != 0 ? event->name : ""]++;
                at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            }
        return counts;
    }

  private:
    int queue_;
};

/* Modules that have nothing to do with one another are loaded once, others once in each order. */
TEST_F(InspectDevice, ReadsEachDirectoryOnceAndEachFileOnceAnOrder)
{
    constexpr int NUM = 100;
    for (int i = 0; i < NUM; ++i)
        dir.AddFile("m" + std::to_string(i) + "@2020-01-01.yang",
                    "module m" + std::to_string(i) + " { namespace \"urn:m" + std::to_string(i) +
                        "\"; prefix p; import base { prefix b; } revision 2020-01-01; container c; }");
    dir.AddFile("base@2020-01-01.yang", "module base { namespace \"urn:base\"; prefix b; revision 2020-01-01; }");
    dir.Add("x", Container("c", ClassId("1") + Leaf("k", "string", Id("1"))));
    dir.Add("y", Augment("/x:c", Leaf("v", "string", Id("2"))), "x");
    Opens opens(dir.Path());
    EXPECT_EQ(Inspect({"check", "--all", "-d", dir.Path()}).out, "104 modules checked: no errors, no warnings\n");
    std::map<std::string, int> counts = opens.Count();
    EXPECT_EQ(counts[""], 1);
    EXPECT_EQ(counts["base@2020-01-01.yang"], 1);
    EXPECT_EQ(counts["m7@2020-01-01.yang"], 1);
    EXPECT_EQ(counts["x.yin"], 2) << "x and y, then y and x";
}

} // namespace
