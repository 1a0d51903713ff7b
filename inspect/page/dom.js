/* Making elements. Children are elements or texts; a text becomes a text node, whatever is in it. */
function h(tag, attributes, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes))
    element.setAttribute(name, value);
  element.append(...children.flat(Infinity).filter((child) => child !== null && child !== undefined && child !== ""));
  return element;
}

/* Says something to who does not see the page. */
function say(sentence) {
  document.getElementById("said").textContent = sentence;
}

/* True if the text is in the clipboard now. Browsers that keep the clipboard from pages of a disk still copy a selection. */
async function copyText(value) {
  try {
    await navigator.clipboard.writeText(value);
    return true;
  } catch {
    const focused = document.activeElement;
    const area = h("textarea", { class: "hidden", "aria-hidden": "true" });
    area.value = value;
    document.body.append(area);
    area.select();
    const done = document.execCommand("copy");
    area.remove();
    focused.focus();
    return done;
  }
}
