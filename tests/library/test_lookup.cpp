/* Finding nodes by path. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "support/host.h"

namespace test {
namespace {

class Lookup : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.Add("m", Container("sys", Leaf("hostname", "string") +
                                          Container("ports", List("port", "name",
                                                                  Leaf("name", "string") + Leaf("speed", "int32"))) +
                                          "<choice name=\"mode\"><case name=\"auto\">" +
                                          Container("timer", Leaf("interval", "int32")) + "</case></choice>"));
        dir.Add("x",
                "<augment target-node=\"/m:sys/m:ports/m:port\">" +
                    Container("stats", Leaf("rx", "int32") + Leaf("tx", "int32")) + "</augment>",
                "m");
    }

    KorvTreeNode *Find(const char *module, const std::string &path, const std::string &main)
    {
        const YangXpathLookup lookup = {Local(), module, nullptr, path.c_str(), main.c_str(), 0, 0};
        log.Clear();
        const size_t before = Services().LiveBlocks().size();
        KorvTreeNode *node = TELMYANG_KorvFindTreeNodeByXpath(&lookup);
        EXPECT_EQ(Services().LiveBlocks().size(), before);
        return node;
    }

    std::string NameOf(const KorvTreeNode *node) { return node != nullptr ? node->pcName : "null"; }
};

TEST_F(Lookup, WorkedExamples)
{
    const struct {
        const char *module;
        const char *path;
        const char *main;
        const char *found;
        std::vector<std::string> errors;
    } cases[] = {
        {"m", "/sys/ports/port", "m:sys/m:ports/m:port", "port", {}},
        {"m", "sys/ports", "m:sys/m:ports", "ports", {}},
        {"m", "/sys/timer", "m:sys/m:timer", "timer", {}},
        {"m", "/sys/mode", "m:sys/m:mode", "null", {"find node failed!", "find node (/sys/mode/) failed!"}},
        {"m", "/sys/ports/port/speed", "m:sys/m:ports/m:port/m:speed", "port", {"find node (speed/) err!"}},
        {"m", "/sys/hostname", "m:sys/m:hostname", "null", {"find node failed!", "find node (/sys/hostname/) failed!"}},
        {"m",
         "/sys/ports/",
         "m:sys/m:ports",
         "null",
         {"Get next node name return 0x1!", "find node (/sys/ports//) failed!"}},
        {"x", "/sys/ports/port/stats", "m:sys/m:ports/m:port/x:stats", "stats", {}},
        {"x", "/m:sys/m:ports/m:port/x:stats/rx", "m:sys/m:ports/m:port/x:stats/rx", "stats", {"find node (rx/) err!"}},
        {"x",
         "/sys/ports/port/stats",
         "m:sys/ports/port/x:stats",
         "null",
         {"find node (/sys/ports/port/stats/) failed!"}},
        {"x",
         "/sys/ports/port/stats/rx",
         "m:sys/m:ports/m:port/x:stats/x:rx",
         "null",
         {"find node (/sys/ports/port/stats/rx/) failed!"}},
        {"m",
         "/sys/ports/port/stats",
         "m:sys/m:ports/m:port/x:stats",
         "null",
         {"find node (/sys/ports/port/stats/) failed!"}},
        /* further ones */
        {"m", "", "m:sys", "null", {"find node (/) failed!"}},
        {"m", "/", "m:sys", "null", {"Get next node name return 0x1!", "find node (//) failed!"}},
        {"m", "/sys//ports", "m:sys", "null", {"Get next node name return 0x1!", "find node (/sys//ports/) failed!"}},
        {"m",
         "/sys/timer/other",
         "m:sys/m:timer",
         "null",
         {"find node (other/) err!", "find node (/sys/timer/other/) failed!"}},
        {"m", "/sys/ports/port/speed/more", "m:sys", "port", {"find node (speed/more/) err!"}},
        {"m", "/m:sys", "sys", "null", {"find node failed!", "find node (/m:sys/) failed!"}},
        {"nowhere", "/sys", "m:sys", "null", {"can not findYangModuleTree!"}},
    };
    ASSERT_EQ(Load("m"), 0u);
    ASSERT_EQ(Load("x"), 0u);
    for (const auto &c : cases) {
        EXPECT_EQ(NameOf(Find(c.module, c.path, c.main)), c.found) << c.path << " " << c.main;
        EXPECT_EQ(log.Errors(), c.errors) << c.path << " " << c.main;
    }
    EXPECT_EQ(NameOf(Find("x", "/sys/ports/port/stats", "m:sys/m:ports/m:port/x:stats")), "stats");
    EXPECT_EQ(log.lines, (std::vector<LogLine>{
                             {2,
                              "find augment augmentXpath(/m:sys/m:ports/m:port)acNoPrefixXpath(/sys/ports/port/stats/)"
                              "pAugmentFullPath(/m:sys/m:ports/m:port)pcXpathMain(m:sys/m:ports/m:port/x:stats/)"},
                             {2, "augment module pcXpathMain(m:sys/m:ports/m:port/x:stats)."}}));
    (void)Find("x", "/sys/ports/port/stats", "m:sys/ports/port/x:stats");
    EXPECT_EQ(log.Texts(2),
              (std::vector<std::string>{"FindAugmentInfoNode failed,name(/m:sys/ports/port)!",
                                        "find augment augmentXpath(/m:sys/ports/port)acNoPrefixXpath(/sys/ports/port/"
                                        "stats/)pAugmentFullPath(/m:sys/m:ports/m:port)pcXpathMain(m:sys/ports/port/x:"
                                        "stats/)",
                                        "augment module pcXpathMain(m:sys/ports/port/x:stats)."}));
    EXPECT_EQ(NameOf(Find("m", "/sys", "m:sys")), "sys");
    EXPECT_EQ(log.lines, (std::vector<LogLine>{{2, "not augment module pcPath(/sys)pcXpathMain(m:sys)."}}));
    EXPECT_EQ(Find("m", "/sys", "m:sys"), File("m")->pstOriginTree) << "always the same node";
}

TEST_F(Lookup, LeavesByTheirHolder)
{
    ASSERT_EQ(Load("m"), 0u);
    const auto find = [&](const char *path, const char *main) {
        log.Clear();
        return NameOf(TELMYANG_KorvFindTreeNodeByLeafXpath(Local(), "m", nullptr, path, main));
    };
    EXPECT_EQ(find("/sys/hostname", "m:sys/m:hostname"), "sys");
    EXPECT_TRUE(log.Errors().empty());
    EXPECT_EQ(find("/sys/nosuch", "m:sys/m:nosuch"), "null");
    EXPECT_EQ(find("hostname", "m:sys/m:hostname"), "null");
    EXPECT_EQ(find("/sys/hostname", "m:hostname"), "null");
    EXPECT_EQ(find("/nosuch/l", "m:nosuch/m:l"), "null");
    EXPECT_EQ(log.Errors().back(),
              "Find Tree Node By Xpath failed, name(m) pcPath(/nosuch/l)pcXpathMain(m:nosuch/m:l)!");
    EXPECT_EQ(YANGLIB_IsLeafNode(File("m")->pstOriginTree, "hostname"), 1u);
    EXPECT_EQ(YANGLIB_IsLeafNode(File("m")->pstOriginTree, "ports"), 0u);
    EXPECT_EQ(YANGLIB_IsLeafNode(Node("m", "sys/ports"), "x"), 0u);
    EXPECT_EQ(YANGLIB_IsLeafNode(nullptr, "x"), 0u);
}

TEST_F(Lookup, CaseLeafIsFoundByTheWalkAlone)
{
    dir.Add("n", Container("c", "<choice name=\"ch\">" + Leaf("l", "int8") + "</choice>") + Container("d", ""));
    ASSERT_EQ(Load("n"), 0u);
    EXPECT_EQ(NameOf(Find("n", "/c/l", "n:c/n:l")), "null") << "c has child nodes: its choice";
    EXPECT_EQ(TELMYANG_CheckIsLeafNode(Node("n", "c"), "l/more"), 1u);
    EXPECT_EQ(TELMYANG_CheckIsLeafNode(nullptr, "l"), 0u);
    EXPECT_EQ(TELMYANG_KorvFindTreeNodeByLeafXpath(Local(), "n", nullptr, "/c/l", "n:c/n:l"), nullptr);
}

TEST_F(Lookup, FirstMatchInSiblingOrderWins)
{
    dir.Add("n", Container("c", "<choice name=\"ch\"><case name=\"one\">" + Container("box", "") + "</case></choice>" +
                                    Container("other", "")));
    ASSERT_EQ(Load("n"), 0u);
    KorvTreeNode *other = Node("n", "c/other");
    char *const name = other->pcName;
    char box[] = "box";
    other->pcName = box;
    EXPECT_EQ(Find("n", "/c/box", "n:c/n:box"), Node("n", "c/ch/one/box"));
    other->pcName = name;
}

TEST_F(Lookup, TextsAtTheirLimits)
{
    const std::string longest(64, 'a');
    dir.Add("n", Container(longest, Container("b", "")));
    ASSERT_EQ(Load("n"), 0u);
    EXPECT_EQ(NameOf(Find("n", "/" + longest + "/b", "n:x")), "b");
    EXPECT_EQ(NameOf(Find("n", "/" + longest + "a/b", "n:x")), "null");
    EXPECT_EQ(log.Errors()[0], "Get next node name return 0x1!");

    ASSERT_EQ(Load("x"), 0u);
    assertionsExpected = true;
    const std::string p63(63, 'p');
    const std::string stats = "m:sys/m:ports/m:port/x:stats";
    const auto assertions = [&] {
        const size_t num = Services().assertions.size();
        Services().assertions.clear();
        return num;
    };
    EXPECT_EQ(NameOf(Find("x", "/sys", p63 + ":sys/" + p63 + ":ports")), "null") << "the same prefix: a plain path";
    EXPECT_EQ(assertions(), 0u);
    EXPECT_EQ(NameOf(Find("n", "/" + longest, p63 + "p:sys/m:ports")), "null");
    EXPECT_EQ(assertions(), 1u);
    EXPECT_EQ(NameOf(Find("n", "/" + longest, "m:sys/" + p63 + "p:ports")), "null");
    EXPECT_EQ(assertions(), 1u);
    /* "/" and 255 further characters of the target path fit. */
    EXPECT_EQ(NameOf(Find("x", "/sys", "m:" + std::string(253, 's') + "/x:stats")), "null");
    EXPECT_EQ(assertions(), 0u);
    EXPECT_EQ(NameOf(Find("x", "/sys", "m:" + std::string(254, 's') + "/x:stats")), "null");
    EXPECT_EQ(assertions(), 1u);
    EXPECT_EQ(NameOf(Find("x", "/" + std::string(255, 's'), stats)), "null");
    EXPECT_EQ(assertions(), 1u);
    EXPECT_EQ(NameOf(Find("x", "/sys/ports/port/stats", stats)), "stats");
    EXPECT_EQ(assertions(), 0u);
    std::string deep = "m:a";
    while (deep.size() < 240)
        deep += "/" + std::string(1, 'b');
    EXPECT_EQ(NameOf(Find("x", "/sys", p63 + deep + "/x:s")), "null") << "the full path overflows";
    EXPECT_GE(assertions(), 1u);
    EXPECT_EQ(TELMYANG_KorvFindTreeNodeByLeafXpath(Local(), "m", nullptr, std::string(257, '/').c_str(), "m:a/b"),
              nullptr);
    EXPECT_EQ(assertions(), 1u);
}

TEST_F(Lookup, OddTextsReadNothingOutside)
{
    ASSERT_EQ(Load("x"), 0u);
    for (const char *main : {":", "::", "a::b", ":a:b", "m:sys/:", "m:a:x:b/c", "/m:sys/x:b", "a:b:c"}) {
        for (const char *path : {":", "a:b:c", "::/", "x:stats", "/a:b:c/d"})
            EXPECT_EQ(NameOf(Find("x", path, main)), "null") << path << " " << main;
    }
}

TEST_F(Lookup, PathsAreRewritten)
{
    const struct {
        const char *source;
        const char *without;
        const char *full;
    } cases[] = {
        {"/m:sys/m:ports/m:port/x:stats/", "/sys/ports/port/stats/", "/m:sys/m:ports/m:port/x:stats/x:"},
        {"/sys/ports/", "/sys/ports/", ""},
        {"/m:sys/ports/x:a/b", "/sys/ports/a/b", "/m:sys/m:ports/x:a/x:b"},
        {"m:sys/p", "sys/p", "m:sys/m:p"},
    };
    for (const auto &c : cases) {
        char without[257] = {};
        char full[1024] = {};
        EXPECT_EQ(TELMYANG_BuildAugmentXpath(Local(), c.source, without, sizeof(without)), 0u);
        EXPECT_STREQ(without, c.without);
        EXPECT_EQ(TELMYANG_BuildAugmentFullPath(Local(), c.source, 257, full, sizeof(full)), 0u);
        EXPECT_STREQ(full, c.full);
    }
    EXPECT_EQ(TELMYANG_JudgeXpathNodeType(Local(), "m:a/x:b"), 1u);
    EXPECT_EQ(TELMYANG_JudgeXpathNodeType(Local(), "m:a/x:b/m:c"), 0u) << "the last prefix decides";
    EXPECT_EQ(TELMYANG_JudgeXpathNodeType(Local(), "/m:a/m:b"), 1u) << "a leading / belongs to the first prefix";
    EXPECT_EQ(TELMYANG_JudgeXpathNodeType(Local(), "a/b"), 0u);
}

TEST_F(Lookup, DirectChildNodes)
{
    ASSERT_EQ(Load("m"), 0u);
    const std::string choice = "<choice name=\"ch\">" + Container("box", "") + "</choice>";
    dir.Add("n", Container("c", choice) + Container("d", choice + Container("behind", "")));
    ASSERT_EQ(Load("n"), 0u);
    const auto has = [&](const char *module, const char *path, const char *main) {
        const YangPathRequest request = {module, nullptr, path, main};
        return YANGLIB_HasSubNodeInXpath(Local(), &request);
    };
    EXPECT_EQ(has("m", "/sys", "m:sys"), 1u);
    EXPECT_EQ(has("m", "/sys/ports/port", "m:sys/m:ports/m:port"), 0u);
    EXPECT_EQ(has("m", "/nosuch", "m:nosuch"), 0u);
    EXPECT_EQ(has("n", "/c", "n:c"), 0u) << "only a choice, whatever it holds";
    EXPECT_EQ(has("n", "/d", "n:d"), 1u) << "a container behind the choice";
    EXPECT_EQ(has("m", nullptr, "m:sys"), 0u);
}

TEST_F(Lookup, WithoutMemory)
{
    ASSERT_EQ(Load("x"), 0u);
    const std::vector<std::string> expected[] = {
        {"malloc fail!", "DuplicateXpath malloc failed uiLen=30 !", "malloc failed uiRet(1)uiRetValue(0)!"},
        {"malloc fail!", "DuplicateXpath malloc failed uiLen=23 !", "malloc failed uiRet(0)uiRetValue(1)!"},
        {"malloc fail!", "malloc failed!", "find node (/sys/ports/port/stats/) failed!"},
    };
    for (uint64_t n = 0; n < std::size(expected); ++n) {
        Services().FailAllocation(n, false);
        EXPECT_EQ(NameOf(Find("x", "/sys/ports/port/stats", "m:sys/m:ports/m:port/x:stats")), "null");
        EXPECT_EQ(log.Errors(), expected[n]);
    }
    Services().FailAllocation(NEVER, false);
    EXPECT_EQ(NameOf(Find("x", "/sys/ports/port/stats", "m:sys/m:ports/m:port/x:stats")), "stats");
    EXPECT_EQ(Services().allocations, 3u) << "two path copies and one buffer";
}

} // namespace
} // namespace test
