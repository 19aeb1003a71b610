// Who am I: what the header asked for, which rule applied, and the locales to choose from.

import { makeChoices } from "./choices.js";
import { byId, element, sayFault, showIn, showList } from "./elements.js";
import { makeQuestion } from "./server.js";
import { announceChange, chosen, current, keepChoice } from "./state.js";

/** The allowed locales by name, as the server described them. */
const allowed = new Map();

let resolved = { locale: "", language: "en" };

const choices = makeChoices("locales", (value) => {
    chosen.locale = value;
    applyChoice();
});

/** What became of an entry: those behind the one that decided were never tried. */
function fateOf(entry, isBehind) {
    if (entry.decided) {
        return "decided";
    }
    if (entry.q === 0) {
        return "not wanted";
    }
    return isBehind ? "not needed" : "no rule of its own";
}

function entryRow(entry, isBehind) {
    return element("tr", entry.decided ? { class: "decided" } : {},
        element("td", {}, element("code", {}, entry.tag)),
        element("td", {}, String(entry.q)),
        element("td", {}, fateOf(entry, isBehind)));
}

function entryRows(entries) {
    const decided = entries.findIndex((entry) => entry.decided);
    if (entries.length === 0) {
        return [element("tr", {}, element("td", { colspan: "3" }, "The header has no entry that can be read."))];
    }
    return entries.map((entry, index) => entryRow(entry, decided !== -1 && index > decided));
}

function ruleText(rule) {
    return ["rule ", String(rule.index), ", ", element("code", {}, rule.matches)];
}

function summaryOf(answer) {
    const decided = answer.entries.find((entry) => entry.decided);
    const why = decided === undefined ? ["No entry has a rule of its own"]
        : ["Entry ", element("code", {}, decided.tag), " decided"];
    const rule = answer.rule === null ? ["without a rule: the built-in locale"] : ruleText(answer.rule);
    return [...why, ", by ", ...rule, ": the locale is ", element("code", {}, answer.locale),
        ", the language ", element("code", {}, answer.language), "."];
}

/** What the user chose stands above what the header gives. */
function choiceText() {
    return current.locale === resolved.locale ? [] : [" You chose ", element("code", {}, current.locale), " instead."];
}

function malformedRow(entry) {
    return [element("code", {}, entry.text), ` – ${entry.reason}`];
}

function skippedRow(rule) {
    return [...ruleText(rule), " to ", element("code", {}, rule.definition || "nothing"), ` – ${rule.reason}`];
}

function showResolved(answer) {
    const isNewLanguage = answer.language !== resolved.language || allowed.size === 0;
    resolved = answer;
    byId("entries").replaceChildren(...entryRows(answer.entries));
    showList(byId("malformed"), answer.malformed.map(malformedRow));
    showList(byId("skipped"), answer.skipped.map(skippedRow));
    byId("header").placeholder = answer.input || "none was sent";
    if (isNewLanguage) {
        locales.now({ parameters: { uiLanguage: answer.language } });
    } else {
        applyChoice();
    }
}

function choiceOf(locale) {
    return {
        value: locale.locale,
        first: element("span", { lang: locale.tag, dir: locale.direction }, locale.ownName),
        second: locale.name === locale.ownName ? ""
            : element("span", { class: "choice-second", lang: resolved.language }, locale.name),
        words: `${locale.ownName} ${locale.name} ${locale.locale}`,
    };
}

function showLocales(answer) {
    allowed.clear();
    for (const locale of answer.locales) {
        allowed.set(locale.locale, locale);
    }
    const automatic = { value: "", first: element("span", {}, "What the header says"), words: "what the header says" };
    choices.show([automatic, ...answer.locales.map(choiceOf)], chosen.locale);
    applyChoice();
}

function applyChoice() {
    const isKnown = chosen.locale === "" || allowed.has(chosen.locale);
    sayFault("locales-filter", isKnown ? "" : `There is no allowed locale ${chosen.locale}; the header's is shown.`);
    keepChoice();
    const name = chosen.locale !== "" && isKnown ? chosen.locale : resolved.locale;
    Object.assign(current, allowed.get(name) ?? { locale: name }, { language: resolved.language });
    showIn(current);
    showHero();
    byId("who-summary").replaceChildren(...summaryOf(resolved), ...choiceText());
    announceChange();
}

function showHero() {
    const own = byId("hero-own");
    own.textContent = current.ownName ?? current.locale;
    own.lang = current.tag;
    byId("hero-name").textContent = current.name === current.ownName ? "" : current.name;
    byId("hero-name").lang = resolved.language;
    byId("hero-tag").textContent = current.locale;
}

const resolve = makeQuestion("api/resolve", showResolved, (text) => sayFault("header", text));
const locales = makeQuestion("api/locales", showLocales, (text) => sayFault("locales-filter", text));

function wanted() {
    return { header: chosen.header };
}

function tryHeader(text) {
    chosen.header = text;
    keepChoice();
    resolve.soon(wanted);
}

export function startWho() {
    byId("header").value = chosen.header;
    byId("header").addEventListener("input", (event) => tryHeader(event.target.value));
    byId("header-form").addEventListener("submit", (event) => event.preventDefault());
    byId("header-own").addEventListener("click", () => {
        byId("header").value = "";
        tryHeader("");
        byId("header").focus();
    });
    resolve.now(wanted());
}
