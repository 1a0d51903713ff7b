"""Objects of unloaded modules and closed contexts, failed loads, and log lines."""

import gc
import logging
import pickle

import korv
import pytest

from conftest import EXAMPLES


def uses(context):
    """Objects of example-interfaces, and every use of them."""
    module = context.load("example-interfaces")
    node = context.by_id(0x1001)
    leaf = context.by_id(0x1001, 4)
    walk, augment = module.walk(), context.load("example-interface-qos").augments[0]
    next(walk)
    for thing in (node, leaf, module):
        for name in dir(type(thing)):
            if isinstance(getattr(type(thing), name), property) and (name, thing) not in (("name", module),
                                                                                        ("loaded", module)):
                yield lambda thing=thing, name=name: getattr(thing, name)
    yield lambda: next(walk)
    yield from (node.walk, module.walk, module.rows, module.dump, module.unload)
    yield lambda: (augment.target, augment.target_tree, augment.self_tree)


@pytest.mark.parametrize("end", ["unload", "close", "reload"])
def test_objects_of_what_has_gone_raise(end):
    context = korv.Context(EXAMPLES)
    calls = list(uses(context))
    node = context.by_id(0x1001)
    for call in calls[:-6]:
        call()
    assert len(calls) > 30
    if end == "close":
        context.close()
        context.close()
        calls += [lambda: context.modules, lambda: context.load("example-qos"), lambda: context.find("/interfaces"),
                  lambda: context.by_id(1), context.rows, context.walk, lambda: context.unload("example-qos")]
    else:
        for module in context.modules:
            module.unload()
    if end == "reload":
        assert context.load("example-interfaces").top_nodes[0].children[0] != node
    for call in calls:
        with pytest.raises(korv.GoneError, match="closed$" if end == "close" else "has been unloaded$"):
            call()
    assert repr(node) == "<korv.Node, gone>" and node == node and hash(node)
    assert (end == "close") == context.closed


def test_objects_keep_what_they_need():
    leaf = korv.Context(EXAMPLES).load("example-interfaces").top_nodes[0].children[0].attributes[0]
    gc.collect()
    assert leaf.path == "/interfaces/interface/name"


def test_what_another_module_takes_along(context):
    context.load("example-interfaces")
    context.load("example-interface-qos").unload()
    assert context.find("/interfaces/interface").path == "/interfaces/interface"
    assert [context.by_id(0x1001, leaf.field_id).name for leaf in context.by_id(0x1001).attributes]
    with pytest.raises(korv.NotFoundError):
        context.unload("example-interface-qos")


def test_a_fault_of_a_file_has_its_place(write):
    directory = write("broken", "container c { leaf a { type strin; } }")
    with korv.Context(directory) as context, pytest.raises(korv.LoadError) as caught:
        context.load("broken")
    error = pickle.loads(pickle.dumps(caught.value))
    assert (error.module, error.file, error.line, error.column) == ("broken", str(directory / "broken.yang"), 2, 24)
    failure = error.failures[0]
    assert (failure.refused_by, failure.sentence) == ("schema", "unknown type 'strin'; did you mean 'string'?")
    assert failure.text in str(error)


def test_what_the_library_refuses_has_its_class(write):
    directory = write("odd", """import quelvo-mim-extensions { prefix mimext; }
        container c { mimext:class-id 1; leaf a { type binary; mimext:field-id 1; } }""")
    with korv.Context([directory, EXAMPLES]) as context:
        with pytest.raises(korv.LoadError) as caught:
            context.load("odd")
        assert context.modules == []
    failure = caught.value.failures[0]
    assert (failure.refused_by, failure.class_path, failure.leaf) == ("library", "/c", "a")
    assert (caught.value.file, caught.value.line) == (None, 0)


def test_names_with_zeros_are_no_names(context):
    for call in (context.load, context.unload, context.module, lambda name: context.load("example-qos", name)):
        with pytest.raises(ValueError):
            call("example-qos\0x")


def test_log_lines(context, caplog):
    caplog.set_level(logging.DEBUG, "korv")
    context.load("example-interfaces")
    assert {record.levelno for record in caplog.records} == {logging.DEBUG, logging.INFO}
    assert ("korv", logging.INFO, "augment can not findYangModuleTree!") in caplog.record_tuples
    caplog.clear()
    with pytest.raises(korv.LoadError):
        context.load("none")
    assert caplog.record_tuples[-1] == ("korv", logging.ERROR, "Load Module (none) fail!")
    caplog.clear()
    caplog.set_level(logging.CRITICAL, "korv")
    context.load("example-qos")
    assert caplog.records == []
