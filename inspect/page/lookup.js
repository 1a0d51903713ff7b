/* How a host asks the library for a node: the module, and the two forms of the path. */

/* The names of a target path without modules, choices and cases left out. */
const targetPath = (augment) => stepsOf(augment.to).filter((step) => !step.isChoice).map((step) => "/" + step.name).join("");

/* "/sys/ports/port" */
function dataPath(item) {
  const way = wayTo(item);
  const start = way[0].up.kind === "augment" ? targetPath(way[0].up) : "";
  return start + way.filter(isNamed).map((step) => "/" + step.name).join("");
}

/* Below its target's path, as the statement has it, the first name that the module adds has its prefix, and no other. */
function augmentForm(way, module) {
  const first = way.findIndex((step) => step.module === module);
  const names = way.slice(first).filter(isNamed).map((step) => step.name);
  return way[first].up.written.replace(/^\//, "") + "/" + module.prefix + ":" + names.join("/");
}

/* { module, path, xpathMain }; null for a choice or case, which no path names, and for what a module that is not on the page adds. */
function ownRequest(item) {
  if (!isNamed(item) || item.module.isStranger)
    return null;
  const way = wayTo(item);
  const path = dataPath(item);
  const top = way[0].module;
  const isAdded = way[0].up.kind === "augment" || item.module !== top;
  const xpathMain = isAdded ? augmentForm(way, item.module)
                            : way.filter(isNamed).map((step) => top.prefix + ":" + step.name).join("/");
  return { module: isAdded ? item.module : top, path, xpathMain };
}

/* The library finds a leaf of a case, and one that an augment adds to a node with children, only through the node that holds
 * it: the request is that node's then. */
function requestFor(item) {
  const request = ownRequest(item);
  if (!request || !item.isLeaf)
    return request;
  const holder = holderOf(item);
  const isForeign = !holder || holder.module !== item.module;
  const isHidden = !isNamed(item.up) || (item.up.kind === "augment" && item.up.target && !isNamed(item.up.target));
  const hasNodes = !holder || below(holder).some(isNode);
  if (!isHidden && !(isForeign && hasNodes))
    return request;
  if (!holder)
    return { ...request, path: targetPath(item.up), forHolder: true };
  const held = isForeign ? { ...request, path: dataPath(holder) } : ownRequest(holder);
  return { ...held, forHolder: true };
}
