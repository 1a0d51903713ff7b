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

/* True if the item is in another module's tree. */
const isAddedTo = (item) => wayTo(item)[0].up.kind === "augment" || item.module !== wayTo(item)[0].module;

/* { module, path, xpathMain }; null for a choice or case, which no path names, and for what a module that is not on the page adds. */
function ownRequest(item) {
  if (!isNamed(item) || item.module.isStranger)
    return null;
  const way = wayTo(item);
  const path = dataPath(item);
  const top = way[0].module;
  const isAdded = isAddedTo(item);
  const xpathMain = isAdded ? augmentForm(way, item.module)
                            : way.filter(isNamed).map((step) => top.prefix + ":" + step.name).join("/");
  return { module: isAdded ? item.module : top, path, xpathMain };
}

/* What the library takes: characters of a leaf's path, of a path in an augment, of a step. */
const LEAF_PATH = 256, AUGMENT_PATH = 255, STEP = 64;

/* The library cuts the leaf off and takes the last step with a prefix for the first that an augment adds. It finds the leaf's holder
 * where another augment of the module ends in front of that step. */
function isFoundFromAbove(leaf) {
  const steps = leaf.up.written.split("/").filter(Boolean);
  const prefixes = steps.map((step) => /^(.*:)?/.exec(step)[0]);
  const last = prefixes.findLastIndex(Boolean);
  const target = "/" + steps.slice(0, last).join("/");
  return last > 0 && prefixes[0] !== prefixes[last] && leaf.module.augments.some((one) => one.written === target);
}

/* True if the library can go along the path. */
const isWalkable = (path, isInAugment) => path.split("/").every((step) => step.length <= STEP) && !(isInAugment && path.length > AUGMENT_PATH);

/* True if the library finds the leaf itself: not one of a case, and of those that an augment adds few below a node with nodes. */
function isFoundItself(leaf, holder, { path, xpathMain }) {
  const isForeign = !holder || holder.module !== leaf.module;
  const isInAugment = isAddedTo(leaf);
  if (!isNamed(leaf.up) || (leaf.up.kind === "augment" && leaf.up.target && !isNamed(leaf.up.target)))
    return false;
  if (holder && !below(holder).some(isNode) && isWalkable(path, isInAugment))
    return true;
  return path.length <= LEAF_PATH && xpathMain.length <= LEAF_PATH && isWalkable(path.slice(0, path.lastIndexOf("/")), isInAugment) &&
    (!isForeign || isFoundFromAbove(leaf));
}

/* What a host asks for: a leaf that the library does not find itself is got through its holder. `isLost`: the library finds neither. */
function requestFor(item) {
  const request = ownRequest(item);
  if (!request)
    return null;
  if (!item.isLeaf)
    return { ...request, isLost: !isWalkable(request.path, isAddedTo(item)) };
  const holder = holderOf(item);
  if (isFoundItself(item, holder, request))
    return request;
  const isForeign = !holder || holder.module !== item.module;
  const held = isForeign ? { ...request, path: holder ? dataPath(holder) : targetPath(item.up) } : ownRequest(holder);
  return { ...held, forHolder: true, isLost: !isWalkable(held.path, isAddedTo(item)) };
}
