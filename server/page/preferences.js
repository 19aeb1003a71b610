// My preferences: each override of the library's; what the server takes is kept in the cookie.

import { byId, element, plural, sample, sayFault } from "./elements.js";
import { onRendered } from "./look.js";
import { makeQuestion, onBadCookie } from "./server.js";
import { announceChange, current, kNoPreferences, readPreferences, writeCookie } from "./state.js";

function textOf(rows, name) {
    return rows.find((row) => row.name === name)?.text ?? "";
}

const formDate = (answer) => textOf(answer.dates, "dateInputFormat");
const formTime = (answer) => textOf(answer.times, "timeInputFormat");
const number = (answer) => answer.numbers.positive;

/** Each has the key of the cookie, a label, what it changes, and choices or suggestions where there are any. */
const kFields = [
    { key: "dateOrder", label: "Order of dates", effect: formDate, choices: {
        dmy: "day, month, year", mdy: "month, day, year", ymd: "year, month, day" } },
    { key: "dateSeparator", label: "Between the parts of a date", effect: formDate },
    { key: "24hours", label: "Clock", effect: formTime, choices: { true: "24 hours", false: "12 hours" } },
    { key: "timeSeparator", label: "Between the parts of a time", effect: formTime },
    { key: "dateFormat", label: "Short date", effect: (answer) => textOf(answer.dates, "dateShortFormat"),
        suggest: (answer) => answer.dates },
    { key: "timeFormat", label: "Time", effect: (answer) => textOf(answer.times, "timeFormat"),
        suggest: (answer) => answer.times },
    { key: "decimalSeparator", label: "Before the decimals", effect: number },
    { key: "thousandsSeparator", label: "Between thousands", effect: number },
    { key: "currencyTag", label: "Currency", effect: (answer) => answer.amounts?.positive ?? "" },
];

const idOf = (field) => `preference-${field.key}`;

function makeControl(field) {
    const shared = { id: idOf(field), "aria-describedby": `${idOf(field)}-effect ${idOf(field)}-fault` };
    if (field.choices === undefined) {
        return element("input", { ...shared, type: "text", autocomplete: "off", spellcheck: "false", dir: "auto",
            list: `${idOf(field)}-list`, placeholder: "as the locale has it" });
    }
    const options = Object.entries(field.choices).map(([value, text]) => element("option", { value }, text));
    return element("select", shared, element("option", { value: "" }, "as the locale has it"), ...options);
}

function makeField(field) {
    const id = idOf(field);
    return element("div", { class: "field" },
        element("label", { for: id }, field.label),
        makeControl(field),
        field.choices === undefined ? element("datalist", { id: `${id}-list` }) : "",
        element("p", { class: "effect", id: `${id}-effect` }),
        element("p", { class: "fault", id: `${id}-fault`, role: "alert" }));
}

/** Pictures with what they look like; one that stands twice is suggested once. */
function showSuggestions(field, rows) {
    const pictures = new Map(rows.map((row) => [row.picture, row.text]));
    const options = [...pictures].map(([value, text]) => element("option", { value, label: text }));
    byId(`${idOf(field)}-list`).replaceChildren(...options);
}

function showEffects(answer) {
    for (const field of kFields) {
        byId(`${idOf(field)}-effect`).replaceChildren(sample("bdi", field.effect(answer)));
        if (field.suggest !== undefined) {
            showSuggestions(field, field.suggest(answer));
        }
    }
}

function showState() {
    const count = readPreferences().size;
    byId("preferences-state").textContent = count === 0 ? "Nothing is set: all is as the locale has it."
        : `${plural(count, "preference is", "preferences are")} set.`;
}

/** All preferences with one that is new; the server says whether it takes them, and what the cookie is then. */
function wish(key, value) {
    return {
        parameters: { locale: current.locale },
        body: { ...Object.fromEntries(readPreferences()), [key]: value },
    };
}

function keep(field, value, answer) {
    const fault = answer.errors.find((error) => error.field === field.key);
    if (fault !== undefined) {
        sayFault(idOf(field), fault.message);
        return;
    }
    // What was typed or reset since is a newer wish.
    if (byId(idOf(field)).value === value) {
        writeCookie(answer.cookie);
        sayFault("preferences", "");
        showState();
        announceChange();
    }
}

/** Tries what the user enters when they stop typing; a currency is looked up first. */
function watch(field) {
    const control = byId(idOf(field));
    let tried = "";
    const fail = (text) => sayFault(idOf(field), text);
    const wishing = makeQuestion("api/preferences", (answer) => keep(field, tried, answer), fail);
    const lookingUp = makeQuestion("api/render", () => wishing.now(wish(field.key, tried)), fail);

    control.addEventListener("input", () => {
        const isCurrency = field.key === "currencyTag";
        (isCurrency ? lookingUp : wishing).soon(() => {
            tried = control.value;
            return isCurrency ? { parameters: { locale: current.locale, currency: tried } } : wish(field.key, tried);
        });
    });
}

function showPreferences() {
    const preferences = readPreferences();
    for (const field of kFields) {
        byId(idOf(field)).value = preferences.get(field.key) ?? "";
        sayFault(idOf(field), "");
    }
    showState();
}

/** Sets one from elsewhere on the page, as if the user had entered it here. */
export function setPreference(key, value) {
    const control = byId(`preference-${key}`);
    control.value = value;
    control.dispatchEvent(new Event("input"));
}

export function startPreferences() {
    byId("preferences-fields").append(...kFields.map(makeField));
    kFields.forEach(watch);
    byId("preferences-form").addEventListener("submit", (event) => event.preventDefault());
    byId("reset").addEventListener("click", () => {
        writeCookie(kNoPreferences);
        showPreferences();
        sayFault("preferences", "");
        announceChange();
    });
    onRendered(showEffects);
    onBadCookie((text) => {
        showPreferences();
        sayFault("preferences", `${text} All preferences are reset.`);
    });
    showPreferences();
}
