// Sorting: lines in the order of a language, with the keys that sort the same way as bytes.

import { byId, element, plural, sayFault } from "./elements.js";
import { makeQuestion } from "./server.js";
import { current, onChange } from "./state.js";

/** Words whose order tells languages apart. */
const kLines = ["zebra", "Äpfel", "apple", "ost", "öl", "côté", "cote", "coté", "côte", "llama", "luz", "chico", "cuna",
    "Ångström", "さくら", "サクラ", "قلم", "ไก่"];

function lineRow(line) {
    return element("tr", {},
        element("td", {}, element("bdi", {}, line.text)),
        element("td", {}, element("code", { class: "key" }, line.key)));
}

function showSorted(answer) {
    byId("sorted").replaceChildren(...answer.lines.map(lineRow));
    const lines = plural(answer.lines.length, "line", "lines");
    byId("sorted-summary").textContent = `${lines} in the order ${answer.sort}; keys of version ${answer.version}.`;
}

/** The order that was chosen stays chosen, also in another locale. */
function showSorts(answer) {
    const select = byId("sort");
    const chosen = select.value;
    const options = answer.sorts.map((sort) => element("option", { value: sort }, sort));
    select.replaceChildren(element("option", { value: "" }, `the locale's own: ${answer.sort}`), ...options);
    select.value = chosen;
}

function failSorting(text, field) {
    sayFault("sort", field === "sort" ? text : "");
    sayFault("lines", field === "sort" ? "" : text);
}

const sorted = makeQuestion("api/sort", showSorted, failSorting);
const sorts = makeQuestion("api/sorts", showSorts, (text) => sayFault("sort", text));

function linesIn(text) {
    return text.split("\n").filter((line) => line !== "");
}

/** The locale stands in the query also when the rest is in the body. */
function wanted() {
    return {
        parameters: { locale: current.locale },
        body: { lines: linesIn(byId("lines").value), sort: byId("sort").value, strength: byId("strength").value },
    };
}

export function startSorting() {
    byId("lines").value = kLines.join("\n");
    byId("lines").addEventListener("input", () => sorted.soon(wanted));
    byId("sort").addEventListener("change", () => sorted.now(wanted()));
    byId("strength").addEventListener("change", () => sorted.now(wanted()));
    onChange(() => {
        sorts.now({ parameters: { locale: current.locale } });
        sorted.now(wanted());
    });
}
