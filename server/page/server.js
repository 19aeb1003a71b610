// Asks the server. Each part of the page asks through a question of its own, so that late answers never replace newer
// ones.

const kDebounceMilliseconds = 180;

/** Headers hold bytes: what lies behind Latin-1 cannot be sent in one. */
const kLatin1 = /^[\u0020-\u007e\u00a0-\u00ff\t]*$/;

/** A refusal in the server's own words, its one word for programs, and the field at fault where it names one. */
class Refusal extends Error {
    constructor(status, { message = `The server answered ${status}.`, code = "", field = "" } = {}) {
        super(message);
        this.code = code;
        this.field = field;
    }
}

async function readAnswer(response) {
    let answer;
    try {
        answer = await response.json();
    } catch (error) {
        if (error.name === "AbortError") {
            throw error;
        }
        throw new Error(`The server's answer (${response.status}) cannot be read.`);
    }
    if (!response.ok) {
        throw new Refusal(response.status, answer.error);
    }
    return answer;
}

function requestOf(path, { parameters = {}, header = "", body, signal }) {
    if (!kLatin1.test(header)) {
        throw new Error("A header can only hold characters of Latin-1.");
    }
    const query = new URLSearchParams(parameters).toString();
    const address = query === "" ? path : `${path}?${query}`;
    const headers = header === "" ? {} : { "Accept-Language": header };
    if (body === undefined) {
        return new Request(address, { headers, signal });
    }
    headers["Content-Type"] = "application/json";
    return new Request(address, { method: "POST", headers, body: JSON.stringify(body), signal });
}

async function askOnce(path, options) {
    const request = requestOf(path, options);
    let response;
    try {
        response = await fetch(request);
    } catch (error) {
        if (error.name === "AbortError") {
            throw error;
        }
        throw new Error("The server cannot be reached. What you see may be out of date.");
    }
    return readAnswer(response);
}

/**
 * Called with the server's words when it does not take the preferences' cookie. It has deleted the cookie then, so that
 * the same question is answered without it.
 */
let sayBadCookie = () => {};

export function onBadCookie(say) {
    sayBadCookie = say;
}

async function ask(path, options) {
    try {
        return await askOnce(path, options);
    } catch (error) {
        if (error.code !== "bad-cookie") {
            throw error;
        }
        sayBadCookie(error.message);
        return askOnce(path, options);
    }
}

/**
 * A question is asked again and again: a new one takes the place of the one before, whose answer is dropped. `answered`
 * gets the answer; `failed` gets a text to show, which is empty when all is well, and the field at fault. Options of
 * each asking: parameters (of the query), header (an Accept-Language of one's own), body (an object to be sent).
 */
export function makeQuestion(path, answered, failed) {
    let timer = 0;
    let running = new AbortController();

    async function now(options = {}) {
        clearTimeout(timer);
        running.abort();
        const mine = new AbortController();
        running = mine;
        try {
            const answer = await ask(path, { ...options, signal: mine.signal });
            if (running === mine) {
                failed("", "");
                answered(answer);
            }
        } catch (error) {
            if (running === mine && error.name !== "AbortError") {
                failed(error.message, error.field);
            }
        }
    }

    /** Waits until the user stops typing; `options` is then asked what to send. */
    function soon(options) {
        clearTimeout(timer);
        timer = setTimeout(() => now(options()), kDebounceMilliseconds);
    }

    return { now, soon };
}
