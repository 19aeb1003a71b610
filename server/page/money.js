// Money: currencies by their captions, and the pictures of negative amounts.

import { makeChoices } from "./choices.js";
import { byId, element, numberRows, sample, sayFault } from "./elements.js";
import { setPreference } from "./preferences.js";
import { makeQuestion } from "./server.js";
import { current, onChange } from "./state.js";

/** The captions by tag. */
const captions = new Map();

let tag = "";
let listedFor = "";

const choices = makeChoices("currencies", (value) => {
    tag = value;
    amounts.now(wantedAmounts());
});

function choiceOf(currency, language) {
    return {
        value: currency.tag,
        // Some begin with a symbol of Arabic letters, in whatever language.
        first: element("bdi", { lang: language, dir: current.direction }, currency.caption),
        words: `${currency.caption} ${currency.symbol} ${currency.tag}`,
    };
}

function showCurrencies(answer) {
    const offered = answer.currencies.filter((currency) => currency.display);
    captions.clear();
    for (const currency of answer.currencies) {
        captions.set(currency.tag, currency.caption);
    }
    const automatic = { value: "", first: element("span", {}, "Mine, else the locale's"), words: "mine locale auto" };
    choices.show([automatic, ...offered.map((currency) => choiceOf(currency, answer.language))], tag);
    byId("preference-currencyTag-list").replaceChildren(
        ...offered.map((currency) => element("option", { value: currency.tag, label: currency.caption })));
    showName();
}

let shownTag = "";

function showName() {
    const name = captions.get(shownTag) ?? shownTag;
    byId("currency-name").replaceChildren(name === "" ? "Amounts" : sample("bdi", name));
}

function negativeRows(negative) {
    const term = element("dt", {}, `Negative, ${negative.tag} `, element("code", {}, negative.picture),
        negative.preferred ? " – preferred" : "");
    return [term, sample("dd", negative.text, { dir: "auto" })];
}

function showAmounts(answer) {
    shownTag = answer.amounts?.tag ?? "";
    showName();
    byId("currency-mine").disabled = shownTag === "";
    const rows = answer.amounts === null ? [element("dt", {}, "The locale has no currency.")]
        : [...numberRows("Positive", answer.amounts.positive), ...answer.amounts.negatives.flatMap(negativeRows)];
    byId("amounts").replaceChildren(...rows);
}

const currencies = makeQuestion("api/currencies", showCurrencies, (text) => sayFault("currencies-filter", text));
const amounts = makeQuestion("api/render", showAmounts, (text) => sayFault("amount", text));

function wantedAmounts() {
    return { parameters: { locale: current.locale, number: byId("amount").value, currency: tag } };
}

/** Captions depend on the locale alone. */
function askCurrencies() {
    if (listedFor !== current.locale) {
        listedFor = current.locale;
        currencies.now({ parameters: { locale: current.locale } });
    }
}

export function startMoney() {
    byId("amount").addEventListener("input", () => amounts.soon(wantedAmounts));
    byId("currency-mine").addEventListener("click", () => setPreference("currencyTag", shownTag));
    onChange(() => {
        askCurrencies();
        amounts.now(wantedAmounts());
    });
}
