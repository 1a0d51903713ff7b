import os
from typing import Any, Dict, Iterable, Iterator, List, Optional, Tuple, Union, overload

__version__: str

_Path = Union[str, bytes, "os.PathLike[Any]"]

class Context:
    """An instance of the library with its modules. One thread at a time; loads keep Python's global lock."""

    def __init__(self, dirs: Union[_Path, Iterable[_Path]] = ".") -> None:
        """dirs: one directory of module files or several, searched in this order. Deviation modules, which a load takes
        along, are looked for in the first two."""
    def __enter__(self) -> Context: ...
    def __exit__(self, *exception: object) -> None: ...
    def close(self) -> None:
        """Unloads everything. A closed context can be closed again, and nothing else."""
    @property
    def closed(self) -> bool: ...
    @property
    def modules(self) -> List[Module]:
        """The loaded modules in the order of their loads."""
    def load(self, name: str, revision: Optional[str] = None) -> Module:
        """Loads a module, or answers the one that is loaded under this name and revision. The revision is part of the name
        under which it is known; which file is read does not depend on it. Raises LoadError."""
    def unload(self, name: str, revision: Optional[str] = None) -> None: ...
    def module(self, name: str, revision: Optional[str] = None) -> Module:
        """The module that was loaded under this name and revision. Raises NotFoundError."""
    def find(self, path: str) -> Union[Node, Leaf]:
        """The node or leaf of a path of names: "/interfaces/interface/mtu". Choices and cases have no component. Module names
        may stand in front: "/example-interfaces:interfaces". Modules' own trees are searched first, in the order of the
        loads, then the trees that augments extend. Raises NotFoundError."""
    @overload
    def by_id(self, class_id: int) -> Node:
        """The first container or list of a class, in the order of the loads: one in its own module's tree, if there is any.
        Raises NotFoundError."""
    @overload
    def by_id(self, class_id: int, field_id: int) -> Leaf:
        """The first leaf of the class that has this attribute id."""
    @property
    def attributes(self) -> List[Leaf]:
        """Every attribute of every module, as Module.attributes gives them."""
    def nodes_of(self, class_id: int) -> List[Node]:
        """Every node of a class: of all modules, of choices and cases, and of the trees of augments. The order is that of the
        loads; where several modules' trees show the same node, each of them has it. Empty when there is none."""
    def walk(self) -> Iterator[Node]:
        """Every node of every module, as Module.walk gives them."""
    def rows(self) -> List[Dict[str, Any]]:
        """One row for each leaf of every module, as Module.rows gives them."""

class Module:
    """A loaded module."""

    @property
    def name(self) -> str: ...
    @property
    def revision(self) -> Optional[str]:
        """As given to the load."""
    @property
    def loaded_revision(self) -> Optional[str]:
        """The latest revision in the file that was loaded."""
    @property
    def class_count(self) -> int:
        """Containers and lists that begin a class."""
    @property
    def task_id(self) -> int:
        """0: the module has none."""
    @property
    def loaded(self) -> bool: ...
    @property
    def top_nodes(self) -> List[Node]:
        """The tops of the module's own tree."""
    @property
    def augments(self) -> List[Augment]: ...
    @property
    def attributes(self) -> List[Leaf]:
        """Every leaf of the module that has an attribute id: in its own tree, then what it adds to other modules."""
    def walk(self) -> Walk:
        """Every node that the module defines, parents first: in its own tree, then what it adds to other modules. Nodes that
        others add to it are theirs."""
    def rows(self) -> List[Dict[str, Any]]:
        """One row for each leaf of the module, attribute or not: module, node_path, class_id, sample_id, self_keys, ancestor_keys,
        leaf_path, leaf, key, base_type, mask, field_id, data_type, index_map, range_min, range_max. Texts and numbers,
        which outlive the module."""
    def dump(self) -> List[Dict[str, Any]]:
        """The library's own dump of the module's tree, breadth first: a dict for each node with name, path, class_id, sample_id,
        self_keys, ancestor_keys and leaves. Outlives the module."""
    def unload(self) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...

class Augment:
    """What a module adds to another one."""

    @property
    def target(self) -> str:
        """Target path as the augment statement has it."""
    @property
    def target_tree(self) -> List[Node]:
        """The tree that is extended, from its top down."""
    @property
    def self_tree(self) -> List[Node]:
        """The containers that are added."""

class Walk(Iterator[Node]):
    """The nodes of a walk."""

    def __iter__(self) -> Walk: ...
    def __next__(self) -> Node: ...

class Node:
    """A container, list, choice or case."""

    @property
    def name(self) -> str: ...
    @property
    def module(self) -> str:
        """Module that defines the node."""
    @property
    def kind(self) -> str:
        """"node" (container or list), "choice" or "case"."""
    @property
    def class_id(self) -> int:
        """0: no class. A choice or case has that of the node around it."""
    @property
    def sample_id(self) -> int:
        """0: none."""
    @property
    def self_keys(self) -> Tuple[int, ...]:
        """The class's own keys, as attribute ids."""
    @property
    def ancestor_keys(self) -> Tuple[int, ...]:
        """The keys of the classes above, as attribute ids of this class."""
    @property
    def keys(self) -> List[Leaf]:
        """The leaves of self_keys that the node itself has."""
    @property
    def leaves(self) -> List[Leaf]:
        """Leafs and leaf-lists that are children of the node."""
    @property
    def case_leaves(self) -> List[Leaf]:
        """The first 255 of those in choices below the node."""
    @property
    def attributes(self) -> List[Leaf]:
        """Those of leaves and case_leaves that have an attribute id; none for a choice or case."""
    @property
    def parent(self) -> Optional[Node]: ...
    @property
    def children(self) -> List[Node]: ...
    @property
    def path(self) -> str:
        """Names from the top down, without choices and cases: "/interfaces/interface"."""
    @property
    def prefixed_path(self) -> str:
        """The second form of a lookup of the library: "m:interfaces/m:interface"."""
    def walk(self) -> Walk:
        """The node and everything below it, parents first."""
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...

class Leaf:
    """A leaf or leaf-list."""

    @property
    def name(self) -> str: ...
    @property
    def module(self) -> str:
        """Module that defines the leaf."""
    @property
    def node(self) -> Node: ...
    @property
    def key(self) -> bool:
        """True if the leaf is one of its class's own keys."""
    @property
    def base_type(self) -> str:
        """Built-in type in the end, leafrefs followed; empty: there is none."""
    @property
    def mask(self) -> int:
        """Which of the numbers below were found: 0x02 field_id, 0x08 data_type, 0x10 ref_id_key_fid, 0x20 name2id_key_fid."""
    @property
    def class_id(self) -> int: ...
    @property
    def field_id(self) -> int:
        """Attribute id, or 0."""
    @property
    def data_type(self) -> int: ...
    @property
    def ref_id_key_fid(self) -> int: ...
    @property
    def name2id_key_fid(self) -> int:
        """The index map."""
    @property
    def range(self) -> Optional[Tuple[int, int]]:
        """Bounds of the last range part of uint16, uint32 and uint64, else None."""
    @property
    def enum_values(self) -> Dict[str, int]:
        """Names and values of an enumeration in their order; empty for other types."""
    @property
    def path(self) -> str: ...
    @property
    def prefixed_path(self) -> str: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
