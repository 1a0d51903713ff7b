/* What the right side shows of an item: a module, a class or another node, an attribute. Every text of a model becomes a text
 * node; nothing of it is markup. */
const view = document.getElementById("view");

const section = (title, ...content) => {
  const shown = content.flat().filter(Boolean);
  return shown.length ? h("section", {}, h("h2", {}, title), ...shown) : null;
};

const link = (item, ...content) => h("a", { href: linkTo(item) }, ...(content.length ? content : [item.name]));
const code = (...content) => h("code", {}, ...content);

/* A link to what a path leads to, or the path alone. */
function pathLink(path, isSchema = false) {
  const { item, rest } = follow(path, isSchema);
  const plain = stepsOf(path).map((step) => "/" + step.name).join("");
  return item && !rest.length ? h("a", { href: linkTo(item), class: "path" }, isNamed(item) ? dataPath(item) : plain) : code(plain);
}

const fact = (name, ...value) => {
  const shown = value.filter((one) => one !== null && one !== undefined && one !== "");
  return shown.length ? h("div", {}, h("dt", {}, name), h("dd", {}, ...shown)) : null;
};
const facts = (...all) => {
  const shown = all.filter(Boolean);
  return shown.length ? h("dl", { class: "facts" }, ...shown) : null;
};

/* Paragraphs are filled anew; indented ones stay as they are. */
function prose(number) {
  const paragraphs = text(number).split(/\n\s*\n/).filter((part) => part.trim());
  return paragraphs.map((part) => /^[ \t-]/m.test(part) ? h("p", { class: "prose as-is" }, part)
                                                        : h("p", { class: "prose" }, part.split("\n").map((line) => line.trim()).join(" ")));
}

const placeOf = (item) => {
  const file = item.file ? text(item.file) : item.module.file;
  return item.line ? h("span", { class: "place" }, `${file}:${item.line}`) : null;
};

const badge = (kind, ...content) => h("span", { class: "badge " + kind }, ...content);

function copyButton(value, what) {
  const button = h("button", { type: "button", class: "copy", "aria-label": "Copy " + what }, "Copy");
  button.addEventListener("click", async () => {
    const done = await copyText(value);
    button.textContent = done ? "Copied" : "Not copied";
    say(done ? what + " copied" : what + " could not be copied");
    setTimeout(() => { button.textContent = "Copy"; }, 1600);
  });
  return button;
}

const copyLine = (label, value, copied = value) => h("div", { class: "copyline" }, h("span", { class: "label" }, label), code(value), copyButton(copied, label));

/* The address of a page that a server has is copied. One on a disk lies elsewhere for somebody else: the file's name has to do. */
const linkLine = (item) => {
  const page = location.href.replace(/#.*/, "");
  return copyLine("Link", linkTo(item), (location.protocol === "file:" ? page.replace(/.*\//, "") : page) + linkTo(item));
};

/* ---- Parts that several views have ---- */

/* The names above, each a link. */
function crumbs(item) {
  const way = item.kind === "module" ? [] : [item.module, ...wayTo(item).slice(0, -1)];
  if (way.length > 1 && way[1].module !== item.module)
    way[0] = way[1].module;
  return way.length ? h("nav", { class: "crumbs", "aria-label": "Path" },
                        h("ol", {}, ...way.map((step) => h("li", {}, link(step, isNamed(step) ? step.name : `(${step.name})`))))) : null;
}

const heading = (item, kind, ...badges) => h("div", { class: "heading" }, h("p", { class: "eyebrow" }, kind),
                                              h("h1", {}, item.name, " "), ...badges.filter(Boolean));

const statusBadges = (item) => [
  item.flags & DEPRECATED ? badge("deprecated", "deprecated") : null,
  item.flags & OBSOLETE ? badge("obsolete", "obsolete") : null,
  above(item) && item.module !== above(item).module || item.up.kind === "augment" ? badge("from", "added by " + item.module.name) : null,
];

const noteFoot = (...parts) => {
  const shown = parts.filter(Boolean);
  return shown.length ? h("span", { class: "foot" }, ...shown.flatMap((part, i) => i ? [" · ", part] : [part])) : null;
};
const placeText = (one) => one.file ? h("span", { class: "place" }, one.file + (one.line ? ":" + one.line : "")) : null;

function findingList(findings, showsWhere) {
  return findings.length ? h("ul", { class: "notes" }, ...findings.map((finding) =>
    h("li", { class: finding.level }, h("strong", {}, finding.level === "error" ? "Error" : "Warning"), " ", finding.text,
      noteFoot(showsWhere && finding.at ? pathLink(finding.at) : null, finding.rule, placeText(finding))))) : null;
}

function deviationList(deviations, showsTarget) {
  return deviations.length ? h("ul", { class: "notes" }, ...deviations.flatMap((deviation) => deviation.what.map((what) =>
    h("li", { class: "deviation" }, showsTarget || deviation.isGone ? [pathLink(deviation.to, true), ": "] : null, code(what),
      noteFoot(moduleByName.has(deviation.by) ? link(moduleByName.get(deviation.by)) : deviation.by, placeText(deviation)))))) : null;
}

const changeValue = (change) => change.old === change.new ? [change.new] : [
  change.old ? h("del", {}, change.old) : null, change.old && change.new ? " → " : null,
  change.new ? h("ins", {}, change.isMove && !change.isGone ? link(change.item, change.new) : change.new) : null];

function changeList(changes, showsPath) {
  return changes.length ? h("ul", { class: "notes" }, ...changes.map((change) =>
    h("li", { class: change.breaking ? "breaking" : "change" },
      h("strong", {}, change.rule), " ", change.breaking ? badge("breaking", "breaking") : null, " ",
      (showsPath || change.isGone) && change.path && !change.isMove
        ? h("span", {}, change.item && !change.isGone ? h("a", { href: linkTo(change.item), class: "path" }, change.path) : code(change.path), " ") : null,
      ...changeValue(change)))) : null;
}

/* Findings, deviations and changes of the item itself. */
const saidOf = (item) => [
  section("Findings", findingList(findingsAt(item))),
  section("Deviations", deviationList(deviationsOf.get(item) || [], false)),
  section(`Changes since ${data.against}`, changeList(changesOf.get(item) || [], false)),
];

/* The texts of a lookup, and the link. */
function askSection(item) {
  const request = requestFor(item);
  if (!request)
    return null;
  return section("How a host asks for it", h("div", { class: "ask" },
    copyLine("pcModuleName", request.module.name),
    request.module.key ? copyLine("pcRevision", request.module.key) : null,
    copyLine("pcPath", request.path),
    copyLine("pcXpathMain", request.xpathMain),
    linkLine(item)),
    request.isLost ? h("p", { class: "hint" }, `The library does not find it: a step has at most ${STEP} characters, and a path in an augment ${AUGMENT_PATH}.`)
      : request.forHolder ? h("p", { class: "hint" }, "The library does not find this leaf itself: this asks for the node that holds it.") : null);
}

/* Conditions and other statements that few items have. */
const conditionFacts = (item) => [
  ...(item.remarks.when || []).map((one) => fact("When", code(one))),
  ...(item.remarks.must || []).map((one) => fact("Must", code(one))),
  ...(item.remarks["if-feature"] || []).map((one) => fact("If feature", code(one))),
  fact("Presence", (item.remarks.presence || [])[0]),
  fact("Elements", elementsOf(item.remarks)),
  fact("Ordered by", (item.remarks["ordered-by"] || [])[0]),
  ...(item.remarks.unique || []).map((one) => fact("Unique", code(one))),
];
const elementsOf = (remarks) => {
  const [min] = remarks["min-elements"] || [];
  const [max] = remarks["max-elements"] || [];
  return min || max ? `${min || 0} to ${max || "any number"}` : null;
};

/* ---- Keys ---- */

/* A column for each key that identifies an object of the class, from the topmost class down. */
function keySection(node) {
  const columns = [...ancestorKeys(node).map(({ id, of }) => ({ id, of, isOwn: false })),
                   ...ownKeys(node).map((of) => ({ id: of.id, of, isOwn: true }))];
  if (!columns.length)
    return isClass(node) ? section("Keys", h("p", { class: "hint" }, wayTo(node).some((step) => step.kind === "list") ? "This class has no keys." : "There is one object of this class, so it has no keys.")) : null;
  const groups = [];
  for (const column of columns)
    if (groups.length && groups.at(-1).node === (column.of && column.of.node) && groups.at(-1).isOwn === column.isOwn)
      groups.at(-1).columns.push(column);
    else
      groups.push({ node: column.of && column.of.node, isOwn: column.isOwn, columns: [column] });
  const classHead = ({ node: of, columns: keys, isOwn }) => h("th", { scope: "colgroup", colspan: keys.length, class: isOwn ? "own" : "" },
    of ? isOwn ? h("strong", {}, node.name) : link(of) : "no key above", " ", of ? h("span", { class: "id" }, hex(of.classId)) : null);
  const keyCell = ({ of, isOwn }) => h("td", { class: isOwn ? "own" : "" }, of ? [
    h("span", { class: "keyname" }, of.leaf ? link(of.leaf) : "?"), " ", h("span", { class: "attribute" }, of.id),
    of.leaf && of.leaf.indexMap ? h("span", { class: "map" }, "index map ", indexMapLink(of.leaf)) : null] : "–");
  const hereCell = ({ id, isOwn }) => h("td", { class: isOwn ? "own here" : "here" }, id ? h("span", { class: "attribute" }, id) : "not mapped");
  const isSame = classTop(node) !== node;
  return section("Keys",
    isSame ? h("p", { class: "hint" }, "The same class as ", link(classTop(node)), " above it, with the same keys.") : null,
    h("div", { class: "wide" }, h("table", { class: "keys" },
      h("thead", {}, h("tr", {}, h("th", { scope: "row" }, "Class"), ...groups.map(classHead))),
      h("tbody", {},
        h("tr", {}, h("th", { scope: "row" }, "Key and its attribute there"), ...columns.map(keyCell)),
        node.ancestor.length ? h("tr", {}, h("th", { scope: "row" }, "Attribute in " + node.name), ...columns.map(hereCell)) : null))));
}

function indexMapLink(leaf) {
  const id = leaf.indexMap - 1;
  const holder = holderOf(leaf);
  const map = holder ? attributeOf(holder, id) : undefined;
  return map ? link(map, `${id} ${map.name}`) : String(id);
}

/* ---- Types ---- */

const typeName = (type) => type.written === "leafref" ? `leafref → ${type.base}` : type.written || type.base || "";

/* What a type allows in a few words, for a cell of a table. */
function allowed(type) {
  const parts = [];
  if (type.range)
    parts.push(type.range);
  if (type.length)
    parts.push("length " + type.length);
  if (type.names)
    parts.push(type.names.slice(0, 6).map(([name]) => name).join(", ") + (type.names.length > 6 ? ` and ${type.names.length - 6} more` : ""));
  if (type.patterns)
    parts.push(plural(type.patterns.length, "pattern"));
  if (type.members)
    parts.push(type.members.map((number) => typeName(data.types[number])).join(" | "));
  return parts.join("; ");
}

function nameTable(type) {
  const hasText = type.names.some((row) => row[2]);
  return h("table", { class: "names" },
    h("thead", {}, h("tr", {}, h("th", { scope: "col", class: "number" }, type.base === "bits" ? "Position" : "Value"), h("th", { scope: "col" }, "Name"),
                     hasText ? h("th", { scope: "col" }, "Description") : null)),
    h("tbody", {}, ...type.names.map(([name, number, about]) =>
      h("tr", {}, h("td", { class: "number" }, number), h("td", {}, code(name)), hasText ? h("td", {}, about || "") : null))));
}

function typeFacts(type) {
  return [
    fact("Type", code(typeName(type)), type.written && type.written !== "leafref" ? ` is ${type.base}` : null),
    type.to ? fact("Refers to", pathLink(type.to)) : null,
    type.path ? fact("Path", code(type.path[0])) : null,
    fact("Range", type.range),
    type.kept ? fact("Range the library keeps", type.kept) : null,
    fact("Length", type.length),
    fact("Fraction digits", (type.digits || [])[0]),
    ...(type.patterns || []).map((pattern) => fact("Pattern", code(pattern))),
    ...(type.bases || []).map((base) => fact("Identities derived from", code(base))),
    type.instance ? fact("Instance", "need not exist") : null,
    type.names ? fact(type.base === "bits" ? "Bits" : "Values", nameTable(type)) : null,
    ...(type.members || []).map((number) => fact("Member", facts(...typeFacts(data.types[number])))),
  ];
}

/* ---- Views ---- */

/* The choice and case in which a leaf or node of the class stands. */
function caseOf(item, node) {
  const within = [];
  for (let at = above(item); at && at !== node && !isNamed(at); at = above(at))
    within.unshift(at.name);
  return within.join(" / ");
}

function attributeTable(node) {
  const leaves = leavesOf(node);
  if (!leaves.length)
    return null;
  const row = (leaf) => h("tr", {},
    h("td", { class: "number" }, leaf.id ? h("span", { class: "attribute" }, leaf.id) : "–"),
    h("td", {}, link(leaf), " ", leaf.flags & KEY ? badge("key", "key") : null,
      leaf.kind === "leaf-list" ? badge("kindof", "leaf-list") : null,
      caseOf(leaf, node) ? h("span", { class: "case" }, caseOf(leaf, node)) : null,
      leaf.module !== node.module ? badge("from", leaf.module.name) : null, ...marksOf(leaf)),
    h("td", {}, code(typeName(leaf.type)), leaf.remarks.units ? h("span", { class: "units" }, " " + leaf.remarks.units) : null,
      h("span", { class: "allowed inline" }, allowed(leaf.type))), /* where the table has no room for the last column */
    h("td", { class: "allowed" }, allowed(leaf.type)));
  return h("div", { class: "wide" }, h("table", { class: "attributes" },
    h("thead", {}, h("tr", {}, ...["Id", "Name", "Type", "Allowed"].map((name, i) => h("th", { scope: "col", class: ["number", "", "", "allowed"][i] }, name)))),
    h("tbody", {}, ...leaves.map(row))));
}

function classRows(nodes, withPath) {
  return h("div", { class: "wide" }, h("table", { class: "classes" },
    h("thead", {}, h("tr", {}, ...["Class", withPath ? "Path" : "Name", "Sample", "Keys", "Ancestor keys", "Attributes"].map((name, i) =>
      h("th", { scope: "col", class: i === 5 ? "number" : "" }, name)))),
    h("tbody", {}, ...nodes.map((node) => h("tr", {},
      h("td", {}, node.classId ? h("span", { class: "id" }, hex(node.classId)) : "–"),
      h("td", {}, h("a", { href: linkTo(node), class: withPath ? "path" : "" }, withPath ? dataPath(node) : node.name), " ",
        !withPath && caseOf(node, holderOf(node)) ? h("span", { class: "case" }, caseOf(node, holderOf(node))) : null,
        node.up.kind === "augment" && !withPath ? badge("from", node.module.name) : null, ...marksOf(node)),
      h("td", {}, node.sampleId ? h("span", { class: "id" }, hex(node.sampleId)) : ""),
      h("td", {}, node.own.join(" ")), h("td", {}, node.ancestor.join(" ")),
      h("td", { class: "number" }, leavesOf(node).filter((leaf) => leaf.id).length))))));
}

function nodeView(node) {
  const kind = isClass(node) ? `Class · ${node.kind}` : node.kind[0].toUpperCase() + node.kind.slice(1);
  const inner = nodesBelow(node);
  return [crumbs(node), heading(node, kind, ...statusBadges(node)),
    facts(
      isClass(node) ? fact("Class id", h("span", { class: "id big" }, hex(node.classId)), h("span", { class: "decimal" }, " " + node.classId)) : null,
      node.sampleId ? fact("Sample id", h("span", { class: "id big" }, hex(node.sampleId)), h("span", { class: "decimal" }, " " + node.sampleId)) : null,
      isNamed(node) ? fact("Data", node.flags & STATE ? "state" : "configuration") : null,
      node.flags & MANDATORY ? fact("Mandatory", "yes") : null,
      ...(node.remarks.default || []).map((one) => fact("Default", code(one))),
      ...conditionFacts(node),
      fact("Source", placeOf(node))),
    prose(node.text), saidOf(node), keySection(node),
    section(isClass(node) ? "Attributes" : "Leaves", attributeTable(node)),
    section("Below", inner.length ? classRows(inner, false) : null),
    askSection(node)];
}

function leafView(leaf) {
  const holder = holderOf(leaf);
  const isAttribute = leaf.id !== 0;
  const carriers = holder && leaf.flags & KEY ? carriersOf(holder, leaf.id) : [];
  return [crumbs(leaf), heading(leaf, isAttribute ? "Attribute" : leaf.kind === "leaf" ? "Leaf without attribute id" : "Leaf-list",
                                leaf.flags & KEY ? badge("key", "key") : null, ...statusBadges(leaf)),
    facts(
      isAttribute ? fact("Attribute id", h("span", { class: "attribute big" }, leaf.id)) : null,
      holder && holder.classId ? fact("Of class", link(holder), " ", h("span", { class: "id" }, hex(holder.classId))) : null,
      leaf.datatype ? fact("Datatype", leaf.datatype - 1) : null,
      leaf.indexMap ? fact("Index map", indexMapLink(leaf)) : null,
      leaf.referenceKey ? fact("Reference key", leaf.referenceKey - 1) : null,
      fact("Data", leaf.flags & STATE ? "state" : "configuration"),
      leaf.flags & MANDATORY ? fact("Mandatory", "yes") : null,
      ...(leaf.remarks.default || []).map((one) => fact("Default", code(one))),
      fact("Units", leaf.remarks.units),
      ...conditionFacts(leaf),
      fact("Source", placeOf(leaf))),
    prose(leaf.text), saidOf(leaf),
    section("Type", facts(...typeFacts(leaf.type))),
    section("Carried by classes below", carriers.length ? h("ul", { class: "carriers" }, ...carriers.map(({ node, id }) =>
      h("li", {}, link(node), " ", h("span", { class: "id" }, hex(node.classId)), " as attribute ", h("span", { class: "attribute" }, id)))) : null),
    askSection(leaf)];
}

/* All classes of a module, those that its augments add included. */
function classesOf(module) {
  const classes = [];
  const visit = (item) => {
    if (isClass(item))
      classes.push(item);
    if (!item.isLeaf)
      ownBelow(item).forEach(visit);
  };
  if (module.tree)
    ownBelow(module).forEach(visit);
  module.augments.forEach((augment) => ownBelow(augment).forEach(visit));
  return classes;
}

function moduleView(module, augment) {
  const findings = data.findings.filter((finding) => finding.module === module.name);
  const changes = module.changes ? module.changes.list : [];
  const classes = classesOf(module);
  const deviations = data.deviations.filter((deviation) => deviation.by === module.name);
  const deviated = data.deviations.filter((deviation) => deviation.item && deviation.item.module === module && deviation.by !== module.name);
  return [heading(module, "Module", module.failed ? badge("error", "not loaded") : module.gone ? badge("breaking", "gone") : null),
    facts(fact("Revision", module.revision), module.task ? fact("Task id", module.task) : null, fact("Prefix", module.prefix && code(module.prefix)),
          fact("Namespace", module.namespace && code(module.namespace)),
          fact("Source", module.file && h("span", { class: "place" }, module.file)),
          module.changes && (module.changes.old || module.changes.new) && module.changes.old !== module.changes.new
            ? fact("Revision changed", `${module.changes.old || "none"} → ${module.changes.new || "none"}`) : null),
    prose(module.text),
    module.failed ? section("Why it cannot be loaded", h("ul", { class: "notes" }, ...module.failed.map((why) => h("li", { class: "error" }, why)))) : null,
    module.deviations && module.deviations.length ? section("Its deviations are not in force", h("ul", { class: "notes" }, ...module.deviations.map((why) => h("li", { class: "error" }, why)))) : null,
    module.failed ? null : section("Findings", findingList(findings, true)),
    section(`Changes since ${data.against}`, module.uncompared ? h("p", { class: "gone" }, "Not known: one of the two versions cannot be loaded.") : changeList(changes, true)),
    section("Classes", classes.length ? classRows(classes, true) : null),
    module.augments.length ? section("Adds to other nodes", h("ul", { class: "adds" }, ...module.augments.map((one) =>
      h("li", { class: one === augment ? "meant" : "" }, one.target ? link(one.target, code(one.written)) : code(one.written),
        one.target || !one.to ? null : " of a module that this page does not show", ": ",
        ...ownBelow(one).flatMap((item, i) => [i ? ", " : "", link(item)]))))) : null,
    section("Deviates", deviationList(deviations, true)),
    section("Deviated", deviationList(deviated, true)),
    module.tree && !classes.length ? section("Nodes without class id", classRows(ownBelow(module), true)) : null,
    module.tree || module.augments.length || module.failed || !module.file ? null
      : h("p", { class: "hint" }, "No container stands at the top of this module, so it has no classes: others use its definitions."),
    section("Link", h("div", { class: "ask" }, linkLine(module)))];
}

function overview() {
  const sums = modules.map(countModule);
  const total = (key) => sums.reduce((sum, one) => sum + one[key], 0);
  const changes = modules.flatMap((module) => module.changes ? module.changes.list : []);
  const failed = modules.filter((module) => module.failed);
  const tile = (number, one, many = one + "s") => h("li", {}, h("strong", {}, number.toLocaleString("en")), " ", number === 1 ? one : many);
  const breaking = changes.filter((change) => change.breaking).length;
  const uncompared = modules.filter((module) => module.uncompared).length;
  return [h("div", { class: "heading" }, h("p", { class: "eyebrow" }, "Class model"), h("h1", {}, SET)),
    h("ul", { class: "tiles" },
      tile(modules.filter((module) => !module.gone).length, "module"), tile(total("classes"), "class", "classes"), tile(total("leaves"), "leaf", "leaves"),
      data.findings.length ? tile(data.findings.length, "finding") : null,
      data.against ? tile(changes.length, `change since ${data.against}`, `changes since ${data.against}`) : null,
      uncompared ? tile(uncompared, "module not compared", "modules not compared") : null,
      breaking ? tile(breaking, "of them breaking", "of them breaking") : null),
    h("p", { class: "hint" }, "Search by name or path, by class id (", code("0x1001"), ") or attribute id (", code("0x1001.7"), "). Everything here has a link that can be sent on."),
    failed.length ? section("Not loaded", h("ul", { class: "notes" }, ...failed.map((module) => h("li", { class: "error" }, link(module), " ", module.failed[0])))) : null,
    section("Modules", h("div", { class: "wide" }, h("table", { class: "modules" },
      h("thead", {}, h("tr", {}, ...["Module", "Revision", "Classes", "Leaves", ""].map((name, i) => h("th", { scope: "col", class: i === 2 || i === 3 ? "number" : "" }, name)))),
      h("tbody", {}, ...modules.map((module, i) => h("tr", {},
        h("td", {}, link(module), module.gone ? badge("breaking", "gone") : null, module.uncompared ? badge("deprecated", "not compared") : null), h("td", {}, module.revision || ""), h("td", { class: "number" }, sums[i].classes || ""), h("td", { class: "number" }, sums[i].leaves || ""),
        h("td", {}, ...marksOf(module)))))))),
    h("p", { class: "hint" }, `Made by korv-inspect ${data.tool} of ${data.folders.join(", ")}.`)];
}
