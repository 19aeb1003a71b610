// How it looks here: dates, times, numbers and the month, as the server rendered them.

import { byId, dateRows, element, numberRows, sample, sayFault } from "./elements.js";
import { makeQuestion } from "./server.js";
import { current, onChange } from "./state.js";

const kDateNames = {
    dateShortFormat: "Short",
    dateLongFormat: "Long",
    dateInputFormat: "In forms",
    timeFormat: "Time",
    timeInputFormat: "Time in forms",
};

const kNumberNames = {
    positive: "Number",
    negative: "Below zero",
    percent: "Per cent",
    negativePercent: "Per cent below zero",
    scaled: "In large units",
    negativeScaled: "In large units, below zero",
};

const listeners = [];

/** Calls it with each answer of the server. */
export function onRendered(listener) {
    listeners.push(listener);
}

function isNamed(row) {
    return row.name !== undefined;
}

function showDates(answer) {
    const named = [...answer.dates, ...answer.times].filter(isNamed);
    const rows = named.flatMap((row) => dateRows(kDateNames[row.name], row.text));
    const together = answer.dateTimes.slice(0, 1).flatMap((row) => dateRows("Date and time", row.text));
    byId("look-dates").replaceChildren(...rows, ...together);
    const others = answer.dates.filter((row) => !isNamed(row));
    byId("look-formats").replaceChildren(
        ...others.flatMap((row) => [element("dt", {}, element("code", {}, row.picture)), sample("dd", row.text)]));
}

/** Small numbers have no large units: their rows are left out. */
function showNumbers(numbers) {
    const names = Object.keys(kNumberNames).filter((name) => numbers[name] !== "");
    byId("look-numbers").replaceChildren(...names.flatMap((name) => numberRows(kNumberNames[name], numbers[name])));
}

function dayHead(month, index) {
    return element("th", { scope: "col" }, sample("abbr", month.shortDays[index], { title: month.days[index] }));
}

function dayCell(month, day) {
    const isShown = day === month.day;
    return element("td", isShown ? { "aria-current": "date" } : {}, day === 0 ? "" : String(day));
}

function showMonth(month) {
    byId("month-name").replaceChildren(
        sample("span", month.name), " ", element("span", { class: "year" }, String(month.year)));
    byId("month-days").replaceChildren(...month.days.map((day, index) => dayHead(month, index)));
    byId("month").replaceChildren(
        ...month.weeks.map((week) => element("tr", {}, ...week.map((day) => dayCell(month, day)))));
}

function show(answer) {
    showDates(answer);
    showNumbers(answer.numbers);
    showMonth(answer.month);
    for (const listener of listeners) {
        listener(answer);
    }
}

/** The server's words stand at the field that it refused. */
function fail(text, field) {
    sayFault("number", field === "number" ? text : "");
    sayFault("moment", field === "date" ? text : "");
    sayFault("look", field === "number" || field === "date" ? "" : text);
}

const question = makeQuestion("api/render", show, fail);

/** The browser's field leaves out seconds that are zero. */
function wholeMoment(text) {
    return text.length === "2026-02-03T16:05".length ? `${text}:00` : text;
}

function wanted() {
    const parameters = { locale: current.locale, number: byId("number").value };
    const moment = wholeMoment(byId("moment").value);
    return { parameters: moment === "" ? parameters : { ...parameters, date: moment } };
}

function localNow() {
    const now = new Date();
    const local = new Date(now.getTime() - now.getTimezoneOffset() * 60_000);
    return local.toISOString().slice(0, "2026-02-03T16:05:09".length);
}

export function startLook() {
    byId("moment").value = localNow();
    byId("moment").addEventListener("input", () => question.soon(wanted));
    byId("number").addEventListener("input", () => question.soon(wanted));
    onChange(() => question.now(wanted()));
}
