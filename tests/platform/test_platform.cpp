/* The host services: bounded functions at their limits, files found in order, vectors that grow. */
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "korv_platform.h"

namespace {

TEST(BoundedText, FitsOrLeavesTheDestinationEmpty)
{
    char text[5] = "xxxx";
    EXPECT_EQ(strcpy_s(text, sizeof(text), "abcd"), 0);
    EXPECT_STREQ(text, "abcd");
    EXPECT_NE(strcpy_s(text, sizeof(text), "abcde"), 0);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(strncpy_s(text, sizeof(text), "abcdefgh", 4), 0);
    EXPECT_STREQ(text, "abcd");
    EXPECT_NE(strncpy_s(text, sizeof(text), "abcdefgh", 5), 0);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(strncpy_s(text, sizeof(text), "ab", 100), 0);
    EXPECT_EQ(strcat_s(text, sizeof(text), "cd"), 0);
    EXPECT_STREQ(text, "abcd");
    EXPECT_NE(strcat_s(text, sizeof(text), "e"), 0);
    EXPECT_STREQ(text, "");
}

TEST(BoundedText, FormatterRefusesWhatDoesNotFitAndTheCuttingOneCuts)
{
    char text[5];
    EXPECT_EQ(sprintf_s(text, sizeof(text), "%d", 1234), 4);
    EXPECT_STREQ(text, "1234");
    EXPECT_LT(sprintf_s(text, sizeof(text), "%d", 12345), 0);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(snprintf_s(text, sizeof(text), "%d", 12345), 4);
    EXPECT_STREQ(text, "1234");
}

TEST(BoundedMemory, NeverWritesBehindTheDestination)
{
    char memory[] = "abcdef";
    EXPECT_EQ(memcpy_s(memory, 3, "xyz", 3), 0);
    EXPECT_STREQ(memory, "xyzdef");
    EXPECT_NE(memcpy_s(memory, 3, "1234", 4), 0);
    EXPECT_EQ(std::memcmp(memory, "\0\0\0def", 7), 0);
    EXPECT_NE(memset_s(memory, 3, 'q', 5), 0);
    EXPECT_STREQ(memory, "qqqdef");
}

class FindFiles : public ::testing::Test {
  protected:
    void SetUp() override
    {
        dir = std::filesystem::temp_directory_path() / ("korv-find-" + std::to_string(getpid()));
        std::filesystem::create_directories(dir);
        for (const char *name : {"m-c.yin", "m-a.yin", "m-b.yin", "other.yin", "m-a.yang"})
            std::ofstream(dir / name) << "x";
    }
    void TearDown() override { std::filesystem::remove_all(dir); }

    std::vector<std::string> Find(const char *pattern)
    {
        std::vector<std::string> names;
        XUR_VFS_FIND_S find = {};
        for (uint32_t ret = XUR_VFS_FindFirst(pattern, &find); ret == 0; ret = XUR_VFS_FindNext(&find))
            names.emplace_back(find.acFileName);
        if (find.pHandle != nullptr)
            XUR_VFS_FindClose(&find);
        return names;
    }

    std::filesystem::path dir;
};

TEST_F(FindFiles, ReportsMatchesInNameOrderAndLeavesTheWorkingDirectory)
{
    const auto before = std::filesystem::current_path();
    ASSERT_EQ(XUR_VFS_SetWorkPath(dir.c_str()), 0u);
    EXPECT_EQ(Find("m-*.yin"), (std::vector<std::string>{"m-a.yin", "m-b.yin", "m-c.yin"}));
    EXPECT_EQ(Find("none*.yin"), std::vector<std::string>{});
    EXPECT_EQ(std::filesystem::current_path(), before);
    EXPECT_NE(XUR_VFS_SetWorkPath((dir / "missing").c_str()), 0u);
    EXPECT_NE(XUR_VFS_SetWorkPath((dir / "m-a.yin").c_str()), 0u);
    EXPECT_EQ(Find("m-a.*"), (std::vector<std::string>{"m-a.yang", "m-a.yin"})) << "a refused path changes nothing";
}

TEST_F(FindFiles, ReportsRegularFilesAlone)
{
    std::filesystem::create_directory(dir / "m-0.yin");
    std::filesystem::create_directory_symlink("m-0.yin", dir / "m-1.yin");
    std::filesystem::create_symlink("m-2.yin", dir / "m-2.yin");
    std::filesystem::create_symlink("nowhere", dir / "m-3.yin");
    ASSERT_EQ(mkfifo((dir / "m-4.yin").c_str(), 0600), 0);
    std::filesystem::create_symlink("other.yin", dir / "m-5.yin");
    ASSERT_EQ(XUR_VFS_SetWorkPath(dir.c_str()), 0u);
    EXPECT_EQ(Find("m-*.yin"), (std::vector<std::string>{"m-5.yin", "m-a.yin", "m-b.yin", "m-c.yin"}));
}

TEST_F(FindFiles, RelativeDirectoryStaysWhereItWasAskedFor)
{
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(dir.parent_path());
    const std::string name = dir.filename();
    EXPECT_EQ(XUR_VFS_IsDirExist(name.c_str()), 1u);
    std::filesystem::current_path("/");
    EXPECT_EQ(XUR_VFS_IsDirExist(dir.c_str()), 1u);
    EXPECT_EQ(XUR_VFS_SetWorkPath(name.c_str()), 0u);
    EXPECT_EQ(Find("m-a.yin"), std::vector<std::string>{"m-a.yin"});
    EXPECT_EQ(XUR_VFS_IsDirExist(name.c_str()), 0u) << "is asked for anew";
    EXPECT_NE(XUR_VFS_SetWorkPath(name.c_str()), 0u);
    EXPECT_NE(XUR_VFS_SetWorkPath(""), 0u);
    EXPECT_EQ(XUR_VFS_SetWorkPath("usr"), 0u) << "never asked for: where the process works";
    std::filesystem::current_path(before);
}

TEST(Vector, GrowsBeyondItsFirstCapacity)
{
    int items[100];
    VEC_VECTOR_S *vector = VEC_VectorInit_F(1, 0, __FILE__, __LINE__);
    ASSERT_NE(vector, nullptr);
    for (uint32_t i = 0; i < 100; ++i)
        EXPECT_EQ(VEC_VectorSet(vector, &items[i]), i);
    EXPECT_EQ(VEC_VectorCount(vector), 100u);
    for (uint32_t i = 0; i < 100; ++i)
        EXPECT_EQ(vector->ppvItem[i], &items[i]);
    EXPECT_EQ(VEC_VectorFree_F(vector), 0u);
}

TEST(List, DeleteUnlinksAndCounts)
{
    DLL_S list = {};
    DLL_NODE_S nodes[2] = {};
    auto *head = reinterpret_cast<DLL_NODE_S *>(&list);
    list = {&nodes[0], &nodes[1], 2};
    nodes[0] = {&nodes[1], head};
    nodes[1] = {head, &nodes[0]};
    DLL_Delete(&list, &nodes[0]);
    EXPECT_EQ(list.pstNext, &nodes[1]);
    DLL_Delete(&list, &nodes[1]);
    EXPECT_EQ(list.pstNext, head);
    EXPECT_EQ(list.pstPrev, head);
    EXPECT_EQ(list.uiCount, 0u);
}

} // namespace
