/* Instances are independent: each is driven by a thread of its own, at the same time, on the same and on different models. */
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "korv_lib_yang.h"

namespace {

constexpr int ROUNDS = 20;

uint32_t IsOpen(uint64_t, uint32_t debugType)
{
    return debugType == 2;
}

void CountLine(uint64_t component, uint32_t, const char *, const char *)
{
    ++*reinterpret_cast<uint64_t *>(component);
}

uint32_t CountNode(void *user, KorvTreeNode *)
{
    ++*static_cast<uint32_t *>(user);
    return 0;
}

/* One instance and what its thread found. */
struct Drive {
    TELMYANG_LOCAL_DATA_S *local = nullptr;
    std::vector<std::string> modules;
    uint64_t lines = 0;
    uint32_t nodes = 0;
    uint32_t failures = 0;

    void Start()
    {
        const TELMYANG_DEBUG_HOOK_S hooks[KORV_LOG_LEVEL_NUM] = {
            {0, CountLine, IsOpen}, {1, CountLine, IsOpen}, {2, CountLine, IsOpen}, {3, CountLine, IsOpen}};
        local = YANGLIB_Initial(1, reinterpret_cast<uint64_t>(&lines), hooks, KORV_SOURCE_DIR "/examples/yin", nullptr);
    }

    void DumpAndFree(const std::string &module)
    {
        const YangDumpRequest request = {local, module.c_str(), nullptr, nullptr, 0};
        YangDumpNodeData **records = nullptr;
        uint32_t count = 0;
        (void)YANGLIB_DumpYangModuleDataEx(&request, &records, &count);
        nodes += count;
        YANGLIB_FreeDumpDataEx(records, count);
        ZOR_Free_F(records, __FILE__, __LINE__);
    }

    void Run()
    {
        for (int round = 0; round < ROUNDS; ++round) {
            for (const std::string &module : modules)
                failures += YANGLIB_LoadYangModule(local, module.c_str(), nullptr) != 0 ? 1 : 0;
            const YangPathRequest request = {"example-interfaces", nullptr, "/interfaces/interface",
                                             "if:interfaces/if:interface"};
            failures += YANGLIB_TravelYangModule(local, &request, &nodes, CountNode, CountNode) != 0 ? 1 : 0;
            for (const std::string &module : modules)
                DumpAndFree(module);
            failures += YANGLIB_LoadYangModule(local, "no-such-module", nullptr) == 0 ? 1 : 0;
            for (const std::string &module : modules)
                failures += YANGLIB_UnloadYangModule(local, module.c_str(), nullptr) != 0 ? 1 : 0;
        }
    }
};

TEST(Threads, DriveInstancesOfTheirOwn)
{
    Drive drives[3];
    drives[0].modules = {"example-interfaces", "example-qos", "quelvo-bras-user-manage"};
    drives[1].modules = drives[0].modules;
    drives[2].modules = {"example-interface-shaping", "example-interfaces", "example-optics"};
    for (Drive &drive : drives)
        drive.Start();
    std::vector<std::thread> threads;
    for (Drive &drive : drives)
        threads.emplace_back([&drive] { drive.Run(); });
    for (std::thread &thread : threads)
        thread.join();
    for (Drive &drive : drives) {
        EXPECT_EQ(drive.failures, 0u);
        EXPECT_EQ(drive.local->uiModuleNum, 0u);
        YANGLIB_Uninitial(drive.local);
    }
    EXPECT_EQ(drives[0].nodes, drives[1].nodes);
    EXPECT_EQ(drives[0].lines, drives[1].lines);
    EXPECT_GT(drives[2].nodes, 0u);
}

} // namespace
