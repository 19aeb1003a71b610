// A long list to choose one from, with a field that searches it. It is made of radio buttons: every keyboard and screen
// reader knows them.

import { byId, element, plural } from "./elements.js";

/** Letters without case and marks: "Français" is found by "francais". */
function plain(text) {
    return text.normalize("NFD").replace(/\p{Mn}/gu, "").toLowerCase();
}

function makeRow(name, choice, isChecked) {
    const radio = element("input", { type: "radio", name, value: choice.value, checked: isChecked });
    const names = element("span", { class: "choice-names" }, choice.first, choice.second ?? "");
    return element("label", { class: "choice" }, radio, names, element("code", {}, choice.value || "auto"));
}

/**
 * Choices have a value, a first and perhaps a second node to show, and words to search in. `id` names the list, its
 * field ("<id>-filter") and where the number found is said ("<id>-count"). `chose` is called with the user's choice.
 */
export function makeChoices(id, chose) {
    const list = byId(id);
    const filter = byId(`${id}-filter`);
    let rows = [];

    function search() {
        const words = plain(filter.value).split(/\s+/);
        let found = 0;
        for (const { row, radio, words: text } of rows) {
            const matches = words.every((word) => text.includes(word));
            found += matches ? 1 : 0;
            // What is chosen stays in sight: otherwise the keyboard had no way into the list.
            row.hidden = !matches && !radio.checked;
        }
        const all = plural(rows.length, "choice", "choices");
        byId(`${id}-count`).textContent = found === rows.length ? all : `${found} of ${all}`;
    }

    function scrollToChosen() {
        const row = list.querySelector(".choice:has(:checked)");
        if (row !== null) {
            list.scrollTop = row.offsetTop - (list.clientHeight - row.offsetHeight) / 2;
        }
    }

    function show(choices, value) {
        rows = choices.map((choice) => {
            const row = makeRow(id, choice, choice.value === value);
            return { row, radio: row.querySelector("input"), words: plain(choice.words) };
        });
        list.replaceChildren(...rows.map(({ row }) => row));
        search();
        scrollToChosen();
    }

    filter.addEventListener("input", () => {
        search();
        if (filter.value === "") {
            scrollToChosen();
        } else {
            list.scrollTop = 0;
        }
    });
    list.addEventListener("change", (event) => chose(event.target.value));
    return { show };
}
