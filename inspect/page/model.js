/* The data, and the items that it describes: modules, augments, nodes, leaves. An item is made when somebody asks for what
 * stands around it. node_records.h and page_data.h say what the rows hold. */
const data = JSON.parse(document.getElementById("data").textContent);

const KINDS = ["container", "list", "choice", "case"];
const KEY = 1, LEAF_LIST = 2, STATE = 4, MANDATORY = 8, DEPRECATED = 16, OBSOLETE = 32;

const text = (number) => data.texts[number || 0];
const hex = (id) => "0x" + id.toString(16);
const plural = (number, one, many = one + "s") => `${number.toLocaleString("en")} ${number === 1 ? one : many}`;

/* A module that adds to one of the page's without being on the page. */
const strangers = new Map();
function ownerOf(remarks, module) {
  if (!remarks.from)
    return module;
  if (!strangers.has(remarks.from))
    strangers.set(remarks.from, { kind: "module", name: remarks.from, isStranger: true });
  return strangers.get(remarks.from);
}

function leafItem(number, up, owner) {
  const row = data.leaves[number];
  const flags = row[3] || 0;
  const remarks = data.remarks[row[10] - 1] || {};
  const module = ownerOf(remarks, owner);
  return { kind: flags & LEAF_LIST ? "leaf-list" : "leaf", isLeaf: true, name: text(row[0]), nameNumber: row[0], up, module,
           type: data.types[row[1] || 0], id: row[2] || 0, flags, line: row[4], file: row[5], text: row[6],
           datatype: row[7], indexMap: row[8], referenceKey: row[9], remarks, added: [] };
}

function nodeItem(number, up, owner) {
  const row = data.nodes[number];
  const remarks = data.remarks[row[12] - 1] || {};
  const module = ownerOf(remarks, owner);
  return { kind: KINDS[row[1] || 0], name: text(row[0]), nameNumber: row[0], up, module, row,
           classId: row[2] || 0, sampleId: row[3] || 0, own: row[4] || [], ancestor: row[5] || [], flags: row[8] || 0,
           line: row[9], file: row[10], text: row[11], remarks, added: [] };
}

function augmentItem(record, module) {
  return { ...record, kind: "augment", name: record.written, up: module, module, target: null,
           remarks: data.remarks[record.remarks - 1] || {}, added: [] };
}

/* What stands directly below: leaves first, as in the library's trees, then nodes. */
function ownBelow(item) {
  if (item.below)
    return item.below;
  const leaves = (item.row ? item.row[6] : item.leaves) || [];
  const nodes = (item.row ? item.row[7] : item.kind === "module" ? item.tree : item.nodes) || [];
  const module = item.module || item;
  item.below = [...leaves.map((number) => leafItem(number, item, module)), ...nodes.map((number) => nodeItem(number, item, module))];
  return item.below;
}

/* The same with what augments of the page's modules add. */
const below = (item) => item.added.length ? [...ownBelow(item), ...item.added.flatMap(ownBelow)] : ownBelow(item);

const isNode = (item) => KINDS.includes(item.kind);
const isNamed = (item) => item.kind !== "choice" && item.kind !== "case"; /* paths of data name it */
const isClass = (item) => isNode(item) && item.classId !== 0;

/* The item above in the tree of data; null at the top, and for what is added to a module that the page does not show. */
const above = (item) => item.up.kind === "augment" ? item.up.target : item.up.kind === "module" ? null : item.up;

function upward(item, accepts) {
  let at = above(item);
  while (at && !accepts(at))
    at = above(at);
  return at;
}

const holderOf = (item) => upward(item, isNamed);
const classAbove = (item) => upward(item, isClass);

/* The topmost of the nodes that are one class with this one. */
function classTop(item) {
  for (let up = classAbove(item); up && up.classId === item.classId; up = classAbove(item))
    item = up;
  return item;
}

/* From the top of the tree down to the item. */
function wayTo(item) {
  const way = [];
  for (let at = item; at; at = above(at))
    way.unshift(at);
  return way;
}

/* ---- Modules ---- */

const modules = data.modules.map((record) => ({ kind: "module", remarks: {}, deviations: [], ...record, added: [] }));
const moduleByName = new Map(modules.map((module) => [module.name, module]));
for (const module of modules)
  module.augments = (module.augments || []).map((record) => augmentItem(record, module));

/* Classes, leaves, and all places of a row and of what is below it. Rows are shared: each is counted once. */
const counted = new Map();
function countNode(number) {
  if (!counted.has(number)) {
    const row = data.nodes[number];
    const sum = countRows(row[6], row[7]);
    counted.set(number, { classes: sum.classes + (row[2] ? 1 : 0), leaves: sum.leaves, places: sum.places + 1 });
  }
  return counted.get(number);
}
function countRows(leaves, nodes) {
  const sum = { classes: 0, leaves: (leaves || []).length, places: (leaves || []).length };
  for (const number of nodes || [])
    addCount(sum, countNode(number));
  return sum;
}
function addCount(sum, more) {
  for (const key of Object.keys(sum))
    sum[key] += more[key];
}
function countModule(module) {
  const sum = countRows([], module.tree);
  for (const augment of module.augments)
    addCount(sum, countRows(augment.leaves, augment.nodes));
  return sum;
}

/* ---- Links: "/module:name/name", with the module where it changes, choices and cases in parentheses if they are meant ---- */

function pathOf(item) {
  if (item.kind === "module")
    return item.name;
  if (item.kind === "augment")
    return item.module.name + ":" + item.written;
  const way = wayTo(item);
  const first = way[0];
  let path = first.up.kind === "augment" ? first.up.to : "";
  let module = first.up.kind === "augment" ? null : "";
  way.forEach((step, index) => {
    if (!isNamed(step) && !isNamed(item) && index >= way.findLastIndex(isNamed))
      path += `/(${step.name})`;
    if (!isNamed(step))
      return;
    path += "/" + (step.module.name === module ? "" : step.module.name + ":") + step.name;
    module = step.module.name;
  });
  return path;
}

const linkTo = (item) => "#" + pathOf(item);

/* Items below with that name; choices and cases are looked through, and named only by themselves. */
function named(items, name, module, isExact) {
  const found = [];
  for (const item of items) {
    const isMeant = item.name === name && (!module || item.module.name === module);
    if (isMeant && (isNamed(item) || isExact))
      found.push(item);
    else if (!isNamed(item))
      found.push(...named(below(item), name, module, false));
  }
  return found;
}

/* The steps of a path: { name, module or "", isChoice }. */
const stepsOf = (path) => path.split("/").filter(Boolean).map((part) => {
  const isChoice = part.startsWith("(");
  const [, module = "", name] = /^\(?(?:([^:]*):)?([^)]*)\)?$/.exec(part) || [];
  return { name: name || "", module, isChoice };
});

const orphans = []; /* augments whose target the page does not show */

/* What stands at the top of all trees, those of orphans included when the path leads there. */
function tops(path) {
  const trees = modules.flatMap((module) => module.tree ? ownBelow(module) : []);
  const orphan = orphans.filter((augment) => path.startsWith(augment.to + "/"));
  return { trees, orphan };
}

/* Follows a path as far as it leads: { item, rest }, where rest is what is not there. `isSchema`: steps name choices and cases,
 * as targets of augments and deviations do. */
function follow(path, isSchema = false) {
  const { trees, orphan } = tops(path);
  let items = trees;
  let steps = stepsOf(path);
  if (orphan.length) {
    items = orphan.flatMap(ownBelow);
    steps = stepsOf(path.slice(orphan[0].to.length));
  }
  let item = null;
  let module = "";
  for (let i = 0; i < steps.length; ++i) {
    const step = steps[i];
    const wanted = step.module || (step.isChoice || isSchema ? "" : module);
    const candidates = step.isChoice ? items.filter((one) => !isNamed(one) && one.name === step.name)
                                     : named(items, step.name, wanted, isSchema);
    if (!candidates.length)
      return { item, rest: steps.slice(i) };
    item = candidates[0];
    module = item.module.name;
    items = below(item);
  }
  return { item, rest: [] };
}

/* The module's own item at a path without modules, or the nearest one above it. */
function followPlain(module, path) {
  const names = stepsOf(path);
  let items = modules.flatMap((one) => one.tree ? ownBelow(one) : []);
  let nearest = null;
  for (const { name } of names) {
    const found = items.filter((item) => item.name === name).concat(named(items.filter((item) => !isNamed(item)), name, "", true));
    if (!found.length)
      return { item: nearest, isThere: false };
    nearest = found.find((item) => item.module === module) || found[0];
    items = found.flatMap(below);
  }
  return { item: nearest, isThere: nearest !== null && nearest.module === module };
}

for (const module of modules)
  for (const augment of module.augments) {
    const { item, rest } = follow(augment.to || "");
    augment.target = rest.length || !item ? null : item;
    if (augment.target)
      augment.target.added.push(augment);
    else if (augment.to)
      orphans.push(augment);
  }
/* An augment may add to what a module further down adds. */
for (const augment of orphans.splice(0)) {
  const { item, rest } = follow(augment.to);
  augment.target = rest.length || !item ? null : item;
  (augment.target ? augment.target.added : orphans).push(augment);
}

/* ---- What is said about items ---- */

const deviationsOf = new Map(); /* by item */
const changesOf = new Map();
const findingsOf = new Map();

const addTo = (map, key, value) => map.set(key, [...(map.get(key) || []), value]);

for (const deviation of data.deviations) {
  const { item, rest } = follow(deviation.to, true);
  deviation.item = item;
  deviation.isGone = rest.length > 0;
  if (item)
    addTo(deviationsOf, item, deviation);
}
for (const module of modules) {
  for (const change of module.changes ? module.changes.list : []) {
    change.isMove = change.rule.endsWith("-moved"); /* from one path to another */
    const path = change.isMove ? change.new : change.path;
    const { item, isThere } = path ? followPlain(module, path) : { item: null, isThere: false };
    change.module = module;
    change.item = item;
    change.isGone = !isThere;
    if (item)
      addTo(changesOf, item, change);
  }
  for (const number of module.findings || []) {
    const finding = data.findings[number];
    const { item, isThere } = finding.path ? followPlain(module, finding.path) : {};
    if (isThere)
      addTo(findingsOf, item, finding);
  }
}
const findingsAt = (item) => [...(item.remarks.findings || []).map((number) => data.findings[number]), ...(findingsOf.get(item) || [])];

/* ---- Classes and keys ---- */

/* The leaves of a node and of its choices, each with what it stands in: an attribute of the class, if it has an id. */
function leavesOf(node) {
  return below(node).flatMap((item) => item.isLeaf ? [item] : isNamed(item) ? [] : leavesOf(item));
}

/* The nodes below, choices and cases looked through. */
const nodesBelow = (node) => below(node).flatMap((item) => item.isLeaf ? [] : isNamed(item) ? [item] : nodesBelow(item));

/* The attribute with that id among all nodes that are one class with the node; undefined if there is none. */
function attributeOf(node, id) {
  const pending = [classTop(node)];
  while (pending.length) {
    const at = pending.shift();
    const leaf = leavesOf(at).find((one) => one.id === id && one.kind === "leaf");
    if (leaf)
      return leaf;
    pending.push(...nodesBelow(at).filter((item) => item.classId === node.classId || !item.classId));
  }
  return undefined;
}

const ownKeys = (node) => node.own.map((id) => ({ node: classTop(node), id, leaf: attributeOf(node, id) }));

/* Which key of which class above each ancestor key stands for. The library has them in the order of the class above: its own
 * ancestor keys first, then its keys. */
function ancestorKeys(node) {
  const up = classAbove(classTop(node));
  const keys = up ? [...ancestorKeys(up).map((key) => key.of), ...ownKeys(up)] : [];
  return node.ancestor.map((id, index) => ({ id, of: keys[index] || null }));
}

/* The classes below whose objects carry a key of the class: [{ node, id }]. */
function carriersOf(node, id) {
  const top = classTop(node);
  const carriers = [];
  const visit = (item) => {
    for (const child of nodesBelow(item)) {
      if (isClass(child) && classTop(child) === child)
        for (const key of ancestorKeys(child))
          if (key.of && key.of.node === top && key.of.id === id)
            carriers.push({ node: child, id: key.id });
      visit(child);
    }
  };
  visit(top);
  return carriers;
}
