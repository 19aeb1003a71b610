// Every part of the page in six locales, each as a browser of that language is served.

import assert from "node:assert/strict";
import { test } from "node:test";

import { becomes, kMoment, onPage, pairsBecome, pairsOf, textBecomes, textOf, textsOf, useBrowser } from "./browser.js";
import { answersOf } from "./command.js";
import { kExpected } from "./expected.js";

useBrowser();

async function checkWho(page, expected) {
    const [why] = answersOf(["explain", expected.tag]);
    assert.equal(why.locale, expected.locale);
    await textBecomes(page, "#who-summary",
        `Entry ${expected.tag} decided, by rule ${why.rule.index}, ${why.rule.matches}: ` +
        `the locale is ${expected.locale}, the language ${expected.language}.`);
    assert.deepEqual(await textsOf(page, "#entries td"), [expected.tag, "1", "decided"]);
    assert.equal(await textOf(page, "#hero-own"), expected.own);
    assert.equal(await page.locator("#locales input:checked").getAttribute("value"), "");
}

async function checkDirection(page, expected) {
    await pairsBecome(page, "#amounts", expected.amounts);
    assert.equal(await page.locator("html").getAttribute("dir"), expected.direction);
    const long = page.locator("#look-dates dd").nth(1);
    assert.equal(await long.getAttribute("lang"), expected.tag);
    assert.equal(await long.getAttribute("dir"), expected.direction);
    assert.equal(await page.locator("#hero-own").getAttribute("lang"), expected.tag);
}

async function checkLook(page, expected) {
    await page.fill("#moment", kMoment);
    await becomes(async () => {
        const { "Date and time": together, ...named } = await pairsOf(page, "#look-dates");
        return named;
    }, expected.dates);
    const { "In large units": scaled, "In large units, below zero": scaledNegative, ...numbers } =
        await pairsOf(page, "#look-numbers");
    assert.deepEqual(numbers, expected.numbers);
    assert.equal(scaled, expected.scaled);
    assert.equal(scaledNegative, `-${expected.scaled}`);
}

async function checkMonth(page, expected) {
    assert.equal(await textOf(page, "#month-name"), expected.month);
    assert.deepEqual(await textsOf(page, "#month-days abbr"), expected.days);
    const weeks = await page.locator("#month tr").evaluateAll((rows) =>
        rows.map((row) => [...row.cells].map((cell) => cell.textContent)));
    assert.deepEqual(weeks, expected.weeks);
    assert.deepEqual(await textsOf(page, "#month [aria-current=date]"), ["3"]);
}

async function checkTyped(page, expected) {
    await page.fill("#typed-text", "2/3/04");
    await pairsBecome(page, "#typed-fields", expected.typed);
    assert.equal(await textOf(page, "#typed-verdict"),
        `Read as ${expected.order}; elsewhere it would mean something else.`);
    assert.deepEqual(await textsOf(page, "#typed-alternatives li"), expected.alternatives);
}

async function checkMoney(page, expected) {
    await pairsBecome(page, "#amounts", expected.amounts);
    await textBecomes(page, "#currency-name", expected.caption);
    await page.fill("#currencies-filter", `loc:${expected.locale}`);
    await becomes(() => textsOf(page, "#currencies .choice:visible bdi"), [expected.caption]);
}

async function checkSorting(page, expected) {
    const lines = ["zebra", "öl", "Äpfel", "ost", "cote", "côte", "chico", "cuna", "サクラ", "さくら", "قلم", "ไก่"];
    await page.fill("#lines", lines.join("\n"));
    const input = `${lines.join("\n")}\n`;
    const keys = answersOf(["keys", "--sort", expected.sort], input).filter((line) => line.key !== undefined);
    const keyOf = new Map(keys.map((line) => [line.text, line.key]));
    const order = answersOf(["sort", "--sort", expected.sort], input).map((line) => line.text);
    await becomes(() => textsOf(page, "#sorted td:first-child"), order);
    assert.deepEqual(await textsOf(page, "#sorted td:last-child"), order.map((line) => keyOf.get(line)));
    assert.match(await textOf(page, "#sorted-summary"), new RegExp(`^12 lines in the order ${expected.sort};`));
    assert.equal(await textOf(page, "#sort option:checked"), `the locale's own: ${expected.sort}`);
}

async function checkEncoding(page, expected) {
    const [text, charset, bytes, lacking] = expected.encoded;
    await page.fill("#plain", text);
    await page.selectOption("#charset", charset);
    await textBecomes(page, "#bytes", bytes);
    assert.deepEqual(await textsOf(page, "#replaced li"), lacking);
}

const kParts = {
    "who am I": checkWho,
    "direction and language": checkDirection,
    "how it looks here": checkLook,
    "this month": checkMonth,
    "type a date": checkTyped,
    "money": checkMoney,
    "sorting": checkSorting,
    "encoding": checkEncoding,
};

for (const [locale, expected] of Object.entries(kExpected)) {
    test(locale, async (context) => {
        await onPage({ language: expected.tag }, async (page) => {
            await textBecomes(page, "#hero-tag", locale);
            for (const [name, check] of Object.entries(kParts)) {
                await context.test(name, () => check(page, { ...expected, locale }));
            }
        });
    });
}
