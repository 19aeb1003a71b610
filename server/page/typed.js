// Type a date: what the server read, and what else it could have meant.

import { byId, element, sample, sayFault, showList } from "./elements.js";
import { makeQuestion } from "./server.js";
import { current, onChange } from "./state.js";

const kOrders = { mdy: "month, day, year", dmy: "day, month, year", ymd: "year, month, day", myd: "month, year, day" };

/** The answer calls the field of fractions by its unit, and its value "fraction". */
function valueOf(answer, field) {
    return answer[field === "nanoseconds" ? "fraction" : field];
}

function verdictOf(answer) {
    if (answer.text.trim() === "") {
        return "Type something.";
    }
    if (answer.fields.length === 0) {
        return "This is not read as what the form asks for.";
    }
    if (answer.ambiguous) {
        return `Read as ${kOrders[answer.used.dateOrder]}; elsewhere it would mean something else.`;
    }
    return "Read without doubt.";
}

function fieldRow(answer, field) {
    return element("div", {}, element("dt", {}, field), element("dd", {}, String(valueOf(answer, field))));
}

function alternativeRow(alternative) {
    const fields = alternative.fields.map((field) => `${field} ${valueOf(alternative, field)}`);
    return `${kOrders[alternative.dateOrder]}: ${fields.join(", ")}`;
}

function show(answer) {
    byId("typed-verdict").textContent = verdictOf(answer);
    byId("typed-fields").replaceChildren(...answer.fields.map((field) => fieldRow(answer, field)));
    showList(byId("typed-alternatives"), answer.ambiguous ? answer.alternatives.map(alternativeRow) : []);
    const { used } = answer;
    byId("typed-used").replaceChildren(
        "Read with ", sample("bdi", used.am), " and ", sample("bdi", used.pm), ", ",
        element("code", {}, used.timeSeparator), " in times, ", element("code", {}, used.dateSeparator), " in dates, ",
        `in the order ${kOrders[used.dateOrder]}.`);
}

const question = makeQuestion("api/parse", show, (text) => sayFault("typed-text", text));

function wanted() {
    return {
        parameters: {
            locale: current.locale,
            text: byId("typed-text").value,
            expect: byId("typed-expect").value,
        },
    };
}

export function startTyped() {
    byId("typed-text").addEventListener("input", () => question.soon(wanted));
    byId("typed-expect").addEventListener("change", () => question.now(wanted()));
    onChange(() => question.now(wanted()));
}
