/* Modules that are used together with a deviation module. */
#include <filesystem>

#include "korv_lib_yang/korv_lib_yang.h"
#include "support/host.h"

namespace test {
namespace {

const std::string BASE = "quelvo-bras-user-manage";

class Deviations : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.Add(BASE, Container("users", Ext("class-id", "1") + Leaf("a", "uint16", Ext("field-id", "1")) +
                                             Leaf("b", "uint16", Ext("field-id", "2"))));
    }

    /* A deviation module that takes the leaf away. */
    static void AddDeviation(ModelDir &where, const std::string &name, const std::string &leaf)
    {
        where.Add(name,
                  "<deviation target-node=\"/" + BASE + ":users/" + BASE + ":" + leaf +
                      "\"><deviate value=\"not-supported\"/></deviation>",
                  BASE);
    }

    bool HasLeaf(const std::string &name) { return LeafOf(Node(BASE, "users"), name) != nullptr; }

    std::string FileName(const std::string &suffix) { return BASE + "-deviations" + suffix; }
};

TEST_F(Deviations, ListedNamesAreFoundWithinOthers)
{
    for (const char *name : {"quelvo-bras-dhcp-access", "quelvo-bras-dhcpv6-access", "quelvo-bras-pppox-access",
                             "quelvo-bras-user-manage", "quelvo-bras-user-manage-extra"})
        EXPECT_EQ(YANGLIB_IsInDeviationList(name), 1u) << name;
    EXPECT_EQ(YANGLIB_IsInDeviationList("quelvo-bras-user"), 0u);
}

TEST_F(Deviations, AreInForceBeforeTheTreeIsBuilt)
{
    AddDeviation(dir, FileName("-edge"), "a");
    ASSERT_EQ(Load(BASE), 0u);
    EXPECT_FALSE(HasLeaf("a"));
    EXPECT_TRUE(HasLeaf("b"));
    EXPECT_EQ(Local()->uiModuleNum, 1u) << "the deviation module is not registered";
    EXPECT_EQ(File(FileName("-edge")), nullptr);
    EXPECT_TRUE(log.Has("Find deviation file " + FileName("-edge.yin")));
    EXPECT_TRUE(log.Has("Deviation mod is " + FileName("-edge")));
    EXPECT_TRUE(log.Has("load deviation mod " + FileName("-edge") + ", ret is 0"));
    ASSERT_EQ(Unload(BASE), 0u);
    ASSERT_EQ(Load(BASE), 0u);
    EXPECT_FALSE(HasLeaf("a"));
}

TEST_F(Deviations, ReplaceAddAndDeleteShowInTheTree)
{
    const std::string target = "/" + BASE + ":users";
    dir.Add(FileName("-edge"),
            "<deviation target-node=\"" + target + "/" + BASE +
                ":a\"><deviate value=\"replace\"><type name=\"uint32\">"
                "<range value=\"5..9\"/></type></deviate><deviate value=\"add\">" +
                Ext("datatype-id", "99") + "</deviate></deviation><deviation target-node=\"" + target +
                "\"><deviate value=\"replace\">" + Ext("class-id", "7") +
                "</deviate></deviation><deviation target-node=\"" + target + "/" + BASE +
                ":b\"><deviate value=\"delete\">" + Ext("field-id", "2") + "</deviate></deviation>",
            BASE);
    ASSERT_EQ(Load(BASE), 0u);
    const KorvTreeNode *users = Node(BASE, "users");
    EXPECT_EQ(users->uiClassId, 7u);
    EXPECT_EQ(LeafOf(users, "a")->ucBaseType, QY_TYPE_UINT32);
    EXPECT_EQ(LeafOf(users, "a")->llRangeMax, 9);
    EXPECT_EQ(LeafOf(users, "a")->uiDataType, 99u);
    EXPECT_EQ(LeafOf(users, "b")->ucMask, 0);
}

TEST_F(Deviations, MayTakeAwayWhatALeafrefRefersTo)
{
    const std::string reference = "<leaf name=\"r\"><type name=\"leafref\"><path value=\"../a\"/></type>";
    auto write = [&](const std::string &statements) {
        dir.Add(BASE, Container("users", Ext("class-id", "1") + Leaf("a", "uint16") + reference + Ext("field-id", "3") +
                                             statements + "</leaf>"));
    };
    AddDeviation(dir, FileName("-edge"), "a");
    write(Ext("datatype-id", "9"));
    ASSERT_EQ(Load(BASE), 0u);
    EXPECT_TRUE(log.Has("load deviation mod " + FileName("-edge") + ", ret is 0"));
    EXPECT_FALSE(HasLeaf("a"));
    ASSERT_TRUE(HasLeaf("r"));
    EXPECT_EQ(LeafOf(Node(BASE, "users"), "r")->ucBaseType, 0u);
    EXPECT_EQ(LeafOf(Node(BASE, "users"), "r")->uiDataType, 9u);
    write("");
    TELMYANG_LOCAL_DATA_S *other = YANGLIB_Initial(1, 0, nullptr, dir.Path().c_str(), nullptr);
    EXPECT_NE(YANGLIB_LoadYangModule(other, BASE.c_str(), nullptr), 0u)
        << "an attribute without final type needs a datatype-id";
    YANGLIB_Uninitial(other);
}

TEST_F(Deviations, FileChoice)
{
    const struct {
        const char *what;
        std::vector<std::string> first;
        std::vector<std::string> second;
        bool a; /* the first directory's deviation takes a away, the second one's b */
        bool b;
    } cases[] = {
        {"none", {}, {}, true, true},
        {"first", {""}, {}, false, true},
        {"first wins", {"-x"}, {"-y"}, false, true},
        {"second", {}, {"-y"}, true, false},
        {"never -vs-", {"-a-vs-b", "-b-vs-c", "-c"}, {}, false, true},
        {"never -vs- behind", {"-a", "-b-vs-c"}, {}, false, true},
        {"only -vs- counts as none", {"-a-vs-b"}, {"-y"}, true, false},
    };
    const auto openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    const auto before = openFiles();
    for (const auto &c : cases) {
        ModelDir one;
        ModelDir two;
        one.AddFile(BASE + ".yin", Module(BASE, Container("users", Leaf("a", "int8") + Leaf("b", "int8"))));
        for (const std::string &suffix : c.first)
            AddDeviation(one, FileName(suffix), suffix.find("-vs-") == std::string::npos ? "a" : "nosuch");
        for (const std::string &suffix : c.second)
            AddDeviation(two, FileName(suffix), "b");
        TELMYANG_LOCAL_DATA_S *instance =
            YANGLIB_Initial(1, log.Component(), log.Hooks().data(), one.Path().c_str(), two.Path().c_str());
        log.Clear();
        ASSERT_EQ(YANGLIB_LoadYangModule(instance, BASE.c_str(), nullptr), 0u);
        const KorvTreeNode *users =
            TELMYANG_GetIfYangModuleExist(instance, instance->pstYangCtx, BASE.c_str(), nullptr)->pstOriginTree;
        EXPECT_EQ(LeafOf(users, "a") != nullptr, c.a) << c.what;
        EXPECT_EQ(LeafOf(users, "b") != nullptr, c.b) << c.what;
        EXPECT_EQ(log.Has("can not find deviation for mod " + BASE), c.a && c.b) << c.what;
        YANGLIB_Uninitial(instance);
    }
    EXPECT_EQ(openFiles(), before) << "each search is closed";
}

TEST_F(Deviations, AreFoundInARelativeDirectoryAndBehindAFolderOfSuchAName)
{
    std::filesystem::create_directory(dir.Path() + "/" + FileName("-a.yin"));
    AddDeviation(dir, FileName("-b"), "a");
    const std::filesystem::path before = std::filesystem::current_path();
    const std::filesystem::path path = dir.Path();
    std::filesystem::current_path(path.parent_path());
    TELMYANG_LOCAL_DATA_S *instance = YANGLIB_Initial(1, 0, nullptr, path.filename().c_str(), nullptr);
    std::filesystem::current_path("/");
    EXPECT_EQ(YANGLIB_LoadYangModule(instance, BASE.c_str(), nullptr), 0u);
    const auto *file = TELMYANG_GetIfYangModuleExist(instance, instance->pstYangCtx, BASE.c_str(), nullptr);
    EXPECT_EQ(instance->pstYangCtx->acSearchDir1, path.filename().string()) << "the record keeps what the host gave";
    EXPECT_EQ(LeafOf(file->pstOriginTree, "a"), nullptr);
    YANGLIB_Uninitial(instance);
    std::filesystem::current_path(before);
}

TEST_F(Deviations, FailingDeviationModuleDoesNotFailTheLoad)
{
    dir.AddFile(FileName("-broken.yin"), "<module");
    EXPECT_EQ(Load(BASE), 0u);
    EXPECT_TRUE(HasLeaf("a"));
    EXPECT_TRUE(log.Has("QY_CTX_LoadModule " + FileName("-broken") + " error!"));
    EXPECT_TRUE(log.Has("load deviation mod " + FileName("-broken") + ", ret is 1"));

    /* Once the file is right, another load changes nothing; an unload and a load bring the deviations. */
    AddDeviation(dir, FileName("-broken"), "a");
    EXPECT_EQ(Load(BASE), 0u);
    EXPECT_TRUE(HasLeaf("a"));
    EXPECT_EQ(Unload(BASE), 0u);
    EXPECT_EQ(Load(BASE), 0u);
    EXPECT_FALSE(HasLeaf("a"));
}

TEST_F(Deviations, NameThatDoesNotFitIsNotFound)
{
    AddDeviation(dir, FileName("-edge"), "a");
    char name[8] = {};
    EXPECT_EQ(YANGLIB_FindDeviationName(Local(), dir.Path().c_str(), BASE.c_str(), name, sizeof(name)), 1u);
    char room[256] = {};
    EXPECT_EQ(YANGLIB_FindDeviationName(Local(), (dir.Path() + "/missing").c_str(), BASE.c_str(), room, sizeof(room)),
              1u);
    EXPECT_EQ(YANGLIB_FindDeviationName(Local(), dir.Path().c_str(), std::string(250, 'x').c_str(), room, sizeof(room)),
              1u);
    EXPECT_EQ(YANGLIB_FindDeviationName(Local(), dir.Path().c_str(), BASE.c_str(), room, sizeof(room)), 0u);
    EXPECT_EQ(room, FileName("-edge"));
}

} // namespace
} // namespace test
