#include "help_texts.h"

namespace inspect {

const char *const HELP_PROGRAM = R"(Examples:
  korv-inspect tree example-interfaces -d examples/yin
  korv-inspect find example-interfaces /interfaces/interface/mtu -d examples/yin
  korv-inspect check --all -d examples/yin
  korv-inspect diff example-interfaces --old examples/yin --new examples/yin

The examples run where examples/yin is: in the project's directory, or in that of the
installed documents.

'korv-inspect COMMAND --help' says more about a command.
Exit status: 0 success; 1 a module cannot be loaded, a node is not found, check found
errors, diff found breaking changes; 2 wrong usage.)";

const char *const HELP_TREE = R"(A node's line has its class id, sample id, own keys and ancestor keys (attribute ids);
a leaf's line has "*" for a key or "-", the name, the field id, the built-in type, and
then datatype, range, index map and reference key where the model has them. For each
augment the text shows the way to its target and what the module adds there; --full
shows the whole tree that a device keeps for it.

Examples:
  korv-inspect tree example-interfaces -d examples/yin
  korv-inspect tree example-interfaces -d examples/yin --depth 2
  korv-inspect tree example-interfaces -d examples/yin --path /interfaces/interface/address
  korv-inspect tree example-interface-qos -d examples/yin --load example-interfaces --format json
  korv-inspect tree example-interfaces -d examples/yin --format dot | dot -Tsvg -o tree.svg)";

const char *const HELP_FIND = R"(The path may be plain (/interfaces/interface/mtu) or qualified with prefixes or module
names (/if:interfaces/if:interface); choices and cases have no component. It is looked
for in the module's own tree and in the target trees of its augments. 'pcPath' and
'pcXpathMain' are the two forms with which a host asks the library for the node.

Examples:
  korv-inspect find example-interfaces /interfaces/interface -d examples/yin
  korv-inspect find example-interfaces interfaces/interface/mtu -d examples/yin
  korv-inspect find example-interface-qos /if:interfaces/if:interface/ifq:traffic -d examples/yin)";

const char *const HELP_WALK = R"(Lists the library's callbacks in the order in which they come: the ancestors, nearest
first, then the node and everything below it, parents first. A leaf stands for the node
that holds it.

Example:
  korv-inspect walk example-interfaces /interfaces/interface -d examples/yin)";

const char *const HELP_DUMP = R"(Nodes come level by level, choices and cases included. Augments are counted from 0, as
'tree' and 'modules' show them. CSV has a heading and one row a leaf.

Examples:
  korv-inspect dump example-interfaces -d examples/yin
  korv-inspect dump example-interfaces -d examples/yin --format csv > attributes.csv
  korv-inspect dump example-interface-qos -d examples/yin --augment 0 --self)";

const char *const HELP_ENUMS = R"(Values follow typedefs and leafrefs.

Example:
  korv-inspect enums example-interfaces /interfaces/interface/status -d examples/yin)";

const char *const HELP_MODULES = R"(Example:
  korv-inspect modules example-interfaces example-interface-qos -d examples/yin)";

const char *const HELP_CHECK =
    R"(Each module is loaded by itself, after those of --load. Findings name the file and line
where these can be told, and end in a short name that stays the same from release to
release. Errors give exit status 1; a warning keeps nothing from being loaded.

  load-failed              error: the module, or something that it needs, is not right
  deviation-failed         error: the module's deviation module cannot be loaded, so that
                           the module is loaded without it
  missing-field-id         a leaf of a class has no attribute id
  duplicate-field-id       two leaves of a class have the same attribute id
  field-id-range           an attribute id beyond 255: only its low 8 bits count
  bad-number               an argument that is no number of 32 bits, and what it counts as
  repeated-statement       a statement that may stand once stands again
  no-effect                a statement where nothing reads it
  key-without-field-id     a key leaf has no attribute id
  duplicate-class-id       two unrelated classes have the same class id
  class-without-tree       a class outside the containers at the module's top
  many-keys                more than 8 own or ancestor keys; more than 16 cannot be loaded
  unmapped-ancestor-key    a key of the classes above has no attribute id in this class
  extra-ancestor-key       more ancestor keys than the lists above have keys
  dropped-key              keys of a list below one of the same class: they do not count
  missing-key              a key of a class whose leaf a deviation has taken away
  ancestor-key-collision   an ancestor key takes the attribute id of a leaf
  long-path                a path of more than 256 characters: cut in dumps, no lookup
  long-name                a name of more than 64 characters: no lookup
  many-augments            18 augments or more; more than 20 cannot be loaded
  library-message          the library says something else while it loads the module

Examples:
  korv-inspect check example-interfaces -d examples/yin
  korv-inspect check --all -d examples/yin --format json)";

const char *const HELP_DIFF = R"(Compares what a device makes of the two versions, deviations and augments applied. A
change is breaking when a host that addresses data by ids has to follow it:

  breaking    class or leaf with an id removed; class id, sample id, field id, type,
              datatype, index map or reference key changed; own or ancestor keys or their
              order changed; range narrowed or moved; enumeration value removed or changed
  compatible  added; moved or renamed under the same ids; an id where there was none;
              range widened; enumeration value added; task id changed

Either version may have two directories: one for what has changed, say, and the common one.

Example:
  korv-inspect diff example-interfaces --old examples/yin --new examples/yin)";

} // namespace inspect
