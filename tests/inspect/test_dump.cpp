/* dump and modules: flat records, and what is loaded. */
#include <gtest/gtest.h>

#include <algorithm>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

TEST(InspectDump, RecordsComeLevelByLevelWithTheirPaths)
{
    const rapidjson::Document json = Json(InspectExamples({"dump", "example-qos", "--format", "json"}));
    std::vector<std::string> paths;
    for (const rapidjson::Value &record : json.GetArray())
        paths.emplace_back(record["path"].GetString());
    EXPECT_EQ(paths,
              (std::vector<std::string>{"/qos", "/qos/policy", "/qos/queues", "/qos/policy/rule", "/qos/queues/queue",
                                        "/qos/policy/rule/action", "/qos/queues/queue/settings",
                                        "/qos/policy/rule/action/drop", "/qos/policy/rule/action/mark"}));
    EXPECT_EQ(Compact(json[6]),
              R"({"name":"settings","path":"/qos/queues/queue/settings","class_id":8208,"sample_id":0,"self_keys":[1],)"
              R"("ancestor_keys":[],"leaves":[{"name":"name","path":"/qos/queues/queue/settings/name","mask":2,)"
              R"("field_id":1,"data_type":0,"index_map":0,"range":null,)"
              R"("place":{"file":"examples/yin/example-qos.yin","line":94,"column":11}},{"name":"depth",)"
              R"("path":"/qos/queues/queue/settings/depth","mask":2,"field_id":2,"data_type":0,"index_map":0,)"
              R"("range":[4096,4096],"place":{"file":"examples/yin/example-qos.yin","line":98,"column":11}}],)"
              R"("task_id":121,"place":{"file":"examples/yin/example-qos.yin","line":91,"column":9}})");
}

TEST(InspectDump, CsvHasARowALeaf)
{
    const Result result = InspectExamples({"dump", "example-interfaces", "--format", "csv"});
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 1 + 23);
    EXPECT_EQ(result.out.find("node_path,class_id,sample_id,self_keys,ancestor_keys,leaf_path,leaf,mask,field_id,"
                              "data_type,index_map,range_min,range_max\n"),
              0U);
    EXPECT_EQ(LineWith(result.out, "/history,"),
              "/interfaces/interface/address/history,4100,0,1,20 21,/interfaces/interface/address/history/number,"
              "number,2,1,0,0,0,65535");
    EXPECT_EQ(LineWith(result.out, ",speed,"),
              "/interfaces/interface,4097,82,1,,/interfaces/interface/speed,speed,2,7,0,0,0,18446744073709551615");
}

TEST(InspectDump, TextShowsWhatALeafDescriptorHolds)
{
    const Result result = InspectExamples({"dump", "example-interfaces"});
    EXPECT_EQ(LineWith(result.out, "/interfaces/interface  "),
              "/interfaces/interface  class 0x1001  sample 0x52  keys 1");
    EXPECT_EQ(LineWith(result.out, "  name  "),
              "  name             mask 0x22  field   1  datatype   0  index map   2  range 0..0");
}

TEST(InspectDump, DumpsTheTreesOfAnAugment)
{
    const std::string qos = "example-interface-qos";
    EXPECT_EQ(InspectExamples({"dump", qos, "--augment", "0", "--self"}).out,
              "/traffic  class 0x3001  sample 0x0  ancestor keys 10\n"
              "  policy   mask 0x02  field   1  datatype   0  index map   0  range 0..0\n"
              "  matched  mask 0x02  field   2  datatype   0  index map   0  range 0..18446744073709551615\n");
    const rapidjson::Document target = Json(InspectExamples({"dump", qos, "--augment", "1", "--format", "json"}));
    EXPECT_EQ(target.Size(), 12U);
    EXPECT_EQ(Compact(Json(InspectExamples({"dump", qos, "--augment", "1", "--self", "--format", "json"}))), "[]");
    EXPECT_EQ(InspectExamples({"dump", qos}).out, "");
    EXPECT_EQ(InspectExamples({"dump", qos, "--augment", "2"}).exitCode, 1);
    EXPECT_EQ(InspectExamples({"dump", qos, "--self"}).exitCode, 2);
}

TEST(InspectModules, ListsWhatIsLoaded)
{
    const Result text = InspectExamples({"modules", "example-interface-qos@x", "--load", "quelvo-bras-user-manage"});
    EXPECT_EQ(text.out, R"(quelvo-bras-user-manage, revision 2026-04-07, task id 130
  own tree: 3 nodes (2 classes), 5 leaves
example-interface-qos, revision 2026-05-11, registered as @x
  own tree: none
  augment 0 of /if:interfaces/if:interface
    self tree: 1 node (1 class), 2 leaves
    target tree: 12 nodes (7 classes), 26 leaves
  augment 1 of /if:interfaces/if:interface/if:mode
    self tree: none
    target tree: 12 nodes (7 classes), 26 leaves
)");
    const rapidjson::Document json = Json(InspectExamples({"modules", "example-interfaces", "--format", "json"}));
    EXPECT_EQ(Compact(json), R"([{"name":"example-interfaces","revision":"2026-09-01","registered_revision":null,)"
                             R"("task_id":120,"origin":{"nodes":10,"classes":6,"leaves":23},"augments":[],)"
                             R"("place":{"file":"examples/yin/example-interfaces.yin","line":2,"column":1}}])");
}

} // namespace
