/* The search. What is typed is an id, a path or a part of a name; words between blanks all have to fit. */

let index = null; /* all items, made when the first search needs them */

function allItems() {
  if (index)
    return index;
  index = [];
  const visit = (item) => {
    index.push(item);
    for (const child of ownBelow(item))
      visit(child);
  };
  for (const module of modules) {
    index.push(module);
    if (module.tree)
      ownBelow(module).forEach(visit);
    for (const augment of module.augments)
      ownBelow(augment).forEach(visit);
  }
  return index;
}

/* How well each text fits a part of a name: 4 it is the name, 3 its beginning, 2 the beginning of a word in it, 1 a part. */
const lowerTexts = [];
function scoresOf(part) {
  const scores = new Uint8Array(data.texts.length);
  for (let i = 0; i < data.texts.length; ++i) {
    const name = lowerTexts[i] ??= data.texts[i].length < 200 ? data.texts[i].toLowerCase() : "";
    const at = name.indexOf(part);
    if (at >= 0)
      scores[i] = name === part ? 4 : at === 0 ? 3 : /[-_.]/.test(name[at - 1]) ? 2 : 1;
  }
  return scores;
}
const scoreOfName = (name, part) => {
  const at = name.toLowerCase().indexOf(part);
  return at < 0 ? 0 : name.length === part.length ? 4 : at === 0 ? 3 : 1;
};

const idStarts = (id, digits) => id !== 0 && id.toString(16).startsWith(digits);
const idScore = (id, digits) => !idStarts(id, digits) ? 0 : id.toString(16).length === digits.length ? 5 : 2;

/* A test of an item that answers how well it fits, 0 for not at all. */
function testOf(word) {
  let match = /^0x([0-9a-f]*)(?:\.(\d*))?$/.exec(word);
  if (match && match[2] !== undefined) {
    const [, digits, field] = match;
    return (item) => {
      const holder = item.isLeaf ? holderOf(item) : null;
      if (!holder || holder.classId.toString(16) !== digits || !String(item.id).startsWith(field) || !item.id)
        return 0;
      return String(item.id) === field ? 5 : 2;
    };
  }
  if (match && match[1])
    return (item) => isNode(item) ? Math.max(idScore(item.classId, match[1]), idScore(item.sampleId, match[1])) : 0;
  if (word.includes("/"))
    return pathTest(word);
  const scores = scoresOf(word);
  const number = /^\d+$/.test(word) ? Number(word) : -1;
  return (item) => {
    if (item.kind === "module")
      return number === item.task && number > 0 ? 5 : scoreOfName(item.name, word);
    const isId = number > 0 && (item.isLeaf ? item.id === number : item.classId === number || item.sampleId === number);
    return isId ? 5 : scores[item.nameNumber];
  };
}

/* The last steps of an item's path, from the top when the word begins with "/". Each may be a part of a name. */
function pathTest(word) {
  const steps = word.split("/").map((step) => step.replace(/^.*:/, ""));
  const isFromTop = steps[0] === "";
  const parts = steps.slice(isFromTop ? 1 : 0);
  const scores = parts.map((part) => part ? scoresOf(part) : null);
  const last = parts.length - 1;
  return (item) => {
    if (item.kind === "module" || !isNamed(item))
      return 0;
    let at = item;
    for (let i = last; i >= 0; --i, at = holderOf(at)) {
      if (!at || (scores[i] && scores[i][at.nameNumber] < (i < last ? 3 : 1)))
        return 0;
      if (i === 0 && isFromTop && holderOf(at))
        return 0;
    }
    return scores[last] ? scores[last][item.nameNumber] : 1;
  };
}

/* All items that fit, the best first and nearer the top before further down: { items, total }. */
function search(query, most) {
  const words = query.trim().toLowerCase().split(/\s+/).filter(Boolean);
  const tests = words.map(testOf);
  const found = [[], [], [], [], [], []];
  for (const item of allItems()) {
    let best = 5;
    for (const test of tests) {
      best = Math.min(best, test(item));
      if (!best)
        break;
    }
    if (best)
      found[best].push(item);
  }
  const rank = (item) => item.kind === "module" ? 0 : isClass(item) ? 1 : item.isLeaf ? 2 : 3;
  const items = [];
  for (let score = 5; score > 0 && items.length < most; --score)
    for (let level = 0; level < 4 && items.length < most; ++level)
      for (const item of found[score])
        if (rank(item) === level && items.length < most)
          items.push(item);
  return { items, total: found.reduce((sum, list) => sum + list.length, 0) };
}
