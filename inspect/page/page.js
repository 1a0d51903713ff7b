/* The page as a whole: the address, the search box, and what is shown. */

function showView(content) {
  view.replaceChildren(...content.flat(Infinity).filter(Boolean));
  view.scrollTop = 0;
  window.scrollTo(0, 0);
}

function goTo(item) {
  const address = linkTo(item);
  if (location.hash === address)
    show();
  else
    location.hash = address;
}

/* What the address names: { item, missing }. */
function itemOfAddress() {
  let address = location.hash.slice(1);
  try {
    address = decodeURIComponent(address);
  } catch {
    /* no encoded text: as it is */
  }
  if (address === "" || address === "view")
    return {};
  if (address.startsWith("/")) {
    const { item, rest } = follow(address);
    return rest.length ? { item, missing: address } : { item };
  }
  const [, name, written] = /^([^:]*)(?::(\/.*))?$/.exec(address) || [];
  const module = moduleByName.get(name);
  if (!module)
    return { missing: address };
  const augment = written && module.augments.find((one) => one.written === written);
  return { item: augment || module, missing: written && !augment ? address : undefined };
}

const SET = document.title;

function show() {
  const { item, missing } = itemOfAddress();
  const gone = missing ? h("p", { class: "gone", role: "alert" }, "These models have no ", code(missing), item ? ": this is the nearest that they have." : ".") : null;
  document.body.classList.toggle("chosen", Boolean(item));
  closeResults();
  if (!item)
    showView([gone, overview()]);
  else if (item.kind === "module" || item.kind === "augment")
    showView([backLink(), gone, moduleView(item.module || item, item)]);
  else
    showView([backLink(), gone, item.isLeaf ? leafView(item) : nodeView(item)]);
  select(item);
  document.title = item ? `${(item.kind === "augment" ? item.module : item).name} – ${SET}` : SET;
  document.getElementById("skip").href = item ? linkTo(item) : "#";
}

/* Who has followed a link that is gone now reads on where it led to. */
function showAnew() {
  show();
  if (document.activeElement === document.body || !document.activeElement.getClientRects().length)
    view.focus({ preventScroll: true });
}

/* On a narrow page, the tree and what is chosen take turns. */
const backLink = () => h("a", { class: "back", href: "#" }, "All modules");

/* ---- Search box and results ---- */

const query = document.getElementById("query");
const results = document.getElementById("results");
const count = document.getElementById("count");
const MOST = 60;

const shownPath = (item) => item.kind === "module" ? "module" : `${isNamed(item) ? dataPath(item) : pathOf(item)} · ${item.module.name}`;

/* The text with what was searched for marked. */
function marked(name, words) {
  const word = words.map((one) => one.replace(/^.*[/:]/, "")).find((one) => one && name.toLowerCase().includes(one));
  if (!word)
    return [name];
  const at = name.toLowerCase().indexOf(word);
  return [name.slice(0, at), h("mark", {}, name.slice(at, at + word.length)), name.slice(at + word.length)];
}

function resultOf(item, words) {
  const holder = item.isLeaf ? holderOf(item) : null;
  const id = isClass(item) ? hex(item.classId) : item.id ? (holder && holder.classId ? hex(holder.classId) : "") + "." + item.id : "";
  return h("li", {}, h("a", { href: linkTo(item) },
    h("span", { class: "name" }, ...marked(item.name, words)), item.isLeaf && item.flags & KEY ? badge("key", "key") : null,
    id ? h("span", { class: "id" }, id) : null, h("span", { class: "where" }, shownPath(item))));
}

function showResults() {
  const wanted = query.value.trim();
  if (!wanted)
    return closeResults();
  const { items, total } = search(wanted, MOST);
  const words = wanted.toLowerCase().split(/\s+/);
  results.replaceChildren(...items.map((item) => resultOf(item, words)));
  results.hidden = false;
  tree.hidden = true;
  document.body.classList.add("searching");
  count.textContent = total === 0 ? "Nothing has this name, path or id." : total > items.length ? `The best ${items.length} of ${total.toLocaleString("en")}` : `${total} found`;
}

function closeResults() {
  results.hidden = true;
  tree.hidden = false;
  document.body.classList.remove("searching");
  count.textContent = "";
}

query.addEventListener("input", showResults);
query.addEventListener("focus", () => { if (query.value) showResults(); });
query.addEventListener("keydown", (event) => {
  const first = results.hidden ? null : results.querySelector("a");
  if (event.key === "Escape") {
    query.value = "";
    closeResults();
  } else if (event.key === "ArrowDown" && first) {
    event.preventDefault();
    first.focus();
  } else if (event.key === "Enter" && first) {
    query.blur();
    first.click();
  }
});
results.addEventListener("keydown", (event) => {
  const at = event.target.closest("li");
  const steps = { ArrowDown: () => at.nextElementSibling?.firstChild.focus(), ArrowUp: () => (at.previousElementSibling?.firstChild || query).focus(), Escape: () => query.focus() };
  if (!at || !steps[event.key])
    return;
  event.preventDefault();
  steps[event.key]();
});
results.addEventListener("click", (event) => {
  if (event.target.closest("a") && event.target.closest("a").getAttribute("href") === location.hash)
    showAnew();
});
document.addEventListener("keydown", (event) => {
  if (event.key === "/" && !event.ctrlKey && !event.metaKey && document.activeElement !== query) {
    event.preventDefault();
    query.focus();
    query.select();
  }
});

document.getElementById("home").addEventListener("click", () => { query.value = ""; });
document.getElementById("set").textContent = SET;
document.getElementById("skip").addEventListener("click", (event) => {
  event.preventDefault();
  view.focus();
});
window.addEventListener("hashchange", showAnew);
show();
(window.requestIdleCallback || setTimeout)(allPlaces); /* before the first search needs them */
document.documentElement.dataset.readyAfter = String(Math.round(performance.now()));
