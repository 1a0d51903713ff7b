/* ids: what the registry keeps over the life of a model, and what it refuses. */
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <tuple>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

std::string Class(const std::string &id)
{
    return Ext("class-id", id);
}

std::string Field(const std::string &name, const std::string &id)
{
    return Leaf(name, "string", Ext("field-id", id));
}

std::string Revision(const std::string &date)
{
    return "<revision date=\"" + date + "\"/>\n";
}

/* The class 0x10 with the class 0x11 in it, whose part `state` is; `more` stands in the latter. */
std::string Slots(const std::string &more, const std::string &boxStatements = Ext("tlmt-sample-id", "5"))
{
    return Container(
        "box", Class("0x10") + boxStatements +
                   List("slot", "n",
                        Class("0x11") + Field("n", "1") + more + Container("state", Class("0x11") + Field("up", "3"))));
}

std::string Fan(const std::string &id = "0x12")
{
    return Container("fan", Class(id) + Ext("ancestor-key-fid", "1", Ext("field-id", "9")) + Field("rpm", "1"));
}

/* A directory with the module m and its registry. */
class Keeper {
  public:
    explicit Keeper(const std::string &body) { Change(body); }

    void Change(const std::string &body) { dir.Add("m", body); }
    Result Run(const std::string &words) const { return RunShell("korv-inspect ids " + words + " -d " + dir.Path()); }
    Result Lock(const std::string &more = "") const { return Run("lock m " + more); }

    std::string Registry() const
    {
        std::ostringstream text;
        text << std::ifstream(dir.Path() + "/korv-ids.json", std::ios::binary).rdbuf();
        return text.str();
    }

    void SetRegistry(const std::string &text) { dir.AddFile("korv-ids.json", text); }

    /* "RULE TEXT" of each finding. */
    std::vector<std::string> Findings(const std::string &words = "check m") const
    {
        const Result result = Run(words + " --format json");
        rapidjson::Document json;
        json.Parse(result.out.c_str());
        std::vector<std::string> found;
        if (json.HasParseError() || !json.HasMember("findings"))
            return {result.err};
        for (const rapidjson::Value &finding : json["findings"].GetArray())
            found.push_back(std::string(finding["rule"].GetString()) + " " + finding["text"].GetString());
        EXPECT_EQ(result.exitCode, found.empty() ? 0 : 1);
        return found;
    }

    ModelDir dir;
};

using Texts = std::vector<std::string>;

/* A registry with these lines. */
std::string RegistryOf(const Texts &ids, const Texts &ranges = {})
{
    const auto joined = [](const Texts &lines) {
        std::string text;
        for (const std::string &line : lines)
            text += (text.empty() ? "\n    {" : ",\n    {") + line + "}";
        return text.empty() ? text : text + "\n  ";
    };
    return "{\n  \"version\": 1,\n  \"ranges\": [" + joined(ranges) + "],\n  \"ids\": [" + joined(ids) + "]\n}\n";
}

const Texts LOCKED = {R"("class": "0x10", "path": "/m:box", "sample": "0x5")",
                      R"("class": "0x11", "path": "/m:box/slot")",
                      R"("class": "0x11", "path": "/m:box/slot/state")",
                      R"("class": "0x11", "field": 1, "path": "/m:box/slot/n")",
                      R"("class": "0x11", "field": 3, "path": "/m:box/slot/state/up")",
                      R"("class": "0x12", "path": "/m:box/slot/fan")",
                      R"("class": "0x12", "field": 1, "path": "/m:box/slot/fan/rpm")",
                      R"("class": "0x12", "key": 9, "path": "/m:box/slot/n")"};

TEST(InspectIds, LockWritesALineForEachIdAndNothingWhenNothingIsNew)
{
    const Keeper keeper(Slots(Fan()));
    EXPECT_EQ(keeper.Run("check m").exitCode, 3) << "there is no registry";
    const Result first = keeper.Lock();
    EXPECT_EQ(first.exitCode, 0) << first.err;
    EXPECT_NE(
        first.out.find(
            "4 classes, 3 attributes, 1 ancestor key, 0 ranges; reserved: 0 classes, 0 attributes, 0 ancestor keys\n"),
        std::string::npos)
        << first.out;
    EXPECT_EQ(keeper.Registry(), RegistryOf(LOCKED));
    EXPECT_EQ(keeper.Findings(), Texts{});
    RunShell("touch -d 2020-01-01 " + keeper.dir.Path() + "/korv-ids.json");
    EXPECT_NE(keeper.Lock().out.find("(as before)"), std::string::npos);
    EXPECT_EQ(RunShell("find " + keeper.dir.Path() + " -name 'korv-ids.json*' ! -newermt 2020-01-02 | wc -l").out,
              "1\n")
        << "the file is not written anew";
}

TEST(InspectIds, ModulesThatAugmentAddToTheClassesOfOthers)
{
    Keeper keeper(Slots(""));
    keeper.dir.Add("n", "<augment target-node=\"/m:box/m:slot\">" + Field("depth", "4") + Fan() + "</augment>", "m");
    EXPECT_EQ(keeper.Run("lock n").exitCode, 0);
    EXPECT_EQ(keeper.Registry(), RegistryOf({R"("class": "0x11", "path": "/m:box/slot")",
                                             R"("class": "0x11", "field": 4, "path": "/m:box/slot/n:depth")",
                                             R"("class": "0x12", "path": "/m:box/slot/n:fan")",
                                             R"("class": "0x12", "field": 1, "path": "/m:box/slot/n:fan/rpm")",
                                             R"("class": "0x12", "key": 9, "path": "/m:box/slot/n")"}));
    EXPECT_EQ(keeper.Lock().exitCode, 0);
    EXPECT_EQ(keeper.Findings("check --all"), Texts{});
    /* A part of a class of a module that is not looked at, whose range it is in. */
    keeper.dir.Add("p", "<augment target-node=\"/m:box/m:slot\">" + Container("part", Class("0x11")) + "</augment>",
                   "m");
    EXPECT_EQ(keeper.Run("lock --range m=0x10..0x1f --range p=0x20..0x2f").exitCode, 0);
    EXPECT_EQ(keeper.Findings("check p"), Texts{"not-locked /m:box/slot/p:part: class id 0x11 is not in the registry"});
    EXPECT_EQ(keeper.Run("lock p p").exitCode, 0);
    RunShell("rm " + keeper.dir.Path() + "/p.yin");
    EXPECT_EQ(keeper.Run("lock --all").exitCode, 0);
    /* A module that has gone takes its ids with it when all are looked at; one that is elsewhere keeps them. */
    const ModelDir elsewhere;
    RunShell("mv " + keeper.dir.Path() + "/n.yin " + elsewhere.Path());
    EXPECT_EQ(keeper.Findings("check --all --install-path " + elsewhere.Path()), Texts{});
    EXPECT_EQ(keeper.Findings("check m"), Texts{});
    EXPECT_EQ(keeper.Findings("check --all").size(), 2U) << "the attribute and the class";
    EXPECT_EQ(keeper.Run("lock --all").exitCode, 0);
    EXPECT_NE(LineWith(keeper.Registry(), "n:fan/rpm").find("\"gone\": \"\""), std::string::npos);
    EXPECT_EQ(keeper.Findings("check --all"), Texts{});
}

TEST(InspectIds, CheckSaysWhatChangedAndLockTakesOnlyWhatIsNewOrGone)
{
    struct Case {
        std::string body;
        Texts findings;
        bool isTaken;
    };
    const std::string node = "/m:box/slot/";
    const Case cases[] = {
        {Slots(Fan() + Field("x", "2")),
         {"not-locked " + node + "x: attribute id 2 of class 0x11 is not in the registry"},
         true},
        {Slots(Fan() + Container("led", Class("0x13") + Field("on", "1"))),
         {"not-locked " + node + "led: class id 0x13 is not in the registry"},
         true},
        {Slots(Fan() + Container("more", Class("0x11"))),
         {"not-locked " + node + "more: class id 0x11 is not in the registry"},
         true},
        {Slots(""),
         {"not-reserved " + node + "fan: class id 0x12 is in the registry, and no node of the models has it"},
         true},
        {Slots(Container("fan", Field("rpm", "1"))),
         {"missing " + node + "fan: class id 0x12 is in the registry, and the node has none"},
         false},
        {Slots(Container("fan", Class("0x12") + Field("rpm", "1"))),
         {"missing the key " + node + "n: ancestor key 9 of class 0x12 is in the registry, and the node has none"},
         false},
        {Slots(Fan("0x13")), {"changed " + node + "fan: class id 0x13 is 0x12 in the registry"}, false},
        {Slots(Fan("0x10")),
         {"twice " + node + "fan: class id 0x10 is also that of /m:box; the registry has 0x12 for this one"},
         false},
        {Slots(Container("led", Class("0x12") + Field("rpm", "2"))),
         {"moved " + node + "led: class id 0x12 is that of " + node + "fan in the registry",
          "not-locked " + node + "led/rpm: attribute id 2 of class 0x12 is not in the registry",
          "not-reserved " + node + "fan: class id 0x12", "not-reserved " + node + "fan/rpm: attribute id 1"},
         false},
        {Slots(Fan() + Container("a", Class("0x20")) + Container("b", Class("0x20"))),
         {"not-locked " + node + "a: class id 0x20",
          "twice " + node + "b: class id 0x20 is also that of " + node + "a"},
         false},
        {Slots(Container("led", Class("0x12")) + Fan()),
         {"twice " + node + "led: class id 0x12 is also that of " + node + "fan, which has it in the registry"},
         false},
        {Slots(Fan(), Ext("tlmt-sample-id", "6")),
         {"sample-id /m:box: class id 0x10 has the sample id 0x6, and 0x5 in the registry"},
         false},
    };
    for (const Case &change : cases) {
        Keeper keeper(Slots(Fan()));
        ASSERT_EQ(keeper.Lock().exitCode, 0);
        keeper.Change(change.body);
        const Texts found = keeper.Findings();
        bool isSaid = found.size() >= change.findings.size();
        for (size_t i = 0; isSaid && i < change.findings.size(); ++i)
            isSaid = found[i].starts_with(change.findings[i]);
        EXPECT_TRUE(isSaid) << change.findings.front() << "\n"
                            << keeper.Run("check m").out << keeper.Run("check m").err;
        const std::string before = keeper.Registry();
        EXPECT_EQ(keeper.Lock().exitCode, change.isTaken ? 0 : 1) << change.findings.front();
        EXPECT_EQ(keeper.Registry() == before, !change.isTaken) << change.findings.front();
        EXPECT_EQ(keeper.Findings().empty(), change.isTaken) << change.findings.front();
        const bool isTwice = change.findings.back().starts_with("twice");
        EXPECT_EQ(keeper.Lock("--accept").exitCode, isTwice ? 1 : 0) << change.findings.front();
        EXPECT_EQ(keeper.Findings().empty(), !isTwice) << change.findings.front();
    }
}

TEST(InspectIds, AnIdIsNotTakenFromWhoeverHasIt)
{
    Keeper keeper(Container("a", Class("0x10")));
    keeper.dir.Add("n", Container("b", Class("0x10")));
    ASSERT_EQ(keeper.Lock().exitCode, 0);
    const std::string before = keeper.Registry();
    const Result result = keeper.Run("lock n --accept");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.err.find("would contradict itself: class id 0x10 stands for /m:a and for /n:b"), std::string::npos)
        << result.err;
    EXPECT_EQ(keeper.Registry(), before);
    /* Parts of one class, which are two when the node above them is none. */
    const std::string parts = Container("b", Class("0x10")) + Container("c", Class("0x10"));
    keeper.Change(Container("a", Class("0x10") + parts));
    ASSERT_EQ(keeper.Lock().exitCode, 0);
    keeper.Change(Container("a", parts));
    EXPECT_EQ(keeper.Findings("lock m --accept").front(), "twice /m:a/c: class id 0x10 is also that of /m:a/b");
}

TEST(InspectIds, AnIdThatWentIsReservedInAllLaterRevisions)
{
    Keeper keeper(Revision("2026-01-01") + Slots(Field("x", "2")));
    ASSERT_EQ(keeper.Lock().exitCode, 0);
    keeper.Change(Revision("2026-02-01") + Slots(""));
    ASSERT_EQ(keeper.Lock().exitCode, 0);
    const std::string reserved = R"({"class": "0x11", "field": 2, "path": "/m:box/slot/x", "gone": "2026-02-01"})";
    EXPECT_NE(LineWith(keeper.Registry(), reserved), "") << keeper.Registry();
    keeper.Change(Revision("2026-03-01") + Slots(Field("y", "4")));
    ASSERT_EQ(keeper.Lock().exitCode, 0);
    EXPECT_NE(LineWith(keeper.Registry(), reserved), "") << "the revision stays";
    keeper.Change(Revision("2026-04-01") + Slots(Field("z", "2")));
    const Result reused = keeper.Run("check m");
    EXPECT_EQ(reused.exitCode, 1);
    EXPECT_NE(LineWith(reused.out, "/m.yin:")
                  .find("/m:box/slot/z: attribute id 2 of class 0x11 is reserved since revision "
                        "2026-02-01 in the registry: it was that of /m:box/slot/x [reused]"),
              std::string::npos)
        << reused.out;
    EXPECT_EQ(keeper.Lock().exitCode, 1);
    /* The node itself may come back. */
    keeper.Change(Revision("2026-05-01") + Slots(Field("x", "2") + Field("y", "4")));
    EXPECT_EQ(keeper.Lock().exitCode, 0);
    EXPECT_EQ(LineWith(keeper.Registry(), "gone"), "");
    /* Not while another node has its id, or the node another id. */
    for (const std::string &now : {Field("z", "2"), Field("z", "2") + Field("x", "5")}) {
        keeper.Change(Slots(now + Field("y", "4")));
        ASSERT_EQ(keeper.Lock("--accept").exitCode, 0);
        keeper.Change(Slots(Field("x", "2") + Field("y", "4")));
        EXPECT_EQ(keeper.Findings().front(),
                  "moved /m:box/slot/x: attribute id 2 of class 0x11 is that of /m:box/slot/z in the registry" +
                      std::string(now == Field("z", "2") ? "" : ", and this one has 5"));
        EXPECT_EQ(keeper.Lock().exitCode, 1);
    }
}

TEST(InspectIds, ADamagedRegistryIsRefusedWithThePlace)
{
    const auto with = [](const std::string &line) {
        Texts lines = LOCKED;
        lines.push_back(line);
        return RegistryOf(lines);
    };
    const std::string good = RegistryOf(LOCKED);
    const std::string fan = R"("class": "0x12", "path": "/m:box/slot/fan")";
    const std::pair<std::string, std::string> cases[] = {
        {"<<<<<<< HEAD\n" + good, ":1:1: '<<<<<<<' is the mark of a merge conflict"},
        {good.substr(0, good.size() / 2), ":8:53: Missing a closing quotation mark"},
        {good.substr(0, good.size() - 5), ":13:2: Missing a comma or ']'"},
        {with(LOCKED[3]), ":13:5: attribute id 1 of class 0x11 stands twice for /m:box/slot/n (line 8)"},
        {with(LOCKED[3] + R"(, "gone": "")"),
         ":13:5: attribute id 1 of class 0x11 stands twice for /m:box/slot/n (line 8)"},
        {with(fan), ":13:5: class id 0x12 stands twice for /m:box/slot/fan (line 10)"},
        {with(R"("class": "0x12", "path": "/m:other")"),
         ":13:5: class id 0x12 stands for /m:box/slot/fan and for /m:other (line 10)"},
        {with(R"("class": "0x13", "path": "/m:box/slot/fan")"),
         ":13:5: /m:box/slot/fan has the class ids 0x12 and 0x13 (line 10)"},
        {with(R"("class": "0x11", "field": 1, "path": "/m:box/slot/x")"),
         ":13:5: attribute id 1 of class 0x11 stands for /m:box/slot/n and for /m:box/slot/x (line 8)"},
        {with(R"("class": "0x11", "field": 7, "path": "/m:box/slot/n")"),
         ":13:5: /m:box/slot/n has the attribute ids 1 and 7 in class 0x11 (line 8)"},
        {with(R"("class": "0x63", "field": 1, "path": "/m:x")"), ":13:5: attribute id 1 of class 0x63 has no class"},
        {with(R"("class": "0x11", "field": 300, "path": "/m:x")"), ":13:32: 'field' is no 300"},
        {with(R"("class": "17", "path": "/m:x")"), ":13:19: 'class' is no '17'"},
        {with(R"("class": "0x11", "feild": 3)"), ":13:30: a registry has no 'feild' here"},
        {with(R"("class": "0x11", "class": "0x11")"), ":13:30: 'class' stands twice"},
        {with(R"("class": "0x14", "path": "/x/m:y")"),
         ":13:40: a class has 'class' and a 'path' that begins with '/MODULE:'"},
        {"{\"version\": 2, \"ranges\": [], \"ids\": []}", ":1:13: a registry of version 2 is none of this program's"},
        {"{\"version\": 1, \"ids\": []}", ":1:26: a registry has 'version', 'ranges' and 'ids'"},
        {RegistryOf({}, {R"("module": "a", "first": "0x9", "last": "0xc")",
                         R"("module": "b", "first": "0x1", "last": "0x9")"}),
         ":5:5: the ranges 0x1..0x9 of 'b' and 0x9..0xc of 'a' overlap (line 4)"},
        {RegistryOf({}, {R"("module": "a", "first": "0x9", "last": "0x8")"}),
         ":4:51: this range ends before it begins"},
        {RegistryOf({}, {R"("module": "", "first": "0x9", "last": "0x9")"}),
         ":4:50: a range has 'module', 'first' and 'last'"},
    };
    Keeper keeper(Slots(Fan()));
    for (const auto &[text, error] : cases) {
        keeper.SetRegistry(text);
        for (const char *words : {"list", "check m", "lock m --accept"}) {
            const Result result = keeper.Run(words);
            EXPECT_EQ(result.exitCode, 3) << error;
            EXPECT_NE(LineWith(result.err, keeper.dir.Path() + "/korv-ids.json" + error), "") << error << "\n"
                                                                                              << result.err;
        }
        EXPECT_EQ(keeper.Registry(), text);
    }
}

TEST(InspectIds, NewClassIdsComeFromTheRangesOfTheirModule)
{
    Keeper keeper(Slots(""));
    EXPECT_EQ(keeper.Run("lock --range m=0x10..0x1f --range other=0x20..0x2f").exitCode, 0);
    const Result overlap = keeper.Run("lock --range third=0x1f..0x20");
    EXPECT_EQ(overlap.exitCode, 1);
    EXPECT_EQ(overlap.err,
              "korv-inspect: --range: the directories have no module 'third'\n"
              "korv-inspect: the range 0x1f..0x20 of 'third' overlaps 0x10..0x1f of 'm' (line 4): nothing is "
              "written\n");
    EXPECT_EQ(keeper.Run("lock m --range m=0x10..0x1f").exitCode, 0) << "the same once more";
    keeper.Change(Slots(Container("a", Class("0x20")) + Container("b", Class("0x30"))));
    EXPECT_EQ(keeper.Findings(), (Texts{"range /m:box/slot/a: class id 0x20 is in the range of module 'other'",
                                        "range /m:box/slot/b: class id 0x30 is in no range of module 'm'"}));
    const Result list = keeper.Run("list other none");
    EXPECT_EQ(list.out, "range 0x20..0x2f  other\n");
    EXPECT_EQ(list.err, "korv-inspect: the registry has nothing of module 'none'\n");
    for (const char *wrong : {"m", "m=1", "=1..2", "m=0..2", "m=3..2", "m=1..x"})
        EXPECT_EQ(keeper.Lock(std::string("--range ") + wrong).exitCode, 2) << wrong;
}

TEST(InspectIds, ListShowsIdsAndPaths)
{
    Keeper keeper("");
    keeper.SetRegistry(RegistryOf({R"("class": "0x11", "path": "/m:b", "sample": "0x5")",
                                   R"("class": "0x11", "field": 2, "path": "/m:b/x", "gone": "2026-02-01")",
                                   R"("class": "0x11", "key": 9, "path": "/n:a/k")",
                                   R"("class": "0x12", "path": "/n:a", "gone": "")"}));
    const std::pair<const char *, const char *> cases[] = {
        {"",
         "0x11     /m:b  sample 0x5\n  2      /m:b/x  reserved since 2026-02-01\n  key 9  /n:a/k\n"
         "0x12     /n:a  reserved\n"},
        {" --by path",
         "/m:b    0x11  sample 0x5\n/m:b/x  0x11 2  reserved since 2026-02-01\n/n:a    0x12  reserved\n"
         "/n:a/k  0x11 key 9\n"},
        {" n", "0x12  /n:a  reserved\n"},
        {" --format csv",
         "kind,class_id,field_id,path,sample_id,reserved,gone\nclass,17,0,/m:b,5,false,\n"
         "leaf,17,2,/m:b/x,0,true,2026-02-01\nancestor-key,17,9,/n:a/k,0,false,\n"
         "class,18,0,/n:a,0,true,\n"},
    };
    for (const auto &[words, out] : cases)
        EXPECT_EQ(keeper.Run(std::string("list") + words).out, out) << words;
}

TEST(InspectIds, WhatCannotBeDoneIsSaidAndLeavesNothing)
{
    const Keeper keeper(Slots(""));
    const std::tuple<const char *, int, const char *> cases[] = {
        {"lok m", 2, "there is no action 'lok': did you mean 'lock'?"},
        {"lock", 2, "name the modules, or give --all"},
        {"check m --accept", 2, "--accept is an option of 'ids lock'"},
        {"check m --format csv", 2, "'ids list' alone writes csv"},
        {"lock m none", 3, "module 'none' cannot be loaded"},
        {"lock m --registry no/such/dir/ids.json", 1, "cannot write 'no/such/dir/ids.json': No such file or directory"},
        {"lock m --registry examples", 3, "cannot read the registry 'examples'"},
    };
    for (const auto &[words, exitCode, text] : cases) {
        const Result result = keeper.Run(words);
        EXPECT_EQ(result.exitCode, exitCode) << words << result.out;
        EXPECT_NE(LineWith(result.err, text), "") << result.err;
        EXPECT_EQ(keeper.Registry(), "") << words;
    }
}

} // namespace
