/* The life of a process that never ends: the same work over and over, and many modules at once. */
#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "korv_lib_yang.h"
#include "support/models.h"

namespace test {
namespace {

size_t ResidentKilobytes()
{
    size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages * static_cast<size_t>(sysconf(_SC_PAGESIZE)) / 1024;
}

int Rounds()
{
    const char *rounds = std::getenv("KORV_ROUNDS");
    return rounds != nullptr ? std::atoi(rounds) : 1000;
}

class LongLife : public ::testing::Test {
  protected:
    void SetUp() override { local = YANGLIB_Initial(1, 0, nullptr, dir.Path().c_str(), nullptr); }
    void TearDown() override { YANGLIB_Uninitial(local); }

    bool Load(const std::string &module) { return YANGLIB_LoadYangModule(local, module.c_str(), nullptr) == 0; }
    bool Unload(const std::string &module) { return YANGLIB_UnloadYangModule(local, module.c_str(), nullptr) == 0; }

    bool Finds(const std::string &module, const std::string &own, const std::string &xpath)
    {
        const YangXpathLookup lookup = {local, module.c_str(), nullptr, own.c_str(), xpath.c_str(), 0, 0};
        return TELMYANG_KorvFindTreeNodeByXpath(&lookup) != nullptr;
    }

    uint32_t DumpedNodes(const char *module)
    {
        const YangDumpRequest request = {local, module, nullptr, nullptr, 0};
        YangDumpNodeData **records = nullptr;
        uint32_t count = 0;
        if (YANGLIB_DumpYangModuleDataEx(&request, &records, &count) != 0)
            return 0;
        YANGLIB_FreeDumpDataEx(records, count);
        ZOR_Free_F(records, __FILE__, __LINE__);
        return count;
    }

    ModelDir dir;
    TELMYANG_LOCAL_DATA_S *local = nullptr;
};

TEST_F(LongLife, MemoryStaysFlat)
{
    dir.AddExamples();
    std::vector<std::string> modules = {"example-interfaces",        "example-qos",    "example-interface-qos",
                                        "example-interface-shaping", "example-optics", "quelvo-bras-user-manage"};
    int failures = 0;
    const auto round = [&] {
        for (const std::string &module : modules)
            failures += Load(module) ? 0 : 1;
        failures += Finds("example-interfaces", "/interfaces/interface", "if:interfaces/if:interface") ? 0 : 1;
        failures +=
            Finds("example-interface-qos", "/interfaces/interface/traffic", "if:interfaces/if:interface/ifq:traffic")
                ? 0
                : 1;
        failures += Finds("example-interfaces", "/interfaces/nowhere", "if:interfaces/if:nowhere") ? 1 : 0;
        failures += DumpedNodes("example-interfaces") != 0 ? 0 : 1;
        failures += Load("nowhere") ? 1 : 0;
        std::next_permutation(modules.begin(), modules.end()); // another order of loads and unloads each time
        for (const std::string &module : modules)
            failures += Unload(module) ? 0 : 1;
        std::reverse(modules.begin(), modules.end());
    };
    const int rounds = Rounds();
    const int settled = rounds / 10;
    size_t bytes = 0;
    size_t resident = 0;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < rounds; ++i) {
        round();
        if (i >= settled)
            continue;
        bytes = mallinfo2().uordblks;
        resident = ResidentKilobytes();
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf(
        "%d rounds of %zu modules in %.1f s: %zu bytes and %zu kB resident after round %d, %zu and %zu at the end\n",
        rounds, modules.size(), seconds.count(), bytes, resident, settled, mallinfo2().uordblks, ResidentKilobytes());
    EXPECT_EQ(failures, 0);
    EXPECT_LE(mallinfo2().uordblks, bytes + 16384) << "the order of loads decides how far a table has grown";
    EXPECT_EQ(local->uiModuleNum, 0u);
}

TEST_F(LongLife, AThousandModulesAtOnce)
{
    constexpr int COUNT = 1000;
    const auto name = [](int i) { return "m" + std::to_string(i); };
    for (int i = 0; i < COUNT; ++i)
        dir.Add(name(i), Container("c", List("l", "k",
                                             Ext("class-id", std::to_string(i + 1)) +
                                                 Leaf("k", "string", Ext("field-id", "1")))));
    const size_t before = mallinfo2().uordblks;
    for (int i = 0; i < COUNT; ++i)
        ASSERT_TRUE(Load(name(i)));
    EXPECT_EQ(local->uiModuleNum, static_cast<uint32_t>(COUNT));
    std::printf("%d modules registered: %zu bytes each\n", COUNT, (mallinfo2().uordblks - before) / COUNT);
    for (int i = 0; i < COUNT; ++i) {
        EXPECT_TRUE(Finds(name(i), "/c/l", "p:c/p:l"));
        EXPECT_FALSE(Finds(name(i), "/c/x", "p:c/p:x"));
        EXPECT_EQ(DumpedNodes(name(i).c_str()), 2u);
    }
    for (int i = 0; i < COUNT; i += 2)
        EXPECT_TRUE(Unload(name(i)));
    EXPECT_FALSE(Finds("m0", "/c/l", "p:c/p:l"));
    EXPECT_TRUE(Finds("m1", "/c/l", "p:c/p:l"));
    EXPECT_EQ(YANGLIB_UnloadYangModuleAll(local), 0u);
    EXPECT_EQ(local->uiModuleNum, 0u);
}

} // namespace
} // namespace test
