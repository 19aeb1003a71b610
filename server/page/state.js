// What the user chose: locale and header in the page's address, preferences in the cookie that the server reads.

/** The cookie without any preferences. */
export const kNoPreferences = "webi18n=";

const kYearSeconds = 365 * 24 * 60 * 60;

const address = new URL(window.location.href);

/** What the user chose. An empty locale is the one that the header gives, an empty header the browser's own. */
export const chosen = {
    locale: address.searchParams.get("locale") ?? "",
    header: address.searchParams.get("header") ?? "",
};

/** The locale of the page: its definition's name, and how the server described it. Filled by the first answers. */
export const current = { locale: "", tag: "en", direction: "ltr", language: "en" };

/** Keeps the choice in the address, so that a reload and a link show the same. */
export function keepChoice() {
    for (const [key, value] of Object.entries(chosen)) {
        if (value === "") {
            address.searchParams.delete(key);
        } else {
            address.searchParams.set(key, value);
        }
    }
    window.history.replaceState(null, "", address);
}

/** The preferences as a Map, as they stand in the cookie. */
export function readPreferences() {
    const parts = document.cookie.split("; ");
    const mine = parts.find((part) => part.startsWith(kNoPreferences)) ?? kNoPreferences;
    return new Map(new URLSearchParams(mine.slice(kNoPreferences.length)));
}

/** The cookie is as the server wrote it, "webi18n=" and the preferences; without any it goes. */
export function writeCookie(cookie) {
    const age = cookie === kNoPreferences ? 0 : kYearSeconds;
    document.cookie = `${cookie}; Path=/; SameSite=Strict; Max-Age=${age}`;
}

const listeners = [];

/** Calls it when the current locale or the preferences have changed. */
export function onChange(listener) {
    listeners.push(listener);
}

export function announceChange() {
    for (const listener of listeners) {
        listener();
    }
}
