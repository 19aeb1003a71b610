// A headless browser on the page, and what every test asks of it: nothing reported on the console, nothing refused by
// the content security policy, no other host asked.

import assert from "node:assert/strict";
import { createRequire } from "node:module";
import process from "node:process";
import { after, before } from "node:test";

// The packages lie in the build tree, where NODE_PATH points; only require looks there.
const require = createRequire(import.meta.url);
const { chromium } = require("playwright-core");

/** Where the page is served, with the slash at the end. */
export const kAddress = process.env.WEBI18N_ADDRESS;

/** Where screenshots go. */
export const kScreenshots = process.env.WEBI18N_SCREENSHOTS;

export const kWide = { width: 1280, height: 900 };
export const kNarrow = { width: 360, height: 740 };

/** The moment at which the samples are looked at: a digit where two are asked for shows, and the afternoon does. */
export const kMoment = "2026-02-03T16:05:09";

/** How long an answer may take to show, on a machine that is busy with other things. */
const kPatienceMilliseconds = 30_000;

let browser;

/** To be called by each file of tests: one browser for all of its tests. */
export function useBrowser() {
    before(async () => {
        assert.ok(kAddress, "WEBI18N_ADDRESS is set; scripts/test-browser does it");
        browser = await chromium.launch({
            executablePath: process.env.WEBI18N_CHROMIUM ?? "/usr/bin/chromium",
            args: process.getuid() === 0 ? ["--no-sandbox"] : [],
        });
    });
    after(() => browser.close());
}

/** What happens on the page and must not. */
function watchFaults(page, isExpected) {
    const faults = [];
    const add = (text) => isExpected(text) || faults.push(text);
    page.on("console", (message) => add(`console ${message.type()}: ${message.text()}`));
    page.on("pageerror", (error) => add(`error: ${error.message}`));
    page.on("request", (request) => request.url().startsWith(kAddress) || add(`asked elsewhere: ${request.url()}`));
    return faults;
}

/**
 * Runs a test on a page of its own, and then looks whether anything went wrong there. Options: path (what follows the
 * address), language (the browser's), viewport, scheme ("light" or "dark"), cookie (the preferences'), expected (tells
 * which faults belong to the test).
 */
export async function onPage(options, test) {
    const context = await browser.newContext({
        viewport: options.viewport ?? kWide,
        colorScheme: options.scheme ?? "light",
        locale: options.language ?? "en-US",
        reducedMotion: "reduce",
    });
    try {
        if (options.cookie !== undefined) {
            await context.addCookies([{ name: "webi18n", value: options.cookie, url: kAddress }]);
        }
        const page = await context.newPage();
        page.setDefaultTimeout(kPatienceMilliseconds);
        const faults = watchFaults(page, options.expected ?? (() => false));
        await page.goto(kAddress + (options.path ?? ""));
        await test(page);
        assert.deepEqual(faults, []);
    } finally {
        await context.close();
    }
}

/** A browser that says it when a request is refused; for tests of refusals. */
export function isRefusal(fault) {
    return fault.startsWith("console error: Failed to load resource");
}

/** Waits until a value read again and again is the expected one; shows the difference if it never is. */
export async function becomes(read, expected) {
    const end = Date.now() + kPatienceMilliseconds;
    let value = await read();
    while (!isSame(value, expected) && Date.now() < end) {
        await new Promise((resolve) => setTimeout(resolve, 25));
        value = await read();
    }
    assert.deepEqual(value, expected);
}

function isSame(value, expected) {
    return JSON.stringify(value) === JSON.stringify(expected);
}

export function textOf(page, selector) {
    return page.locator(selector).textContent();
}

export async function textBecomes(page, selector, expected) {
    await becomes(() => textOf(page, selector), expected);
}

/** The pairs of a list of terms and descriptions, as an object. */
export function pairsOf(page, selector) {
    return page.locator(selector).evaluate((list) => {
        const terms = [...list.querySelectorAll("dt")];
        return Object.fromEntries(terms.map((term) => [term.textContent, term.nextElementSibling?.textContent]));
    });
}

export async function pairsBecome(page, selector, expected) {
    await becomes(() => pairsOf(page, selector), expected);
}

/** The texts of all that match. */
export function textsOf(page, selector) {
    return page.locator(selector).allTextContents();
}

/** Opens the page in a locale, at the moment of the samples. */
export async function inLocale(locale, test, options = {}) {
    await onPage({ path: `?locale=${locale}`, ...options }, async (page) => {
        await textBecomes(page, "#hero-tag", locale);
        await page.fill("#moment", kMoment);
        await becomes(() => page.locator("#month [aria-current]").allTextContents(), ["3"]);
        await test(page);
    });
}
