/* The page of the example and guide models, compared with what the inspector itself answers, and used as a person does. */
import assert from "node:assert/strict";
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { FOLDER, SOURCE, answer, inspect, launch, makePage, open } from "./browser.mjs";

const GUIDE = ["-d", "docs/models", "-d", "examples/yin"];
const HOSTILE = `</script><img src=x onerror="document.title='run'"><b>&amp;`;
let browser;
let examples;
let guide;
let changed;

/* Models of a newer version: a leaf with a description that looks like markup, a narrower range, a leaf less, a module less. */
function makeNewVersion(folder) {
  mkdirSync(folder, { recursive: true });
  const read = (name) => readFileSync(join(SOURCE, "examples/yin", name + ".yin"), "utf8");
  const hostile = HOSTILE.replace(/&/g, "&amp;").replace(/</g, "&lt;");
  writeFileSync(join(folder, "example-interfaces.yin"), read("example-interfaces")
    .replace("1280..9600", "1280..9000")
    .replace(/<leaf name="temperature">[^]*?<\/leaf>/, `<leaf name="alias"><mimext:field-id value="50"/><type name="string"/>` +
      `<units name="${hostile.replace(/"/g, "&quot;")}"/><description><text>${hostile}</text></description></leaf>`));
  for (const name of ["example-types", "quelvo-mim-extensions", "example-interface-qos", "example-qos"])
    writeFileSync(join(folder, name + ".yin"), read(name));
  return folder;
}

before(async () => {
  browser = await launch();
  [examples, guide, changed] = await Promise.all([
    makePage("examples.html", 0, "--all", "-d", "examples/yin"),
    makePage("guide.html", 3, "--all", ...GUIDE),
    makePage("changed.html", 0, "--all", "-d", makeNewVersion(join(FOLDER, "new")), "--against", "examples/yin")]);
});
after(() => browser?.close());

const texts = (page, selector) => page.$$eval(selector, (all) => all.map((one) => one.innerText.replace(/\s+/g, " ").trim()));
const go = (page, hash) => page.evaluate((to) => { location.hash = to; show(); }, hash);

/* Everything that a page shows of a module's trees, as `tree --own` has it. */
function treesOfPage() {
  const bit = (number, mask) => number ? mask : 0;
  const leaf = (item) => ({ name: item.name, key: (item.flags & KEY) !== 0, base_type: item.type.base, field_id: item.id,
    mask: bit(item.id, 2) | bit(item.datatype, 8) | bit(item.referenceKey, 16) | bit(item.indexMap, 32),
    data_type: (item.datatype || 1) - 1, ref_id_key_fid: (item.referenceKey || 1) - 1, name2id_key_fid: (item.indexMap || 1) - 1, line: item.line });
  const split = (items) => ({ leaves: items.filter((item) => item.isLeaf).map(leaf), children: items.filter((item) => !item.isLeaf).map(node) });
  const node = (item) => ({ name: item.name, kind: isNamed(item) ? "node" : item.kind, class_id: isNamed(item) ? item.classId : null, sample_id: item.sampleId,
    self_keys: item.own, ancestor_keys: item.ancestor, line: item.line, ...split(ownBelow(item)) });
  return modules.filter((module) => !module.failed).map((module) => ({ module: module.name, revision: module.revision ?? null, task_id: module.task ?? null,
    origin: module.tree ? split(ownBelow(module)).children : [],
    augments: module.augments.map((augment) => ({ target: augment.written, leaves: split(ownBelow(augment)).leaves, self: split(ownBelow(augment)).children })) }));
}
function treesOfAnswer(answers) {
  const leaf = ({ name, key, base_type, field_id, mask, data_type, ref_id_key_fid, name2id_key_fid, place }) =>
    ({ name, key, base_type, field_id, mask, data_type, ref_id_key_fid, name2id_key_fid, line: place.line });
  const node = (item) => ({ name: item.name, kind: item.kind, class_id: item.kind === "node" ? item.class_id : null, sample_id: item.sample_id,
    self_keys: item.self_keys, ancestor_keys: item.ancestor_keys, line: place(item), leaves: item.leaves.map(leaf), children: item.children.map(node) });
  const place = (item) => item.place.line;
  return answers.map(({ module, revision, task_id, origin, augments }) => ({ module, revision, task_id, origin: origin.map(node),
    augments: augments.map((augment) => ({ target: augment.target, leaves: augment.leaves.map(leaf), self: augment.self.map(node) })) }));
}

test("shows the trees that the inspector shows", async () => {
  const page = await open(browser, guide.file);
  const shown = await page.evaluate(`(${treesOfPage})()`);
  const answers = await answer("tree", "--own", ...shown.map((tree) => tree.module), ...GUIDE);
  assert.deepEqual(shown, treesOfAnswer(answers));
  assert.deepEqual(page.faults, []);
  await page.close();
});

/* Models at the limits of lookups: leaves with long paths, long names, and augments of what another module adds. */
function makeLookupModels(folder) {
  mkdirSync(folder, { recursive: true });
  const leaf = (name) => `leaf ${name} { type string; }`;
  const long = (letter, length, inner) => `container ${letter.repeat(length)} { ${inner} }`;
  const modules = {
    a: `container top { ${leaf("x")} } ` + long("b", 60, long("c", 60, long("d", 60, long("e", 60, leaf("f") + `container g { ${leaf("h")} }`)))) +
       `container names { ${leaf("i".repeat(65))} ${long("j", 64, leaf("j".repeat(64)))} ${long("k", 65, leaf("l"))} ${long("m", 3, leaf("n".repeat(65)))} }`,
    b: `import a { prefix a; } augment /a:top { container mid { container more { ${leaf("y")} } } }`,
    c: `import a { prefix a; } import b { prefix b; } augment /a:top { ${leaf("c1")} } augment /a:top/b:mid { ${leaf("c2")} }`,
    d: `import a { prefix a; } import b { prefix b; } augment /a:top/b:mid { ${leaf("d")} } augment /a:top/b:mid/b:more {` +
       long("o", 62, long("p", 62, long("q", 62, long("r", 48, leaf("s")) + long("r", 50, leaf("t"))))) + "}" };
  for (const [name, text] of Object.entries(modules))
    writeFileSync(join(folder, name + ".yang"), `module ${name} { namespace "urn:${name}"; prefix ${name}; ${text} }`);
  return folder;
}

for (const [name, dir] of [["examples", "examples/yin"], ["models at the limits", makeLookupModels(join(FOLDER, "lookups"))]])
test("has the texts with which find asks for a node, " + name, async () => {
  const page = await open(browser, (await makePage("lookups.html", 0, "--all", "-d", dir)).file);
  const items = await page.evaluate(() => Array.from(allPlaces().kind, (_, place) => itemAt(place)).filter((item) => item.up && item.kind !== "augment" && isNamed(item))
    .map((item) => ({ module: item.module.name, path: dataPath(item), request: { ...requestFor(item), module: requestFor(item).module.name } })));
  assert.ok(items.length > 25);
  const pending = [...items];
  const work = async () => {
    for (let item = pending.pop(); item; item = pending.pop()) {
      const { request } = await answer("find", item.module, item.path, "-d", dir);
      const { module, path, xpathMain, forHolder, isLost } = item.request;
      assert.deepEqual([module, path, xpathMain, forHolder === true, !isLost], [request.module, request.path, request.xpath_main, request.for_holder, request.answered], item.path);
    }
  };
  await Promise.all([work(), work(), work(), work()]);
  await page.close();
});

test("lists classes as a dump does", async () => {
  const page = await open(browser, examples.file, { hash: "#example-interfaces" });
  const rows = await page.$$eval(".classes tbody tr", (all) => all.map((row) => [...row.cells].slice(0, 5).map((cell) => cell.innerText.trim())));
  const dump = await answer("dump", "example-interfaces", "-d", "examples/yin");
  const hex = (id) => id ? "0x" + id.toString(16) : "";
  const path = (record) => record.path.replace(/\/mode\/[a-z]+(?=\/)/, "");
  const classes = dump.filter((record) => record.class_id && !/\/mode(\/[a-z]+)?$/.test(record.path))
    .map((record) => [hex(record.class_id), path(record), hex(record.sample_id), record.self_keys.join(" "), record.ancestor_keys.join(" ")]);
  assert.deepEqual(rows.sort(), classes.sort());
  await page.close();
});

test("unfolds, searches, follows links and copies", async () => {
  const page = await open(browser, examples.file);
  const focused = () => page.evaluate(() => document.activeElement.textContent.trim());
  const pressed = async (...keys) => { for (const key of keys) await page.keyboard.press(key); };
  const shows = (name) => page.waitForFunction((wanted) => document.querySelector("h1").textContent.trim() === wanted, { timeout: 10000 }, name);

  await page.focus("[role=treeitem]");
  await pressed("ArrowDown", "ArrowDown", "ArrowRight", "ArrowRight", "ArrowRight", "ArrowDown", "ArrowDown");
  assert.match(await focused(), /^interface\s*0x1001$/);
  assert.equal(await page.$$eval("[role=treeitem][aria-expanded=true]", (all) => all.length), 2);
  await pressed("ArrowLeft", "ArrowLeft");
  assert.equal(await page.$$eval("[role=treeitem]", (all) => all.length), 10, "what is folded is gone");
  await pressed("End", "Enter");
  await shows("quelvo-mim-extensions");

  await page.keyboard.type("/0x1001.6");
  assert.equal(await page.$eval("#count", (one) => one.textContent), "1 found");
  await pressed("ArrowDown", "Enter");
  await shows("mtu");
  assert.equal(await page.evaluate(() => document.activeElement.id), "view", "the keys go on where the link led to");
  assert.equal(await page.evaluate(() => location.hash), "#/example-interfaces:interfaces/interface/mtu");
  assert.equal(await page.$eval("[aria-selected=true] .name", (one) => one.textContent), "mtu");
  await page.click(".crumbs li:last-child a");
  await shows("interface");
  await page.goBack();
  await shows("mtu");

  for (const [label, copied] of [["Link", "examples.html#/example-interfaces:interfaces/interface/mtu"], ["pcXpathMain", "if:interfaces/if:interface/if:mtu"]]) {
    await page.click(`button[aria-label="Copy ${label}"]`);
    await page.waitForFunction((said) => document.getElementById("said").textContent === said, {}, label + " copied");
    assert.equal(await page.evaluate(() => navigator.clipboard.readText()), copied);
  }

  const found = async (query) => {
    await page.$eval("#query", (box) => { box.value = ""; });
    await page.focus("#query");
    await page.keyboard.type(query);
    return [(await texts(page, "#results .name"))[0], await page.$eval("#count", (one) => one.textContent)];
  };
  assert.deepEqual(await found("interface/na"), ["name", "2 found"]);
  assert.deepEqual(await found("/interfaces/interface/traf"), ["traffic", "1 found"]);
  assert.deepEqual(await found("0x300"), ["traffic", "1 found"]);
  assert.deepEqual(await found("4099"), ["address", "1 found"]);
  assert.deepEqual((await found("qos"))[0], "qos");
  assert.deepEqual(await found("no such"), [undefined, "Nothing has this name, path or id."]);
  await pressed("Escape");
  assert.equal(await page.$eval("#tree", (one) => one.hidden), false);

  await go(page, "#/example-interfaces:interfaces/interface/mtv");
  assert.match((await texts(page, "[role=alert]"))[0], /^These models have no \/example-interfaces:interfaces\/interface\/mtv: this is the nearest/);
  await shows("interface");
  assert.deepEqual(page.faults, []);
  await page.close();
});

test("draws keys, types, deviations, findings, failures and changes", async () => {
  let page = await open(browser, guide.file);
  const section = async (hash, title) => {
    await go(page, hash);
    const all = await page.$$eval("section", (sections) => sections.map((one) => one.innerText.replace(/\s+/g, " ").trim()));
    return all.find((one) => one.startsWith(title)) ?? "";
  };
  const rows = (selector) => page.$$eval(selector, (all) => all.map((row) => [...row.cells].map((cell) => cell.innerText.replace(/\s+/g, " ").trim())));

  await go(page, "#/example-interfaces:interfaces/interface/address/history");
  assert.deepEqual(await rows(".keys tr"), [["Class", "interface 0x1001", "address 0x1003", "history 0x1004"],
    ["Key and its attribute there", "name 1 index map 2 index", "ip 1", "number 1"], ["Attribute in history", "20", "21", "1"]]);
  assert.match(await section("#/example-interfaces:interfaces/interface/name", "Carried"), /address 0x1003 as attribute 10 history 0x1004 as attribute 20/);
  const enums = await answer("enums", "example-interfaces", "/interfaces/interface/status", "-d", "examples/yin");
  await go(page, "#/example-interfaces:interfaces/interface/status");
  assert.deepEqual(await rows(".names tbody tr"), enums.map(({ name, value }) => [String(value), name]));
  assert.match(await section("#/example-interfaces:interfaces/interface/alarm-threshold", "Type"), /Range 0\.\.10 \| 80\.\.100 Range the library keeps 80\.\.100/);
  assert.match(await section("#/example-qos:qos/policy/rule/drop", "How a host asks"), /this asks for the node that holds it/);
  assert.match(await section("#/quelvo-bras-user-manage:users/user/vlan", "Deviations"), /replace type uint32 \{ range 1\.\.16777215 \} quelvo-bras-user-manage-deviations-edge/);
  assert.match(await section("#/quelvo-bras-user-manage:users", "Deviations"), /\/users\/licensed: not-supported/);

  const check = JSON.parse((await inspect("check", "--all", ...GUIDE, "--format", "json")).out).findings;
  assert.equal(await page.evaluate(() => data.findings.length), check.length);
  assert.match(await section("#/guide-pitfalls:meters/meter/value", "Findings"), /^Findings Warning leaf 'value' of class \/meters\/meter \(0x701\): attribute ids end at 255.* field-id-range/);
  assert.match(await section("#guide-surplus", "Why it cannot be loaded"), /guide-surplus\.yin:33:11: class 'lamp' has 1 ancestor-key-fid/);
  assert.match(guide.err, /module 'guide-surplus' cannot be loaded/);
  assert.deepEqual(page.faults, []);
  await page.close();

  page = await open(browser, changed.file);
  assert.match(await section("#example-interfaces", "Changes"), /range breaking \/interfaces\/interface\/mtu 1280\.\.9600 → 1280\.\.9000 leaf-removed breaking \/interfaces\/interface\/temperature 8 leaf-added \/interfaces\/interface\/alias 50/);
  assert.match(await section("#/example-interfaces:interfaces/interface/mtu", "Changes"), /1280\.\.9600 → 1280\.\.9000/);
  assert.match(await section("#/example-interfaces:interfaces/interface", "Changes"), /leaf-removed breaking/);
  assert.match(await section("#example-optics", "Changes"), /module-removed breaking/);
  await page.close();
});

test("shows what modules that are not on the page add", async () => {
  const { file } = await makePage("one.html", 0, "example-interfaces", "--load", "example-interface-qos", "-d", "examples/yin");
  const page = await open(browser, file, { hash: "#/example-interfaces:interfaces/interface/example-interface-qos:traffic" });
  assert.match((await texts(page, ".heading"))[0], /traffic added by example-interface-qos$/i);
  await page.type("#query", "0x3001.2");
  assert.deepEqual(await texts(page, "#results .where"), ["/interfaces/interface/traffic/matched · example-interface-qos"]);
  assert.deepEqual(page.faults, []);
  await page.close();
});

test("shows texts of models as texts", async () => {
  const page = await open(browser, changed.file, { hash: "#/example-interfaces:interfaces/interface/alias" });
  assert.deepEqual(await texts(page, ".prose"), [HOSTILE]);
  assert.ok((await texts(page, ".facts > div")).includes("Units " + HOSTILE));
  assert.equal(await page.$$eval("#view img, #view script, #view b", (all) => all.length), 0);
  assert.equal(await page.title(), "alias – 5 modules of " + join(FOLDER, "new"));
  assert.deepEqual(page.faults, []);
  await page.close();
});

/* Texts whose contrast with the ground behind them is below that of WCAG 2, AA: 4.5, and 3 for large ones. */
function faintTexts() {
  const canvas = document.createElement("canvas").getContext("2d", { willReadFrequently: true });
  const over = (colors) => { /* colors from the top one to the ground, painted in turn */
    canvas.clearRect(0, 0, 1, 1);
    for (const color of [...colors].reverse()) {
      canvas.fillStyle = color;
      canvas.fillRect(0, 0, 1, 1);
    }
    return [...canvas.getImageData(0, 0, 1, 1).data].slice(0, 3);
  };
  const light = (rgb) => rgb.map((c) => c / 255).map((c) => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4).reduce((sum, c, i) => sum + c * [0.2126, 0.7152, 0.0722][i], 0);
  const faint = [];
  for (const element of document.querySelectorAll("body *")) {
    const own = [...element.childNodes].filter((node) => node.nodeType === Node.TEXT_NODE && node.data.trim());
    if (!own.length || element.closest("script, style, noscript, [hidden], .hidden, .skip") || !element.checkVisibility())
      continue;
    const grounds = [];
    for (let at = element; at; at = at.parentElement)
      grounds.push(getComputedStyle(at).backgroundColor);
    const style = getComputedStyle(element);
    const [text, ground] = [light(over([style.color, ...grounds])), light(over(grounds))];
    const ratio = (Math.max(text, ground) + 0.05) / (Math.min(text, ground) + 0.05);
    const size = parseFloat(style.fontSize);
    if (ratio < (size >= 24 || (size >= 18.66 && style.fontWeight >= 700) ? 3 : 4.5))
      faint.push(`${own[0].data.trim()} (${ratio.toFixed(2)})`);
  }
  return faint;
}

for (const width of [1280, 360])
  for (const scheme of ["light", "dark"])
    test(`can be read at ${width} pixels, ${scheme}`, async () => {
      for (const [name, file, hash] of [["modules", guide.file, ""], ["class", examples.file, "#/example-interfaces:interfaces/interface/address/history"],
                                        ["attribute", guide.file, "#/guide-pitfalls:meters/meter/value"], ["changes", changed.file, "#example-interfaces"]]) {
        const page = await open(browser, file, { hash, width, scheme });
        await page.screenshot({ path: join(FOLDER, `${name}-${width}-${scheme}.png`) });
        assert.deepEqual(await page.evaluate(faintTexts), [], name);
        assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), name + " is wider than the window");
        assert.deepEqual(page.faults, []);
        await page.close();
      }
    });

test("is told to who does not see it, and prints what is chosen", async () => {
  const page = await open(browser, examples.file, { hash: "#/example-interfaces:interfaces/interface" });
  const all = (node) => [node, ...(node.children || []).flatMap(all)];
  const nodes = all(await page.accessibility.snapshot({ interestingOnly: false }));
  const row = nodes.find((node) => node.role === "treeitem" && node.name.startsWith("interface 0x1001"));
  assert.deepEqual([row.level, row.expanded, row.selected], [3, true, true]);
  assert.ok(nodes.some((node) => node.role === "searchbox" && node.name.startsWith("Search")));
  const unnamed = nodes.filter((node) => ["link", "button", "treeitem", "searchbox", "navigation", "table"].includes(node.role) && node.role !== "table" && !node.name);
  assert.deepEqual(unnamed, []);
  await page.emulateMediaType("print");
  assert.deepEqual(await page.$$eval("header, nav#side, .copy", (elements) => elements.filter((one) => one.checkVisibility()).length), 0);
  assert.equal(await page.$eval("#view", (one) => one.scrollHeight - one.clientHeight <= 1), true, "nothing is cut off");
  await page.setViewport({ width: 360, height: 900 });
  await (await page.createCDPSession()).send("Emulation.setEmulatedMedia", { media: "print", features: [{ name: "prefers-color-scheme", value: "dark" }] });
  await go(page, "#");
  assert.deepEqual(await page.$eval(".modules", (one) => [one.checkVisibility(), getComputedStyle(one.querySelector("td")).color]), [true, "rgb(0, 0, 0)"]);
  await page.close();
});
