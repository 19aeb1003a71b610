// Faults are said where they happen, in the server's words, and go away when all is well again.

import assert from "node:assert/strict";
import { test } from "node:test";

import { becomes, inLocale, isRefusal, onPage, pairsBecome, pairsOf, textBecomes, textOf, useBrowser }
    from "./browser.js";

useBrowser();

const kTooLarge = "The request line and the header are too large.";
const kUnreachable = "The server cannot be reached. What you see may be out of date.";

test("a number that is none", () => inLocale("en-us", async (page) => {
    await page.fill("#number", "12x");
    await textBecomes(page, "#number-fault",
        "The parameter number is not accepted: accepted are digits with a point, such as 1234567.89.");
    assert.equal(await page.getAttribute("#number", "aria-invalid"), "true");
    assert.equal(await textOf(page, "#look-fault"), "");
    await page.fill("#number", "12");
    await textBecomes(page, "#number-fault", "");
    await becomes(async () => (await pairsOf(page, "#look-numbers")).Number, "12");
}, { expected: isRefusal }));

test("an amount that is none", () => inLocale("en-us", async (page) => {
    await page.fill("#amount", "1,5");
    await textBecomes(page, "#amount-fault",
        "The parameter number is not accepted: accepted are digits with a point, such as 1234567.89.");
    assert.equal(await page.getAttribute("#amount", "aria-invalid"), "true");
}, { expected: isRefusal }));

test("a text that is too long to be a date", () => inLocale("en-us", async (page) => {
    await page.fill("#typed-text", "1".repeat(1025));
    await textBecomes(page, "#typed-text-fault", "The parameter text is longer than 1024 characters.");
    await page.fill("#typed-text", "1/2/2003");
    await textBecomes(page, "#typed-text-fault", "");
    await pairsBecome(page, "#typed-fields", { year: "2003", month: "1", day: "2" });
}, { expected: isRefusal }));

test("a text that is no date is an answer, no fault", () => inLocale("en-us", async (page) => {
    await page.fill("#typed-text", "31/12/2005");
    await textBecomes(page, "#typed-verdict", "This is not read as what the form asks for.");
    assert.equal(await textOf(page, "#typed-text-fault"), "");
    assert.equal(await page.locator("#typed-fields div").count(), 0);
}));

test("a header that cannot be sent, and one that is too large", () => onPage({ expected: isRefusal }, async (page) => {
    await textBecomes(page, "#hero-tag", "en-us");
    await page.fill("#header", "日本語");
    await textBecomes(page, "#header-fault", "A header can only hold characters of Latin-1.");
    await page.fill("#header", "de,".repeat(3000));
    await textBecomes(page, "#header-fault", kTooLarge);
    await page.fill("#header", "de");
    await textBecomes(page, "#hero-tag", "de-de");
    await textBecomes(page, "#header-fault", "");
}));

test("more lines than the server sorts", () => inLocale("en-us", async (page) => {
    // Typing over so many lines would take the browser very long.
    const enter = (text) => page.locator("#lines").evaluate((field, value) => {
        field.value = value;
        field.dispatchEvent(new Event("input", { bubbles: true }));
    }, text);
    await enter("a\n".repeat(10_001));
    await textBecomes(page, "#lines-fault", "The field lines is not an array of at most 10000 texts.");
    await enter("b\na");
    await textBecomes(page, "#lines-fault", "");
}, { expected: isRefusal }));

test("a server that cannot be reached is told at each part that asks, until it is there again",
    () => inLocale("en-us", async (page) => {
        await page.context().setOffline(true);
        const fields = { "#typed-text": "3/4/05", "#amount": "7", "#lines": "b\na", "#plain": "x", "#header": "de;q=0." };
        for (const [field, text] of Object.entries(fields)) {
            await page.fill(field, text);
            await textBecomes(page, `${field}-fault`, kUnreachable);
        }
        await page.fill("#moment", "2026-02-04T00:00:30");
        await textBecomes(page, "#look-fault", kUnreachable);
        await page.context().setOffline(false);
        for (const [field, text] of Object.entries(fields)) {
            await page.fill(field, `${text}1`);
            await textBecomes(page, `${field}-fault`, "");
        }
    }, { expected: isRefusal }));

test("an answer that comes late does not replace a newer one", () => inLocale("en-us", async (page) => {
    let late;
    const isHeld = new Promise((held) => {
        page.route(/api\/parse\?.*text=1%2F1%2F2001/, async (route) => {
            held();
            await late;
            await route.continue().catch(() => {});
        });
    });
    let release;
    late = new Promise((resolve) => {
        release = resolve;
    });
    await page.fill("#typed-text", "1/1/2001");
    await isHeld;
    await page.fill("#typed-text", "2/2/2002");
    await pairsBecome(page, "#typed-fields", { year: "2002", month: "2", day: "2" });
    release();
    await page.unrouteAll({ behavior: "wait" });
    assert.deepEqual(await pairsOf(page, "#typed-fields"), { year: "2002", month: "2", day: "2" });
}));

test("typing asks once for what is typed in one go", () => inLocale("en-us", async (page) => {
    const asked = [];
    page.on("request", (request) => {
        const address = new URL(request.url());
        if (address.pathname === "/api/parse") {
            asked.push(address.searchParams.get("text"));
        }
    });
    await page.locator("#typed-text").fill("");
    await textBecomes(page, "#typed-verdict", "Type something.");
    asked.length = 0;
    await page.locator("#typed-text").evaluate((field) => {
        for (const text of ["1", "1/", "1/2", "1/2/", "1/2/2003"]) {
            field.value = text;
            field.dispatchEvent(new Event("input", { bubbles: true }));
        }
    });
    await pairsBecome(page, "#typed-fields", { year: "2003", month: "1", day: "2" });
    assert.deepEqual(asked, ["1/2/2003"]);
}));
