// The page for everybody: nothing runs over the edge of a narrow window, an accessibility checker has no serious
// findings, in light and dark. Each view is kept as a screenshot in the build tree.

import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import path from "node:path";
import { test } from "node:test";

import { inLocale, kNarrow, kScreenshots, kWide, useBrowser } from "./browser.js";
import { kExpected } from "./expected.js";

useBrowser();

const kAxe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

/** Views that the checker reads, which takes long: each direction, width and scheme is among them. */
const kChecked = new Set(["en-us-wide-light", "en-us-narrow-dark", "ar-eg-wide-dark", "ar-eg-narrow-light"]);

/** What shows that each part has had its answer. */
const kFilled = [
    "#look-dates dd", "#amounts dd", "#currencies .choice", "#typed-fields dd", "#sorted td", "#replaced li",
];

async function isFilled(page) {
    for (const part of kFilled) {
        await page.locator(part).first().waitFor();
    }
}

function widthsOf(page) {
    return page.evaluate(() => {
        const edge = document.documentElement.clientWidth;
        const outside = [...document.body.querySelectorAll("*")].filter((each) => {
            const { left, right, width } = each.getBoundingClientRect();
            return width > 0 && (right > edge + 1 || left < -1) && each.closest(".scroll, .choices-list") === null;
        });
        const names = outside.map((each) => each.id || each.className || each.tagName);
        return { page: document.documentElement.scrollWidth, outside: names };
    });
}

/** The serious and critical findings, one line each with the elements. The long lists are searched first: of their
    rows, which are all alike, a few are checked instead of a thousand. */
async function findingsOf(page) {
    await page.fill("#locales-filter", "french");
    await page.fill("#currencies-filter", "usd");
    await page.evaluate(kAxe);
    const { violations } = await page.evaluate(() => window.axe.run(document, { resultTypes: ["violations"] }));
    await page.fill("#locales-filter", "");
    await page.fill("#currencies-filter", "");
    return violations
        .filter(({ impact }) => impact === "serious" || impact === "critical")
        .map(({ id, nodes }) => `${id}: ${nodes.slice(0, 5).map((node) => node.target.join(" ")).join(" | ")}`);
}

/** Each combination of width and scheme, by its name. */
const kViews = [
    ["wide-light", kWide, "light"], ["wide-dark", kWide, "dark"],
    ["narrow-light", kNarrow, "light"], ["narrow-dark", kNarrow, "dark"],
];

async function checkView(page, name, viewport) {
    await page.screenshot({ path: path.join(kScreenshots, `${name}.png`), fullPage: true });
    assert.deepEqual(await widthsOf(page), { page: viewport.width, outside: [] });
    if (kChecked.has(name)) {
        assert.deepEqual(await findingsOf(page), []);
    }
}

for (const locale of Object.keys(kExpected)) {
    test(locale, (context) => inLocale(locale, async (page) => {
        await isFilled(page);
        for (const [view, viewport, colorScheme] of kViews) {
            await page.setViewportSize(viewport);
            await page.emulateMedia({ colorScheme });
            await page.evaluate(() => document.activeElement.blur() ?? window.scrollTo(0, 0));
            await context.test(view, () => checkView(page, `${locale}-${view}`, viewport));
        }
    }));
}

test("dark is dark, light is light", async () => {
    const lightness = (page) => page.evaluate(() => {
        const [red, green, blue] = getComputedStyle(document.documentElement).backgroundColor.match(/\d+/g).map(Number);
        return (red + green + blue) / 3;
    });
    await inLocale("en-us", async (page) => assert.ok(await lightness(page) > 200), { scheme: "light" });
    await inLocale("en-us", async (page) => assert.ok(await lightness(page) < 60), { scheme: "dark" });
});

test("headings go down one level at a time, and each part has its own", () => inLocale("en-us", async (page) => {
    await isFilled(page);
    const headings = page.locator("h1, h2, h3, h4");
    const levels = await headings.evaluateAll((all) => all.map((each) => Number(each.tagName[1])));
    assert.equal(levels.filter((level) => level === 1).length, 1);
    assert.equal(levels.filter((level) => level === 2).length, 7);
    levels.forEach((level, index) => assert.ok(index === 0 ? level === 1 : level <= levels[index - 1] + 1));
    assert.equal(await page.locator("section[aria-labelledby]").count(), 7);
}));
