// Makes elements. Data becomes text nodes and attributes only, so that nothing of it is ever read as HTML.

export function byId(id) {
    return document.getElementById(id);
}

/** An element with attributes (false leaves one out, true has it without a value) and children, texts or nodes. */
export function element(name, attributes = {}, ...children) {
    const made = document.createElement(name);
    for (const [key, value] of Object.entries(attributes)) {
        if (value !== false) {
            made.setAttribute(key, value === true ? "" : value);
        }
    }
    made.append(...children);
    return made;
}

/** The language and direction of the samples; set by showIn. */
const shown = { tag: "en", direction: "ltr" };

/** A text of the locale's, set off from the page's own English. */
export function sample(name, text, attributes = {}) {
    return element(name, { lang: shown.tag, dir: shown.direction, ...attributes }, text);
}

/** Term and description of a date, for a list of them. */
export function dateRows(term, text) {
    return [element("dt", {}, term), sample("dd", text)];
}

/** The same of a number: without letters it is read from left to right in every script, its sign first. */
export function numberRows(term, text) {
    return [element("dt", {}, term), sample("dd", text, { dir: "auto" })];
}

/** From now on samples are of that locale, and the page runs its way. */
export function showIn(locale) {
    shown.tag = locale.tag;
    shown.direction = locale.direction;
    document.documentElement.dir = locale.direction;
}

/** Shows a list in its box, and hides the box of an empty one. */
export function showList(list, items) {
    list.replaceChildren(...items.map((item) => element("li", {}, ...[item].flat())));
    list.parentElement.hidden = items.length === 0;
}

/** Says at a field what is wrong with it, in the element "<its id>-fault"; an empty text says that all is well. */
export function sayFault(id, text) {
    const place = byId(`${id}-fault`);
    // An unchanged text would be read out again.
    if (place.textContent !== text) {
        place.textContent = text;
    }
    const control = byId(id);
    if (control?.matches("input, select, textarea")) {
        control.setAttribute("aria-invalid", text === "" ? "false" : "true");
    }
}

export function plural(count, one, many) {
    return `${count} ${count === 1 ? one : many}`;
}
