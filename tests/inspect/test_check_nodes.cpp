/* check: the rules of YANG for the nodes of a module, by models whose lines say what is found there. */
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

struct Model {
    const char *file; /* without ".yang" */
    const char *text; /* "// RULE": a finding of that rule at the line; "//: RULE": when module 'changes' is loaded */
};

const Model MODELS[] = {
    {"lists", R"y(module lists {
  yang-version 1.1;
  namespace urn:lists;
  prefix l;
  import groupings { prefix g; }
  include lists-more;
  grouping keyless {
    list group { // list-without-key
      leaf a { type string; }
    }
  }
  grouping keyed {
    list entry {
      key id;
      unique "sub/a l:b"; // unique-config
      unique "sub/a";
      leaf id { type empty; }
      leaf b { type string; config false; }
      container sub { leaf a { type string; } }
    }
  }
  container first { uses keyless; }
  container second { uses keyless; }
  container third { uses g:foreign; } // list-without-key mandatory-default-case
  container state {
    config false;
    uses keyless;
    uses keyed;
  }
  container refined {
    uses keyed {
      refine entry/id { config false; } // key-config
    }
  }
  container whole {
    uses keyed {
      refine entry { config false; }
    }
  }
  list conditional {
    key "one two three";
    leaf one { type string; when "true()"; } // conditional-key
    leaf two { type string; }
    uses g:key { when "true()"; } // conditional-key
    uses g:no-key { when "true()"; }
  }
  rpc ask { input { list free { leaf a { type string; } } } }
}
)y"},
    {"lists-more", R"y(submodule lists-more {
  yang-version 1.1;
  belongs-to lists { prefix lm; }
  list included { // list-without-key
    unique "lm:how/lm:one/lm:a lm:how/lm:two/lm:b"; // unique-config
    choice how {
      case one { leaf a { type string; } }
      case two { leaf b { type string; config false; } }
    }
  }
}
)y"},
    {"groupings", R"y(module groupings {
  yang-version 1.1;
  namespace urn:groupings;
  prefix g;
  grouping foreign {
    list group { leaf a { type string; } }
    choice way {
      default one;
      leaf one { type string; mandatory true; }
    }
  }
  grouping key { leaf three { type string; } }
  grouping no-key { leaf four { type string; } }
}
)y"},
    {"version-1", R"y(module version-1 {
  namespace urn:version-1;
  prefix v;
  list l {
    key "a b";
    leaf a { type empty; } // empty-key
    leaf b { type string; when "../a"; }
  }
}
)y"},
    {"mandatory", R"y(module mandatory {
  yang-version 1.1;
  namespace urn:mandatory;
  prefix m;
  grouping ways {
    choice way {
      default one;
      case one {
        leaf may { type string; }
        container presence { presence "there"; leaf must { type string; mandatory true; } }
        container deep { container deeper { leaf-list must { type string; min-elements 1; } } } // mandatory-default-case
        choice inner { leaf must { type string; mandatory true; } }
      }
      case two { leaf must-two { type string; mandatory true; } } //: mandatory-default-case
    }
  }
  container first { uses ways; }
  container second { uses ways; }
  container third {
    choice way {
      default short;
      container short { leaf a { type string; } } //: mandatory-default-case
    }
  }
  container refined {
    uses third {
      refine way/short/short/a { mandatory true; } // mandatory-default-case //: mandatory-default-case
    }
  }
  grouping third { choice way { default short; container short { leaf a { type string; } } } }
}
)y"},
    {"augments", R"y(module augments {
  yang-version 1.1;
  namespace urn:augments;
  prefix a;
  import mandatory { prefix m; }
  augment /m:first { // augment-mandatory
    leaf must { type string; mandatory true; }
    leaf-list too { type string; min-elements 2; }
  }
  augment /m:second {
    when "true()";
    leaf must { type string; mandatory true; }
  }
  augment /m:third { // augment-mandatory
    container deep { container deeper { choice must { mandatory true; leaf x { type string; } } } }
  }
  augment /m:third {
    container presence { presence "there"; leaf must { type string; mandatory true; } }
    container state { config false; leaf must { type string; mandatory true; } }
    container later;
    list entries { key k; min-elements 0; leaf k { type string; mandatory true; } }
  }
  augment /m:third/a:later {
    when "true()";
    leaf must { type string; mandatory true; }
  }
  augment /m:third/m:way/m:short {
    when "true()";
    leaf must { type string; mandatory true; } // mandatory-default-case
  }
}
)y"},
    {"defaults", R"y(module defaults {
  yang-version 1.1;
  namespace urn:defaults;
  prefix d;
  import identities { prefix i; }
  feature f;
  identity own { base i:base; }
  identity both { base i:derived; base i:other; }
  identity sometimes { if-feature f; base i:base; }
  typedef color {
    type enumeration { enum red; enum blue { if-feature f; } }
    default blue; // conditional-default
  }
  typedef own-color { type color; }
  typedef reference { type identityref { base i:base; base i:other; } }
  leaf color { type own-color; }
  leaf same-color { type own-color; }
  leaf red { type own-color { enum red; enum blue; } default red; }
  leaf blue { type own-color { enum red; enum blue; } default blue; } // conditional-default
  leaf must { type own-color; mandatory true; }
  leaf flags {
    type bits { bit a; bit b { if-feature f; } }
    default "a b"; // conditional-default
  }
  leaf identity-own { type identityref { base i:base; } default own; }
  leaf identity-derived { type identityref { base i:base; } default i:derived; }
  leaf identity-base { type identityref { base i:base; } default i:base; } // bad-default
  leaf identity-missing { type identityref { base i:base; } default derived; } // bad-default
  leaf identity-prefix { type identityref { base i:base; } default x:derived; } // bad-default
  leaf identity-conditional { type identityref { base i:base; } default d:sometimes; } // conditional-default
  leaf identity-both { type reference; default both; }
  leaf identity-one { type reference; default own; } // bad-default
  container use { uses i:with-default; }
  container refined { uses i:with-default { refine identity { default d:both; } } }
  container wrong { uses i:with-default { refine identity { default derived; } } } // bad-default
  leaf-list numbers {
    type int32;
    default 16;
    default -1;
    default 0x10; // repeated-default
    default 1;
  }
  leaf-list decimals {
    type decimal64 { fraction-digits 2; }
    default 1.0;
    default 0.1;
    default -0.10;
    default 1; // repeated-default
  }
  leaf-list identities {
    type identityref { base i:base; }
    default own;
    default d:own; // repeated-default
  }
  leaf-list bits {
    type bits { bit a; bit b; }
    default "a b";
    default "b a"; // repeated-default
  }
  leaf-list state { config false; type string; default a; default a; }
  leaf-list words {
    type string;
    min-elements 1;
    default a; // default-with-min-elements
  }
  leaf-list instances {
    type instance-identifier;
    default "/d:a/d:b[d:k='1'][ d:l = \"]\" ]/d:c";
    default "/d:list[.='x']/d:list[3]";
    default "/d:a/b"; // bad-default
    default "d:a"; // bad-default
    default "/d:a/"; // bad-default
    default "/d:a[d:k=x]"; // bad-default
    default "/d:a[0]"; // bad-default
    default "/d:a[1][2]"; // bad-default
    default "/x:a"; // bad-default
    default "/d:a[.='x'"; // bad-default
    default ""; // bad-default
  }
}
)y"},
    {"identities", R"y(module identities {
  yang-version 1.1;
  namespace urn:identities;
  prefix i;
  include identities-more;
  identity base;
  identity other;
  grouping with-default {
    leaf identity { type identityref { base base; } default derived; }
  }
}
)y"},
    {"identities-more", R"y(submodule identities-more {
  yang-version 1.1;
  belongs-to identities { prefix im; }
  identity middle { base im:base; }
  identity derived { base middle; }
}
)y"},
    {"references", R"y(module references {
  yang-version 1.1;
  namespace urn:references;
  prefix r;
  typedef to-state { type leafref { path /r:state; } }
  typedef lenient { type to-state { require-instance false; } }
  typedef strict { type lenient { require-instance true; } }
  grouping refers { leaf reference { type leafref { path ../target; } } } // leafref-config //: leafref-config
  leaf state { type string; config false; }
  leaf typed { type to-state; } // leafref-config
  leaf open { type lenient; }
  leaf-list closed { type strict; } // leafref-config
  leaf state-too { type to-state; config false; }
  container config { leaf target { type string; } uses refers; }
  container first { leaf target { type string; config false; } uses refers; } //: xpath-root
  container second { leaf target { type string; config false; } uses refers; }
  container state-all { config false; leaf target { type string; } uses refers; }
  rpc ask { input { leaf typed { type to-state; } } }
}
)y"},
    {"operations", R"y(module operations {
  yang-version 1.1;
  namespace urn:operations;
  prefix o;
  grouping operations {
    action act; // action-below-keyless-list
    notification note; // action-below-keyless-list
  }
  container state {
    config false;
    list free { container in { uses operations; } }
    list keyed { key k; leaf k { type string; } uses operations; }
  }
  list keyed {
    key k;
    leaf k { type string; }
    uses operations;
    list inner { config false; leaf x { type string; } action act; } // action-below-keyless-list
  }
}
)y"},
    {"expressions", R"y(module expressions {
  yang-version 1.1;
  namespace urn:expressions;
  prefix e;
  import references { prefix r; }
  typedef either {
    type union {
      type string;
      type leafref { path "/e:l[e:k = current()/../../../e:top]/e:v"; } // xpath-root
    }
  }
  grouping deep {
    leaf deep {
      type string;
      must "../../../x"; // xpath-root
      must "../../x";
    }
  }
  leaf top {
    type string;
    must "../x and current()/../x and ../x[../x]/..";
    must "../../x"; // xpath-root
    must "../x[../../../x]"; // xpath-root
    must "/e:c/../../x"; // xpath-root
    must "/e:c/e:l/../..";
    must "deref(.)/../../../x";
  }
  list l { key k; leaf k { type string; } leaf v { type string; } }
  leaf either { type either; }
  container one { uses deep; }
  container two { container three { uses deep; } }
  container c {
    choice how {
      when "..";
      case first {
        when "../.."; // xpath-root
        leaf in-case { type string; must "../../x"; when "../../../x"; } // xpath-root
      }
    }
    uses deep { when "../.."; } // xpath-root
    action act { output { leaf a { type string; must "../../../x"; must "../../../../x"; } } } // xpath-root
  }
  grouping shallow { leaf shallow { type string; } }
  uses shallow { when ".."; } // xpath-root
  rpc ask {
    input {
      must "..";
      must "../.."; // xpath-root
      leaf a { type string; when "../../x"; }
    }
  }
  notification note { leaf a { type string; must "../../x"; must "../../../x"; } } // xpath-root
  augment /e:c { when "../.."; leaf more { type string; } } // xpath-root
  augment /r:config { when ".."; leaf more { type string; } }
}
)y"},
    {"targets", R"y(module targets {
  yang-version 1.1;
  namespace urn:targets;
  prefix t;
  container gone { leaf a { type string; } }
  leaf b { type string; }
  grouping refers { leaf ref { type leafref { path /t:gone/t:a; } } } //: removed-leafref-target
  container one { uses refers; }
  container two { uses refers; }
  leaf either { type union { type string; type leafref { path ../b; } } } //: removed-leafref-target
  leaf through { type leafref { path ../either; } }
}
)y"},
    {"changes", R"y(module changes {
  yang-version 1.1;
  namespace urn:changes;
  prefix c;
  import mandatory { prefix m; }
  import references { prefix r; } import targets { prefix t; }
  deviation /m:third/m:way/m:short/m:short/m:a { deviate add { mandatory true; } }
  deviation /m:first/m:way { deviate delete { default one; } }
  deviation /m:second/m:way { deviate replace { default two; } }
  deviation /r:first { deviate add { must "../../x"; } }
  deviation /r:state { deviate replace { config true; } }
  deviation /t:gone { deviate not-supported; } // removed-leafref-target
  deviation /t:b { deviate not-supported; } // removed-leafref-target
  leaf own { type leafref { path /t:b; } }
}
)y"},
};

using Findings = std::vector<std::pair<unsigned, std::string>>; /* line and rule, in the order of lines */

/* What the lines of a text say that is found at them. */
Findings Expected(const std::string &text, const std::string &mark)
{
    Findings findings;
    std::istringstream lines(text);
    unsigned number = 1;
    for (std::string line; std::getline(lines, line); ++number)
        if (size_t at = line.find(mark); at != std::string::npos) {
            std::istringstream words(line.substr(at + mark.size()));
            for (std::string rule; words >> rule && rule.find('-') != std::string::npos;)
                findings.emplace_back(number, rule);
        }
    return findings;
}

class InspectCheckNodes : public ::testing::Test {
  protected:
    InspectCheckNodes()
    {
        std::filesystem::create_directory(dir.Path() + "/yang");
        std::filesystem::create_directory(dir.Path() + "/yin");
        for (const Model &model : MODELS)
            std::ofstream(Compact(model.file)) << model.text;
    }

    std::string Compact(const std::string &name) const { return dir.Path() + "/yang/" + name + ".yang"; }

    /* By file. */
    static std::map<std::string, Findings> Found(std::vector<std::string> args, const std::string &folder)
    {
        args.insert(args.begin(), "check");
        args.insert(args.end(), {"--format", "json", "-d", folder});
        std::map<std::string, Findings> found;
        for (const Told &finding : FindingsOf(Inspect(args)))
            if (finding.line != 0)
                found[finding.Stem()].emplace_back(finding.line, finding.rule);
        return found;
    }

    ModelDir dir;
};

TEST_F(InspectCheckNodes, LinesThatBreakARuleAreFoundInBothSyntaxes)
{
    const Result converted = RunShell("korv-inspect convert " + dir.Path() + "/yang/*.yang -d " + dir.Path() +
                                      "/yang -o " + dir.Path() + "/yin");
    ASSERT_EQ(converted.exitCode, 0) << converted.err;
    /* The deviations are checked apart: on one device, they would change what the others are. */
    auto compact = Found({"changes"}, dir.Path() + "/yang");
    auto yin = Found({"changes"}, dir.Path() + "/yin");
    RunShell("rm " + dir.Path() + "/*/changes.*");
    compact.merge(Found({"--all"}, dir.Path() + "/yang"));
    yin.merge(Found({"--all"}, dir.Path() + "/yin"));
    for (const Model &model : MODELS) {
        const Findings expected = Expected(model.text, "// ");
        EXPECT_EQ(compact[model.file], expected) << model.file;
        Findings twin = yin[model.file];
        ASSERT_EQ(twin.size(), expected.size()) << model.file << " in YIN";
        for (size_t i = 0; i < twin.size(); ++i)
            EXPECT_EQ(twin[i].second, expected[i].second) << model.file << ".yin:" << twin[i].first;
    }
}

TEST_F(InspectCheckNodes, DeviationsTakePart)
{
    const std::string folder = dir.Path() + "/yang";
    auto found = Found({"mandatory", "references", "targets", "--load", "changes"}, folder);
    for (const Model &model : MODELS)
        EXPECT_EQ(found[model.file], Expected(model.text, "//: ")) << model.file;
    const std::string text = Inspect({"check", "mandatory", "--load", "changes", "-d", folder}).out;
    EXPECT_NE(LineWith(text, "(see " + folder + "/changes.yang:7) (RFC 7950, 7.9.3) [mandatory-default-case]"), "")
        << text;
    const std::string lost = Inspect({"check", "changes", "targets", "--load", "changes", "-d", folder}).out;
    EXPECT_NE(LineWith(lost,
                       "changes.yang:12:23: warning: the deviation leaves out '/gone/a', to which leafref '/one/ref' "
                       "and 1 other refer (see " +
                           folder + "/targets.yang:7) (RFC 7950, 7.20.3) [removed-leafref-target]"),
              "")
        << lost;
    EXPECT_NE(LineWith(lost,
                       "targets.yang:10:3: warning: leafref '/either' refers to '/b', which a deviation leaves out "
                       "(see " +
                           folder + "/changes.yang:13) (RFC 7950, 7.20.3) [removed-leafref-target]"),
              "")
        << lost;
}

} // namespace
