/* The search. What is typed is an id, a path or a part of a name; words between blanks all have to fit. It goes through columns
 * of numbers, one place in them for each module, augment, node and leaf. Items are made of what it finds alone. */
const MODULE = 0, AUGMENT = 1, LEAF = 2, NODE = 3, CHOICE = 4; /* or case */

/* The columns, made when the first search needs them: { kind, row, name, holder, within, position, items, names }. `holder` is
 * the place of the named node above, -1 at the top, `within` that of what the row stands in. `items` has modules and augments,
 * `names` the texts that are names, in small letters. */
let places = null;

function allPlaces() {
  if (places)
    return places;
  const length = modules.reduce((sum, module) => sum + 1 + module.augments.length + countModule(module).places, 0);
  const column = () => new Int32Array(length);
  places = { kind: column(), row: column(), name: column(), holder: column(), within: column(), position: column(),
             items: new Map(), names: data.texts.map(() => null) };
  let next = 0;
  const targets = new Map(); /* places of items to which augments add */
  const augments = [];
  const add = (kind, row, name, holder, within, position) => {
    places.kind[next] = kind;
    places.row[next] = row;
    places.name[next] = name;
    places.holder[next] = holder;
    places.within[next] = within;
    places.position[next] = position;
    return next++;
  };
  const addBelow = (leaves, nodes, holder, within, items) => {
    let position = 0;
    for (const row of leaves || [])
      add(LEAF, row, data.leaves[row][0], holder, within, position++);
    for (const row of nodes || []) {
      const record = data.nodes[row];
      const isHolder = !(record[1] > 1);
      const item = items && items[position];
      const place = add(isHolder ? NODE : CHOICE, row, record[0], holder, within, position++);
      if (item && item.added.length)
        targets.set(item, place);
      addBelow(record[6], record[7], isHolder ? place : holder, place, item && item.below);
    }
  };
  for (const module of modules) {
    const place = add(MODULE, -1, 0, -1, -1, 0);
    places.items.set(place, module);
    addBelow([], module.tree, -1, place, module.below);
    for (const augment of module.augments) {
      const at = add(AUGMENT, -1, 0, -1, place, 0);
      places.items.set(at, augment);
      augments.push(augment);
      addBelow(augment.leaves, augment.nodes, -1 - augments.length, at, augment.below); /* the holder is known at the end */
    }
  }
  const holderFor = (place) => {
    const holder = places.holder[place];
    if (holder > -2)
      return holder;
    const target = targets.get(augments[-2 - holder].target);
    return target === undefined ? -1 : places.kind[target] === NODE ? target : holderFor(target);
  };
  for (let place = 0; place < length; ++place) {
    places.holder[place] = holderFor(place);
    places.names[places.name[place]] ??= text(places.name[place]).toLowerCase();
  }
  return places;
}

const itemAt = (place) => places.items.get(place) || ownBelow(itemAt(places.within[place]))[places.position[place]];

/* How well each name fits a part of a name, by its number: 4 it is the name, 3 its beginning, 2 the beginning of a word in it, 1 a part. */
function scoresOf(part) {
  const scores = new Uint8Array(data.texts.length);
  for (let number = 0; number < scores.length; ++number) {
    const name = places.names[number];
    const at = name === null ? -1 : name.indexOf(part);
    if (at >= 0)
      scores[number] = name === part ? 4 : at === 0 ? 3 : /[-_.]/.test(name[at - 1]) ? 2 : 1;
  }
  return scores;
}
const scoreOfName = (name, part) => {
  const at = name.toLowerCase().indexOf(part);
  return at < 0 ? 0 : name.length === part.length ? 4 : at === 0 ? 3 : 1;
};

const idScore = (id, digits) => !id || !id.toString(16).startsWith(digits) ? 0 : id.toString(16).length === digits.length ? 5 : 2;
const classAt = (place) => place < 0 ? 0 : data.nodes[places.row[place]][2] || 0;
const attributeAt = (place) => data.leaves[places.row[place]][2] || 0;

/* A test of a place that answers how well it fits, 0 for not at all. */
function testOf(word) {
  const { kind, row, name, holder, items } = places;
  const [, digits, field] = /^0x([0-9a-f]*)(?:\.(\d*))?$/.exec(word) || [];
  if (field !== undefined)
    return (place) => {
      if (kind[place] !== LEAF || !attributeAt(place) || classAt(holder[place]).toString(16) !== digits)
        return 0;
      const id = String(attributeAt(place));
      return id === field ? 5 : id.startsWith(field) ? 2 : 0;
    };
  if (digits)
    return (place) => kind[place] === NODE ? Math.max(idScore(classAt(place), digits), idScore(data.nodes[row[place]][3], digits)) : 0;
  if (word.includes("/"))
    return pathTest(word);
  const scores = scoresOf(word);
  const number = /^\d+$/.test(word) ? Number(word) : 0;
  const hasNumber = (place) => kind[place] === LEAF ? attributeAt(place) === number : classAt(place) === number || data.nodes[row[place]][3] === number;
  return (place) => {
    if (kind[place] === MODULE)
      return number && number === items.get(place).task ? 5 : scoreOfName(items.get(place).name, word);
    return number && hasNumber(place) ? 5 : scores[name[place]];
  };
}

/* The last steps of a path, from the top when the word begins with "/". Each may be a part of a name. */
function pathTest(word) {
  const { kind, name, holder } = places;
  const steps = word.split("/").map((step) => step.replace(/^.*:/, ""));
  const isFromTop = steps[0] === "";
  const parts = steps.slice(isFromTop ? 1 : 0);
  const scores = parts.map((part) => part ? scoresOf(part) : null);
  const last = parts.length - 1;
  return (place) => {
    if (kind[place] === MODULE || kind[place] === CHOICE)
      return 0;
    let at = place;
    for (let i = last; i >= 0; --i, at = holder[at]) {
      if (at < 0 || (scores[i] && scores[i][name[at]] < (i < last ? 3 : 1)))
        return 0;
      if (i === 0 && isFromTop && holder[at] >= 0)
        return 0;
    }
    return scores[last] ? scores[last][name[place]] : 1;
  };
}

/* All items that fit, the best first and nearer the top before further down: { items, total }. */
function search(query, most) {
  const { kind } = allPlaces();
  const tests = query.trim().toLowerCase().split(/\s+/).filter(Boolean).map(testOf);
  const found = [[], [], [], [], [], []];
  for (let place = 0; place < kind.length; ++place) {
    let best = kind[place] === AUGMENT ? 0 : 5;
    for (let i = 0; best && i < tests.length; ++i)
      best = Math.min(best, tests[i](place));
    if (best)
      found[best].push(place);
  }
  const rank = (place) => kind[place] === MODULE ? 0 : kind[place] === LEAF ? 2 : classAt(place) ? 1 : 3;
  const items = [];
  for (let score = 5; score > 0 && items.length < most; --score)
    for (let level = 0; level < 4 && items.length < most; ++level)
      for (const place of found[score])
        if (items.length < most && rank(place) === level)
          items.push(itemAt(place));
  return { items, total: found.reduce((sum, list) => sum + list.length, 0) };
}
