// Who am I: headers that are tried, and locales that are chosen.

import assert from "node:assert/strict";
import { test } from "node:test";

import { becomes, onPage, textBecomes, textOf, textsOf, useBrowser } from "./browser.js";

useBrowser();

function rowsOf(page) {
    return page.locator("#entries tr").evaluateAll((rows) =>
        rows.map((row) => [...row.cells].map((cell) => cell.textContent)));
}

test("a header is read best first, and what is behind the entry that decides is not needed",
    () => onPage({}, async (page) => {
        await page.fill("#header", "en;q=0.3, xx-YY, ja;q=0.5, de-CH;q=0");
        await becomes(() => rowsOf(page), [
            ["xx-YY", "1", "no rule of its own"], ["ja", "0.5", "decided"],
            ["en", "0.3", "not needed"], ["de-CH", "0", "not wanted"],
        ]);
        await textBecomes(page, "#hero-tag", "ja-jp");
        assert.equal(await textOf(page, "#hero-own"), "日本語 (日本)");
        assert.deepEqual(await page.locator("#entries .decided").allTextContents(), ["ja0.5decided"]);
    }));

test("malformed entries are told with their reasons", () => onPage({}, async (page) => {
    await page.fill("#header", "fr_CA, fr;q=2, pt-BR;level=1, sv;q=0.2");
    await becomes(() => textsOf(page, "#malformed li"), [
        "fr_CA – it is no language tag",
        "fr;q=2 – q is no number from 0 to 1 with at most three digits behind the point",
        "pt-BR;level=1 – only a q value may follow a semicolon",
    ]);
    await textBecomes(page, "#hero-tag", "sv-se");
}));

test("a header without any entry of use gives the last rule's locale", () => onPage({}, async (page) => {
    await page.fill("#header", "xx");
    await becomes(() => rowsOf(page), [["xx", "1", "no rule of its own"]]);
    await textBecomes(page, "#hero-tag", "en-us");
    assert.match(await textOf(page, "#who-summary"),
        /^No entry has a rule of its own, by rule \d+, \*: the locale is en-us/);
}));

test("what a header holds is shown as text, never as markup", () => onPage({}, async (page) => {
    await page.fill("#header", "<img src=x onerror=alert(1)>, de");
    await becomes(() => textsOf(page, "#malformed code"), ["<img src=x onerror=alert(1)>"]);
    assert.equal(await page.locator("main img").count(), 0);
}));

test("the browser's own header comes back", () => onPage({ path: "?header=fr-CA", language: "th-TH" }, async (page) => {
    await textBecomes(page, "#hero-tag", "fr-ca");
    assert.equal(await page.inputValue("#header"), "fr-CA");
    await page.click("#header-own");
    await textBecomes(page, "#hero-tag", "th-th");
    assert.equal(await page.inputValue("#header"), "");
    assert.equal(new URL(page.url()).search, "");
}));

test("locales are found by both names and by tag, without marks and case",
    () => onPage({ language: "fr-FR" }, async (page) => {
        await textBecomes(page, "#hero-tag", "fr-fr");
        for (const words of ["ALLEMAND autriche", "osterreich deutsch", "de-at"]) {
            await page.fill("#locales-filter", words);
            await becomes(() => textsOf(page, "#locales .choice:visible:not(:has(:checked)) code"), ["de-at"]);
        }
        assert.match(await textOf(page, "#locales-count"), /^1 of \d+ choices$/);
        const names = page.locator("#locales .choice:visible:not(:has(:checked)) .choice-names > span");
        assert.deepEqual(await names.allTextContents(), ["Deutsch (Österreich)", "allemand (Autriche)"]);
        assert.deepEqual(await names.evaluateAll((all) => all.map((each) => each.lang)), ["de-AT", "fr"]);
    }));

test("a chosen locale goes before the header's, is kept by a reload, and can be taken back",
    () => onPage({}, async (page) => {
        await page.fill("#locales-filter", "Bokmål norway");
        await page.locator("#locales .choice:visible", { hasText: "nb-no" }).click();
        await textBecomes(page, "#hero-tag", "nb-no");
        assert.match(await textOf(page, "#who-summary"), / You chose nb-no instead\.$/);
        await page.reload();
        await textBecomes(page, "#hero-tag", "nb-no");
        await page.locator("#locales .choice", { hasText: "What the header says" }).click();
        await textBecomes(page, "#hero-tag", "en-us");
    }));

test("a locale of the address that is not allowed is told, and the header's is shown",
    () => onPage({ path: "?locale=tlh" }, async (page) => {
        await textBecomes(page, "#locales-filter-fault", "There is no allowed locale tlh; the header's is shown.");
        await textBecomes(page, "#hero-tag", "en-us");
    }));

test("what is chosen stays in sight while the list is searched, and behind it", () =>
    onPage({ path: "?locale=nb-no" }, async (page) => {
        await textBecomes(page, "#hero-tag", "nb-no");
        await page.fill("#locales-filter", "deutsch");
        const codes = await textsOf(page, "#locales .choice:visible code");
        assert.ok(codes.includes("nb-no") && codes.includes("de-at") && !codes.includes("fr-ca"), codes.join(" "));
        await page.fill("#locales-filter", "");
        const [list, row] = await Promise.all(
            ["#locales", "#locales .choice:has(:checked)"].map((each) => page.locator(each).boundingBox()));
        assert.ok(row.y >= list.y && row.y + row.height <= list.y + list.height, "the chosen row is inside the list");
    }));
