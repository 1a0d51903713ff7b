#include "snippets.h"

#include <vector>

#include "arguments.h"

namespace fuzz {
namespace {

/* Behind "in" stand the parents, below it what may stand in each of them. */
constexpr std::string_view SNIPPETS = R"(
in module submodule container list case grouping input output notification augment
  container c
    mimext:class-id 1
    leaf a
      mimext:field-id 1
      type string
  list l
    key a
    mimext:class-id 2
    mimext:ancestor-key-fid 8
    leaf a
      mimext:field-id 1
      type uint32
  leaf b
    type int8
  leaf e
    type enumeration
      enum x
        value 3
      enum y
  leaf u
    type union
      type int8
      type string
  leaf r
    type leafref
      path ../b
  leaf d
    type decimal64
      fraction-digits 2
      range 1.5..2.5|3
  leaf t
    type bits
      bit x
        position 4
      bit y
  leaf i
    type identityref
      base i
  leaf-list ll
    type uint16
    min-elements 1
    max-elements 8
    ordered-by user
  choice ch
    default x
    case x
      leaf x
        mimext:field-id 3
        type string
    case y
      container y
        mimext:class-id 3
    leaf z
      type empty
  anydata ad
  anyxml ax
  uses g
  uses g
    refine a
      config false
      mandatory true
      mimext:field-id 9
    augment c
      leaf added
        type string
in module submodule container list grouping rpc action input output notification
  typedef t
    type string
      length 1..10
      pattern [a-z]*
    default a
  grouping g
    leaf a
      type string
    container c
in module submodule
  rpc r
    input
      leaf a
        type string
    output
      leaf b
        type t
  notification n
    leaf a
      type string
  identity i
  identity j
    base i
  feature a
  feature b
    if-feature a
  extension x
    argument y
      yin-element true
  augment /p:c
    leaf more
      type string
  augment /p:c
    container more
      mimext:class-id 5
      mimext:ancestor-key-fid 1
        mimext:field-id 7
  deviation /p:c/p:a
    deviate not-supported
  deviation /p:c/p:a
    deviate replace
      type uint8
  deviation /p:c
    deviate add
      mimext:tlmt-sample-id 9
  import m0
    prefix m0
  include s0
  revision 2026-01-01
  mimext:aaa-task-id 7
  description text
  contact text
in container list
  action act
    input
      leaf a
        type string
  notification n
    leaf a
      type string
  must 1
  config false
in container
  presence p
in list
  key a
  unique a
  min-elements 1
  max-elements 1
in leaf leaf-list typedef
  default 1
  units u
in leaf leaf-list container list choice case anydata uses
  when 1
  if-feature a
  status obsolete
  reference text
in leaf choice anydata anyxml
  mandatory true
in leaf container list
  must 1
    error-message no
    error-app-tag no
in leaf container list leaf-list choice uses refine deviate case module rpc augment
  mimext:class-id 4
  mimext:field-id 4
  mimext:tlmt-sample-id 4
  mimext:datatype-id 4
  mimext:ref-id-key-fid 2
  mimext:name2id-key-fid 2
  mimext:aaa-task-id 4
  mimext:class-type leafref
  mimext:class-type leafref-target
  mimext:ancestor-key-fid 6
  mimext:ancestor-key-fid 1
    mimext:field-id 6
  mimext:class x
in type
  range 1..5
  length 1..5
  pattern a.*
    modifier invert-match
  enum z
  bit z
  path ../a
  base i
  type string
  fraction-digits 3
  require-instance false
in refine deviate
  default 1
  config true
  mandatory false
  min-elements 2
  max-elements 3
  must 1
in deviate
  type string
  units u
  unique a
in identity
  base i
in uses
  refine a
    description text
  augment c
    leaf uaug
      type string
)";

/* A chain of definitions: A is one, B the one that it refers to, N how many there are. What stands before "---" goes into
 * the module (or, where it is a module itself, beside it), what stands behind is written once. */
constexpr std::string_view CHAINS[] = {
    "typedef t@A\n  type t@B\n---\ntypedef t0\n  type string\ncontainer ct\n  mimext:class-id 11\n  leaf a\n"
    "    mimext:field-id 1\n    type t@E",
    "typedef tr@A\n  type tr@B\n    range 1..max\n---\ntypedef tr0\n  type uint32\ncontainer ctr\n  leaf a\n    type "
    "tr@E",
    "typedef te@A\n  type te@B\n    enum x\n---\ntypedef te0\n  type enumeration\n    enum x\n    enum y\n"
    "container cte\n  leaf a\n    type te@E",
    "typedef tu@A\n  type union\n    type tu@B\n    type int8\n---\ntypedef tu0\n  type string\ncontainer ctu\n"
    "  leaf a\n    type tu@E",
    "grouping g@A\n  uses g@B\n---\ngrouping g0\n  leaf a\n    type string\ncontainer cg\n  uses g@E",
    "grouping gn@A\n  container n@A\n    uses gn@B\n---\ngrouping gn0\n  leaf a\n    type string\ncontainer cgn\n"
    "  uses gn@E",
    "grouping gd@A\n  container n@A\n    uses gd@B\n  container m@A\n    uses gd@B\n---\ngrouping gd0\n  leaf a\n"
    "    type string\ncontainer cgd\n  uses gd12",
    "identity i@A\n  base i@B\n---\nidentity i0\ncontainer ci\n  leaf a\n    type identityref\n      base i@E",
    "feature f@A\n  if-feature f@B\n---\nfeature f0\ncontainer cf\n  if-feature f@E",
    "container cl@A\n  mimext:class-id {i+1}\n  leaf a\n    mimext:field-id 1\n    type leafref\n      path "
    "../../cl@B/a\n"
    "---\ncontainer cl0\n  leaf a\n    type uint32",
    "augment /p:ca\n  container x@A\n---\ncontainer ca",
    "leaf w@A\n  type nothing@B\n---\ncontainer cw",
    "container wu@A\n  uses nothing@B\n---\ncontainer cw2",
    "import missing@A\n  prefix q@A\n---\nimport m0\n  prefix m0",
    "module ma@A\n  namespace urn:ma@A\n  prefix p\n  import ma@B\n    prefix q\n  container x\n---\n"
    "module ma0\n  namespace urn:ma0\n  prefix p\n  container x",
    "submodule sa@A\n  belongs-to m0\n    prefix p\n  include sa@B\n  container s@A\n---\nsubmodule sa0\n"
    "  belongs-to m0\n    prefix p",
    "container kc@A\n  mimext:class-id {i+1}\n  leaf k\n    mimext:field-id {i+1}\n    type string\n---\ncontainer kc0",
    "deviation /p:cd/p:a\n  deviate add\n    must @A=@B\n---\ncontainer cd\n  leaf a\n    type string",
};

/* One statement within itself. */
constexpr std::string_view NESTS[] = {
    "container n{i}\n  mimext:class-id {i+1}\n  mimext:ancestor-key-fid {i+1}",
    "list n{i}\n  key k\n  mimext:class-id {i+1}\n  mimext:ancestor-key-fid {i+1}\n  leaf k\n    mimext:field-id 1\n"
    "    type string",
    "choice n{i}",
    "container n{i}\n  choice c{i}",
    "grouping n{i}",
};

void Replace(std::string *text, std::string_view from, const std::string &to)
{
    for (size_t at = text->find(from); at != std::string::npos; at = text->find(from, at + to.size()))
        text->replace(at, from.size(), to);
}

bool Names(const std::string &words, const std::string &word)
{
    return (" " + words + " ").find(" " + word + " ") != std::string::npos;
}

const Statement &Table()
{
    static const Statement table = ParseStatements(SNIPPETS);
    return table;
}

void Append(Statement *to, const Statement &from)
{
    to->children.insert(to->children.end(), from.children.begin(), from.children.end());
}

void InsertNest(Statement *module, Random *random)
{
    Statement nest = {"%nest", std::to_string(ChainLength(random)), {}};
    Append(&nest, ParseStatements(random->Of(NESTS)));
    module->children.push_back(nest);
}

} // namespace

bool InsertSnippet(Statement *parent, Random *random)
{
    std::vector<const Statement *> rows;
    for (const Statement &row : Table().children) {
        if (Names(row.argument, parent->keyword))
            rows.push_back(&row);
    }
    if (rows.empty())
        return false;
    const Statement &row = *random->Of(rows);
    parent->children.insert(parent->children.begin() + static_cast<long>(random->Below(parent->children.size() + 1)),
                            random->Of(row.children));
    return true;
}

Statement NewModule(const std::string &name)
{
    const Statement parsed = ParseStatements("module " + name + "\n  yang-version 1.1\n  namespace urn:" + name +
                                             "\n  prefix p\n  import quelvo-mim-extensions\n    prefix mimext\n");
    return parsed.children[0];
}

void InsertChain(Statement *root, Statement *module, Random *random)
{
    if (random->OneIn(5)) {
        InsertNest(module, random);
        return;
    }
    const std::string length = std::to_string(ChainLength(random));
    std::string text(random->Of(CHAINS));
    const char *const directions[][3] = {{"{i+1}", "{i}", nullptr}, {"{d+1}", "{d}", nullptr}, {"{i}", "{i+1%}", "0"}};
    const auto &[self, other, end] = random->Of(directions);
    Replace(&text, "@A", self);
    Replace(&text, "@B", other);
    Replace(&text, "@E", end != nullptr ? end : length);
    const size_t separator = text.find("---\n");
    Statement repeat = {"%repeat", length, {}};
    Append(&repeat, ParseStatements(text.substr(0, separator)));
    Statement rest = ParseStatements(text.substr(separator + 4));
    const bool modules = repeat.children[0].keyword == "module" || repeat.children[0].keyword == "submodule";
    if (modules) {
        module->children.push_back({repeat.children[0].keyword == "module" ? "import" : "include",
                                    rest.children[0].argument.substr(0, 2) + (end != nullptr ? end : length),
                                    {{"prefix", "ch", {}}}});
        if (module->children.back().keyword == "include")
            module->children.back().children.clear();
    }
    Statement *const to = modules ? root : module; /* the module may move when the root grows: it is not used again */
    if (end == nullptr)
        Append(to, rest);
    else if (rest.children.size() > 1)
        to->children.push_back(rest.children.back());
    to->children.push_back(repeat);
}

} // namespace fuzz
