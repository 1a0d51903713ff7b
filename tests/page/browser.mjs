/* The browser of the tests, and the pages that they open in it. */
import { execFile } from "node:child_process";
import { existsSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

export const { KORV_SOURCE_DIR: SOURCE, KORV_INSPECT: PROGRAM, KORV_PAGE_DIR: FOLDER } = process.env;

/* Runs korv-inspect in the project's folder: { code, out, err }. */
export function inspect(...args) {
  return new Promise((resolve) => {
    execFile(PROGRAM, ["--no-config", ...args], { cwd: SOURCE, maxBuffer: 1 << 28 }, (error, out, err) => resolve({ code: error ? error.code : 0, out, err }));
  });
}

/* What korv-inspect answers as JSON. */
export async function answer(...args) {
  const { code, out, err } = await inspect(...args, "--format", "json");
  if (code !== 0)
    throw new Error(`korv-inspect ${args.join(" ")}: ${err}`);
  return JSON.parse(out);
}

/* Makes a page and returns its file. */
export async function makePage(name, expectedCode, ...args) {
  const file = join(FOLDER, name);
  const { code, err } = await inspect("page", ...args, "-o", file);
  if (code !== expectedCode)
    throw new Error(`korv-inspect page ${args.join(" ")} ended with ${code}: ${err}`);
  return { file, err };
}

export async function launch() {
  const path = ["/usr/bin/chromium", "/usr/bin/chromium-browser", "/usr/bin/google-chrome"].find(existsSync);
  if (!path)
    throw new Error("there is no chromium: ./dev test installs it");
  const puppeteer = createRequire(join(FOLDER, "package.json"))("puppeteer-core");
  const isRoot = process.getuid() === 0; /* chromium's sandbox does not work for root */
  const browser = await puppeteer.launch({ executablePath: path, args: isRoot ? ["--no-sandbox"] : [], protocolTimeout: 120000 });
  const session = await browser.target().createCDPSession();
  await session.send("Browser.grantPermissions", { permissions: ["clipboardReadWrite", "clipboardSanitizedWrite"] });
  return browser;
}

/* Opens a page. What goes wrong in it, and what it asks of a network, is in `page.faults`. */
export async function open(browser, file, { hash = "", width = 1280, height = 900, scheme = "light" } = {}) {
  const page = await browser.newPage();
  page.faults = [];
  page.on("pageerror", (error) => page.faults.push(error.message));
  page.on("console", (message) => page.faults.push(message.text()));
  page.on("dialog", (dialog) => { page.faults.push("dialog " + dialog.message()); dialog.dismiss(); });
  page.on("request", (request) => { if (!request.url().startsWith("file:")) page.faults.push("request " + request.url()); });
  await page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: scheme }]);
  await page.setViewport({ width, height });
  await page.goto(pathToFileURL(file) + hash);
  return page;
}
