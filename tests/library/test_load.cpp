/* The load of a module: its numbered messages, and what is left when a step fails. */
#include <filesystem>

#include "korv_lib_yang/korv_lib_yang.h"
#include "support/host.h"

namespace test {
namespace {

using Lines = std::vector<LogLine>;

class LoadModule : public HostTest {
  protected:
    /* What must hold after a failed load. */
    void ExpectNothingChanged(const std::string &name)
    {
        EXPECT_EQ(File(name), nullptr);
        EXPECT_EQ(Local()->uiModuleNum, 0u);
        EXPECT_EQ(Services().LiveBlocks().size(), 2u) << Services().Leaks();
    }
};

TEST_F(LoadModule, TellsItsStepsInOrder)
{
    dir.Add("m", Container("c", Container("d", "")));
    const std::string keys = ", Class:0x0 SelfNodeKey(0 0 0 0 0 0 0 0)AncestorKey(0 0 0 0 0 0 0 0)";
    ASSERT_EQ(Load("m"), 0u);
    EXPECT_EQ(log.lines, (Lines{{2, "1. Check module (m) is exists or not"},
                                {2, "2. Init module (m) file info"},
                                {2, "3. Load module file: m"},
                                {2, "4. Read module (m) mimext info."},
                                {2, "qyNode info: name c, node type: 1"},
                                {2, "qyNode info: name d, node type: 1"},
                                {2, "5. Generate Module (m) tree."},
                                {2, "augment null,size(0)!"},
                                {2, "Load Module (m) success. Now total module : 1."},
                                {2, "PrintYangModuleOriginData:"},
                                {2, "Name:c, xpath:/c" + keys},
                                {2, "Name:d, xpath:/c/d" + keys},
                                {2, "PrintYangModuleAugmentData:"},
                                {0, "augment can not findYangModuleTree!"}}));
    log.Clear();
    ASSERT_EQ(Load("m", ""), 0u);
    EXPECT_EQ(log.lines, (Lines{{2, "1. Check module (m) is exists or not"}, {2, "No need load exists Module (m)."}}));
    EXPECT_EQ(Local()->uiModuleNum, 1u);
}

TEST_F(LoadModule, NeedsAnInstanceAndAName)
{
    EXPECT_EQ(YANGLIB_LoadYangModule(nullptr, "m", nullptr), 1u);
    EXPECT_EQ(YANGLIB_LoadYangModule(Local(), nullptr, nullptr), 1u);
    EXPECT_EQ(log.lines, (Lines{{0, "pcModuleName or pYangModule error!"}}));
    log.Clear();
    EXPECT_EQ(TELMYANG_LoadYangModule(Local(), Local()->pstYangCtx, nullptr), 1u);
    EXPECT_EQ(TELMYANG_LoadYangModule(Local(), nullptr, "m"), 1u);
    EXPECT_EQ(log.Errors(), (std::vector<std::string>(2, "TELMYANG_LoadYangModule parameter null!")));
}

TEST_F(LoadModule, MissingFileIsReportedWithTheSchemaLibrarysReason)
{
    EXPECT_EQ(Load("nowhere", "2026-01-01"), 1u);
    const std::vector<std::string> errors = log.Errors();
    ASSERT_EQ(errors.size(), 4u);
    EXPECT_EQ(errors[0], "QY_CTX_LoadModule nowhere error!");
    EXPECT_EQ(errors[1], "-3. Load Module return 0x1: pcModuleName(nowhere) pcReversionIn(2026-01-01) pcSearchDir(" +
                             dir2.Path() + ")");
    EXPECT_EQ(errors[2].rfind("3. Load module nowhere failed, errInfo: ", 0), 0u) << errors[2];
    EXPECT_EQ(errors[3], "Load Module (nowhere) fail!");
    ExpectNothingChanged("nowhere");
}

TEST_F(LoadModule, BrokenModelsSayWhereAndTheNextLoadSucceeds)
{
    const struct {
        const char *what;
        std::string text;
    } cases[] = {
        {"malformed XML", "<module name=\"m\"><container></module>"},
        {"wrong root", "<yang xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\"/>"},
        {"doctype", "<!DOCTYPE module []>" + Module("m", "")},
        {"unknown type", Module("m", Container("c", Leaf("l", "nosuch")))},
        {"unknown prefix", Module("m", Container("c", Leaf("l", "zz:t")))},
        {"unbound extension prefix", Module("m", Container("c", "<zz:class-id value=\"1\"/>"))},
        {"unknown grouping", Module("m", "<uses name=\"g\"/>")},
        {"missing import", Module("m", "", "nosuch")},
        {"import cycle", Module("m", "", "m")},
        {"grouping cycle", Module("m", "<grouping name=\"g\"><uses name=\"g\"/></grouping><uses name=\"g\"/>")},
        {"typedef cycle", Module("m", "<typedef name=\"t\"><type name=\"t\"/></typedef>" + Leaf("l", "t"))},
        {"duplicate sibling", Module("m", Container("c", Leaf("l", "int8") + Leaf("l", "int8")))},
    };
    for (const auto &c : cases) {
        dir.AddFile("m.yin", c.text);
        log.Clear();
        EXPECT_EQ(Load("m"), 1u) << c.what;
        ExpectNothingChanged("m");
        const std::vector<std::string> errors = log.Errors();
        ASSERT_GE(errors.size(), 4u) << c.what;
        const std::string expected = "3. Load module m failed, errInfo: " + dir.Path() + "/m.yin:";
        EXPECT_EQ(errors[2].substr(0, expected.size()), expected) << c.what;
        EXPECT_EQ(errors.back(), "Load Module (m) fail!");
    }
    dir.Add("m", Container("c", ""));
    EXPECT_EQ(Load("m"), 0u);
}

TEST_F(LoadModule, FailureOfAFeatureCallFailsTheLoad)
{
    dir.Add("m", Container("c", ""));
    Faults().featureResult = 0x15;
    EXPECT_EQ(Load("m"), 0x15u);
    EXPECT_EQ(log.Errors(), (std::vector<std::string>{"-3. Load Module return 0x15: pcModuleName(m) "
                                                      "pcReversionIn(NULL) pcSearchDir(" +
                                                          dir2.Path() + ")",
                                                      "Load Module (m) fail!"}));
    ExpectNothingChanged("m");
    Faults().featureResult = 0;
    EXPECT_EQ(Load("m"), 0u) << "the schema context has it already";
}

TEST_F(LoadModule, ModuleThatTheSchemaLibraryDoesNotShow)
{
    dir.Add("m", Container("c", ""));
    ASSERT_NE(Local(), nullptr);
    Faults().modulesHidden = true;
    EXPECT_EQ(Load("m"), 1u);
    EXPECT_TRUE(log.Has("QY_CTX_GetModuleByModName m error!"));
    Faults().modulesHidden = false;
    ASSERT_EQ(TELMYANG_LoadYangModule(Local(), Local()->pstYangCtx, "m"), 0u);
    EXPECT_EQ(TELEMYANG_ReadAllYinExtensionData(Local(), "m", nullptr, nullptr), 1u);
    EXPECT_EQ(log.Errors().back(), "Get module m yang info failed!");
    EXPECT_EQ(TELEMYANG_GenerateYangMouleTree(Local(), "m", nullptr, nullptr, nullptr), 1u);
    EXPECT_EQ(log.Errors().back(), "inval parameter!");
}

TEST_F(LoadModule, FailingTreeIsUndoneWithTheWholeChain)
{
    std::string keys;
    std::string leaves;
    for (int i = 1; i <= 17; ++i) {
        const std::string name = "k" + std::to_string(i);
        keys += (i == 1 ? "" : " ") + name;
        leaves += Leaf(name, "int8", Ext("field-id", std::to_string(i)));
    }
    dir.Add("m", Container("first", Container("x", "")) +
                     Container("c", Container("before", "") + List("l", keys, Ext("class-id", "1") + leaves)));
    EXPECT_EQ(Load("m"), 1u);
    EXPECT_EQ(log.Errors(),
              (std::vector<std::string>{"NODE_KEY_LIST_NUM error!", "Fill ancestor key failed!",
                                        "Fill Data From Yang Node(c) return 0x1!", "DupYangtree failed!",
                                        "GenerateOriginTree failed,pcModuleName(m)!",
                                        "-5. Generate Module (m) tree return 0x1", "Load Module (m) fail!"}));
    ExpectNothingChanged("m");
    EXPECT_EQ(QY_NODE_GetPrivate(SchemaNode(SchemaModule("m"), "c/l")), nullptr);
    EXPECT_EQ(QY_NODE_GetPrivate(SchemaNode(SchemaModule("m"), "c/l/k1")), nullptr);
}

TEST_F(LoadModule, LeavesNoPrivateDataOnSchemaNodes)
{
    dir.Add("m", Container("c", Ext("class-id", "1") + Leaf("l", "int8", Ext("field-id", "1"))));
    dir.Add("x",
            "<augment target-node=\"/m:c\">" + Container("d", Ext("class-id", "2") + Leaf("l", "int8")) + "</augment>",
            "m");
    ASSERT_EQ(Load("x"), 0u);
    ASSERT_EQ(Load("m"), 0u);
    for (const char *path : {"c", "c/l", "c/d", "c/d/l"})
        EXPECT_EQ(QY_NODE_GetPrivate(SchemaNode(SchemaModule("m"), path)), nullptr) << path;
}

TEST_F(LoadModule, ExamplesLoadInAnyOrder)
{
    dir.AddExamples();
    std::vector<std::string> names = {"example-interface-shaping", "example-interfaces", "example-interface-qos",
                                      "example-qos", "quelvo-bras-user-manage"};
    do {
        for (const std::string &name : names)
            ASSERT_EQ(Load(name), 0u) << name;
        EXPECT_EQ(YANGLIB_UnloadYangModuleAll(Local()), 0u);
        log.Clear();
    } while (std::next_permutation(names.begin(), names.end()));
}

} // namespace
} // namespace test
