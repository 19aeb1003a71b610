// The page by keyboard alone: every control is reached in the order of reading, is seen to have the focus, and works.

import assert from "node:assert/strict";
import { test } from "node:test";

import { becomes, inLocale, onPage, pairsBecome, textBecomes, textOf, textsOf, useBrowser } from "./browser.js";

useBrowser();

/** What has the focus, and whether that is seen: inside the window, with an outline of its own or of its row. */
function focusOf(page) {
    return page.evaluate(() => {
        const focused = document.activeElement;
        const row = focused.closest(".choice") ?? focused;
        const place = row.getBoundingClientRect();
        return {
            name: focused.id || focused.getAttribute("href") || focused.name || focused.tagName,
            isSeen: getComputedStyle(row).outlineStyle !== "none" && place.bottom > 0 && place.top < window.innerHeight,
        };
    });
}

/** The stops of the tabulator key in order. The parts of a date field, of which browsers make several, are one here. */
async function walk(page) {
    const stops = [];
    for (;;) {
        await page.keyboard.press("Tab");
        const { name, isSeen } = await focusOf(page);
        if (name === "BODY" || stops.length > 80) {
            return stops;
        }
        assert.ok(isSeen, `${name} has the focus and it is not seen`);
        if (stops.at(-1) !== name) {
            stops.push(name);
        }
    }
}

const kStops = [
    "#main", "#who", "#look", "#preferences", "#typed", "#money", "#sorting", "#encoding",
    "entries-box", "header", "header-own", "locales-filter", "locales",
    "look-formats-head", "moment", "number",
    "preference-dateOrder", "preference-dateSeparator", "preference-24hours", "preference-timeSeparator",
    "preference-dateFormat", "preference-timeFormat", "preference-decimalSeparator", "preference-thousandsSeparator",
    "preference-currencyTag", "reset",
    "typed-text", "typed-expect",
    "currencies-filter", "currencies", "amount", "currency-mine",
    "lines", "sort", "strength", "sorted-box",
    "plain", "charset",
];

for (const locale of ["en-us", "ar-eg"]) {
    test(`every control is reached in order and seen, in ${locale}`, () =>
        onPage({ path: `?locale=${locale}` }, async (page) => {
            await textBecomes(page, "#hero-tag", locale);
            await page.locator("#replaced li").first().waitFor();
            assert.deepEqual(await walk(page), kStops);
        }));
}

test("the skip link is first and leads to the content", () => onPage({}, async (page) => {
    await textBecomes(page, "#hero-tag", "en-us");
    await page.keyboard.press("Tab");
    const link = page.locator(".skip");
    assert.ok((await link.boundingBox()).y >= 0, "it is in sight when it has the focus");
    await page.keyboard.press("Enter");
    await becomes(() => page.evaluate(() => document.activeElement.id), "main");
}));

test("a locale is chosen by keys", () => onPage({}, async (page) => {
    await textBecomes(page, "#hero-tag", "en-us");
    await page.focus("#locales-filter");
    await page.keyboard.type("swiss german");
    await becomes(() => textsOf(page, "#locales .choice:visible code"), ["auto", "gsw-ch", "gsw-fr", "gsw-li"]);
    await page.keyboard.press("Tab");
    await page.keyboard.press("ArrowDown");
    await textBecomes(page, "#hero-tag", "gsw-ch");
    await page.keyboard.press("ArrowDown");
    await textBecomes(page, "#hero-tag", "gsw-fr");
}));

test("a preference is set and reset by keys", () => inLocale("en-us", async (page) => {
    await page.focus("#preference-dateOrder");
    await page.keyboard.press("ArrowDown");
    await textBecomes(page, "#preference-dateOrder-effect", "03/02/2026");
    await page.keyboard.press("Tab");
    await page.keyboard.type(".");
    await textBecomes(page, "#preference-dateSeparator-effect", "03.02.2026");
    await page.focus("#reset");
    await page.keyboard.press("Enter");
    await textBecomes(page, "#preference-dateSeparator-effect", "02/03/2026");
}));

test("a date is typed and what is asked for is chosen by keys", () => inLocale("en-us", async (page) => {
    await page.focus("#typed-text");
    await page.keyboard.press("Control+A");
    await page.keyboard.type("5:06 PM");
    await page.keyboard.press("Tab");
    await page.keyboard.press("ArrowDown");
    await pairsBecome(page, "#typed-fields", { hour: "17", minute: "6" });
    assert.equal(await textOf(page, "#typed-verdict"), "Read without doubt.");
}));
