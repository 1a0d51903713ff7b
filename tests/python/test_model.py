"""What the objects say of the example models."""

import ast
import pathlib

import korv
import pytest

from conftest import EXAMPLES


def test_context_takes_paths_in_every_form(tmp_path):
    for dirs in (EXAMPLES, str(EXAMPLES), str(EXAMPLES).encode(), [tmp_path, tmp_path, EXAMPLES], (EXAMPLES,)):
        with korv.Context(dirs) as context:
            assert context.load("example-qos").loaded_revision == "2026-05-11"
    for wrong, error in ((tmp_path / "none", NotADirectoryError), (["x\0y"], NotADirectoryError), (7, TypeError)):
        with pytest.raises(error):
            korv.Context(wrong)


def test_modules(context):
    interfaces = context.load("example-interfaces")
    qos = context.load("example-interface-qos", "wanted")
    assert context.modules == [interfaces, qos]
    assert context.load("example-interfaces") == interfaces
    assert context.module("example-interface-qos", "wanted") == qos
    facts = [(m.name, m.revision, m.loaded_revision, m.class_count, m.task_id) for m in context.modules]
    assert facts == [("example-interfaces", None, "2026-09-01", 5, 120),
                     ("example-interface-qos", "wanted", "2026-05-11", 1, 0)]
    assert [a.target for a in qos.augments] == ["/if:interfaces/if:interface", "/if:interfaces/if:interface/if:mode"]
    assert [n.path for a in qos.augments for n in a.target_tree] == ["/interfaces"] * 2
    with pytest.raises(korv.NotFoundError, match="'example-interface-qos' is not loaded$"):
        context.module("example-interface-qos")


def test_nodes_and_leaves(context):
    interface = context.load("example-interfaces").top_nodes[0].children[0]
    assert (interface.name, interface.module, interface.kind) == ("interface", "example-interfaces", "node")
    assert (interface.class_id, interface.sample_id, interface.self_keys) == (0x1001, 0x52, (1,))
    assert [leaf.name for leaf in interface.keys] == ["name"]
    assert interface.parent.path == "/interfaces" and interface.parent.parent is None
    assert [child.kind for child in interface.children] == ["choice", "node", "node"]
    history = context.find("/interfaces/interface/address/history")
    assert (history.ancestor_keys, history.children) == ((20, 21), [])

    leaves = {leaf.name: leaf for leaf in interface.attributes}
    mtu, status, name = leaves["mtu"], leaves["status"], leaves["name"]
    assert (mtu.base_type, mtu.field_id, mtu.range, mtu.key) == ("uint16", 6, (1280, 9600), False)
    assert leaves["speed"].range == (0, 2**64 - 1)
    assert (name.key, name.mask, name.name2id_key_fid, name.range) == (True, 0x22, 2, None)
    assert list(status.enum_values.items()) == [("down", 0), ("up", 1), ("testing", 10), ("dormant", 11)]
    assert mtu.enum_values == {}
    assert leaves["duplex"] in interface.case_leaves and leaves["duplex"] not in interface.leaves
    assert mtu.path == "/interfaces/interface/mtu" and mtu.node == interface
    assert interface.prefixed_path == "example-interfaces:interfaces/example-interfaces:interface"


@pytest.mark.parametrize("order", [["example-interfaces", "example-interface-qos"],
                                   ["example-interface-qos", "example-interfaces"]])
def test_find_and_ids_in_both_orders_of_loads(context, order):
    for module in order:
        context.load(module)
    for path, module in (("/interfaces", "example-interfaces"), ("interfaces/interface/mtu", "example-interfaces"),
                         ("/interfaces/interface/duplex", "example-interfaces"),
                         ("/interfaces/interface/example-interface-qos:traffic", "example-interface-qos"),
                         ("/interfaces/interface/shaping-rate", "example-interface-qos")):
        found = context.find(path)
        assert (found.name, found.module) == (path.split("/")[-1].split(":")[-1], module)
    for path in ("", "/", "//interfaces", "/interfaces/none", "/other:interfaces", "/interfaces/number/more"):
        with pytest.raises(korv.NotFoundError):
            context.find(path)

    interface = context.by_id(0x1001)
    assert interface.path == "/interfaces/interface" and interface.kind == "node"
    assert interface == context.module("example-interfaces").top_nodes[0].children[0]
    assert context.by_id(0x1001, 40).path == "/interfaces/interface/shaping-rate"
    assert interface in context.nodes_of(0x1001) and context.nodes_of(7) == []
    for ids in ((7,), (0,), (0x1001, 99), (0x1001, 0)):
        with pytest.raises(LookupError):
            context.by_id(*ids)
    # Each node, leaf and attribute comes once, whichever module shows it.
    keys = [(leaf.module, leaf.path) for leaf in context.attributes]
    assert len(set(keys)) == len(keys) and ("example-interface-qos", "/interfaces/interface/shaping-rate") in keys
    names = [(node.module, node.path, node.kind, node.name) for node in context.walk()]
    assert len(set(names)) == len(names) == 12


def test_rows_and_dumps_outlive_the_module(context):
    module = context.load("example-interfaces")
    rows, dump = module.rows(), module.dump()
    assert context.rows() == rows
    module.unload()
    mtu = next(row for row in rows if row["leaf"] == "mtu")
    assert mtu == {"module": "example-interfaces", "node_path": "/interfaces/interface", "class_id": 0x1001,
                   "sample_id": 0x52, "self_keys": (1,), "ancestor_keys": (),
                   "leaf_path": "/interfaces/interface/mtu", "leaf": "mtu", "key": False, "base_type": "uint16",
                   "mask": 2, "field_id": 6, "data_type": 0, "index_map": 0, "range_min": 1280, "range_max": 9600}
    assert [node["path"] for node in dump][:3] == ["/interfaces", "/interfaces/interface", "/interfaces/interface/mode"]
    assert dump[1]["leaves"][0]["index_map"] == 2
    assert context.load("example-types").dump() == []


def test_stubs_declare_what_there_is():
    stub = ast.parse((pathlib.Path(korv.__file__).parent / "_korv.pyi").read_text())
    classes = {node.name: node for node in stub.body if isinstance(node, ast.ClassDef)}
    for name, node in classes.items():
        declared = {part.name for part in node.body if isinstance(part, ast.FunctionDef)}
        there = {part for part in vars(getattr(korv, name)) if not part.startswith("__")}
        assert {part for part in declared if not part.startswith("__")} == there, name
    assert {name for name in korv.__all__ if name in vars(korv._korv)} == set(classes) | {"__version__"}
