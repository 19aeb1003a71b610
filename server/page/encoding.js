// Encoding: a text as the bytes of a character set, and what that set lacks.

import { byId, element, plural, sayFault, showList } from "./elements.js";
import { makeQuestion } from "./server.js";
import { onChange } from "./state.js";

const kText = "Grüße, déjà vu, 100 €\nПривет – 日本語 – مرحبا";

/** Hexadecimal digits, two for each byte, with a blank between bytes. */
function spaced(digits) {
    return digits.replace(/..(?=.)/g, "$& ");
}

function codePointOf(character) {
    return `U+${character.codePointAt(0).toString(16).toUpperCase().padStart(4, "0")}`;
}

function replacedRow(character) {
    return [element("bdi", {}, character), " ", element("code", {}, codePointOf(character))];
}

function showEncoded(answer) {
    const count = answer.bytes.length / 2;
    const characters = plural(answer.characters, "character", "characters");
    byId("encoded-summary").textContent = `${characters} as ${plural(count, "byte", "bytes")} of ${answer.label}.`;
    byId("bytes").textContent = spaced(answer.bytes);
    showList(byId("replaced"), answer.lacking.map(replacedRow));
}

function showCharsets(answer) {
    const labels = answer.charsets.map((charset) => charset.definition);
    const select = byId("charset");
    select.replaceChildren(...labels.map((label) => element("option", { value: label }, label)));
    select.value = "windows-1252";
    encoded.now(wanted());
}

function failEncoding(text, field) {
    sayFault("charset", field === "charset" ? text : "");
    sayFault("plain", field === "charset" ? "" : text);
}

const encoded = makeQuestion("api/encode", showEncoded, failEncoding);
const charsets = makeQuestion("api/charsets", showCharsets, (text) => sayFault("charset", text));

function wanted() {
    return { body: { text: byId("plain").value, charset: byId("charset").value } };
}

export function startEncoding() {
    byId("plain").value = kText;
    byId("plain").addEventListener("input", () => encoded.soon(wanted));
    byId("charset").addEventListener("change", () => encoded.now(wanted()));
    // Character sets are the same in every locale.
    let isListed = false;
    onChange(() => {
        if (!isListed) {
            isListed = true;
            charsets.now();
        }
    });
}
