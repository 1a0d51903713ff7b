/* The tree of modules, nodes and leaves. A row's children are made when it is unfolded and go when it is folded. */
const tree = document.getElementById("tree");
const rowOf = new WeakMap(); /* by link: { item, up, link, element, children } */

/* A sign whose meaning is read aloud instead. */
const mark = (kind, sign, meaning) => h("span", { class: "mark " + kind, title: meaning }, h("span", { "aria-hidden": "true" }, sign),
                                        h("span", { class: "hidden" }, " " + meaning));

function marksOf(item) {
  const marks = [];
  const findings = item.kind === "module" ? data.findings.filter((finding) => finding.module === item.name) : findingsAt(item);
  const changes = item.kind === "module" ? (item.changes ? item.changes.list : []) : changesOf.get(item) || [];
  const isError = item.failed || findings.some((finding) => finding.level === "error");
  if (item.failed || findings.length)
    marks.push(mark(isError ? "error" : "warning", item.kind === "module" && findings.length ? String(findings.length) : "!",
                    item.failed ? "cannot be loaded" : plural(findings.length, "finding")));
  if (changes.length) {
    const isBreaking = changes.some((change) => change.breaking);
    marks.push(mark(isBreaking ? "breaking" : "change", "Δ", plural(changes.length, "change") + (isBreaking ? ", breaking" : "")));
  }
  if (deviationsOf.has(item))
    marks.push(mark("deviation", "≠", "changed by a deviation"));
  return marks;
}

function labelOf(item, up) {
  const label = [h("span", { class: "name" }, item.kind === "augment" ? "adds to " + item.written : item.name)];
  if (item.kind === "choice" || item.kind === "case")
    label.unshift(h("span", { class: "kind" }, item.kind + " "));
  if (item.isLeaf && item.flags & KEY)
    label.push(h("span", { class: "badge key" }, "key"));
  if (up && up.item.kind !== "module" && up.item.kind !== "augment" && item.module !== up.item.module)
    label.push(h("span", { class: "badge from" }, item.module.name));
  label.push(...marksOf(item));
  if (isClass(item))
    label.push(h("span", { class: "id" }, hex(item.classId)));
  else if (item.isLeaf && item.id)
    label.push(h("span", { class: "id leaf-id" }, String(item.id)));
  return label;
}

const childrenOf = (item) => item.kind === "module" ? [...(item.tree ? ownBelow(item) : []), ...item.augments]
                                                    : item.kind === "augment" ? ownBelow(item) : below(item);

function makeRow(item, up, position, size) {
  const level = up ? Number(up.link.getAttribute("aria-level")) + 1 : 1;
  const hasChildren = item.kind === "module" ? Boolean((item.tree || []).length || item.augments.length)
                    : item.kind === "augment" ? Boolean((item.nodes || item.leaves || []).length)
                    : !item.isLeaf && Boolean(item.added.length || item.row[6] || item.row[7]);
  const link = h("a", { role: "treeitem", class: item.kind + (isClass(item) ? " class" : ""), href: linkTo(item), tabindex: "-1",
                        "aria-level": level, "aria-posinset": position, "aria-setsize": size, "aria-selected": "false" },
                 h("span", { class: "fold" }), ...labelOf(item, up));
  if (hasChildren)
    link.setAttribute("aria-expanded", "false");
  link.style.setProperty("--level", level);
  const row = { item, up, link, element: h("li", { role: "none" }, link), children: null };
  rowOf.set(link, row);
  return row;
}

let groups = 0;

function unfold(row) {
  if (row.children || !row.link.hasAttribute("aria-expanded"))
    return;
  const items = childrenOf(row.item);
  const id = "group" + ++groups;
  row.children = items.map((item, i) => makeRow(item, row, i + 1, items.length));
  row.element.append(h("ul", { role: "group", id }, ...row.children.map((child) => child.element)));
  row.link.setAttribute("aria-owns", id);
  row.link.setAttribute("aria-expanded", "true");
}

function fold(row) {
  if (!row.children)
    return;
  const holdsCurrent = row.element.lastChild.contains(current.link);
  row.element.lastChild.remove();
  row.children = null;
  row.link.removeAttribute("aria-owns");
  row.link.setAttribute("aria-expanded", "false");
  if (holdsCurrent)
    focusRow(row, tree.contains(document.activeElement) || document.activeElement === document.body);
}

const topRows = modules.map((module, i) => makeRow(module, null, i + 1, modules.length));
tree.append(...topRows.map((row) => row.element));
let current = topRows[0]; /* the one row that the tabulator key reaches */
let selected = null;

function focusRow(row, isFocused = true) {
  if (current)
    current.link.tabIndex = -1;
  current = row;
  row.link.tabIndex = 0;
  if (isFocused)
    row.link.focus();
}
if (current)
  current.link.tabIndex = 0;

/* Unfolds what leads to the item and marks its row. A row of the item that is there already is kept. */
function select(item) {
  if (selected) {
    selected.link.setAttribute("aria-selected", "false");
    selected = null;
  }
  if (!item)
    return;
  let row = current && current.item === item && tree.contains(current.link) ? current : null;
  if (!row) {
    const way = item.kind === "module" ? [item] : item.kind === "augment" ? [item.module, item]
              : [...(wayTo(item)[0].up.kind === "augment" ? [wayTo(item)[0].up.module, wayTo(item)[0].up] : [wayTo(item)[0].module]), ...wayTo(item)];
    row = topRows.find((one) => one.item === way[0]);
    for (const step of way.slice(1)) {
      unfold(row);
      row = row.children.find((one) => one.item === step) || row;
    }
  }
  unfold(row);
  selected = row;
  row.link.setAttribute("aria-selected", "true");
  focusRow(row, tree.contains(document.activeElement));
  row.link.scrollIntoView({ block: "nearest" });
}

/* ---- Keys and mouse: as https://www.w3.org/WAI/ARIA/apg/patterns/treeview/ has them ---- */

function visibleRows(rows = topRows) {
  return rows.flatMap((row) => row.children ? [row, ...visibleRows(row.children)] : [row]);
}

function moveBy(step) {
  const rows = visibleRows();
  const next = rows[rows.indexOf(current) + step];
  if (next)
    focusRow(next);
}

function typeAhead(letter) {
  const rows = visibleRows();
  const from = rows.indexOf(current) + 1;
  const next = [...rows.slice(from), ...rows.slice(0, from)].find((row) => row.item.name.toLowerCase().startsWith(letter.toLowerCase()));
  if (next)
    focusRow(next);
}

tree.addEventListener("keydown", (event) => {
  if (event.ctrlKey || event.metaKey || event.altKey || !current)
    return;
  const isOpen = Boolean(current.children);
  const keys = {
    ArrowDown: () => moveBy(1),
    ArrowUp: () => moveBy(-1),
    Home: () => focusRow(topRows[0]),
    End: () => focusRow(visibleRows().at(-1)),
    ArrowRight: () => isOpen ? focusRow(current.children[0]) : unfold(current),
    ArrowLeft: () => isOpen ? fold(current) : current.up && focusRow(current.up),
    Enter: () => goTo(current.item),
    " ": () => goTo(current.item),
  };
  if (keys[event.key])
    keys[event.key]();
  else if (event.key.length === 1 && event.key !== "/")
    typeAhead(event.key);
  else
    return;
  event.preventDefault();
});

tree.addEventListener("click", (event) => {
  const link = event.target.closest("[role=treeitem]");
  if (!link || event.ctrlKey || event.metaKey || event.shiftKey)
    return;
  event.preventDefault();
  const row = rowOf.get(link);
  focusRow(row);
  if (event.target.closest(".fold")) {
    row.children ? fold(row) : unfold(row);
    return;
  }
  if (selected === row && row.children)
    fold(row);
  else if (selected === row)
    unfold(row);
  else
    goTo(row.item);
});
