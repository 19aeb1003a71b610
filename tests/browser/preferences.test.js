// My preferences: each has its effect at once, is kept, and goes away when all are reset.

import assert from "node:assert/strict";
import { test } from "node:test";

import { becomes, inLocale, isRefusal, kAddress, onPage, pairsOf, textBecomes, textOf, useBrowser } from "./browser.js";

useBrowser();

async function set(page, key, value) {
    const control = page.locator(`#preference-${key}`);
    const isSelect = await control.evaluate((each) => each.matches("select"));
    await (isSelect ? control.selectOption(value) : control.fill(value));
}

async function effectBecomes(page, key, text) {
    await textBecomes(page, `#preference-${key}-effect`, text);
}

async function sampleBecomes(page, list, term, text) {
    await becomes(async () => (await pairsOf(page, list))[term], text);
}

async function cookieOf(page) {
    const cookies = await page.context().cookies(kAddress);
    return Object.fromEntries(new URLSearchParams(cookies.find((each) => each.name === "webi18n")?.value ?? ""));
}

/** Of en-us: preference, value, its effect beside the field, and where else it shows. */
const kEffects = [
    ["dateOrder", "ymd", "2026/02/03", "#look-dates", "In forms"],
    ["dateSeparator", ".", "02.03.2026", "#look-dates", "In forms"],
    ["24hours", "true", "16:05:09", "#look-dates", "Time in forms"],
    ["timeSeparator", ".", "04.05.09 PM", "#look-dates", "Time in forms"],
    ["dateFormat", "ddd d MMM yy", "Tue 3 Feb 26", "#look-dates", "Short"],
    ["timeFormat", "HH'h'mm", "16h05", "#look-dates", "Time"],
    ["decimalSeparator", "·", "1,234,567·891", "#look-numbers", "Number"],
    ["thousandsSeparator", "'", "1'234'567.891", "#look-numbers", "Number"],
];

test("each has its effect at once, is kept, and can be taken back", (context) => inLocale("en-us", async (page) => {
    for (const [key, value, text, list, term] of kEffects) {
        await context.test(key, async () => {
            const before = await textOf(page, `#preference-${key}-effect`);
            await set(page, key, value);
            await effectBecomes(page, key, text);
            await sampleBecomes(page, list, term, text);
            assert.deepEqual(await cookieOf(page), { [key]: value });
            await textBecomes(page, "#preferences-state", "1 preference is set.");
            await set(page, key, "");
            await effectBecomes(page, key, before);
            assert.deepEqual(await cookieOf(page), {});
        });
    }
}));

test("a currency has its effect at once, here and among the amounts", () => inLocale("en-us", async (page) => {
    await set(page, "currencyTag", "loc:de-de");
    await effectBecomes(page, "currencyTag", "1,234,567.89 €");
    await sampleBecomes(page, "#amounts", "Positive", "1,234.50 €");
}));

test("a chosen currency becomes mine by its button", () => inLocale("de-de", async (page) => {
    await page.fill("#currencies-filter", "loc:ja-jp");
    await page.locator("#currencies .choice:visible", { hasText: "loc:ja-jp" }).click();
    await sampleBecomes(page, "#amounts", "Positive", "￥1.234");
    await page.click("#currency-mine");
    await becomes(() => cookieOf(page), { currencyTag: "loc:ja-jp" });
    assert.equal(await page.inputValue("#preference-currencyTag"), "loc:ja-jp");
}));

test("preferences act together, also on what is typed, and in another locale", () => inLocale("en-us", async (page) => {
    await set(page, "dateOrder", "dmy");
    await effectBecomes(page, "dateOrder", "03/02/2026");
    await set(page, "dateSeparator", "-");
    await effectBecomes(page, "dateSeparator", "03-02-2026");
    await page.fill("#typed-text", "2-3-04");
    await becomes(() => pairsOf(page, "#typed-fields"), { year: "2004", month: "3", day: "2" });
    await page.fill("#locales-filter", "ja-jp");
    await page.locator("#locales .choice:visible", { hasText: "ja-jp" }).click();
    await textBecomes(page, "#hero-tag", "ja-jp");
    await effectBecomes(page, "dateSeparator", "03-02-2026");
}));

test("what was kept is there after a reload, until all is reset", () => inLocale("en-us", async (page) => {
    await set(page, "24hours", "true");
    await effectBecomes(page, "24hours", "16:05:09");
    await page.reload();
    await textBecomes(page, "#preferences-state", "1 preference is set.");
    assert.equal(await page.inputValue("#preference-24hours"), "true");
    await page.fill("#moment", "2026-02-03T16:05:09");
    await effectBecomes(page, "24hours", "16:05:09");
    await page.click("#reset");
    await effectBecomes(page, "24hours", "04:05:09 PM");
    assert.equal(await page.inputValue("#preference-24hours"), "");
    assert.deepEqual(await cookieOf(page), {});
    await textBecomes(page, "#preferences-state", "Nothing is set: all is as the locale has it.");
}));

test("letters that cookies and addresses have a meaning for are kept as they are",
    () => inLocale("en-us", async (page) => {
        await set(page, "thousandsSeparator", " &=;+%·");
        await effectBecomes(page, "thousandsSeparator", "1 &=;+%·234 &=;+%·567.891");
        await page.reload();
        await becomes(() => page.inputValue("#preference-thousandsSeparator"), " &=;+%·");
    }));

test("a value that is refused is told at its field and not kept",
    () => onPage({ expected: isRefusal }, async (page) => {
        await textBecomes(page, "#hero-tag", "en-us");
        await set(page, "dateSeparator", "-".repeat(65));
        await textBecomes(page, "#preference-dateSeparator-fault",
            "The preference dateSeparator is longer than 64 characters.");
        assert.equal(await page.getAttribute("#preference-dateSeparator", "aria-invalid"), "true");
        assert.deepEqual(await cookieOf(page), {});
        await set(page, "dateSeparator", ".");
        await textBecomes(page, "#preference-dateSeparator-fault", "");
        assert.equal(await page.getAttribute("#preference-dateSeparator", "aria-invalid"), "false");
        await becomes(() => cookieOf(page), { dateSeparator: "." });
    }));

test("a separator that would be misread is told at its field and not kept",
    () => onPage({ expected: isRefusal }, async (page) => {
        await textBecomes(page, "#hero-tag", "en-us");
        await set(page, "decimalSeparator", "x");
        await textBecomes(page, "#preference-decimalSeparator-fault",
            "The preference decimalSeparator may not have letters or digits.");
        assert.deepEqual(await cookieOf(page), {});
    }));

test("more than a cookie holds is told at the field, and what was kept stays", () => inLocale("en-us", async (page) => {
    await set(page, "dateFormat", "年".repeat(64));
    await becomes(async () => Object.keys(await cookieOf(page)), ["dateFormat"]);
    await set(page, "timeFormat", "時".repeat(64));
    await textBecomes(page, "#preference-timeFormat-fault", "The preferences are too large for a cookie.");
    assert.deepEqual(Object.keys(await cookieOf(page)), ["dateFormat"]);
}, { expected: isRefusal }));

test("a currency that there is not is told at its field", () => onPage({ expected: isRefusal }, async (page) => {
    await textBecomes(page, "#hero-tag", "en-us");
    await set(page, "currencyTag", "QQQ");
    await textBecomes(page, "#preference-currencyTag-fault", "There is no currency of that tag.");
    assert.deepEqual(await cookieOf(page), {});
}));

test("a cookie that the server does not take is dropped, and that is told", () =>
    onPage({ cookie: "dateOrder=sideways", expected: isRefusal }, async (page) => {
        await textBecomes(page, "#hero-tag", "en-us");
        await textBecomes(page, "#preferences-fault",
            "The preference dateOrder is not accepted: accepted are mdy, dmy, ymd (or md, dm, ym). " +
            "All preferences are reset.");
        assert.deepEqual(await cookieOf(page), {});
    }));
